// SPDX-License-Identifier: Apache-2.0
// A server that takes no changes and names another one for them.
#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <mutex>
#include <optional>

#include "hosts/ldap/ldap_status.h"
#include "tests/lab/lab_test.h"
#include "tests/lab/ldap_stand_in.h"

namespace pelora::lab {
namespace {

using Kind = StandInRequest::Kind;

const std::string kName = "CN=a,DC=x";

bool IsChange(const StandInRequest& request) {
  return request.kind == Kind::kModify || request.kind == Kind::kAdd ||
         request.kind == Kind::kDelete;
}

/// Two servers: one that takes no changes, and one that does what a test has it do.
class ReadOnlyServer : public ::testing::Test {
 protected:
  StandInAnswer Read(const StandInRequest& request) {
    if (!IsChange(request)) return {.entries = {{request.dn, {{"mail", {"near"}}}}}};
    ++refused_;
    return {.code = ldap::kLdapReferral, .text = "not here", .referral = Referral()};
  }
  StandInAnswer Write(const StandInRequest& request) {
    const std::lock_guard lock(mutex_);
    if (!IsChange(request)) {
      StandInAnswer found{.entries = {{request.dn, {{"mail", {writers_mail_}}}}}};
      if (!request.goes_below) return found;
      for (const std::string& below : below_) found.entries.push_back({below, {}});
      return found;
    }
    written_.push_back(request.dn);
    // Who has others below stays.
    if (request.kind == Kind::kDelete && request.dn == kName && !below_.empty()) {
      return {.code = ldap::kLdapNotAllowedOnNonLeaf};
    }
    std::erase(below_, request.dn);
    return answer_;
  }
  [[nodiscard]] std::vector<std::string> Referral() const {
    if (referral_) return *referral_;
    return {"ldap:///" + kName, "ldap://" + writer_.Address() + "/" + kName};
  }
  [[nodiscard]] std::vector<std::string> written() {
    const std::lock_guard lock(mutex_);
    return written_;
  }
  [[nodiscard]] ldap::IDirectoryStore& store() { return session_->store(); }

