// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/search_filter.h"

#include <array>
#include <cstdint>

namespace pelora::session {
namespace {

/// Filter bits of an object picker's scope.
constexpr std::uint32_t kHiddenObjects = 0x1;
constexpr std::uint32_t kUsers = 0x2;
constexpr std::uint32_t kBuiltinGroups = 0x4;
constexpr std::uint32_t kAllGroups = 0x3F0;

struct ObjectType {
  std::uint32_t bit;
  std::string_view filter;
};

constexpr std::array kObjectTypes = {
    ObjectType{kUsers, "(&(objectClass=user)(!(objectClass=computer)))"},
    ObjectType{0x400, "(objectClass=contact)"},
    ObjectType{0x800, "(objectClass=computer)"},
};

/// A kind of group by its reach, for distribution and for security.
struct GroupReach {
  std::uint32_t distribution_bit;
  std::uint32_t security_bit;
  /// Bit of `groupType`.
  std::string_view reach;
};

constexpr std::array kGroupReaches = {
    GroupReach{0x10, 0x20, "8"},    // universal
    GroupReach{0x40, 0x80, "2"},    // global
    GroupReach{0x100, 0x200, "4"},  // domain-local
};

constexpr std::string_view kSecurityGroup = "2147483648";
constexpr std::string_view kBuiltinGroup = "1";

std::string HasGroupBit(std::string_view bit) {
  return "(groupType:1.2.840.113556.1.4.803:=" + std::string(bit) + ")";
}

std::string Either(const std::string& filters) { return "(|" + filters + ")"; }
std::string Both(const std::string& filters) { return "(&" + filters + ")"; }
std::string Not(const std::string& filter) { return "(!" + filter + ")"; }

/// Which groups the bits admit; empty for none.
std::string GroupFilter(std::uint32_t bits) {
  if ((bits & kAllGroups) == 0) return {};
  std::string conditions = "(objectClass=group)";
  if ((bits & kBuiltinGroups) == 0) conditions += Not(HasGroupBit(kBuiltinGroup));
  if ((bits & kAllGroups) == kAllGroups) return Both(conditions);
  std::string kinds;
  for (const GroupReach& row : kGroupReaches) {
    const std::string reach = HasGroupBit(row.reach);
    const std::string security = HasGroupBit(kSecurityGroup);
    if ((bits & row.distribution_bit) != 0) kinds += Both(reach + Not(security));
    if ((bits & row.security_bit) != 0) kinds += Both(reach + security);
  }
  return Both(conditions + Either(kinds));
}

}  // namespace

std::string TypeFilter(const ObjectPickerScope& scope) {
  // A domain of today is in native mode.
  const std::uint32_t bits = scope.up_level_both_modes | scope.up_level_native_mode;
  std::string types;
  for (const ObjectType& type : kObjectTypes) {
    if ((bits & type.bit) != 0) types += type.filter;
  }
  types += GroupFilter(bits);
  if (types.empty()) return Not("(objectClass=*)");
  types = Either(types);
  return (bits & kHiddenObjects) != 0 ? types : WithoutHidden(types);
}

std::string ContainerFilter() {
  return "(|(objectClass=organizationalUnit)(objectClass=container)(objectClass=builtinDomain)"
         "(objectClass=domainDNS))";
}

std::string WithoutHidden(const std::string& filter) {
  return Both(filter + Not("(showInAdvancedViewOnly=TRUE)"));
}

std::string EscapeFilterValue(std::string_view value) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  constexpr std::string_view kOwnCharacters{"\\*()\0", 5};
  std::string escaped;
  escaped.reserve(value.size());
  for (const char character : value) {
    if (kOwnCharacters.find(character) == std::string_view::npos) {
      escaped += character;
      continue;
    }
    const auto code = static_cast<unsigned char>(character);
    escaped += '\\';
    escaped += kDigits[code >> 4];
    escaped += kDigits[code & 0xF];
  }
  return escaped;
}

}  // namespace pelora::session
