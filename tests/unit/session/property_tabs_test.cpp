// SPDX-License-Identifier: Apache-2.0
// How a selection is handed to the tabs, and which it gets.
#include "hosts/session/property_tabs.h"

#include <gmock/gmock.h>

#include "directory/ds_object_names.h"
#include "hosts/session/selection_data_object.h"

namespace pelora::test {
namespace {

using session::DirectoryObject;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

DirectoryObject ObjectOf(const std::string& dn, std::vector<std::string> classes) {
  return {.dn = dn, .name = {}, .description = {}, .kind = session::KindOf(classes)};
}

TEST(SelectionBlock, GivesThePathsBackInOrder) {
  const std::vector<DirectoryObject> selection = {ObjectOf("CN=Zoë,DC=x", {"top", "user"}),
                                                  ObjectOf("CN=A/B,OU=I/O,DC=x", {"top", "user"})};
  const Ref<IDataObject> data = session::MakeSelectionDataObject(selection);
  std::unique_ptr<IStorageMedium> medium;
  ASSERT_EQ(data->GetData({.format = kDsObjectNamesFormat}, medium), S_OK);
  std::vector<std::string> paths;
  EXPECT_EQ(ReadDsObjectNames(medium->Lock(), paths), S_OK);
  medium->Unlock();
  medium->Release();
  EXPECT_THAT(paths, ElementsAre("LDAP://CN=Zoë,DC=x", "LDAP://CN=A\\/B,OU=I\\/O,DC=x"));
}

TEST(SelectionBlock, KnowsNoOtherFormat) {
  const Ref<IDataObject> data = session::MakeSelectionDataObject({});
  std::unique_ptr<IStorageMedium> medium;
  EXPECT_EQ(data->GetData({.format = "Text"}, medium), DV_E_FORMATETC);
  EXPECT_EQ(medium, nullptr);
}

TEST(TabsOfASelection, AreThoseThatAllObjectsHave) {
  const DirectoryObject user = ObjectOf("CN=U,DC=x", {"top", "person", "user"});
  const DirectoryObject person = ObjectOf("CN=P,DC=x", {"top", "user", "inetOrgPerson"});
  const DirectoryObject other = ObjectOf("CN=O,DC=x", {"top", "printQueue"});
  EXPECT_THAT(session::TabsOf(std::vector{user, person}, {}), SizeIs(2));
  EXPECT_THAT(session::TabsOf(std::vector{user, other}, {}), IsEmpty());
  EXPECT_THAT(session::TabsOf(std::vector{other, user}, {}), IsEmpty());
  EXPECT_THAT(session::TabsOf({}, {}), IsEmpty());
  EXPECT_EQ(session::WhyNoProperties(std::vector{user}, {}), "");
  EXPECT_EQ(session::WhyNoProperties(std::vector{user, other}, {}),
            "The selected objects have no properties in common.");
  EXPECT_EQ(session::WhyNoProperties(std::vector{other}, {}),
            "Objects of the type printQueue have no properties to show.");
}

TEST(ObjectKinds, AreToldByTheMostSpecificClass) {
  EXPECT_EQ(
      ObjectOf("", {"top", "person", "organizationalPerson", "user", "computer"}).kind.type_text,
      "Computer");
  EXPECT_EQ(ObjectOf("", {"top", "GROUP"}).kind.type_text, "Group");
  EXPECT_TRUE(ObjectOf("", {"top", "organizationalUnit"}).kind.is_container);
  EXPECT_EQ(ObjectOf("", {"top", "printQueue"}).kind.type_text, "printQueue");
  EXPECT_EQ(session::KindOf({}).type_text, "");
}

}  // namespace
}  // namespace pelora::test
