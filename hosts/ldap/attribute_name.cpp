// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/attribute_name.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "directory/ascii_case.h"

namespace pelora::ldap {
namespace {

/// How many of the first `common` bytes are alike, to the letter; it may say fewer.
std::size_t SameBeginning(std::string_view left, std::string_view right, std::size_t common) {
  if constexpr (std::endian::native != std::endian::little) return 0;
  constexpr std::size_t kAtOnce = sizeof(std::uint64_t);
  std::size_t at = 0;
  for (; at + kAtOnce <= common; at += kAtOnce) {
    std::uint64_t one = 0;
    std::uint64_t other = 0;
    std::memcpy(&one, left.data() + at, kAtOnce);
    std::memcpy(&other, right.data() + at, kAtOnce);
    if (one != other) return at + static_cast<std::size_t>(std::countr_zero(one ^ other)) / 8;
  }
  return at;
}

}  // namespace

bool AttributeNameLess::operator()(std::string_view left, std::string_view right) const {
  // Maps of attributes are looked into all the time, and most of the names begin alike.
  const std::size_t common = std::min(left.size(), right.size());
  for (std::size_t at = SameBeginning(left, right, common); at < common; ++at) {
    if (left[at] == right[at]) continue;
    const char one = AsciiLowerCase(left[at]);
    const char other = AsciiLowerCase(right[at]);
    if (one != other) return one < other;
  }
  return left.size() < right.size();
}

}  // namespace pelora::ldap
