// SPDX-License-Identifier: Apache-2.0
// How the main window reads a directory that takes its time: nothing waits for it, and what is
// shown says how much of the whole it is.
#include <gmock/gmock.h>

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QStatusBar>
#include <QTest>
#include <QThread>
#include <QTreeView>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>
#include <semaphore>

#include "hosts/console/reading/directory_questions.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "hosts/session/typed/address_owner.h"
#include "tests/support/memory_store.h"
#include "tests/support/observed_store.h"
#include "tests/ui/console_test.h"
#include "tests/ui/scripted_store.h"

namespace pelora::test {
namespace {

using console::MainWindow;
using console::ToUtf8;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr int kPatience = 20000;
constexpr int kLimitReached = 4;

/// Whether a request asks for containers only, as the tree does.
bool IsForTree(const ldap::SearchRequest& request) {
  return request.filter.find("(objectClass=organizationalUnit)") != std::string::npos;
}

class BackgroundReading : public ConsoleTest {
 protected:
  ~BackgroundReading() override {
    // A store that still waits would hold up the end of its window.
    gate_.release(100);
    window_.reset();
  }

  /// Opens a window on stores that answer listings as the script says.
  void Open(ScriptedStore::SearchScript script) {
    ldap::StoreOpener opener = [this, script](std::unique_ptr<ldap::IDirectoryStore>& store,
                                              const std::stop_token& /*stop*/) {
      ++opened_;
      store = std::make_unique<ScriptedStore>(script, true);
      return ldap::StoreStatus{};
    };
    std::unique_ptr<ldap::IDirectoryStore> store;
    ASSERT_TRUE(opener(store, {}).Ok());
    window_ = std::make_unique<MainWindow>(module());
    ASSERT_TRUE(window_->SetSession(
        std::make_unique<session::DirectorySession>("slow", std::move(store), std::move(opener))));
    window_->show();
  }

  [[nodiscard]] QTreeView& tree() {
    return *window_->findChild<QTreeView*>(QStringLiteral("container_tree"));
  }
  [[nodiscard]] QAbstractItemModel& rows() {
    return *window_->findChild<QTreeView*>(QStringLiteral("object_list"))->model();
  }
  [[nodiscard]] QAction& Action(const char* text) {
    for (QAction* action : window_->findChildren<QAction*>()) {
      if (ToUtf8(action->text()) == text) return *action;
    }
    throw std::runtime_error(std::string("there is no action ") + text);
  }
  [[nodiscard]] std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (int row = 0; row < rows().rowCount(); ++row) {
      names.push_back(ToUtf8(rows().index(row, 0).data().toString()));
    }
    return names;
  }
  [[nodiscard]] std::string Status() {
    std::string texts;
    for (const QLabel* label : window_->statusBar()->findChildren<QLabel*>()) {
      texts += ToUtf8(label->text()) + "|";
    }
    return texts;
  }
  [[nodiscard]] bool WaitForRows(int count) {
    return QTest::qWaitFor([this, count] { return rows().rowCount() == count; }, kPatience);
  }
  [[nodiscard]] bool WaitForEnd() {
    return QTest::qWaitFor([this] { return !window_->IsReading(); }, kPatience);
  }

