// SPDX-License-Identifier: Apache-2.0
// The search behind the console's choosers: its filters, its thread and its limits.
#include "hosts/console/choosers/object_search.h"

#include <gmock/gmock.h>

#include <QTest>
#include <QThread>
#include <atomic>
#include <chrono>
#include <semaphore>

#include "hosts/console/choosers/search_status.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/session/search_filter.h"
#include "tests/ui/console_test.h"
#include "tests/ui/scripted_store.h"

namespace pelora::test {
namespace {

using console::ObjectSearch;
using console::ToUtf8;
using session::FoundObject;
using session::SearchEnd;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kPatience = 20000;

// Filters.

ObjectPickerScope Scope(std::uint32_t bits) { return {.up_level_both_modes = bits}; }

/// What filters find in the sample company.
class FilterTest : public ConsoleTest {
 protected:
  std::vector<std::string> Find(const std::string& filter) {
    std::vector<std::string> names;
    const ldap::StoreStatus status = session().store->Search(
        {.base = "DC=linden-werke,DC=example",
         .scope = ldap::SearchScope::kSubtree,
         .filter = filter,
         .attributes = {"name"}},
        [&names](const ldap::Entry& entry) {
          const auto name = entry.attributes.find("name");
          names.push_back(name == entry.attributes.end() ? entry.dn : name->second.front());
          return true;
        });
    EXPECT_TRUE(status.Ok()) << filter << ": " << status.text;
    std::ranges::sort(names);
    return names;
  }
  std::vector<std::string> FindTyped(std::uint32_t bits, const std::string& typed) {
    std::vector<std::string> names;
    const session::ListingEnd ending = session::FindObjects(
        *session().store, {.filter = session::TypeFilter(Scope(bits)), .text = typed},
        [&names](const FoundObject& found) {
          names.push_back(found.object.name);
          return true;
        });
    EXPECT_EQ(ending.end.reason, SearchEnd::Reason::kComplete) << typed << ending.end.text;
    std::ranges::sort(names);
    return names;
  }
};

constexpr std::uint32_t kUsers = 0x2;
constexpr std::uint32_t kGroups = 0x3F0;
constexpr std::uint32_t kComputers = 0x800;

TEST_F(FilterTest, TypesFollowTheBits) {
  const auto users = Find(session::TypeFilter(Scope(kUsers)));
  const auto groups = Find(session::TypeFilter(Scope(kGroups)));
  const auto computers = Find(session::TypeFilter(Scope(kComputers)));
  EXPECT_THAT(users, ::testing::Contains("Birgit Krämer"));
  EXPECT_THAT(users, ::testing::Not(::testing::Contains("mail01")));
  EXPECT_THAT(groups, ::testing::Contains("Rundschreiben"));
  EXPECT_THAT(computers, ElementsAre("archive01", "archive02", "mail-thess", "mail01", "mail02",
                                     "pc-0101", "pc-0102", "pc-0213", "spare01"));
  EXPECT_EQ(Find(session::TypeFilter(Scope(kUsers | kGroups))).size(),
            users.size() + groups.size());
}

TEST_F(FilterTest, TheBitsOfNativeModeCountAndThoseOfMixedModeDoNot) {
  EXPECT_EQ(session::TypeFilter({.up_level_native_mode = kComputers}),
            session::TypeFilter(Scope(kComputers)));
  EXPECT_THAT(Find(session::TypeFilter({.up_level_mixed_mode = kComputers})), IsEmpty());
}

TEST_F(FilterTest, NoBitAdmitsNothing) {
  EXPECT_THAT(Find(session::TypeFilter(Scope(0))), IsEmpty());
  EXPECT_THAT(Find(session::TypeFilter(Scope(0x9))), IsEmpty());
}

TEST_F(FilterTest, KindsOfGroupsAreToldApart) {
  constexpr std::uint32_t kGlobalDistribution = 0x40;
  constexpr std::uint32_t kGlobalSecurity = 0x80;
  constexpr std::uint32_t kUniversal = 0x30;
  EXPECT_THAT(Find(session::TypeFilter(Scope(kGlobalDistribution))), ElementsAre("Rundschreiben"));
  EXPECT_EQ(Find(session::TypeFilter(Scope(kGlobalSecurity))).size(),
            Find(session::TypeFilter(Scope(kGroups))).size() - 1);
  EXPECT_THAT(Find(session::TypeFilter(Scope(kUniversal))), IsEmpty());
}

TEST_F(FilterTest, BuiltinGroupsAreLeftOutUnlessAskedFor) {
  constexpr std::uint32_t kBuiltin = 0x4;
  ModifyEntry(file(), std::string("dn: ") + kGroup +
                          "\nchangetype: modify\nreplace: groupType\ngroupType: -2147483643\n");
  EXPECT_THAT(FindTyped(kGroups, "Vertrieb"), IsEmpty());
  EXPECT_THAT(FindTyped(kGroups | kBuiltin, "Vertrieb"), ElementsAre("Vertrieb Alle"));
}

TEST_F(FilterTest, HiddenObjectsAreLeftOutUnlessAskedFor) {
  constexpr std::uint32_t kHidden = 0x1;
  ModifyEntry(file(), std::string("dn: ") + kBirgit +
                          "\nchangetype: modify\nadd: showInAdvancedViewOnly\n"
                          "showInAdvancedViewOnly: TRUE\n");
  EXPECT_THAT(FindTyped(kUsers, "b.kraemer"), IsEmpty());
  EXPECT_THAT(FindTyped(kUsers | kHidden, "b.kraemer"), ElementsAre("Birgit Krämer"));
  EXPECT_EQ(Find(session::TypeFilter(Scope(kUsers))).size() + 1,
            Find(session::TypeFilter(Scope(kUsers | kHidden))).size());
}

TEST_F(FilterTest, ObjectsAreFoundByEachOfTheirNames) {
  EXPECT_THAT(FindTyped(kUsers, "birgit"), ElementsAre("Birgit Krämer")) << "name";
  EXPECT_THAT(FindTyped(kUsers, "b.kraemer"), ElementsAre("Birgit Krämer")) << "logon name";
  EXPECT_THAT(FindTyped(kUsers, "j.weissflog@"), ElementsAre("Jürgen Weißflog")) << "mail";
  ModifyEntry(file(), std::string("dn: ") + kBirgit +
                          "\nchangetype: modify\nreplace: displayName\ndisplayName: Gitti\n");
  EXPECT_THAT(FindTyped(kUsers, "gitti"), ElementsAre("Birgit Krämer")) << "display name";
}

// As the list of the main window finds them.
TEST_F(FilterTest, ObjectsAreFoundByWordsAddressesNamesAndLists) {
  EXPECT_THAT(FindTyped(kUsers, "krämer birgit"), ElementsAre("Birgit Krämer")) << "words";
  EXPECT_THAT(FindTyped(kUsers, "vertrieb@linden-werke.example"), ElementsAre("Birgit Krämer"))
      << "another address";
  EXPECT_THAT(FindTyped(kUsers, kBirgit), ElementsAre("Birgit Krämer"));
  EXPECT_THAT(FindTyped(kGroups, kBirgit), IsEmpty()) << "she is no group";
  EXPECT_THAT(FindTyped(kUsers, "j.weissflog; \"Meyer, Anna\"\nBirgit Krämer <b.kraemer@x.y>"),
              ElementsAre("Jürgen Weißflog", "Meyer, Anna"))
      << "a list";
}

TEST_F(FilterTest, WhateverIsTypedIsTakenLiterally) {
  for (const char* typed :
       {"*", "(", ")", "\\", ")(objectClass=*", "*)(|(name=*", "\\2a", "&(", "="}) {
    EXPECT_THAT(FindTyped(kUsers, typed), IsEmpty()) << typed;
  }
  EXPECT_THAT(FindTyped(kUsers, "A/B"), ElementsAre("Messplatz A/B"));
}

TEST_F(FilterTest, ContainersAreContainers) {
  const auto containers = Find(session::ContainerFilter());
  EXPECT_THAT(containers, ::testing::IsSupersetOf({"Labor I/O", "Users", "Builtin", "Сервис"}));
  EXPECT_THAT(containers, ::testing::Not(::testing::Contains("Birgit Krämer")));
}

// The search itself.

class ObjectSearchTest : public ::testing::Test {
 protected:
  ~ObjectSearchTest() override {
    // A store that still waits would hold up the end of its search.
    gate_.release(100);
  }

