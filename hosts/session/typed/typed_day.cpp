// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/typed/typed_day.h"

#include <cstdint>
#include <ctime>
#include <optional>

#include "hosts/session/own_pages/account_time.h"

namespace pelora::session {

Judgement JudgeLastDay(std::string_view text) {
  const std::optional<std::int64_t> end = EndOfLastDay(text);
  if (!end) {
    return {.verdict = Verdict::kWrong,
            .sentence = "This is no day. Type year-month-day, such as 2026-12-31."};
  }
  if (Ends(*end) && TimeOfStored(*end) <= std::time(nullptr)) {
    return {.verdict = Verdict::kOdd,
            .sentence = "This day is over: the account cannot be used any more."};
  }
  return {};
}

}  // namespace pelora::session