  std::counting_semaphore<> gate_{0};
  std::atomic<int> opened_ = 0;
  std::unique_ptr<MainWindow> window_;
};

TEST_F(BackgroundReading, ObjectsAppearWhileTheRestIsBeingRead) {
  Open([this](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
    if (IsForTree(request)) return ldap::StoreStatus{};
    sink(UserEntry("Bob"));
    gate_.acquire();
    sink(UserEntry("Ada"));
    return ldap::StoreStatus{};
  });
  ASSERT_TRUE(WaitForRows(1));
  EXPECT_THAT(Status(), HasSubstr("1 object, reading..."));
  EXPECT_TRUE(Action("&Stop").isEnabled());
  gate_.release();
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(Names(), ElementsAre("Ada", "Bob"));
  EXPECT_THAT(Status(), HasSubstr("2 objects|"));
  EXPECT_FALSE(Action("&Stop").isEnabled());
}

TEST_F(BackgroundReading, AStoppedReadingKeepsWhatArrivedAndSaysThatItIsNotAll) {
  std::atomic<bool> told_to_end = false;
  Open([&](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
    if (IsForTree(request)) return ldap::StoreStatus{};
    sink(UserEntry("Ada"));
    gate_.acquire();
    told_to_end = !sink(UserEntry("Bob"));
    return ldap::StoreStatus{};
  });
  ASSERT_TRUE(WaitForRows(1));
  Action("&Stop").trigger();
  ASSERT_TRUE(WaitForEnd()) << "the store still waits at its gate";
  EXPECT_THAT(Status(), HasSubstr("1 object, stopped before the end"));
  gate_.release();
  EXPECT_TRUE(QTest::qWaitFor([&] { return told_to_end.load(); }, kPatience));
  QCoreApplication::processEvents();
  EXPECT_THAT(Names(), ElementsAre("Ada"));
}

TEST_F(BackgroundReading, AListingThatHangsHoldsNeitherWhatFollowsNorTheEnd) {
  std::atomic<bool> hangs = true;
  Open([&](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
    if (IsForTree(request)) return ldap::StoreStatus{};
    if (hangs) return ldap::StoreStatus{ScriptedStore::kHangs, {}};
    sink(UserEntry("Ada"));
    return ldap::StoreStatus{};
  });
  const auto begin = std::chrono::steady_clock::now();
  QTest::qWait(50);
  EXPECT_TRUE(window_->IsReading());
  const int opened = opened_;
  Action("&Stop").trigger();
  hangs = false;
  Action("&Refresh").trigger();
  ASSERT_TRUE(WaitForRows(1));
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(opened_, opened) << "what was stopped has not failed";
  hangs = true;
  Action("&Refresh").trigger();
  QTest::qWait(50);
  window_.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
}

TEST_F(BackgroundReading, GoingElsewhereEndsTheReadingAndNothingOfItArrives) {
  Open([this](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
    if (request.base == "DC=x") {
      sink(ContainerEntry("Sales"));
      if (IsForTree(request)) return ldap::StoreStatus{};
      gate_.acquire();
      sink(UserEntry("Late"));
      return ldap::StoreStatus{};
    }
    if (!IsForTree(request)) sink(UserEntry("Ada"));
    return ldap::StoreStatus{};
  });
  ASSERT_TRUE(WaitForRows(1));
  ASSERT_TRUE(QTest::qWaitFor(
      [this] { return tree().model()->rowCount(tree().currentIndex()) == 1; }, kPatience));
  tree().setCurrentIndex(tree().model()->index(0, 0, tree().currentIndex()));
  EXPECT_THAT(Names(), IsEmpty());
  gate_.release();
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(Names(), ElementsAre("Ada"));
}

TEST_F(BackgroundReading, TheListDoesNotWaitForTheTree) {
  Open([this](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
    if (IsForTree(request)) {
      gate_.acquire();
      sink(ContainerEntry("Sales"));
    } else {
      sink(UserEntry("Ada"));
    }
    return ldap::StoreStatus{};
  });
  ASSERT_TRUE(WaitForRows(1));
  EXPECT_TRUE(window_->IsReading());
  EXPECT_EQ(tree().model()->rowCount(tree().currentIndex()), 0);
  gate_.release();
  ASSERT_TRUE(WaitForEnd());
  const QModelIndex base = tree().currentIndex();
  ASSERT_EQ(tree().model()->rowCount(base), 1);
  QCoreApplication::processEvents();
  EXPECT_TRUE(tree().isExpanded(base));
  EXPECT_FALSE(tree().visualRect(tree().model()->index(0, 0, base)).isEmpty());
}

TEST_F(BackgroundReading, AFailedListingIsToldAndReadAgainOverANewConnection) {
  std::atomic<bool> fails = true;
  Open([&](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
    if (IsForTree(request)) return ldap::StoreStatus{};
    sink(UserEntry("Ada"));
    if (fails) return ldap::StoreStatus{.code = 52, .text = "the server is gone"};
    sink(UserEntry("Bob"));
    return ldap::StoreStatus{};
  });
  std::string told;
  modal_scripts().Add([&told](QWidget& box) {
    told = ToUtf8(qobject_cast<QMessageBox*>(&box)->text()) + " " +
           ToUtf8(qobject_cast<QMessageBox*>(&box)->informativeText());
    box.close();
  });
  ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }, kPatience));
  EXPECT_EQ(told, "The contents of x cannot be read. the server is gone");
  EXPECT_THAT(Status(), HasSubstr("1 object, the rest cannot be read"));
  const int opened = opened_;
  fails = false;
  Action("&Refresh").trigger();
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(opened_, opened + 1);
  EXPECT_THAT(Names(), ElementsAre("Ada", "Bob"));
}

