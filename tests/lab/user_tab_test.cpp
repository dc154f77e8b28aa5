// SPDX-License-Identifier: Apache-2.0
// The user tab on a directory server.
#include <gtest/gtest.h>

#include "hosts/ldap/store_directory_service.h"
#include "pages/objects/prop_page_user.h"
#include "resources/resource.h"
#include "tests/lab/lab_page.h"
#include "tests/lab/lab_test.h"
#include "tests/lab/ldap_stand_in.h"
#include "tests/support/observed_store.h"

namespace pelora::lab {
namespace {

using UserPage = LabPage<CPropPageUser>;
using Lines = std::vector<std::string>;

const std::vector<std::string> kShown = {"mail",
                                         "otherMailbox",
                                         "peloraAccount",
                                         "peloraQuotaHard",
                                         "peloraAdmin",
                                         "peloraHidden",
                                         "peloraQuotaOverride",
                                         "peloraSharedStoreOnly",
                                         "peloraResourceType",
                                         "peloraQuotaSoft",
                                         "peloraQuotaWarn"};

class UserTabTest : public ::testing::Test {
 protected:
  UserTabTest() {
    static int number = 0;
    container_ = "OU=Tab " + std::to_string(++number) + ",OU=Contract," + Base();
    administrator_.Add(container_, {{"objectClass", {"organizationalUnit"}}});
    for (const char* const name : {"One", "Two", "Three"}) {
      administrator_.Add(Dn(name), {{"objectClass", {"user"}},
                                    {"mail", {std::string(name) + "@pelora.test"}},
                                    {"otherMailbox", {"b@pelora.test", "c@pelora.test"}},
                                    {"peloraAccount", {"1"}},
                                    {"peloraQuotaOverride", {"1"}},
                                    {"peloraQuotaHard", {"500"}}});
    }
  }

  [[nodiscard]] std::string Dn(const std::string& name) const {
    return "CN=" + name + "," + container_;
  }
  [[nodiscard]] std::vector<std::string> Dns() const { return {Dn("One"), Dn("Two"), Dn("Three")}; }
  /// What the directory holds of a user.
  [[nodiscard]] Lines Stored(const std::string& name) const { return LdapSearch(Dn(name), kShown); }
  [[nodiscard]] std::string Quota(const std::string& name) {
    return administrator_.Stored(Dn(name))["peloraQuotaHard"].front();
  }

