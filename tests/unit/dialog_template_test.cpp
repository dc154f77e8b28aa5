// SPDX-License-Identifier: Apache-2.0
#include "hosts/resources/dialog_template.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/unit/block_writer.h"

namespace pelora::resources {
namespace {

using test::BlockWriter;
using test::TryExactly;
using testing::HasSubstr;

constexpr std::uint32_t kSetFont = 0x40;

/// The fixed part of a template, up to its menu.
BlockWriter Header(std::uint32_t style, std::uint16_t items) {
  BlockWriter writer;
  writer.Put(std::uint16_t{1}).Put(std::uint16_t{0xFFFF});
  writer.Put(std::uint32_t{77}).Put(std::uint32_t{0x10}).Put(style).Put(items);
  writer.Put(std::int16_t{-3}).Put(std::int16_t{4}).Put(std::int16_t{271}).Put(std::int16_t{228});
  return writer;
}

/// A template without a font, up to its first item.
BlockWriter Start(std::uint16_t items) {
  return Header(0, items).PutText(u"").PutText(u"").PutText(u"Title");
}

/// The fixed part of an item, up to its window class.
void PutItem(BlockWriter& writer, std::uint32_t id) {
  writer.Align().Put(std::uint32_t{5}).Put(std::uint32_t{6}).Put(std::uint32_t{0x50010003});
  writer.Put(std::int16_t{-1}).Put(std::int16_t{2}).Put(std::int16_t{30}).Put(std::int16_t{14});
  writer.Put(id);
}

/// Font, classes by atom and by name, a title that is a number, creation data of an odd length.
BlockWriter Rich() {
  BlockWriter writer = Header(kSetFont, 4);
  writer.PutOrdinal(9).PutText(u"Class").PutText(u"Größe");
  writer.Put(std::uint16_t{8}).Put(std::uint16_t{400}).Put(std::uint8_t{1}).Put(std::uint8_t{2});
  writer.PutText(u"MS Shell Dlg");
  PutItem(writer, 0xFFFFFFFF);
  writer.PutOrdinal(0x80).PutText(u"&Tür").Put(std::uint16_t{0});
  PutItem(writer, 200);
  writer.PutOrdinal(0x82).PutOrdinal(31).Put(std::uint16_t{3});
  writer.Put(std::uint8_t{7}).Put(std::uint8_t{8}).Put(std::uint8_t{9});
  PutItem(writer, 201);
  writer.PutText(u"SysListView32").PutText(u"").Put(std::uint16_t{0});
  PutItem(writer, 202);
  writer.PutText(u"Special").PutText(u"x").Put(std::uint16_t{0});
  return writer;
}

ReadResult<DialogTemplate> Read(const BlockWriter& writer) {
  ReadResult<DialogTemplate> result;
  TryExactly(writer.bytes(),
             [&](std::span<const std::byte> block) { result = ReadDialogTemplate(block); });
  EXPECT_EQ(result.value.has_value(), result.error.empty()) << result.error;
  return result;
}

TEST(DialogTemplateReader, ReadsTheDialog) {
  const auto result = Read(Rich());
  ASSERT_TRUE(result.value) << result.error;
  const DialogTemplate& dialog = *result.value;
  EXPECT_EQ(dialog.help_id, 77U);
  EXPECT_EQ(dialog.extended_style, 0x10U);
  EXPECT_EQ(dialog.style, kSetFont);
  EXPECT_EQ(dialog.x, -3);
  EXPECT_EQ(dialog.y, 4);
  EXPECT_EQ(dialog.width, 271);
  EXPECT_EQ(dialog.height, 228);
  EXPECT_EQ(dialog.title, "Größe");
  ASSERT_TRUE(dialog.font);
  EXPECT_EQ(dialog.font->point_size, 8);
  EXPECT_EQ(dialog.font->weight, 400);
  EXPECT_TRUE(dialog.font->italic);
  EXPECT_EQ(dialog.font->charset, 2);
  EXPECT_EQ(dialog.font->face, "MS Shell Dlg");
}

TEST(DialogTemplateReader, ReadsEveryItem) {
  const auto result = Read(Rich());
  ASSERT_TRUE(result.value) << result.error;
  ASSERT_EQ(result.value->items.size(), 4U);
  const DialogItem& button = result.value->items[0];
  EXPECT_EQ(button.help_id, 5U);
  EXPECT_EQ(button.extended_style, 6U);
  EXPECT_EQ(button.style, 0x50010003U);
  EXPECT_EQ(button.x, -1);
  EXPECT_EQ(button.y, 2);
  EXPECT_EQ(button.width, 30);
  EXPECT_EQ(button.height, 14);
  EXPECT_EQ(button.id, 0xFFFFFFFFU);
  EXPECT_EQ(button.kind, ControlKind::kButton);
  EXPECT_EQ(button.window_class, "BUTTON");
  EXPECT_EQ(button.title, "&Tür");
  EXPECT_EQ(button.title_resource, std::nullopt);

  const DialogItem& icon = result.value->items[1];
  EXPECT_EQ(icon.kind, ControlKind::kStatic);
  EXPECT_EQ(icon.title, "");
  EXPECT_EQ(icon.title_resource, 31);
  EXPECT_THAT(icon.creation_data, testing::ElementsAre(std::byte{7}, std::byte{8}, std::byte{9}));

  EXPECT_EQ(result.value->items[2].kind, ControlKind::kListView);
  EXPECT_EQ(result.value->items[2].window_class, "SYSLISTVIEW32");
  EXPECT_EQ(result.value->items[2].id, 201U);
  EXPECT_EQ(result.value->items[3].kind, ControlKind::kOther);
  EXPECT_EQ(result.value->items[3].window_class, "SPECIAL");
  EXPECT_EQ(result.value->items[3].title, "x");
}

TEST(DialogTemplateReader, KnowsEveryClass) {
  const struct {
    std::uint16_t atom;
    const char16_t* name;
    ControlKind kind;
  } cases[] = {
      {0x80, u"Button", ControlKind::kButton},       {0x81, u"edit", ControlKind::kEdit},
      {0x82, u"STATIC", ControlKind::kStatic},       {0x83, u"ListBox", ControlKind::kListBox},
      {0x84, u"ScrollBar", ControlKind::kScrollBar}, {0x85, u"ComboBox", ControlKind::kComboBox},
      {0x86, u"Other", ControlKind::kOther},         {0, u"", ControlKind::kOther},
  };
  for (const auto& [atom, name, kind] : cases) {
    BlockWriter writer = Start(2);
    PutItem(writer, 1);
    writer.PutOrdinal(atom).PutText(u"").Put(std::uint16_t{0});
    PutItem(writer, 2);
    writer.PutText(name).PutText(u"").Put(std::uint16_t{0});
    const auto result = Read(writer);
    ASSERT_TRUE(result.value) << result.error;
    EXPECT_EQ(result.value->items[0].kind, kind) << atom;
    EXPECT_EQ(result.value->items[1].kind, kind) << atom;
  }
}

TEST(DialogTemplateReader, ReadsADialogWithoutControlsAndWithoutAFont) {
  const auto result = Read(Start(0));
  ASSERT_TRUE(result.value) << result.error;
  EXPECT_EQ(result.value->title, "Title");
  EXPECT_EQ(result.value->font, std::nullopt);
  EXPECT_TRUE(result.value->items.empty());
}

TEST(DialogTemplateReader, LeavesWhatFollowsTheLastItem) {
  BlockWriter writer = Rich();
  writer.Align().Put(std::uint32_t{0xFFFFFFFF});
  EXPECT_TRUE(Read(writer).value);
}

TEST(DialogTemplateReader, KeepsHalvesOfLettersApart) {
  const auto result = Read(Header(0, 0).PutText(u"").PutText(u"").PutText(u"\xD83D!"));
  ASSERT_TRUE(result.value) << result.error;
  EXPECT_EQ(result.value->title, "\xED\xA0\xBD!");
}

TEST(DialogTemplateReader, RefusesATemplateCutShortAnywhere) {
  const std::vector<std::byte> whole = Rich().bytes();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    TryExactly(std::span(whole).first(size), [&](std::span<const std::byte> block) {
      const auto result = ReadDialogTemplate(block);
      EXPECT_FALSE(result.value) << size;
      EXPECT_THAT(result.error, HasSubstr("cut short")) << size;
    });
  }
}

TEST(DialogTemplateReader, RefusesOtherKindsOfTemplate) {
  BlockWriter classic;
  classic.Put(std::uint32_t{0x80C800C0}).Put(std::uint32_t{0}).Put(std::uint16_t{0});
  for (int word = 0; word < 8; ++word) classic.Put(std::uint16_t{0});
  EXPECT_EQ(Read(classic).error, "The dialog template is not of the extended kind.");

  BlockWriter newer;
  newer.Put(std::uint16_t{2}).Put(std::uint16_t{0xFFFF});
  EXPECT_EQ(Read(newer).error, "The dialog template is not of the extended kind.");
}

TEST(DialogTemplateReader, RefusesMoreItemsThanThereAre) {
  BlockWriter writer = Start(0xFFFF);
  PutItem(writer, 1);
  writer.PutOrdinal(0x80).PutText(u"").Put(std::uint16_t{0});
  EXPECT_EQ(Read(writer).error, "The dialog template is cut short in control 2 of 65535.");
}

TEST(DialogTemplateReader, RefusesStringsThatDoNotEnd) {
  BlockWriter title = Header(0, 0);
  title.PutText(u"").PutText(u"").Put(std::uint16_t{u'x'}).Put(std::uint16_t{u'y'});
  EXPECT_FALSE(Read(title).value);

  BlockWriter face = Header(kSetFont, 0);
  face.PutText(u"").PutText(u"").PutText(u"");
  face.Put(std::uint32_t{0}).Put(std::uint16_t{0}).Put(std::uint16_t{u'x'});
  EXPECT_FALSE(Read(face).value);

  BlockWriter item = Start(1);
  PutItem(item, 1);
  item.PutOrdinal(0x80).Put(std::uint16_t{u'x'});
  EXPECT_FALSE(Read(item).value);
}

TEST(DialogTemplateReader, RefusesCreationDataBeyondTheEnd) {
  BlockWriter writer = Start(1);
  PutItem(writer, 1);
  writer.PutOrdinal(0x80).PutText(u"").Put(std::uint16_t{0xFFFF}).Put(std::uint32_t{0});
  EXPECT_EQ(Read(writer).error, "The dialog template is cut short in control 1 of 1.");
}

}  // namespace
}  // namespace pelora::resources
