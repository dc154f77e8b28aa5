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

/// No attribute has as many values.
constexpr std::size_t kMostValues = 1'000'000'000;

std::optional<std::size_t> ParseNumber(std::string_view text) {
  std::size_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  const bool is_number = error == std::errc() && stop == end && number < kMostValues;
  return is_number ? std::optional(number) : std::nullopt;
}

/// `0-1499` or `1500-*`.
struct Range {
  std::size_t first = 0;
  /// Nothing when it ends with the last value of all.
  std::optional<std::size_t> last;
};

std::optional<Range> ParseRange(std::string_view text) {
  const std::size_t dash = text.find('-');
  if (dash == std::string_view::npos) return std::nullopt;
  const std::optional<std::size_t> first = ParseNumber(text.substr(0, dash));
  const std::string_view end = text.substr(dash + 1);
  const std::optional<std::size_t> last = ParseNumber(end);
  if (!first || (!last && end != "*")) return std::nullopt;
  return Range{.first = *first, .last = last};
}

/// Whether a part is what its name says.
bool Fits(const Range& range, std::size_t first, std::size_t count) {
  return range.first == first && (!range.last || *range.last + 1 == first + count);
}

}  // namespace

std::string UnfinishedAttribute::Request() const {
  return name + std::string(kMark) + std::to_string(next) + "-*";
}

bool FileRanges(AttributeMap& attributes, std::size_t first,
                std::vector<UnfinishedAttribute>& unfinished) {
  unfinished.clear();
  std::vector<AttributeMap::node_type> parts;
  for (auto at = attributes.begin(); at != attributes.end();) {
    const auto next = std::next(at);
    if (FindMark(at->first) < at->first.size()) parts.push_back(attributes.extract(at));
    at = next;
  }
  for (AttributeMap::node_type& part : parts) {
    const std::size_t mark = FindMark(part.key());
    const std::string name = part.key().substr(0, mark);
    const auto range = ParseRange(std::string_view(part.key()).substr(mark + kMark.size()));
    AttributeValues& values = attributes[name];
    if (!range || !Fits(*range, first, part.mapped().size()) || !values.empty()) return false;
    values = std::move(part.mapped());
    if (range->last) unfinished.push_back({.name = name, .next = *range->last + 1});
  }
  return true;
}

}  // namespace pelora::ldap
