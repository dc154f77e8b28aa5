// SPDX-License-Identifier: Apache-2.0
#include "hosts/resources/resource_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/unit/block_writer.h"
#include "tests/unit/resource_file_samples.h"

namespace pelora::resources {
namespace {

using test::BlockWriter;
using test::TryExactly;

constexpr std::uint32_t kNumberedHeader = 32;

/// Sizes, type and name of an entry, and the rest of its header.
void PutEntry(BlockWriter& writer, std::uint32_t data_size, std::uint32_t header_size,
              std::uint16_t type, std::uint16_t name) {
  writer.Put(data_size).Put(header_size).PutOrdinal(type).PutOrdinal(name);
  writer.Put(std::uint32_t{0}).Put(std::uint16_t{0x30}).Put(std::uint16_t{0x409});
  writer.Put(std::uint32_t{0}).Put(std::uint32_t{0});
}

/// A file that holds its mark and nothing else yet.
BlockWriter Marked() {
  BlockWriter writer;
  PutEntry(writer, 0, kNumberedHeader, 0, 0);
  return writer;
}

std::string ErrorOf(const std::vector<std::byte>& bytes) {
  std::string error;
  TryExactly(bytes, [&](std::span<const std::byte> block) {
    const auto result = ResourceFile::Read(block);
    EXPECT_EQ(result.value.has_value(), result.error.empty());
    error = result.error;
  });
  return error;
}

ResourceFile Samples() { return ResourceFile::Read(test::SampleResourceBytes()).value.value(); }

TEST(ResourceFile, ReadsWhatTheCompilerWrote) {
  const ResourceFile file = Samples();
  const auto dialog = file.Dialog(300);
  ASSERT_TRUE(dialog.value) << dialog.error;
  EXPECT_EQ(dialog.value->title, "Übersicht");
  ASSERT_EQ(dialog.value->items.size(), 3U);
  EXPECT_EQ(dialog.value->items[0].kind, ControlKind::kListView);
  EXPECT_EQ(dialog.value->items[1].title_resource, 400);
  EXPECT_EQ(dialog.value->items[2].creation_data.size(), 4U);
  EXPECT_EQ(dialog.value->items[2].id, 0xFFFFFFFFU);
}

TEST(ResourceFile, HasADialogWithoutACopy) {
  const ResourceFile file = Samples();
  const DialogTemplate* const dialog = file.FindDialog(300);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->title, "Übersicht");
  EXPECT_EQ(file.FindDialog(300), dialog);
  EXPECT_EQ(file.FindDialog(299), nullptr);
}

TEST(ResourceFile, ReadsTheTablesStrings) {
  const ResourceFile file = Samples();
  EXPECT_EQ(file.StringEntry(15), "last of its block");
  EXPECT_EQ(file.StringEntry(16), "first of its block");
  EXPECT_EQ(file.StringEntry(113), "Ä € \U0001F4EE");
  EXPECT_EQ(file.StringEntry(14), std::nullopt);
  EXPECT_EQ(file.StringEntry(17), std::nullopt);
  EXPECT_EQ(file.StringEntry(0xFFFF), std::nullopt);
}

TEST(ResourceFile, FindsTheFirstOfSeveralLanguages) {
  const ResourceFile file = Samples();
  const auto found = file.Find(kDialogType, std::uint16_t{301});
  ASSERT_TRUE(found);
  EXPECT_EQ(std::ranges::count_if(file.resources(),
                                  [&](const Resource& resource) {
                                    return resource.type == found->type &&
                                           resource.name == found->name;
                                  }),
            2);
  EXPECT_EQ(found->language, 0x407);
  EXPECT_EQ(file.Dialog(301).value.value().title, "Deutsch");
}

TEST(ResourceFile, FindsNamesAndOwnTypes) {
  const ResourceFile file = Samples();
  const auto found = file.Find(std::string("REGISTRY"), std::string("SCRIPT"));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->data.size(), 5U);
  EXPECT_EQ(found->data[0], std::byte{'a'});
  EXPECT_FALSE(file.Find(std::string("REGISTRY"), std::uint16_t{1}));
}

TEST(ResourceFile, SaysThatADialogIsMissing) {
  EXPECT_EQ(Samples().Dialog(12).error, "There is no dialog template 12.");
}

TEST(ResourceFile, ACutFileIsRefusedOrEndsBetweenEntries) {
  const std::span<const std::byte> whole = test::SampleResourceBytes();
  const std::size_t all = Samples().resources().size();
  std::vector<std::size_t> counts;
  for (std::size_t size = 0; size < whole.size(); ++size) {
    TryExactly(whole.first(size), [&](std::span<const std::byte> block) {
      const auto result = ResourceFile::Read(block);
      EXPECT_EQ(result.value.has_value(), result.error.empty()) << size;
      if (!result.value) return;
      EXPECT_LE(result.value->resources().size(), all);
      counts.push_back(result.value->resources().size());
      for (const Resource& resource : result.value->resources()) {
        EXPECT_GE(resource.data.data(), block.data());
        EXPECT_LE(resource.data.data() + resource.data.size(), block.data() + block.size());
      }
    });
  }
  // Cut behind each entry but the last, and once more where an entry ends before its filling bytes.
  EXPECT_GE(counts.size(), all);
  EXPECT_LE(counts.size(), 4 * (all + 1));
}

