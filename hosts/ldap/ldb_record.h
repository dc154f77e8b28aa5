// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "hosts/ldap/directory_store.h"

struct ldb_message;

namespace pelora::ldap {

/// A record of a database as the library gave it, with its name taken apart: who writes it need not
/// have that done once more. It holds on to nothing of the search, and goes before the database is
/// closed. Several threads may hold it, and look at its attributes.
using LdbRecord = std::shared_ptr<ldb_message>;

/// What became of one of many records asked for.
struct ReadRecord {
  StoreStatus status{};
  /// None where it could not be read.
  LdbRecord record{};
};

}  // namespace pelora::ldap
