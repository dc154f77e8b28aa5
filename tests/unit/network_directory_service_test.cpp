// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/network_directory_service.h"

#include <gtest/gtest.h>

#include "hosts/ldap/ldap_status.h"
#include "tests/support/variant_text.h"
#include "tests/unit/store_scripted.h"

namespace pelora::ldap {
namespace {

constexpr auto kServerDown = static_cast<HRESULT>(0x8007203AU);

class NetworkDirectoryServiceTest : public ::testing::Test {
 protected:
  /// Each server that is opened holds the one user of the script, whose mail says which it is.
  StoreStatus Open(const ServerName& server, std::unique_ptr<IDirectoryStore>& store) {
    opened_ += server.Text() + " ";
    if (server.host == "down") return {kLdapServerDown, "cannot reach 'down'"};
    auto scripted = std::make_unique<ScriptedStore>();
    scripted->entry.attributes["mail"] = {server.Text()};
    store = std::move(scripted);
    return {};
  }
  [[nodiscard]] std::string MailOf(const std::string& path) {
    Ref<IADs> object;
    const HRESULT status = service_.ADsGetObject(path, IID_IADs, object);
    if (FAILED(status)) return "failed";
    Variant value;
    EXPECT_EQ(object->Get("mail", value), S_OK);
    return value.string();
  }

  ScriptedStore home_;
  std::string opened_;
  NetworkDirectoryService service_{
      {.host = "home.x.test"}, home_, [this](const ServerName& server, auto& store) {
        return Open(server, store);
      }};
  Ref<IADs> object_;
};

TEST_F(NetworkDirectoryServiceTest, PathsWithoutAServerAreTheHomeServers) {
  home_.entry.attributes["mail"] = {"home"};
  EXPECT_EQ(MailOf("LDAP://CN=Ada,DC=x"), "home");
  EXPECT_EQ(MailOf("LDAP://home.x.test/CN=Ada,DC=x"), "home");
  EXPECT_EQ(MailOf("LDAP://HOME.X.test.:389/CN=Ada,DC=x"), "home");
  EXPECT_EQ(
      service_.ADsOpenObject("LDAP://rootDSE", std::nullopt, std::nullopt, 1, IID_IADs, object_),
      S_OK);
  EXPECT_EQ(home_.root_reads, 1);
  EXPECT_EQ(opened_, "");
}

TEST_F(NetworkDirectoryServiceTest, AServerIsOpenedWhenItIsFirstNamed) {
  EXPECT_EQ(MailOf("LDAP://dc2/CN=Ada,DC=x"), "dc2");
  EXPECT_EQ(MailOf("LDAP://DC2/CN=Ada,DC=x"), "dc2");
  EXPECT_EQ(MailOf("LDAP://dc2:3268/CN=Ada,DC=x"), "dc2:3268");
  EXPECT_EQ(opened_, "dc2 dc2:3268 ");
}

TEST_F(NetworkDirectoryServiceTest, AServerThatCannotBeReachedIsTriedAgain) {
  EXPECT_EQ(service_.ADsGetObject("LDAP://down/CN=Ada,DC=x", IID_IADs, object_), kServerDown);
  EXPECT_FALSE(object_);
  EXPECT_EQ(service_.last_failure().text, "cannot reach 'down'");
  EXPECT_EQ(service_.ADsOpenObject("LDAP://down/rootDSE", std::nullopt, std::nullopt, 1, IID_IADs,
                                   object_),
            kServerDown);
  EXPECT_EQ(opened_, "down down ");
}

TEST_F(NetworkDirectoryServiceTest, ABadPathIsRefused) {
  for (const char* const path : {"", "LDAP://nonsense", "LDAP://dc 2/CN=Ada,DC=x",
                                 "LDAP://dc2:port/CN=Ada,DC=x", "ldap://CN=Ada,DC=x"}) {
    EXPECT_EQ(service_.ADsGetObject(path, IID_IADs, object_), E_ADS_BAD_PATHNAME) << path;
    EXPECT_FALSE(object_);
  }
  EXPECT_EQ(opened_, "");
}

TEST_F(NetworkDirectoryServiceTest, FailuresOfAllServersAreNotedInOnePlace) {
  EXPECT_EQ(service_.ADsGetObject("LDAP://dc2/CN=Bob,DC=x", IID_IADs, object_), kNoSuchObject);
  EXPECT_EQ(service_.last_failure().text, "no such object");
  home_.failure = {kLdapBusy, "busy"};
  EXPECT_EQ(service_.ADsGetObject("LDAP://CN=Ada,DC=x", IID_IADs, object_),
            HresultOfLdap(kLdapBusy));
  EXPECT_EQ(service_.last_failure().text, "busy");
}

TEST_F(NetworkDirectoryServiceTest, PathsOfSeveralServersAreBoundInTheirOrder) {
  home_.entry.attributes["mail"] = {"home"};
  const std::vector<std::string> paths = {"LDAP://CN=Ada,DC=x", "LDAP://home.x.test/CN=Ada,DC=x",
                                          "LDAP://dc2/CN=Ada,DC=x", "LDAP://dc3/CN=Ada,DC=x",
                                          "LDAP://CN=Ada,DC=x"};
  std::vector<Ref<IADs>> objects;
  ASSERT_EQ(service_.BindPaths(paths, IID_IADsUser, objects), S_OK);
  std::string mails;
  for (const Ref<IADs>& object : objects) {
    Variant value;
    EXPECT_EQ(object->Get("mail", value), S_OK);
    mails += value.string() + " ";
  }
  EXPECT_EQ(mails, "home home dc2 dc3 home ");
}

TEST_F(NetworkDirectoryServiceTest, TheFirstPathThatFailsDecides) {
  const auto bind = [&](const std::vector<std::string>& paths) {
    std::vector<Ref<IADs>> objects = {Ref<IADs>()};
    const HRESULT status = service_.BindPaths(paths, IID_IADs, objects);
    EXPECT_TRUE(objects.empty());
    return status;
  };
  EXPECT_EQ(bind({"LDAP://CN=Ada,DC=x", "LDAP://CN=Bob,DC=x", "LDAP://down/CN=Ada,DC=x"}),
            kNoSuchObject);
  EXPECT_EQ(bind({"LDAP://CN=Ada,DC=x", "LDAP://down/CN=Ada,DC=x", "LDAP://CN=Bob,DC=x"}),
            kServerDown);
  EXPECT_EQ(bind({"LDAP://dc2/CN=Ada,DC=x", "nonsense", "LDAP://CN=Bob,DC=x"}), E_ADS_BAD_PATHNAME);
  EXPECT_EQ(bind({"LDAP://dc2/CN=Bob,DC=x", "nonsense"}), kNoSuchObject);
}

}  // namespace
}  // namespace pelora::ldap
