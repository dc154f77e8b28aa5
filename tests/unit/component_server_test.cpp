// SPDX-License-Identifier: Apache-2.0
#include "server/component_server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "platform/shell_extension.h"
#include "server/class_table.h"
#include "tests/unit/page_bench.h"

namespace pelora {
namespace {

const std::vector<std::string> kExpectedClasses = {
    "CPropPageAddresslist PeloraProp.PropPageDistlist.1 PeloraProp.PropPageDistlist",
    "CPropPageAddresslistGeneral PeloraProp.PropPageDistlist.1 PeloraProp.PropPageDistlist",
    "CPropPageCompany PeloraProp.PropPageCompany.1 PeloraProp.PropPageCompany",
    "CPropPageCompanyQuota PeloraProp.PropPageCompanyQuota.1 PeloraProp.PropPageCompanyQuota",
    "CPropPageCompanyRights PeloraProp.PropPageCompanyRights.1 PeloraProp.PropPageCompanyRights",
    "CPropPageContact PeloraProp.PropPageDistlist.1 PeloraProp.PropPageContact",
    "CPropPageDistlist PeloraProp.PropPageDistlist.1 PeloraProp.PropPageDistlist",
    "CPropPageDynamicDistlist PeloraProp.PropPageDistlist.1 PeloraProp.PropPageDistlist",
    "CPropPageDynamicDistlistGeneral PeloraProp.PropPageDistlist.1 PeloraProp.PropPageDistlist",
    "CPropPageFeatures PeloraProp.PropPageFeatures.1 PeloraProp.PropPageFeatures",
    "CPropPageServer PeloraProp.PropPageServer.1 PeloraProp.PropPageServer",
    "CPropPageUser PeloraProp.PropPage.1 PeloraProp.PropPage",
    "CWizardExtAddresslist PeloraProp.PropPage.1 PeloraProp.PropPage",
    "CWizardAddresslist PeloraProp.PropPage.1 PeloraProp.PropPage",
    "CWizardExtDynamicDistlist PeloraProp.PropPage.1 PeloraProp.PropPage",
    "CWizardDynamicDistlist PeloraProp.PropPage.1 PeloraProp.PropPage",
    "CWizardExtCompany PeloraProp.PropPage.1 PeloraProp.PropPage",
    "CWizardExtContact PeloraProp.PropPage.1 PeloraProp.PropPage",
    "CWizardExtDistlist PeloraProp.PropPage.1 PeloraProp.PropPage",
    "CWizardExtServer PeloraProp.PropPage.1 PeloraProp.PropPage",
    "CWizardExtUser PeloraProp.PropPage.1 PeloraProp.PropPage",
};

TEST(ClassTable, HoldsEveryClassInTheOrderOfRegistration) {
  std::vector<std::string> actual;
  for (const ComponentClass& row : ClassTable()) {
    actual.push_back(std::string(row.name) + " " + std::string(row.prog_id) + " " +
                     std::string(row.version_independent_prog_id));
  }
  EXPECT_EQ(actual, kExpectedClasses);
}

TEST(ClassTable, IdentifiersTellClassesApart) {
  std::set<Guid> identifiers;
  for (const ComponentClass& row : ClassTable()) {
    EXPECT_NE(row.class_id, Guid{});
    EXPECT_TRUE(identifiers.insert(row.class_id).second) << row.name;
    EXPECT_EQ(FindClass(row.class_id), &row);
    EXPECT_EQ(FindClass(row.name), &row);
  }
  EXPECT_EQ(FindClass(Guid{}), nullptr);
  EXPECT_EQ(FindClass("CPropPageNothing"), nullptr);
}

TEST(ComponentServer, MakesEveryClassAndLetsItGo) {
  testing::PageBench host;
  int made = 0;
  for (const ComponentClass& row : ClassTable()) {
    void* object = nullptr;
    ASSERT_EQ(CreateComponent(row.class_id, host.platform, IID_IUnknown, &object), S_OK)
        << row.name;
    EXPECT_EQ(static_cast<IUnknown*>(object)->Release(), 0U);
    ++made;
  }
  EXPECT_EQ(made, 21);
  EXPECT_EQ(host.library.initialized(), made);
  EXPECT_EQ(host.library.uninitialized(), made);
}

TEST(ComponentServer, RefusesWhatItDoesNotHave) {
  testing::PageBench host;
  void* object = &host;
  EXPECT_EQ(CreateComponent(Guid{}, host.platform, IID_IUnknown, &object),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(object, nullptr);
  const Guid user = FindClass("CPropPageUser")->class_id;
  object = &host;
  EXPECT_EQ(CreateComponent(user, host.platform, IID_IADs, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(CreateComponent(user, host.platform, IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(host.library.initialized(), host.library.uninitialized());
}

}  // namespace
}  // namespace pelora
