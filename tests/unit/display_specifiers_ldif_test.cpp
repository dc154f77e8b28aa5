// SPDX-License-Identifier: Apache-2.0
#include "deploy/display/display_specifiers_ldif.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "server/class_table.h"
#include "server/guid_text.h"

namespace pelora {
namespace {

std::string IdentifierOf(std::string_view component_class) {
  return GuidText(FindClass(component_class)->class_id);
}

/// The lines of a directory class's record, its name without what stands for all languages.
std::vector<std::string> RecordOf(const std::string& object_class) {
  const std::string head = "dn: CN=" + object_class + "-Display,";
  std::istringstream ldif(deploy::DisplaySpecifiersLdif());
  std::vector<std::string> record;
  for (std::string line; std::getline(ldif, line);) {
    if (record.empty() && !line.starts_with(head)) continue;
    if (line.empty()) break;
    record.push_back(line);
  }
  return record;
}

TEST(DisplaySpecifiersLdif, AddsTabsAndAWizardPageToADirectorysOwnClass) {
  const std::string tab = IdentifierOf("CPropPageContact");
  const std::vector<std::string> expected = {
      "dn: CN=contact-Display,CN=@LANGUAGE@,CN=DisplaySpecifiers,@CONFIGURATION@",
      "changetype: modify",
      "add: adminPropertyPages",
      "adminPropertyPages: @NEXT@," + tab,
      "-",
      "add: adminMultiselectPropertyPages",
      "adminMultiselectPropertyPages: @NEXT@," + tab,
      "-",
      "add: createWizardExt",
      "createWizardExt: @NEXT@," + IdentifierOf("CWizardExtContact"),
      "-",
  };
  EXPECT_EQ(RecordOf("contact"), expected);
}

TEST(DisplaySpecifiersLdif, SeveralTabsStandInTheirOrder) {
  const std::vector<std::string> record = RecordOf("organizationalUnit");
  ASSERT_GE(record.size(), 6U);
  EXPECT_EQ(record[3], "adminPropertyPages: @NEXT@," + IdentifierOf("CPropPageCompany"));
  EXPECT_EQ(record[4], "adminPropertyPages: @NEXT@," + IdentifierOf("CPropPageCompanyQuota"));
  EXPECT_EQ(record[5], "adminPropertyPages: @NEXT@," + IdentifierOf("CPropPageCompanyRights"));
}

TEST(DisplaySpecifiersLdif, MakesTheSpecifierOfAGroupwareClass) {
  const std::string general = IdentifierOf("CPropPageAddresslistGeneral");
  const std::string tab = IdentifierOf("CPropPageAddresslist");
  const std::vector<std::string> expected = {
      "dn: CN=peloraAddresslist-Display,CN=@LANGUAGE@,CN=DisplaySpecifiers,@CONFIGURATION@",
      "changetype: add",
      "objectClass: displaySpecifier",
      "classDisplayName: Address List",
      "adminPropertyPages: @NEXT@," + general,
      "adminPropertyPages: @NEXT@," + tab,
      "adminMultiselectPropertyPages: @NEXT@," + general,
      "adminMultiselectPropertyPages: @NEXT@," + tab,
      "creationWizard: " + IdentifierOf("CWizardAddresslist"),
      "createWizardExt: @NEXT@," + IdentifierOf("CWizardExtAddresslist"),
  };
  EXPECT_EQ(RecordOf("peloraAddresslist"), expected);
}

TEST(DisplaySpecifiersLdif, NamesEveryComponentClass) {
  const std::string ldif = deploy::DisplaySpecifiersLdif();
  for (const ComponentClass& component : ClassTable()) {
    EXPECT_NE(ldif.find(GuidText(component.class_id)), std::string::npos) << component.name;
  }
  for (const char* object_class : {"user", "inetOrgPerson", "group", "computer"}) {
    EXPECT_FALSE(RecordOf(object_class).empty()) << object_class;
  }
  EXPECT_FALSE(RecordOf("peloraDynamicDistlist").empty());
}

}  // namespace
}  // namespace pelora
