// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/typed/typed_number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

#include "directory/ascii_case.h"
#include "hosts/session/text.h"

namespace pelora::session {
namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::size_t kGroup = 3;

struct Unit {
  std::string_view name;
  std::int64_t megabytes;
};
constexpr std::array<Unit, 7> kUnits = {{{"", 1},
                                         {"M", 1},
                                         {"MB", 1},
                                         {"G", 1024},
                                         {"GB", 1024},
                                         {"T", 1024 * 1024},
                                         {"TB", 1024 * 1024}}};

/// Cuts the digits off the front of a text.
std::string_view TakeDigits(std::string_view& text) {
  const std::size_t end = std::min(text.find_first_not_of(kDigits), text.size());
  const std::string_view digits = text.substr(0, end);
  text.remove_prefix(end);
  return digits;
}

/// Cuts off digits in groups of three, and puts them together; empty when a group is no group.
std::string TakeGroups(std::string_view& text) {
  std::string digits(TakeDigits(text));
  bool is_first = true;
  while (text.size() > 1 && text[0] == ' ' && kDigits.find(text[1]) != std::string_view::npos) {
    const bool was_group = is_first ? digits.size() <= kGroup : true;
    text.remove_prefix(1);
    const std::string_view group = TakeDigits(text);
    if (!was_group || group.size() != kGroup) return {};
    digits += group;
    is_first = false;
  }
  return digits;
}

/// Cuts a point or comma and the digits behind it off the front of a text; none where there is a
/// sign without digits. Empty without a sign.
std::optional<std::string_view> TakeDecimals(std::string_view& text) {
  if (!text.starts_with('.') && !text.starts_with(',')) return std::string_view();
  text.remove_prefix(1);
  const std::string_view digits = TakeDigits(text);
  // More of them would be lost below a megabyte.
  constexpr std::size_t kMost = 6;
  if (digits.empty() || digits.size() > kMost) return std::nullopt;
  return digits;
}

const Unit* FindUnit(std::string_view name) {
  const auto* const found = std::ranges::find_if(
      kUnits, [name](const Unit& unit) { return EqualsWithoutCase(unit.name, name); });
  return found == kUnits.end() ? nullptr : found;
}

/// Decimals of a unit in megabytes, rounded up.
std::int64_t PartOf(const Unit& unit, std::string_view decimals) {
  std::int64_t part = 0;
  std::int64_t scale = 1;
  for (const char digit : decimals) {
    part = part * 10 + (digit - '0');
    scale *= 10;
  }
  return (part * unit.megabytes + scale - 1) / scale;
}

}  // namespace

std::optional<std::int64_t> NumberOfDigits(std::string_view digits) {
  std::string_view rest = digits;
  if (digits.empty() || TakeDigits(rest).size() != digits.size()) return std::nullopt;
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || number > kLargestNumber) return std::nullopt;
  return number;
}

std::optional<std::int64_t> MegabytesOf(std::string_view text) {
  const std::string trimmed = Trimmed(text);
  std::string_view rest = trimmed;
  const std::optional<std::int64_t> whole = NumberOfDigits(TakeGroups(rest));
  const std::optional<std::string_view> decimals = TakeDecimals(rest);
  if (!whole || !decimals) return std::nullopt;
  const Unit* const unit = FindUnit(Trimmed(rest));
  if (unit == nullptr || (!decimals->empty() && unit->megabytes == 1)) return std::nullopt;
  if (*whole > kLargestNumber / unit->megabytes) return std::nullopt;
  const std::int64_t megabytes = *whole * unit->megabytes + PartOf(*unit, *decimals);
  if (megabytes > kLargestNumber) return std::nullopt;
  return megabytes;
}

Judgement JudgeNumber(std::string_view text) {
  if (text.empty() || NumberOfDigits(text)) return {};
  return {.verdict = Verdict::kWrong,
          .sentence = "This is a number from 0 to " + std::to_string(kLargestNumber) +
                      ", of digits alone."};
}

Judgement JudgeMegabytes(std::string_view text) {
  if (text.empty()) return {};
  const std::optional<std::int64_t> megabytes = MegabytesOf(text);
  if (!megabytes) {
    return {.verdict = Verdict::kWrong,
            .sentence = "This is a size in MB from 0 to " + std::to_string(kLargestNumber) +
                        "; a unit is understood, as in \"2 GB\"."};
  }
  const std::string meant = std::to_string(*megabytes);
  if (NumberOfDigits(text)) return {};
  return {.sentence = "This is " + meant + " MB.", .meant = meant};
}

Judgement JudgePort(std::string_view text) {
  const std::optional<std::int64_t> number = NumberOfDigits(text);
  if (text.empty() || (number && *number >= 1 && *number <= kLargestPort)) return {};
  return {.verdict = Verdict::kWrong,
          .sentence = "A port is a number from 1 to " + std::to_string(kLargestPort) +
                      "; where there is none the field is empty."};
}

}  // namespace pelora::session
