// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "hosts/ldap/ldb_store.h"
#include "tests/support/temporary_folder.h"

namespace pelora::ldap {

/// A copy of the sample directory in a folder of the test's own.
class LdbBench : public ::testing::Test {
 protected:
  static constexpr const char* kBase = "DC=linden-werke,DC=example";
  static constexpr const char* kUser =
      "CN=Heike Naumann,OU=Fertigung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";

  LdbBench();

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::string File(const std::string& name) const { return folder_.File(name); }

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
  pelora::testing::TemporaryFolder folder_;
  std::string path_ = folder_.File("company.ldb");
};

[[nodiscard]] std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::string& bytes);

}  // namespace pelora::ldap
