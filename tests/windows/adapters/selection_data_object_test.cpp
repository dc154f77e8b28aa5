// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/selection_data_object.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "directory/ds_object_names.h"
#include "tests/windows/support/selection.h"

namespace pelora::windows {
namespace {

using test::Selection;
using ::testing::ElementsAre;

const FormatEtc kObjectNames = {.format = kDsObjectNamesFormat};

Ref<pelora::IDataObject> Adapt(Selection& selection) {
  return Ref<pelora::IDataObject>::Adopt(new SelectionDataObject(Ref<::IDataObject>(&selection)));
}

TEST(SelectionDataObject, GivesTheBlockFromItsFirstByteToItsLast) {
  Selection selection({"LDAP://CN=Ada", "LDAP://dc1/CN=Größe"});
  std::unique_ptr<IStorageMedium> medium;
  ASSERT_EQ(Adapt(selection)->GetData(kObjectNames, medium), S_OK);
  ASSERT_NE(medium, nullptr);
  std::vector<std::string> paths;
  EXPECT_EQ(ReadDsObjectNames(medium->Lock(), paths), S_OK);
  medium->Unlock();
  EXPECT_THAT(paths, ElementsAre("LDAP://CN=Ada", "LDAP://dc1/CN=Größe"));
  EXPECT_EQ(selection.locks(), 0U);
}

TEST(SelectionDataObject, TheBlocksSizeBoundsIt) {
  Selection selection({});
  selection.Replace(std::vector<std::byte>(40));
  std::unique_ptr<IStorageMedium> medium;
  ASSERT_EQ(Adapt(selection)->GetData(kObjectNames, medium), S_OK);
  const std::span<const std::byte> block = medium->Lock();
  EXPECT_GE(block.size(), 40U);
  // Memory comes in grains.
  EXPECT_LT(block.size(), 64U);
  medium->Unlock();
}

TEST(SelectionDataObject, AMediumIsReleasedOnlyWhenToldTo) {
  Selection selection({"LDAP://CN=Ada"});
  std::unique_ptr<IStorageMedium> medium;
  ASSERT_EQ(Adapt(selection)->GetData(kObjectNames, medium), S_OK);
  medium.reset();
  EXPECT_EQ(selection.released(), 0U);
  ASSERT_EQ(Adapt(selection)->GetData(kObjectNames, medium), S_OK);
  medium->Release();
  EXPECT_EQ(selection.released(), 1U);
}

TEST(SelectionDataObject, HoldsItsDataObjectAsLongAsItLives) {
  Selection selection({"LDAP://CN=Ada"});
  Ref<pelora::IDataObject> adapter = Adapt(selection);
  EXPECT_EQ(selection.references(), 1U);
  adapter.Reset();
  EXPECT_EQ(selection.references(), 0U);
}

TEST(SelectionDataObject, AFailureLeavesNoMedium) {
  Selection selection({"LDAP://CN=Ada"});
  selection.FailWith(E_ACCESSDENIED);
  std::unique_ptr<IStorageMedium> medium;
  EXPECT_EQ(Adapt(selection)->GetData(kObjectNames, medium), E_ACCESSDENIED);
  EXPECT_EQ(medium, nullptr);
}

TEST(SelectionDataObject, AnotherFormatIsNotKnown) {
  Selection selection({"LDAP://CN=Ada"});
  std::unique_ptr<IStorageMedium> medium;
  EXPECT_EQ(Adapt(selection)->GetData({.format = kDsSelectionListFormat}, medium), DV_E_FORMATETC);
  EXPECT_EQ(medium, nullptr);
}

TEST(SelectionDataObject, AMediumThatIsNoMemoryIsRefusedAndReleased) {
  Selection selection({"LDAP://CN=Ada"});
  selection.RenderAs(TYMED_ENHMF);
  std::unique_ptr<IStorageMedium> medium;
  EXPECT_EQ(Adapt(selection)->GetData(kObjectNames, medium), DV_E_TYMED);
  EXPECT_EQ(medium, nullptr);
  EXPECT_EQ(selection.released(), 1U);
}

}  // namespace
}  // namespace pelora::windows
