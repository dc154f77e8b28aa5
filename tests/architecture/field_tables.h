// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/dialog.h"
#include "server/console_registration.h"

namespace pelora::test {

/// One field as the pages of the module tell it.
struct DocumentedField {
  /// Of what directory class.
  std::string_view object_class;
  /// The component class whose page has it.
  std::string_view component;
  /// What people call objects of the class.
  std::string object_word;
  /// The page's template.
  DialogId dialog = 0;
  /// The control that shows the field.
  ControlId control = 0;
  /// The page's title.
  std::string page;
  std::string label;
  /// Whether the page's template says the label.
  bool has_label_of_its_own = false;
  /// As scripts name it.
  std::string name;
  std::string kind;
  /// Every attribute that it writes.
  std::vector<std::string> attributes;
  /// Why it may not be empty, or nothing.
  std::string missing;
};

/// The fields of every page that has one of the roles, class by class in the order in which the
/// pages are registered.
[[nodiscard]] std::vector<DocumentedField> FieldsOfPages(const std::vector<ConsoleRole>& roles);

/// The table of the tabs' fields, and that of the wizards' pages, as docs/attributes.md has them: a
/// line each.
[[nodiscard]] std::vector<std::string> TabTable();
[[nodiscard]] std::vector<std::string> WizardTable();

}  // namespace pelora::test