TEST(ResourceFile, RefusesWhatIsNotAResourceFile) {
  EXPECT_EQ(ErrorOf({}), "The resource file is cut short in the sizes of an entry.");
  BlockWriter unmarked;
  PutEntry(unmarked, 0, kNumberedHeader, 5, 102);
  EXPECT_EQ(ErrorOf(unmarked.bytes()), "The file is not a compiled resource file.");
  EXPECT_EQ(ErrorOf(Marked().bytes()), "");
}

TEST(ResourceFile, RefusesImpossibleHeaderSizes) {
  for (const std::uint32_t size : {0U, 1U, 4U, 7U, 30U, 33U}) {
    BlockWriter writer = Marked();
    PutEntry(writer, 0, size, 5, 102);
    EXPECT_EQ(ErrorOf(writer.bytes()),
              "The resource file has an entry whose header has no possible size.")
        << size;
  }
  for (const std::uint32_t size : {8U, 12U, 20U, 28U}) {
    BlockWriter writer = Marked();
    PutEntry(writer, 0, size, 5, 102);
    EXPECT_EQ(ErrorOf(writer.bytes()),
              "The resource file has an entry whose header does not fit its size.")
        << size;
  }
}

TEST(ResourceFile, RefusesSizesBeyondTheEnd) {
  for (const std::uint32_t size : {36U, 0x7FFFFFFCU, 0xFFFFFFFCU}) {
    BlockWriter writer = Marked();
    PutEntry(writer, 0, size, 5, 102);
    EXPECT_EQ(ErrorOf(writer.bytes()), "The resource file is cut short in the header of an entry.")
        << size;
  }
  for (const std::uint32_t size : {1U, 0x7FFFFFFFU, 0xFFFFFFE0U, 0xFFFFFFFFU}) {
    BlockWriter writer = Marked();
    PutEntry(writer, size, kNumberedHeader, 5, 102);
    EXPECT_EQ(ErrorOf(writer.bytes()), "The resource file is cut short in the data of an entry.")
        << size;
  }
}

TEST(ResourceFile, RefusesANameThatDoesNotEndInItsHeader) {
  BlockWriter writer = Marked();
  writer.Put(std::uint32_t{0}).Put(std::uint32_t{20}).PutOrdinal(5);
  for (int unit = 0; unit < 4; ++unit) writer.Put(std::uint16_t{u'x'});
  EXPECT_EQ(ErrorOf(writer.bytes()),
            "The resource file has an entry whose header does not fit its size.");
}

TEST(ResourceFile, TakesALongerHeaderThanItKnows) {
  BlockWriter writer = Marked();
  PutEntry(writer, 2, kNumberedHeader + 4, 99, 1);
  writer.Put(std::uint32_t{0xEEEEEEEE}).Put(std::uint16_t{0x4242}).Align();
  const auto result = ResourceFile::Read(writer.bytes());
  ASSERT_TRUE(result.value) << result.error;
  const auto found = result.value->Find(std::uint16_t{99}, std::uint16_t{1});
  ASSERT_TRUE(found);
  EXPECT_THAT(found->data, testing::ElementsAre(std::byte{0x42}, std::byte{0x42}));
}

/// A file whose only resource is the string block of the numbers 0 to 15.
std::vector<std::byte> StringBlock(std::span<const std::byte> block) {
  BlockWriter writer = Marked();
  PutEntry(writer, static_cast<std::uint32_t>(block.size()), kNumberedHeader, kStringTableType, 1);
  return writer.PutBytes(block).bytes();
}

TEST(ResourceFile, ReadsNoStringFromACutBlock) {
  BlockWriter strings;
  strings.Put(std::uint16_t{2}).Put(std::uint16_t{u'a'}).Put(std::uint16_t{u'b'});
  strings.Put(std::uint16_t{0xFFFF}).Put(std::uint16_t{u'c'});
  TryExactly(StringBlock(strings.bytes()), [](std::span<const std::byte> bytes) {
    const auto file = ResourceFile::Read(bytes);
    ASSERT_TRUE(file.value) << file.error;
    EXPECT_EQ(file.value->StringEntry(0), "ab");
    EXPECT_EQ(file.value->StringEntry(1), std::nullopt);
    EXPECT_EQ(file.value->StringEntry(2), std::nullopt);
    EXPECT_EQ(file.value->StringEntry(15), std::nullopt);
  });
}

TEST(ResourceFile, TheModulesOwnResourcesCanBeRead) {
  const auto file = ResourceFile::Read(EmbeddedResourceBytes());
  ASSERT_TRUE(file.value) << file.error;
  for (const Resource& resource : file.value->resources()) {
    if (resource.type != ResourceName(kDialogType)) continue;
    const auto dialog = ReadDialogTemplate(resource.data);
    EXPECT_TRUE(dialog.value) << dialog.error;
  }
}

}  // namespace
}  // namespace pelora::resources
