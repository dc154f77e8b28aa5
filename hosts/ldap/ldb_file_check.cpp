// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldb_file_check.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_schema.h"
#include "hosts/ldap/tdb_file.h"

namespace pelora::ldap {
namespace {

constexpr std::string_view kMagic = "TDB file\n";

StoreStatus Refuse(const std::string& path, std::string_view reason) {
  return {kLdapServerDown, "cannot open the directory '" + path + "': " + std::string(reason)};
}

bool HasMagic(int file) {
  std::array<char, kMagic.size()> start{};
  const ssize_t count = pread(file, start.data(), start.size(), 0);
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

StoreStatus RefuseModules(const std::string& path) {
  return Refuse(path,
                "the file asks for modules to be loaded into the program (@MODULES), and no file "
                "may do that");
}

StoreStatus CheckLdbFile(const std::string& path, const LdbFileLock& lock) {
  if (!HasMagic(lock.descriptor())) return Refuse(path, "the file is no directory");
  LdbFileLock::Hold hold;
  StoreStatus status = lock.Acquire(LdbFileLock::Purpose::kOpen, hold);
  if (!status.Ok()) return status;
  const TdbPtr database = OpenTdbFile(lock.LibraryPath());
  if (database == nullptr && errno == EBUSY) return {};
  if (database == nullptr || tdb_check(database.get(), nullptr, nullptr) != 0) {
    return Refuse(path, "the file is damaged");
  }
  if (!HasRecord(database.get(), "DN=@BASEINFO")) {
    return Refuse(path, "the file is a database of another program");
  }
  if (HasRecord(database.get(), "DN=" + std::string(kModulesRecord))) return RefuseModules(path);
  return {};
}

}  // namespace pelora::ldap
