// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <locale.h>

#include <memory>
#include <type_traits>

#include "platform/text_service.h"

namespace pelora {

/// Upper-casing by the C library's own Unicode tables, whatever the locale of the process. A letter
/// becomes one letter (ß stays), as in the platform's list boxes. Used on one thread.
class HeadlessTextService final : public ITextService {
 public:
  /// Throws std::system_error when the C library lacks its built-in Unicode locale.
  [[nodiscard]] std::string UpperCase(std::string_view text) const override;

 private:
  struct FreeLocale {
    void operator()(locale_t locale) const { freelocale(locale); }
  };

  [[nodiscard]] locale_t Unicode() const;

  /// Made for the first text that needs it: every list box has a service, and few do.
  mutable std::unique_ptr<std::remove_pointer_t<locale_t>, FreeLocale> unicode_;
};

}  // namespace pelora
