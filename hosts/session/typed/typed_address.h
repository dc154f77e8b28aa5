// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "hosts/session/typed/judgement.h"

namespace pelora::session {

/// Judges an e-mail address. Wrong is what is no `local@domain` of RFC 5321; odd what is one, or
/// would be one where mail may have letters beyond ASCII, and seldom reaches anybody: a domain
/// without a dot, quotation marks, an address of the network in brackets. An empty text is fine.
[[nodiscard]] Judgement JudgeAddress(std::string_view text);

}  // namespace pelora::session
