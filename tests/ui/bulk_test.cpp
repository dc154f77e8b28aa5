// SPDX-License-Identifier: Apache-2.0
// Many users changed at once, on a directory that is slow, refuses some, and is lost in between:
// the window lives on, what is told is right, trying again finishes it, and it can be taken back.
#include <gmock/gmock.h>

#include <QHeaderView>
#include <QLineEdit>
#include <iostream>
#include <optional>
#include <thread>

#include "hosts/console/errands/qt_errands.h"
#include "hosts/console/writing/conflict_dialog.h"
#include "hosts/console/writing/history_desk.h"
#include "hosts/console/writing/result_dialog.h"
#include "hosts/console/writing/review_dialog.h"
#include "tests/support/long_form.h"
#include "tests/support/memory_store.h"
#include "tests/support/unwilling_store.h"
#include "tests/ui/turn_meter.h"
#include "tests/ui/writing_sheet.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using pelora::testing::MemoryStore;
using pelora::testing::UnwillingStore;

/// Every seventh change is refused, and the connection is lost once; one answer takes its time.
ldap::StoreStatus Refuse(int asked) {
  constexpr int kEvery = 7;
  constexpr int kStallsAt = 40;
  constexpr int kLostAt = 100;
  if (asked == kStallsAt) std::this_thread::sleep_for(std::chrono::milliseconds(1500));
  if (asked == kLostAt) return {-1, "the connection was lost"};
  if (asked % kEvery == 0) return {50, "no right"};
  return {};
}

/// What a test itself does with thousands of objects is nobody's waiting.
constexpr const char* kCounting = "";

class BulkSheet : public WritingSheet {
 protected:
  BulkSheet() {
    for (int number = 0; number < Count(); ++number) {
      const std::string name = "User " + std::to_string(number);
      ldap::Entry entry{
          .dn = "CN=" + name + "," + MemoryStore::kBase,
          .attributes = {{"objectClass", {"top", "person", "organizationalPerson", "user"}},
                         {"cn", {name}},
                         {"name", {name}},
                         {"mail", {"user" + std::to_string(number) + "@x.example"}}}};
      users.push_back(session::ObjectOf(entry));
      directory.Place(std::move(entry));
    }
  }
  [[nodiscard]] static int Count() { return static_cast<int>(pelora::testing::RoundsOr(300)); }
  [[nodiscard]] std::size_t HiddenCount() const {
    return static_cast<std::size_t>(
        std::ranges::count_if(users, [this](const session::DirectoryObject& user) {
          return directory.Stored(user.dn).contains("peloraHidden");
        }));
  }

  /// Whether the last user's change stands in the LDIF.
  [[nodiscard]] static bool IsWhole(const QPlainTextEdit& ldif) {
    return ldif.toPlainText().contains(QStringLiteral("CN=User %1,").arg(Count() - 1));
  }

  MemoryStore directory;
  std::vector<session::DirectoryObject> users;
};

TEST_F(BulkSheet, AllOfItIsDoneInTheEndAndCanBeTakenBack) {
  const MemoryStore::Entries before = directory.entries();
  UnwillingStore store(directory, Refuse);
  console::QtErrands errands({.silent = std::chrono::milliseconds(1000)});
  session::ChangeHistory history(folder().File("changes"), "x", store.schema());
  TurnMeter meter;
  // What takes its time on a slow machine only is waited for without a word.
  std::optional<contract::PassedOver> errands_unseen(std::in_place);

  meter.Enter("opening");
  OpenSheet open(
      session(), module(), users,
      SheetFaults{.store = &store, .desk = &desk(), .errands = &errands, .history = &history});
  meter.Enter("editing");
  open.user().Click(IDC_PELORA_HIDDEN);
  open.user().Click(IDC_QUOTA_OVERRIDE);
  open.user().Type(IDC_QUOTA_HARD, "70");
  In("review", [&](QWidget& window) {
    EXPECT_EQ(Part<QTableView>(window, "review_table").model()->rowCount(), 3 * Count());
    meter.Enter("LDIF");
    window.findChild<QTabWidget*>()->setCurrentIndex(1);
    const auto& ldif = Part<QPlainTextEdit>(window, "review_ldif");
    EXPECT_TRUE(QTest::qWaitFor([&] { return IsWhole(ldif); }, 60000));
    meter.Enter("writing");
    errands_unseen.reset();
    Part<QPushButton>(window, "review_write").click();
  });
  // The stalling is long enough to be told of.
  In("errand", [&](QWidget& window) {
    const int begin = meter.turns();
    EXPECT_TRUE(QTest::qWaitFor([&] { return meter.turns() > begin + 20 || !window.isVisible(); }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isVisible(); }, 20000));
  });
  In("results", [&](QWidget& window) {
    meter.Enter(kCounting);
    // Up to the hundredth every seventh was refused; there the connection was lost.
    EXPECT_EQ(ToUtf8(Part<QLabel>(window, "results_summary").text()),
              "Not everything was done: 85 written, 15 failed, " + std::to_string(Count() - 100) +
                  " not begun.");
    EXPECT_EQ(HiddenCount(), 85U);
    store.Mend();
    errands_unseen.emplace();
    meter.Enter("writing once more");
    Part<QPushButton>(window, "results_retry").click();
  });
  In("results", [&](QWidget& window) {
    EXPECT_EQ(ToUtf8(Part<QLabel>(window, "results_summary").text()),
              "Everything was done: " + std::to_string(Count()) + " written.");
    meter.Enter("closing");
  });
  meter.Enter("looking at changes");
  open.ClickOk();
  meter.Enter(kCounting);
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_FALSE(open.IsOpen());
  EXPECT_EQ(HiddenCount(), users.size());
  EXPECT_GT(meter.turns(), 50);

  meter.Enter("letting go of the sheet");
  open.Destroy();
  meter.Enter("taking back");
  QWidget window;
  console::HistoryDesk history_desk(window, errands);
  history_desk.SetDirectory(&history, &store);
  std::string told;
  history_desk.on_told = [&told](const QString& text) { told = ToUtf8(text); };
  history_desk.on_written = [] {};
  history_desk.UndoLast();
  meter.Enter(kCounting);
  EXPECT_THAT(told, ::testing::StartsWith("Taken back: User 0, User 1, User 2 and " +
                                          std::to_string(Count() - 3) + " more ("));
  EXPECT_EQ(directory.entries(), before);
  // On a machine that has nothing else to do, and for which the long form is meant.
  constexpr qint64 kLimit = 50;
  const bool is_long_form = pelora::testing::RoundsOr(0) != 0;
  if (is_long_form) {
    EXPECT_LE(meter.longest_at_work(), kLimit) << meter.Text();
  }
  std::cout << "bulk: " << Count() << " users, the window answered within " << meter.longest()
            << " ms (" << meter.Text() << ")\n";
}

