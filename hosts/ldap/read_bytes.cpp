// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/read_bytes.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace pelora::ldap {

ReadEnd ReadBytes(int descriptor, std::size_t most, std::string& text) {
  std::array<char, 1 << 16> block{};
  while (true) {
    const ssize_t taken = read(descriptor, block.data(), block.size());
    if (taken < 0 && errno == EINTR) continue;
    if (taken < 0) return ReadEnd::kFailed;
    if (taken == 0) return ReadEnd::kWhole;
    const auto count = static_cast<std::size_t>(taken);
    text.append(block.data(), std::min(count, most));
    if (count > most) return ReadEnd::kTooLong;
    most -= count;
  }
}

}  // namespace pelora::ldap
