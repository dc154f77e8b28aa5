// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/display_specifiers.h"
#include "hosts/resources/resource_file.h"
#include "hosts/session/fields/page_layout.h"
#include "hosts/session/property_tabs.h"
#include "platform/field_rows.h"
#include "platform/platform.h"
#include "platform/shell_extension.h"

namespace pelora::session {

/// One field of the objects of a class: what the row of a tab says of it.
struct Field {
  FieldRow row;
  /// The tab's component class, and its title.
  Guid component;
  std::string tab;
  FieldPlace place;

  [[nodiscard]] bool IsList() const {
    return row.kind == FieldKind::kList || row.kind == FieldKind::kNameList;
  }
  /// What kind of value scripts give: "flag", "number", "text", "name", "server", "list" or
  /// "choice".
  [[nodiscard]] std::string_view KindText() const;
};

/// The fields of every class, asked of the components of its tabs: what is added to a tab is a
/// field here.
class FieldCatalogue {
 public:
  /// Everything outlives the catalogue.
  FieldCatalogue(const ldap::DisplaySpecifiers& specifiers, const Platform& platform,
                 const resources::ResourceFile& module, ComponentMaker make);
  /// With the extension's own components.
  FieldCatalogue(const ldap::DisplaySpecifiers& specifiers, const Platform& platform,
                 const resources::ResourceFile& module);
  FieldCatalogue(const FieldCatalogue&) = delete;
  FieldCatalogue& operator=(const FieldCatalogue&) = delete;

  /// In the order of the tabs, and on each from the top and from the left. None for a class without
  /// tabs.
  [[nodiscard]] const std::vector<Field>& FieldsOf(std::string_view class_name);
  /// The field of a name, in any case; null when the class has none.
  [[nodiscard]] const Field* Find(std::string_view class_name, std::string_view field);
  /// The field of that name of whichever class has it first; null when none has.
  [[nodiscard]] const Field* FindAnywhere(std::string_view field);
  /// The fields of the given classes, each name once, in the order in which they come first.
  [[nodiscard]] std::vector<const Field*> FieldsOfAll(const std::vector<std::string>& classes);

  [[nodiscard]] const ComponentMaker& make() const { return make_; }

 private:
  [[nodiscard]] std::vector<Field> ReadFields(std::string_view class_name);
  void AppendTab(const Guid& component, std::vector<Field>& fields);

  const ldap::DisplaySpecifiers& specifiers_;
  const Platform& platform_;
  const resources::ResourceFile& module_;
  ComponentMaker make_;
  /// Rows live as long as their components.
  std::vector<Ref<IShellExtInit>> components_;
  std::map<std::string, std::vector<Field>, std::less<>> classes_;
};

}  // namespace pelora::session
