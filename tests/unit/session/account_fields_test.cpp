// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/own_pages/account_fields.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <map>
#include <string>

#include "hosts/changes/change.h"
#include "hosts/session/own_pages/account_time.h"
#include "hosts/session/own_pages/own_field.h"

namespace pelora::session {
namespace {

using ldap::AttributeValues;
using ::testing::ElementsAre;
using ::testing::Optional;

/// A clock of a zone of the test's own.
class Zone {
 public:
  explicit Zone(const char* name) {
    if (const char* const before = std::getenv("TZ")) before_ = before;
    Set(name);
  }
  ~Zone() {
    if (before_) {
      Set(before_->c_str());
    } else {
      unsetenv("TZ");
      tzset();
    }
  }
  Zone(const Zone&) = delete;
  Zone& operator=(const Zone&) = delete;

 private:
  static void Set(const char* name) {
    setenv("TZ", name, 1);
    tzset();
  }

  std::optional<std::string> before_;
};

const OwnField& FieldOf(std::string_view name) {
  const auto fields = AccountFields();
  return *std::ranges::find_if(fields, [name](const OwnField& field) {
    return field.name == name || (field.name.empty() && field.attribute == name);
  });
}

using Object = std::map<std::string, AttributeValues, std::less<>>;

std::string Shown(std::string_view name, const Object& object) {
  const OwnField& field = FieldOf(name);
  return field.form->shown(field.attribute, [&object](std::string_view attribute) {
    const auto found = object.find(attribute);
    return found == object.end() ? AttributeValues() : found->second;
  });
}

std::optional<AttributeValues> Stored(std::string_view name, const std::string& shown,
                                      const AttributeValues& now) {
  return FieldOf(name).form->stored(shown, now);
}

TEST(AccountTime, ADayIsOverAtItsMidnightByTheClockHere) {
  const Zone zone("UTC");
  // 2027-01-01 00:00 in Greenwich, in 100 nanoseconds since 1601.
  constexpr std::int64_t kEnd = 134432352000000000;
  EXPECT_THAT(EndOfLastDay("2026-12-31"), Optional(kEnd));
  EXPECT_EQ(LastDayText(kEnd), "2026-12-31");
  const Zone another("EST5");
  EXPECT_EQ(LastDayText(kEnd), "2026-12-31 19:00") << "in the midst of a day";
  EXPECT_THAT(EndOfLastDay("2026-12-31 19:00"), Optional(kEnd));
}

TEST(AccountTime, EveryDayComesBackWhateverTheClockIsTurned) {
  for (const char* const name : {"UTC", "CET-1CEST,M3.5.0,M10.5.0/3", "<+0845>-8:45"}) {
    const Zone zone(name);
    for (const char* const day : {"2026-03-28", "2026-03-29", "2026-10-25", "2028-02-29"}) {
      EXPECT_EQ(LastDayText(EndOfLastDay(day).value()), day) << name;
    }
  }
}

TEST(AccountTime, NeverIsWrittenInTwoWaysAndShownInNone) {
  EXPECT_EQ(LastDayText(0), "");
  EXPECT_EQ(LastDayText(kNeverEnds), "");
  EXPECT_THAT(EndOfLastDay(" "), Optional(kNeverEnds));
  EXPECT_EQ(Stored("accountExpires", "", {"0"}), std::nullopt) << "it never ends as it is";
  EXPECT_THAT(Stored("accountExpires", "", {"134432352000000000"}),
              Optional(ElementsAre("9223372036854775807")));
}

TEST(AccountTime, WhatIsNoDayIsNone) {
  for (const char* const text :
       {"2026", "2026-13-01", "2026-02-29", "2026-00-10", "26-01-01", "2026-1-1", "2026-01-01 ",
        "-026-01-01", "2026-01-01x", "2026-01-01 24:00", "2026-01-01 7:00", "morgen"}) {
    const bool is_day = std::string_view(text) == "2026-01-01 ";
    EXPECT_EQ(EndOfLastDay(text).has_value(), is_day) << text;
  }
}

TEST(AccountFields, EachBoxIsABitOfItsOwn) {
  EXPECT_EQ(Shown("account.enabled", {{"userAccountControl", {"512"}}}), "1");
  EXPECT_EQ(Shown("account.enabled", {{"userAccountControl", {"66050"}}}), "0");
  EXPECT_EQ(Shown("password.never-expires", {{"userAccountControl", {"66050"}}}), "1");
  EXPECT_THAT(Stored("account.enabled", "0", {"66048"}), Optional(ElementsAre("66050")));
  EXPECT_THAT(Stored("account.enabled", "1", {"66050"}), Optional(ElementsAre("66048")));
  EXPECT_THAT(Stored("password.never-expires", "0", {"66050"}), Optional(ElementsAre("514")));
  EXPECT_EQ(Stored("account.enabled", "1", {}), std::nullopt) << "there is no account";
}

TEST(AccountFields, ALockThatIsOverIsNone) {
  const AttributeValues since = {"134432352000000000"};
  EXPECT_EQ(Shown("account.locked", {}), "0");
  EXPECT_EQ(Shown("account.locked", {{"lockoutTime", {"0"}}}), "0");
  EXPECT_EQ(Shown("account.locked", {{"lockoutTime", since}}), "1");
  EXPECT_EQ(Shown("account.locked",
                  {{"lockoutTime", since}, {"msDS-User-Account-Control-Computed", {"0"}}}),
            "0");
  EXPECT_EQ(Shown("account.locked",
                  {{"lockoutTime", since}, {"msDS-User-Account-Control-Computed", {"16"}}}),
            "1");
  EXPECT_THAT(Stored("account.locked", "0", since), Optional(ElementsAre("0")));
  EXPECT_EQ(Stored("account.locked", "0", {}), std::nullopt);
  EXPECT_EQ(Stored("account.locked", "1", {"0"}), std::nullopt);
  EXPECT_NE(FieldOf("account.locked").form->why_not("1"), "");
}

TEST(AccountFields, APasswordThatIsToBeChangedHasNoTime) {
  EXPECT_EQ(Shown("password.must-change", {}), "0") << "nothing is known of it";
  EXPECT_EQ(Shown("password.must-change", {{"pwdLastSet", {"0"}}}), "1");
  EXPECT_EQ(Shown("password.must-change", {{"pwdLastSet", {"134432352000000000"}}}), "0");
  EXPECT_THAT(Stored("password.must-change", "1", {"134432352000000000"}),
              Optional(ElementsAre("0")));
  EXPECT_THAT(Stored("password.must-change", "0", {"0"}), Optional(ElementsAre("-1")));
  EXPECT_EQ(Stored("password.must-change", "1", {"0"}), std::nullopt);
}

TEST(AccountFields, WhatTheDirectoryAloneSetsIsNotTakenBack) {
  const changes::Change unlock{
      .dn = "CN=Ada",
      .attributes = {
          {.attribute = "lockoutTime", .seen = {"134432352000000000"}, .wanted = {"0"}}}};
  EXPECT_FALSE(changes::CanBeTakenBack(unlock));
  EXPECT_TRUE(changes::UndoOf(unlock).attributes.empty());
  const changes::Change must_change{
      .dn = "CN=Ada",
      .attributes = {{.attribute = "pwdLastSet", .seen = {"134432352000000000"}, .wanted = {"0"}}}};
  ASSERT_EQ(changes::UndoOf(must_change).attributes.size(), 1U);
  EXPECT_THAT(changes::UndoOf(must_change).attributes.front().wanted, ElementsAre("-1"));
  EXPECT_FALSE(changes::CanBeTakenBack(changes::UndoOf(must_change)));
}

}  // namespace
}  // namespace pelora::session
