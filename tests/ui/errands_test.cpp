// SPDX-License-Identifier: Apache-2.0
// Work beside the window: what the window does meanwhile, and how the work is stopped.
#include <gmock/gmock.h>

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <future>
#include <stdexcept>
#include <thread>

#include "hosts/console/errands/errand_dialog.h"
#include "hosts/console/errands/qt_errands.h"
#include "tests/contract/dialog_contract_qt_scripts.h"

namespace pelora::test {
namespace {

using console::ErrandPatience;
using console::QtErrands;
using session::IErrand;
using std::chrono::milliseconds;
using ::testing::ElementsAre;

constexpr int kPatience = 20000;

/// Counts how often the program's events had a turn.
class Turns {
 public:
  Turns() {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { ++count; });
    timer_.start(1);
  }
  int count = 0;

 private:
  QTimer timer_;
};

void WaitFor(const std::atomic<bool>& flag) {
  while (!flag) std::this_thread::sleep_for(milliseconds(1));
}
void WaitFor(const std::stop_token& stop) {
  while (!stop.stop_requested()) std::this_thread::sleep_for(milliseconds(1));
}

/// Clicks or presses something in the dialog, and waits until it is gone.
contract::ModalScript Leave(std::function<void(QWidget& window)> act) {
  return [act = std::move(act)](QWidget& window) {
    EXPECT_EQ(window.objectName(), QStringLiteral("errand"));
    act(window);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isVisible(); }, kPatience));
  };
}

class ErrandsTest : public ::testing::Test {
 protected:
  /// The first turn of events, from which time is counted.
  ErrandsTest() { QCoreApplication::processEvents(); }

  contract::ModalScripts scripts;
};

TEST_F(ErrandsTest, TheWorkIsDoneOnAThreadOfItsOwnAndAwaited) {
  QtErrands errands;
  std::vector<std::string> done;
  const std::thread::id here = std::this_thread::get_id();
  errands.Run("one", [&](IErrand&) {
    EXPECT_NE(std::this_thread::get_id(), here);
    EXPECT_TRUE(errands.IsWithin());
    errands.Run("within", [&](IErrand&) { done.emplace_back("within"); });
    done.emplace_back("one");
  });
  EXPECT_THAT(done, ElementsAre("within", "one"));
  EXPECT_FALSE(errands.IsWithin());
  EXPECT_FALSE(errands.IsRunning());
}

TEST_F(ErrandsTest, WhatIsDoneAtOnceIsNotNoticed) {
  QtErrands errands(ErrandPatience{.still = milliseconds(kPatience)});
  bool had_turn = false;
  QObject receiver;
  QMetaObject::invokeMethod(
      &receiver, [&] { had_turn = true; }, Qt::QueuedConnection);
  errands.Run("quick", [](IErrand&) {});
  EXPECT_FALSE(had_turn) << "nothing happens in between that the caller does not expect";
}

TEST_F(ErrandsTest, TheWindowLivesOnWhileTheWorkTakesItsTime) {
  QtErrands errands(ErrandPatience{.silent = milliseconds(kPatience)});
  std::atomic<bool> enough = false;
  Turns turns;
  QTimer counting;
  QObject::connect(&counting, &QTimer::timeout, [&] { enough = turns.count >= 50; });
  counting.start(1);
  errands.Run("slow", [&](IErrand&) { WaitFor(enough); });
  EXPECT_GE(turns.count, 50);
}

TEST_F(ErrandsTest, StopIsOfferedAndEndsTheWork) {
  for (const bool by_key : {false, true}) {
    QtErrands errands(ErrandPatience{.silent = milliseconds(10)});
    scripts.Add(Leave([&](QWidget& window) {
      EXPECT_EQ(window.findChild<QLabel*>(QStringLiteral("errand_what"))->text(),
                QStringLiteral("Reading <b>..."));
      auto* stop = window.findChild<QPushButton*>(QStringLiteral("errand_stop"));
      if (by_key) {
        QTest::keyClick(&window, Qt::Key_Escape);
      } else {
        QTest::mouseClick(stop, Qt::LeftButton);
      }
      EXPECT_FALSE(stop->isEnabled());
    }));
    errands.Run("Reading <b>...", [](IErrand& errand) { WaitFor(errand.stop()); });
    EXPECT_EQ(scripts.waiting(), 0U);
  }
}

