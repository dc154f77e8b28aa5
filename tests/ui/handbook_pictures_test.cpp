// SPDX-License-Identifier: Apache-2.0
// What a sheet looks like in each of its states, played on the sample company: nothing is cut off,
// light, dark and from right to left. Pictures are kept for the handbook.
#include <gmock/gmock.h>

#include <QMessageBox>
#include <QPushButton>
#include <QTreeView>
#include <chrono>
#include <functional>
#include <optional>

#include "hosts/console/errands/errand_dialog.h"
#include "hosts/console/fields/page_foot.h"
#include "hosts/console/fields/value_list.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/history_dialog.h"
#include "hosts/console/writing/qt_writing_desk.h"
#include "tests/ui/dark_theme.h"
#include "tests/ui/faults_of_sight.h"
#include "tests/ui/faults_of_use.h"
#include "tests/ui/keep_picture.h"
#include "tests/ui/rights_store.h"
#include "tests/ui/user_tab.h"
#include "tests/ui/writing_sheet.h"

namespace pelora::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

const ldap::StoreStatus kNoRight{50, "00002098: insufficient access rights"};

class HandbookPictures : public UserTab {
 protected:
  /// Opens these objects' sheet in place of the one before.
  [[nodiscard]] OpenSheet& OpenFor(const std::vector<std::string>& names,
                                   ldap::IDirectoryStore* store = nullptr) {
    open_.reset();
    open_.emplace(
        session(), module(), Objects(names),
        SheetFaults{
            .store = store != nullptr ? store : &store_, .desk = &desk_, .history = &history_});
    return *open_;
  }
  /// Three users who differ in their quota, their type, and in whether they are hidden.
  [[nodiscard]] OpenSheet& OpenThree() {
    Give(kBirgit,
         {{"peloraQuotaOverride", "1"}, {"peloraQuotaHard", "4000"}, {"mail", "b@x.test"}});
    Give(kRolf, {{"peloraQuotaOverride", "1"}, {"peloraQuotaHard", "1500"}, {"peloraHidden", "1"}});
    Give(kUrsula, {{"peloraQuotaOverride", "1"},
                   {"peloraQuotaHard", "4000"},
                   {"peloraSharedStoreOnly", "1"},
                   {"peloraResourceType", "room"}});
    return OpenFor({kBirgit, kRolf, kUrsula});
  }
  /// One user with limits, of which one can be made wrong.
  [[nodiscard]] OpenSheet& OpenOne(Values values = {}) {
    values.emplace_back("peloraQuotaOverride", "1");
    values.emplace_back("peloraQuotaSoft", "1200");
    values.emplace_back("peloraQuotaHard", "1500");
    values.emplace_back("mail", "birgit.kraemer@linden-werke.example");
    Give(kBirgit, std::move(values));
    return OpenFor({kBirgit});
  }
  void Retype(ControlId id, std::string_view text) {
    open_->user().Erase(id);
    open_->user().Type(id, text);
  }

  /// Looks at the sheet as it stands.
  void Look(const std::string& name) {
    QCoreApplication::processEvents();
    EXPECT_THAT(FaultsOfSight(open_->dialog().widget()), IsEmpty()) << name;
    EXPECT_THAT(FaultsOfKeys(open_->sheet()), IsEmpty()) << name;
    KeepPicture(open_->sheet(), name);
  }
  /// Looks at the next window, which has this name, and does something in it.
  void Await(const char* window_name, const std::string& picture,
             std::function<void(QWidget& window)> act) {
    modal_scripts().Add([window_name, picture, act = std::move(act)](QWidget& window) {
      EXPECT_EQ(window.objectName(), QLatin1String(window_name));
      EXPECT_THAT(FaultsOfSight(window), IsEmpty()) << picture;
      KeepPicture(window, picture);
      act(window);
      window.close();
    });
  }
  [[nodiscard]] pelora::testing::FaultStore& store() { return store_; }
  [[nodiscard]] session::ChangeHistory& history() { return history_; }

 private:
  pelora::testing::FaultStore store_{*session().store};
  console::QtWritingDesk desk_;
  session::ChangeHistory history_{folder().File("changes"), "x", session().store->schema()};
  std::optional<OpenSheet> open_;
};

TEST_F(HandbookPictures, SeveralObjectsWhatTheyDifferInAndWhatIsDoneAboutIt) {
  OpenSheet& open = OpenThree();
  EXPECT_THAT(open.dialog().Find(IDC_QUOTA_HARD)->widget().toolTip().toStdString(),
              HasSubstr("4000: Birgit Krämer, Ursula Fischer"));
  Look("state-differs");
  QTest::keyClick(&open.dialog().Find(IDC_QUOTA_HARD)->widget(), Qt::Key_F2);
  auto* const values = open.sheet().findChild<console::ValueList*>();
  ASSERT_NE(values, nullptr);
  KeepPicture(*values, "state-values");
  values->close();

  open.user().Type(IDC_QUOTA_HARD, "5000");
  open.user().Click(IDC_PELORA_HIDDEN);
  store().FailChange(2, kNoRight);
  Await("review", "state-review", [](QWidget& window) {
    EXPECT_EQ(Part<QTableView>(window, "review_table").model()->rowCount(), 5);
    Part<QPushButton>(window, "review_write").click();
  });
  Await("results", "state-results", [](QWidget& window) {
    EXPECT_THAT(Part<QLabel>(window, "results_summary").text().toStdString(),
                StartsWith("Not everything was done: 2 written, 1 failed"));
  });
  open.ClickApply();
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  open.ClickOk();
  ASSERT_FALSE(open.IsOpen());
  std::vector<session::PastChange> past = history().List();
  ASSERT_EQ(past.size(), 2U);
  // The same picture whenever it is drawn.
  constexpr std::chrono::sys_days kDay = std::chrono::year(2026) / 3 / 2;
  past[0].when = kDay + std::chrono::hours(14);
  past[1].when = kDay + std::chrono::hours(9);
  console::HistoryDialog dialog([&past] { return past; }, nullptr);
  dialog.show();
  KeepPicture(dialog, "state-history");
}

