// SPDX-License-Identifier: Apache-2.0
// An allocation of the console's own code fails, whichever, while somebody works with its windows:
// the program goes on, what was typed is there, and what failed can be done again.
#include <gmock/gmock.h>

#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <iostream>
#include <memory>
#include <new>
#include <span>

#include "hosts/console/sheets/sheet_windows.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "resources/resource.h"
#include "tests/contract/dialog_contract_qt_player.h"
#include "tests/harness/failing_allocator.h"
#include "tests/support/long_form.h"
#include "tests/ui/code_of_ours.h"
#include "tests/ui/console_test.h"

namespace pelora::test {
namespace {

using pelora::testing::FailingAllocations;

/// The first, wherever it is: which of the others is met depends on what else is under way, and
/// some of the toolkit's own containers, which are compiled with our code, cannot bear it.
constexpr std::size_t kTriedInShort = 1;
constexpr int kPatience = 60000;

bool IsOurs(const void* code) {
  static const CodeOfOurs ours;
  return ours.Has(code);
}

/// Closes every box and every question that comes up, and counts them.
class OneWhoConfirms {
 public:
  OneWhoConfirms() {
    QObject::connect(&glance_, &QTimer::timeout, [this] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      ++boxes_;
      box->done(QMessageBox::Ok);
    });
    glance_.start(1);
  }
  /// Since the last call.
  [[nodiscard]] int TakeBoxes() { return std::exchange(boxes_, 0); }

 private:
  QTimer glance_;
  int boxes_ = 0;
};

/// What stands below a sheet goes when its window goes, and before that the sheet has to: whichever
/// allocation fails until it is shown.
TEST(SheetMemory, ASheetThatCannotBeShownDoesNotStay) {
  (void)IsOurs(nullptr);
  const auto module = resources::ResourceFile::Read(resources::EmbeddedResourceBytes());
  QWidget owner;
  session::DirectoryObject object;
  object.dn = kBirgit;
  std::size_t gone = 0;
  for (bool is_gone = true; is_gone; gone += is_gone ? 1 : 0) {
    console::SheetWindows windows;
    auto made = std::make_unique<console::QtPropertySheet>(*module.value, QString(), &owner);
    const QPointer<console::QtPropertySheet> sheet = made.get();
    try {
      const FailingAllocations failing(gone + 1, &IsOurs);
      windows.Show(std::move(made), std::span(&object, 1));
    } catch (const std::bad_alloc&) {
      // What is left of it is looked at below.
    }
    is_gone = sheet.isNull();
  }
  // The object's name twice, the sheet's place among the open ones, the objects for its end.
  EXPECT_GE(gone, 4U);
}

class WindowMemory : public ::testing::Test {
 protected:
  WindowMemory() {
    (void)IsOurs(nullptr);
    // What is kept for the user is kept for the test alone.
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString(file_.File("data")));
    session::SessionResult opened = session::OpenDirectoryFile(file_.path());
    objects_.resize(1);
    EXPECT_TRUE(
        session::DirectoryBrowser(*opened.session->store).ReadObject(kBirgit, objects_[0]).Ok());
    EXPECT_TRUE(window_.SetSession(std::move(opened.session)));
    window_.show();
    Settle();
  }

  /// Until nothing is read and nothing modal is left.
  void Settle() {
    const auto is_still = [this] {
      return !window_.IsReading() && QApplication::activeModalWidget() == nullptr;
    };
    EXPECT_TRUE(QTest::qWaitFor(is_still, kPatience));
    QCoreApplication::processEvents();
  }

  /// Does something within an event, as everything is done.
  void Do(const std::function<void()>& action) {
    QMetaObject::invokeMethod(&window_, action, Qt::QueuedConnection);
    QCoreApplication::processEvents();
  }
  /// The same while an allocation fails; how many there were.
  std::size_t DoFailing(std::size_t allocation, const std::function<void()>& action) {
    QMetaObject::invokeMethod(&window_, action, Qt::QueuedConnection);
    const FailingAllocations failing(allocation, &IsOurs);
    QCoreApplication::processEvents();
    return FailingAllocations::count();
  }
  /// Some of the allocations that an action makes, or all.
  [[nodiscard]] static std::vector<std::size_t> Tried(std::size_t allocations) {
    const std::size_t wanted = std::min(pelora::testing::RoundsOr(kTriedInShort), allocations);
    std::vector<std::size_t> tried;
    for (std::size_t at = 0; at < wanted; ++at) tried.push_back(at * allocations / wanted + 1);
    return tried;
  }
  static void Tell(const char* where, std::size_t failed) {
    std::cout << "allocations failed and survived: " << failed << " (" << where << ")\n";
  }

  [[nodiscard]] console::QtPropertySheet* Sheet() const {
    const QList<console::QtPropertySheet*> open = window_.sheets().Open();
    return open.isEmpty() ? nullptr : open.back();
  }
  void OpenSheet() {
    Do([this] { window_.ShowProperties(objects_); });
    Settle();
    ASSERT_NE(Sheet(), nullptr);
  }
  void CloseSheet() {
    Do([this] { window_.sheets().Open().back()->done(QDialog::Rejected); });
    Settle();
  }
  [[nodiscard]] EntryLines Stored() const { return SearchEntry(file_.path(), kBirgit); }
  [[nodiscard]] static bool Has(const EntryLines& entry, const char* line) {
    return std::ranges::find(entry, line) != entry.end();
  }
  static void ClickApply(console::QtPropertySheet& sheet) {
    QTest::mouseClick(&sheet.ApplyButton(), Qt::LeftButton);
  }

