// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/typed/typed_query.h"

#include <string>

#include "hosts/session/check/search_query.h"
#include "hosts/session/text.h"

namespace pelora::session {

Judgement JudgeQuery(std::string_view text) {
  if (text.empty()) return {};
  const std::optional<QueryFault> fault = FindQueryFault(text);
  if (!fault) return {};
  const std::size_t character = CharacterCount(text.substr(0, fault->place)) + 1;
  return {.verdict = Verdict::kWrong,
          .sentence =
              "Character " + std::to_string(character) + ": " + std::string(fault->reason) + "."};
}

}  // namespace pelora::session
