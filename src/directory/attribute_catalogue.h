// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace pelora {

/// How an attribute's value is read and written.
enum class Encoding : std::uint8_t {
  /// Integer; non-zero is true, absent is false. Written as 1 or 0.
  kFlag,
  /// 32-bit integer, shown in decimal. Quotas are in megabytes, ports and capacities plain numbers.
  kInteger,
  /// String.
  kString,
  /// Set of strings, replaced as a whole.
  kList,
  /// List of distinguished names (archive servers: of `cn` values).
  kNameList,
};

/// Whether an attribute is written when several objects are selected.
enum class MultiSelectionRule : std::uint8_t {
  /// Never: it belongs to one object.
  kNo,
  /// To every selected object, when its field was changed since loading.
  kWhenChanged,
  /// To every selected object on every apply, changed or not.
  kAlways,
  /// To each selected object a value of its own.
  kPerObject,
  /// Not at all, on one object neither: it is only shown.
  kNeverWritten,
};

/// One directory attribute that the extension reads or writes.
struct Attribute {
  /// LDAP display name.
  std::string_view name;
  bool is_multi_valued = false;
  Encoding encoding = Encoding::kString;
  MultiSelectionRule multi_selection = MultiSelectionRule::kWhenChanged;
};

/// Every attribute of the groupware's schema, and of the directory's own, that is read or written
/// here.
inline constexpr auto kAttributeCatalogue = [] {
  using enum Encoding;
  using enum MultiSelectionRule;
  constexpr bool kSingle = false;
  constexpr bool kMulti = true;
  return std::to_array<Attribute>({
      {"peloraAccount", kSingle, kFlag, kWhenChanged},
      {"peloraHidden", kSingle, kFlag, kWhenChanged},
      {"mail", kSingle, kString, kNo},
      {"otherMailbox", kMulti, kList, kNo},
      {"peloraSendAsPrivilege", kMulti, kNameList, kNo},
      {"name", kSingle, kString, kNeverWritten},
      {"description", kSingle, kString, kWhenChanged},
      {"peloraBase", kSingle, kString, kWhenChanged},
      {"peloraFilter", kSingle, kString, kWhenChanged},
      {"peloraQuotaOverride", kSingle, kFlag, kWhenChanged},
      {"peloraQuotaWarn", kSingle, kInteger, kWhenChanged},
      {"peloraQuotaSoft", kSingle, kInteger, kWhenChanged},
      {"peloraQuotaHard", kSingle, kInteger, kWhenChanged},
      {"peloraUserDefaultQuotaOverride", kSingle, kFlag, kWhenChanged},
      {"peloraUserDefaultQuotaWarn", kSingle, kInteger, kWhenChanged},
      {"peloraUserDefaultQuotaSoft", kSingle, kInteger, kWhenChanged},
      {"peloraUserDefaultQuotaHard", kSingle, kInteger, kWhenChanged},
      {"peloraQuotaUserWarningRecipients", kMulti, kNameList, kNo},
      {"peloraQuotaCompanyWarningRecipients", kMulti, kNameList, kNo},
      {"peloraAdmin", kSingle, kInteger, kWhenChanged},
      {"peloraSharedStoreOnly", kSingle, kFlag, kWhenChanged},
      {"peloraResourceType", kSingle, kString, kAlways},
      {"peloraResourceCapacity", kSingle, kInteger, kWhenChanged},
      {"peloraUserServer", kSingle, kString, kWhenChanged},
      {"peloraCompanyServer", kSingle, kString, kWhenChanged},
      {"peloraSystemAdmin", kSingle, kString, kWhenChanged},
      {"peloraViewPrivilege", kMulti, kNameList, kNo},
      {"peloraAdminPrivilege", kMulti, kNameList, kNo},
      {"peloraHostAddress", kSingle, kString, kNo},
      {"peloraHttpPort", kSingle, kInteger, kWhenChanged},
      {"peloraSslPort", kSingle, kInteger, kWhenChanged},
      {"peloraFilePath", kSingle, kString, kWhenChanged},
      {"peloraContainsPublic", kSingle, kFlag, kNo},
      {"peloraEnabledFeatures", kMulti, kList, kPerObject},
      {"peloraDisabledFeatures", kMulti, kList, kPerObject},
      {"peloraUserArchiveServers", kMulti, kNameList, kPerObject},
      {"distinguishedName", kSingle, kString, kNeverWritten},
  });
}();

/// The catalogue's entry of a name. Looked up while compiling: a name that is not in the catalogue
/// does not compile.
consteval const Attribute& CatalogueEntry(std::string_view name) {
  for (const Attribute& attribute : kAttributeCatalogue) {
    if (attribute.name == name) return attribute;
  }
  throw "no such attribute in the catalogue";
}

}  // namespace pelora
