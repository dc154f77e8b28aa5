// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tdb.h>

#include <memory>
#include <string>

namespace pelora::ldap {

struct TdbClose {
  void operator()(tdb_context* file) const;
};
/// A file of the kind that libldb keeps its databases in, opened as what it is: records and keys.
using TdbPtr = std::unique_ptr<tdb_context, TdbClose>;

/// Opens one that is there. Null, and `errno`, when it cannot be; EBUSY when this process has it
/// open already. Nothing is written to the terminal.
[[nodiscard]] TdbPtr OpenTdbFile(const std::string& path);

/// Makes the empty file `path` one of no records, with room for the keys of `entries` directory
/// entries: each is looked for by walking along all that share its place in the file's table, which
/// keeps its size. The same otherwise.
[[nodiscard]] TdbPtr MakeTdbFile(const std::string& path, std::size_t entries);

}  // namespace pelora::ldap
