// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/fields/list_text.h"

namespace pelora::session {

std::vector<std::string> SplitList(std::string_view text) {
  std::vector<std::string> values;
  if (text.empty()) return values;
  values.emplace_back();
  for (std::size_t place = 0; place < text.size(); ++place) {
    const std::string_view two = text.substr(place, 2);
    if (two == "\\;" || two == "\\\\") {
      values.back() += text[++place];
    } else if (text[place] == ';') {
      values.emplace_back();
    } else {
      values.back() += text[place];
    }
  }
  return values;
}

std::string JoinList(std::span<const std::string> values) {
  std::string text;
  for (std::size_t index = 0; index < values.size(); ++index) {
    if (index > 0) text += ';';
    for (const char character : values[index]) {
      if (character == ';' || character == '\\') text += '\\';
      text += character;
    }
  }
  return text;
}

}  // namespace pelora::session