  std::atomic<int> refused_{0};
  /// In place of the referral to the other server.
  std::optional<std::vector<std::string>> referral_;
  /// What the other one answers to a change.
  StandInAnswer answer_;
  std::string writers_mail_ = "near";
  /// What lies below the object there, and has not come to the other server yet.
  std::vector<std::string> below_;
  std::mutex mutex_;
  std::vector<std::string> written_;
  LdapStandIn writer_{{}, [this](const auto& request) { return Write(request); }};
  LdapStandIn reader_{{}, [this](const auto& request) { return Read(request); }};
  std::unique_ptr<NetworkSession> session_ = OpenSession({.server = reader_.Address()});
};

TEST_F(ReadOnlyServer, ChangesGoToTheOneThatItNamesAndReadingStaysNearby) {
  EXPECT_FALSE(session_->chosen().writer);
  EXPECT_EQ(ToText(Replace(store(), kName, "mail", {"m"})), "0");
  EXPECT_EQ(written(), std::vector<std::string>{kName});
  EXPECT_EQ(refused_, 1);
  ASSERT_TRUE(session_->chosen().writer);
  EXPECT_EQ(session_->chosen().writer->Text(), writer_.Address());
  EXPECT_EQ(session_->server(), reader_.Address());

  writers_mail_ = "far";
  EXPECT_EQ(ReadValue(store(), kName, "mail"), "near");
  // From now on it is not asked any more.
  EXPECT_EQ(ToText(Replace(store(), kName, "mail", {"n"})), "0");
  EXPECT_EQ(ToText(store().Add({.dn = "CN=b,DC=x", .attributes = {{"mail", {"m"}}}})), "0");
  EXPECT_EQ(refused_, 1);
  EXPECT_EQ(written().size(), 3U);
  EXPECT_EQ(writer_.connections(), 1);
  EXPECT_EQ(reader_.connections(), 1);
}

TEST_F(ReadOnlyServer, OneThatSaysNothingIsWaitedForOnceHoweverManyChangesThereAre) {
  TcpRelay silent(ldap::kDirectoryPort);
  silent.HoldRequests();
  referral_ = {"ldap://" + Server() + ":" + std::to_string(silent.port()) + "/" + kName};
  // The other server may be too busy to refuse anything within so short a wait.
  for (int tries = 0; tries < kTries && silent.connections() == 0; ++tries) {
    session_.reset();
    session_ = OpenImpatientSession(reader_.Address());
    int left = 20;
    store().ModifyManyStrictly(
        [&]() -> std::optional<ldap::ModifyRequest> {
          if (left-- == 0) return std::nullopt;
          return ldap::ModifyRequest{
              .dn = kName,
              .modifications = {{ldap::Modification::Operation::kReplace, "mail", {"m"}}}};
        },
        [](const StoreStatus& status) { EXPECT_LT(status.code, 0); });
  }
  EXPECT_EQ(silent.connections(), 1);
}

TEST_F(ReadOnlyServer, ManyChangesAreDoneThereInTheirOrder) {
  std::vector<std::string> names;
  for (int number = 0; number < 200; ++number) {
    names.push_back("CN=" + std::to_string(number) + ",DC=x");
  }
  std::size_t next = 0;
  std::size_t done = 0;
  store().ModifyManyStrictly(
      [&]() -> std::optional<ldap::ModifyRequest> {
        if (next == names.size()) return std::nullopt;
        return ldap::ModifyRequest{
            .dn = names[next++],
            .modifications = {{ldap::Modification::Operation::kReplace, "mail", {"m"}}}};
      },
      [&](const StoreStatus& status) {
        EXPECT_EQ(ToText(status), "0");
        ++done;
      });
  EXPECT_EQ(done, names.size());
  EXPECT_EQ(written(), names);
  // As many as were under way when it said so.
  EXPECT_LT(refused_, 200);
}

TEST_F(ReadOnlyServer, WhatTheNamedOneSaysIsTheAnswer) {
  answer_ = {.code = ldap::kLdapInsufficientAccessRights, .text = "you may not"};
  EXPECT_EQ(ToText(Replace(store(), kName, "mail", {"m"})), "50 you may not");
}

TEST_F(ReadOnlyServer, ItsReferralIsFollowedNowhere) {
  answer_ = {.code = ldap::kLdapReferral,
             .text = "nor here",
             .referral = {"ldap://" + Server() + "/" + kName}};
  for (int time = 0; time < 2; ++time) {
    EXPECT_EQ(ToText(Replace(store(), kName, "mail", {"m"})), "10 nor here");
  }
  EXPECT_EQ(written().size(), 2U);
}

TEST_F(ReadOnlyServer, AReferralThatNamesNoOtherServerIsTheAnswer) {
  for (const std::vector<std::string>& referral : {std::vector<std::string>{},
                                                   {"ldaps://" + writer_.Address()},
                                                   {"ldap:///" + kName},
                                                   {"ldap://" + reader_.Address() + "/" + kName}}) {
    referral_ = referral;
    EXPECT_EQ(ToText(Replace(store(), kName, "mail", {"m"})), "10 not here");
  }
  EXPECT_EQ(written().size(), 0U);
  EXPECT_EQ(writer_.connections(), 0);
}

TEST_F(ReadOnlyServer, OneThatCannotBeReachedLeavesEverythingAsItWas) {
  referral_ = {"ldap://" + Server() + ":2/" + kName};
  EXPECT_EQ(ToText(Replace(store(), kName, "mail", {"m"})),
            "-1 the server '" + reader_.Address() + "' takes no changes and names '" + Server() +
                ":2' for them: cannot reach the server '" + Server() + ":2': Connection refused");
  EXPECT_FALSE(session_->chosen().writer);
  // It is asked again, and may name another one.
  referral_.reset();
  EXPECT_EQ(ToText(Replace(store(), kName, "mail", {"m"})), "0");
}

TEST_F(ReadOnlyServer, AChangeThatTheNamedOneDoesNotAnswerIsUnknown) {
  answer_.hangs_up = true;
  EXPECT_EQ(ToText(Replace(store(), kName, "mail", {"m"})),
            "-5 whether the change of '" + kName +
                "' was done is not known: the connection to the "
                "server '" +
                writer_.Address() + "' was lost");
  EXPECT_EQ(written().size(), 1U);
  answer_.hangs_up = false;
  // The next one is referred anew.
  EXPECT_EQ(ToText(Replace(store(), kName, "mail", {"m"})), "0");
  EXPECT_EQ(refused_, 2);
}

TEST_F(ReadOnlyServer, WhatIsDeletedIsLookedAtWhereThatIsDone) {
  const Entry seen{.dn = kName, .attributes = {{"mail", {"near"}}}};
  const auto remove = [&] { return store().Remove(seen, ldap::IDirectoryStore::Extent::kAlone); };
  writers_mail_ = "changed meanwhile";
  EXPECT_EQ(remove().code, ldap::kLdapAssertionFailed);
  EXPECT_EQ(written().size(), 0U);
  writers_mail_ = "near";
  EXPECT_EQ(ToText(remove()), "0");
  EXPECT_EQ(written(), std::vector<std::string>{kName});
}

TEST_F(ReadOnlyServer, WhatLiesBelowIsLookedForWhereItIsDeleted) {
  below_ = {"CN=b," + kName, "CN=c," + kName};
  const Entry seen{.dn = kName, .attributes = {}};
  EXPECT_EQ(ToText(store().Remove(seen, ldap::IDirectoryStore::Extent::kWithAllBelow)), "0");
  EXPECT_EQ(written(), (std::vector<std::string>{kName, "CN=b," + kName, "CN=c," + kName, kName}));
}

TEST_F(ReadOnlyServer, OneThatIsNotOfTheSameRealmGetsNothing) {
  // It is of the lab's realm, and the one that names it says to be of another.
  const auto refer = [this](const auto& request) { return Read(request); };
  for (const auto& [realm, reason] : std::map<std::string, std::string>{
           {"ELSEWHERE.TEST", "nobody vouches for it in the realm 'ELSEWHERE.TEST': "},
           {"", "it does not say of which realm they are"}}) {
    const LdapStandIn foreign({.realm = realm}, refer);
    const auto session = OpenSession({.server = foreign.Address()});
    const StoreStatus status = Replace(session->store(), kName, "mail", {"m"});
    EXPECT_LT(status.code, 11) << status.text;
    EXPECT_NE(status.text.find(reason), std::string::npos) << status.text;
  }
  EXPECT_EQ(written().size(), 0U);
  EXPECT_EQ(writer_.requests(), 0);
}

TEST_F(ReadOnlyServer, OneThatIsNotOfItsNameGetsNothing) {
  // It holds the key of another server.
  const EnvironmentVariable keys("KRB5_KTNAME", "FILE:" + Home() + "/impostor.keytab");
  const LdapStandIn forged({.name = "impostor.pelora.test"},
                           [](const auto& /*request*/) { return StandInAnswer{}; });
  referral_ = {"ldap://" + forged.Address() + "/" + kName};
  const StoreStatus status = Replace(store(), kName, "mail", {"m"});
  EXPECT_EQ(status.code, ldap::kLdapInvalidCredentials) << status.text;
  EXPECT_EQ(forged.requests(), 0);
  // Nor one that is named by what no ticket is given for.
  referral_ = {"ldap://127.0.0.1:" + writer_.Address().substr(writer_.Address().find(':') + 1)};
  EXPECT_EQ(Replace(store(), kName, "mail", {"m"}).code, ldap::kLdapLocalError);
  EXPECT_EQ(written().size(), 0U);
}

}  // namespace
}  // namespace pelora::lab