  /// Makes a search whose stores answer as the script says.
  void Make(ScriptedStore::SearchScript script) { MakeFrom(OpenScripted(std::move(script))); }
  void MakeFrom(ldap::StoreOpener opener) {
    search_ = std::make_unique<ObjectSearch>(std::move(opener));
    search_->on_found = [this](const std::vector<FoundObject>& objects) {
      EXPECT_EQ(QThread::currentThread(), qApp->thread());
      for (const FoundObject& found : objects) found_.push_back(found.object.name);
    };
    search_->on_finished = [this](const session::ListingEnd& ending) { end_ = ending.end; };
  }
  void Start(const std::string& filter = "(a=b)", std::size_t limit = 10) {
    found_.clear();
    end_.reset();
    search_->Start({.filter = filter, .limit = limit});
  }
  [[nodiscard]] bool WaitForEnd() {
    return QTest::qWaitFor([this] { return end_.has_value(); }, kPatience);
  }
  [[nodiscard]] bool WaitForFound(std::size_t count) {
    return QTest::qWaitFor([this, count] { return found_.size() >= count; }, kPatience);
  }

  std::counting_semaphore<> gate_{0};
  std::vector<std::string> found_;
  std::optional<SearchEnd> end_;
  std::unique_ptr<ObjectSearch> search_;
};

TEST_F(ObjectSearchTest, WhatIsFoundArrivesWhileTheSearchGoesOn) {
  Make([this](const auto& /*request*/, const ldap::EntrySink& sink) {
    sink(UserEntry("Ada"));
    gate_.acquire();
    sink(UserEntry("Bob"));
    return ldap::StoreStatus{};
  });
  Start();
  ASSERT_TRUE(WaitForFound(1));
  EXPECT_THAT(found_, ElementsAre("Ada"));
  EXPECT_FALSE(end_);
  EXPECT_TRUE(search_->IsRunning());
  gate_.release();
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(found_, ElementsAre("Ada", "Bob"));
  EXPECT_EQ(end_->reason, SearchEnd::Reason::kComplete);
  EXPECT_FALSE(search_->IsRunning());
}

TEST_F(ObjectSearchTest, SearchesTheWholeBaseOnAThreadOfItsOwnOverAStoreOfItsOwn) {
  std::atomic<QThread*> opened_on = nullptr;
  std::atomic<QThread*> searched_on = nullptr;
  std::atomic<int> opened = 0;
  ldap::SearchRequest asked;
  MakeFrom([&](std::unique_ptr<ldap::IDirectoryStore>& store, const auto& /*stop*/) {
    opened_on = QThread::currentThread();
    ++opened;
    store = std::make_unique<ScriptedStore>([&](const auto& request, const auto& /*sink*/) {
      searched_on = QThread::currentThread();
      asked = request;
      return ldap::StoreStatus{};
    });
    return ldap::StoreStatus{};
  });
  Start("(a=b)");
  ASSERT_TRUE(WaitForEnd());
  Start("(c=d)");
  ASSERT_TRUE(WaitForEnd());
  search_.reset();
  EXPECT_NE(searched_on, qApp->thread());
  EXPECT_EQ(searched_on, opened_on);
  EXPECT_EQ(opened, 1);
  EXPECT_EQ(asked.base, "DC=x");
  EXPECT_EQ(asked.scope, ldap::SearchScope::kSubtree);
  EXPECT_EQ(asked.filter, "(c=d)");
}

TEST_F(ObjectSearchTest, ANewSearchEndsTheOneBeforeAndNothingOfItArrives) {
  std::atomic<bool> told_to_end = false;
  Make([&](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
    if (request.filter == "(first=1)") {
      sink(UserEntry("Old"));
      gate_.acquire();
      told_to_end = !sink(UserEntry("Older"));
      return ldap::StoreStatus{};
    }
    sink(UserEntry("New"));
    return ldap::StoreStatus{};
  });
  Start("(first=1)");
  ASSERT_TRUE(WaitForFound(1));
  Start("(second=2)");
  gate_.release();
  ASSERT_TRUE(WaitForEnd());
  EXPECT_TRUE(told_to_end);
  EXPECT_THAT(found_, ElementsAre("New"));
}

TEST_F(ObjectSearchTest, AStoppedSearchIsSilent) {
  Make([this](const auto& /*request*/, const ldap::EntrySink& sink) {
    sink(UserEntry("Ada"));
    gate_.acquire();
    return ldap::StoreStatus{};
  });
  Start();
  ASSERT_TRUE(WaitForFound(1));
  search_->Stop();
  EXPECT_FALSE(search_->IsRunning());
  gate_.release();
  search_.reset();
  QCoreApplication::processEvents();
  EXPECT_FALSE(end_);
}

TEST_F(ObjectSearchTest, DestroyingItEndsTheSearchWithTheNextEntry) {
  std::atomic<int> taken = 0;
  Make([&](const auto& /*request*/, const ldap::EntrySink& sink) {
    while (sink(UserEntry("Ada"))) ++taken;
    return ldap::StoreStatus{};
  });
  Start("(a=b)", 1000000000);
  ASSERT_TRUE(WaitForFound(1));
  search_.reset();
  const int at_the_end = taken;
  EXPECT_GT(at_the_end, 0);
  EXPECT_EQ(taken, at_the_end);
}

TEST_F(ObjectSearchTest, ASearchThatHangsHoldsNeitherTheNextOneNorTheEnd) {
  std::atomic<int> opened = 0;
  MakeFrom([&](std::unique_ptr<ldap::IDirectoryStore>& store, const auto& /*stop*/) {
    ++opened;
    store = std::make_unique<ScriptedStore>([](const auto& request, const ldap::EntrySink& sink) {
      if (request.filter == "(hang=1)") return ldap::StoreStatus{ScriptedStore::kHangs, {}};
      sink(UserEntry("Ada"));
      return ldap::StoreStatus{};
    });
    return ldap::StoreStatus{};
  });
  const auto begin = std::chrono::steady_clock::now();
  Start("(hang=1)");
  QTest::qWait(50);
  Start("(a=b)");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(found_, ElementsAre("Ada"));
  EXPECT_EQ(end_->reason, SearchEnd::Reason::kComplete);
  EXPECT_EQ(opened, 1) << "what was stopped has not failed";
  Start("(hang=1)");
  QTest::qWait(50);
  search_.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
}

TEST_F(ObjectSearchTest, AnOpeningThatHangsIsStopped) {
  std::atomic<bool> told = false;
  MakeFrom([&](std::unique_ptr<ldap::IDirectoryStore>& /*store*/, const std::stop_token& stop) {
    while (!stop.stop_requested()) QThread::msleep(1);
    told = true;
    return ldap::StoreStatus{-8, "stopped"};
  });
  Start();
  QTest::qWait(50);
  search_->Stop();
  EXPECT_TRUE(QTest::qWaitFor([&] { return told.load(); }, kPatience));
  search_.reset();
  QCoreApplication::processEvents();
  EXPECT_FALSE(end_);
}

TEST_F(ObjectSearchTest, StopsAtItsOwnLimitAndSaysSo) {
  int asked = 0;
  Make([&](const auto& /*request*/, const ldap::EntrySink& sink) {
    for (; asked < 100; ++asked) {
      if (!sink(UserEntry("Ada"))) break;
    }
    return ldap::StoreStatus{};
  });
  Start("(a=b)", 5);
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(found_.size(), 5U);
  EXPECT_EQ(asked, 5) << "one more than the limit is asked for, and no other";
  EXPECT_EQ(end_->reason, SearchEnd::Reason::kOwnLimit);
}

TEST_F(ObjectSearchTest, AsManyAsTheLimitAreAll) {
  Make([&](const auto& /*request*/, const ldap::EntrySink& sink) {
    for (int i = 0; i < 5; ++i) EXPECT_TRUE(sink(UserEntry("Ada")));
    return ldap::StoreStatus{};
  });
  Start("(a=b)", 5);
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(found_.size(), 5U);
  EXPECT_EQ(end_->reason, SearchEnd::Reason::kComplete);
}

TEST_F(ObjectSearchTest, ALimitOfTheDirectoryIsNoFailure) {
  for (const int code : {3, 4, 11}) {
    Make([code](const auto& /*request*/, const ldap::EntrySink& sink) {
      sink(UserEntry("Ada"));
      return ldap::StoreStatus{code, "limit"};
    });
    Start();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_THAT(found_, ElementsAre("Ada"));
    EXPECT_EQ(end_->reason, SearchEnd::Reason::kDirectoryLimit) << code;
  }
}

TEST_F(ObjectSearchTest, AFailureKeepsWhatWasFoundAndTheNextSearchOpensAnew) {
  std::atomic<int> opened = 0;
  MakeFrom([&](std::unique_ptr<ldap::IDirectoryStore>& store, const auto& /*stop*/) {
    const bool fails = ++opened == 1;
    store = std::make_unique<ScriptedStore>([fails](const auto&, const ldap::EntrySink& sink) {
      sink(UserEntry("Ada"));
      return fails ? ldap::StoreStatus{-1, "connection lost"} : ldap::StoreStatus{};
    });
    return ldap::StoreStatus{};
  });
  Start();
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(found_, ElementsAre("Ada"));
  EXPECT_EQ(end_->reason, SearchEnd::Reason::kFailed);
  EXPECT_EQ(end_->text, "connection lost");
  Start();
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(end_->reason, SearchEnd::Reason::kComplete);
  EXPECT_EQ(opened, 2);
}

TEST_F(ObjectSearchTest, ADirectoryThatCannotBeOpenedIsAFailure) {
  MakeFrom([](std::unique_ptr<ldap::IDirectoryStore>& store, const auto& /*stop*/) {
    store.reset();
    return ldap::StoreStatus{-1, "no such file"};
  });
  Start();
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(end_->reason, SearchEnd::Reason::kFailed);
  EXPECT_EQ(end_->text, "no such file");
}

TEST_F(ObjectSearchTest, TheDirectorysOwnMachineryIsNotShown) {
  Make([](const auto& /*request*/, const ldap::EntrySink& sink) {
    sink({.dn = "CN=Schema,DC=x", .attributes = {{"objectClass", {"top", "dMD"}}}});
    sink(UserEntry("Ada"));
    return ldap::StoreStatus{};
  });
  Start();
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(found_, ElementsAre("Ada"));
}

// What is said of it.

TEST(SearchStatus, SaysWhatIsMissing) {
  using Reason = SearchEnd::Reason;
  const auto end = [](Reason reason, int count) {
    return ToUtf8(console::DescribeEnd({.end = {reason, "gone"}}, count));
  };
  EXPECT_EQ(ToUtf8(console::DescribeRunning(0)), "Searching...");
  EXPECT_EQ(ToUtf8(console::DescribeRunning(1)), "Searching... 1 object so far.");
  EXPECT_EQ(end(Reason::kComplete, 0), "Nothing was found.");
  EXPECT_EQ(end(Reason::kComplete, 2), "2 objects found.");
  EXPECT_EQ(ToUtf8(console::DescribeEnd({.not_found = {"bob"}, .left_out = 2}, 3)),
            "3 objects found, 1 not found: bob, 2 not looked for.");
  EXPECT_EQ(end(Reason::kOwnLimit, 1000),
            "1000 objects are shown and there are more. Type more of the name to narrow the "
            "search.");
  EXPECT_EQ(end(Reason::kDirectoryLimit, 3),
            "The directory ended the search at a limit of its own; 3 objects found until then. "
            "Type more of the name to narrow the search.");
  EXPECT_EQ(end(Reason::kFailed, 1), "The search failed, 1 object found until then: gone");
}

// Two threads at one file.

using EmbeddedSearchTest = ConsoleTest;

TEST_F(EmbeddedSearchTest, TheFileIsSearchedWhileItIsReadElsewhere) {
  ObjectSearch search(session().open_another);
  int ended = 0;
  int found = 0;
  search.on_found = [&](const auto& objects) { found += static_cast<int>(objects.size()); };
  search.on_finished = [&](const session::ListingEnd& ending) {
    EXPECT_EQ(ending.end.reason, SearchEnd::Reason::kComplete) << ending.end.text;
    ++ended;
  };
  constexpr int kRounds = 20;
  for (int round = 0; round < kRounds; ++round) {
    found = 0;
    search.Start({.filter = session::TypeFilter(Scope(kUsers)), .limit = 1000});
    while (ended == round) {
      ldap::Entry entry;
      const std::vector<std::string> all;
      ASSERT_TRUE(session().store->Read(kBirgit, all, entry).Ok());
      const ldap::Modification change{.operation = ldap::Modification::Operation::kReplace,
                                      .attribute = "description",
                                      .values = {std::to_string(round)}};
      ASSERT_TRUE(session().store->Modify(kBirgit, {&change, 1}).Ok());
      QCoreApplication::processEvents();
    }
    EXPECT_GT(found, 40);
  }
}

}  // namespace
}  // namespace pelora::test
