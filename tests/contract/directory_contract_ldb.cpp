// SPDX-License-Identifier: Apache-2.0
// The directory in a file, held to the contract.
#include <filesystem>
#include <stdexcept>

#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/ldb_api.h"
#include "hosts/ldap/ldb_connection.h"
#include "hosts/ldap/ldb_store.h"
#include "hosts/ldap/sample_company.h"
#include "hosts/ldap/store_directory_service.h"
#include "hosts/ldap/talloc_ptr.h"
#include "tests/contract/directory_contract.h"
#include "tests/support/temporary_folder.h"

namespace pelora::contract {
namespace {

using pelora::testing::TemporaryFolder;

void Require(const ldap::StoreStatus& status) {
  if (!status.Ok()) throw std::runtime_error(status.text);
}

/// The sample directory, made once: a test works on a copy.
class Original {
 public:
  Original() { Require(ldap::CreateLdbDirectory(path(), ldap::SampleCompanyLdif())); }
  [[nodiscard]] std::string path() const { return folder_.File("original.ldb"); }

 private:
  TemporaryFolder folder_;
};

std::vector<std::string> ClassesOf(ObjectKind kind) {
  switch (kind) {
    case ObjectKind::kUser:
      return {"top", "person", "organizationalPerson", "user"};
    case ObjectKind::kGroup:
      return {"top", "group"};
    case ObjectKind::kOrganizationalUnit:
      return {"top", "organizationalUnit"};
  }
  return {};
}

class LdbUnderTest final : public DirectoryUnderTest {
 public:
  LdbUnderTest() {
    static const Original original;
    const std::string path = folder_.File("directory.ldb");
    std::filesystem::copy_file(original.path(), path);
    Require(ldap::OpenLdbStore(path, {}, store_));
    service_ = std::make_unique<ldap::StoreDirectoryService>(*store_);
    // The other administrator comes through the library, past the store.
    Require(ldap::LdbConnection::Open(path, ldap::LdbConnection::Mode::kExisting,
                                      other_administrator_));
  }

  [[nodiscard]] IDirectoryService& Service() override { return *service_; }
  [[nodiscard]] std::string Container() const override {
    return "OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
  }

  void Add(ObjectKind kind, const std::string& dn, const StoredAttributes& attributes) override {
    ldap::Entry entry{.dn = dn, .attributes = {{"objectClass", ClassesOf(kind)}}};
    for (const auto& [name, values] : attributes) entry.attributes[name] = values;
    Require(other_administrator_->Add(entry));
  }
  void Remove(const std::string& dn) override {
    const ldap::TallocScope scope = ldap::MakeTallocScope();
    ldb_context* const context = other_administrator_->handle();
    if (ldb_delete(context, ldb_dn_new(scope.get(), context, dn.c_str())) != LDB_SUCCESS) {
      throw std::runtime_error(ldb_errstring(context));
    }
  }
  void Set(const std::string& dn, const std::string& attribute,
           const std::vector<std::string>& values) override {
    Require(other_administrator_->Replace(dn, {{attribute, values}}));
  }
  [[nodiscard]] StoredAttributes Stored(const std::string& dn) override {
    std::vector<ldap::Entry> entries;
    Require(other_administrator_->Search({.base = dn, .attributes = {}}, entries));
    const ldap::AttributeMap& found = entries.at(0).attributes;
    return {found.begin(), found.end()};
  }

 private:
  TemporaryFolder folder_;
  std::unique_ptr<ldap::IDirectoryStore> store_;
  std::unique_ptr<ldap::StoreDirectoryService> service_;
  std::unique_ptr<ldap::LdbConnection> other_administrator_;
};

std::unique_ptr<DirectoryUnderTest> MakeLdb() { return std::make_unique<LdbUnderTest>(); }

INSTANTIATE_TEST_SUITE_P(EmbeddedFile, DirectoryContract, ::testing::Values(&MakeLdb));

}  // namespace
}  // namespace pelora::contract
