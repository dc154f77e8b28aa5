// SPDX-License-Identifier: Apache-2.0
// Memory runs out: in every tab's loading and writing, in the console's sheets, and in the runner
// of the command line, one allocation after another fails. It ends in an error, nothing is half
// written, and what failed can be done again.
#include <gmock/gmock.h>

#include <array>
#include <optional>

#include "hosts/changes/change_runner.h"
#include "hosts/ctl/pages/settings_changer.h"
#include "hosts/ldap/bound_attributes.h"
#include "hosts/session/fields/field_value.h"
#include "server/component_server.h"
#include "server/console_registration.h"
#include "tests/harness/page_scene.h"
#include "tests/harness/sheet_scene.h"
#include "tests/harness/starved.h"
#include "tests/support/memory_store.h"

namespace pelora::testing {
namespace {

using Lines = std::vector<std::string>;
using TabCase = std::tuple<const ComponentClass*, std::size_t>;

std::vector<const ComponentClass*> Tabs() {
  std::vector<const ComponentClass*> tabs;
  for (const ComponentClass& component : ClassTable()) {
    if (component.kind == ComponentKind::kPropertyPage) tabs.push_back(&component);
  }
  return tabs;
}

class PageMemory : public ::testing::TestWithParam<TabCase> {
 protected:
  using States = PageScene::States;

  PageMemory() {
    before_ = Scene().Stored();
    PageScene scene = Scene();
    loading_ = CountOf([&] { return scene.Open() == S_OK; });
    scene.Edit();
    writing_ = CountOf([&] { return scene.Ok(); });
    after_ = scene.Stored();
  }

  [[nodiscard]] static PageScene Scene() {
    return PageScene(*std::get<0>(GetParam()), std::get<1>(GetParam()));
  }
  void StarveLoading(std::size_t allocation) const;
  void StarveWriting(std::size_t allocation) const;

  std::size_t loading_ = 0;
  std::size_t writing_ = 0;

 private:
  void ExpectWhole(const States& now) const;

  States before_;
  States after_;
};

/// Each object is as it was or as it is to be, in their order.
void PageMemory::ExpectWhole(const States& now) const {
  std::size_t written = 0;
  while (written < now.size() && now[written] == after_[written]) ++written;
  for (std::size_t object = written; object < now.size(); ++object) {
    EXPECT_EQ(now[object], before_[object]) << "object " << object;
  }
}

void PageMemory::StarveLoading(std::size_t allocation) const {
  PageScene scene = Scene();
  const auto opened = Starved(allocation, [&] { return scene.Open() == S_OK; });
  const Lines boxes = scene.TakeBoxes();
  if (!boxes.empty()) {
    EXPECT_EQ(boxes, Lines({OutOfMemoryText()}));
  }
  // Either the host is told, or the administrator.
  EXPECT_TRUE(!opened.value_or(false) || !boxes.empty() || scene.IsOpen());
  if (!opened.value_or(false) || !scene.IsOpen()) {
    EXPECT_EQ(scene.Open(), S_OK);
  } else if (!boxes.empty()) {
    // What was not loaded is not written; features that were loaded are their own.
    scene.Edit();
    if (scene.Ok()) {
      EXPECT_EQ(scene.Open(), S_OK);
    }
    if (std::get<0>(GetParam())->name != "CPropPageFeatures") {
      EXPECT_EQ(scene.Stored(), before_);
    }
    (void)scene.TakeBoxes();
  }
  scene.Edit();
  EXPECT_TRUE(scene.Ok());
  EXPECT_EQ(scene.TakeBoxes(), Lines());
  EXPECT_EQ(scene.Stored(), after_);
  scene.Close();
  EXPECT_EQ(scene.LeftBehind(), "");
}

void PageMemory::StarveWriting(std::size_t allocation) const {
  PageScene scene = Scene();
  EXPECT_EQ(scene.Open(), S_OK);
  scene.Edit();
  const auto done = Starved(allocation, [&] { return scene.Ok(); });
  ExpectWhole(scene.Stored());
  if (done.value_or(false)) {
    EXPECT_EQ(scene.Stored(), after_);
  } else if (scene.IsOpen()) {
    if (done) {
      EXPECT_EQ(scene.TakeBoxes(), Lines({OutOfMemoryText()}));
    }
    (void)scene.TakeBoxes();
    scene.Edit();
    EXPECT_TRUE(scene.Ok());
    EXPECT_EQ(scene.TakeBoxes(), Lines());
    EXPECT_EQ(scene.Stored(), after_);
  }
  scene.Close();
  EXPECT_EQ(scene.LeftBehind(), "");
}

TEST_P(PageMemory, EndsInAnErrorAndNothingIsHalfWritten) {
  const auto all = std::to_array<Starving>({
      {"loading", loading_, [this](std::size_t allocation) { StarveLoading(allocation); }},
      {"writing", writing_, [this](std::size_t allocation) { StarveWriting(allocation); }},
  });
  StarveEach(std::get<0>(GetParam())->name, all);
}

INSTANTIATE_TEST_SUITE_P(EveryTab, PageMemory,
                         ::testing::Combine(::testing::ValuesIn(Tabs()),
                                            ::testing::Values(std::size_t{1}, std::size_t{3})),
                         [](const auto& row) {
                           return std::string(std::get<0>(row.param)->name) +
                                  (std::get<1>(row.param) == 1 ? "OfOne" : "OfThree");
                         });

/// Copies a value that may be of one of several kinds while each of its allocations fails.
template <typename Value>
void StarveCopies(const Value& value) {
  const Action copy = [&value] {
    const Value another = value;
    return another == value;
  };
  const std::size_t allocations = CountOf(copy);
  EXPECT_GT(allocations, 0U);
  for (std::size_t allocation = 1; allocation <= allocations; ++allocation) {
    EXPECT_EQ(Starved(allocation, copy), std::nullopt);
  }
}

TEST(CopyMemory, OfWhatMayBeOfSeveralKindsNothingIsLeftHalfMade) {
  const std::string text(100, 'x');
  StarveCopies(session::FieldValue(text));
  StarveCopies(session::FieldValue(Lines{text, text}));
  StarveCopies(resources::ResourceName(text));
  StarveCopies(Variant::String(text));
  StarveCopies(Variant::StringArray({text, text}));
}

/// Objects in memory, under the console's sheets or the command line's runner.
class StoreMemory : public ::testing::Test {
 protected:
  static constexpr const char* kChosen = "CN=chosen,DC=memory,DC=example";

