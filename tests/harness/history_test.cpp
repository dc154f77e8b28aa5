// SPDX-License-Identifier: Apache-2.0
// Whoever judges histories is judged himself: by histories of which it is known what is wrong.
#include "tests/harness/history.h"

#include <gmock/gmock.h>

namespace pelora::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using enum Answer;

Operation Replace(std::uint64_t begin, std::uint64_t end, Answer answer, const std::string& seen,
                  const std::string& wanted) {
  return {.begin = begin, .end = end, .answer = answer, .replacements = {{"a", seen, wanted}}};
}

Operation Change(Answer answer, const std::string& value, bool is_added) {
  return {.begin = 1, .end = 2, .answer = answer, .list_changes = {{"l", value, is_added}}};
}

/// "a" was 0, and is this now.
History Of(std::vector<Operation> operations, const std::string& after) {
  return {.before = {{"a", "0"}}, .operations = std::move(operations), .after = {{"a", after}}};
}

/// "l" had x, and has these now.
History OfList(std::vector<Operation> operations, std::set<std::string> after) {
  return {.lists_before = {{"l", {"x"}}},
          .operations = std::move(operations),
          .lists_after = {{"l", std::move(after)}}};
}

TEST(History, WhatCanBeExplainedHasNoFault) {
  EXPECT_THAT(FaultsOf(Of({}, "0")), IsEmpty());
  EXPECT_THAT(FaultsOf(Of({Replace(1, 4, kAccepted, "0", "1"), Replace(2, 3, kRefused, "0", "2"),
                           Replace(5, 6, kAccepted, "1", "3")},
                          "3")),
              IsEmpty());
  // In the order of their effects, not of their beginnings.
  EXPECT_THAT(
      FaultsOf(Of({Replace(1, 9, kAccepted, "2", "1"), Replace(2, 3, kAccepted, "0", "2")}, "1")),
      IsEmpty());
}

TEST(History, AnUnknownChangeMayHaveBeenDoneOrNot) {
  const auto unknown = Replace(1, 2, kUnknown, "0", "1");
  EXPECT_THAT(FaultsOf(Of({unknown}, "0")), IsEmpty());
  EXPECT_THAT(FaultsOf(Of({unknown}, "1")), IsEmpty());
  EXPECT_THAT(FaultsOf(Of({unknown, Replace(3, 4, kAccepted, "1", "2")}, "2")), IsEmpty());
  EXPECT_THAT(FaultsOf(Of({unknown, Replace(3, 4, kAccepted, "0", "2")}, "2")), IsEmpty());
  EXPECT_THAT(FaultsOf(OfList({Change(kUnknown, "y", true)}, {"x"})), IsEmpty());
  EXPECT_THAT(FaultsOf(OfList({Change(kUnknown, "y", true)}, {"x", "y"})), IsEmpty());
  EXPECT_THAT(FaultsOf(OfList({Change(kUnknown, "x", false)}, {})), IsEmpty());
}

TEST(History, AnAcceptedChangeThatIsLostIsAFault) {
  EXPECT_THAT(FaultsOf(Of({Replace(1, 2, kAccepted, "0", "1")}, "0")),
              ElementsAre(HasSubstr("no order")));
}

TEST(History, TwoThatReplacedTheSameValueAreAFault) {
  // The second has not seen what it replaced.
  EXPECT_THAT(
      FaultsOf(Of({Replace(1, 4, kAccepted, "0", "1"), Replace(2, 3, kAccepted, "0", "2")}, "2")),
      ElementsAre(HasSubstr("no order")));
}

TEST(History, ARefusedChangeThatWasDoneIsAFault) {
  EXPECT_THAT(FaultsOf(Of({Replace(1, 2, kRefused, "0", "1")}, "1")),
              ElementsAre(HasSubstr("no order")));
  EXPECT_THAT(
      FaultsOf(Of({Replace(1, 2, kRefused, "0", "1"), Replace(3, 4, kAccepted, "1", "2")}, "2")),
      ElementsAre(HasSubstr("no order")));
}

TEST(History, AValueOfNobodyIsAFault) {
  EXPECT_THAT(FaultsOf(Of({}, "7")), ElementsAre(HasSubstr("no order")));
  EXPECT_THAT(FaultsOf(OfList({}, {"x", "z"})), ElementsAre(HasSubstr("was refused, and came")));
}

TEST(History, AnEffectOutsideItsTimeIsAFault) {
  // The one that saw the other's value was over before that began.
  EXPECT_THAT(
      FaultsOf(Of({Replace(5, 6, kAccepted, "0", "1"), Replace(1, 2, kAccepted, "1", "2")}, "2")),
      ElementsAre(HasSubstr("after its change was over")));
}

TEST(History, ALostOrUninvitedValueOfAListIsAFault) {
  EXPECT_THAT(FaultsOf(OfList({Change(kAccepted, "y", true)}, {"x"})),
              ElementsAre(HasSubstr("y is lost")));
  EXPECT_THAT(FaultsOf(OfList({}, {})), ElementsAre(HasSubstr("x is lost")));
  EXPECT_THAT(FaultsOf(OfList({Change(kRefused, "y", true)}, {"x", "y"})),
              ElementsAre(HasSubstr("was refused, and came")));
  EXPECT_THAT(FaultsOf(OfList({Change(kAccepted, "x", false)}, {"x"})),
              ElementsAre(HasSubstr("was taken out, and is there")));
  EXPECT_THAT(FaultsOf(OfList({Change(kRefused, "x", false)}, {})),
              ElementsAre(HasSubstr("x is lost")));
}

TEST(History, AChangeThatWasHalfDoneIsAFault) {
  History history{.before = {{"a", "0"}, {"b", "0"}},
                  .operations = {{.begin = 1,
                                  .end = 2,
                                  .answer = kUnknown,
                                  .replacements = {{"a", "0", "1"}, {"b", "0", "2"}}}},
                  .after = {{"a", "1"}, {"b", "0"}}};
  EXPECT_THAT(FaultsOf(history), ElementsAre(HasSubstr("half done")));
  history.after = {{"a", "1"}, {"b", "2"}};
  EXPECT_THAT(FaultsOf(history), IsEmpty());
}

}  // namespace
}  // namespace pelora::testing
