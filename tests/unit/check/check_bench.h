// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "hosts/session/check/run_check.h"
#include "tests/unit/ldb_bench.h"
#include "tests/unit/page_bench.h"

namespace pelora::session {

using namespace sample;

/// The fields of the tabs as the module itself has them, without a screen.
class TabFields {
 public:
  TabFields();
  [[nodiscard]] const CheckFields& fields() const { return fields_; }

 private:
  [[nodiscard]] CheckFields::RowsByClass ReadRows();

  pelora::testing::PageBench host_;
  std::vector<Ref<IUnknown>> components_;
  CheckFields fields_;
};

/// A sample company of the test's own, without the faults that it is made with, and a check of it.
class CheckBench : public ldap::LdbBench {
 protected:
  static constexpr const char* kOtherUser =
      "CN=Dieter Schäfer,OU=Fertigung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
  static constexpr const char* kNobody = "CN=Nobody,DC=linden-werke,DC=example";
  static constexpr const char* kDeleted =
      "CN=Gone\\0ADEL:5d0e8c1a-7a54-4c0e-9d7e-3f1f5a2b6c91,CN=Deleted "
      "Objects,DC=linden-werke,DC=example";

  CheckBench();

  /// Puts values into the directory; none: takes them out.
  void Put(const std::string& dn, const std::string& attribute,
           const ldap::AttributeValues& values);
  [[nodiscard]] ldap::AttributeValues Get(const std::string& dn, const std::string& attribute);

  /// What the rule of that name finds below `base`.
  [[nodiscard]] std::vector<Finding> Findings(const std::string& rule,
                                              const std::string& base = {});
  /// The same as lines: the object's common name and the message, with a tab between.
  [[nodiscard]] std::vector<std::string> Lines(const std::string& rule,
                                               const std::string& base = {});
  /// Writes the mends of everything that the rule finds.
  void Mend(const std::string& rule);

  [[nodiscard]] ldap::IDirectoryStore& store() { return *store_; }
  [[nodiscard]] const CheckFields& fields() const { return tabs_.fields(); }

 private:
  TabFields tabs_;
  std::unique_ptr<ldap::IDirectoryStore> store_;
};

/// The value of the first part of a name, as it is read.
[[nodiscard]] std::string CommonName(const std::string& dn);

}  // namespace pelora::session
