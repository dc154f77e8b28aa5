// SPDX-License-Identifier: Apache-2.0
// What several objects have in a field, and the ways back from an edit.
#include <gmock/gmock.h>

#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <QTreeWidget>
#include <cmath>
#include <optional>

#include "hosts/console/fields/page_marks.h"
#include "hosts/console/text/qt_text.h"
#include "tests/ui/dark_theme.h"
#include "tests/ui/faults_of_use.h"
#include "tests/ui/keep_picture.h"
#include "tests/ui/user_tab.h"

namespace pelora::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// How well one colour is read on another: from 1 to 21.
double Contrast(const QColor& one, const QColor& other) {
  const auto light = [](const QColor& colour) {
    const auto part = [](double value) {
      return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
           0.0722 * part(colour.blueF()) + 0.05;
  };
  return std::max(light(one), light(other)) / std::min(light(one), light(other));
}

class SelectedValues : public UserTab {
 protected:
  /// Three users, of whom two have a hard limit of 4000 and one of 1500.
  void OpenThree() {
    Give(kBirgit, {{"peloraQuotaOverride", "1"}, {"peloraQuotaHard", "4000"}});
    Give(kRolf, {{"peloraQuotaOverride", "1"}, {"peloraQuotaHard", "1500"}});
    Give(kUrsula, {{"peloraQuotaOverride", "1"}, {"peloraQuotaHard", "4000"}});
    Open({kBirgit, kRolf, kUrsula});
  }
  [[nodiscard]] QLineEdit& Edit(ControlId id) {
    return static_cast<QLineEdit&>(page().Find(id)->widget());
  }
  [[nodiscard]] std::string Placeholder(ControlId id) {
    return console::ToUtf8(Edit(id).placeholderText());
  }
  /// What is said in the control behind its text.
  [[nodiscard]] std::string HintIn(ControlId id) {
    for (const console::Hint& hint : sheet().sheet().findChild<console::PageMarks*>()->hints()) {
      if (hint.control == &Edit(id)) return console::ToUtf8(hint.text);
    }
    return {};
  }
  /// Texts of the entries in a control's menu that can be chosen.
  void Choose(ControlId id, const char* entry) {
    QWidget& control = page().Find(id)->widget();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1),
                            control.mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(&control, &event);
    auto* const menu = control.findChild<QMenu*>(QStringLiteral("field_menu"));
    ASSERT_NE(menu, nullptr);
    EXPECT_THAT(FaultsOfMenu(menu->actions()), IsEmpty());
    for (QAction* const action : menu->actions()) {
      if (!console::WithoutMnemonic(action->text()).contains(QLatin1String(entry))) continue;
      EXPECT_TRUE(action->isEnabled()) << entry;
      action->trigger();
      menu->close();
      return;
    }
    ADD_FAILURE() << "there is no " << entry;
  }
  [[nodiscard]] std::vector<Lines> Differences() {
    std::vector<Lines> differences;
    for (std::size_t user = 0; user < 3; ++user) differences.push_back(OkDifference(user));
    return differences;
  }
};

TEST_F(SelectedValues, DifferingAndUnsetOnesAreToldInTheirPlace) {
  OpenThree();
  EXPECT_EQ(Placeholder(IDC_QUOTA_HARD), "different: 4000 (2), 1500 (1)");
  EXPECT_EQ(page().Text(IDC_QUOTA_HARD), "");
  EXPECT_EQ(Placeholder(IDC_SERVER), "not set");
  EXPECT_EQ(HintIn(IDC_QUOTA_WARN), "not set") << "the page shows 0";
  EXPECT_EQ(HintIn(IDC_CAPACITY), "") << "that one is 0";
  Edit(IDC_QUOTA_HARD).setFocus();
  EXPECT_EQ(sheet().Said(), "Hard limit: different: 4000 (2), 1500 (1)")
      << "it is cut in the field";
}