  pelora::testing::SampleFile file_;
  const resources::ReadResult<resources::ResourceFile> module_ =
      resources::ResourceFile::Read(resources::EmbeddedResourceBytes());
  OneWhoConfirms person_;
  console::MainWindow window_{*module_.value};
  std::vector<session::DirectoryObject> objects_;
};

TEST_F(WindowMemory, WhatWasTypedIsThereAndCanBeApplied) {
  std::vector<std::size_t> tried = {0};
  for (std::size_t at = 0; at < tried.size(); ++at) {
    SCOPED_TRACE("allocation " + std::to_string(tried[at]));
    OpenSheet();
    if (HasFatalFailure()) return;
    contract::QtPlayer user(*Sheet());
    if (!Has(Stored(), "peloraQuotaOverride: 1")) user.Click(IDC_QUOTA_OVERRIDE);
    const std::string typed = std::to_string(1000 + at);
    const std::string written = "peloraQuotaWarn: " + typed;
    user.Erase(IDC_QUOTA_WARN);
    user.Type(IDC_QUOTA_WARN, typed);
    const std::size_t count = DoFailing(tried[at], [this] { ClickApply(*Sheet()); });
    Settle();
    if (at == 0) {
      const auto some = Tried(count);
      tried.insert(tried.end(), some.begin(), some.end());
    }
    ASSERT_NE(Sheet(), nullptr);
    EXPECT_EQ(user.TextOf(IDC_QUOTA_WARN), typed);
    if (!Has(Stored(), written.c_str())) {
      EXPECT_TRUE(Sheet()->ApplyButton().isEnabled());
      Do([this] { ClickApply(*Sheet()); });
      Settle();
    }
    EXPECT_TRUE(Has(Stored(), written.c_str()));
    CloseSheet();
    if (HasFailure()) return;
  }
  Tell("a sheet is applied", tried.size() - 1);
}

TEST_F(WindowMemory, PropertiesThatCouldNotBeShownCanBeOpenedThen) {
  std::vector<std::size_t> tried = {0};
  for (std::size_t at = 0; at < tried.size(); ++at) {
    SCOPED_TRACE("allocation " + std::to_string(tried[at]));
    (void)person_.TakeBoxes();
    const std::size_t count = DoFailing(tried[at], [this] { window_.ShowProperties(objects_); });
    Settle();
    if (at == 0) {
      const auto some = Tried(count);
      tried.insert(tried.end(), some.begin(), some.end());
    }
    // What is not shown is told.
    EXPECT_TRUE(Sheet() != nullptr || person_.TakeBoxes() > 0);
    while (Sheet() != nullptr) CloseSheet();
    OpenSheet();
    if (HasFatalFailure()) return;
    contract::QtPlayer user(*Sheet());
    EXPECT_TRUE(user.CanUse(IDC_PELORA_HIDDEN));
    CloseSheet();
    if (HasFailure()) return;
  }
  Tell("properties are opened", tried.size() - 1);
}

TEST_F(WindowMemory, AListThatCouldNotBeReadCanBeReadThen) {
  const auto rows = [this] { return window_.pane().list().view().model()->rowCount(); };
  const int whole = rows();
  ASSERT_GT(whole, 0);
  std::vector<std::size_t> tried = {0};
  for (std::size_t at = 0; at < tried.size(); ++at) {
    SCOPED_TRACE("allocation " + std::to_string(tried[at]));
    (void)person_.TakeBoxes();
    QMetaObject::invokeMethod(
        &window_, [this] { window_.pane().RefreshList(); }, Qt::QueuedConnection);
    std::size_t count = 0;
    {
      const FailingAllocations failing(tried[at], &IsOurs);
      QCoreApplication::processEvents();
      const auto is_read = [this] { return !window_.IsReading(); };
      EXPECT_TRUE(QTest::qWaitFor(is_read, kPatience));
      count = FailingAllocations::count();
    }
    Settle();
    if (at == 0) {
      const auto some = Tried(count);
      tried.insert(tried.end(), some.begin(), some.end());
    }
    EXPECT_TRUE(rows() == whole || person_.TakeBoxes() > 0) << rows();
    Do([this] { window_.pane().RefreshList(); });
    Settle();
    EXPECT_EQ(rows(), whole);
    if (HasFailure()) return;
  }
  Tell("a list is read", tried.size() - 1);
}

TEST(ErrandMemory, WhatIsUnderWayIsWaitedForWhateverFails) {
  (void)IsOurs(nullptr);
  OneWhoConfirms person;
  std::vector<std::size_t> tried = {0};
  for (std::size_t at = 0; at < tried.size(); ++at) {
    SCOPED_TRACE("allocation " + std::to_string(tried[at]));
    console::QtErrands errands(
        {.still = std::chrono::milliseconds(0), .silent = std::chrono::milliseconds(0)});
    bool is_done = false;
    bool has_begun = true;
    {
      const FailingAllocations failing(tried[at], &IsOurs);
      try {
        // Long enough to be shown; what is tried holds for any time.
        errands.Run("Writing...", [&is_done](session::IErrand&) {
          std::this_thread::sleep_for(std::chrono::milliseconds(20));
          is_done = true;
        });
      } catch (const std::bad_alloc&) {
        has_begun = false;
      }
      if (at == 0) {
        for (std::size_t one = 1; one <= FailingAllocations::count(); ++one) tried.push_back(one);
      }
    }
    EXPECT_EQ(is_done, has_begun);
    EXPECT_FALSE(errands.IsRunning());
  }
  EXPECT_GT(tried.size(), 1U);
  std::cout << "allocations failed and survived: " << tried.size() - 1 << " (an errand)\n";
}

}  // namespace
}  // namespace pelora::test
