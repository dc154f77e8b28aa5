// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pelora::session {

/// A password as a directory takes it (`unicodePwd`): in quotation marks, in UTF-16, lowest byte
/// first. The caller wipes it; nothing else of it is left behind.
///
/// In memory of its own from the beginning, so that it can be handed on without leaving a copy.
[[nodiscard]] std::string PasswordBytes(std::string_view password);

}  // namespace pelora::session
