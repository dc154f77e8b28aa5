// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string_view>

#include "directory/attribute_catalogue.h"

namespace pelora::session {

/// The limits that count while a box is ticked, from the lowest to the highest. 0 and unset are no
/// limit.
struct QuotaLimits {
  struct Limit {
    std::string_view attribute;
    std::string_view word;
  };
  std::string_view override_box;
  std::array<Limit, 3> limits;
};

inline constexpr std::array<QuotaLimits, 2> kQuotaLimits = {{
    {CatalogueEntry("peloraQuotaOverride").name,
     {{{CatalogueEntry("peloraQuotaWarn").name, "warning"},
       {CatalogueEntry("peloraQuotaSoft").name, "soft"},
       {CatalogueEntry("peloraQuotaHard").name, "hard"}}}},
    {CatalogueEntry("peloraUserDefaultQuotaOverride").name,
     {{{CatalogueEntry("peloraUserDefaultQuotaWarn").name, "user default warning"},
       {CatalogueEntry("peloraUserDefaultQuotaSoft").name, "user default soft"},
       {CatalogueEntry("peloraUserDefaultQuotaHard").name, "user default hard"}}}},
}};

}  // namespace pelora::session
