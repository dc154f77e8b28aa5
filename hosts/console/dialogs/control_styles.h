// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace pelora::console::style {

// The style bits of a dialog template that the console heeds, with the platform's numbers.

inline constexpr std::uint32_t kVisible = 0x10000000;
inline constexpr std::uint32_t kDisabled = 0x08000000;
inline constexpr std::uint32_t kTabStop = 0x00010000;
inline constexpr std::uint32_t kHorizontalScroll = 0x00100000;

inline constexpr std::uint32_t kButtonTypeMask = 0xF;
inline constexpr std::uint32_t kDefaultPushButton = 1;
inline constexpr std::uint32_t kAutoCheckBox = 3;
inline constexpr std::uint32_t kAutoThreeState = 6;
inline constexpr std::uint32_t kGroupBox = 7;

inline constexpr std::uint32_t kEditMultiLine = 0x0004;
inline constexpr std::uint32_t kEditReadOnly = 0x0800;
inline constexpr std::uint32_t kEditNumber = 0x2000;

inline constexpr std::uint32_t kStaticTypeMask = 0x1F;
inline constexpr std::uint32_t kStaticCenter = 1;
inline constexpr std::uint32_t kStaticRight = 2;
inline constexpr std::uint32_t kStaticIcon = 3;
inline constexpr std::uint32_t kStaticHorizontalLine = 0x10;
inline constexpr std::uint32_t kStaticNoPrefix = 0x80;
inline constexpr std::uint32_t kStaticEndEllipsis = 0x4000;

inline constexpr std::uint32_t kListBoxNotify = 1;
inline constexpr std::uint32_t kListBoxSort = 2;
inline constexpr std::uint32_t kListBoxExtendedSelection = 0x800;

inline constexpr std::uint32_t kComboBoxSort = 0x100;

inline constexpr std::uint32_t kListViewSingleSelection = 4;

}  // namespace pelora::console::style
