// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace pelora::test {

/// One source file of the project.
struct SourceFile {
  /// From the project's root, with "/".
  std::string path;
  std::vector<std::string> lines;

  /// What the file includes, as written, brackets or quotes kept.
  [[nodiscard]] std::vector<std::string> Includes() const;
};

/// The project's root; from the environment, and there is one.
[[nodiscard]] std::filesystem::path SourceRoot();

/// Every C++ source and header below the given folders of the project, in order of their paths.
[[nodiscard]] std::vector<SourceFile> ReadSources(const std::vector<std::string>& folders);

}  // namespace pelora::test
