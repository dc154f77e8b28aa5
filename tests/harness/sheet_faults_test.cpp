// SPDX-License-Identifier: Apache-2.0
// The console's sheets, of every class that has tabs: every field of every tab is edited, on one
// and on three objects, with each request to the directory failing in turn, for each cause.
#include <gmock/gmock.h>

#include <array>
#include <optional>

#include "directory/error_text.h"
#include "hosts/ldap/ldap_status.h"
#include "tests/harness/call_fault_store.h"
#include "tests/harness/fault_causes.h"
#include "tests/harness/random_objects.h"
#include "tests/harness/sheet_scene.h"
#include "tests/support/memory_store.h"

namespace pelora::testing {
namespace {

using Lines = std::vector<std::string>;
using Entries = MemoryStore::Entries;

struct StoreCause {
  std::string_view name;
  int code = 0;
  bool is_done = false;
};

constexpr auto kStoreCauses = std::to_array<StoreCause>({
    {"server down", ldap::kLdapServerDown},
    {"no right", ldap::kLdapInsufficientAccessRights},
    {"busy", ldap::kLdapBusy},
    {"gone", ldap::kLdapNoSuchObject},
    {"refused by a rule", ldap::kLdapConstraintViolation},
    {"no answer, not done", ldap::kLdapTimeout},
    {"no answer, done", ldap::kLdapTimeout, true},
});

using SheetCase = std::tuple<std::string, std::size_t>;

class SheetFaults : public ::testing::TestWithParam<SheetCase> {
 protected:
  SheetFaults() {
    MemoryStore store;
    SheetScene scene(store, Class(), Names(), Wanted());
    for (ldap::Entry& entry : scene.FirstEntries()) store.Place(std::move(entry));
    before_ = store.entries();
    tabs_ = scene.tabs();
  }

  void PlaySmoothly();
  void PlayWithFault(std::size_t call, const StoreCause& cause);

  /// A sheet with a page that cannot be read when it is opened.
  struct LateSheet {
    /// The page, and another one that is edited; none: neither.
    std::optional<std::size_t> late{};
    std::optional<std::size_t> edited{};
    /// Which request of the first OK fails; 0: none.
    std::size_t ok_call = 0;
  };
  struct Played {
    Entries stored;
    /// Requests of the first OK.
    std::size_t ok_calls = 0;
  };
  [[nodiscard]] Played PlayLate(const LateSheet& played, const StoreCause& cause);

  std::size_t calls_ = 0;
  std::size_t tabs_ = 0;

  [[nodiscard]] static std::string Class() { return std::get<0>(GetParam()); }

 private:
  [[nodiscard]] static Lines Names() {
    Lines names;
    for (std::size_t place = 0; place < std::get<1>(GetParam()); ++place) {
      names.push_back("CN=object" + std::to_string(place) + ",DC=memory,DC=example");
    }
    return names;
  }
  [[nodiscard]] static EditedValues Wanted() {
    return {.chosen = "CN=chosen,DC=memory,DC=example", .account = Names().size() == 1};
  }
  void ExpectEachIsOneOrTheOther(const Entries& now) const;
  void ExpectTold(const Lines& boxes, const CallFaultStore::Met& met,
                  const StoreCause& cause) const;
  /// The objects before anything was done, with no number set.
  [[nodiscard]] Entries WithoutNumbers() const;

