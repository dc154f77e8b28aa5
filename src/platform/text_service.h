// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pelora {

/// Operations on text that need the host's knowledge of Unicode.
class ITextService {
 public:
  virtual ~ITextService() = default;

  /// `text` in upper case, whatever its script; letters without a capital stay as they are.
  [[nodiscard]] virtual std::string UpperCase(std::string_view text) const = 0;
};

}  // namespace pelora
