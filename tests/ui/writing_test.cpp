// SPDX-License-Identifier: Apache-2.0
// What is asked and told around the writing of a sheet.
#include <gmock/gmock.h>

#include <QFile>

#include "hosts/console/writing/conflict_dialog.h"
#include "hosts/console/writing/result_dialog.h"
#include "tests/ui/writing_sheet.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

const ldap::StoreStatus kNoRight{50, "no right to do that"};
const ldap::StoreStatus kBroken{80, "the disk is full"};

/// Somebody else gives an attribute a value.
void Replace(const std::string& file, const char* dn, const std::string& attribute,
             const std::string& value) {
  ModifyEntry(file, std::string("dn: ") + dn + "\nchangetype: modify\nreplace: " + attribute +
                        "\n" + attribute + ": " + value + "\n");
}

TEST_F(WritingSheet, ChangesOfSeveralObjectsAreLookedAtFirst) {
  OpenSheet& open = Open({kBirgit, kRolf});
  open.user().Click(IDC_PELORA_HIDDEN);
  In("review", [&](QWidget& window) {
    EXPECT_THAT(RowsOf(Part<QTableView>(window, "review_table")),
                ElementsAre("Birgit Krämer|Hide from addressbook|not set|yes",
                            "Rolf Uhlig|Hide from addressbook|not set|yes"));
    EXPECT_FALSE(IsHidden(kBirgit)) << "nothing is written before";
    window.findChild<QTabWidget*>()->setCurrentIndex(1);
    const std::string ldif = ToUtf8(Part<QPlainTextEdit>(window, "review_ldif").toPlainText());
    EXPECT_THAT(ldif, HasSubstr("changetype: modify"));
    EXPECT_THAT(ldif, HasSubstr("add: peloraHidden"));
    EXPECT_THAT(ldif, HasSubstr("dn: CN=Rolf Uhlig,"));
    Part<QPushButton>(window, "review_write").click();
  });
  In("results", [](QWidget& window) {
    EXPECT_EQ(Part<QLabel>(window, "results_summary").text(),
              QStringLiteral("Everything was done: 2 written."));
    EXPECT_FALSE(Part<QPushButton>(window, "results_retry").isEnabled());
  });
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_TRUE(IsHidden(kBirgit));
  EXPECT_TRUE(IsHidden(kRolf));
}

