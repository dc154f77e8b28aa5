// SPDX-License-Identifier: Apache-2.0
#include "server/guid_text.h"

#include <cstdio>

namespace pelora {

std::string GuidText(const Guid& guid) {
  constexpr std::size_t kLength = 38;
  std::array<char, kLength + 1> text{};
  const auto& tail = guid.data4;
  std::snprintf(text.data(), text.size(), "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                static_cast<unsigned int>(guid.data1), static_cast<unsigned int>(guid.data2),
                static_cast<unsigned int>(guid.data3), static_cast<unsigned int>(tail[0]),
                static_cast<unsigned int>(tail[1]), static_cast<unsigned int>(tail[2]),
                static_cast<unsigned int>(tail[3]), static_cast<unsigned int>(tail[4]),
                static_cast<unsigned int>(tail[5]), static_cast<unsigned int>(tail[6]),
                static_cast<unsigned int>(tail[7]));
  return {text.data(), kLength};
}

}  // namespace pelora
