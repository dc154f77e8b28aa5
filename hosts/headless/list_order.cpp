// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/list_order.h"

#include <algorithm>
#include <string>
#include <utility>

#include "hosts/headless/headless_text_service.h"

namespace pelora {
namespace {

/// Place of one byte in the order. Beyond ASCII UTF-8 orders as the code points do.
std::pair<int, unsigned char> Place(char letter) {
  const auto byte = static_cast<unsigned char>(letter);
  constexpr int kMark = 0;
  constexpr int kDigit = 1;
  constexpr int kLetter = 2;
  if (letter >= '0' && letter <= '9') return {kDigit, byte};
  if ((letter >= 'A' && letter <= 'Z') || byte >= 0x80) return {kLetter, byte};
  return {kMark, byte};
}

}  // namespace

bool StandsBefore(std::string_view left, std::string_view right) {
  const HeadlessTextService text;
  return std::ranges::lexicographical_compare(text.UpperCase(left), text.UpperCase(right), {},
                                              Place, Place);
}

}  // namespace pelora