TEST_F(WritingSheet, WhatIsTakenOutIsNotWrittenAndForgotten) {
  OpenSheet& open = Open({kBirgit, kRolf});
  open.user().Click(IDC_PELORA_HIDDEN);
  In("review", [](QWidget& window) {
    QAbstractItemModel& model = *Part<QTableView>(window, "review_table").model();
    EXPECT_TRUE(model.setData(model.index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_EQ(Part<QPushButton>(window, "review_write").text(), QStringLiteral("&Write 1 Object"));
    window.findChild<QTabWidget*>()->setCurrentIndex(1);
    EXPECT_THAT(ToUtf8(Part<QPlainTextEdit>(window, "review_ldif").toPlainText()),
                Not(HasSubstr("Birgit")));
    EXPECT_TRUE(model.setData(model.index(1, 0), Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_FALSE(Part<QPushButton>(window, "review_write").isEnabled()) << "nothing is left";
    EXPECT_TRUE(model.setData(model.index(1, 0), Qt::Checked, Qt::CheckStateRole));
    Part<QPushButton>(window, "review_write").click();
  });
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_FALSE(IsHidden(kBirgit));
  EXPECT_TRUE(IsHidden(kRolf));
}

TEST_F(WritingSheet, WhoGoesBackHasWrittenNothingAndLostNothing) {
  OpenSheet& open = Open({kBirgit, kRolf});
  open.user().Click(IDC_PELORA_HIDDEN);
  In("review", [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  open.ClickOk();
  EXPECT_TRUE(open.IsOpen());
  EXPECT_TRUE(open.IsApplyEnabled());
  EXPECT_THAT(store().changed, IsEmpty());
  Write();
  In("results", [](QWidget&) {});
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_TRUE(IsHidden(kBirgit));
}

TEST_F(WritingSheet, ASingleObjectIsLookedAtOnDemand) {
  OpenSheet& open = Open({kBirgit});
  open.user().Click(IDC_PELORA_HIDDEN);
  open.ClickApply();
  EXPECT_TRUE(IsHidden(kBirgit));
  desk().reviews_everything = true;
  open.user().Click(IDC_PELORA_HIDDEN);
  In("review", [](QWidget& window) {
    EXPECT_THAT(RowsOf(Part<QTableView>(window, "review_table")),
                ElementsAre("Birgit Krämer|Hide from addressbook|yes|no"));
    QTest::keyClick(&window, Qt::Key_Return);
  });
  open.ClickApply();
  EXPECT_FALSE(IsHidden(kBirgit));
}

TEST_F(WritingSheet, WhatCouldNotBeWrittenIsShownAndTriedAgain) {
  OpenSheet& open = Open({kAnna, kBirgit, kRolf});
  open.user().Click(IDC_PELORA_HIDDEN);
  store().FailChange(2, kNoRight);
  Write();
  In("results", [&](QWidget& window) {
    EXPECT_EQ(Part<QLabel>(window, "results_summary").text(),
              QStringLiteral("Not everything was done: 2 written, 1 failed."));
    const auto& table = Part<QTableView>(window, "results_table");
    EXPECT_THAT(RowsOf(table), ElementsAre(StartsWith("failed|Birgit Krämer|You may not change")));
    EXPECT_THAT(ToUtf8(Part<QPlainTextEdit>(window, "results_reason").toPlainText()),
                HasSubstr("The directory says: no right to do that"));
    Part<QCheckBox>(window, "results_only_left").click();
    EXPECT_EQ(table.model()->rowCount(), 3);
    Part<QPushButton>(window, "results_retry").click();
  });
  In("results", [&](QWidget& window) {
    EXPECT_EQ(Part<QLabel>(window, "results_summary").text(),
              QStringLiteral("Everything was done: 3 written."));
  });
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_THAT(store().changed, ElementsAre(kAnna, kBirgit, kRolf, kBirgit)) << "nothing twice";
  EXPECT_TRUE(IsHidden(kBirgit));
}

/// At the review: takes the object of a name out, and writes the rest.
void LeaveOut(QWidget& review, const char* name) {
  QAbstractItemModel& model = *Part<QTableView>(review, "review_table").model();
  const QModelIndexList rows =
      model.match(model.index(0, 0), Qt::DisplayRole, QString::fromUtf8(name), 1, Qt::MatchExactly);
  ASSERT_EQ(rows.size(), 1) << name;
  EXPECT_TRUE(model.setData(rows.front(), Qt::Unchecked, Qt::CheckStateRole));
  Part<QPushButton>(review, "review_write").click();
}

TEST_F(WritingSheet, WhoWasTakenOutStaysOutThoughOthersAreTriedAgain) {
  OpenSheet& open = Open({kAnna, kBirgit, kRolf});
  desk().reviews_everything = true;
  open.user().Click(IDC_PELORA_HIDDEN);
  In("review", [](QWidget& window) { LeaveOut(window, "Birgit Krämer"); });
  In("results", [](QWidget&) {});
  store().FailChange(2, kNoRight);
  open.ClickApply();
  ASSERT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_FALSE(IsHidden(kRolf));
  In("review", [](QWidget& window) {
    EXPECT_THAT(RowsOf(Part<QTableView>(window, "review_table")),
                ElementsAre(StartsWith("Rolf Uhlig|")));
    Part<QPushButton>(window, "review_write").click();
  });
  open.ClickApply();
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_TRUE(IsHidden(kRolf));
  EXPECT_FALSE(IsHidden(kBirgit));
}

TEST_F(WritingSheet, WhoWasTakenOutComesAgainWhenTheFieldIsEditedOnceMore) {
  OpenSheet& open = Open({kAnna, kBirgit, kRolf});
  open.user().Click(IDC_PELORA_HIDDEN);
  In("review", [](QWidget& window) { LeaveOut(window, "Birgit Krämer"); });
  In("results", [](QWidget&) {});
  store().FailChange(2, kNoRight);
  open.ClickApply();
  ASSERT_EQ(modal_scripts().waiting(), 0U);
  // Back and forth: it says what it did before, and is meant for all of them.
  open.user().Click(IDC_PELORA_HIDDEN);
  open.user().Click(IDC_PELORA_HIDDEN);
  Write();
  In("results", [](QWidget& window) {
    EXPECT_EQ(Part<QLabel>(window, "results_summary").text(),
              QStringLiteral("Everything was done: 2 written."));
  });
  open.ClickApply();
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_TRUE(IsHidden(kRolf));
  EXPECT_TRUE(IsHidden(kBirgit));
}

TEST_F(WritingSheet, WhatIsLeftStaysInTheSheet) {
  OpenSheet& open = Open({kAnna, kBirgit});
  open.user().Click(IDC_PELORA_HIDDEN);
  store().FailChange(1, kNoRight);
  Write();
  In("results", [](QWidget&) {});
  open.ClickOk();
  EXPECT_TRUE(open.IsOpen());
  EXPECT_TRUE(open.sheet().HasUnsavedEdits());
  store().changed.clear();
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_THAT(store().changed, ElementsAre(kAnna)) << "one is left, and needs no table";
}

TEST_F(WritingSheet, AReportHasOneResultALine) {
  const std::vector<session::WrittenChange> results = {
      {.name = "Ada",
       .result = {.dn = "CN=Ada,DC=x", .outcome = changes::Outcome::kChanged},
       .reason = {}},
      {.name = "Bob",
       .result = changes::NotDone("CN=Bob,DC=x", {50, "no \"right\""}),
       .reason = "You may not"}};
  const console::ResultDialog dialog(results, nullptr);
  const QString path = console::ToQString(folder().File("report.json"));
  EXPECT_EQ(dialog.WriteReport(path), QString());
  QFile report(path);
  ASSERT_TRUE(report.open(QIODevice::ReadOnly));
  EXPECT_EQ(report.readAll().toStdString(),
            R"({"result":"changed","dn":"CN=Ada,DC=x","message":null,"code":null})"
            "\n"
            R"({"result":"failed","dn":"CN=Bob,DC=x","message":"no \"right\"","code":"0X80070005"})"
            "\n");
  EXPECT_THAT(ToUtf8(dialog.WriteReport(QStringLiteral("/no/such/folder/report"))),
              StartsWith("The report cannot be written: "));
}

TEST_F(WritingSheet, AFailureIsToldInWordsWithItsCodeInTheDetails) {
  OpenSheet& open = Open({kBirgit});
  open.user().Click(IDC_PELORA_HIDDEN);
  store().FailChange(1, kNoRight);
  In("write_failure", [](QWidget& window) {
    const auto& box = dynamic_cast<QMessageBox&>(window);
    EXPECT_EQ(box.text(), QStringLiteral("The changes of Birgit Krämer were not written."));
    EXPECT_EQ(
        ToUtf8(box.informativeText()),
        "You may not change this. What you typed is kept here: get the right to change it and "
        "apply again.");
    EXPECT_EQ(ToUtf8(box.detailedText()),
              std::string("Code: 0X80070005\nObject: ") + kBirgit +
                  "\nFields: Hide from addressbook\nThe directory says: no right to do that");
  });
  open.ClickApply();
  EXPECT_TRUE(open.IsApplyEnabled());

  store().FailChange(1, kBroken);
  In("write_failure", [](QWidget& window) {
    EXPECT_EQ(
        ToUtf8(dynamic_cast<QMessageBox&>(window).informativeText()),
        "The directory refuses it: the disk is full. What you typed is kept here: apply again "
        "when the cause is gone.");
  });
  open.ClickApply();
  store().FailChange(1, {-5, "no answer"}, true);
  In("write_failure", [](QWidget& window) {
    EXPECT_EQ(ToUtf8(dynamic_cast<QMessageBox&>(window).text()),
              "It is not known whether the changes of Birgit Krämer were written.");
  });
  open.ClickApply();
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_TRUE(IsHidden(kBirgit));
}

class ConflictSheet : public WritingSheet {
 protected:
  /// A quota is typed while somebody else sets another one.
  [[nodiscard]] OpenSheet& OpenWithConflict() {
    for (const auto& [attribute, value] :
         {std::pair("peloraQuotaOverride", "1"), std::pair("peloraQuotaHard", "500")}) {
      Replace(file(), kBirgit, attribute, value);
    }
    OpenSheet& open = Open({kBirgit});
    open.user().Erase(IDC_QUOTA_HARD);
    open.user().Type(IDC_QUOTA_HARD, "600");
    open.user().Click(IDC_PELORA_HIDDEN);
    Replace(file(), kBirgit, "peloraQuotaHard", "700");
    return open;
  }
  [[nodiscard]] bool Holds(const char* line) const {
    const EntryLines lines = SearchEntry(file(), kBirgit);
    return std::ranges::find(lines, line) != lines.end();
  }
};

TEST_F(ConflictSheet, TheirsIsKeptAndTheRestWritten) {
  OpenSheet& open = OpenWithConflict();
  In("conflicts", [](QWidget& window) {
    EXPECT_THAT(RowsOf(Part<QTableView>(window, "conflicts_table")),
                ElementsAre("Birgit Krämer|Hard limit|500|700|600|Keep theirs"));
    EXPECT_EQ(window.findChild<QComboBox*>()->currentText(), QStringLiteral("Keep theirs"));
    QTest::keyClick(&window, Qt::Key_Return);
  });
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_TRUE(Holds("peloraQuotaHard: 700"));
  EXPECT_TRUE(IsHidden(kBirgit));
}

TEST_F(ConflictSheet, MineIsWrittenOverTheirs) {
  OpenSheet& open = OpenWithConflict();
  In("conflicts", [](QWidget& window) {
    Part<QPushButton>(window, "conflicts_mine").click();
    QTest::keyClick(&window, Qt::Key_Return);
  });
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_TRUE(Holds("peloraQuotaHard: 600"));
  EXPECT_TRUE(IsHidden(kBirgit));
}

std::vector<session::ShownConflict> ManyConflicts(std::size_t count) {
  std::vector<session::ShownConflict> conflicts;
  for (std::size_t at = 0; at < count; ++at) {
    const std::string name = "User " + std::to_string(at);
    conflicts.push_back({.dn = "CN=" + name,
                         .name = name,
                         .attribute = at == 1 ? "otherMailbox" : "peloraQuotaHard",
                         .field = at == 1 ? "Addresses" : "Hard limit",
                         .seen = "1",
                         .there = "2",
                         .wanted = "3",
                         .is_list = at == 1});
  }
  return conflicts;
}

TEST(Conflicts, AreChosenOneByOneByTheKeyboard) {
  using enum session::ShownConflict::Choice;
  std::vector<session::ShownConflict> conflicts = ManyConflicts(3);
  console::ConflictDialog dialog(conflicts, nullptr);
  dialog.show();
  contract::Activate(dialog);
  auto& table = Part<QTableView>(dialog, "conflicts_table");
  ASSERT_EQ(QApplication::focusWidget(), &table);
  QTest::keyClick(&table, Qt::Key_Down);
  QTest::keyClick(&table, Qt::Key_Tab);
  auto* const choice = qobject_cast<QComboBox*>(QApplication::focusWidget());
  ASSERT_NE(choice, nullptr) << "the list of the row with the keyboard";
  EXPECT_EQ(ToUtf8(choice->accessibleName()), "What stays of Addresses of User 1");
  QTest::keyClick(choice, Qt::Key_End);
  EXPECT_EQ(ToUtf8(choice->currentText()), "Both") << "which lists offer alone";
  QTest::keyClick(choice, Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(QApplication::focusWidget(), &table);
  QTest::keyClick(&table, Qt::Key_Down);
  EXPECT_THAT(RowsOf(table),
              ElementsAre("User 0|Hard limit|1|2|3|Keep theirs", "User 1|Addresses|1|2|3|Both",
                          "User 2|Hard limit|1|2|3|Keep theirs"));
  EXPECT_EQ(conflicts[1].choice, kTheirs) << "nothing is decided yet";
  QTest::keyClick(&dialog, Qt::Key_Return);
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  EXPECT_EQ(conflicts[0].choice, kTheirs);
  EXPECT_EQ(conflicts[1].choice, kBoth);
  EXPECT_EQ(conflicts[2].choice, kTheirs);
}

TEST(Conflicts, OfThousandsHaveOneListAndAreChosenForAll) {
  std::vector<session::ShownConflict> conflicts = ManyConflicts(5000);
  console::ConflictDialog dialog(conflicts, nullptr);
  dialog.show();
  EXPECT_EQ(dialog.findChildren<QComboBox*>().size(), 1);
  auto& table = Part<QTableView>(dialog, "conflicts_table");
  table.setCurrentIndex(table.model()->index(4321, 0));
  Part<QPushButton>(dialog, "conflicts_mine").click();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  const auto lists = dialog.findChildren<QComboBox*>();
  ASSERT_EQ(lists.size(), 1);
  EXPECT_EQ(ToUtf8(lists.front()->currentText()), "Write mine");
  lists.front()->setCurrentIndex(0);
  dialog.accept();
  const auto theirs = std::ranges::count(conflicts, session::ShownConflict::Choice::kTheirs,
                                         &session::ShownConflict::choice);
  EXPECT_EQ(theirs, 1);
  EXPECT_EQ(conflicts[4321].choice, session::ShownConflict::Choice::kTheirs);
}

TEST_F(ConflictSheet, NothingIsDecidedByEscape) {
  OpenSheet& open = OpenWithConflict();
  for (int time = 0; time < 2; ++time) {
    In("conflicts", [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
    open.ClickOk();
    EXPECT_TRUE(open.IsOpen());
    EXPECT_TRUE(Holds("peloraQuotaHard: 700")) << "it is asked again, and nothing overwritten";
    EXPECT_FALSE(IsHidden(kBirgit));
  }
}

TEST_F(ConflictSheet, WhatWasKeptOfTheirsIsNotOverwrittenLater) {
  OpenSheet& open = OpenWithConflict();
  In("conflicts", [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Return); });
  open.ClickApply();
  EXPECT_TRUE(open.IsOpen());
  EXPECT_TRUE(Holds("peloraQuotaHard: 700"));
  open.user().Click(IDC_PELORA_HIDDEN);
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_TRUE(Holds("peloraQuotaHard: 700"));
  EXPECT_FALSE(IsHidden(kBirgit));
}

}  // namespace
}  // namespace pelora::test
