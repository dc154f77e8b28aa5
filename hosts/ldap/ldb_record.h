// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/ldap/talloc_ptr.h"

struct ldb_message;

namespace pelora::ldap {

/// A record of a database as the library gave it, with its name taken apart: who writes it need not
/// have that done once more. It holds on to nothing of the search, and goes before the database is
/// closed.
using LdbRecord = TallocPtr<ldb_message>;

}  // namespace pelora::ldap
