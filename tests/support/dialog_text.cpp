// SPDX-License-Identifier: Apache-2.0
#include "tests/support/dialog_text.h"

#include <array>
#include <iomanip>
#include <sstream>

namespace pelora::testing {
namespace {

using resources::ControlKind;
using resources::DialogItem;
using resources::DialogTemplate;

constexpr std::uint32_t kNoNumber = 0xFFFFFFFF;

constexpr std::uint32_t kDisabled = 0x08000000;
constexpr std::uint32_t kBorder = 0x00800000;
constexpr std::uint32_t kVerticalScroll = 0x00200000;
constexpr std::uint32_t kGroup = 0x00020000;
constexpr std::uint32_t kTabStop = 0x00010000;
/// Child and visible.
constexpr std::uint32_t kShown = 0x50000000;

constexpr std::uint32_t kAutoScroll = 0x80;
constexpr std::uint32_t kAnyHeight = 0x100;

struct Kind {
  ControlKind kind;
  std::uint32_t type_mask;
  std::uint32_t type;
  const char* word;
  /// The style apart from the type that needs no word.
  std::uint32_t usual;
};

// The first row that fits decides.
constexpr std::array kKinds = {
    Kind{ControlKind::kButton, 0xF, 0, "button", kShown | kTabStop},
    Kind{ControlKind::kButton, 0xF, 1, "default button", kShown | kTabStop},
    Kind{ControlKind::kButton, 0xF, 3, "check box", kShown | kTabStop},
    Kind{ControlKind::kButton, 0xF, 7, "group box", kShown | kGroup},
    Kind{ControlKind::kEdit, 0, 0, "edit", kShown | kTabStop | kBorder | kAutoScroll},
    Kind{ControlKind::kStatic, 0x1F, 0, "label", kShown},
    Kind{ControlKind::kStatic, 0x1F, 3, "icon", kShown},
    Kind{ControlKind::kStatic, 0x1F, 0x10, "line", kShown},
    Kind{ControlKind::kListBox, 0, 0, "list box",
         kShown | kTabStop | kBorder | kVerticalScroll | kAnyHeight},
    Kind{ControlKind::kComboBox, 3, 3, "drop-down list", kShown | kTabStop | kVerticalScroll},
    Kind{ControlKind::kListView, 3, 1, "list view", kShown | kTabStop | kBorder},
};

struct Flag {
  ControlKind kind;
  std::uint32_t bit;
  const char* word;
};

constexpr std::array kFlags = {
    Flag{ControlKind::kButton, kGroup, "first of a group"},
    Flag{ControlKind::kButton, kDisabled, "disabled"},
    Flag{ControlKind::kEdit, kDisabled, "disabled"},
    Flag{ControlKind::kComboBox, kDisabled, "disabled"},
    Flag{ControlKind::kStatic, kDisabled, "disabled"},
    Flag{ControlKind::kEdit, 0x2000, "digits only"},
    Flag{ControlKind::kEdit, 0x800, "read-only"},
    Flag{ControlKind::kStatic, 0x80, "no mnemonic"},
    Flag{ControlKind::kStatic, 0x4000, "ends in dots"},
    Flag{ControlKind::kListBox, 1, "notifies"},
    Flag{ControlKind::kListBox, 2, "sorted"},
    Flag{ControlKind::kListBox, 0x80, "tab stops"},
    Flag{ControlKind::kListView, 0x8, "selection always shown"},
    Flag{ControlKind::kListView, 0x8000, "heads do not sort"},
};

std::string Number(const char* word, std::uint32_t bits) {
  std::ostringstream text;
  text << ", " << word << " 0x" << std::hex << std::uppercase << std::setw(8) << std::setfill('0')
       << bits;
  return text.str();
}

/// Names the bits of `style` beyond the usual ones.
std::string Deviations(const DialogItem& item, std::uint32_t style, std::uint32_t usual) {
  std::string text;
  std::uint32_t beyond = style & ~usual;
  // The resource compiler gives it to some labels; nobody can go to them.
  if (item.kind == ControlKind::kStatic) beyond &= ~kGroup;
  for (const Flag& flag : kFlags) {
    if (flag.kind != item.kind || (beyond & flag.bit) == 0) continue;
    text += std::string(", ") + flag.word;
    beyond &= ~flag.bit;
  }
  if (beyond != 0) text += Number("with", beyond);
  if ((usual & ~style) != 0) text += Number("without", usual & ~style);
  if (item.extended_style != 0) text += Number("extended", item.extended_style);
  return text;
}

std::string Describe(const DialogItem& item) {
  for (const Kind& kind : kKinds) {
    if (kind.kind != item.kind || (item.style & kind.type_mask) != kind.type) continue;
    return kind.word + Deviations(item, item.style & ~kind.type_mask, kind.usual);
  }
  return item.window_class + Deviations(item, item.style, 0);
}

std::string ToText(const DialogItem& item) {
  std::string text;
  if (item.id != kNoNumber) text += std::to_string(item.id) + ' ';
  text += Describe(item);
  if (item.title_resource) text += ' ' + std::to_string(*item.title_resource);
  if (!item.title.empty()) text += " \"" + item.title + '"';
  return text + '\n';
}

std::string StyleOf(const DialogTemplate& dialog) {
  // A child with a caption, disabled until its sheet shows it, with the shell's font.
  constexpr std::uint32_t kPage = 0x48C0004C;
  // A framed window with a caption and a close box, with the shell's font.
  constexpr std::uint32_t kModal = 0x80C800CC;
  if (dialog.style == kPage) return "page";
  if (dialog.style == kModal) return "modal";
  return "dialog" + Number("style", dialog.style);
}

}  // namespace

std::string ToText(const DialogTemplate& dialog) {
  std::ostringstream text;
  text << StyleOf(dialog) << " \"" << dialog.title << "\", " << dialog.width << " x "
       << dialog.height;
  if (dialog.font) text << ", " << dialog.font->point_size << " \"" << dialog.font->face << '"';
  text << '\n';
  for (const DialogItem& item : dialog.items) text << ToText(item);
  return text.str();
}

}  // namespace pelora::testing
