// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/own_pages/own_field.h"

#include <algorithm>
#include <array>

#include "hosts/session/folder_name.h"
#include "hosts/session/own_pages/account_fields.h"
#include "hosts/session/own_pages/own_page_ids.h"

namespace pelora::session {
namespace {

std::string ShownText(std::string_view attribute, const StoredValues& stored) {
  const ldap::AttributeValues values = stored(attribute);
  return values.empty() ? std::string() : values.front();
}

std::optional<ldap::AttributeValues> StoredText(const std::string& shown,
                                                const ldap::AttributeValues& /*now*/) {
  return shown.empty() ? ldap::AttributeValues() : ldap::AttributeValues{shown};
}

constexpr FieldForm kText = {.shown = &ShownText, .stored = &StoredText};

constexpr OwnField Text(ControlId control, std::string_view attribute) {
  return {.control = control, .attribute = attribute, .form = &kText};
}

constexpr std::array kPersonFields = {
    Text(IDC_OWN_FIRST_NAME, "givenName"),
    Text(IDC_OWN_INITIALS, "initials"),
    Text(IDC_OWN_LAST_NAME, "sn"),
    Text(IDC_OWN_DISPLAY_NAME, "displayName"),
    Text(IDC_OWN_DESCRIPTION, "description"),
    Text(IDC_OWN_OFFICE, "physicalDeliveryOfficeName"),
    Text(IDC_OWN_TELEPHONE, "telephoneNumber"),
    Text(IDC_OWN_NOTES, "info"),
};

constexpr std::array kGroupFields = {
    Text(IDC_OWN_DESCRIPTION, "description"),
    OwnField{.control = IDC_OWN_MANAGER,
             .kind = FieldKind::kName,
             .attribute = "managedBy",
             .form = &kText,
             .choose = IDC_OWN_MANAGER_SELECT,
             .clear = IDC_OWN_MANAGER_CLEAR},
    Text(IDC_OWN_NOTES, "info"),
};

constexpr std::array<std::string_view, 3> kPersons = {"user", "inetOrgPerson", "contact"};
constexpr std::array<std::string_view, 2> kUsers = {"user", "inetOrgPerson"};
constexpr std::array<std::string_view, 1> kGroups = {"group"};
constexpr std::array<std::string_view, 5> kMayBeMembers = {"user", "inetOrgPerson", "contact",
                                                           "computer", "group"};

std::string NamesInWords(const ldap::AttributeValues& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : "; ") + OwnNameOf(name);
  return text;
}

constexpr std::array kMemberWords = {
    AttributeWords{"member", "Members", &NamesInWords, true},
};

}  // namespace

FieldRow OwnField::Row() const {
  return {.name = std::string(name.empty() ? attribute : name),
          .kind = kind,
          .control = control,
          .attributes = {attribute},
          .choose = choose,
          .remove = clear};
}

std::vector<std::string> OwnPageKind::Attributes() const {
  std::vector<std::string> attributes;
  const auto add = [&attributes](std::string_view name) {
    if (std::ranges::find(attributes, name) == attributes.end()) attributes.emplace_back(name);
  };
  for (const OwnField& field : fields) add(field.attribute);
  for (const std::string_view name : also_read) add(name);
  return attributes;
}

std::span<const OwnPageKind> OwnPageKinds() {
  static const std::array kKinds = {
      OwnPageKind{.of_one = IDD_OWN_PERSON,
                  .of_several = IDD_OWN_PERSONS,
                  .classes = kPersons,
                  .fields = kPersonFields},
      OwnPageKind{.of_one = IDD_OWN_GROUP,
                  .of_several = IDD_OWN_GROUP,
                  .classes = kGroups,
                  .fields = kGroupFields},
      OwnPageKind{.of_one = IDD_OWN_ACCOUNT,
                  .of_several = IDD_OWN_ACCOUNT,
                  .classes = kUsers,
                  .fields = AccountFields(),
                  .also_read = AccountAlsoRead(),
                  .words = AccountWords(),
                  .reset_password = IDC_OWN_RESET_PASSWORD,
                  .reset_note = IDC_OWN_RESET_NOTE},
      OwnPageKind{.of_one = IDD_OWN_MEMBERS,
                  .of_several = IDD_OWN_MEMBERS,
                  .classes = kGroups,
                  .fields = {},
                  .words = kMemberWords,
                  .lists = ListedObjects::kMembers},
      OwnPageKind{.of_one = IDD_OWN_MEMBER_OF,
                  .of_several = IDD_OWN_MEMBER_OF,
                  .classes = kMayBeMembers,
                  .fields = {},
                  .words = kMemberWords,
                  .lists = ListedObjects::kGroups},
  };
  return kKinds;
}

}  // namespace pelora::session
