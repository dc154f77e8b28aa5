// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/field_book.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pelora::session {
namespace {

TEST(FieldBook, OfMembersItTellsWhoWasTakenOutAndPutIn) {
  FieldBook book;
  for (const OwnPageKind& kind : OwnPageKinds()) {
    for (const AttributeWords& words : kind.words) book.Add(words);
  }
  changes::Change change{.dn = "CN=Sales,DC=x",
                         .attributes = {{.attribute = "member",
                                         .is_list = true,
                                         .seen = {"CN=Ada,DC=x", "CN=Bo\\, B,DC=x"},
                                         .wanted = {}}}};
  std::vector<ShownField> shown = book.FieldsOf(change);
  ASSERT_EQ(shown.size(), 1U);
  EXPECT_EQ(shown.front().field, "Members");
  EXPECT_EQ(shown.front().before, "taken out: Ada; Bo, B");
  EXPECT_EQ(shown.front().after, "nobody put in") << "the others stay, whoever they are";
  change.attributes.front().wanted = {"CN=Cy,DC=x"};
  change.attributes.front().seen.clear();
  shown = book.FieldsOf(change);
  EXPECT_EQ(shown.front().before, "nobody taken out");
  EXPECT_EQ(shown.front().after, "put in: Cy");
}

}  // namespace
}  // namespace pelora::session
