// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "platform/text_service.h"

namespace pelora {

/// Gives a text's place in a sorted list box: the texts stand in the order of their keys, compared
/// byte by byte. Marks come before digits before letters, a beginning before what it begins; texts
/// that differ in case alone have the same key.
[[nodiscard]] std::string ListOrderKey(std::string_view text, const ITextService& service);

}  // namespace pelora
