// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

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

}  // namespace pelora::testing
