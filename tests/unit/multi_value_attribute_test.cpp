// SPDX-License-Identifier: Apache-2.0
#include "directory/multi_value_attribute.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "hosts/headless/headless_list_box.h"
#include "hosts/headless/headless_text_service.h"
#include "tests/support/variant_text.h"

namespace pelora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr bool kChanged = true;
constexpr bool kDefault = true;

/// A sorted list box that takes only so many rows.
class LimitedListBox final : public IListBox {
 public:
  std::optional<RowIndex> Add(std::string_view text) override {
    if (rows_.Count() >= limit_) return std::nullopt;
    return rows_.Add(text);
  }
  bool Remove(RowIndex row) override { return !keeps_rows_ && rows_.Remove(row); }
  void Clear() override { rows_.Clear(); }
  RowIndex Count() const override { return rows_.Count(); }
  std::string Text(RowIndex row) const override { return rows_.Text(row); }
  void* Data(RowIndex row) const override { return rows_.Data(row); }
  void SetData(RowIndex row, void* data) override { rows_.SetData(row, data); }
  std::optional<RowIndex> Selection() const override { return rows_.Selection(); }
  void Select(std::optional<RowIndex> row) override { rows_.Select(row); }
  void SetTabStops(std::span<const int> stops) override { rows_.SetTabStops(stops); }

  void set_limit(RowIndex limit) { limit_ = limit; }
  /// No row can be removed any more.
  void KeepRows() { keeps_rows_ = true; }

 private:
  bool keeps_rows_ = false;
  HeadlessListBox rows_{true};
  RowIndex limit_ = 1000;
};

/// What `BuildValue` gave.
struct Built {
  bool changed = false;
  std::string value = "untouched";
  std::string default_value = "untouched";
};

class MultiValueAttributeTest : public ::testing::Test {
 protected:
  std::vector<std::string> Rows() const {
    std::vector<std::string> rows;
    for (RowIndex row = 0; row < list_.Count(); ++row) rows.push_back(list_.Text(row));
    return rows;
  }
  /// Selects the first row of that text.
  void Select(const std::string& text) {
    const std::vector<std::string> rows = Rows();
    list_.Select(static_cast<RowIndex>(std::ranges::find(rows, text) - rows.begin()));
    ASSERT_TRUE(list_.Selection()) << text;
  }
  /// The selected row's text; empty when none is selected.
  std::string Selected() const {
    return list_.Selection() ? list_.Text(*list_.Selection()) : std::string();
  }
  void Load(const std::vector<std::string>& values) {
    for (const std::string& value : values) EXPECT_EQ(attribute_.Load(list_, {.text = value}), 0);
  }
  void Delete(const std::string& text) {
    Select(text);
    EXPECT_EQ(attribute_.Delete(list_), 0);
  }
  void SetDefault(const std::string& text) {
    Select(text);
    EXPECT_EQ(attribute_.SetDefault(list_), 0);
  }
  Built Build() const {
    Variant value = Variant::String("untouched");
    Built built;
    built.changed = attribute_.BuildValue(&value, &built.default_value);
    built.value = ToText(value);
    return built;
  }
  void ExpectBuilt(const std::string& value, const std::string& default_value) const {
    const Built built = Build();
    EXPECT_TRUE(built.changed);
    EXPECT_EQ(built.value, value);
    EXPECT_EQ(built.default_value, default_value);
  }
  void ExpectUnchanged() const {
    const Built built = Build();
    EXPECT_FALSE(built.changed);
    EXPECT_EQ(built.value, "\"untouched\"");
    EXPECT_EQ(built.default_value, "untouched");
  }

  HeadlessTextService text_;
  MultiValueAttribute attribute_{text_};
  LimitedListBox list_;
};

TEST_F(MultiValueAttributeTest, LoadedValuesStandSortedAndAreNoChange) {
  Load({"zoe@x", "ada@x"});
  EXPECT_THAT(Rows(), ElementsAre("ada@x", "zoe@x"));
  ExpectUnchanged();
}

TEST_F(MultiValueAttributeTest, ValuesAreWrittenInTheOrderInWhichTheyWereAdded) {
  Load({"zoe@x", "bob@x"});
  EXPECT_EQ(attribute_.Add(list_, "ada@x", kChanged, !kDefault), 0);
  EXPECT_THAT(Rows(), ElementsAre("ada@x", "bob@x", "zoe@x"));
  ExpectBuilt(R"(["zoe@x", "bob@x", "ada@x"])", "untouched");
}

