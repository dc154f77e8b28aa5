// SPDX-License-Identifier: Apache-2.0
// What becomes of exceptions that come out of the console's windows and of what works beside them.
#include <gmock/gmock.h>

#include <QAbstractTableModel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QTreeView>
#include <atomic>
#include <optional>

#include "hosts/console/choosers/object_search.h"
#include "hosts/console/program/guarded_application.h"
#include "hosts/console/reading/directory_questions.h"
#include "hosts/console/reading/directory_reader.h"
#include "hosts/console/reading/session_opening.h"
#include "hosts/console/text/qt_text.h"
#include "tests/contract/dialog_contract_qt_scripts.h"
#include "tests/ui/scripted_store.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr int kPatience = 60000;

/// Somebody who reads the boxes that tell of exceptions.
class Exceptions : public ::testing::Test {
 protected:
  void AwaitBox() {
    scripts_.Add([this](QWidget& window) {
      EXPECT_EQ(window.objectName(), QStringLiteral("exception_box"));
      const auto* box = qobject_cast<QMessageBox*>(&window);
      ASSERT_NE(box, nullptr);
      told_.push_back(ToUtf8(box->text()));
      EXPECT_THAT(ToUtf8(box->informativeText()), HasSubstr("you have typed is still there"));
      QTest::keyClick(&window, Qt::Key_Return);
    });
  }
  [[nodiscard]] bool WasTold(std::size_t boxes) {
    return QTest::qWaitFor([&] { return told_.size() == boxes; }, kPatience);
  }

  contract::ModalScripts scripts_;
  std::vector<std::string> told_;
};

TEST_F(Exceptions, OneOfAClickIsToldAndNothingThatWasTypedIsLost) {
  QWidget window;
  window.setWindowTitle(QStringLiteral("Cellar"));
  QLineEdit typed(&window);
  QPushButton button(&window);
  std::function<void()> act = [] { throw std::runtime_error("the cellar is full"); };
  QObject::connect(&button, &QPushButton::clicked, [&act] { act(); });
  window.show();
  contract::Activate(window);
  QTest::keyClicks(&typed, QStringLiteral("claret"));
  AwaitBox();
  QTest::mouseClick(&button, Qt::LeftButton);
  ASSERT_TRUE(WasTold(1));
  act = [] { throw std::bad_alloc(); };
  AwaitBox();
  QTest::mouseClick(&button, Qt::LeftButton);
  ASSERT_TRUE(WasTold(2));
  act = [] { throw 7; };
  AwaitBox();
  QTest::mouseClick(&button, Qt::LeftButton);
  ASSERT_TRUE(WasTold(3));
  EXPECT_THAT(told_, ElementsAre("Something went wrong in \"Cellar\": the cellar is full.",
                                 "Something went wrong in \"Cellar\": out of memory.",
                                 "Something went wrong in \"Cellar\": no reason."));
  int clicks = 0;
  act = [&clicks] { ++clicks; };
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(typed.text(), QStringLiteral("claret"));
}

/// One cell, which cannot be made as long as it fails.
class FailingCell final : public QAbstractTableModel {
 public:
  [[nodiscard]] int rowCount(const QModelIndex&) const override { return 1; }
  [[nodiscard]] int columnCount(const QModelIndex&) const override { return 1; }
  [[nodiscard]] QVariant data(const QModelIndex&, int role) const override {
    return console::DrawnOrNothing([&]() -> QVariant {
      if (role != Qt::DisplayRole) return {};
      if (fails) throw std::runtime_error("the ink is dry");
      ++drawn;
      return QStringLiteral("ink");
    });
  }

  bool fails = true;
  mutable int drawn = 0;
};

TEST_F(Exceptions, OneOfADrawingIsToldOnceAndTheViewDrawsOn) {
  FailingCell cell;
  QTreeView view;
  view.setModel(&cell);
  AwaitBox();
  view.show();
  ASSERT_TRUE(WasTold(1));
  for (int time = 0; time < 3; ++time) {
    view.viewport()->repaint();
    QCoreApplication::processEvents();
  }
  EXPECT_THAT(told_, ElementsAre(HasSubstr("the ink is dry")));
  cell.fails = false;
  view.viewport()->repaint();
  EXPECT_GT(cell.drawn, 0);
}

TEST_F(Exceptions, OneOfTheFocusThatMovesIsToldToo) {
  QWidget window;
  QLineEdit field(&window);
  window.show();
  contract::Activate(window);
  AwaitBox();
  console::DoGuarded([] { throw std::runtime_error("the glass is broken"); });
  EXPECT_TRUE(WasTold(1));
  EXPECT_THAT(told_, ElementsAre(HasSubstr("the glass is broken")));
}

