// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/password/reset_password.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/ldap/ldap_status.h"
#include "hosts/session/password/password_bytes.h"
#include "hosts/session/password/password_rules.h"

namespace pelora::session {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kUser = "CN=Ada,DC=memory,DC=example";

/// Keeps the last request, which the one who sent it wipes.
class Keeper final : public ldap::IDirectoryStore {
 public:
  bool is_sealed = true;
  ldap::AttributeMap root{{"defaultNamingContext", {"DC=x"}}};
  ldap::AttributeMap user;
  ldap::AttributeMap domain;
  ldap::StoreStatus answer;
  ldap::AttributeMap sent;

  [[nodiscard]] const ldap::Schema& schema() const override { return schema_; }
  ldap::StoreStatus ReadRoot(ldap::Entry& entry) override {
    entry.attributes = root;
    return {};
  }
  ldap::StoreStatus Read(const std::string& dn, std::span<const std::string> /*attributes*/,
                         ldap::Entry& entry) override {
    entry = {.dn = dn, .attributes = dn == kUser ? user : domain};
    return {};
  }
  ldap::StoreStatus Search(const ldap::SearchRequest&, const ldap::EntrySink&) override {
    return {};
  }
  ldap::StoreStatus Modify(const std::string& /*dn*/,
                           std::span<const ldap::Modification> modifications) override {
    for (const ldap::Modification& change : modifications) sent[change.attribute] = change.values;
    return answer;
  }
  ldap::StoreStatus ModifyStrictly(const std::string&,
                                   std::span<const ldap::Modification>) override {
    return {ldap::kLdapUnwillingToPerform, "not so"};
  }
  ldap::StoreStatus Add(const ldap::Entry&) override { return {}; }
  ldap::StoreStatus Delete(const ldap::Entry&) override { return {}; }
  [[nodiscard]] bool IsSealed() const override { return is_sealed; }

 private:
  ldap::Schema schema_;
};

TEST(PasswordBytes, AreQuotedAndInUtf16LowestByteFirst) {
  EXPECT_EQ(PasswordBytes("aé"), std::string("\"\0a\0\xE9\0\"\0", 8));
  EXPECT_EQ(PasswordBytes("\xF0\x9F\x94\x91"), std::string("\"\0\x3D\xD8\x11\xDD\"\0", 8));
}

TEST(ResetPassword, IsOneRequestWithWhatTheUserHasToDo) {
  Keeper store;
  EXPECT_TRUE(ResetPassword(store, kUser, "Neu-1", true).Ok());
  EXPECT_THAT(store.sent["unicodePwd"], ElementsAre(PasswordBytes("Neu-1")));
  EXPECT_THAT(store.sent["pwdLastSet"], ElementsAre("0"));
  store.sent.clear();
  EXPECT_TRUE(ResetPassword(store, kUser, "Neu-1", false).Ok());
  EXPECT_EQ(store.sent.size(), 1U);
}

TEST(ResetPassword, SendsNothingThatOthersCouldRead) {
  Keeper store;
  store.is_sealed = false;
  const ldap::StoreStatus status = ResetPassword(store, kUser, "Neu-1", true);
  EXPECT_EQ(status.code, ldap::kLdapConfidentialityRequired);
  EXPECT_THAT(store.sent, IsEmpty());
  EXPECT_THAT(WhyNotReset(status), HasSubstr("sealed"));
  EXPECT_THAT(WhyNoPassword(store, 1), HasSubstr("sealed"));
  store.is_sealed = true;
  EXPECT_EQ(WhyNoPassword(store, 1), "");
  EXPECT_THAT(WhyNoPassword(store, 2), HasSubstr("one user at a time"));
}

TEST(ResetPassword, RefusalsAreToldInWords) {
  const auto told = [](int code, const std::string& text) { return WhyNotReset({code, text}); };
  EXPECT_THAT(told(19, "0000052D: Constraint violation"), HasSubstr("too short or too plain"));
  EXPECT_THAT(told(53, "0000052D: SvcErr: DSID-031A12D2"), HasSubstr("one that he had before"));
  EXPECT_THAT(told(50, "00000005: denied"), HasSubstr("no right"));
  EXPECT_THAT(told(32, "gone"), HasSubstr("deleted or moved"));
  EXPECT_THAT(told(-5, ""), HasSubstr("not known whether"));
  EXPECT_THAT(told(80, "00002077: something"), HasSubstr("It says: 00002077: something"));
}

TEST(PasswordRules, AreThoseOfTheDomain) {
  Keeper store;
  store.domain = {{"minPwdLength", {"7"}}, {"pwdProperties", {"17"}}};
  const PasswordRules rules = ReadPasswordRules(store, kUser);
  EXPECT_EQ(rules.least, 7U);
  EXPECT_TRUE(rules.is_mixed);
  EXPECT_THAT(TextOf(rules), HasSubstr("7 characters at least"));
  EXPECT_THAT(WhyNotFit(rules, "Ab1-56"), HasSubstr("too short"));
  EXPECT_EQ(WhyNotFit(rules, "Ab1-567"), "");
  EXPECT_THAT(WhyNotFit(rules, "abc-defg"), HasSubstr("too plain"));
  EXPECT_THAT(WhyNotFit(rules, "ABCdefgh"), HasSubstr("too plain"));
  EXPECT_EQ(WhyNotFit(rules, "ABCdefgh1"), "");
  EXPECT_EQ(WhyNotFit(rules, "ABCdefgh "), "");
  EXPECT_EQ(WhyNotFit(rules, "größere"), "") << "which letters count as what is not known here";
  EXPECT_THAT(WhyNotFit(rules, "größer"), HasSubstr("too short")) << "letters, not bytes";
}

TEST(PasswordRules, WhatTheDomainDoesNotAskForIsNotAskedFor) {
  Keeper store;
  store.domain = {{"minPwdLength", {"0"}}, {"pwdProperties", {"16"}}};
  EXPECT_EQ(TextOf(ReadPasswordRules(store, kUser)), "");
  EXPECT_EQ(WhyNotFit(ReadPasswordRules(store, kUser), "a"), "");
}

TEST(PasswordRules, AUsersOwnStandInTheDomainsPlace) {
  Keeper store;
  store.domain = {{"minPwdLength", {"30"}}, {"pwdProperties", {"1"}}};
  store.user = {{"msDS-ResultantPSO", {"CN=Admins,CN=Password Settings Container,DC=x"}}};
  const PasswordRules rules = ReadPasswordRules(store, kUser);
  EXPECT_THAT(TextOf(rules), HasSubstr("Rules of his own"));
  EXPECT_EQ(WhyNotFit(rules, "a"), "") << "the directory says what they are";
}

}  // namespace
}  // namespace pelora::session