TEST_F(MultiValueAttributeTest, TheSameValueTwiceIsShownAndWrittenTwice) {
  attribute_.Add(list_, "ada@x", kChanged, !kDefault);
  attribute_.Add(list_, "ada@x", kChanged, !kDefault);
  EXPECT_THAT(Rows(), ElementsAre("ada@x", "ada@x"));
  ExpectBuilt(R"(["ada@x", "ada@x"])", "untouched");
}

TEST_F(MultiValueAttributeTest, AnAddedValueThatIsNotMarkedChangedIsNoChange) {
  attribute_.Add(list_, "ada@x", !kChanged, kDefault);
  ExpectUnchanged();
}

TEST_F(MultiValueAttributeTest, TheDefaultIsShownInCapitalsAndStoredAsItIs) {
  attribute_.Add(list_, "Ada@x", kChanged, kDefault);
  EXPECT_THAT(Rows(), ElementsAre("ADA@X"));
  ExpectBuilt("[]", "Ada@x");
}

TEST_F(MultiValueAttributeTest, CapitalsAreThoseOfEveryScript) {
  attribute_.Add(list_, "jürgen@грамота", kChanged, kDefault);
  EXPECT_THAT(Rows(), ElementsAre("JÜRGEN@ГРАМОТА"));
  ExpectBuilt("[]", "jürgen@грамота");
}

TEST_F(MultiValueAttributeTest, ARefusedRowLeavesTheRecordBehind) {
  list_.set_limit(1);
  EXPECT_EQ(attribute_.Load(list_, {.text = "ada@x"}), 0);
  EXPECT_EQ(attribute_.Load(list_, {.text = "bob@x"}), 1);
  EXPECT_EQ(attribute_.Add(list_, "zoe@x", kChanged, !kDefault), 0);
  EXPECT_THAT(Rows(), ElementsAre("ada@x"));
  ExpectBuilt(R"(["ada@x", "bob@x", "zoe@x"])", "untouched");
}

TEST_F(MultiValueAttributeTest, RefreshShowsWhatIsNotDeleted) {
  Load({"ada@x", "bob@x", "zoe@x"});
  Delete("bob@x");
  list_.Add("a row of somebody else");
  EXPECT_EQ(attribute_.Refresh(list_), 0);
  EXPECT_THAT(Rows(), ElementsAre("ada@x", "zoe@x"));
  Select("zoe@x");
  EXPECT_EQ(*MultiValueAttribute::SelectedValue(list_), "zoe@x");
}

TEST_F(MultiValueAttributeTest, ModifyingTakesTheRowToItsNewPlace) {
  Load({"ada@x", "bob@x"});
  Select("ada@x");
  EXPECT_EQ(attribute_.Modify(list_, "zoe@x"), 0);
  EXPECT_THAT(Rows(), ElementsAre("bob@x", "zoe@x"));
  EXPECT_EQ(Selected(), "") << "its row is another one";
  ExpectBuilt(R"(["zoe@x", "bob@x"])", "untouched");
}

TEST_F(MultiValueAttributeTest, ModifyingToAnotherLetterCaseIsAChange) {
  Load({"ada@x"});
  Select("ada@x");
  EXPECT_EQ(attribute_.Modify(list_, "Ada@x"), 0);
  EXPECT_THAT(Rows(), ElementsAre("Ada@x"));
  ExpectBuilt(R"(["Ada@x"])", "untouched");
}

TEST_F(MultiValueAttributeTest, ModifyingToTheSameTextIsNoChange) {
  Load({"ada@x"});
  Select("ada@x");
  EXPECT_EQ(attribute_.Modify(list_, "ada@x"), 0);
  EXPECT_EQ(Selected(), "ada@x");
  ExpectUnchanged();
}

TEST_F(MultiValueAttributeTest, AModifiedDefaultStaysInCapitalsAndIsReported) {
  attribute_.Add(list_, "ada@x", !kChanged, kDefault);
  Load({"bob@x"});
  Select("ADA@X");
  EXPECT_EQ(attribute_.Modify(list_, "Zoe@x"), 0);
  EXPECT_THAT(Rows(), ElementsAre("bob@x", "ZOE@X"));
  ExpectBuilt(R"(["bob@x"])", "Zoe@x");
}

