// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/typed/judgement.h"

namespace pelora::session {

/// Judges the name of a home server, the `cn` of a computer: odd is one that no computer has, and
/// one of a computer that is no Pelora server. Nothing is said of an empty name, nor when the
/// directory does not answer.
[[nodiscard]] Judgement JudgeServer(ldap::IDirectoryStore& store, std::string_view name);

}  // namespace pelora::session
