// SPDX-License-Identifier: Apache-2.0
// What is typed is judged while it is typed: marked, explained below the page, and held where it is
// wrong.
#include <gmock/gmock.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

#include "hosts/console/fields/page_foot.h"
#include "hosts/console/fields/page_marks.h"
#include "hosts/console/fields/query_preview.h"
#include "hosts/console/text/qt_text.h"
#include "tests/ui/user_tab.h"

namespace pelora::test {
namespace {

using console::FootNote;
using console::MarkKind;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const std::string kList =
    "CN=Alle Personen,OU=Adresslisten,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
const std::string kServer = "CN=mail01,OU=Groupware Servers,DC=linden-werke,DC=example";

class TypedFields : public UserTab {
 protected:
  void OpenWithQuota(Values values = {}) {
    values.emplace_back("peloraQuotaOverride", "1");
    values.emplace_back("mail", "a@x.test");
    OpenUser(std::move(values));
  }
  void Retype(ControlId id, std::string_view text) {
    user().Erase(id);
    user().Type(id, text);
  }
  /// The address list's tab with its query.
  void OpenList() {
    Open({kList});
    sheet().sheet().SelectPage(1);
    QCoreApplication::processEvents();
  }
  [[nodiscard]] FootNote::Level Level() { return sheet().fields().foot().note().level; }
  /// How a control is marked: "wrong", "odd", "changed" or nothing.
  [[nodiscard]] std::string MarkOf(ControlId id) {
    for (const console::Mark& mark : sheet().sheet().findChild<console::PageMarks*>()->marks()) {
      if (mark.control != &page().Find(id)->widget()) continue;
      return mark.kind == MarkKind::kWrong ? "wrong"
             : mark.kind == MarkKind::kOdd ? "odd"
                                           : "changed";
    }
    return {};
  }
};

TEST_F(TypedFields, WhatIsNoSizeHoldsOkAndApply) {
  for (const char* text : {"99999999999", "500abc", "abc", "1 00"}) {
    OpenWithQuota();
    Retype(IDC_QUOTA_HARD, text);
    EXPECT_FALSE(sheet().IsApplyEnabled()) << text;
    EXPECT_FALSE(sheet().IsOkEnabled()) << text;
    EXPECT_EQ(MarkOf(IDC_QUOTA_HARD), "wrong") << text;
    EXPECT_EQ(Level(), FootNote::Level::kWrong) << text;
    EXPECT_THAT(sheet().Said(), HasSubstr("Hard limit: This is no size in MB")) << text;
    sheet().sheet().accept();
    EXPECT_TRUE(sheet().IsOpen()) << "nor does Enter close it";
    Retype(IDC_QUOTA_HARD, "500");
    EXPECT_EQ(MarkOf(IDC_QUOTA_HARD), "changed") << text;
    EXPECT_EQ(sheet().Said(), "") << text;
    EXPECT_THAT(OkDifference(), ElementsAre("+ peloraQuotaHard: 500"));
  }
}

TEST_F(TypedFields, AUnitAndBlanksAreUnderstood) {
  OpenWithQuota();
  Retype(IDC_QUOTA_HARD, "2 GB");
  EXPECT_EQ(sheet().Said(), "Hard limit: This is 2048 MB.");
  EXPECT_EQ(Level(), FootNote::Level::kHint);
  Retype(IDC_QUOTA_WARN, "1 000");
  EXPECT_EQ(page().Text(IDC_QUOTA_HARD), "2048") << "as soon as the field is left";
  EXPECT_THAT(OkDifference(), ElementsAre("+ peloraQuotaHard: 2048", "+ peloraQuotaWarn: 1000"));
}

TEST_F(TypedFields, TheUnitOfSizesIsWrittenAsEverywhere) {
  OpenWithQuota();
  int units = 0;
  for (const QLabel* const label : page().widget().findChildren<QLabel*>()) {
    EXPECT_NE(label->text(), QStringLiteral("Mb"));
    if (label->text() == QStringLiteral("MB")) ++units;
  }
  EXPECT_EQ(units, 3);
}

TEST_F(TypedFields, AWarningAboveTheHardLimitIsHeld) {
  OpenWithQuota({{"peloraQuotaHard", "300"}});
  Retype(IDC_QUOTA_WARN, "400");
  EXPECT_FALSE(sheet().IsOkEnabled());
  EXPECT_EQ(sheet().Said(), "Warning at: This is above the hard limit.");
  user().Click(IDC_QUOTA_OVERRIDE);
  EXPECT_TRUE(sheet().IsOkEnabled()) << "the limits do not count any more";
}

TEST_F(TypedFields, WhatIsStoredAlreadyOnlyWarns) {
  OpenWithQuota({{"peloraQuotaHard", "300"}, {"peloraQuotaWarn", "400"}});
  EXPECT_EQ(MarkOf(IDC_QUOTA_HARD), "odd");
  EXPECT_EQ(Level(), FootNote::Level::kOdd);
  user().Click(IDC_PELORA_HIDDEN);
  EXPECT_THAT(OkDifference(), ElementsAre("+ peloraHidden: 1"));
}

TEST_F(TypedFields, APortIsOneThatThereIs) {
  Open({kServer});
  Retype(IDC_HTTP_PORT, "70000");
  EXPECT_FALSE(sheet().IsOkEnabled());
  EXPECT_THAT(sheet().Said(), HasSubstr("HTTP port: This is no port from 1 to 65535"));
  Retype(IDC_HTTP_PORT, "8080");
  EXPECT_TRUE(sheet().IsOkEnabled());
}

TEST_F(TypedFields, AQueryIsHeldAtTheCharacterWhereItIsWrong) {
  OpenList();
  Retype(IDC_SEARCH_QUERY, "(&(mail=*)(sn=*)");
  EXPECT_FALSE(sheet().IsOkEnabled());
  EXPECT_EQ(sheet().Said(), "Search query: Character 17: a closing parenthesis is missing.");
  user().Type(IDC_SEARCH_QUERY, ")");
  EXPECT_TRUE(sheet().IsOkEnabled());
}

TEST_F(TypedFields, AQuerysObjectsAreCountedAndShownOnDemand) {
  OpenList();
  Retype(IDC_SEARCH_QUERY, "(&(objectClass=user)(peloraAccount=1))");
  auto* const action = sheet().sheet().findChild<QPushButton*>(QStringLiteral("page_foot_action"));
  ASSERT_TRUE(action->isVisible());
  QTest::mouseClick(action, Qt::LeftButton);
  auto* const preview = sheet().sheet().findChild<console::QueryPreview*>();
  ASSERT_NE(preview, nullptr);
  ASSERT_TRUE(QTest::qWaitFor([preview] { return !preview->IsSearching(); }));
  EXPECT_GT(preview->Count(), 5U);
  const auto* results = preview->findChild<QTreeView*>();
  EXPECT_EQ(results->model()->rowCount(),
            static_cast<int>(std::min<std::size_t>(preview->Count(), 100)));
  const auto* status = preview->findChild<QLabel*>(QStringLiteral("query_status"));
  EXPECT_EQ(status->text().toStdString(), std::to_string(preview->Count()) + " objects found.");
}

TEST_F(TypedFields, AnAddressThatIsNoneHoldsTheOkOfItsDialog) {
  for (const char* const text : {"anna", "a@b@c", "a b@x.test"}) {
    OpenWithQuota();
    modal_scripts().Add([text](QWidget& window) {
      contract::QtPlayer typist(window);
      typist.Type(IDC_EMAIL_ADDRESS, text);
      const auto* foot = window.findChild<console::PageFoot*>();
      ASSERT_NE(foot, nullptr);
      EXPECT_EQ(foot->note().level, FootNote::Level::kWrong) << text;
      typist.PressEnter();
      EXPECT_TRUE(window.isVisible()) << text;
      typist.Click(static_cast<ControlId>(kDialogOk));
      EXPECT_TRUE(window.isVisible()) << text;
      typist.Click(static_cast<ControlId>(kDialogCancel));
    });
    user().Click(IDC_EMAIL_ADD);
    EXPECT_THAT(Rows(IDC_EMAIL_LIST), ElementsAre("A@X.TEST")) << text;
  }
}

TEST_F(TypedFields, AnAddressThatIsEditedIsJudgedAsANewOne) {
  OpenWithQuota();
  modal_scripts().Add([](QWidget& window) {
    contract::QtPlayer typist(window);
    const auto* foot = window.findChild<console::PageFoot*>();
    ASSERT_NE(foot, nullptr);
    typist.Erase(IDC_EMAIL_ADDRESS);
    typist.Type(IDC_EMAIL_ADDRESS, "anna");
    EXPECT_EQ(foot->note().level, FootNote::Level::kWrong);
    typist.PressEnter();
    EXPECT_TRUE(window.isVisible());
    typist.Click(static_cast<ControlId>(kDialogCancel));
  });
  ClickRow(IDC_EMAIL_LIST, "A@X.TEST");
  user().Click(IDC_EMAIL_MODIFY);
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_THAT(Rows(IDC_EMAIL_LIST), ElementsAre("A@X.TEST"));
}

TEST_F(TypedFields, AnArchiveServerThatIsNoneIsWarnedOf) {
  OpenWithQuota();
  sheet().sheet().SelectPage(1);
  QCoreApplication::processEvents();
  modal_scripts().Add([](QWidget& window) {
    contract::QtPlayer typist(window);
    const auto* foot = window.findChild<console::PageFoot*>();
    ASSERT_NE(foot, nullptr);
    typist.Type(IDC_ARCHIVER_NAME, "nowhere");
    EXPECT_TRUE(QTest::qWaitFor([foot] { return foot->note().level == FootNote::Level::kOdd; }));
    EXPECT_EQ(foot->note().text, QStringLiteral("There is no server of the name nowhere."));
    typist.Erase(IDC_ARCHIVER_NAME);
    typist.Type(IDC_ARCHIVER_NAME, "mail01");
    EXPECT_EQ(foot->note().level, FootNote::Level::kNothing) << "and nothing is held";
    typist.Click(static_cast<ControlId>(kDialogCancel));
  });
  user().DoubleClickListViewCell(IDC_FEATURE_LIST, 0, 1);
  EXPECT_EQ(modal_scripts().waiting(), 0U);
}

TEST_F(TypedFields, AnOddAddressIsWarnedOfAndTaken) {
  OpenWithQuota();
  modal_scripts().Add([](QWidget& window) {
    contract::QtPlayer typist(window);
    typist.Type(IDC_EMAIL_ADDRESS, "x@y");
    EXPECT_EQ(window.findChild<console::PageFoot*>()->note().level, FootNote::Level::kOdd);
    typist.PressEnter();
  });
  user().Click(IDC_EMAIL_ADD);
  EXPECT_THAT(OkDifference(), ElementsAre("+ otherMailbox: x@y"));
}

TEST_F(TypedFields, AnAddressThatSomebodyElseHasSaysWhoseItIs) {
  Give(kRolf, {{"mail", "r.uhlig@x.test"}});
  OpenWithQuota();
  modal_scripts().Add([](QWidget& window) {
    contract::QtPlayer typist(window);
    typist.Type(IDC_EMAIL_ADDRESS, "R.Uhlig@x.test");
    const auto* foot = window.findChild<console::PageFoot*>();
    EXPECT_TRUE(QTest::qWaitFor([foot] { return !foot->note().action.isEmpty(); }));
    EXPECT_EQ(foot->note().text, QStringLiteral("This is an address of Rolf Uhlig."));
    QTest::mouseClick(foot->findChild<QPushButton*>(), Qt::LeftButton);
    typist.Click(static_cast<ControlId>(kDialogCancel));
  });
  user().Click(IDC_EMAIL_ADD);
  EXPECT_THAT(sheet().asked_for(), ElementsAre("Rolf Uhlig"));
}

TEST_F(TypedFields, AHomeServerThatIsNoneIsWarnedOfAndCanBeCleared) {
  OpenWithQuota({{"peloraUserServer", "nowhere"}});
  sheet().AwaitAnswers();
  EXPECT_EQ(sheet().Said(), "Home Server: There is no server of the name nowhere.");
  EXPECT_EQ(MarkOf(IDC_SERVER), "odd");
  EXPECT_TRUE(sheet().IsOkEnabled());
  QTest::mouseClick(sheet().sheet().findChild<QPushButton*>(QStringLiteral("page_foot_action")),
                    Qt::LeftButton);
  EXPECT_EQ(page().Text(IDC_SERVER), "");
  EXPECT_THAT(OkDifference(), ElementsAre("- peloraUserServer: nowhere"));
}

TEST_F(TypedFields, AUserWithoutAQuotaSeesTheCompanysDefault) {
  ModifyEntry(file(),
              std::string("dn: ") + kCompany +
                  "\nchangetype: modify\nreplace: peloraUserDefaultQuotaOverride\n"
                  "peloraUserDefaultQuotaOverride: 1\n-\n"
                  "replace: peloraUserDefaultQuotaWarn\npeloraUserDefaultQuotaWarn: 800\n-\n"
                  "replace: peloraUserDefaultQuotaSoft\npeloraUserDefaultQuotaSoft: 900\n-\n"
                  "replace: peloraUserDefaultQuotaHard\npeloraUserDefaultQuotaHard: 1000\n");
  OpenUser({{"mail", "a@x.test"}});
  sheet().AwaitAnswers();
  EXPECT_EQ(
      sheet().Said(),
      "The default of Linden-Werke Chemnitz holds: warning at 800 MB, soft limit 900 MB, hard "
      "limit 1000 MB.");
  user().Click(IDC_QUOTA_OVERRIDE);
  EXPECT_EQ(sheet().Said(), "");
}

TEST_F(TypedFields, AScreenReaderIsToldWithTheField) {
  OpenWithQuota();
  Retype(IDC_QUOTA_HARD, "abc");
  EXPECT_THAT(page().Find(IDC_QUOTA_HARD)->widget().accessibleDescription().toStdString(),
              HasSubstr("changed; This is no size in MB"));
}

TEST_F(TypedFields, NothingMovesWhateverIsSaid) {
  OpenWithQuota();
  const QSize size = sheet().sheet().size();
  const QPoint place = page().widget().mapTo(&sheet().sheet(), QPoint(0, 0));
  Retype(IDC_QUOTA_HARD, "abc");
  QCoreApplication::processEvents();
  EXPECT_EQ(sheet().sheet().size(), size);
  EXPECT_EQ(page().widget().mapTo(&sheet().sheet(), QPoint(0, 0)), place);
}

}  // namespace
}  // namespace pelora::test
