// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/case_fold.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "directory/ascii_case.h"
#include "directory/utf.h"

namespace pelora::ldap {
namespace {

/// Small letters `first` to `last`, every one or every second, whose capitals are `offset` away.
struct SmallLetters {
  char16_t first;
  char16_t last;
  int step;
  int offset;
};

// clang-format off
constexpr auto kSmallLetters = std::to_array<SmallLetters>({
    {0x0061, 0x007A, 1, -32},
    {0x00E0, 0x00F6, 1, -32},  {0x00F8, 0x00FE, 1, -32},  {0x00FF, 0x00FF, 1, 121},
    {0x0101, 0x012F, 2, -1},  {0x0133, 0x0137, 2, -1},  {0x013A, 0x0148, 2, -1},
    {0x014B, 0x0177, 2, -1},  {0x017A, 0x017E, 2, -1},  {0x0183, 0x0185, 2, -1},
    {0x0188, 0x0188, 1, -1},  {0x018C, 0x018C, 1, -1},  {0x0192, 0x0192, 1, -1},
    {0x0199, 0x0199, 1, -1},  {0x01A1, 0x01A5, 2, -1},  {0x01A8, 0x01A8, 1, -1},
    {0x01AD, 0x01AD, 1, -1},  {0x01B0, 0x01B0, 1, -1},  {0x01B4, 0x01B6, 2, -1},
    {0x01B9, 0x01B9, 1, -1},  {0x01BD, 0x01BD, 1, -1},  {0x01C6, 0x01C6, 1, -2},
    {0x01C9, 0x01C9, 1, -2},  {0x01CC, 0x01CC, 1, -2},  {0x01CE, 0x01DC, 2, -1},
    {0x01DD, 0x01DD, 1, -79},  {0x01DF, 0x01EF, 2, -1},  {0x01F3, 0x01F3, 1, -2},
    {0x01F5, 0x01F5, 1, -1},  {0x01FB, 0x0217, 2, -1},  {0x0253, 0x0253, 1, -210},
    {0x0254, 0x0254, 1, -206},  {0x0256, 0x0257, 1, -205},  {0x0259, 0x0259, 1, -202},
    {0x025B, 0x025B, 1, -203},  {0x0260, 0x0260, 1, -205},  {0x0263, 0x0263, 1, -207},
    {0x0268, 0x0268, 1, -209},  {0x0269, 0x0269, 1, -211},  {0x026F, 0x026F, 1, -211},
    {0x0272, 0x0272, 1, -213},  {0x0275, 0x0275, 1, -214},  {0x0283, 0x0283, 1, -218},
    {0x0288, 0x0288, 1, -218},  {0x028A, 0x028B, 1, -217},  {0x0292, 0x0292, 1, -219},
    {0x03AC, 0x03AC, 1, -38},  {0x03AD, 0x03AF, 1, -37},  {0x03B1, 0x03C1, 1, -32},
    {0x03C2, 0x03C2, 1, -31},  {0x03C3, 0x03CB, 1, -32},  {0x03CC, 0x03CC, 1, -64},
    {0x03CD, 0x03CE, 1, -63},  {0x03E3, 0x03EF, 2, -1},  {0x0430, 0x044F, 1, -32},
    {0x0451, 0x045C, 1, -80},  {0x045E, 0x045F, 1, -80},  {0x0461, 0x0481, 2, -1},
    {0x0491, 0x04BF, 2, -1},  {0x04C2, 0x04C4, 2, -1},  {0x04C8, 0x04C8, 1, -1},
    {0x04CC, 0x04CC, 1, -1},  {0x04D1, 0x04EB, 2, -1},  {0x04EF, 0x04F5, 2, -1},
    {0x04F9, 0x04F9, 1, -1},  {0x0561, 0x0586, 1, -48},  {0x1E01, 0x1E95, 2, -1},
    {0x1EA1, 0x1EF9, 2, -1},  {0x1F00, 0x1F07, 1, 8},  {0x1F10, 0x1F15, 1, 8},
    {0x1F20, 0x1F27, 1, 8},  {0x1F30, 0x1F37, 1, 8},  {0x1F40, 0x1F45, 1, 8},
    {0x1F51, 0x1F57, 2, 8},  {0x1F60, 0x1F67, 1, 8},  {0x1F70, 0x1F71, 1, 74},
    {0x1F72, 0x1F75, 1, 86},  {0x1F76, 0x1F77, 1, 100},  {0x1F78, 0x1F79, 1, 128},
    {0x1F7A, 0x1F7B, 1, 112},  {0x1F7C, 0x1F7D, 1, 126},  {0x1FB0, 0x1FB1, 1, 8},
    {0x1FD0, 0x1FD1, 1, 8},  {0x1FE0, 0x1FE1, 1, 8},  {0x1FE5, 0x1FE5, 1, 7},
    {0x2170, 0x217F, 1, -16},  {0x24D0, 0x24E9, 1, -26},  {0xFF41, 0xFF5A, 1, -32},
});
// clang-format on

char16_t Capital(char16_t letter) {
  const auto after =
      std::upper_bound(kSmallLetters.begin(), kSmallLetters.end(), letter,
                       [](char16_t wanted, const SmallLetters& row) { return wanted < row.first; });
  if (after == kSmallLetters.begin()) return letter;
  const SmallLetters& row = *std::prev(after);
  if (letter > row.last || (letter - row.first) % row.step != 0) return letter;
  return static_cast<char16_t>(letter + row.offset);
}

}  // namespace

std::string FoldCase(std::string_view text) {
  // Names are looked up by their folded form for every attribute of every object, and most of them
  // are plain to the end, or nearly.
  const auto* const plain_end = std::find_if(text.begin(), text.end(), [](char letter) {
    return static_cast<unsigned char>(letter) >= 0x80;
  });
  std::string folded(text.begin(), plain_end);
  std::ranges::transform(folded, folded.begin(), AsciiUpperCase);
  if (plain_end == text.end()) return folded;
  std::u16string letters = ToUtf16({plain_end, text.end()});
  std::transform(letters.begin(), letters.end(), letters.begin(), Capital);
  return folded + ToUtf8(letters);
}

}  // namespace pelora::ldap
