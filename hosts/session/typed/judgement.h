// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace pelora::session {

/// What is thought of a text that somebody has typed into a field.
enum class Verdict : std::uint8_t {
  kFine,
  /// Possible, and seldom meant: who types it is told, and may do it all the same.
  kOdd,
  /// The directory would not hold what was meant: it is not to be written.
  kWrong,
};

struct Judgement {
  Verdict verdict = Verdict::kFine;
  /// Why, or how the text is understood, as a sentence; empty where there is nothing to say.
  std::string sentence{};
  /// What stands for the text in the directory, where that is something else: "2048" for "2 GB".
  /// Empty: the text itself.
  std::string meant{};
};

}  // namespace pelora::session