TEST_F(SelectedValues, AnAccountTypeThatDiffersSaysOfHowManyItIsWhich) {
  Give(kBirgit, {});
  Give(kRolf, {{"peloraSharedStoreOnly", "1"}, {"peloraResourceType", "room"}});
  Give(kUrsula, {});
  Open({kBirgit, kRolf, kUrsula});
  const auto& list = static_cast<QComboBox&>(page().Find(IDC_ACCOUNT_TYPE)->widget());
  EXPECT_EQ(list.currentIndex(), -1);
  EXPECT_EQ(console::ToUtf8(list.placeholderText()), "different: active user (2), room (1)");
  EXPECT_THAT(list.toolTip().toStdString(), HasSubstr("room: Rolf Uhlig"));
  EXPECT_THAT(Differences(), ::testing::Each(IsEmpty())) << "looked at, and left as it is";
}

TEST_F(SelectedValues, WhatIsSaidInAFieldThatCannotBeUsedIsReadAllTheSame) {
  for (const bool is_dark : {false, true}) {
    std::optional<DarkTheme> dark;
    if (is_dark) dark.emplace();
    Give(kBirgit, {});
    Give(kRolf, {});
    Open({kBirgit, kRolf});
    QLineEdit& edit = Edit(IDC_QUOTA_HARD);
    ASSERT_FALSE(edit.isEnabled()) << "the quota is not one of their own";
    const QPalette& palette = edit.palette();
    EXPECT_GE(Contrast(palette.color(QPalette::Disabled, QPalette::PlaceholderText),
                       palette.color(QPalette::Disabled, QPalette::Base)),
              4.5)
        << is_dark;
  }
}

TEST_F(SelectedValues, AListGoesBackToWhatWasReadByItsMenu) {
  OpenUser({{"mail", "a@x.test"}, {"otherMailbox", "b@x.test"}});
  EnterAddress(IDC_EMAIL_ADD, "c@x.test");
  ClickRow(IDC_EMAIL_LIST, "b@x.test");
  user().Click(IDC_EMAIL_DEFAULT);
  EXPECT_THAT(Rows(IDC_EMAIL_LIST), ElementsAre("a@x.test", "B@X.TEST", "c@x.test"));
  EXPECT_TRUE(sheet().IsApplyEnabled());
  Choose(IDC_EMAIL_LIST, "Back to what was read");
  EXPECT_THAT(Rows(IDC_EMAIL_LIST), ElementsAre("A@X.TEST", "b@x.test"));
  EXPECT_FALSE(sheet().IsApplyEnabled());
  EXPECT_THAT(sheet().sheet().findChild<console::PageMarks*>()->marks(), IsEmpty());
  EXPECT_THAT(OkDifference(), IsEmpty());
}

TEST_F(SelectedValues, HoveringTellsWhoHasWhat) {
  OpenThree();
  const std::string tip = Edit(IDC_QUOTA_HARD).toolTip().toStdString();
  EXPECT_THAT(tip, HasSubstr("4000: Birgit Krämer, Ursula Fischer"));
  EXPECT_THAT(tip, HasSubstr("1500: Rolf Uhlig"));
}

TEST_F(SelectedValues, F2ListsEachObjectWithItsValue) {
  OpenThree();
  QTest::keyClick(&Edit(IDC_QUOTA_HARD), Qt::Key_F2);
  const auto* const rows = sheet().sheet().findChild<QTreeView*>(QStringLiteral("value_list_rows"));
  ASSERT_NE(rows, nullptr);
  const QAbstractItemModel& model = *rows->model();
  ASSERT_EQ(model.rowCount(), 3);
  EXPECT_EQ(model.index(1, 0).data().toString(), QStringLiteral("4000"));
  EXPECT_EQ(model.index(1, 1).data().toString(), QStringLiteral("Ursula Fischer"));
  EXPECT_EQ(model.index(2, 0).data().toString(), QStringLiteral("1500"));
  EXPECT_EQ(model.index(2, 1).data().toString(), QStringLiteral("Rolf Uhlig"));
}

TEST_F(SelectedValues, TypedIntoAndEmptiedAgainEachKeepsItsOwn) {
  OpenThree();
  user().Type(IDC_QUOTA_HARD, "7");
  EXPECT_TRUE(sheet().IsApplyEnabled());
  user().Erase(IDC_QUOTA_HARD);
  EXPECT_FALSE(sheet().IsApplyEnabled());
  EXPECT_THAT(Differences(), ::testing::Each(IsEmpty()));
}

