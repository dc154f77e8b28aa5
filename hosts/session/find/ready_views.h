// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/session/find/view.h"

namespace pelora::session {

/// What a ready view asks for before it can show anything.
enum class ViewQuestion : std::uint8_t { kNothing, kMegabytes, kServer, kFeature, kDate };

/// A view that every user has. A new one is one of these.
struct ReadyView {
  std::string_view name;
  /// Where the answer goes stands "%".
  std::string_view filter;
  ViewQuestion question = ViewQuestion::kNothing;
  /// What is shown beside name and folder, divided by blanks.
  std::string_view columns{};
};

/// Every ready view but those of the check's rules, the one of all objects first.
[[nodiscard]] std::span<const ReadyView> ReadyViews();

/// What the question is called beside its field, with its letter; empty for no question.
[[nodiscard]] std::string_view QuestionText(ViewQuestion question);
/// What is taken as long as nobody answers; a date is that of a week before `today`.
[[nodiscard]] std::string PresetAnswer(ViewQuestion question, std::chrono::year_month_day today);

/// A view, or one sentence that says why the answer is none.
struct AnsweredView {
  View view;
  std::string error;
};

/// The view with the answer to its question put in. Numbers are megabytes up to 2147483646, dates
/// are written 2026-11-22.
[[nodiscard]] AnsweredView Answer(const ReadyView& ready, std::string_view answer);

/// A view of each rule of the check.
[[nodiscard]] std::vector<View> CheckViews();

}  // namespace pelora::session
