// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "hosts/ldap/directory_store.h"
#include "tests/support/temporary_folder.h"

namespace pelora::testing {

[[nodiscard]] std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::string& bytes);

/// The sample company in a directory file of a test's own. It is made once in a program; each test
/// gets a copy.
class SampleFile {
 public:
  SampleFile();

  [[nodiscard]] const std::string& path() const { return path_; }
  /// A file beside it.
  [[nodiscard]] std::string File(const std::string& name) const { return folder_.File(name); }
  [[nodiscard]] const TemporaryFolder& folder() const { return folder_; }

 private:
  TemporaryFolder folder_;
  std::string path_ = folder_.File("company.ldb");
};

/// Such a file, opened.
class SampleStore {
 public:
  SampleStore();

  [[nodiscard]] const SampleFile& file() const { return file_; }
  [[nodiscard]] ldap::IDirectoryStore& store() { return *store_; }

 private:
  SampleFile file_;
  std::unique_ptr<ldap::IDirectoryStore> store_;
};

}  // namespace pelora::testing
