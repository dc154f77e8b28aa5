// SPDX-License-Identifier: Apache-2.0
// How the console hands a selection to the tabs.
#include "hosts/console/selection_data_object.h"

#include <gmock/gmock.h>

#include <cstring>

#include "directory/ds_object_names.h"
#include "hosts/console/property_tabs.h"

namespace pelora::test {
namespace {

using console::DirectoryObject;
using console::SelectedObject;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::uint32_t NumberAt(const std::vector<std::byte>& block, std::size_t offset) {
  std::uint32_t number = 0;
  std::memcpy(&number, block.data() + offset, sizeof(number));
  return number;
}

std::u16string StringAt(const std::vector<std::byte>& block, std::size_t offset) {
  std::u16string text;
  for (;; offset += 2) {
    char16_t unit = 0;
    std::memcpy(&unit, block.data() + offset, sizeof(unit));
    if (unit == 0) return text;
    text += unit;
  }
}

DirectoryObject ObjectOf(const std::string& dn, std::vector<std::string> classes) {
  return {.dn = dn, .name = {}, .description = {}, .kind = console::KindOf(classes)};
}

TEST(SelectionBlock, HoldsEntriesThenStrings) {
  const std::vector<SelectedObject> objects = {
      {.path = "LDAP://CN=A,DC=x", .object_class = "user", .is_container = false},
      {.path = "LDAP://OU=Ä,DC=x", .object_class = "organizationalUnit", .is_container = true}};
  const std::vector<std::byte> block = console::DsObjectNamesOf(objects);
  EXPECT_EQ(NumberAt(block, 16), 2U);
  EXPECT_EQ(NumberAt(block, 20), 0U);
  EXPECT_EQ(NumberAt(block, 24), 0U);
  EXPECT_EQ(NumberAt(block, 28), 52U);
  EXPECT_EQ(StringAt(block, NumberAt(block, 28)), u"LDAP://CN=A,DC=x");
  EXPECT_EQ(StringAt(block, NumberAt(block, 32)), u"user");
  EXPECT_EQ(NumberAt(block, 36), 1U);
  EXPECT_EQ(StringAt(block, NumberAt(block, 44)), u"LDAP://OU=Ä,DC=x");
  EXPECT_EQ(StringAt(block, NumberAt(block, 48)), u"organizationalUnit");
}

TEST(SelectionBlock, GivesThePathsBackInOrder) {
  const std::vector<DirectoryObject> selection = {ObjectOf("CN=Zoë,DC=x", {"top", "user"}),
                                                  ObjectOf("CN=A/B,OU=I/O,DC=x", {"top", "user"})};
  const Ref<IDataObject> data = console::MakeSelectionDataObject(selection);
  std::unique_ptr<IStorageMedium> medium;
  ASSERT_EQ(data->GetData({.format = kDsObjectNamesFormat}, medium), S_OK);
  std::vector<std::string> paths;
  EXPECT_EQ(ReadDsObjectNames(medium->Lock(), paths), S_OK);
  medium->Unlock();
  medium->Release();
  EXPECT_THAT(paths, ElementsAre("LDAP://CN=Zoë,DC=x", "LDAP://CN=A\\/B,OU=I\\/O,DC=x"));
}

TEST(SelectionBlock, KnowsNoOtherFormat) {
  const Ref<IDataObject> data = console::MakeSelectionDataObject({});
  std::unique_ptr<IStorageMedium> medium;
  EXPECT_EQ(data->GetData({.format = "Text"}, medium), DV_E_FORMATETC);
  EXPECT_EQ(medium, nullptr);
}

TEST(SelectionBlock, OfNothingCountsNothing) {
  std::vector<std::string> paths{"left over"};
  EXPECT_EQ(ReadDsObjectNames(console::DsObjectNamesOf({}), paths), S_OK);
  EXPECT_THAT(paths, IsEmpty());
}

TEST(TabsOfASelection, AreThoseThatAllObjectsHave) {
  const DirectoryObject user = ObjectOf("CN=U,DC=x", {"top", "person", "user"});
  const DirectoryObject person = ObjectOf("CN=P,DC=x", {"top", "user", "inetOrgPerson"});
  const DirectoryObject other = ObjectOf("CN=O,DC=x", {"top", "printQueue"});
  EXPECT_THAT(console::TabsOf(std::vector{user, person}, {}), SizeIs(2));
  EXPECT_THAT(console::TabsOf(std::vector{user, other}, {}), IsEmpty());
  EXPECT_THAT(console::TabsOf(std::vector{other, user}, {}), IsEmpty());
  EXPECT_THAT(console::TabsOf({}, {}), IsEmpty());
  EXPECT_EQ(console::WhyNoProperties(std::vector{user}, {}), QString());
  EXPECT_EQ(console::WhyNoProperties(std::vector{user, other}, {}),
            QStringLiteral("The selected objects have no properties in common."));
  EXPECT_EQ(console::WhyNoProperties(std::vector{other}, {}),
            QStringLiteral("Objects of the type printQueue have no properties to show."));
}

TEST(ObjectKinds, AreToldByTheMostSpecificClass) {
  EXPECT_EQ(
      ObjectOf("", {"top", "person", "organizationalPerson", "user", "computer"}).kind.type_text,
      QStringLiteral("Computer"));
  EXPECT_EQ(ObjectOf("", {"top", "GROUP"}).kind.type_text, QStringLiteral("Group"));
  EXPECT_TRUE(ObjectOf("", {"top", "organizationalUnit"}).kind.is_container);
  EXPECT_EQ(ObjectOf("", {"top", "printQueue"}).kind.type_text, QStringLiteral("printQueue"));
  EXPECT_EQ(console::KindOf({}).type_text, QString());
}

}  // namespace
}  // namespace pelora::test
