// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/value_ranges.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "directory/ascii_case.h"

namespace pelora::ldap {
namespace {

constexpr std::string_view kMark = ";range=";

/// Where the mark of a range begins.
std::size_t FindMark(std::string_view name) {
  const auto is_same = [](char left, char right) {
    return AsciiLowerCase(left) == AsciiLowerCase(right);
  };
  const auto* const found =
      std::search(name.begin(), name.end(), kMark.begin(), kMark.end(), is_same);
  return static_cast<std::size_t>(found - name.begin());
}

/// The number of the last value of a range; nothing when it is the last of all.
std::optional<std::size_t> LastOf(std::string_view range) {
  const std::string_view last = range.substr(std::min(range.find('-') + 1, range.size()));
  std::size_t number = 0;
  const char* const end = last.data() + last.size();
  const auto [stop, error] = std::from_chars(last.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

}  // namespace

std::string UnfinishedAttribute::Request() const {
  return name + std::string(kMark) + std::to_string(next) + "-*";
}

std::vector<UnfinishedAttribute> FileRanges(AttributeMap& attributes) {
  std::vector<UnfinishedAttribute> unfinished;
  std::vector<AttributeMap::node_type> ranges;
  for (auto at = attributes.begin(); at != attributes.end();) {
    const auto next = std::next(at);
    if (FindMark(at->first) < at->first.size()) ranges.push_back(attributes.extract(at));
    at = next;
  }
  for (AttributeMap::node_type& range : ranges) {
    const std::size_t mark = FindMark(range.key());
    const std::string name = range.key().substr(0, mark);
    const auto last = LastOf(std::string_view(range.key()).substr(mark + kMark.size()));
    AttributeValues& values = attributes[name];
    std::ranges::move(range.mapped(), std::back_inserter(values));
    if (last) unfinished.push_back({.name = name, .next = *last + 1});
  }
  return unfinished;
}

}  // namespace pelora::ldap