TEST_F(Exceptions, OneOfAnotherThreadIsToldToo) {
  QThread thread;
  auto* const worker = new QObject;
  worker->moveToThread(&thread);
  QObject::connect(&thread, &QThread::finished, worker, &QObject::deleteLater);
  thread.start();
  AwaitBox();
  QMetaObject::invokeMethod(
      worker, [] { throw std::runtime_error("the thread is torn"); }, Qt::QueuedConnection);
  EXPECT_TRUE(WasTold(1));
  EXPECT_THAT(told_, ElementsAre(HasSubstr("the thread is torn")));
  thread.quit();
  thread.wait();
}

TEST_F(Exceptions, BeforeNobodyTheProgramEndsWithASentence) {
  QProcess program;
  program.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--nobody")});
  ASSERT_TRUE(program.waitForFinished(-1));
  EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(program.exitCode(), 1);
  EXPECT_THAT(program.readAllStandardError().toStdString(),
              HasSubstr("pelora-console: something went wrong: the cellar is full\n"));
}

/// A directory whose searches end in an exception as long as they fail.
class ThrowingDirectory : public ::testing::Test {
 protected:
  [[nodiscard]] ldap::StoreOpener Opener() {
    return [this](std::unique_ptr<ldap::IDirectoryStore>& store, const std::stop_token&) {
      store = std::make_unique<ScriptedStore>(
          [this](const ldap::SearchRequest&, const ldap::EntrySink& sink) -> ldap::StoreStatus {
            if (fails_) throw std::bad_alloc();
            sink({.dn = "CN=a,DC=x", .attributes = {{"objectClass", {"top", "user"}}}});
            return {};
          },
          true);
      return ldap::StoreStatus{};
    };
  }

  std::atomic<bool> fails_ = true;
};

using session::SearchEnd;

TEST_F(ThrowingDirectory, AListingFailsAndTheNextDoesNot) {
  console::DirectoryReader reader(Opener());
  const auto listed = [&reader] {
    std::optional<SearchEnd> ended;
    const auto reading = reader.Start(
        {.container = "DC=x"}, [](auto) {}, [&ended](const SearchEnd& end) { ended = end; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return ended.has_value(); }, kPatience));
    return ended.value_or(SearchEnd{});
  };
  const SearchEnd failed = listed();
  EXPECT_EQ(failed.reason, SearchEnd::Reason::kFailed);
  EXPECT_EQ(failed.text, "out of memory");
  fails_ = false;
  EXPECT_EQ(listed().reason, SearchEnd::Reason::kComplete);
}

TEST_F(ThrowingDirectory, WhatIsLostOnTheWayToTheWindowIsNotMissingUnseen) {
  fails_ = false;
  console::DirectoryReader reader(Opener());
  std::vector<SearchEnd> ends;
  const auto reading = reader.Start(
      {.container = "DC=x"}, [](auto) { throw std::runtime_error("no room"); },
      [&ends](const SearchEnd& end) { ends.push_back(end); });
  EXPECT_TRUE(QTest::qWaitFor([&] { return !ends.empty(); }, kPatience));
  QCoreApplication::processEvents();
  ASSERT_EQ(ends.size(), 1U);
  EXPECT_EQ(ends[0].reason, SearchEnd::Reason::kFailed);
  EXPECT_EQ(ends[0].text, "no room");
  EXPECT_FALSE(reading.IsRunning());
}

TEST_F(ThrowingDirectory, ASearchFailsAndTheNextDoesNot) {
  console::ObjectSearch search(Opener());
  std::optional<SearchEnd> ended;
  search.on_finished = [&ended](const session::ListingEnd& ending) { ended = ending.end; };
  search.Start({});
  ASSERT_TRUE(QTest::qWaitFor([&] { return ended.has_value(); }, kPatience));
  EXPECT_EQ(ended->reason, SearchEnd::Reason::kFailed);
  EXPECT_EQ(ended->text, "out of memory");
  EXPECT_FALSE(search.IsRunning());
  fails_ = false;
  ended.reset();
  search.Start({});
  ASSERT_TRUE(QTest::qWaitFor([&] { return ended.has_value(); }, kPatience));
  EXPECT_EQ(ended->reason, SearchEnd::Reason::kComplete);
}

TEST_F(ThrowingDirectory, AQuestionHasNoAnswerAndTheNextHas) {
  console::DirectoryQuestions questions(Opener());
  int answered = 0;
  const auto ask = [&](bool throws) {
    questions.Ask([&answered, throws](ldap::IDirectoryStore&) {
      if (throws) throw std::bad_alloc();
      return [&answered] { ++answered; };
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !questions.IsAsking(); }, kPatience));
  };
  ask(true);
  EXPECT_EQ(answered, 0);
  ask(false);
  EXPECT_EQ(answered, 1);
}

TEST_F(ThrowingDirectory, AnOpeningFails) {
  std::optional<std::string> said;
  const console::SessionOpening opening(
      [](const std::stop_token&) -> session::SessionResult { throw std::bad_alloc(); },
      [&said](const session::SessionResult& result) { said = result.error; });
  EXPECT_TRUE(QTest::qWaitFor([&] { return said.has_value(); }, kPatience));
  EXPECT_EQ(said, "out of memory");
}

}  // namespace
}  // namespace pelora::test
