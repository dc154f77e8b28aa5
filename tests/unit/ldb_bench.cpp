// SPDX-License-Identifier: Apache-2.0
#include "tests/unit/ldb_bench.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/sample_company.h"

namespace pelora::ldap {
namespace {

constexpr std::chrono::milliseconds kLockWait{150};

/// The bytes of the sample directory, made once.
const std::string& SampleBytes() {
  static const std::string bytes = [] {
    const pelora::testing::TemporaryFolder folder;
    const std::string path = folder.File("sample.ldb");
    const StoreStatus made = CreateLdbDirectory(path, SampleCompanyLdif());
    if (!made.Ok()) throw std::runtime_error(made.text);
    return ReadFile(path);
  }();
  return bytes;
}

}  // namespace

LdbBench::LdbBench() { WriteFile(path_, SampleBytes()); }

StoreStatus LdbBench::TryOpen(std::unique_ptr<IDirectoryStore>& store) const {
  return OpenLdbStore(path_, {.lock_wait = kLockWait}, store);
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
  for (const auto& file : std::filesystem::directory_iterator(folder_.path())) {
    names.push_back(file.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes(file ? std::filesystem::file_size(path) : 0, '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

void WriteFile(const std::string& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw std::runtime_error("cannot write " + path);
}

}  // namespace pelora::ldap
