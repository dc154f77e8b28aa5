// SPDX-License-Identifier: Apache-2.0
// A directory server on the network, held to the contract.
#include <stdexcept>

#include "hosts/ldap/network/network_session.h"
#include "tests/contract/directory_contract.h"
#include "tests/lab/lab.h"
#include "tests/lab/lab_administrator.h"

namespace pelora::contract {
namespace {

// One of each for all tests: each works in a container of its own.

lab::LabAdministrator& Administrator() {
  static lab::LabAdministrator administrator;
  return administrator;
}

ldap::NetworkSession& Session() {
  static const std::unique_ptr<ldap::NetworkSession> kSession = [] {
    std::unique_ptr<ldap::NetworkSession> opened;
    const ldap::StoreStatus status = ldap::NetworkSession::Open({.server = lab::Server()}, opened);
    if (!status.Ok()) throw std::runtime_error(status.text);
    return opened;
  }();
  return *kSession;
}

std::vector<std::string> ClassesOf(ObjectKind kind) {
  switch (kind) {
    case ObjectKind::kUser:
      return {"user"};
    case ObjectKind::kGroup:
      return {"group"};
    case ObjectKind::kOrganizationalUnit:
      return {"organizationalUnit"};
  }
  return {};
}

class SambaUnderTest : public DirectoryUnderTest {
 public:
  SambaUnderTest() {
    static int number = 0;
    container_ = "OU=Test " + std::to_string(++number) + ",OU=Contract," + lab::Base();
    Administrator().Add(container_, {{"objectClass", {"organizationalUnit"}}});
  }

  [[nodiscard]] IDirectoryService& Service() override { return Session().service(); }
  [[nodiscard]] std::string Container() const override { return container_; }

  void Add(ObjectKind kind, const std::string& dn, const StoredAttributes& attributes) override {
    StoredAttributes complete = attributes;
    complete["objectClass"] = ClassesOf(kind);
    Administrator().Add(dn, complete);
  }
  void Remove(const std::string& dn) override { Administrator().Remove(dn); }
  void Set(const std::string& dn, const std::string& attribute,
           const std::vector<std::string>& values) override {
    Administrator().Set(dn, attribute, values);
  }
  [[nodiscard]] StoredAttributes Stored(const std::string& dn) override {
    return Administrator().Stored(dn);
  }

 private:
  std::string container_;
};

/// With paths that name the server.
class NamedSambaUnderTest final : public SambaUnderTest {
 public:
  [[nodiscard]] std::string PathPrefix() const override { return "LDAP://" + lab::Server() + "/"; }
};

std::unique_ptr<DirectoryUnderTest> MakeSamba() { return std::make_unique<SambaUnderTest>(); }
std::unique_ptr<DirectoryUnderTest> MakeNamedSamba() {
  return std::make_unique<NamedSambaUnderTest>();
}

INSTANTIATE_TEST_SUITE_P(Samba, DirectoryContract, ::testing::Values(&MakeSamba));
INSTANTIATE_TEST_SUITE_P(SambaByName, DirectoryContract, ::testing::Values(&MakeNamedSamba));

}  // namespace
}  // namespace pelora::contract