  void Prepare(const std::string& object_class) {
    MemoryStore store;
    SheetScene scene(store, object_class, Names(), Wanted());
    for (ldap::Entry& entry : scene.FirstEntries()) store.Place(std::move(entry));
    before_ = store.entries();
  }
  [[nodiscard]] static Lines Names() {
    return {"CN=one,DC=memory,DC=example", "CN=two,DC=memory,DC=example"};
  }
  [[nodiscard]] static EditedValues Wanted() { return {.chosen = kChosen, .account = false}; }
  /// Each attribute is as it was or as it is to be; `is_whole`: each object is.
  void ExpectNothingBetween(const MemoryStore& store, bool is_whole) const {
    ASSERT_EQ(store.entries().size(), before_.size());
    for (const auto& [key, now] : store.entries()) {
      const ldap::AttributeMap& was = before_.at(key);
      const ldap::AttributeMap& is_to_be = after_.at(key);
      if (is_whole) {
        EXPECT_TRUE(now == was || now == is_to_be) << key;
      }
      for (const Attribute& attribute : kAttributeCatalogue) {
        const auto value_in = [&](const ldap::AttributeMap& attributes) {
          const auto found = attributes.find(attribute.name);
          return found == attributes.end() ? ldap::AttributeValues() : found->second;
        };
        EXPECT_THAT(value_in(now), ::testing::AnyOf(value_in(was), value_in(is_to_be)))
            << key << " " << attribute.name;
      }
    }
  }

