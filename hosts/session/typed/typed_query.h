// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "hosts/session/typed/judgement.h"

namespace pelora::session {

/// Judges a search query: wrong is what is no LDAP filter, with the character where it stops being
/// one and what was expected there. An empty text is fine.
[[nodiscard]] Judgement JudgeQuery(std::string_view text);

}  // namespace pelora::session
