// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

#include "hosts/session/page_fields.h"
#include "hosts/session/typed/judgement.h"

namespace pelora::session {

/// What there is to say of one field of a page.
struct FieldJudgement {
  /// Its place among the page's fields.
  std::size_t field = 0;
  Judgement judgement;
};

/// Judges what a page shows in those of its fields that can be used, each by the kind of its
/// attribute, and the limits of a quota by their order; after the last look of `fields.touched`,
/// and the objects' values by what was gathered last. Fields of which there is nothing to say are
/// left out; a field may be there twice.
///
/// Wrong is only what was changed: what is stored already hinders nobody, and is odd. So are limits
/// that are out of order only for some of several objects, since the field shows but one of them.
[[nodiscard]] std::vector<FieldJudgement> JudgePage(const PageFields& fields);

/// Puts into each changed field what its text stands for, where that is something else.
void PutWhatIsMeant(const PageFields& fields);

}  // namespace pelora::session
