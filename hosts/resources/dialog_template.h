// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace pelora::resources {

/// Kind of a control, from its window class.
enum class ControlKind : std::uint8_t {
  kButton,
  kEdit,
  kStatic,
  kListBox,
  kScrollBar,
  kComboBox,
  kListView,
  kOther,
};

/// One control of a dialog template. Positions and sizes are in dialog units, from the dialog's
/// upper left corner.
struct DialogItem {
  std::uint32_t help_id = 0;
  std::uint32_t extended_style = 0;
  std::uint32_t style = 0;
  std::int16_t x = 0;
  std::int16_t y = 0;
  std::int16_t width = 0;
  std::int16_t height = 0;
  std::uint32_t id = 0;
  ControlKind kind = ControlKind::kOther;
  /// Window class as the template names it (or as its class atom stands for it), in upper case.
  std::string window_class;
  /// Text in UTF-8, mnemonic mark included; empty when the title is a resource number.
  std::string title;
  /// Number of the resource that the control shows (an icon), when the title is one.
  std::optional<std::uint16_t> title_resource;
  std::vector<std::byte> creation_data;
};

/// Font that gives a dialog its units.
struct DialogFont {
  std::uint16_t point_size = 0;
  std::uint16_t weight = 0;
  bool italic = false;
  std::uint8_t charset = 0;
  std::string face;
};

/// A dialog as its extended template (DLGTEMPLATEEX) describes it. Items stand in tab order.
struct DialogTemplate {
  std::uint32_t help_id = 0;
  std::uint32_t extended_style = 0;
  std::uint32_t style = 0;
  std::int16_t x = 0;
  std::int16_t y = 0;
  std::int16_t width = 0;
  std::int16_t height = 0;
  std::string title;
  std::optional<DialogFont> font;
  std::vector<DialogItem> items;
};

/// What a reader found, or why it found nothing.
template <class T>
struct ReadResult {
  std::optional<T> value;
  /// One line for a person; empty on success.
  std::string error;
};

/// Reads an extended dialog template. Nothing outside `data` is read. A template that is cut short,
/// that is not of the extended kind, or whose strings do not end is refused.
[[nodiscard]] ReadResult<DialogTemplate> ReadDialogTemplate(std::span<const std::byte> data);

}  // namespace pelora::resources