TEST_F(ErrandsTest, WhatDoesNotStopInTimeIsGivenUp) {
  QtErrands errands(ErrandPatience{.silent = milliseconds(10), .stopping = milliseconds(50)});
  scripts.Add(Leave([](QWidget& window) { window.close(); }));
  errands.Run("Writing...", [](IErrand& errand) {
    WaitFor(errand.stop());
    EXPECT_FALSE(errand.give_up().stop_requested());
    WaitFor(errand.give_up());
  });
}

TEST_F(ErrandsTest, HowFarItIsShows) {
  QtErrands errands(ErrandPatience{.silent = milliseconds(10)});
  std::atomic<bool> seen = false;
  scripts.Add(Leave([&](QWidget& window) {
    const auto* left = window.findChild<QLabel*>(QStringLiteral("errand_left"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return left->text().startsWith(QStringLiteral("3 of 12")); },
                                kPatience))
        << left->text().toStdString();
    EXPECT_EQ(window.findChild<QProgressBar*>()->maximum(), 12);
    seen = true;
  }));
  errands.Run("Writing...", [&](IErrand& errand) {
    errand.Advance(3, 12);
    WaitFor(seen);
  });
}

TEST_F(ErrandsTest, WhatTheWorkThrowsComesToTheCaller) {
  QtErrands errands;
  EXPECT_THROW(errands.Run("fails", [](IErrand&) { throw std::runtime_error("no"); }),
               std::runtime_error);
  int done = 0;
  errands.Run("next", [&](IErrand&) { ++done; });
  EXPECT_EQ(done, 1);
}

TEST_F(ErrandsTest, AnErrandAskedForMeanwhileWaitsItsTurn) {
  QtErrands errands(ErrandPatience{.silent = milliseconds(kPatience)});
  std::atomic<bool> go = false;
  std::vector<std::string> done;
  QTimer::singleShot(30, [&] {
    EXPECT_TRUE(errands.IsRunning());
    go = true;
    errands.Run("second", [&](IErrand&) { done.emplace_back("second"); });
  });
  errands.Run("first", [&](IErrand&) {
    WaitFor(go);
    done.emplace_back("first");
  });
  EXPECT_THAT(done, ElementsAre("first", "second"));
}

TEST_F(ErrandsTest, LongWorkInTheWindowLetsItBreathe) {
  QtErrands errands;
  Turns turns;
  const auto end = std::chrono::steady_clock::now() + milliseconds(200);
  while (std::chrono::steady_clock::now() < end) errands.Breathe();
  EXPECT_GE(turns.count, 3);
}

TEST_F(ErrandsTest, WhatIsLetGoOfGoesBesideTheWindow) {
  std::promise<std::thread::id> gone;
  std::future<std::thread::id> where = gone.get_future();
  QtErrands errands;
  errands.LetGo(std::shared_ptr<void>(
      nullptr, [&gone](void* /*what*/) { gone.set_value(std::this_thread::get_id()); }));
  ASSERT_EQ(where.wait_for(std::chrono::seconds(20)), std::future_status::ready);
  EXPECT_NE(where.get(), std::this_thread::get_id());
}

TEST(ErrandDialogText, HowFarItIsAndHowLongItTakesYetStandTogether) {
  console::ErrandDialog dialog(QStringLiteral("Writing..."), nullptr);
  const auto* const left = dialog.findChild<QLabel*>(QStringLiteral("errand_left"));
  ASSERT_NE(left, nullptr);
  dialog.ShowProgress(1200, 5000, 900);
  EXPECT_EQ(left->text(), QStringLiteral("1200 of 5000"));
  dialog.ShowProgress(1200, 5000, 31'000);
  EXPECT_EQ(left->text(), QStringLiteral("1200 of 5000, about 99 seconds left"));
  dialog.ShowProgress(5000, 5000, 120'000);
  EXPECT_EQ(left->text(), QStringLiteral("5000 of 5000"));
}

TEST(ErrandDialogText, WhatIsLeftIsSaidInWordsOnceItCanBeKnown) {
  EXPECT_EQ(console::TimeLeft(0, 100, 5000), QString());
  EXPECT_EQ(console::TimeLeft(10, 100, 500), QString()) << "too early to know";
  EXPECT_EQ(console::TimeLeft(100, 100, 5000), QString());
  EXPECT_EQ(console::TimeLeft(99, 100, 5000), QStringLiteral("about a second left"));
  EXPECT_EQ(console::TimeLeft(10, 100, 2000), QStringLiteral("about 19 seconds left"));
  EXPECT_EQ(console::TimeLeft(10, 5000, 2000), QStringLiteral("about 17 minutes left"));
}

}  // namespace
}  // namespace pelora::test
