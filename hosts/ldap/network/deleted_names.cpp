// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/deleted_names.h"

#include <algorithm>

namespace pelora::ldap {
namespace {

constexpr std::string_view kMark = "\\0ADEL:";
constexpr std::size_t kIdentifierLength = 36;

bool IsIdentifierSign(char sign) {
  return (sign >= '0' && sign <= '9') || (sign >= 'a' && sign <= 'f') ||
         (sign >= 'A' && sign <= 'F') || sign == '-';
}

}  // namespace

std::string NameForRemoval(std::string_view dn) {
  const std::size_t mark = dn.find(kMark);
  if (mark == std::string_view::npos) return std::string(dn);
  const std::string_view behind = dn.substr(mark + kMark.size());
  const std::string_view identifier = behind.substr(0, kIdentifierLength);
  const bool is_one = identifier.size() == kIdentifierLength &&
                      std::ranges::all_of(identifier, IsIdentifierSign) &&
                      behind.substr(kIdentifierLength).starts_with(',');
  if (!is_one) return std::string(dn);
  return "<GUID=" + std::string(identifier) + ">";
}

std::optional<std::vector<Modification>> WithNamesForRemoval(
    const Schema& schema, std::span<const Modification> modifications) {
  const auto removes_names = [&schema](const Modification& change) {
    if (change.operation != Modification::Operation::kDelete) return false;
    const auto type = schema.Find(change.attribute);
    return type && type->syntax == Syntax::kDistinguishedName;
  };
  if (std::ranges::none_of(modifications, removes_names)) return std::nullopt;
  std::vector<Modification> sent(modifications.begin(), modifications.end());
  for (Modification& change : sent) {
    if (!removes_names(change)) continue;
    std::ranges::transform(change.values, change.values.begin(), NameForRemoval);
  }
  return sent;
}

}  // namespace pelora::ldap
