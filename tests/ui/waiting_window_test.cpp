// SPDX-License-Identifier: Apache-2.0
// The main window over a directory that takes its time: opening and applying go on beside it, can
// be stopped, and a directory that does not answer is told of in words.
#include <gmock/gmock.h>

#include <QAction>
#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <optional>
#include <thread>

#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "hosts/ldap/ldb_store.h"
#include "resources/resource.h"
#include "tests/support/observed_store.h"
#include "tests/support/stalling_store.h"
#include "tests/ui/console_test.h"

namespace pelora::test {
namespace {

using console::MainWindow;
using console::ToUtf8;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr int kPatience = 20000;

class WaitingWindow : public ConsoleTest {
 protected:
  WaitingWindow() {
    std::unique_ptr<ldap::IDirectoryStore> file_store;
    if (!ldap::OpenLdbStore(file(), {}, file_store).Ok()) throw std::runtime_error(file());
    file_store_ = std::move(file_store);
    asked_.emplace(*file_store_);
    auto stalling = std::make_unique<pelora::testing::StallingStore>(*asked_);
    store_ = stalling.get();
    objects_ = Objects({kBirgit});
    window_ = std::make_unique<MainWindow>(module());
    ldap::StoreOpener opener = session().open_another;
    if (!window_->SetSession(std::make_unique<session::DirectorySession>(
            "slow", std::move(stalling), std::move(opener)))) {
      throw std::runtime_error("no session");
    }
    window_->show();
    if (!QTest::qWaitFor([this] { return !window_->IsReading(); }, kPatience)) {
      throw std::runtime_error("still reading");
    }
    QObject::connect(&turns_, &QTimer::timeout, [this] { ++turn_count_; });
    turns_.start(1);
  }
  ~WaitingWindow() override {
    if (store_ != nullptr) store_->LetGo();
    window_.reset();
  }

  [[nodiscard]] pelora::testing::StallingStore& store() { return *store_; }
  [[nodiscard]] MainWindow& window() { return *window_; }
  [[nodiscard]] console::QtPropertySheet* sheet() {
    const auto open = window_->sheets().Open();
    return open.isEmpty() ? nullptr : open.front();
  }
  void ShowBirgit() { window_->ShowProperties(objects_); }
  void Hide() {
    auto* box = sheet()->Dialog(0)->Find(IDC_PELORA_HIDDEN);
    ASSERT_NE(box, nullptr);
    box->Click();
  }
  void Press(QDialogButtonBox::StandardButton button) {
    QTest::mouseClick(sheet()->findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
  }
  /// Shows the same directory as that of a server, which does not stall.
  void ShowAsServer() {
    auto& directory = static_cast<ldap::IDirectoryStore&>(*asked_);
    auto server = std::make_unique<session::DirectorySession>(
        "server", std::make_unique<ldap::ForwardingStore>(directory), session().open_another);
    server->is_file = false;
    ASSERT_TRUE(window_->SetSession(std::move(server)));
    store_ = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([this] { return !window_->IsReading(); }, kPatience));
  }
  [[nodiscard]] int turn_count() const { return turn_count_; }
  /// How often it was asked what the directory says of itself.
  [[nodiscard]] auto RootsRead() const { return std::ranges::count(asked_->log, "read root"); }

  /// Waits for the dialog that says what is waited for, and does something in it.
  void InErrand(const std::function<void(QWidget& window)>& act) {
    modal_scripts().Add([act](QWidget& window) {
      EXPECT_EQ(window.objectName(), QStringLiteral("errand"));
      act(window);
      EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isVisible(); }, kPatience));
    });
  }
  /// Takes down what a box says, and closes it.
  void InBox(std::string& told) {
    modal_scripts().Add([&told](QWidget& window) {
      auto* box = qobject_cast<QMessageBox*>(&window);
      ASSERT_NE(box, nullptr) << window.objectName().toStdString();
      told = ToUtf8(box->text()) + "|" + ToUtf8(box->informativeText());
      box->button(QMessageBox::Ok)->click();
    });
  }
  [[nodiscard]] bool WaitForScripts() {
    return QTest::qWaitFor([this] { return modal_scripts().waiting() == 0; }, kPatience);
  }

 private:
  std::unique_ptr<ldap::IDirectoryStore> file_store_;
  std::optional<pelora::testing::ObservedStore> asked_;
  pelora::testing::StallingStore* store_ = nullptr;
  std::vector<session::DirectoryObject> objects_;
  std::unique_ptr<MainWindow> window_;
  QTimer turns_;
  int turn_count_ = 0;
};