  Entries before_;
  Entries after_;
};

void SheetFaults::PlaySmoothly() {
  MemoryStore store;
  store.SetEntries(before_);
  CallFaultStore faulty(store);
  SheetScene scene(faulty, Class(), Names(), Wanted());
  ASSERT_EQ(scene.Open(), "");
  EXPECT_GT(scene.Edit(), 0U);
  EXPECT_TRUE(scene.Ok());
  EXPECT_EQ(scene.TakeBoxes(), Lines());
  after_ = store.entries();
  calls_ = faulty.calls();
  EXPECT_NE(after_, before_);
}

/// Every attribute is as it was or as it is to be.
void SheetFaults::ExpectEachIsOneOrTheOther(const Entries& now) const {
  const auto value_in = [](const Entries& entries, const std::string& key,
                           const std::string& attribute) {
    const ldap::AttributeMap& attributes = entries.at(key);
    const auto found = attributes.find(attribute);
    return found == attributes.end() ? ldap::AttributeValues() : found->second;
  };
  ASSERT_EQ(now.size(), before_.size());
  for (const auto& [key, attributes] : now) {
    for (const Attribute& attribute : kAttributeCatalogue) {
      const std::string name(attribute.name);
      EXPECT_THAT(value_in(now, key, name),
                  ::testing::AnyOf(value_in(before_, key, name), value_in(after_, key, name)))
          << key << " " << name;
    }
  }
}

/// One box, which says what failed, where, and what to do about it.
void SheetFaults::ExpectTold(const Lines& boxes, const CallFaultStore::Met& met,
                             const StoreCause& cause) const {
  ASSERT_EQ(boxes.size(), 1U);
  const std::string code = CodeText(ldap::HresultOfLdap(cause.code));
  EXPECT_THAT(boxes.front(), ::testing::HasSubstr("Error code: " + code));
  EXPECT_THAT(boxes.front(), ::testing::HasSubstr("The directory says: the store's own words"));
  if (!met.is_change) return;
  EXPECT_THAT(boxes.front(), ::testing::HasSubstr("Object: " + met.dn));
  EXPECT_THAT(boxes.front(), ::testing::HasSubstr("Fields: "));
  const char* const advice =
      cause.code == ldap::kLdapTimeout ? "It may have been done or not" : ".";
  EXPECT_THAT(boxes.front(), ::testing::HasSubstr(advice));
}

void SheetFaults::PlayWithFault(std::size_t call, const StoreCause& cause) {
  MemoryStore store;
  store.SetEntries(before_);
  CallFaultStore faulty(store);
  faulty.Fail(call, {.status = {cause.code, "the store's own words"}, .is_done = cause.is_done});
  SheetScene scene(faulty, Class(), Names(), Wanted());
  const auto is_met = [&] { return faulty.met().has_value(); };

  // Opening: a tab that cannot be opened stays out, and one that cannot be read says so.
  const std::string problem = scene.Open();
  const bool is_left_out = is_met() && scene.PageCount() < tabs_;
  EXPECT_EQ(problem.empty(), !is_left_out) << problem;
  if (is_left_out) {
    EXPECT_EQ(scene.TakeBoxes(), Lines());
    EXPECT_EQ(store.entries(), before_);
    ASSERT_EQ(scene.Open(), "");
  } else {
    scene.ShowAll();
  }
  bool is_unread = is_met() && !is_left_out;
  if (is_unread) {
    ExpectTold(scene.TakeBoxes(), *faulty.met(), cause);
    EXPECT_EQ(store.entries(), before_);
  }
  scene.Edit();
  if (is_unread && !scene.Ok()) {
    // What was typed into a page that showed nothing gives way to what is stored.
    EXPECT_EQ(scene.TakeBoxes().size(), 1U);
    ExpectEachIsOneOrTheOther(store.entries());
    scene.Edit();
  } else if (is_unread) {
    ASSERT_EQ(scene.Open(), "");
    scene.Edit();
  }
  const bool was_met = is_met();
  const bool is_done = scene.Ok();
  Lines boxes = scene.TakeBoxes();
  EXPECT_EQ(is_done, boxes.empty());
  EXPECT_EQ(scene.IsOpen(), !is_done);
  if (!is_done) {
    EXPECT_FALSE(was_met);
    ExpectTold(boxes, *faulty.met(), cause);
    ExpectEachIsOneOrTheOther(store.entries());
    // Nobody types anything anew.
    EXPECT_TRUE(scene.Ok());
    EXPECT_EQ(scene.TakeBoxes(), Lines());
  }
  EXPECT_EQ(store.entries(), after_);
  EXPECT_TRUE(is_met());
  scene.Close();
  EXPECT_FALSE(scene.IsLibraryLeft());
}

TEST_P(SheetFaults, EachIsToldAndOkOnceMoreDoesTheRest) {
  PlaySmoothly();
  ASSERT_FALSE(HasFailure());
  PlayEveryFault("sheet of " + Class(), calls_, kStoreCauses,
                 [this](std::size_t call, const StoreCause& cause) { PlayWithFault(call, cause); });
}

Entries SheetFaults::WithoutNumbers() const {
  Entries entries = before_;
  for (auto& [key, attributes] : entries) {
    for (const Attribute& attribute : kAttributeCatalogue) {
      if (attribute.encoding == Encoding::kInteger) attributes.erase(std::string(attribute.name));
    }
  }
  return entries;
}

/// Everything is shown, one page edited, and the sheet left by OK, by a second one if need be.
SheetFaults::Played SheetFaults::PlayLate(const LateSheet& played, const StoreCause& cause) {
  const CallFaultStore::Fault fault{.status = {cause.code, "the store's own words"}};
  MemoryStore store;
  store.SetEntries(WithoutNumbers());
  CallFaultStore faulty(store);
  SheetScene scene(faulty, Class(), Names(), Wanted());
  // The first page is read by the last request of the opening.
  EXPECT_EQ(scene.Open(), "");
  const std::size_t opening_calls = faulty.calls();
  if (played.late == std::size_t{0}) {
    faulty.Fail(opening_calls, fault);
    EXPECT_EQ(scene.Open(), "");
  }
  for (std::size_t page = 1; page < scene.PageCount(); ++page) {
    if (played.late == page) faulty.Fail(1, fault);
    EXPECT_TRUE(scene.sheet().SelectPage(page));
  }
  EXPECT_EQ(scene.TakeBoxes().size(), played.late ? 1U : 0U);
  if (played.edited) {
    EXPECT_GT(scene.EditPage(*played.edited), 0U);
  }
  const std::size_t calls_before = faulty.calls();
  faulty.Fail(played.ok_call, fault);
  const bool is_done = scene.Ok();
  const std::size_t ok_calls = faulty.calls() - calls_before;
  EXPECT_TRUE(is_done || faulty.met());
  if (!is_done) {
    EXPECT_TRUE(scene.Ok());
  }
  return {.stored = store.entries(), .ok_calls = ok_calls};
}

/// What shows as 0 of objects that have no number is nobody's wish, in whatever round the page
/// fills itself and whatever becomes of that round. Another page is edited: the sheet writes.
TEST_P(SheetFaults, WhatWasReadLateIsNobodysEdit) {
  const StoreCause& cause = kStoreCauses.front();
  for (std::size_t late = 0; late < tabs_; ++late) {
    SCOPED_TRACE("page " + std::to_string(late) + " is read late");
    std::optional<std::size_t> edited;
    if (tabs_ > 1) edited = late == 0 ? 1 : 0;
    const Entries wanted = PlayLate({.edited = edited}, cause).stored;
    const Played smooth = PlayLate({.late = late, .edited = edited}, cause);
    EXPECT_EQ(smooth.stored, wanted);
    ASSERT_FALSE(HasFailure());
    PlayEveryFault("page " + std::to_string(late) + " read late, sheet of " + Class(),
                   smooth.ok_calls, std::array{cause},
                   [&](std::size_t call, const StoreCause& met) {
                     const LateSheet played{.late = late, .edited = edited, .ok_call = call};
                     EXPECT_EQ(PlayLate(played, met).stored, wanted);
                   });
  }
}

INSTANTIATE_TEST_SUITE_P(EveryClass, SheetFaults,
                         ::testing::Combine(::testing::ValuesIn(ClassesWithTabs()),
                                            ::testing::Values(std::size_t{1}, std::size_t{3})),
                         [](const auto& row) {
                           return std::get<0>(row.param) +
                                  (std::get<1>(row.param) == 1 ? "OfOne" : "OfThree");
                         });

}  // namespace
}  // namespace pelora::testing