TEST_F(BackgroundReading, AFailedRefreshKeepsWhatWasShown) {
  std::atomic<bool> fails = false;
  Open([&](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
    if (IsForTree(request)) return ldap::StoreStatus{};
    sink(UserEntry("Ada"));
    if (fails) return ldap::StoreStatus{.code = 52, .text = "the server is gone"};
    sink(UserEntry("Bob"));
    return ldap::StoreStatus{};
  });
  ASSERT_TRUE(WaitForEnd());
  fails = true;
  bool told = false;
  modal_scripts().Add([&told](QWidget& box) {
    told = true;
    box.close();
  });
  Action("&Refresh").trigger();
  ASSERT_TRUE(QTest::qWaitFor([&] { return told; }, kPatience));
  EXPECT_THAT(Names(), ElementsAre("Ada", "Bob"));
}

TEST_F(BackgroundReading, ALimitOfTheDirectorysIsTold) {
  Open([](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
    if (IsForTree(request)) return ldap::StoreStatus{};
    sink(UserEntry("Ada"));
    return ldap::StoreStatus{.code = kLimitReached, .text = "size limit"};
  });
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(Names(), ElementsAre("Ada"));
  EXPECT_THAT(Status(), HasSubstr("1 object, the directory gives no more"));
}

TEST_F(BackgroundReading, ObjectsForAnAdvancedViewAreShownOnDemand) {
  std::mutex mutex;
  std::vector<std::string> filters;
  Open([&](const ldap::SearchRequest& request, const ldap::EntrySink& /*sink*/) {
    const std::lock_guard lock(mutex);
    filters.push_back(request.filter);
    return ldap::StoreStatus{};
  });
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(filters.size(), 2U);
  for (const std::string& filter : filters) {
    EXPECT_THAT(filter, HasSubstr("(!(showInAdvancedViewOnly=TRUE))"));
  }
  filters.clear();
  Action("&Advanced Objects").trigger();
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(filters.size(), 2U);
  for (const std::string& filter : filters) {
    EXPECT_THAT(filter, Not(HasSubstr("showInAdvancedViewOnly")));
  }
}

TEST_F(BackgroundReading, AContainerWithTenThousandObjectsIsUsable) {
  constexpr int kMany = 10000;
  Open([](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
    if (IsForTree(request)) return ldap::StoreStatus{};
    for (int number = kMany; number > 0; --number) {
      if (!sink(UserEntry("user " + std::to_string(100000 + number)))) break;
    }
    return ldap::StoreStatus{};
  });
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(rows().rowCount(), kMany);
  EXPECT_EQ(ToUtf8(rows().index(0, 0).data().toString()), "user 100001");
  EXPECT_EQ(ToUtf8(rows().index(kMany - 1, 0).data().toString()), "user 110000");
  auto* list = window_->findChild<QTreeView*>(QStringLiteral("object_list"));
  list->selectAll();
  Action("&Refresh").trigger();
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(list->selectionModel()->selectedRows().size(), kMany);
  list->clearSelection();
  window_->findChild<QLineEdit*>(QStringLiteral("object_filter"))
      ->setText(QStringLiteral("user 10424"));
  EXPECT_EQ(rows().rowCount(), 10);
  EXPECT_THAT(Status(), HasSubstr("10 of 10000 objects"));
}