TEST_F(SelectedValues, AValueIsTakenFromAllByACommandThatSaysSo) {
  OpenThree();
  Choose(IDC_QUOTA_HARD, "Remove the value from 3 objects");
  EXPECT_TRUE(sheet().IsApplyEnabled());
  EXPECT_EQ(Placeholder(IDC_QUOTA_HARD), "removed");
  EXPECT_THAT(Differences(), ElementsAre(ElementsAre("- peloraQuotaHard: 4000"),
                                         ElementsAre("- peloraQuotaHard: 1500"),
                                         ElementsAre("- peloraQuotaHard: 4000")));
}

TEST_F(SelectedValues, EmptyingWhatTheyHaveInCommonAsksFirst) {
  for (const char* const dn : {kBirgit, kRolf, kUrsula}) {
    Give(dn, {{"peloraQuotaOverride", "1"}, {"peloraQuotaHard", "500"}});
  }
  Open({kBirgit, kRolf, kUrsula});
  user().Erase(IDC_QUOTA_HARD);
  EXPECT_FALSE(sheet().IsOkEnabled());
  EXPECT_THAT(sheet().Said(), HasSubstr("Remove the value from 3 objects"));
  QTest::mouseClick(sheet().sheet().findChild<QPushButton*>(QStringLiteral("page_foot_action")),
                    Qt::LeftButton);
  EXPECT_TRUE(sheet().IsOkEnabled());
  EXPECT_THAT(Differences(), ::testing::Each(ElementsAre("- peloraQuotaHard: 500")));
}

TEST_F(SelectedValues, AnUndecidedBoxIsCheckedThenUncheckedThenAsItWas) {
  Give(kBirgit, {{"peloraHidden", "1"}});
  Give(kRolf, {{"peloraQuotaOverride", "1"}});
  Give(kUrsula, {});
  Open({kBirgit, kRolf, kUrsula});
  for (const ControlId box : {IDC_PELORA_HIDDEN, IDC_QUOTA_OVERRIDE}) {
    EXPECT_EQ(page().Check(box), CheckState::kIndeterminate) << box;
    user().Click(box);
    EXPECT_EQ(page().Check(box), CheckState::kChecked) << box;
    user().Click(box);
    EXPECT_EQ(page().Check(box), CheckState::kUnchecked) << box;
    EXPECT_TRUE(sheet().IsApplyEnabled()) << box;
    user().Click(box);
    EXPECT_EQ(page().Check(box), CheckState::kIndeterminate) << box;
    EXPECT_FALSE(sheet().IsApplyEnabled()) << box;
  }
  EXPECT_THAT(Differences(), ::testing::Each(IsEmpty()));
}

TEST_F(SelectedValues, AFieldGoesBackToWhatWasReadByKeyAndByMenu) {
  OpenUser({{"peloraQuotaOverride", "1"}, {"peloraQuotaHard", "300"}, {"mail", "a@x.test"}});
  user().Erase(IDC_QUOTA_HARD);
  user().Type(IDC_QUOTA_HARD, "900");
  QTest::keyClick(&Edit(IDC_QUOTA_HARD), Qt::Key_R, Qt::ControlModifier);
  EXPECT_EQ(page().Text(IDC_QUOTA_HARD), "300");
  EXPECT_FALSE(sheet().IsApplyEnabled());
  user().Click(IDC_QUOTA_OVERRIDE);
  EXPECT_FALSE(page().IsEnabled(IDC_QUOTA_HARD));
  Choose(IDC_QUOTA_OVERRIDE, "Back to what was read");
  EXPECT_EQ(page().Check(IDC_QUOTA_OVERRIDE), CheckState::kChecked);
  EXPECT_TRUE(page().IsEnabled(IDC_QUOTA_HARD)) << "what depends on it follows";
  user().ChooseComboRow(IDC_ACCOUNT_TYPE, 2);
  Choose(IDC_ACCOUNT_TYPE, "Back to what was read");
  EXPECT_EQ(page().ComboBox(IDC_ACCOUNT_TYPE).Selection(), 0U);
  EXPECT_FALSE(sheet().IsApplyEnabled());
  EXPECT_THAT(OkDifference(), IsEmpty());
}