TEST_F(WaitingWindow, NothingIsAskedOnTheWindowsThread) {
  ShowBirgit();
  ASSERT_NE(sheet(), nullptr);
  Hide();
  Press(QDialogButtonBox::Apply);
  Hide();
  Press(QDialogButtonBox::Ok);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_GT(store().asked(), 0);
  EXPECT_FALSE(store().WasAskedBy(std::this_thread::get_id()));
}

TEST_F(WaitingWindow, TheDirectoryIsAskedOnceWhatItIs) {
  for (int times = 0; times < 2; ++times) {
    ShowBirgit();
    ASSERT_NE(sheet(), nullptr);
    Press(QDialogButtonBox::Ok);
    ASSERT_EQ(sheet(), nullptr);
  }
  EXPECT_EQ(RootsRead(), 1);
}

TEST_F(WaitingWindow, HowTheConnectionIsDoingIsAskedEveryTime) {
  ShowAsServer();
  const auto before = RootsRead();
  for (int times = 0; times < 2; ++times) {
    modal_scripts().Add([](QWidget& box) {
      EXPECT_EQ(box.objectName(), QStringLiteral("connection_box"));
      box.close();
    });
    window().findChild<QAction*>(QStringLiteral("show_connection"))->trigger();
    EXPECT_EQ(modal_scripts().waiting(), 0U);
  }
  EXPECT_EQ(RootsRead() - before, 2);
}

TEST_F(WaitingWindow, TheWindowLivesOnWhileASheetIsOpenedAndApplied) {
  store().Stall();
  int before = turn_count();
  InErrand([&](QWidget&) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return turn_count() > before + 50; }, kPatience));
    store().LetGo();
  });
  ShowBirgit();
  ASSERT_NE(sheet(), nullptr);
  EXPECT_GT(turn_count(), before + 50);

  Hide();
  store().Stall();
  before = turn_count();
  InErrand([&](QWidget&) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return turn_count() > before + 50; }, kPatience));
    // The one who waits is not to lose what he waits with.
    window().close();
    sheet()->close();
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(sheet()->isVisible());
    store().LetGo();
  });
  Press(QDialogButtonBox::Ok);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_THAT(SearchEntry(file(), kBirgit), Contains("peloraHidden: 1"));
}

TEST_F(WaitingWindow, AnOpeningThatIsStoppedLeavesNoSheetAndNeedsNoWord) {
  store().Stall();
  InErrand([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  ShowBirgit();
  EXPECT_EQ(sheet(), nullptr);
  QCoreApplication::processEvents();
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  // And the next one finds everything as it was.
  store().LetGo();
  ShowBirgit();
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(sheet()->PageCount(), 5U);
}

TEST_F(WaitingWindow, ADirectoryThatDoesNotAnswerIsToldInWords) {
  store().FailReading({ldap::kLdapTimeout, "the server 'dc1' did not answer within 30 seconds"});
  std::string told;
  InBox(told);
  ShowBirgit();
  EXPECT_EQ(sheet(), nullptr) << "half a sheet looks whole";
  ASSERT_TRUE(WaitForScripts());
  EXPECT_EQ(told,
            "There are no properties to show.|The properties of Birgit Krämer cannot be read: the "
            "server 'dc1' did not answer within 30 seconds. Try again when the directory can be "
            "reached.");
}

TEST_F(WaitingWindow, AnApplyThatIsStoppedIsOfUnknownOutcomeAndKeepsTheEdits) {
  ShowBirgit();
  ASSERT_NE(sheet(), nullptr);
  Hide();
  store().Stall();
  InErrand([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  std::string told;
  InBox(told);
  Press(QDialogButtonBox::Ok);
  ASSERT_TRUE(WaitForScripts());
  EXPECT_THAT(told, HasSubstr("It may have been done or not"));
  ASSERT_NE(sheet(), nullptr);
  EXPECT_TRUE(sheet()->HasUnsavedEdits());
  store().LetGo();
  Press(QDialogButtonBox::Ok);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_THAT(SearchEntry(file(), kBirgit), Contains("peloraHidden: 1"));
}

}  // namespace
}  // namespace pelora::test