TEST_F(BackgroundReading, AContainerOpenedFromTheListIsShownWhenTheTreeHasIt) {
  Open([this](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
    if (request.base == "DC=x") {
      if (IsForTree(request)) gate_.acquire();
      sink(ContainerEntry("Sales"));
    }
    return ldap::StoreStatus{};
  });
  ASSERT_TRUE(WaitForRows(1));
  auto* list = window_->findChild<QTreeView*>(QStringLiteral("object_list"));
  list->setCurrentIndex(rows().index(0, 0));
  Action("&Open").trigger();
  EXPECT_EQ(ToUtf8(tree().currentIndex().data().toString()), "x");
  gate_.release();
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(ToUtf8(tree().currentIndex().data().toString()), "Sales");
  EXPECT_EQ(rows().rowCount(), 0);
}

TEST(DirectoryReader, GivesUpAtItsEndWhatNobodyStopped) {
  std::optional<console::DirectoryReader> reader(
      std::in_place, OpenScripted([](const auto& /*request*/, const auto& /*sink*/) {
        return ldap::StoreStatus{ScriptedStore::kHangs, {}};
      }));
  bool told = false;
  const auto reading = reader->Start(
      {.container = "DC=x"}, [&](const auto& /*objects*/) { told = true; },
      [&](const auto& /*end*/) { told = true; });
  QTest::qWait(50);
  EXPECT_TRUE(reading.IsRunning());
  const auto begin = std::chrono::steady_clock::now();
  reader.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
  QCoreApplication::processEvents();
  EXPECT_FALSE(reading.IsRunning());
  EXPECT_FALSE(told);
}

/// A reader of users without end, which counts those that the directory has given.
class EndlessReading : public ::testing::Test {
 protected:
  static constexpr std::size_t kMost = console::DirectoryReader::kMostAtATime;

  std::atomic<std::size_t> given_ = 0;
  std::optional<console::DirectoryReader> reader_{
      std::in_place, OpenScripted([this](const auto& /*request*/, const auto& sink) {
        while (sink(UserEntry("user " + std::to_string(++given_)))) {
        }
        return ldap::StoreStatus{};
      })};
};

TEST_F(EndlessReading, GoesNoFurtherThanIsFetchedAndHandsOverInPieces) {
  std::size_t fetched = 0;
  const auto reading = reader_->Start(
      {.container = "DC=x"},
      [&](const auto& objects) {
        EXPECT_LE(objects.size(), kMost);
        fetched += objects.size();
        // As many wait, and one that finds no room.
        while (given_ < fetched + kMost + 1) QThread::msleep(1);
        QThread::msleep(20);
        EXPECT_EQ(given_, fetched + kMost + 1);
      },
      [](const auto& /*end*/) {});
  EXPECT_TRUE(QTest::qWaitFor([&] { return fetched > 5 * kMost; }, kPatience));
}

TEST_F(EndlessReading, EndsWhileItWaitsForSomebodyToFetch) {
  auto reading = reader_->Start(
      {.container = "DC=x"}, [](const auto& /*objects*/) {}, [](const auto& /*end*/) {});
  // Nothing is fetched as long as the window does not turn: so many wait, and one finds no room.
  constexpr std::size_t kFull = kMost + 1;
  while (given_ < kFull) QThread::msleep(1);
  reading.Stop();
  std::size_t fetched = 0;
  const auto next = reader_->Start(
      {.container = "DC=x"}, [&](const auto& objects) { fetched += objects.size(); },
      [](const auto& /*end*/) {});
  EXPECT_TRUE(QTest::qWaitFor([&] { return fetched > 0; }, kPatience));
  while (given_ < kFull + fetched + kFull) QThread::msleep(1);
  reader_.reset();
}

TEST_F(BackgroundReading, AWindowCanCloseWhileItReadsWithoutEnd) {
  std::atomic<int> given = 0;
  Open([&given](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
    if (IsForTree(request)) return ldap::StoreStatus{};
    while (sink(UserEntry("user " + std::to_string(++given)))) {
    }
    return ldap::StoreStatus{};
  });
  ASSERT_TRUE(QTest::qWaitFor([&] { return given > 10; }, kPatience));
  window_.reset();
  const int at_end = given;
  QTest::qWait(20);
  EXPECT_EQ(given, at_end);
}

// Opening a directory.

