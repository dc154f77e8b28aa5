// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stop_token>
#include <string>

#include "hosts/ldap/search_place.h"
#include "hosts/session/find_names.h"

namespace pelora::session {

/// A `NameFinder` that takes what `FindText` takes, but for words: what stands alone is the whole
/// of a name, too. Many names are asked for at once.
///
/// Who is nobody in the directory's own domain is looked for in the domains around it, which
/// `find_places`, if any, tells: in the forest first, then in each domain that is trusted.
[[nodiscard]] FoundNames FindPastedNames(ldap::IDirectoryStore& store, const std::string& text,
                                         const std::string& filter,
                                         const ldap::PlaceFinder& find_places = {},
                                         const std::stop_token& stop = {});

}  // namespace pelora::session