  LabAdministrator administrator_;
  std::string container_;
  std::unique_ptr<NetworkSession> session_ = OpenSession();
  testing::ObservedStore store_{session_->store()};
  ldap::StoreDirectoryService directory_{store_};
  testing::HostBench bench_{directory_};
};

TEST_F(UserTabTest, WithoutRightsItSaysSoAndWritesNothing) {
  const EnvironmentVariable tickets("KRB5CCNAME", TicketsOf(kHelper));
  const std::unique_ptr<NetworkSession> session = OpenSession();
  testing::HostBench bench(session->service());
  const Lines before = Stored("One");
  UserPage page(bench, IDD_PROPPAGE_USER, {Dn("One"), Dn("Two")});
  EXPECT_EQ(page.opened(), S_OK);
  page.Click(IDC_PELORA_HIDDEN);
  page.Type(IDC_QUOTA_HARD, "9");
  EXPECT_FALSE(page.Apply());
  EXPECT_EQ(bench.Boxes(), "Unknown error occured||Error code: 0X80070005\n");
  EXPECT_EQ(bench.messages.records().front().message.caption, "Pelora Error");
  EXPECT_EQ(bench.messages.records().front().message.icon, MessageIcon::kError);
  EXPECT_EQ(session->service().last_failure().code, 50);
  EXPECT_NE(session->service().last_failure().text, "");
  EXPECT_EQ(Stored("One"), before);
  EXPECT_EQ(Quota("Two"), "500");
}

TEST_F(UserTabTest, WhenTheServerDiesBetweenTwoUsersTheFirstKeepsWhatItGot) {
  RunningServer server;
  store_.before_modify = [&](std::size_t before) {
    if (before == 1) server.Kill();
  };
  UserPage page(bench_, IDD_PROPPAGE_USER, Dns());
  page.Type(IDC_QUOTA_HARD, "700");
  EXPECT_FALSE(page.Apply());
  EXPECT_EQ(bench_.Boxes(), "Unknown error occured||Error code: 0X8007203A\n");
  EXPECT_EQ(store_.log.back(),
            "modify " + Dn("Two") + ": peloraQuotaHard peloraResourceType peloraResourceCapacity");
  store_.before_modify = nullptr;
  server.Start();
  administrator_.Reconnect();
  EXPECT_EQ(Quota("One") + " " + Quota("Two") + " " + Quota("Three"), "700 500 500");

  // The box did not cost what was typed; the quota counts as unchanged until it is edited again.
  page.Type(IDC_QUOTA_HARD, "700");
  EXPECT_TRUE(page.Apply());
  EXPECT_EQ(bench_.Boxes(), "Unknown error occured||Error code: 0X8007203A\n");
  EXPECT_EQ(Quota("One") + " " + Quota("Two") + " " + Quota("Three"), "700 700 700");
}

TEST_F(UserTabTest, WithoutTheServerNothingIsLoadedAndNothingWritten) {
  RunningServer server;
  server.Kill();
  UserPage page(bench_, IDD_PROPPAGE_USER, {Dn("One")});
  EXPECT_EQ(page.initialized(), static_cast<HRESULT>(0x8007203AU));
  EXPECT_EQ(bench_.Boxes(),
            "Unable to get connection with the ldap user.||Error code: 0X8007203A\n");
  EXPECT_EQ(page.dialog().Text(IDC_QUOTA_HARD), "");
  server.Start();
}

TEST_F(UserTabTest, WhatIsBoundCanBeReadWhateverHappensThen) {
  std::vector<Ref<IADs>> objects;
  const std::vector<std::string> paths = {"LDAP://" + Dn("One"), "LDAP://" + Dn("Two")};
  ASSERT_EQ(session_->service().BindPaths(paths, IID_IADsUser, objects), S_OK);
  RunningServer server;
  server.Kill();
  for (const Ref<IADs>& object : objects) {
    Variant value;
    EXPECT_EQ(object->Get("peloraQuotaHard", value), S_OK);
    EXPECT_EQ(value, Variant::Integer(500));
    EXPECT_EQ(object->Get("peloraHidden", value), E_ADS_PROPERTY_NOT_FOUND);
  }
  server.Start();
}

TEST_F(UserTabTest, ASelectionIsReadTogetherAndEachChangedUserWrittenOnce) {
  UserPage page(bench_, IDD_PROPPAGE_USER, Dns());
  const std::string together = "read " + Dn("One") + " and 2 more";
  EXPECT_EQ(store_.log, (Lines{"read root", together}));
  store_.log.clear();
  page.Type(IDC_QUOTA_HARD, "600");
  page.Click(IDC_PELORA_HIDDEN);
  EXPECT_TRUE(page.Apply());
  Lines expected = {together};
  for (const std::string& dn : Dns()) {
    expected.push_back("modify " + dn +
                       ": peloraQuotaHard peloraHidden peloraResourceType peloraResourceCapacity");
  }
  EXPECT_EQ(store_.log, expected);
  EXPECT_EQ(Quota("One") + Quota("Two") + Quota("Three"), "600600600");
}

/// Any user, for however many names are asked for.
StandInAnswer GiveUsers(const StandInRequest& request) {
  StandInAnswer answer;
  if (request.kind != StandInRequest::Kind::kSearch) return answer;
  const std::vector<std::string> names =
      request.names.empty() ? std::vector<std::string>{request.dn} : request.names;
  for (const std::string& name : names) {
    answer.entries.push_back({name, {{"objectClass", {"top", "user"}}, {"mail", {"m@x"}}}});
  }
  return answer;
}

struct RoundTrips {
  int users;
  /// How often the program waits, and for how many requests, to bind so many users.
  int waits;
  int requests;
};

TEST(RoundTripTest, BindingManyTakesFew) {
  LdapStandIn server({.gathers = true}, GiveUsers);
  const auto session = OpenSession({.server = server.Address()});
  for (const RoundTrips& row :
       {RoundTrips{1, 1, 1}, RoundTrips{2, 1, 1}, RoundTrips{65, 1, 2}, RoundTrips{1000, 1, 16}}) {
    std::vector<std::string> paths;
    for (int number = 0; number < row.users; ++number) {
      paths.push_back("LDAP://CN=User " + std::to_string(number) + ",DC=x");
    }
    server.Forget();
    std::vector<Ref<IADs>> objects;
    EXPECT_EQ(session->service().BindPaths(paths, IID_IADsUser, objects), S_OK);
    EXPECT_EQ(objects.size(), paths.size());
    EXPECT_EQ(server.turns(), row.waits) << row.users;
    EXPECT_EQ(server.requests(), row.requests) << row.users;

    // One change, one request; nothing staged, none.
    server.Forget();
    Variant value;
    EXPECT_EQ(objects[0]->Get("mail", value), S_OK);
    EXPECT_EQ(objects[0]->SetInfo(), S_OK);
    EXPECT_EQ(server.requests(), 0);
    EXPECT_EQ(objects[0]->Put("mail", Variant::String("n@x")), S_OK);
    EXPECT_EQ(objects[0]->Put("peloraAccount", Variant::Integer(1)), S_OK);
    EXPECT_EQ(objects[0]->SetInfo(), S_OK);
    EXPECT_EQ(server.requests(), 1);
    EXPECT_EQ(server.turns(), 1);
  }
}

TEST(RoundTripTest, OpeningATabWaitsForItsObjectsAndForNothingElse) {
  LdapStandIn server({.gathers = true}, GiveUsers);
  const auto session = OpenSession({.server = server.Address()});
  std::vector<std::string> names;
  for (int number = 0; number < 500; ++number) {
    names.push_back("CN=User " + std::to_string(number) + ",DC=x");
  }
  testing::HostBench bench(session->service());
  const auto open = [&] {
    server.Forget();
    const UserPage page(bench, IDD_PROPPAGE_USER, names);
    EXPECT_EQ(page.opened(), S_OK);
  };
  // What the directory says of itself is asked for once.
  open();
  EXPECT_EQ(server.turns(), 2);
  for (int again = 0; again < 2; ++again) {
    open();
    EXPECT_EQ(server.turns(), 1);
    EXPECT_EQ(server.requests(), 8);
  }
}

}  // namespace
}  // namespace pelora::lab
