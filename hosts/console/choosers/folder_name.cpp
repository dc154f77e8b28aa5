// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/choosers/folder_name.h"

#include <QStringList>
#include <algorithm>
#include <optional>
#include <string_view>

#include "directory/ascii_case.h"
#include "hosts/console/qt_text.h"

namespace pelora::console {
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

}  // namespace

QString FolderOf(const std::string& dn) {
  std::string_view rest = dn;
  TakePart(rest);
  QStringList folders;
  QStringList domain;
  while (!rest.empty()) {
    const std::string part = TakePart(rest);
    const std::size_t equals = part.find('=');
    if (equals == std::string::npos) continue;
    const bool is_domain = EqualsWithoutCase(part.substr(0, equals), "DC");
    const QString name = ToQString(part.substr(equals + 1));
    is_domain ? domain.append(name) : folders.prepend(name);
  }
  folders.prepend(domain.join(QLatin1Char('.')));
  return folders.join(QLatin1Char('/'));
}

}  // namespace pelora::console
