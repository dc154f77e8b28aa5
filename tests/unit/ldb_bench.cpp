// SPDX-License-Identifier: Apache-2.0
#include "tests/unit/ldb_bench.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <stdexcept>

namespace pelora::ldap {
namespace {

constexpr std::chrono::milliseconds kLockWait{150};

}  // namespace

StoreStatus LdbBench::TryOpen(std::unique_ptr<IDirectoryStore>& store) const {
  return OpenLdbStore(path(), {.lock_wait = kLockWait}, store);
}

std::unique_ptr<IDirectoryStore> LdbBench::Open() const {
  std::unique_ptr<IDirectoryStore> store;
  const StoreStatus status = TryOpen(store);
  if (!status.Ok()) throw std::runtime_error(status.text);
  return store;
}

AttributeValues LdbBench::OnUser(const std::string& attribute) const {
  return Read(*Open(), kUser, attribute);
}

AttributeValues LdbBench::Read(IDirectoryStore& store, const std::string& dn,
                               const std::string& attribute) {
  Entry entry;
  const std::array<std::string, 1> attributes = {attribute};
  const StoreStatus status = store.Read(dn, attributes, entry);
  EXPECT_TRUE(status.Ok()) << status.text;
  AttributeValues values = entry.attributes[attribute];
  std::sort(values.begin(), values.end());
  return values;
}

StoreStatus LdbBench::Replace(IDirectoryStore& store, const std::string& dn,
                              const std::string& attribute, const AttributeValues& values) {
  const std::array<Modification, 1> change = {
      {{Modification::Operation::kReplace, attribute, values}}};
  return store.Modify(dn, change);
}

std::vector<std::string> LdbBench::FilesInFolder() const {
  std::vector<std::string> names;
  for (const auto& file : std::filesystem::directory_iterator(file_.folder().path())) {
    names.push_back(file.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace pelora::ldap
