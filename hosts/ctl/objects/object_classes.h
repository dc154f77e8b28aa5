// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "hosts/session/new_object_kind.h"

namespace pelora::ctl {

/// The kind of objects that scripts call `word`, in any case. Throws `WrongUsage` with all words
/// when there is none.
[[nodiscard]] const session::NewObjectKind& KindOfWord(std::string_view word);

/// What scripts call objects of a kind; empty for those that have no settings.
[[nodiscard]] std::string_view WordOf(const session::ObjectKind& kind);

/// Finds the objects of a kind, and those that are derived from no other kind.
[[nodiscard]] std::string FilterOf(const session::NewObjectKind& kind);
/// Finds the objects of every kind.
[[nodiscard]] std::string FilterOfEveryKind();

}  // namespace pelora::ctl
