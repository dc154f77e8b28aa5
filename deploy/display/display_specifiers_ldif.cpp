// SPDX-License-Identifier: Apache-2.0
#include "deploy/display/display_specifiers_ldif.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "server/class_table.h"
#include "server/console_registration.h"
#include "server/guid_text.h"

namespace pelora::deploy {
namespace {

/// A directory class of the groupware's own.
struct OwnClass {
  std::string_view name;
  std::string_view display_name;
};

constexpr std::array kOwnClasses = {
    OwnClass{"peloraAddresslist", "Address List"},
    OwnClass{"peloraDynamicDistlist", "Dynamic Distribution List"},
};

/// The display specifier's attribute for a role.
struct RoleAttribute {
  ConsoleRole role;
  std::string_view attribute;
  bool is_ordered;
};

constexpr std::array kRoleAttributes = {
    RoleAttribute{ConsoleRole::kPropertyPage, "adminPropertyPages", true},
    RoleAttribute{ConsoleRole::kMultiselectPropertyPage, "adminMultiselectPropertyPages", true},
    RoleAttribute{ConsoleRole::kCreationWizard, "creationWizard", false},
    RoleAttribute{ConsoleRole::kCreationWizardExtension, "createWizardExt", true},
};

const OwnClass* FindOwnClass(std::string_view object_class) {
  const auto found = std::ranges::find(kOwnClasses, object_class, &OwnClass::name);
  return found == kOwnClasses.end() ? nullptr : &*found;
}

/// The lines of one attribute's values.
std::string ValueLines(std::string_view object_class, const RoleAttribute& attribute) {
  std::string lines;
  for (const ConsoleRegistration& row : ConsoleRegistrations()) {
    if (row.object_class != object_class || row.role != attribute.role) continue;
    lines += std::string(attribute.attribute) + ": " + (attribute.is_ordered ? "@NEXT@," : "") +
             GuidText(FindClass(row.component_class)->class_id) + "\n";
  }
  return lines;
}

std::string NewSpecifier(const OwnClass& own) {
  std::string record = "changetype: add\nobjectClass: displaySpecifier\nclassDisplayName: " +
                       std::string(own.display_name) + "\n";
  for (const RoleAttribute& attribute : kRoleAttributes) record += ValueLines(own.name, attribute);
  return record;
}

std::string AddedValues(std::string_view object_class) {
  std::string record = "changetype: modify\n";
  for (const RoleAttribute& attribute : kRoleAttributes) {
    const std::string lines = ValueLines(object_class, attribute);
    if (lines.empty()) continue;
    record += "add: " + std::string(attribute.attribute) + "\n" + lines + "-\n";
  }
  return record;
}

}  // namespace

std::string DisplaySpecifiersLdif() {
  std::string ldif =
      "# The tabs and wizards of the Pelora administration extension, for each directory class.\n"
      "# Made from the module's class table; apply it with pelora-deploy, which fills in what\n"
      "# stands between at-signs.\n";
  for (const std::string_view object_class : RegisteredObjectClasses()) {
    const OwnClass* own = FindOwnClass(object_class);
    ldif += "\ndn: CN=" + std::string(object_class) +
            "-Display,CN=@LANGUAGE@,CN=DisplaySpecifiers,@CONFIGURATION@\n" +
            (own != nullptr ? NewSpecifier(*own) : AddedValues(object_class));
  }
  return ldif;
}

}  // namespace pelora::deploy
