// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/directory_time.h"

#include <array>

namespace pelora::session {
namespace {

/// Either of the C library's functions.
using TakeApart = std::tm* (*)(const std::time_t*, std::tm*);

std::string Written(std::time_t time, TakeApart take_apart, const char* form) {
  std::tm parts{};
  if (take_apart(&time, &parts) == nullptr) return {};
  std::array<char, 32> text{};
  return {text.data(), std::strftime(text.data(), text.size(), form, &parts)};
}

}  // namespace

std::optional<std::time_t> ReadDirectoryTime(const std::string& text) {
  constexpr std::size_t kDigits = 14;
  const std::string digits = text.substr(0, kDigits);
  const bool is_time = digits.size() == kDigits && text.ends_with('Z') &&
                       digits.find_first_not_of("0123456789") == std::string::npos;
  if (!is_time) return std::nullopt;
  const auto number = [&digits](std::size_t place, std::size_t length) {
    return std::stoi(digits.substr(place, length));
  };
  std::tm greenwich{};
  greenwich.tm_year = number(0, 4) - 1900;
  greenwich.tm_mon = number(4, 2) - 1;
  greenwich.tm_mday = number(6, 2);
  greenwich.tm_hour = number(8, 2);
  greenwich.tm_min = number(10, 2);
  greenwich.tm_sec = number(12, 2);
  return timegm(&greenwich);
}

std::string WallTimeText(std::time_t time) { return Written(time, &localtime_r, "%Y-%m-%d %H:%M"); }

std::string UniversalTimeText(std::time_t time) {
  return Written(time, &gmtime_r, "%Y-%m-%dT%H:%M:%SZ");
}

}  // namespace pelora::session
