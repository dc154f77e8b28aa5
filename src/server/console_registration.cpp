// SPDX-License-Identifier: Apache-2.0
#include "server/console_registration.h"

#include <algorithm>
#include <array>

#include "directory/ascii_case.h"
#include "server/class_table.h"

namespace pelora {
namespace {

using enum ConsoleRole;

// A tab that the sheet of one object has, the sheet of several objects has as well.
constexpr std::array kRegistrations = {
    ConsoleRegistration{"user", kPropertyPage, "CPropPageUser"},
    ConsoleRegistration{"user", kPropertyPage, "CPropPageFeatures"},
    ConsoleRegistration{"user", kMultiselectPropertyPage, "CPropPageUser"},
    ConsoleRegistration{"user", kMultiselectPropertyPage, "CPropPageFeatures"},
    ConsoleRegistration{"user", kCreationWizardExtension, "CWizardExtUser"},

    ConsoleRegistration{"inetOrgPerson", kPropertyPage, "CPropPageUser"},
    ConsoleRegistration{"inetOrgPerson", kPropertyPage, "CPropPageFeatures"},
    ConsoleRegistration{"inetOrgPerson", kMultiselectPropertyPage, "CPropPageUser"},
    ConsoleRegistration{"inetOrgPerson", kMultiselectPropertyPage, "CPropPageFeatures"},
    ConsoleRegistration{"inetOrgPerson", kCreationWizardExtension, "CWizardExtUser"},

    ConsoleRegistration{"contact", kPropertyPage, "CPropPageContact"},
    ConsoleRegistration{"contact", kMultiselectPropertyPage, "CPropPageContact"},
    ConsoleRegistration{"contact", kCreationWizardExtension, "CWizardExtContact"},

    ConsoleRegistration{"group", kPropertyPage, "CPropPageDistlist"},
    ConsoleRegistration{"group", kMultiselectPropertyPage, "CPropPageDistlist"},
    ConsoleRegistration{"group", kCreationWizardExtension, "CWizardExtDistlist"},

    ConsoleRegistration{"organizationalUnit", kPropertyPage, "CPropPageCompany"},
    ConsoleRegistration{"organizationalUnit", kPropertyPage, "CPropPageCompanyQuota"},
    ConsoleRegistration{"organizationalUnit", kPropertyPage, "CPropPageCompanyRights"},
    ConsoleRegistration{"organizationalUnit", kMultiselectPropertyPage, "CPropPageCompany"},
    ConsoleRegistration{"organizationalUnit", kMultiselectPropertyPage, "CPropPageCompanyQuota"},
    ConsoleRegistration{"organizationalUnit", kMultiselectPropertyPage, "CPropPageCompanyRights"},
    ConsoleRegistration{"organizationalUnit", kCreationWizardExtension, "CWizardExtCompany"},

    ConsoleRegistration{"computer", kPropertyPage, "CPropPageServer"},
    ConsoleRegistration{"computer", kMultiselectPropertyPage, "CPropPageServer"},
    ConsoleRegistration{"computer", kCreationWizardExtension, "CWizardExtServer"},

    ConsoleRegistration{"peloraAddresslist", kPropertyPage, "CPropPageAddresslistGeneral"},
    ConsoleRegistration{"peloraAddresslist", kPropertyPage, "CPropPageAddresslist"},
    ConsoleRegistration{"peloraAddresslist", kMultiselectPropertyPage,
                        "CPropPageAddresslistGeneral"},
    ConsoleRegistration{"peloraAddresslist", kMultiselectPropertyPage, "CPropPageAddresslist"},
    ConsoleRegistration{"peloraAddresslist", kCreationWizard, "CWizardAddresslist"},
    ConsoleRegistration{"peloraAddresslist", kCreationWizardExtension, "CWizardExtAddresslist"},

    ConsoleRegistration{"peloraDynamicDistlist", kPropertyPage, "CPropPageDynamicDistlistGeneral"},
    ConsoleRegistration{"peloraDynamicDistlist", kPropertyPage, "CPropPageDynamicDistlist"},
    ConsoleRegistration{"peloraDynamicDistlist", kMultiselectPropertyPage,
                        "CPropPageDynamicDistlistGeneral"},
    ConsoleRegistration{"peloraDynamicDistlist", kMultiselectPropertyPage,
                        "CPropPageDynamicDistlist"},
    ConsoleRegistration{"peloraDynamicDistlist", kCreationWizard, "CWizardDynamicDistlist"},
    ConsoleRegistration{"peloraDynamicDistlist", kCreationWizardExtension,
                        "CWizardExtDynamicDistlist"},
};

}  // namespace

std::span<const ConsoleRegistration> ConsoleRegistrations() { return kRegistrations; }

std::vector<std::string_view> RegisteredObjectClasses() {
  std::vector<std::string_view> classes;
  for (const ConsoleRegistration& row : kRegistrations) {
    if (std::ranges::find(classes, row.object_class) == classes.end()) {
      classes.push_back(row.object_class);
    }
  }
  return classes;
}

std::vector<Guid> DefaultRegistrations(std::string_view object_class, ConsoleRole role) {
  std::vector<Guid> identifiers;
  for (const ConsoleRegistration& row : kRegistrations) {
    if (row.role != role || !EqualsWithoutCase(row.object_class, object_class)) continue;
    identifiers.push_back(FindClass(row.component_class)->class_id);
  }
  return identifiers;
}

}  // namespace pelora
