// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/entries_ahead.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pelora::ldap {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Names = std::vector<std::string>;

class EntriesAheadTest : public ::testing::Test {
 protected:
  void Read(const StoreStatus& status = {}) {
    ahead_.Read([&](std::span<const std::string> dns, std::span<const std::string> attributes,
                    std::vector<ReadRecord>& read) {
      ++readings_;
      EXPECT_THAT(Names(attributes.begin(), attributes.end()), ElementsAre("mail"));
      for (const std::string& dn : dns) {
        read.push_back({.status = {0, dn}, .record = {}});
      }
      return status;
    });
  }
  Names Taken(const Names& dns, const Names& attributes = {"mail"}) {
    Names names;
    for (const ReadRecord& one : ahead_.Take(dns, attributes)) names.push_back(one.status.text);
    return names;
  }

  EntriesAhead ahead_;
  int readings_ = 0;
  const Names expected_ = {"CN=a", "CN=b"};
  const Names attributes_ = {"mail"};
};

TEST_F(EntriesAheadTest, GivesOnceWhatWasExpectedAndRead) {
  ahead_.Expect(expected_, attributes_);
  Read();
  Read();
  EXPECT_EQ(readings_, 1);
  EXPECT_THAT(Taken(expected_), ElementsAre("CN=a", "CN=b"));
  EXPECT_THAT(Taken(expected_), IsEmpty());
  Read();
  EXPECT_EQ(readings_, 1);
}

TEST_F(EntriesAheadTest, GivesNothingElseAndKeepsWhatIsExpected) {
  ahead_.Expect(expected_, attributes_);
  // Before it is read, and after.
  for (int time = 0; time < 2; ++time) {
    for (const Names& others : {Names{"CN=a"}, Names{"CN=b", "CN=a"}, Names()}) {
      EXPECT_THAT(Taken(others), IsEmpty());
    }
    EXPECT_THAT(Taken(expected_, {"mail", "cn"}), IsEmpty());
    Read();
  }
  EXPECT_EQ(readings_, 1);
  EXPECT_THAT(Taken(expected_), ElementsAre("CN=a", "CN=b"));
}

TEST_F(EntriesAheadTest, GivesNothingOfAReadingThatFailed) {
  ahead_.Expect(expected_, attributes_);
  Read({1, "the file is gone"});
  EXPECT_THAT(Taken(expected_), IsEmpty());
}

TEST_F(EntriesAheadTest, ReadsNothingThatIsNotExpectedAnyMore) {
  ahead_.Expect(expected_, attributes_);
  ahead_.Clear();
  Read();
  EXPECT_EQ(readings_, 0);
  EXPECT_THAT(Taken(expected_), IsEmpty());
}

}  // namespace
}  // namespace pelora::ldap
