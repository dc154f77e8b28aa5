// SPDX-License-Identifier: Apache-2.0
// Ready views, and views in files.
#include <gmock/gmock.h>

#include <fstream>

#include "hosts/session/check/check_rules.h"
#include "hosts/session/check/search_query.h"
#include "hosts/session/find/ready_views.h"
#include "hosts/session/find/view_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/unit/find/find_bench.h"

namespace pelora::session {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using std::chrono::day;
using std::chrono::month;
using std::chrono::year;
using std::chrono::year_month_day;

const year_month_day kToday{year(2026), month(3), day(3)};

class Views : public FindBench {};

TEST_F(Views, OfferColumnsAndFiltersThatThereAre) {
  const std::vector<ListColumn> all = AllColumns(catalogue());
  const auto is_column = [&all](const std::string& name) {
    return std::ranges::any_of(all, [&](const ListColumn& column) { return column.name == name; });
  };
  for (const ReadyView& ready : ReadyViews()) {
    const std::string answer =
        ready.question == ViewQuestion::kServer ? "mail01" : PresetAnswer(ready.question, kToday);
    const AnsweredView answered = Answer(ready, answer);
    EXPECT_EQ(answered.error, "") << ready.name;
    if (!ready.filter.empty()) {
      EXPECT_TRUE(IsSearchQuery(answered.view.filter)) << ready.name;
    }
    for (const std::string& name : answered.view.columns) EXPECT_TRUE(is_column(name)) << name;
  }
  EXPECT_THAT(CheckViews(), SizeIs(CheckRules().size()));
  for (const View& view : CheckViews()) {
    for (const std::string& name : view.columns) EXPECT_TRUE(is_column(name)) << name;
  }
}

const ReadyView& With(ViewQuestion question) {
  return *std::ranges::find(ReadyViews(), question, &ReadyView::question);
}

TEST(AnswersToViews, AreEscapedAndJudged) {
  EXPECT_THAT(Answer(With(ViewQuestion::kServer), " a)(b=* ").view.filter,
              HasSubstr("(peloraUserServer=a\\29\\28b=\\2a)"));
  EXPECT_THAT(Answer(With(ViewQuestion::kMegabytes), "500").view.filter,
              HasSubstr("(peloraQuotaHard>=501)"));
  EXPECT_THAT(Answer(With(ViewQuestion::kDate), "2024-02-29").view.filter,
              HasSubstr("(whenChanged>=20240229000000.0Z)"));
  for (const char* wrong : {"", "x", "-1", "5 00", "2147483647", "99999999999999999999"}) {
    EXPECT_NE(Answer(With(ViewQuestion::kMegabytes), wrong).error, "") << wrong;
  }
  for (const char* wrong :
       {"", "2023-02-29", "2024-2-9", "22.11.2026", "2026-13-01", "20x6-01-01"}) {
    EXPECT_NE(Answer(With(ViewQuestion::kDate), wrong).error, "") << wrong;
  }
  EXPECT_NE(Answer(With(ViewQuestion::kServer), " ").error, "");
  EXPECT_EQ(PresetAnswer(ViewQuestion::kDate, kToday), "2026-02-24");
}

const View kSales{.name = "Sales \"Ä\"",
                  .base = "OU=Sales\\, east,DC=example,DC=org",
                  .below = false,
                  .filter = "(&(mail=*)(cn=\\28x\\29))",
                  .columns = {"name", "mail"}};
const View kDuplicates{
    .name = "Twice", .rule = "address-duplicate", .columns = {"name", "problem"}};

TEST(ViewsInFiles, ComeBackAsTheyWere) {
  pelora::testing::TemporaryFolder folder;
  const std::string path = folder.File("views.json");
  EXPECT_EQ(SaveViews(path, {kSales, kDuplicates}), "");
  const ReadViews read = LoadViews(path);
  EXPECT_EQ(read.error, "");
  EXPECT_THAT(read.views, ElementsAre(kSales, kDuplicates));
  EXPECT_EQ(SaveViews(path, {}), "");
  EXPECT_THAT(LoadViews(path).views, IsEmpty());
  EXPECT_THAT(SaveViews(folder.File("no/such/folder.json"), {kSales}),
              HasSubstr("cannot be written"));
  EXPECT_THAT(LoadViews(folder.File("none.json")).error, HasSubstr("there is no such file"));
}

std::string Holding(const std::string& views) {
  return R"({"format": "pelora-views", "version": 1, "views": [)" + views + "]}";
}

TEST(ViewsInFiles, MayLackWhatIsNotNeeded) {
  const ReadViews read = ViewsOfText(Holding(R"({"name": "x", "unknown": [1, {}], "base": null})"));
  EXPECT_EQ(read.error, "");
  EXPECT_THAT(read.views, ElementsAre(View{.name = "x"}));
}

TEST(ViewsInFiles, AreRefusedWhole) {
  struct Case {
    std::string text;
    std::string error;
  };
  const std::string good = R"({"name": "good"},)";
  std::string many;
  for (int at = 0; at <= 500; ++at) {
    many += (at == 0 ? "" : ",") + std::string(R"({"name": "v)") + std::to_string(at) + "\"}";
  }
  for (const Case& wrong : std::initializer_list<Case>{
           {"", "no JSON"},
           {"[]", "holds no views"},
           {"{}", "holds no views"},
           {std::string(1 << 20, ' ') + "{}", "larger than a megabyte"},
           {std::string(500'000, '['), "no JSON"},
           {R"({"format": "pelora-views", "version": 2, "views": []})", "not known"},
           {R"({"format": "pelora-views", "version": 1, "views": {}})", "holds no views"},
           {Holding(good + "7"), "view 2: is no object"},
           {Holding(good + "{}"), "view 2: has no name"},
           {Holding(good + R"({"name": "GOOD"})"), "another one is called"},
           {Holding(R"({"name": 7})"), "name is no text"},
           {Holding(R"({"name": "a\nb"})"), "control characters"},
           {Holding(R"({"name": "a\u202eb"})"), "control characters"},
           {Holding("{\"name\": \"" + std::string(201, 'x') + "\"}"), "too long"},
           {Holding(R"({"name": "x", "below": 1})"), "neither true nor false"},
           {Holding(R"({"name": "x", "filter": "(cn=x"})"), "a closing parenthesis is missing"},
           {Holding(R"({"name": "x", "filter": ")" + std::string(10'001, 'x') + "\"}"), "too long"},
           {Holding(R"({"name": "x", "rule": "no-rule"})"), "there is no rule"},
           {Holding(R"({"name": "x", "columns": "name"})"), "columns is no list"},
           {Holding(R"({"name": "x", "columns": [1]})"), "columns is no text"},
           {Holding(many), "more than 500"}}) {
    const ReadViews read = ViewsOfText(wrong.text);
    EXPECT_THAT(read.error, HasSubstr(wrong.error)) << wrong.text.substr(0, 80);
    EXPECT_THAT(read.views, IsEmpty());
  }
}

}  // namespace
}  // namespace pelora::session
