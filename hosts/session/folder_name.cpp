// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/folder_name.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "directory/ascii_case.h"

namespace pelora::session {
namespace {

std::optional<int> HexDigit(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  return std::nullopt;
}

/// Takes one part, "attribute=value", off the front of a distinguished name, value unescaped.
std::string TakePart(std::string_view& dn) {
  std::string part;
  std::size_t at = 0;
  for (; at < dn.size() && dn[at] != ','; ++at) {
    if (dn[at] != '\\' || at + 1 >= dn.size()) {
      part += dn[at];
      continue;
    }
    ++at;
    const std::optional<int> high = HexDigit(dn[at]);
    const std::optional<int> low = at + 1 < dn.size() ? HexDigit(dn[at + 1]) : std::nullopt;
    if (high && low) {
      part += static_cast<char>(*high * 16 + *low);
      ++at;
    } else {
      part += dn[at];
    }
  }
  dn.remove_prefix(std::min(at + 1, dn.size()));
  return part;
}

/// The folder that the parts of a name, the lowest first, stand for.
std::string FolderOfParts(std::string_view rest) {
  std::string folders;
  std::string domain;
  while (!rest.empty()) {
    const std::string part = TakePart(rest);
    const std::size_t equals = part.find('=');
    if (equals == std::string::npos) continue;
    const std::string name = part.substr(equals + 1);
    if (EqualsWithoutCase(part.substr(0, equals), "DC")) {
      domain += (domain.empty() ? "" : ".") + name;
    } else {
      folders.insert(0, "/" + name);
    }
  }
  return domain + folders;
}

}  // namespace

std::string FolderOf(const std::string& dn) {
  std::string_view rest = dn;
  TakePart(rest);
  return FolderOfParts(rest);
}

std::string OwnNameOf(const std::string& dn) {
  std::string_view rest = dn;
  const std::string part = TakePart(rest);
  const std::size_t equals = part.find('=');
  return equals == std::string::npos ? dn : part.substr(equals + 1);
}

std::string AsFolder(const std::string& container) { return FolderOfParts(container); }

}  // namespace pelora::session