TEST_F(MultiValueAttributeTest, ModifyingNeedsASelectedRecord) {
  Load({"ada@x"});
  EXPECT_EQ(attribute_.Modify(list_, "zoe@x"), 1);
  list_.Add("a row of somebody else");
  Select("a row of somebody else");
  EXPECT_EQ(attribute_.Modify(list_, "zoe@x"), 1);
  ExpectUnchanged();
}

TEST_F(MultiValueAttributeTest, AnotherDefaultTakesTheMarkFromTheFirst) {
  attribute_.Add(list_, "ada@x", !kChanged, kDefault);
  Load({"Bob@x"});
  SetDefault("Bob@x");
  EXPECT_THAT(Rows(), ElementsAre("ada@x", "BOB@X"));
  EXPECT_EQ(Selected(), "") << "all rows are new";
  ExpectBuilt(R"(["ada@x"])", "Bob@x");
}

TEST_F(MultiValueAttributeTest, TheDefaultAsDefaultAgainIsNoChange) {
  attribute_.Add(list_, "ada@x", !kChanged, kDefault);
  SetDefault("ADA@X");
  EXPECT_EQ(Selected(), "ADA@X");
  ExpectUnchanged();
}

TEST_F(MultiValueAttributeTest, ADefaultCanBeSetWhereThereWasNone) {
  Load({"ada@x", "bob@x"});
  SetDefault("bob@x");
  EXPECT_THAT(Rows(), ElementsAre("ada@x", "BOB@X"));
  ExpectBuilt(R"(["ada@x"])", "bob@x");
}

TEST_F(MultiValueAttributeTest, SettingADefaultNeedsASelectionAndARecord) {
  Load({"ada@x"});
  EXPECT_EQ(attribute_.SetDefault(list_), 0);
  list_.Add("a row of somebody else");
  Select("a row of somebody else");
  EXPECT_EQ(attribute_.SetDefault(list_), 1);
  ExpectUnchanged();
}

TEST_F(MultiValueAttributeTest, DeletingTheDefaultPassesTheMarkToTheFirstAdded) {
  attribute_.Add(list_, "mia@x", !kChanged, kDefault);
  Load({"Zoe@x", "ada@x"});
  Delete("MIA@X");
  // Not to "ada@x", which stands first in the list.
  EXPECT_THAT(Rows(), ElementsAre("ada@x", "ZOE@X"));
  ExpectBuilt(R"(["ada@x"])", "Zoe@x");
}

TEST_F(MultiValueAttributeTest, ADeletedDefaultKeepsItsMarkAndLosesItToALaterDefault) {
  attribute_.Add(list_, "ada@x", !kChanged, kDefault);
  Load({"bob@x", "mia@x", "zoe@x"});
  Delete("ADA@X");
  EXPECT_THAT(Rows(), ElementsAre("BOB@X", "mia@x", "zoe@x"));
  SetDefault("mia@x");
  // The mark came off the deleted record: two live ones have it, the later one is reported.
  EXPECT_THAT(Rows(), ElementsAre("BOB@X", "MIA@X", "zoe@x"));
  ExpectBuilt(R"(["zoe@x"])", "mia@x");
}

TEST_F(MultiValueAttributeTest, OneOfTwoDefaultsCanBeKeptAlone) {
  attribute_.Add(list_, "ada@x", !kChanged, kDefault);
  Load({"bob@x", "mia@x", "zoe@x"});
  Delete("ADA@X");
  SetDefault("mia@x");
  attribute_.KeepDefault(list_, 1);
  EXPECT_THAT(Rows(), ElementsAre("bob@x", "MIA@X", "zoe@x"));
  ExpectBuilt(R"(["bob@x", "zoe@x"])", "mia@x");
  attribute_.KeepDefault(list_, 0);
  EXPECT_THAT(Rows(), ElementsAre("bob@x", "MIA@X", "zoe@x")) << "it is none";
  Delete("MIA@X");
  SetDefault("zoe@x");
  attribute_.KeepDefault(list_, 1);
  EXPECT_THAT(Rows(), ElementsAre("bob@x", "ZOE@X"));
}

