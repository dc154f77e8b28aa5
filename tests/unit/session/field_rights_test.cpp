// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/field_rights.h"

#include <gmock/gmock.h>

namespace pelora::session {
namespace {

using ::testing::ElementsAre;

FieldRow RowOf(std::vector<std::string_view> attributes) {
  return {.name = "field", .control = 5, .attributes = std::move(attributes)};
}

ldap::Entry Entry(ldap::AttributeValues allowed) {
  return {.dn = "CN=x", .attributes = {{FieldRights::kAttribute, std::move(allowed)}}};
}

TEST(FieldRights, WithoutAWordOfTheDirectorysEverythingMayBeEdited) {
  FieldRights rights{ldap::Schema()};
  rights.Learn({.dn = "CN=x", .attributes = {}});
  EXPECT_EQ(rights.WhyReadOnly(RowOf({"peloraHidden"})), "");
}

TEST(FieldRights, WhereRightsAreSpokenOfNothingIsSaidForNone) {
  ldap::Schema schema;
  schema.Add(FieldRights::kAttribute, {});
  FieldRights rights(schema);
  rights.Learn({.dn = "CN=x", .attributes = {}});
  EXPECT_EQ(rights.WhyReadOnly(RowOf({"peloraHidden"})), "You have no right to change this.");
  rights.Learn(Entry({"peloraHidden"}));
  EXPECT_EQ(rights.WhyReadOnly(RowOf({"peloraHidden"})),
            "You have no right to change this of 1 of the 2 objects.");
}

TEST(FieldRights, AFieldNeedsTheRightToAllThatItWrites) {
  FieldRights rights{ldap::Schema()};
  rights.Learn(Entry({"PELORAADMIN", "peloraHidden"}));
  EXPECT_EQ(rights.WhyReadOnly(RowOf({"peloraHidden"})), "");
  EXPECT_EQ(rights.WhyReadOnly(RowOf({"peloraAdmin", "peloraHidden"})), "");
  EXPECT_EQ(rights.WhyReadOnly(RowOf({"peloraAdmin", "peloraResourceType"})),
            "You have no right to change this.");
}

TEST(FieldRights, ASelectionNeedsTheRightToAllOfIt) {
  FieldRights rights{ldap::Schema()};
  rights.Learn(Entry({"peloraHidden"}));
  rights.Learn(Entry({"cn"}));
  rights.Learn({.dn = "CN=y", .attributes = {}});
  EXPECT_EQ(rights.WhyReadOnly(RowOf({"peloraHidden"})),
            "You have no right to change this of 1 of the 3 objects.");
}

TEST(FieldRights, ButtonsGoWithTheFieldAndASharedListStays) {
  FieldRow row = RowOf({"otherMailbox"});
  row.choose = 6;
  row.remove = 7;
  row.make_default = 8;
  EXPECT_THAT(ControlsOf(row), ElementsAre(5, 6, 7, 8));
  row.entry = "imap";
  row.choice_buttons = {9, 0};
  EXPECT_THAT(ControlsOf(row), ElementsAre(6, 7, 8, 9));
}

}  // namespace
}  // namespace pelora::session
