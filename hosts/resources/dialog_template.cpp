// SPDX-License-Identifier: Apache-2.0
#include "hosts/resources/dialog_template.h"

#include <algorithm>
#include <array>
#include <utility>
#include <variant>

#include "directory/ascii_case.h"
#include "hosts/resources/block_reader.h"
#include "hosts/resources/resource_name.h"

namespace pelora::resources {
namespace {

constexpr std::uint16_t kExtendedVersion = 1;
constexpr std::uint16_t kExtendedSignature = 0xFFFF;
/// An item's numbers, and its class, title and data with a unit each.
constexpr std::size_t kShortestItem = 3 * 4 + 4 * 2 + 4 + 3 * 2;
/// The style bit that says that a font follows (DS_SETFONT).
constexpr std::uint32_t kHasFont = 0x40;

struct WindowClass {
  std::uint16_t atom;
  const char* name;
  ControlKind kind;
};

constexpr std::array kWindowClasses{
    WindowClass{0x80, "BUTTON", ControlKind::kButton},
    WindowClass{0x81, "EDIT", ControlKind::kEdit},
    WindowClass{0x82, "STATIC", ControlKind::kStatic},
    WindowClass{0x83, "LISTBOX", ControlKind::kListBox},
    WindowClass{0x84, "SCROLLBAR", ControlKind::kScrollBar},
    WindowClass{0x85, "COMBOBOX", ControlKind::kComboBox},
    WindowClass{0, "SYSLISTVIEW32", ControlKind::kListView},
};

std::string InCapitals(std::string text) {
  std::ranges::transform(text, text.begin(), AsciiUpperCase);
  return text;
}

void SetClass(DialogItem& item, const ResourceName& name) {
  const auto* atom = std::get_if<std::uint16_t>(&name);
  item.window_class =
      atom != nullptr ? "#" + std::to_string(*atom) : InCapitals(std::get<std::string>(name));
  const auto* known = std::ranges::find_if(kWindowClasses, [&](const WindowClass& candidate) {
    return atom != nullptr ? candidate.atom == *atom && *atom != 0
                           : item.window_class == candidate.name;
  });
  if (known == kWindowClasses.end()) return;
  item.window_class = known->name;
  item.kind = known->kind;
}

void SetTitle(DialogItem& item, ResourceName title) {
  if (const auto* number = std::get_if<std::uint16_t>(&title)) {
    item.title_resource = *number;
  } else {
    item.title = std::move(std::get<std::string>(title));
  }
}

DialogItem ReadItem(BlockReader& reader) {
  DialogItem item;
  reader.Align();
  item.help_id = reader.Read<std::uint32_t>();
  item.extended_style = reader.Read<std::uint32_t>();
  item.style = reader.Read<std::uint32_t>();
  item.x = reader.ReadSigned16();
  item.y = reader.ReadSigned16();
  item.width = reader.ReadSigned16();
  item.height = reader.ReadSigned16();
  item.id = reader.Read<std::uint32_t>();
  SetClass(item, ReadNumberOrString(reader));
  SetTitle(item, ReadNumberOrString(reader));
  const std::span<const std::byte> data = reader.Take(reader.Read<std::uint16_t>());
  item.creation_data.assign(data.begin(), data.end());
  return item;
}

DialogFont ReadFont(BlockReader& reader) {
  DialogFont font;
  font.point_size = reader.Read<std::uint16_t>();
  font.weight = reader.Read<std::uint16_t>();
  font.italic = reader.Read<std::uint8_t>() != 0;
  font.charset = reader.Read<std::uint8_t>();
  font.face = ToUtf8(reader.ReadTerminated());
  return font;
}

/// Reads all but the items and gives their number.
std::uint16_t ReadHeader(BlockReader& reader, DialogTemplate& dialog) {
  dialog.help_id = reader.Read<std::uint32_t>();
  dialog.extended_style = reader.Read<std::uint32_t>();
  dialog.style = reader.Read<std::uint32_t>();
  const auto count = reader.Read<std::uint16_t>();
  dialog.x = reader.ReadSigned16();
  dialog.y = reader.ReadSigned16();
  dialog.width = reader.ReadSigned16();
  dialog.height = reader.ReadSigned16();
  (void)ReadNumberOrString(reader);  // menu
  (void)ReadNumberOrString(reader);  // window class
  const ResourceName title = ReadNumberOrString(reader);
  if (const auto* text = std::get_if<std::string>(&title)) dialog.title = *text;
  if ((dialog.style & kHasFont) != 0) dialog.font = ReadFont(reader);
  return count;
}

ReadResult<DialogTemplate> Refuse(std::string why) { return {std::nullopt, std::move(why)}; }

}  // namespace

ReadResult<DialogTemplate> ReadDialogTemplate(std::span<const std::byte> data) {
  BlockReader reader(data);
  const auto version = reader.Read<std::uint16_t>();
  const auto signature = reader.Read<std::uint16_t>();
  if (!reader.ok()) return Refuse("The dialog template is cut short before its header.");
  if (version != kExtendedVersion || signature != kExtendedSignature) {
    return Refuse("The dialog template is not of the extended kind.");
  }
  DialogTemplate dialog;
  const std::uint16_t count = ReadHeader(reader, dialog);
  if (!reader.ok()) return Refuse("The dialog template is cut short in its header.");
  // A template that lies about its number takes no memory for it.
  dialog.items.reserve(std::min<std::size_t>(count, reader.remaining() / kShortestItem));
  for (std::uint16_t index = 0; index < count; ++index) {
    DialogItem item = ReadItem(reader);
    if (!reader.ok()) {
      return Refuse("The dialog template is cut short in control " + std::to_string(index + 1) +
                    " of " + std::to_string(count) + ".");
    }
    dialog.items.push_back(std::move(item));
  }
  return {std::move(dialog), {}};
}

}  // namespace pelora::resources