TEST_F(MultiValueAttributeTest, OfTwoDefaultsTheLaterRecordIsReportedWhicheverWasSetLast) {
  attribute_.Add(list_, "ada@x", !kChanged, kDefault);
  Load({"bob@x", "mia@x", "zoe@x"});
  Delete("ADA@X");
  SetDefault("zoe@x");
  EXPECT_THAT(Rows(), ElementsAre("BOB@X", "mia@x", "ZOE@X"));
  SetDefault("mia@x");
  EXPECT_THAT(Rows(), ElementsAre("bob@x", "MIA@X", "ZOE@X"));
  ExpectBuilt(R"(["bob@x"])", "zoe@x");
}

TEST_F(MultiValueAttributeTest, NothingIsLeftOverWhenTheHeirStandsBeforeTheDeletedRecord) {
  Load({"ada@x", "bob@x"});
  attribute_.Add(list_, "zoe@x", !kChanged, kDefault);
  Delete("ZOE@X");
  EXPECT_THAT(Rows(), ElementsAre("ADA@X", "bob@x"));
  // The first record with a mark is the heir, not the deleted one: nothing is left over.
  SetDefault("bob@x");
  EXPECT_THAT(Rows(), ElementsAre("ada@x", "BOB@X"));
  ExpectBuilt(R"(["ada@x"])", "bob@x");
}

TEST_F(MultiValueAttributeTest, DeletingEveryValueGivesAnEmptyArrayAndNoDefault) {
  attribute_.Add(list_, "ada@x", !kChanged, kDefault);
  Load({"bob@x"});
  Delete("ADA@X");
  Delete("BOB@X");
  EXPECT_THAT(Rows(), IsEmpty());
  ExpectBuilt("[]", "untouched");
}

TEST_F(MultiValueAttributeTest, ADefaultAfterAllWereDeletedSharesTheMarkWithTheDeletedOnes) {
  attribute_.Add(list_, "ada@x", !kChanged, kDefault);
  Delete("ADA@X");
  attribute_.Add(list_, "bob@x", kChanged, kDefault);
  attribute_.Add(list_, "mia@x", kChanged, !kDefault);
  EXPECT_THAT(Rows(), ElementsAre("BOB@X", "mia@x"));
  ExpectBuilt(R"(["mia@x"])", "bob@x");
  // The first mark to be found is the deleted record's; the next time it is that of "bob@x".
  SetDefault("mia@x");
  EXPECT_THAT(Rows(), ElementsAre("BOB@X", "MIA@X"));
  ExpectBuilt("[]", "mia@x");
  attribute_.Add(list_, "zoe@x", kChanged, !kDefault);
  SetDefault("zoe@x");
  EXPECT_THAT(Rows(), ElementsAre("bob@x", "MIA@X", "ZOE@X"));
  ExpectBuilt(R"(["bob@x"])", "zoe@x");
}

TEST_F(MultiValueAttributeTest, AnUnchangedDefaultIsNotReportedWithOtherChanges) {
  attribute_.Add(list_, "ada@x", !kChanged, kDefault);
  attribute_.Add(list_, "bob@x", kChanged, !kDefault);
  ExpectBuilt(R"(["bob@x"])", "untouched");
}

TEST_F(MultiValueAttributeTest, DeletingInTheMiddleSelectsTheRowThatTakesThePlace) {
  Load({"ada@x", "bob@x", "zoe@x"});
  Delete("bob@x");
  EXPECT_EQ(Selected(), "zoe@x");
}

TEST_F(MultiValueAttributeTest, DeletingTheLastRowSelectsTheNewLastRow) {
  Load({"ada@x", "bob@x", "zoe@x"});
  Delete("zoe@x");
  EXPECT_EQ(Selected(), "bob@x");
}

TEST_F(MultiValueAttributeTest, DeletingTheDefaultKeepsTheSelectedPositionToo) {
  attribute_.Add(list_, "bob@x", !kChanged, kDefault);
  Load({"ada@x", "zoe@x"});
  Delete("BOB@X");
  EXPECT_THAT(Rows(), ElementsAre("ADA@X", "zoe@x"));
  EXPECT_EQ(Selected(), "zoe@x");
}

