// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/session/find_names.h"

namespace pelora::session {

/// A `NameFinder` that takes what `FindText` takes, but for words: what stands alone is the whole
/// of a name, too. Many names are asked for at once.
[[nodiscard]] FoundNames FindPastedNames(ldap::IDirectoryStore& store, const std::string& text,
                                         const std::string& filter);

}  // namespace pelora::session
