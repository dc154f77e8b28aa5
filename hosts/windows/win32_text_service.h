// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/text_service.h"

namespace pelora::windows {

/// The system's tables of Unicode, the same for every user's language.
class Win32TextService final : public ITextService {
 public:
  [[nodiscard]] std::string UpperCase(std::string_view text) const override;
};

}  // namespace pelora::windows
