// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/tdb_file.h"

#include <fcntl.h>

#include <algorithm>

#include "hosts/ldap/ldb_library.h"

namespace pelora::ldap {
namespace {

/// Places in the table of a file: as many as libldb itself gives one, and as many as are no burden
/// for who looks at all records.
constexpr std::size_t kFewestPlaces = 10'000;
constexpr std::size_t kMostPlaces = 1'000'000;
/// An entry has some six records that its index is made of, and one of its own.
constexpr std::size_t kPlacesForEntry = 2;

/// The library would tell the world; what is wrong is said in one line by who asks for the file.
extern "C" void DropTdbMessage(tdb_context*, tdb_debug_level, const char*, ...) {}

TdbPtr Open(const std::string& path, std::size_t places, int flags) {
  const tdb_logging_context quiet{.log_fn = DropTdbMessage, .log_private = nullptr};
  const auto alone = LockLdbLibrary();
  return TdbPtr(tdb_open_ex(path.c_str(), static_cast<int>(places), TDB_DEFAULT,
                            O_RDWR | O_CLOEXEC | flags, 0, &quiet, nullptr));
}

}  // namespace

void TdbClose::operator()(tdb_context* file) const {
  const auto alone = LockLdbLibrary();
  tdb_close(file);
}

TdbPtr OpenTdbFile(const std::string& path) { return Open(path, 0, 0); }

TdbPtr MakeTdbFile(const std::string& path, std::size_t entries) {
  // The file is there; this makes the library write what a new one begins with.
  return Open(path, std::clamp(entries * kPlacesForEntry, kFewestPlaces, kMostPlaces), O_CREAT);
}

}  // namespace pelora::ldap
