// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/find/ready_views.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <limits>
#include <optional>

#include "hosts/session/check/check_rules.h"
#include "hosts/session/search_filter.h"
#include "hosts/session/text.h"

namespace pelora::session {
namespace {

using enum ViewQuestion;

constexpr std::string_view kFirstColumns = "name type folder";

constexpr std::array kReadyViews = {
    ReadyView{.name = "All objects", .filter = "", .columns = "logon mail remark"},
    ReadyView{.name = "No mailbox",
              .filter = "(&(objectClass=user)(!(objectClass=computer))"
                        "(|(!(peloraAccount=*))(peloraAccount=0)))",
              .columns = "logon mail created"},
    ReadyView{.name = "Mailbox without address",
              .filter = "(&(objectClass=user)(!(objectClass=computer))(peloraAccount=1)"
                        "(!(mail=*))(!(otherMailbox=*)))",
              .columns = "logon accountType created"},
    ReadyView{.name = "Own quota above",
              .filter = "(&(objectClass=user)(!(objectClass=computer))(peloraQuotaOverride=1)"
                        "(peloraQuotaHard>=%))",
              .question = kMegabytes,
              .columns = "mail peloraQuotaWarn peloraQuotaSoft peloraQuotaHard"},
    ReadyView{.name = "Feature on",
              .filter = "(&(objectClass=user)(peloraEnabledFeatures=%))",
              .question = kFeature,
              .columns = "mail peloraUserServer"},
    ReadyView{.name = "Feature off",
              .filter = "(&(objectClass=user)(peloraDisabledFeatures=%))",
              .question = kFeature,
              .columns = "mail peloraUserServer"},
    ReadyView{.name = "Feature unset",
              .filter = "(&(objectClass=user)(!(objectClass=computer))(peloraAccount=1)"
                        "(!(peloraEnabledFeatures=%))(!(peloraDisabledFeatures=%)))",
              .question = kFeature,
              .columns = "mail peloraUserServer"},
    ReadyView{.name = "Home server",
              .filter = "(&(objectClass=user)(peloraUserServer=%))",
              .question = kServer,
              .columns = "mail peloraUserServer peloraQuotaHard"},
    ReadyView{.name = "Hidden", .filter = "(peloraHidden=1)", .columns = "mail peloraHidden"},
    ReadyView{.name = "Rooms and equipment",
              .filter = "(peloraResourceType=*)",
              .columns = "mail accountType peloraResourceCapacity"},
    ReadyView{.name = "Administrators",
              .filter = "(&(objectClass=user)(peloraAdmin>=1))",
              .columns = "mail accountType"},
    ReadyView{.name = "Disabled accounts with mailbox",
              .filter = "(&(objectClass=user)(!(objectClass=computer))(peloraAccount=1)"
                        "(userAccountControl:1.2.840.113556.1.4.803:=2))",
              .columns = "logon mail accountType"},
    ReadyView{.name = "Changed since",
              .filter = "(whenChanged>=%000000.0Z)",
              .question = kDate,
              .columns = "changed created remark"},
};

struct Question {
  ViewQuestion question;
  std::string_view text;
  std::string_view preset;
};

constexpr std::array kQuestions = {
    Question{kMegabytes, "&MB:", "500"},
    Question{kServer, "&Server:", ""},
    Question{kFeature, "Fea&ture:", "pop3"},
    Question{kDate, "D&ate:", ""},
};

constexpr int kDaysOfPreset = 7;

void AppendColumns(std::string_view words, std::vector<std::string>& columns) {
  while (!words.empty()) {
    const std::size_t end = std::min(words.find(' '), words.size());
    columns.emplace_back(words.substr(0, end));
    words.remove_prefix(std::min(end + 1, words.size()));
  }
}

std::optional<int> Number(std::string_view digits) {
  int number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stopped, error] = std::from_chars(digits.data(), end, number);
  if (error != std::errc() || stopped != end || number < 0) return std::nullopt;
  return number;
}

std::optional<std::chrono::year_month_day> Date(std::string_view text) {
  constexpr std::size_t kLength = 10;
  if (text.size() != kLength || text[4] != '-' || text[7] != '-') return std::nullopt;
  const std::optional<int> year = Number(text.substr(0, 4));
  const std::optional<int> month = Number(text.substr(5, 2));
  const std::optional<int> day = Number(text.substr(8, 2));
  if (!year || !month || !day) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year(*year),
                                         std::chrono::month(static_cast<unsigned>(*month)),
                                         std::chrono::day(static_cast<unsigned>(*day))};
  return date.ok() ? std::optional(date) : std::nullopt;
}

std::string Written(std::chrono::year_month_day date, const char* format) {
  std::array<char, 32> text{};
  const int length =
      std::snprintf(text.data(), text.size(), format, static_cast<int>(date.year()),
                    static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
  return {text.data(), static_cast<std::size_t>(length)};
}

/// What goes into the filter for an answer; an error where it is none.
struct FilterPart {
  std::string text;
  std::string error;
};

FilterPart PartOf(ViewQuestion question, std::string_view answer) {
  switch (question) {
    case kNothing:
      return {};
    case kMegabytes: {
      const std::optional<int> limit = Number(answer);
      // A filter knows "at least", and "above" is one more.
      if (limit && *limit < std::numeric_limits<int>::max()) {
        return {.text = std::to_string(*limit + 1), .error = {}};
      }
      return {.text = {}, .error = "Type a number of megabytes."};
    }
    case kDate: {
      const auto date = Date(answer);
      if (date) return {.text = Written(*date, "%04d%02u%02u"), .error = {}};
      return {.text = {}, .error = "Type a date, such as 2026-11-22."};
    }
    case kServer:
    case kFeature:
      break;
  }
  if (!answer.empty()) return {.text = EscapeFilterValue(answer), .error = {}};
  return {
      .text = {},
      .error = question == kServer ? "Type the name of a server." : "Type the name of a feature."};
}

}  // namespace

std::span<const ReadyView> ReadyViews() { return kReadyViews; }

std::string_view QuestionText(ViewQuestion question) {
  const auto found = std::ranges::find(kQuestions, question, &Question::question);
  return found == kQuestions.end() ? std::string_view() : found->text;
}

std::string PresetAnswer(ViewQuestion question, std::chrono::year_month_day today) {
  if (question == kDate) {
    return Written(std::chrono::sys_days(today) - std::chrono::days(kDaysOfPreset),
                   "%04d-%02u-%02u");
  }
  const auto found = std::ranges::find(kQuestions, question, &Question::question);
  return found == kQuestions.end() ? std::string() : std::string(found->preset);
}

AnsweredView Answer(const ReadyView& ready, std::string_view answer) {
  AnsweredView answered{.view = {.name = std::string(ready.name)}, .error = {}};
  AppendColumns(kFirstColumns, answered.view.columns);
  AppendColumns(ready.columns, answered.view.columns);
  const FilterPart part = PartOf(ready.question, Trimmed(answer));
  answered.error = part.error;
  for (const char sign : ready.filter) {
    if (sign == '%') {
      answered.view.filter += part.text;
    } else {
      answered.view.filter += sign;
    }
  }
  return answered;
}

std::vector<View> CheckViews() {
  std::vector<View> views;
  for (const CheckRule& rule : CheckRules()) {
    views.push_back({.name = "Check: " + std::string(rule.finds),
                     .rule = std::string(rule.name),
                     .columns = {"name", "type", "folder", "field", "problem"}});
  }
  return views;
}

}  // namespace pelora::session
