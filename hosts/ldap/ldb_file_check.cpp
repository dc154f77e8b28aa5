// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldb_file_check.h"

#include <fcntl.h>
#include <tdb.h>

#include <array>
#include <cerrno>
#include <memory>
#include <string_view>

#include "hosts/ldap/file_descriptor.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::ldap {
namespace {

constexpr std::string_view kMagic = "TDB file\n";

struct TdbClose {
  void operator()(tdb_context* database) const { tdb_close(database); }
};
using TdbPtr = std::unique_ptr<tdb_context, TdbClose>;

/// The library would tell the world; what is wrong is said here in one line instead.
extern "C" void DropTdbMessage(tdb_context*, tdb_debug_level, const char*, ...) {}

StoreStatus Refuse(const std::string& path, std::string_view reason) {
  return {kLdapServerDown, "cannot open the directory '" + path + "': " + std::string(reason)};
}

bool HasMagic(const std::string& path) {
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  std::array<char, kMagic.size()> start{};
  const ssize_t count = file ? read(file.get(), start.data(), start.size()) : -1;
  return count == static_cast<ssize_t>(start.size()) &&
         std::string_view(start.data(), start.size()) == kMagic;
}

bool HasRecord(tdb_context* database, std::string_view name) {
  // Records are filed under their names, the closing zero included.
  std::string key(name);
  const TDB_DATA data{.dptr = reinterpret_cast<unsigned char*>(key.data()),
                      .dsize = key.size() + 1};
  return tdb_exists(database, data) == 1;
}

}  // namespace

StoreStatus CheckLdbFile(const std::string& path, const LdbFileLock& lock) {
  if (!HasMagic(path)) return Refuse(path, "the file is no directory");
  LdbFileLock::Hold hold;
  StoreStatus status = lock.Acquire(LdbFileLock::Purpose::kOpen, hold);
  if (!status.Ok()) return status;
  const tdb_logging_context quiet{.log_fn = DropTdbMessage, .log_private = nullptr};
  const TdbPtr database(
      tdb_open_ex(path.c_str(), 0, TDB_DEFAULT, O_RDWR | O_CLOEXEC, 0, &quiet, nullptr));
  if (database == nullptr && errno == EBUSY) return {};
  if (database == nullptr || tdb_check(database.get(), nullptr, nullptr) != 0) {
    return Refuse(path, "the file is damaged");
  }
  if (!HasRecord(database.get(), "DN=@BASEINFO")) {
    return Refuse(path, "the file is a database of another program");
  }
  return {};
}

}  // namespace pelora::ldap
