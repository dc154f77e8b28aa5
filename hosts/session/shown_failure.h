// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/changes/change.h"
#include "hosts/changes/result.h"
#include "hosts/session/field_book.h"
#include "hosts/session/write_failure.h"
#include "hosts/session/writing_desk.h"

namespace pelora::session {

/// What is told of one object's change that was not written, or of which that is not known. `name`
/// is what the object is called.
[[nodiscard]] ShownFailure FailureOf(const std::string& name, const changes::Change& change,
                                     const changes::Result& result, const FieldBook& book,
                                     DirectoryPlace place);

/// Why a change was not done and what can be done about it, for one line of a list.
[[nodiscard]] std::string ReasonOf(const changes::Result& result, const FieldBook& book,
                                   DirectoryPlace place);

}  // namespace pelora::session
