// SPDX-License-Identifier: Apache-2.0
// The templates of the wizard pages as they were compiled, control by control.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hosts/resources/resource_file.h"
#include "resources/resource.h"

namespace pelora::resources {
namespace {

using Lines = std::vector<std::string>;

constexpr std::uint32_t kDisabled = 0x08000000;
constexpr std::uint32_t kTabStop = 0x00010000;
constexpr std::uint32_t kTypeMask = 0x1F;
constexpr std::uint32_t kReadOnly = 0x800;
constexpr std::uint32_t kDigitsOnly = 0x2000;

std::string KindOf(const DialogItem& item) {
  const std::uint32_t type = item.style & kTypeMask;
  switch (item.kind) {
    case ControlKind::kButton:
      return (type & 0xFU) == 3 ? "check box" : type == 0 ? "button" : "other button";
    case ControlKind::kEdit:
      return std::string("edit") + ((item.style & kReadOnly) != 0 ? ", read-only" : "") +
             ((item.style & kDigitsOnly) != 0 ? ", digits" : "");
    case ControlKind::kStatic:
      if (type == 3) return "icon " + std::to_string(item.title_resource.value_or(0));
      return type == 0x10 ? "rule" : type == 0 ? "static" : "other static";
    case ControlKind::kComboBox:
      return (type & 3U) == 3 ? "drop-down list" : "combo box";
    default:
      return "other";
  }
}

/// One line per control: number, kind, text, and whether it is disabled or left out by the Tab key.
Lines Describe(std::uint16_t id) {
  const auto file = ResourceFile::Read(EmbeddedResourceBytes());
  const auto dialog = file.value.value().Dialog(id);
  Lines lines;
  for (const DialogItem& item : dialog.value.value().items) {
    const bool takes_focus = item.kind != ControlKind::kStatic;
    lines.push_back((item.id == IDC_STATIC ? "-" : std::to_string(item.id)) + " " + KindOf(item) +
                    (item.title.empty() ? "" : " \"" + item.title + "\"") +
                    ((item.style & kDisabled) != 0 ? " disabled" : "") +
                    (takes_focus && (item.style & kTabStop) == 0 ? " (no tab stop)" : ""));
  }
  return lines;
}

/// The head that all have, before `rest`.
Lines WithHead(Lines rest) {
  Lines lines = {"- icon 230", "- static \"Create in:\"", "291 static \"Unknown Path\"", "- rule"};
  lines.insert(lines.end(), rest.begin(), rest.end());
  return lines;
}

TEST(WizardTemplates, User) {
  EXPECT_EQ(Describe(205),
            WithHead({"254 check box \"Create Pelora Account\"", "284 drop-down list disabled",
                      "243 check box \"Hide from addressbook\" disabled",
                      "297 static \"Capacity\" disabled", "298 edit, digits disabled",
                      "265 static \"E-mail Address\" disabled", "268 edit disabled",
                      "266 static \"Home Server\" disabled", "242 edit, read-only disabled",
                      "271 button \"Select\" disabled"}));
}

TEST(WizardTemplates, ContactAndGroup) {
  const Lines fields = {"243 check box \"Hide from addressbook\" disabled",
                        "265 static \"E-mail Address\" disabled", "268 edit disabled"};
  Lines contact = WithHead({"254 check box \"Create Pelora Contact\""});
  contact.insert(contact.end(), fields.begin(), fields.end());
  EXPECT_EQ(Describe(215), contact);
  Lines group = WithHead({"254 check box \"Create Pelora group\""});
  group.insert(group.end(), fields.begin(), fields.end());
  EXPECT_EQ(Describe(214), group);
}

TEST(WizardTemplates, Company) {
  EXPECT_EQ(
      Describe(212),
      WithHead({"254 check box \"Create Pelora Company\"",
                "243 check box \"Hide from addressbook\" disabled",
                "270 static \"System Administrator\" disabled", "272 edit, read-only disabled",
                "227 button \"Select\" disabled", "266 static \"Home Server\" disabled",
                "242 edit, read-only disabled", "271 button \"Select\" disabled"}));
}

TEST(WizardTemplates, Server) {
  EXPECT_EQ(Describe(213),
            WithHead({"254 check box \"Create Pelora Server\"", "280 static \"Address\" disabled",
                      "245 edit disabled", "274 static \"HTTP port\" disabled",
                      "246 edit, digits disabled", "275 static \"SSL port\" disabled",
                      "247 edit, digits disabled", "276 static \"File path\" disabled",
                      "249 edit disabled", "243 check box \"Contains public store\" disabled"}));
}

TEST(WizardTemplates, AddressList) {
  EXPECT_EQ(Describe(219), WithHead({"254 check box \"Create Pelora Addresslist\"",
                                     "243 check box \"Hide from addressbook\" disabled",
                                     "288 static \"Search base\" disabled", "258 edit disabled",
                                     "293 button \"Select\" disabled",
                                     "289 static \"Search query\" disabled", "287 edit disabled"}));
}

TEST(WizardTemplates, DynamicDistributionList) {
  EXPECT_EQ(Describe(218), WithHead({"254 check box \"Create Pelora Dynamic Distribution list\"",
                                     "243 check box \"Hide from addressbook\" disabled",
                                     "265 static \"E-mail Address\" disabled", "268 edit disabled",
                                     "288 static \"Search base\" disabled", "258 edit disabled",
                                     "293 button \"Select\" disabled",
                                     "289 static \"Search query\" disabled", "287 edit disabled"}));
}

TEST(WizardTemplates, FirstPages) {
  EXPECT_EQ(Describe(222), WithHead({"- static \"Pelora Addresslist name:\"", "292 edit"}));
  EXPECT_EQ(Describe(223),
            WithHead({"- static \"Pelora Dynamic Distributionlist name:\"", "292 edit"}));
}

TEST(WizardTemplates, AreOneSize) {
  const auto file = ResourceFile::Read(EmbeddedResourceBytes());
  for (const int id : {205, 212, 213, 214, 215, 218, 219, 222, 223}) {
    const auto dialog = file.value.value().Dialog(static_cast<std::uint16_t>(id));
    EXPECT_EQ(dialog.value.value().width, 262) << id;
    EXPECT_EQ(dialog.value.value().height, 157) << id;
  }
}

TEST(WizardTemplates, TheIconIsThere) {
  constexpr std::uint16_t kIconGroupType = 14;
  const auto file = ResourceFile::Read(EmbeddedResourceBytes());
  bool found = false;
  for (const Resource& resource : file.value.value().resources()) {
    const bool is_icon = resource.type == ResourceName(kIconGroupType) &&
                         resource.name == ResourceName(std::uint16_t{230});
    found = found || is_icon;
  }
  EXPECT_TRUE(found);
}

}  // namespace
}  // namespace pelora::resources