TEST_F(HandbookPictures, WhatIsTypedIsMarkedAndJudged) {
  OpenSheet& open = OpenOne();
  Retype(IDC_QUOTA_WARN, "500abc");
  open.user().Click(IDC_PELORA_HIDDEN);
  open.dialog().Find(IDC_QUOTA_WARN)->widget().setFocus();
  EXPECT_THAT(open.Said(), HasSubstr("Warning at: This is no size in MB"));
  Look("state-wrong");
}

TEST_F(HandbookPictures, WhatIsOddIsWarnedOf) {
  OpenSheet& open = OpenOne({{"peloraUserServer", "mail07"}});
  open.AwaitAnswers();
  EXPECT_EQ(open.Said(), "Home Server: There is no server of the name mail07.");
  Look("state-odd");
}

TEST_F(HandbookPictures, AnAddressOfSomebodyElseSaysWhose) {
  Give(kRolf, {{"mail", "r.uhlig@linden-werke.example"}});
  OpenSheet& open = OpenOne();
  modal_scripts().Add([](QWidget& window) {
    contract::QtPlayer typist(window);
    typist.Type(IDC_EMAIL_ADDRESS, "r.uhlig@linden-werke.example");
    const auto* foot = window.findChild<console::PageFoot*>();
    ASSERT_NE(foot, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([foot] { return !foot->note().action.isEmpty(); }, 20000));
    EXPECT_THAT(FaultsOfSight(window), IsEmpty());
    KeepPicture(window, "state-address");
    typist.Click(static_cast<ControlId>(kDialogCancel));
  });
  open.user().Click(IDC_EMAIL_ADD);
  EXPECT_EQ(modal_scripts().waiting(), 0U);
}

TEST_F(HandbookPictures, AConflictShowsBothValues) {
  OpenSheet& open = OpenOne();
  Retype(IDC_QUOTA_HARD, "2000");
  ModifyEntry(file(),
              std::string("dn: ") + kBirgit +
                  "\nchangetype: modify\nreplace: peloraQuotaHard\npeloraQuotaHard: 1700\n");
  Await("conflicts", "state-conflict", [](QWidget& window) {
    EXPECT_EQ(Part<QTableView>(window, "conflicts_table").model()->rowCount(), 1);
  });
  open.ClickApply();
  EXPECT_EQ(modal_scripts().waiting(), 0U);
}

TEST_F(HandbookPictures, AFailureIsOneBox) {
  OpenSheet& open = OpenOne();
  Retype(IDC_QUOTA_HARD, "2000");
  store().FailChange(1, kNoRight);
  modal_scripts().Add([](QWidget& window) {
    auto& box = dynamic_cast<QMessageBox&>(window);
    EXPECT_THAT(box.informativeText().toStdString(), HasSubstr("You may not change this."));
    for (QAbstractButton* const button : box.buttons()) {
      if (box.buttonRole(button) == QMessageBox::ActionRole) button->click();
    }
    KeepPicture(window, "state-failure");
    window.close();
  });
  open.ClickApply();
  EXPECT_EQ(modal_scripts().waiting(), 0U);
}

TEST_F(HandbookPictures, WhatOneMayNotChangeIsGrey) {
  RightsStore rights(*session().store, {"peloraHidden", "peloraQuotaHard"});
  Give(kBirgit, {{"peloraQuotaOverride", "1"},
                 {"peloraQuotaHard", "1500"},
                 {"mail", "birgit.kraemer@linden-werke.example"}});
  const OpenSheet& open = OpenFor({kBirgit}, &rights);
  EXPECT_FALSE(open.dialog().Find(IDC_EMAIL_ADD)->widget().isEnabled());
  Look("state-read-only");
}

TEST_F(HandbookPictures, WritingSaysHowFarItIs) {
  console::ErrandDialog errand(QStringLiteral("Writing the changes of 5000 objects..."), nullptr);
  constexpr qint64 kPassed = 31'000;
  errand.ShowProgress(1200, 5000, kPassed);
  errand.show();
  EXPECT_THAT(FaultsOfSight(errand), IsEmpty());
  KeepPicture(errand, "state-writing");
}

TEST_F(HandbookPictures, InTheDarkAndFromRightToLeft) {
  const auto look = [this](const std::string& name) {
    OpenSheet& open = OpenThree();
    Retype(IDC_QUOTA_WARN, "5000");
    Retype(IDC_QUOTA_SOFT, "12abc");
    EXPECT_FALSE(open.IsOkEnabled());
    Look(name);
  };
  {
    const DarkTheme dark;
    look("state-dark");
  }
  QGuiApplication::setLayoutDirection(Qt::RightToLeft);
  look("state-right-to-left");
  QGuiApplication::setLayoutDirection(Qt::LeftToRight);
  look("state-typed");
}

}  // namespace
}  // namespace pelora::test
