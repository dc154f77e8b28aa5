// SPDX-License-Identifier: Apache-2.0
// The blocks that consoles and object pickers hand over, byte by byte.
#include <gmock/gmock.h>

#include <cstring>

#include "directory/ds_object_names.h"
#include "directory/ds_selection_list.h"

namespace pelora::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

template <class Number>
Number NumberAt(const HeapBlock& block, std::size_t offset) {
  Number number = 0;
  std::memcpy(&number, block.span().subspan(offset, sizeof(number)).data(), sizeof(number));
  return number;
}

std::u16string TextFrom(const HeapBlock& block, std::size_t offset) {
  std::u16string text;
  for (;; offset += 2) {
    const auto unit = NumberAt<char16_t>(block, offset);
    if (unit == 0) return text;
    text += unit;
  }
}

/// The text at an address that stands in the block.
std::u16string TextAt(const HeapBlock& block, std::size_t offset) {
  const auto address = NumberAt<std::uint64_t>(block, offset);
  return TextFrom(block, address - reinterpret_cast<std::uintptr_t>(block.bytes.get()));
}

TEST(MakeDsObjectNames, EntriesStandBeforeStrings) {
  const std::vector<SelectedObject> objects = {
      {.path = "LDAP://CN=A,DC=x", .object_class = "user"},
      {.path = "LDAP://OU=Ä,DC=x", .object_class = "organizationalUnit", .is_container = true}};
  const HeapBlock block = MakeDsObjectNames(objects);
  EXPECT_EQ(NumberAt<std::uint64_t>(block, 0), 0U);
  EXPECT_EQ(NumberAt<std::uint64_t>(block, 8), 0U);
  EXPECT_EQ(NumberAt<std::uint32_t>(block, 16), 2U);
  EXPECT_EQ(NumberAt<std::uint32_t>(block, 20), 0U);
  EXPECT_EQ(NumberAt<std::uint32_t>(block, 24), 0U);
  EXPECT_EQ(NumberAt<std::uint32_t>(block, 28), 52U);
  EXPECT_EQ(TextFrom(block, NumberAt<std::uint32_t>(block, 28)), u"LDAP://CN=A,DC=x");
  EXPECT_EQ(TextFrom(block, NumberAt<std::uint32_t>(block, 32)), u"user");
  EXPECT_EQ(NumberAt<std::uint32_t>(block, 36), 1U);
  EXPECT_EQ(TextFrom(block, NumberAt<std::uint32_t>(block, 44)), u"LDAP://OU=Ä,DC=x");
  EXPECT_EQ(TextFrom(block, NumberAt<std::uint32_t>(block, 48)), u"organizationalUnit");
  EXPECT_EQ(block.size, 52U + 2 * (17 + 5 + 17 + 19));
}

TEST(MakeDsObjectNames, OfNothingCountsNothing) {
  std::vector<std::string> paths{"left over"};
  EXPECT_EQ(ReadDsObjectNames(MakeDsObjectNames({}).span(), paths), S_OK);
  EXPECT_THAT(paths, IsEmpty());
}

TEST(MakeDsSelectionList, TheLayoutIsThatOfThePlatform) {
  const std::vector<ChosenObject> objects = {
      {.path = "LDAP://CN=Meyer\\, Anna,DC=x", .name = "Meyer, Anna", .object_class = "user"},
      {.path = "LDAP://CN=Zoë,DC=x", .name = "Zoë", .object_class = "contact"}};
  const HeapBlock block = MakeDsSelectionList(objects);
  EXPECT_EQ(NumberAt<std::uint32_t>(block, 0), 2U);
  EXPECT_EQ(NumberAt<std::uint32_t>(block, 4), 0U);
  EXPECT_EQ(TextAt(block, 8), u"Meyer, Anna");
  EXPECT_EQ(TextAt(block, 16), u"LDAP://CN=Meyer\\, Anna,DC=x");
  EXPECT_EQ(TextAt(block, 24), u"user");
  EXPECT_EQ(TextAt(block, 32), u"");
  EXPECT_EQ(NumberAt<std::uint64_t>(block, 40), 0U);
  EXPECT_EQ(NumberAt<std::uint32_t>(block, 48), 2U);
  EXPECT_EQ(TextAt(block, 56), u"Zoë");
  EXPECT_EQ(TextAt(block, 72), u"contact");
  EXPECT_EQ(NumberAt<std::uint32_t>(block, 96), 2U);
}

TEST(MakeDsSelectionList, IsReadBackWhereverTheBlockIsMoved) {
  const std::vector<ChosenObject> objects = {{.path = "LDAP://CN=B,DC=x"},
                                             {.path = "LDAP://CN=A,DC=x"}};
  HeapBlock made = MakeDsSelectionList(objects);
  const HeapBlock block = std::move(made);
  std::vector<std::string> paths;
  EXPECT_EQ(ReadDsSelectionList(block.span(), paths), S_OK);
  EXPECT_THAT(paths, ElementsAre("LDAP://CN=B,DC=x", "LDAP://CN=A,DC=x"));
}

}  // namespace
}  // namespace pelora::test
