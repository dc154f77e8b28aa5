// SPDX-License-Identifier: Apache-2.0
#include "server/console_registration.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "server/class_table.h"

namespace pelora {
namespace {

using enum ConsoleRole;

std::vector<std::string> ClassesOf(std::string_view object_class, ConsoleRole role) {
  std::vector<std::string> classes;
  for (const ConsoleRegistration& row : ConsoleRegistrations()) {
    if (row.object_class == object_class && row.role == role) {
      classes.emplace_back(row.component_class);
    }
  }
  return classes;
}

struct Tabs {
  const char* object_class;
  std::vector<std::string> tabs;
};

const std::vector<Tabs> kTabs = {
    {"user", {"CPropPageUser", "CPropPageFeatures"}},
    {"inetOrgPerson", {"CPropPageUser", "CPropPageFeatures"}},
    {"contact", {"CPropPageContact"}},
    {"group", {"CPropPageDistlist"}},
    {"organizationalUnit", {"CPropPageCompany", "CPropPageCompanyQuota", "CPropPageCompanyRights"}},
    {"computer", {"CPropPageServer"}},
    {"peloraAddresslist", {"CPropPageAddresslistGeneral", "CPropPageAddresslist"}},
    {"peloraDynamicDistlist", {"CPropPageDynamicDistlistGeneral", "CPropPageDynamicDistlist"}},
};

TEST(ConsoleRegistration, EachClassHasItsTabsForOneObjectAndForSeveral) {
  EXPECT_EQ(RegisteredObjectClasses().size(), kTabs.size());
  for (const Tabs& expected : kTabs) {
    EXPECT_EQ(ClassesOf(expected.object_class, kPropertyPage), expected.tabs);
    EXPECT_EQ(ClassesOf(expected.object_class, kMultiselectPropertyPage), expected.tabs);
  }
}

TEST(ConsoleRegistration, EachClassHasItsWizards) {
  const std::vector<std::vector<std::string>> expected = {
      {"user", "", "CWizardExtUser"},
      {"inetOrgPerson", "", "CWizardExtUser"},
      {"contact", "", "CWizardExtContact"},
      {"group", "", "CWizardExtDistlist"},
      {"organizationalUnit", "", "CWizardExtCompany"},
      {"computer", "", "CWizardExtServer"},
      {"peloraAddresslist", "CWizardAddresslist", "CWizardExtAddresslist"},
      {"peloraDynamicDistlist", "CWizardDynamicDistlist", "CWizardExtDynamicDistlist"},
  };
  for (const std::vector<std::string>& row : expected) {
    const std::vector<std::string> primary =
        row[1].empty() ? std::vector<std::string>{} : std::vector<std::string>{row[1]};
    EXPECT_EQ(ClassesOf(row[0], kCreationWizard), primary) << row[0];
    EXPECT_EQ(ClassesOf(row[0], kCreationWizardExtension), std::vector{row[2]}) << row[0];
  }
}

TEST(ConsoleRegistration, EveryComponentClassIsUsed) {
  std::set<std::string_view> used;
  for (const ConsoleRegistration& row : ConsoleRegistrations()) {
    EXPECT_NE(FindClass(row.component_class), nullptr) << row.component_class;
    used.insert(row.component_class);
  }
  EXPECT_EQ(used.size(), ClassTable().size());
}

TEST(ConsoleRegistration, DefaultsAreTheClassesInTheirOrder) {
  for (const std::string_view object_class : RegisteredObjectClasses()) {
    for (const ConsoleRole role :
         {kPropertyPage, kMultiselectPropertyPage, kCreationWizard, kCreationWizardExtension}) {
      std::vector<Guid> expected;
      for (const std::string& name : ClassesOf(object_class, role)) {
        expected.push_back(FindClass(name)->class_id);
      }
      EXPECT_EQ(DefaultRegistrations(object_class, role), expected);
    }
  }
  const Guid user = FindClass("CPropPageUser")->class_id;
  EXPECT_EQ(DefaultRegistrations("USER", kPropertyPage).front(), user);
  EXPECT_EQ(DefaultRegistrations("users", kPropertyPage), std::vector<Guid>{});
  EXPECT_EQ(DefaultRegistrations("", kPropertyPage), std::vector<Guid>{});
}

}  // namespace
}  // namespace pelora
