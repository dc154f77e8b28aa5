// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "hosts/ctl/fields/address_list.h"
#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/results/json_line.h"
#include "hosts/ctl/results/result_text.h"
#include "hosts/ctl/text/assignment.h"
#include "hosts/session/visible_text.h"

namespace pelora::ctl {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ListText, ValuesAreDividedUnlessEscaped) {
  EXPECT_THAT(SplitList(""), IsEmpty());
  EXPECT_THAT(SplitList("a;b"), ElementsAre("a", "b"));
  EXPECT_THAT(SplitList(R"(a\;b;c\\;d\e)"), ElementsAre("a;b", R"(c\)", R"(d\e)"));
  EXPECT_THAT(SplitList(";"), ElementsAre("", ""));
  EXPECT_THAT(SplitList(R"(a\)"), ElementsAre(R"(a\)"));
  const std::vector<std::string> odd = {R"(\)", ";", R"(\;)", "plain"};
  EXPECT_EQ(SplitList(JoinList(odd)), odd);
}

TEST(Assignments, FieldOperationAndValueAreTakenApart) {
  const auto set = ParseAssignment("a=b=c");
  EXPECT_EQ(set->field, "a");
  EXPECT_EQ(set->value, "b=c");
  EXPECT_EQ(ParseAssignment("a+=b")->operation, Assignment::Operation::kAdd);
  EXPECT_EQ(ParseAssignment("a-=")->operation, Assignment::Operation::kRemove);
  EXPECT_FALSE(ParseAssignment("a"));
}

TEST(Assignments, DistinguishedNamesAreObjects) {
  const auto sorted = SortArguments({"cn=a,dc=b", "OU=x", "Dc=y", "mail=a", "ada"});
  EXPECT_THAT(sorted.objects, ElementsAre("cn=a,dc=b", "OU=x", "Dc=y", "ada"));
  EXPECT_EQ(sorted.assignments.size(), 1U);
}

TEST(VisibleTexts, ControlCharactersAreShown) {
  EXPECT_EQ(session::VisibleText("a\x1B[2Jb\x7F"), "a\\x1B[2Jb\\x7F");
  EXPECT_EQ(session::VisibleText("\xC2\x9B"
                                 "1m"),
            "\\xC2\\x9B1m");
  EXPECT_EQ(session::VisibleText("\xFF"
                                 "é"),
            "\\xFFé");
  EXPECT_EQ(session::VisibleText("a\tb\n", "\t"), "a\tb\\x0A");
  // What turns the direction of text around, and its neighbours that do not.
  EXPECT_EQ(session::VisibleText("a\u202Etxt\u2066\u2069\u200E\u061C"),
            "a\\xE2\\x80\\xAEtxt\\xE2\\x81\\xA6\\xE2\\x81\\xA9\\xE2\\x80\\x8E\\xD8\\x9C");
  EXPECT_EQ(session::VisibleText("\u200D\u2029\u202F\u2065\u206A\u00A0\U0001F600"),
            "\u200D\u2029\u202F\u2065\u206A\u00A0\U0001F600");
  EXPECT_EQ(session::OnOneLine("a\r\nb\tc\nd"), "a b c d");
  EXPECT_EQ(session::NameOnOneLine("CN=a\nb\x1B,DC=c"), "CN=a\\0Ab\x1B,DC=c");
}

TEST(JsonLines, AreSafeForATerminal) {
  EXPECT_EQ(JsonLine(Json("a\x1B\x7F\xC2\x9B")), "\"a\\u001b\\u007f\\u009b\"");
  EXPECT_EQ(JsonLine(Json("a\u202Eé\U0001F600")), "\"a\\u202eé\U0001F600\"");
  EXPECT_EQ(Json::parse(JsonLine(Json("a\x7F\xC2\x9B"))).get<std::string>(), "a\x7F\xC2\x9B");
}

TEST(Reports, DoneObjectsAreTakenAndACutLineIsPassedOver) {
  const std::string report =
      "{\"result\":\"changed\",\"dn\":\"CN=a\"}\n{\"result\":\"failed\",\"dn\":\"CN=b\"}\n"
      "{\"result\":\"unchanged\",\"dn\":\"CN=c\"}\n{\"resu";
  EXPECT_THAT(DoneObjects(report, "report"), ElementsAre("CN=a", "CN=c"));
  const std::string rehearsed =
      "{\"result\":\"changed\",\"dn\":\"CN=a\",\"dryRun\":true}\n"
      "{\"result\":\"unchanged\",\"dn\":\"CN=c\",\"dryRun\":true}\n"
      "{\"result\":\"changed\",\"dn\":\"CN=d\",\"dryRun\":\"odd\"}\n";
  EXPECT_THAT(DoneObjects(rehearsed, "report"), ElementsAre("CN=c", "CN=d"));
}

/// The steps of a list, as "+value", "-value" and "*value".
std::vector<std::string> Steps(AddressList& list) {
  std::vector<std::string> steps;
  for (const ListStep& step : list.TakeSteps()) {
    steps.push_back("+-*"[static_cast<std::size_t>(step.action)] + step.value);
  }
  return steps;
}

TEST(AddressLists, StepsAreThoseThatChangeSomething) {
  using enum Assignment::Operation;
  const std::vector<std::string> values = {"A@x", "n@x"};
  AddressList set("a@x", {"b@x", "c@x"});
  set.Change(kSet, values);
  EXPECT_THAT(Steps(set), ElementsAre("-b@x", "-c@x", "+n@x"));
  AddressList made("a@x", {"b@x"});
  made.MakeDefault("B@x");
  made.MakeDefault("b@x");
  EXPECT_THAT(Steps(made), ElementsAre("*b@x"));
  AddressList none("", {});
  none.MakeDefault("a@x");
  EXPECT_THAT(Steps(none), ElementsAre("+a@x"));
  AddressList removed("a@x", {});
  removed.Change(kRemove, values);
  EXPECT_THAT(Steps(removed), ElementsAre("-a@x"));
}

}  // namespace
}  // namespace pelora::ctl