class BackgroundOpening : public BackgroundReading {
 protected:
  BackgroundOpening() {
    window_ = std::make_unique<MainWindow>(module());
    window_->show();
  }

  static session::SessionResult Scripted(const char* user) {
    const auto script = [user](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
      if (!IsForTree(request)) sink(UserEntry(user));
      return ldap::StoreStatus{};
    };
    ldap::StoreOpener opener = [script](std::unique_ptr<ldap::IDirectoryStore>& store,
                                        const std::stop_token& /*stop*/) {
      store = std::make_unique<ScriptedStore>(script, true);
      return ldap::StoreStatus{};
    };
    std::unique_ptr<ldap::IDirectoryStore> store;
    EXPECT_TRUE(opener(store, {}).Ok());
    return {.session = std::make_unique<session::DirectorySession>(user, std::move(store),
                                                                   std::move(opener)),
            .error = {}};
  }
};

TEST_F(BackgroundOpening, TheWindowSaysWhatItOpensAndShowsItThen) {
  bool shown = false;
  window_->OpenBesides(
      QStringLiteral("dc1"),
      [this](const auto& /*stop*/) {
        gate_.acquire();
        return Scripted("Ada");
      },
      [&shown] { shown = true; });
  EXPECT_THAT(Status(), HasSubstr("Opening dc1..."));
  EXPECT_TRUE(Action("&Stop").isEnabled());
  EXPECT_FALSE(shown);
  gate_.release();
  ASSERT_TRUE(QTest::qWaitFor([&] { return shown; }, kPatience));
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(Names(), ElementsAre("Ada"));
  EXPECT_THAT(Status(), Not(HasSubstr("Opening")));
}

TEST_F(BackgroundOpening, NothingIsReplacedUnderADialogThatWorksWithIt) {
  window_->OpenBesides(QStringLiteral("dc1"), [](const auto& /*stop*/) { return Scripted("Ada"); });
  ASSERT_TRUE(WaitForRows(1));
  const session::DirectorySession* shown = window_->session();
  std::atomic<bool> is_opened{false};
  window_->OpenBesides(QStringLiteral("dc2"), [&](const auto& /*stop*/) {
    gate_.acquire();
    is_opened = true;
    return Scripted("Bob");
  });
  modal_scripts().Add([&](QWidget& box) {
    gate_.release();
    EXPECT_TRUE(QTest::qWaitFor([&] { return is_opened.load(); }, kPatience));
    // Longer than the window waits before it looks again.
    QTest::qWait(200);
    EXPECT_EQ(window_->session(), shown);
    EXPECT_THAT(Names(), ElementsAre("Ada"));
    EXPECT_THAT(Status(), HasSubstr("Opening dc2..."));
    box.close();
  });
  // As a tab's box, which knows nothing of the window.
  QMessageBox(QMessageBox::Warning, {}, QStringLiteral("Wait"), QMessageBox::Ok).exec();
  EXPECT_EQ(window_->session(), shown) << "whoever waited for the box is not through yet";
  ASSERT_TRUE(QTest::qWaitFor([&] { return window_->session() != shown; }, kPatience));
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(Names(), ElementsAre("Bob"));
}

TEST_F(BackgroundOpening, AnotherOpeningTakesThePlaceOfOneThatWaitsUnderADialog) {
  modal_scripts().Add([&](QWidget& box) {
    std::atomic<bool> is_opened{false};
    window_->OpenBesides(QStringLiteral("dc1"), [&](const auto& /*stop*/) {
      is_opened = true;
      return Scripted("Ada");
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return is_opened.load(); }, kPatience));
    QTest::qWait(100);
    window_->OpenBesides(QStringLiteral("dc2"),
                         [](const auto& /*stop*/) { return Scripted("Bob"); });
    box.close();
  });
  QMessageBox(QMessageBox::Warning, {}, QStringLiteral("Wait"), QMessageBox::Ok).exec();
  ASSERT_TRUE(WaitForRows(1));
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(Names(), ElementsAre("Bob"));
  EXPECT_THAT(Status(), Not(HasSubstr("Opening")));
}

