// SPDX-License-Identifier: Apache-2.0
#include "tests/support/sample_file.h"

#include <fstream>
#include <stdexcept>

#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/ldb_store.h"
#include "hosts/ldap/sample_company.h"

namespace pelora::testing {
namespace {

const std::string& SampleBytes() {
  static const std::string bytes = [] {
    const TemporaryFolder folder;
    const std::string path = folder.File("sample.ldb");
    const ldap::StoreStatus made = ldap::CreateLdbDirectory(path, ldap::SampleCompanyLdif());
    if (!made.Ok()) throw std::runtime_error(made.text);
    return ReadFile(path);
  }();
  return bytes;
}

}  // namespace

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

SampleFile::SampleFile() { WriteFile(path_, SampleBytes()); }

SampleStore::SampleStore() {
  const ldap::StoreStatus status = ldap::OpenLdbStore(file_.path(), {}, store_);
  if (!status.Ok()) throw std::runtime_error(status.text);
}

}  // namespace pelora::testing