TEST_F(SelectedValues, ARoomAndABeamerKeepWhatTheyAreThroughAnOk) {
  Give(kBirgit, {{"peloraResourceType", "room"},
                 {"peloraSharedStoreOnly", "1"},
                 {"peloraResourceCapacity", "4"}});
  Give(kRolf, {{"peloraResourceType", "equipment"},
               {"peloraSharedStoreOnly", "1"},
               {"peloraResourceCapacity", "9"}});
  Open({kBirgit, kRolf});
  EXPECT_THAT(OkDifference(0), IsEmpty());
  EXPECT_THAT(OkDifference(1), IsEmpty());
}

class SelectedFeatures : public SelectedValues {
 protected:
  /// Three users, of whom one has pop3 off, at the features tab.
  void OpenThreeFeatures() {
    for (const char* const dn : {kBirgit, kRolf, kUrsula}) {
      ModifyEntry(file(), std::string("dn: ") + dn +
                              "\nchangetype: modify\nreplace: peloraEnabledFeatures\n-\n"
                              "replace: peloraDisabledFeatures\n" +
                              (dn == kRolf ? "peloraDisabledFeatures: pop3\n" : ""));
    }
    Open({kBirgit, kRolf, kUrsula});
    sheet().sheet().SelectPage(1);
    QCoreApplication::processEvents();
    tab_.emplace(features().widget());
  }
  [[nodiscard]] console::QtDialog& features() { return *sheet().sheet().Dialog(1); }
  [[nodiscard]] contract::QtPlayer& tab() { return *tab_; }
  [[nodiscard]] static constexpr RowIndex Pop3() { return 2; }

 private:
  std::optional<contract::QtPlayer> tab_;
};

TEST_F(SelectedFeatures, ARowSaysOfHowManyItIsSo) {
  OpenThreeFeatures();
  const auto& marks = *features().widget().parentWidget()->findChild<console::PageMarks*>();
  std::vector<std::string> hints;
  for (const console::Hint& hint : marks.hints()) hints.push_back(hint.text.toStdString());
  EXPECT_THAT(hints, ElementsAre("3 unset", "1 off, 2 unset"));
  tab().ClickListViewCell(IDC_FEATURE_LIST, Pop3(), 0, false);
  KeepPicture(sheet().sheet(), "features-of-three");
}

TEST_F(SelectedFeatures, ItIsSwitchedForAllWhateverTheRowSaysInSum) {
  OpenThreeFeatures();
  tab().ClickListViewCell(IDC_FEATURE_LIST, Pop3(), 0, false);
  EXPECT_EQ(features().ListView(IDC_FEATURE_LIST).Text(Pop3(), 1), "Disabled");
  EXPECT_TRUE(features().IsEnabled(IDC_FEATURE_DISABLE));
  EXPECT_TRUE(features().IsEnabled(IDC_FEATURE_ENABLE));
  tab().Click(IDC_FEATURE_DISABLE);
  EXPECT_TRUE(sheet().IsApplyEnabled());
  EXPECT_EQ(features().ListView(IDC_FEATURE_LIST).Text(Pop3(), 1), "Disabled");
  EXPECT_THAT(Differences(), ElementsAre(ElementsAre("+ peloraDisabledFeatures: pop3"), IsEmpty(),
                                         ElementsAre("+ peloraDisabledFeatures: pop3")));
}

TEST_F(SelectedFeatures, ADoubleClickMakesApplyLiveAndEscapeAsks) {
  OpenThreeFeatures();
  tab().DoubleClickListViewCell(IDC_FEATURE_LIST, Pop3(), 0);
  EXPECT_TRUE(sheet().IsApplyEnabled());
  modal_scripts().Add(Press("&Keep Editing"));
  QTest::keyClick(&sheet().sheet(), Qt::Key_Escape);
  EXPECT_TRUE(sheet().IsOpen());
  EXPECT_THAT(Differences(), ElementsAre(ElementsAre("+ peloraEnabledFeatures: pop3"),
                                         ElementsAre("- peloraDisabledFeatures: pop3",
                                                     "+ peloraEnabledFeatures: pop3"),
                                         ElementsAre("+ peloraEnabledFeatures: pop3")));
}

}  // namespace
}  // namespace pelora::test
