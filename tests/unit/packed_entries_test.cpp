// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/packed_entries.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pelora::ldap {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

Entry Person(int number) {
  const std::string text = std::to_string(number);
  return {.dn = "CN=User " + text + ",OU=Sales,DC=x",
          .attributes = {{"name", {"User " + text}},
                         {"objectClass", {"top", "person", "user"}},
                         {"mail", {text + "@example.org"}}}};
}

std::vector<Entry> HandedOver(PackedEntries& packed) {
  std::vector<Entry> entries;
  EXPECT_TRUE(packed.HandOver([&](Entry entry) {
    entries.push_back(std::move(entry));
    return true;
  }));
  return entries;
}

TEST(PackedEntries, ComeBackAsTheyWereAndInTheirOrder) {
  std::vector<Entry> entries = {
      {.dn = "", .attributes = {}},
      {.dn = "CN=a", .attributes = {{"bytes", {std::string("\0\xFF\x80", 3), ""}}, {"none", {}}}},
      // Lengths of one byte, of two and of three, and more than a piece holds.
      {.dn = std::string(127, 'a'), .attributes = {{"size", {std::string(128, 'b')}}}},
      {.dn = std::string(300, 'c'), .attributes = {{"size", {std::string(1'000'000, 'd')}}}}};
  for (int number = 0; number < 300; ++number) {
    entries.push_back({.dn = "CN=b", .attributes = {{"a" + std::to_string(number), {"x"}}}});
  }
  PackedEntries packed;
  for (const Entry& entry : entries) packed.Add(entry);
  EXPECT_EQ(packed.Count(), entries.size());
  const std::vector<Entry> back = HandedOver(packed);
  ASSERT_EQ(back.size(), entries.size());
  for (std::size_t at = 0; at < entries.size(); ++at) {
    EXPECT_EQ(back[at].dn, entries[at].dn);
    EXPECT_EQ(back[at].attributes, entries[at].attributes);
  }
  EXPECT_EQ(packed.Count(), 0U);
  EXPECT_THAT(HandedOver(packed), IsEmpty());
}

TEST(PackedEntries, TakeLittleMoreThanTheirTextsAndLessAsTheyGo) {
  constexpr int kMany = 10'000;
  PackedEntries packed;
  std::size_t texts = 0;
  for (int number = 0; number < kMany; ++number) {
    const Entry entry = Person(number);
    texts += entry.dn.size();
    for (const auto& [attribute, values] : entry.attributes) {
      for (const std::string& value : values) texts += value.size();
    }
    packed.Add(entry);
  }
  EXPECT_LE(packed.Bytes(), texts + kMany * 16UL);
  const std::size_t all = packed.Bytes();
  int handed_over = 0;
  std::size_t left_in_the_middle = 0;
  packed.HandOver([&](const Entry& /*entry*/) {
    if (++handed_over == kMany / 2) left_in_the_middle = packed.Bytes();
    return true;
  });
  EXPECT_EQ(handed_over, kMany);
  EXPECT_LT(left_in_the_middle, all * 2 / 3);
  EXPECT_EQ(packed.Bytes(), 0U);
}

TEST(PackedEntries, EndWhenNoMoreIsWanted) {
  PackedEntries packed;
  for (int number = 0; number < 10; ++number) packed.Add(Person(number));
  std::vector<std::string> names;
  EXPECT_FALSE(packed.HandOver([&](const Entry& entry) {
    names.push_back(entry.dn);
    return names.size() < 2;
  }));
  EXPECT_THAT(names, ElementsAre("CN=User 0,OU=Sales,DC=x", "CN=User 1,OU=Sales,DC=x"));
  EXPECT_EQ(packed.Count(), 0U);
  EXPECT_EQ(packed.Bytes(), 0U);
}

}  // namespace
}  // namespace pelora::ldap
