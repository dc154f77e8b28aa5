// SPDX-License-Identifier: Apache-2.0
#include "tests/architecture/source_tree.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <stdexcept>

namespace pelora::test {
namespace {

std::vector<std::string> ReadLines(const std::filesystem::path& path) {
  std::ifstream stream(path);
  if (!stream) throw std::runtime_error("cannot read " + path.string());
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

}  // namespace

std::vector<std::string> SourceFile::Includes() const {
  static const std::regex kInclude(R"(^\s*#\s*include\s*([<"][^>"]+[>"]).*$)");
  std::vector<std::string> includes;
  std::smatch match;
  for (const std::string& line : lines) {
    if (std::regex_match(line, match, kInclude)) includes.push_back(match[1]);
  }
  return includes;
}

std::filesystem::path SourceRoot() {
  const char* root = std::getenv("PELORA_SOURCE_DIR");
  if (root == nullptr) throw std::runtime_error("PELORA_SOURCE_DIR is not set");
  return root;
}

std::vector<SourceFile> ReadSources(const std::vector<std::string>& folders) {
  std::vector<SourceFile> files;
  for (const std::string& folder : folders) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(SourceRoot() / folder)) {
      const std::string extension = entry.path().extension().string();
      if (extension != ".h" && extension != ".cpp") continue;
      files.push_back(
          {.path = std::filesystem::relative(entry.path(), SourceRoot()).generic_string(),
           .lines = ReadLines(entry.path())});
    }
  }
  std::ranges::sort(files, {}, &SourceFile::path);
  return files;
}

}  // namespace pelora::test