TEST_F(BackgroundOpening, AFailureIsToldAndWhatIsShownStays) {
  window_->OpenBesides(QStringLiteral("dc1"), [](const auto& /*stop*/) { return Scripted("Ada"); });
  ASSERT_TRUE(WaitForRows(1));
  std::string told;
  modal_scripts().Add([&told](QWidget& box) {
    told = ToUtf8(qobject_cast<QMessageBox*>(&box)->text()) + " " +
           ToUtf8(qobject_cast<QMessageBox*>(&box)->informativeText());
    box.close();
  });
  window_->OpenBesides(QStringLiteral("dc2"), [](const auto& /*stop*/) {
    return session::SessionResult{.session = nullptr, .error = "no ticket"};
  });
  ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }, kPatience));
  EXPECT_EQ(told, "dc2 cannot be opened. no ticket");
  EXPECT_THAT(Names(), ElementsAre("Ada"));
}

TEST_F(BackgroundOpening, AnOpeningIsToldWhenItIsStoppedAndWhenTheWindowEnds) {
  std::atomic<int> told = 0;
  const auto hang = [&told](const std::stop_token& stop) {
    while (!stop.stop_requested()) QThread::msleep(1);
    ++told;
    return session::SessionResult{.session = nullptr, .error = "stopped"};
  };
  window_->OpenBesides(QStringLiteral("dc1"), hang);
  Action("&Stop").trigger();
  EXPECT_TRUE(QTest::qWaitFor([&] { return told == 1; }, kPatience));
  window_->OpenBesides(QStringLiteral("dc1"), hang);
  window_->OpenBesides(QStringLiteral("dc2"), hang);
  EXPECT_TRUE(QTest::qWaitFor([&] { return told == 2; }, kPatience)) << "another was opened";
  window_.reset();
  EXPECT_EQ(told, 3);
}

TEST_F(BackgroundOpening, AnOpeningThatWasStoppedChangesNothing) {
  std::atomic<bool> opened = false;
  window_->OpenBesides(QStringLiteral("dc1"), [&](const auto& /*stop*/) {
    gate_.acquire();
    opened = true;
    return Scripted("Ada");
  });
  Action("&Stop").trigger();
  EXPECT_THAT(Status(), Not(HasSubstr("Opening")));
  EXPECT_FALSE(Action("&Stop").isEnabled());
  gate_.release();
  ASSERT_TRUE(QTest::qWaitFor([&] { return opened.load(); }, kPatience));
  QTest::qWait(20);
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(BackgroundOpening, TheLastOpeningCounts) {
  window_->OpenBesides(QStringLiteral("dc1"), [this](const auto& /*stop*/) {
    gate_.acquire();
    return Scripted("Ada");
  });
  window_->OpenBesides(QStringLiteral("dc2"), [](const auto& /*stop*/) { return Scripted("Bob"); });
  ASSERT_TRUE(WaitForRows(1));
  gate_.release();
  QTest::qWait(20);
  EXPECT_THAT(Names(), ElementsAre("Bob"));
}

TEST(DirectoryQuestions, TheDirectoryIsAskedOnceWhatItIs) {
  pelora::testing::MemoryStore directory;
  pelora::testing::ObservedStore asked(directory);
  console::DirectoryQuestions questions(
      [&asked](std::unique_ptr<ldap::IDirectoryStore>& store, const std::stop_token& /*stop*/) {
        store = std::make_unique<ldap::ForwardingStore>(static_cast<ldap::IDirectoryStore&>(asked));
        return ldap::StoreStatus{};
      });
  int answered = 0;
  for (const char* const address : {"a@x.example", "b@x.example", "c@x.example"}) {
    questions.Ask([&answered, address](ldap::IDirectoryStore& store) {
      const bool is_free = !session::FindAddressOwner(store, address, {});
      return [&answered, is_free] { answered += is_free ? 1 : 0; };
    });
  }
  ASSERT_TRUE(QTest::qWaitFor([&] { return !questions.IsAsking(); }, kPatience));
  EXPECT_EQ(answered, 3);
  EXPECT_EQ(std::ranges::count(asked.log, "read root"), 1);
  EXPECT_EQ(asked.log.size(), 4U) << "and three searches";
}

}  // namespace
}  // namespace pelora::test
