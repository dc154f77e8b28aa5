// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/own_pages/account_time.h"

#include <array>
#include <charconv>

#include "hosts/session/text.h"

namespace pelora::session {
namespace {

constexpr std::int64_t kTicks = 10'000'000;
/// From 1601 to 1970, in seconds.
constexpr std::int64_t kEpoch = 11'644'473'600;
constexpr int kFirstYear = 1900;

std::string Padded(int number, std::size_t width) {
  std::string text = std::to_string(number);
  return std::string(width - std::min(width, text.size()), '0') + text;
}

std::string DayText(const std::tm& time) {
  return Padded(time.tm_year + kFirstYear, 4) + "-" + Padded(time.tm_mon + 1, 2) + "-" +
         Padded(time.tm_mday, 2);
}

/// The number in front of a text, of so many digits and with `end` behind it (0: the text's end),
/// which is taken away with it.
std::optional<int> TakeNumber(std::string_view& text, std::size_t digits, char end) {
  if (text.size() < digits + (end == 0 ? 0 : 1)) return std::nullopt;
  if (end == 0 ? text.size() != digits : text[digits] != end) return std::nullopt;
  int number = 0;
  const char* const last = text.data() + digits;
  const auto [stopped, error] = std::from_chars(text.data(), last, number);
  if (error != std::errc() || stopped != last || text.front() == '-') return std::nullopt;
  text.remove_prefix(end == 0 ? digits : digits + 1);
  return number;
}

/// The local time of a text; a day without a minute ends with it.
std::optional<std::tm> TimeOfText(std::string_view text) {
  const bool has_minute = text.find(' ') != std::string_view::npos;
  const auto year = TakeNumber(text, 4, '-');
  const auto month = year ? TakeNumber(text, 2, '-') : std::nullopt;
  const auto day = month ? TakeNumber(text, 2, has_minute ? ' ' : '\0') : std::nullopt;
  if (!day) return std::nullopt;
  std::tm time{};
  time.tm_year = *year - kFirstYear;
  time.tm_mon = *month - 1;
  time.tm_mday = *day;
  time.tm_isdst = -1;
  // A day that the calendar does not have becomes another one.
  std::tm checked = time;
  checked.tm_hour = 12;
  if (std::mktime(&checked) == -1 || checked.tm_mday != *day || checked.tm_mon != time.tm_mon) {
    return std::nullopt;
  }
  if (!has_minute) {
    ++time.tm_mday;
    return time;
  }
  const auto hour = TakeNumber(text, 2, ':');
  const auto minute = hour ? TakeNumber(text, 2, '\0') : std::nullopt;
  if (!minute || *hour > 23 || *minute > 59) return std::nullopt;
  time.tm_hour = *hour;
  time.tm_min = *minute;
  return time;
}

}  // namespace

std::time_t TimeOfStored(std::int64_t stored) {
  return static_cast<std::time_t>(stored / kTicks - kEpoch);
}

std::string LastDayText(std::int64_t stored) {
  if (!Ends(stored)) return {};
  const std::time_t seconds = TimeOfStored(stored);
  std::tm time{};
  if (localtime_r(&seconds, &time) == nullptr) return {};
  if (time.tm_hour != 0 || time.tm_min != 0) {
    return DayText(time) + " " + Padded(time.tm_hour, 2) + ":" + Padded(time.tm_min, 2);
  }
  // At noon no change of the clock moves the day.
  --time.tm_mday;
  time.tm_hour = 12;
  time.tm_isdst = -1;
  if (std::mktime(&time) == -1) return {};
  return DayText(time);
}

std::optional<std::int64_t> EndOfLastDay(std::string_view text) {
  const std::string typed = Trimmed(text);
  if (typed.empty()) return kNeverEnds;
  std::optional<std::tm> time = TimeOfText(typed);
  if (!time) return std::nullopt;
  const std::time_t seconds = std::mktime(&*time);
  const std::int64_t stored = (static_cast<std::int64_t>(seconds) + kEpoch) * kTicks;
  if (stored <= 0) return std::nullopt;
  return stored;
}

}  // namespace pelora::session
