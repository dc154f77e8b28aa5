// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/fields/offline_catalogue.h"
#include "hosts/ctl/fields/wish_maker.h"
#include "hosts/ctl/objects/change_table.h"
#include "tests/ctl/tab_with_a_new_field.h"

namespace pelora::ctl {
namespace {

using ::testing::ElementsAre;
using ::testing::IsNull;
using ::testing::NotNull;

class FieldCatalogueTest : public ::testing::Test {
 protected:
  resources::ResourceFile module_ =
      *resources::ResourceFile::Read(resources::EmbeddedResourceBytes()).value;
  OfflineCatalogue offline_{module_};
};

TEST_F(FieldCatalogueTest, AFieldThatIsAddedToATabIsAField) {
  FieldCatalogue catalogue(offline_.specifiers, offline_.platform.platform, module_,
                           &MakeTabWithANewField);
  const Field* field = catalogue.Find("user", "DESCRIPTION");
  ASSERT_THAT(field, NotNull());
  EXPECT_EQ(field->tab, "Motto");
  EXPECT_EQ(field->place.label, "File path");
  EXPECT_EQ(field->KindText(), "text");
  EXPECT_THAT(catalogue.FieldsOfAll({"user"}), ElementsAre(field));
  EXPECT_THAT(catalogue.Find("user", "peloraFilter"), IsNull());
  // As an assignment, and as the header of a table.
  const std::vector<Assignment> wanted = {{.field = "description", .value = "x"}};
  EXPECT_NO_THROW(CheckAssignments(wanted, catalogue));
  EXPECT_NO_THROW(ChangeTable("dn,Description\n", "t", catalogue, false));
  EXPECT_THROW(ChangeTable("dn,peloraHidden\n", "t", catalogue, false), WrongUsage);
}

TEST_F(FieldCatalogueTest, TablesMayHaveTheColumnsThatTheConsoleShowsOfEveryObject) {
  EXPECT_NO_THROW(ChangeTable("dn,name,type,folder,logon,remark,created,changed,problem,field\n",
                              "t", offline_.catalogue, false));
  EXPECT_THROW(ChangeTable("dn,shoe-size\n", "t", offline_.catalogue, false), WrongUsage);
}

TEST_F(FieldCatalogueTest, FieldsStandInTheOrderOfTheTabs) {
  const std::vector<Field>& fields = offline_.catalogue.FieldsOf("user");
  ASSERT_FALSE(fields.empty());
  EXPECT_EQ(fields.front().row.name, "peloraQuotaOverride");
  EXPECT_EQ(fields.front().place.group, "Quota");
  EXPECT_EQ(fields.back().tab, "Pelora Features");
}

TEST_F(FieldCatalogueTest, LimitsThatThePageDoesNotShowAreNoFields) {
  EXPECT_THAT(offline_.catalogue.Find("organizationalUnit", "peloraQuotaWarn"), NotNull());
  EXPECT_THAT(offline_.catalogue.Find("organizationalUnit", "peloraQuotaHard"), IsNull());
}

}  // namespace
}  // namespace pelora::ctl
