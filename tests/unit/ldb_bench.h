// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "hosts/ldap/ldb_store.h"
#include "tests/support/sample_file.h"
#include "tests/support/sample_objects.h"

namespace pelora::ldap {

/// A copy of the sample directory in a folder of the test's own.
class LdbBench : public ::testing::Test {
 protected:
  static constexpr const char* kBase = sample::kBase;
  static constexpr const char* kUser =
      "CN=Heike Naumann,OU=Fertigung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";

  [[nodiscard]] const std::string& path() const { return file_.path(); }
  [[nodiscard]] std::string File(const std::string& name) const { return file_.File(name); }

  /// Opens the file, with a wait for locks that a test can wait for.
  [[nodiscard]] StoreStatus TryOpen(std::unique_ptr<IDirectoryStore>& store) const;
  /// Opens a file that has to be sound.
  [[nodiscard]] std::unique_ptr<IDirectoryStore> Open() const;

  /// Values of one attribute of the user, as a store opened for it alone reads them.
  [[nodiscard]] AttributeValues OnUser(const std::string& attribute) const;
  [[nodiscard]] static AttributeValues Read(IDirectoryStore& store, const std::string& dn,
                                            const std::string& attribute);
  [[nodiscard]] static StoreStatus Replace(IDirectoryStore& store, const std::string& dn,
                                           const std::string& attribute,
                                           const AttributeValues& values);

  [[nodiscard]] std::vector<std::string> FilesInFolder() const;

 private:
  pelora::testing::SampleFile file_;
};

using pelora::testing::ReadFile;
using pelora::testing::WriteFile;

}  // namespace pelora::ldap
