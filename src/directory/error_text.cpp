// SPDX-License-Identifier: Apache-2.0
#include "directory/error_text.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace pelora {

std::string CodeText(HRESULT status) {
  std::array<char, 16> code{};
  std::snprintf(code.data(), code.size(), "0X%X",
                static_cast<unsigned int>(static_cast<std::uint32_t>(status)));
  return code.data();
}

Message MakeErrorMessage(HRESULT status, std::string_view message) {
  std::string text(message.empty() ? std::string_view("Unknown error occured") : message);
  if (status != S_OK) text += "\r\n\r\nError code: " + CodeText(status);
  return {.text = std::move(text),
          .caption = "Pelora Error",
          .icon = FAILED(status) ? MessageIcon::kError : MessageIcon::kWarning,
          .buttons = MessageButtons::kOk};
}

}  // namespace pelora
