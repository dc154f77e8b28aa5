// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/text_service.h"

namespace pelora::console {

class QtTextService final : public ITextService {
 public:
  [[nodiscard]] std::string UpperCase(std::string_view text) const override;
};

}  // namespace pelora::console
