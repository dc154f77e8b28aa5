// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/commands/command_fields.h"

#include <algorithm>
#include <array>
#include <set>

#include "directory/attribute_catalogue.h"
#include "hosts/session/commands/value_command.h"
#include "hosts/session/search_filter.h"
#include "hosts/session/typed/field_roles.h"

namespace pelora::session {
namespace {

/// The lists of users and groups; others hold companies.
constexpr std::array kLists = {CatalogueEntry("peloraSendAsPrivilege").name,
                               CatalogueEntry("peloraQuotaUserWarningRecipients").name,
                               CatalogueEntry("peloraQuotaCompanyWarningRecipients").name,
                               CatalogueEntry("peloraAdminPrivilege").name};

}  // namespace

std::vector<std::string> CommandFields::Attributes() const {
  std::vector<std::string> attributes = ValueCommand{}.Attributes();
  for (const NameListField& list : lists) attributes.push_back(list.attribute);
  return attributes;
}

CommandFields CommandFieldsOf(FieldCatalogue& catalogue,
                              std::span<const DirectoryObject> selection) {
  std::set<std::string> classes;
  for (const DirectoryObject& object : selection) classes.insert(object.kind.class_name);
  CommandFields common;
  bool is_first = true;
  for (const std::string& class_name : classes) {
    bool has_addresses = false;
    std::vector<NameListField> lists;
    for (const Field& field : catalogue.FieldsOf(class_name)) {
      const std::string attribute(field.row.attributes.front());
      common.book.Add(field.row, field.place.label);
      has_addresses = has_addresses || (HoldsAddresses(field.row) && field.row.entry.empty());
      if (std::ranges::find(kLists, attribute) == kLists.end()) continue;
      lists.push_back({.attribute = attribute, .label = field.place.label});
    }
    common.has_addresses = has_addresses && (is_first || common.has_addresses);
    if (is_first) common.lists = lists;
    std::erase_if(common.lists, [&lists](const NameListField& list) {
      return std::ranges::find(lists, list.attribute, &NameListField::attribute) == lists.end();
    });
    is_first = false;
  }
  return common;
}

std::string UsersAndGroupsFilter() {
  // As the tabs choose them.
  constexpr std::uint32_t kUsers = 0x2;
  constexpr std::uint32_t kGroups = 0x3F0;
  return TypeFilter({.up_level_both_modes = kUsers | kGroups});
}

}  // namespace pelora::session