TEST_F(BulkSheet, NoColumnIsMeasuredByItsRows) {
  session::Review review;
  std::vector<session::WrittenChange> results;
  std::vector<session::ShownConflict> conflicts;
  for (const session::DirectoryObject& user : users) {
    review.changes.push_back({.dn = user.dn, .name = user.name, .fields = {{"a", "A", "0", "1"}}});
    results.push_back({.name = user.name, .result = {.dn = user.dn}, .reason = "why"});
    conflicts.emplace_back().name = user.name;
  }
  const console::ReviewDialog review_dialog(review, nullptr);
  const console::ResultDialog result_dialog(results, nullptr);
  const console::ConflictDialog conflict_dialog(conflicts, nullptr);
  for (const QDialog* const dialog :
       {static_cast<const QDialog*>(&review_dialog), static_cast<const QDialog*>(&result_dialog),
        static_cast<const QDialog*>(&conflict_dialog)}) {
    const auto& table = *dialog->findChild<QTableView*>();
    for (int column = 0; column < table.model()->columnCount(); ++column) {
      EXPECT_NE(table.horizontalHeader()->sectionResizeMode(column), QHeaderView::ResizeToContents)
          << ToUtf8(dialog->objectName()) << " " << column;
    }
  }
}

/// Counts how often it is asked what an object has.
int& CountSeen(session::PageFields& fields, int& count) {
  fields.seen = [&count, seen = fields.seen](const session::DirectoryObject& object,
                                             std::string_view attribute) {
    ++count;
    return seen(object, attribute);
  };
  return count;
}

TEST_F(BulkSheet, AKeyAsksNoneOfThemWhatTheyHave) {
  OpenSheet open(session(), module(), users, SheetFaults{.store = &directory, .desk = &desk()});
  int asked = 0;
  CountSeen(open.fields().tabs().Fields(0), asked);
  open.user().Click(IDC_PELORA_HIDDEN);
  open.user().Click(IDC_QUOTA_OVERRIDE);
  open.user().Type(IDC_QUOTA_HARD, "70");
  EXPECT_TRUE(open.IsApplyEnabled());
  QTest::keyClick(&open.sheet(), Qt::Key_Tab);
  EXPECT_EQ(asked, 0);
}

TEST_F(BulkSheet, TheLdifOfManyComesInTurns) {
  session::Review review;
  std::size_t made = 0;
  for (const session::DirectoryObject& user : users) {
    review.changes.push_back({.dn = user.dn, .name = user.name, .fields = {{"a", "A", "0", "1"}}});
  }
  review.ldif_of = [&](std::size_t at) {
    ++made;
    return "dn: " + review.changes[at].dn + "\n\n";
  };
  review.changes.front().is_wanted = false;
  console::ReviewDialog dialog(review, nullptr);
  dialog.show();
  dialog.findChild<QTabWidget*>()->setCurrentIndex(1);
  EXPECT_EQ(made, console::ReviewDialog::kLdifAtOnce);
  QCoreApplication::processEvents();
  EXPECT_LE(made, 2 * console::ReviewDialog::kLdifAtOnce) << "one turn of events";
  const auto& ldif = Part<QPlainTextEdit>(dialog, "review_ldif");
  EXPECT_TRUE(QTest::qWaitFor([&] { return IsWhole(ldif); }));
  EXPECT_EQ(made, users.size() - 1);
  EXPECT_FALSE(ldif.toPlainText().contains(QStringLiteral("CN=User 0,")));
  EXPECT_TRUE(ldif.toPlainText().startsWith(QStringLiteral("dn: CN=User 1,")));
}

}  // namespace
}  // namespace pelora::test
