// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/list_order.h"

namespace pelora {
namespace {

/// Rank of one byte's kind. Beyond ASCII UTF-8 orders as the code points do.
char Rank(char letter) {
  constexpr char kMark = 'a';
  constexpr char kDigit = 'b';
  constexpr char kLetter = 'c';
  if (letter >= '0' && letter <= '9') return kDigit;
  const bool beyond_ascii = (static_cast<unsigned char>(letter) & 0x80U) != 0;
  return beyond_ascii || (letter >= 'A' && letter <= 'Z') ? kLetter : kMark;
}

}  // namespace

std::string ListOrderKey(std::string_view text, const ITextService& service) {
  std::string key;
  key.reserve(2 * text.size());
  for (const char letter : service.UpperCase(text)) {
    key.push_back(Rank(letter));
    key.push_back(letter);
  }
  return key;
}

}  // namespace pelora