TEST_F(MultiValueAttributeTest, DeletingTheOnlyRowSelectsNothing) {
  Load({"ada@x"});
  Delete("ada@x");
  EXPECT_FALSE(list_.Selection());
}

TEST_F(MultiValueAttributeTest, DeletingNeedsASelection) {
  Load({"ada@x"});
  EXPECT_EQ(attribute_.Delete(list_), 0);
  EXPECT_THAT(Rows(), ElementsAre("ada@x"));
  ExpectUnchanged();
}

TEST_F(MultiValueAttributeTest, ARowWithoutARecordGoesWithoutAChange) {
  Load({"ada@x"});
  list_.Add("a row of somebody else");
  Delete("a row of somebody else");
  EXPECT_THAT(Rows(), ElementsAre("ada@x"));
  ExpectUnchanged();
}

TEST_F(MultiValueAttributeTest, ARowThatTheListDoesNotDeleteKeepsItsRecord) {
  Load({"a@x", "b@x"});
  list_.KeepRows();
  Delete("a@x");
  EXPECT_THAT(Rows(), ElementsAre("a@x", "b@x"));
  ExpectUnchanged();
  EXPECT_EQ(attribute_.Refresh(list_), 0);
  EXPECT_THAT(Rows(), ElementsAre("a@x", "b@x"));
}

TEST_F(MultiValueAttributeTest, AVeryLongElementIsShownCutAndKeptWhole) {
  const std::string shown(1023, 'a');
  std::string umlauts;
  for (int count = 0; count < 1023; ++count) umlauts += "\xC3\xBC";
  EXPECT_EQ(attribute_.Load(list_, {.text = shown + "tail", .is_shown_cut = true}), 0);
  EXPECT_EQ(attribute_.Load(list_, {.text = umlauts + "b", .is_shown_cut = true}), 0);
  EXPECT_EQ(attribute_.Load(list_, {.text = shown + "bare"}), 0);
  EXPECT_THAT(Rows(), ElementsAre(shown, shown + "bare", umlauts));
  Select(shown);
  const std::string* const selected = MultiValueAttribute::SelectedValue(list_);
  ASSERT_NE(selected, nullptr);
  EXPECT_EQ(*selected, shown + "tail");
  EXPECT_EQ(attribute_.Modify(list_, shown + "tail"), 0);
  ExpectUnchanged();
  attribute_.Add(list_, "c", kChanged, !kDefault);
  ExpectBuilt(ToText(Variant::StringArray({shown + "tail", umlauts + "b", shown + "bare", "c"})),
              "untouched");
  Select(shown);
  EXPECT_EQ(attribute_.Modify(list_, shown + "typed"), 0);
  EXPECT_THAT(Rows(), ElementsAre(shown + "bare", shown + "typed", "c", umlauts));
}

TEST_F(MultiValueAttributeTest, ClearedItBeginsAnew) {
  Load({"a@x", "b@x"});
  Delete("a@x");
  attribute_.Clear(list_);
  EXPECT_THAT(Rows(), IsEmpty());
  ExpectUnchanged();
  Load({"c@x"});
  EXPECT_THAT(Rows(), ElementsAre("c@x"));
  ExpectUnchanged();
}

TEST_F(MultiValueAttributeTest, EitherOutputMayBeLeftOut) {
  attribute_.Add(list_, "ada@x", kChanged, kDefault);
  attribute_.Add(list_, "bob@x", kChanged, !kDefault);
  Variant value;
  std::string default_value;
  EXPECT_TRUE(attribute_.BuildValue(&value, nullptr));
  EXPECT_EQ(ToText(value), R"(["bob@x"])");
  EXPECT_TRUE(attribute_.BuildValue(nullptr, &default_value));
  EXPECT_EQ(default_value, "ada@x");
  EXPECT_TRUE(attribute_.BuildValue(nullptr, nullptr));
}

TEST_F(MultiValueAttributeTest, TheSelectedValueIsTheStoredOne) {
  EXPECT_EQ(MultiValueAttribute::SelectedValue(list_), nullptr);
  attribute_.Add(list_, "Ada@x", !kChanged, kDefault);
  Select("ADA@X");
  ASSERT_NE(MultiValueAttribute::SelectedValue(list_), nullptr);
  EXPECT_EQ(*MultiValueAttribute::SelectedValue(list_), "Ada@x");
}

}  // namespace
}  // namespace pelora
