// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>

#include "hosts/session/page_fields.h"

// By the rules of the pages' lists, an entry that is made the default one after another that was it
// had been deleted shares the mark with that one's heir, and an apply leaves one of the two out,
// though both are shown. Here the one that was chosen last is the only one.

namespace pelora::session {

/// An entry of a list that is being made the default one.
struct ChosenDefault {
  /// The list's place among the page's fields.
  std::size_t field = 0;
  /// What its row carries.
  const void* entry = nullptr;
};

/// A button of a page has been pressed, and the page is about to hear of it: the entry that it
/// makes the default one; none where it does something else.
[[nodiscard]] std::optional<ChosenDefault> ChosenDefaultBy(const PageFields& fields,
                                                           ControlId button);

/// The page has heard of it. No other entry of the list is a default one any more.
void KeepAlone(const PageFields& fields, const ChosenDefault& chosen);

}  // namespace pelora::session
