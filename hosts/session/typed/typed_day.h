// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "hosts/session/typed/judgement.h"

namespace pelora::session {

/// The last day of an account, as `EndOfLastDay` takes it. An empty text is fine: there is none. A
/// day that is over is odd: the account cannot be used.
[[nodiscard]] Judgement JudgeLastDay(std::string_view text);

}  // namespace pelora::session
