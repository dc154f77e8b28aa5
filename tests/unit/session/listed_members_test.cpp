// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/own_pages/listed_members.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/ldap/forwarding_store.h"
#include "tests/support/memory_store.h"

namespace pelora::session {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kBase = pelora::testing::MemoryStore::kBase;
const std::string kAda = "CN=Ada," + kBase;
const std::string kSales = "CN=Sales," + kBase;
const std::string kEverybody = "CN=Everybody," + kBase;
constexpr const char* kEverybodyNumber = "513";

/// Of a domain, an identifier that ends with an object's number (lowest byte first).
std::string Sid(char low, char high) {
  return {'\x01', '\x02', 0, 0, 0, 0, 0, '\x05', '\x15', 0, 0, 0, low, high, 0, 0};
}

/// A domain in which Ada is in a group, and in her primary one, which lists her besides.
class Domain final : public ldap::ForwardingStore {
 public:
  Domain() : ForwardingStore(memory_) {
    memory_.Place({.dn = kAda,
                   .attributes = {{"primaryGroupID", {kEverybodyNumber}},
                                  {"objectSid", {Sid('\x51', '\x04')}}}});
    memory_.Place(
        {.dn = kSales, .attributes = {{"member", {kAda}}, {"objectSid", {Sid('\x07', '\x08')}}}});
    memory_.Place({.dn = kEverybody,
                   .attributes = {{"member", {kAda}}, {"objectSid", {Sid('\x01', '\x02')}}}});
  }

  /// Objects that a filter finds.
  std::map<std::string, std::vector<std::string>> found{
      {"(&(objectClass=group)(member=" + kAda + "))", {kSales, kEverybody}},
      {R"((objectSid=\01\02\00\00\00\00\00\05\15\00\00\00\01\02\00\00))", {kEverybody}},
      {"(primaryGroupID=513)", {kAda}}};
  ldap::StoreStatus failure{};

  ldap::StoreStatus Search(const ldap::SearchRequest& request,
                           const ldap::EntrySink& sink) override {
    EXPECT_EQ(request.base, kBase);
    if (!failure.Ok()) return failure;
    for (const std::string& dn : found[request.filter]) {
      if (!sink({.dn = dn, .attributes = {}})) break;
    }
    return {};
  }

 private:
  pelora::testing::MemoryStore memory_;
};

TEST(ListedMembers, ThePrimaryGroupIsNoRowButNamedBelow) {
  Domain domain;
  const ListedMembers listed = ReadGroupsOf(domain, kAda);
  EXPECT_THAT(listed.names, ElementsAre(kSales));
  EXPECT_EQ(listed.note, "The primary group is Everybody. It cannot be left here.");
}

TEST(ListedMembers, WithoutAPrimaryGroupEveryGroupIsARow) {
  Domain domain;
  domain.found.erase(R"((objectSid=\01\02\00\00\00\00\00\05\15\00\00\00\01\02\00\00))");
  const ListedMembers listed = ReadGroupsOf(domain, kAda);
  EXPECT_THAT(listed.names, ElementsAre(kSales, kEverybody));
  EXPECT_EQ(listed.note, "");
}

TEST(ListedMembers, SomebodysPrimaryGroupSaysThatItDoesNotListThemAll) {
  Domain domain;
  const ListedMembers everybody = ReadMembersOf(domain, kEverybody);
  EXPECT_THAT(everybody.names, ElementsAre(kAda));
  EXPECT_EQ(everybody.note,
            "Whoever has this for the primary group is in it too, and is not listed here.");
  EXPECT_EQ(ReadMembersOf(domain, kSales).note, "");
}

TEST(ListedMembers, WhatCannotBeReadIsAFailureAndNoEmptyList) {
  Domain domain;
  EXPECT_FALSE(ReadMembersOf(domain, "CN=Nobody," + kBase).status.Ok());
  domain.failure = {52, "not now"};
  const ListedMembers listed = ReadGroupsOf(domain, kAda);
  EXPECT_EQ(listed.status.text, "not now");
  EXPECT_THAT(listed.names, IsEmpty());
}

}  // namespace
}  // namespace pelora::session