  MemoryStore::Entries before_;
  MemoryStore::Entries after_;
};

TEST_F(StoreMemory, TheConsolesSheetsStayUsable) {
  for (const std::string_view object_class : RegisteredObjectClasses()) {
    const std::string name(object_class);
    if (DefaultRegistrations(name, ConsoleRole::kPropertyPage).empty()) continue;
    Prepare(name);
    MemoryStore smooth;
    smooth.SetEntries(before_);
    SheetScene untroubled(smooth, name, Names(), Wanted());
    ASSERT_EQ(untroubled.Open(), "");
    untroubled.Edit();
    const std::size_t writing = CountOf([&] { return untroubled.Ok(); });
    after_ = smooth.entries();
    const auto play = [&](std::size_t allocation) {
      MemoryStore store;
      store.SetEntries(before_);
      SheetScene scene(store, name, Names(), Wanted());
      ASSERT_EQ(scene.Open(), "");
      scene.Edit();
      const auto done = Starved(allocation, [&] { return scene.Ok(); });
      ExpectNothingBetween(store, false);
      if (!done.value_or(false)) {
        ASSERT_TRUE(scene.IsOpen());
        (void)scene.TakeBoxes();
        scene.Edit();
        EXPECT_TRUE(scene.Ok());
        EXPECT_EQ(scene.TakeBoxes(), Lines());
      }
      EXPECT_EQ(store.entries(), after_);
    };
    StarveEach("sheet of " + name, std::array<Starving, 1>{{{"writing", writing, play}}});
    if (HasFailure()) return;
  }
}

/// What the command line does to change two users, in memory.
class CtlRun {
 public:
  explicit CtlRun(const MemoryStore::Entries& entries) {
    auto store = std::make_unique<MemoryStore>();
    store->SetEntries(entries);
    store_ = store.get();
    session_ = std::make_unique<session::DirectorySession>("memory", std::move(store), nullptr);
    platform_.emplace(session_->service, session_->store, Module());
    catalogue_.emplace(session_->specifiers, platform_->platform, Module(), &CreateComponent);
    finder_.emplace(*session_);
    changer_.emplace(*session_, Module(), *catalogue_, *finder_);
  }

  /// Whether every object is as asked.
  bool Go(const Lines& names) {
    const std::vector<ctl::Assignment> assignments = {
        {.field = "peloraHidden", .value = "yes"},
        {.field = "peloraQuotaOverride", .value = "yes"},
        {.field = "peloraQuotaHard", .value = "7"},
        {.field = "otherMailbox",
         .operation = ctl::Assignment::Operation::kAdd,
         .value = "added@x.example"}};
    changes::RunOptions options;
    options.attributes = ldap::BoundAttributes();
    options.attributes.emplace_back("objectClass");
    results_.reserve(names.size());
    const changes::Tally tally = changes::RunChanges(
        *session_->store, names,
        [&](changes::ReadObject object) {
          return changer_->Prepare(std::move(object), assignments);
        },
        options,
        [&](std::size_t /*at*/, const changes::Result& result) { results_.push_back(result); });
    return tally.IsAllDone();
  }
  [[nodiscard]] const MemoryStore& store() const { return *store_; }
  [[nodiscard]] const std::vector<changes::Result>& results() const { return results_; }

 private:
  static const resources::ResourceFile& Module() {
    static const resources::ResourceFile module =
        resources::ResourceFile::Read(resources::EmbeddedResourceBytes()).value.value();
    return module;
  }

  MemoryStore* store_ = nullptr;
  std::unique_ptr<session::DirectorySession> session_;
  std::optional<ctl::PagePlatform> platform_;
  std::optional<ctl::FieldCatalogue> catalogue_;
  std::optional<ctl::ObjectFinder> finder_;
  std::optional<ctl::SettingsChanger> changer_;
  std::vector<changes::Result> results_;
};

TEST_F(StoreMemory, TheRunnerWritesAnObjectWholeOrNotAtAll) {
  Prepare("user");
  CtlRun smooth(before_);
  const std::size_t allocations = CountOf([&] { return smooth.Go(Names()); });
  ASSERT_EQ(smooth.results().size(), 2U);
  for (const changes::Result& result : smooth.results()) EXPECT_EQ(result.message, "");
  after_ = smooth.store().entries();
  ASSERT_NE(after_, before_);
  const auto play = [&](std::size_t allocation) {
    CtlRun run(before_);
    const auto done = Starved(allocation, [&] { return run.Go(Names()); });
    ExpectNothingBetween(run.store(), true);
    if (done.value_or(false)) {
      EXPECT_EQ(run.store().entries(), after_);
    }
    // What was told is so.
    for (const changes::Result& result : run.results()) {
      if (!result.IsDone()) continue;
      EXPECT_EQ(run.store().Stored(result.dn), after_.at(ldap::NameKey(result.dn)));
    }
    // The same once more does the rest.
    EXPECT_TRUE(CtlRun(run.store().entries()).Go(Names()));
  };
  StarveEach("runner", std::array<Starving, 1>{{{"running", allocations, play}}});
}

}  // namespace
}  // namespace pelora::testing
