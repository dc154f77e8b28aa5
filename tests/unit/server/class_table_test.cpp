// SPDX-License-Identifier: Apache-2.0
#include "server/class_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "server/module_identity.h"

namespace pelora {
namespace {

using ::testing::ElementsAre;

struct Row {
  std::string_view name;
  std::string_view prog_id;
  std::string_view version_independent_prog_id;

  friend bool operator==(const Row&, const Row&) = default;
};

void PrintTo(const Row& row, std::ostream* out) {
  *out << row.name << ", " << row.prog_id << ", " << row.version_independent_prog_id;
}

TEST(ClassTable, HoldsEveryClassInOrderUnderItsPublishedNames) {
  constexpr std::string_view kList = "PeloraProp.PropPageDistlist";
  constexpr std::string_view kList1 = "PeloraProp.PropPageDistlist.1";
  constexpr std::string_view kPage = "PeloraProp.PropPage";
  constexpr std::string_view kPage1 = "PeloraProp.PropPage.1";
  std::vector<Row> rows;
  for (const ComponentClass& row : ClassTable()) {
    rows.push_back({row.name, row.prog_id, row.version_independent_prog_id});
  }
  EXPECT_THAT(
      rows,
      ElementsAre(
          Row{"CPropPageAddresslist", kList1, kList},
          Row{"CPropPageAddresslistGeneral", kList1, kList},
          Row{"CPropPageCompany", "PeloraProp.PropPageCompany.1", "PeloraProp.PropPageCompany"},
          Row{"CPropPageCompanyQuota", "PeloraProp.PropPageCompanyQuota.1",
              "PeloraProp.PropPageCompanyQuota"},
          Row{"CPropPageCompanyRights", "PeloraProp.PropPageCompanyRights.1",
              "PeloraProp.PropPageCompanyRights"},
          Row{"CPropPageContact", kList1, "PeloraProp.PropPageContact"},
          Row{"CPropPageDistlist", kList1, kList}, Row{"CPropPageDynamicDistlist", kList1, kList},
          Row{"CPropPageDynamicDistlistGeneral", kList1, kList},
          Row{"CPropPageFeatures", "PeloraProp.PropPageFeatures.1", "PeloraProp.PropPageFeatures"},
          Row{"CPropPageServer", "PeloraProp.PropPageServer.1", "PeloraProp.PropPageServer"},
          Row{"CPropPageUser", kPage1, kPage}, Row{"CWizardExtAddresslist", kPage1, kPage},
          Row{"CWizardAddresslist", kPage1, kPage}, Row{"CWizardExtDynamicDistlist", kPage1, kPage},
          Row{"CWizardDynamicDistlist", kPage1, kPage}, Row{"CWizardExtCompany", kPage1, kPage},
          Row{"CWizardExtContact", kPage1, kPage}, Row{"CWizardExtDistlist", kPage1, kPage},
          Row{"CWizardExtServer", kPage1, kPage}, Row{"CWizardExtUser", kPage1, kPage}));
}

TEST(ClassTable, EveryIdentifierIsItsOwn) {
  std::set<Guid> identifiers = {kApplicationId, kTypeLibraryId, Guid{}};
  for (const ComponentClass& row : ClassTable()) {
    EXPECT_TRUE(identifiers.insert(row.class_id).second) << row.name;
  }
}

TEST(ClassTable, FindsAClassByItsIdentifierAndByItsName) {
  for (const ComponentClass& row : ClassTable()) {
    EXPECT_EQ(FindClass(row.class_id), &row);
    EXPECT_EQ(FindClass(row.name), &row);
  }
  EXPECT_EQ(FindClass(IID_IADs), nullptr);
  EXPECT_EQ(FindClass("CPropPage"), nullptr);
}

}  // namespace
}  // namespace pelora
