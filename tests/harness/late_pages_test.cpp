// SPDX-License-Identifier: Apache-2.0
// A page of the console's sheets that is shown for the first time when another one has been edited,
// of every class that has tabs, on one and on three objects, with each of the calls by which it
// fills itself failing in turn, for each cause.
#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <span>

#include "hosts/ldap/ldap_status.h"
#include "tests/harness/call_fault_store.h"
#include "tests/harness/fault_causes.h"
#include "tests/harness/random_objects.h"
#include "tests/harness/sheet_scene.h"
#include "tests/support/long_form.h"
#include "tests/support/memory_store.h"

namespace pelora::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;
using Lines = std::vector<std::string>;
using Entries = MemoryStore::Entries;

constexpr const char* kShownOnlyNow =
    "Validation of input fields failed: The settings could not be read before and are shown only "
    "now.";
constexpr const char* kMissing = "Validation of input fields failed: Missing ";

/// Why a request to the store fails.
struct StoreCause {
  std::string_view name;
  int code = 0;
};

constexpr auto kServerIsDown = std::to_array<StoreCause>({{"server down", ldap::kLdapServerDown}});
constexpr auto kReads = std::to_array<StoreCause>({
    {"server down", ldap::kLdapServerDown},
    {"gone", ldap::kLdapNoSuchObject},
    {"no answer", ldap::kLdapTimeout},
});

/// A sheet, and what fails in it.
struct LateSheet {
  std::size_t late = 0;
  /// Another page, which is edited before; and written before, too.
  std::optional<std::size_t> edited{};
  bool is_applied = false;
  /// Which of the calls of showing the late page fails, and why; 0: none.
  std::size_t call = 0;
  Cause cause{};
  /// Somebody edits all of it, whatever it shows.
  bool is_typed_into = false;
  /// Which request of leaving the sheet fails; 0: none.
  std::size_t request = 0;
};

/// What came of it.
struct Played {
  /// What is stored once the sheet was left, and once the page was edited in another sheet.
  Entries left{};
  Entries edited_later{};
  /// Calls of showing the page; requests of leaving the sheet.
  std::size_t calls = 0;
  std::size_t requests = 0;
  /// Nothing of the page could be read.
  bool is_unread = false;
  /// The first OK was refused.
  bool is_refused = false;
  /// Fields of the page that were edited before the sheet was left, and in the other one.
  std::size_t typed = 0;
  std::size_t typed_later = 0;
};

class LatePages : public ::testing::TestWithParam<std::tuple<std::string, std::size_t>> {
 protected:
  LatePages() {
    MemoryStore store;
    SheetScene scene(store, Class(), Names(), Wanted());
    for (ldap::Entry& entry : scene.FirstEntries()) store.Place(std::move(entry));
    full_ = store.entries();
    tabs_ = scene.tabs();
  }

  [[nodiscard]] static std::string Class() { return std::get<0>(GetParam()); }
  [[nodiscard]] std::size_t tabs() const { return tabs_; }
  /// The objects with a value for each field; the same without numbers.
  [[nodiscard]] const Entries& Full() const { return full_; }
  [[nodiscard]] Entries WithoutNumbers() const;

  /// Calls of showing the page fail, each for each cause; so many lie evenly between the first and
  /// the last.
  void PlayCalls(const Entries& first, const LateSheet& sheet, std::size_t most_calls,
                 std::span<const Cause> causes) const;
  /// The page shows nothing, and each request of leaving the sheet fails.
  void PlayRequests(const Entries& first, LateSheet sheet) const;

  /// What is stored when a page was edited, applied, and the sheet left; requests of leaving it.
  struct Anew {
    Entries stored{};
    std::size_t typed = 0;
    std::size_t requests = 0;
  };
  [[nodiscard]] Anew PlayAnew(std::size_t page, std::size_t request, const StoreCause& cause) const;

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
  [[nodiscard]] static std::string Where(const LateSheet& sheet);
  [[nodiscard]] Played Play(const Entries& first, const LateSheet& sheet) const;
  static void Show(SheetScene& scene, const LateSheet& sheet, Played& played);
  static void Leave(SheetScene& scene, const LateSheet& sheet, bool is_request_lost);

  Entries full_;
  std::size_t tabs_ = 0;
};

Entries LatePages::WithoutNumbers() const {
  Entries entries = full_;
  for (auto& [key, attributes] : entries) {
    for (const Attribute& attribute : kAttributeCatalogue) {
      if (attribute.encoding == Encoding::kInteger) attributes.erase(std::string(attribute.name));
    }
  }
  return entries;
}

/// Edits the one page, then shows the other. The first page is shown as soon as there is a sheet.
void LatePages::Show(SheetScene& scene, const LateSheet& sheet, Played& played) {
  FaultPlan& faults = scene.Faults();
  const auto showing = [&](const std::function<void()>& show) {
    const std::size_t before = faults.calls();
    if (sheet.call > 0) Inject(faults, sheet.call, sheet.cause);
    show();
    played.calls = faults.calls() - before;
  };
  const auto open = [&] { return scene.Open().empty(); };
  bool is_whole = true;
  if (sheet.late == 0) {
    showing([&] { is_whole = open(); });
  } else {
    EXPECT_TRUE(open());
  }
  // A tab that refuses stays out, and is there in the next sheet.
  if (!is_whole) {
    EXPECT_TRUE(open());
  }
  if (sheet.edited) {
    EXPECT_GT(scene.EditPage(*sheet.edited), 0U);
  }
  if (sheet.edited && sheet.is_applied) {
    EXPECT_TRUE(scene.sheet().Apply());
  }
  if (sheet.late > 0) {
    showing([&] { EXPECT_TRUE(scene.sheet().SelectPage(sheet.late)); });
  }
  const std::optional<MetFault>& met = faults.last_met();
  played.is_unread = is_whole && met && met->is_felt && met->point == FaultPoint::kGetObject;
  EXPECT_EQ(scene.TakeBoxes().size(), played.is_unread ? 1U : 0U);
}

/// Leaves the sheet by OK, by a second one where the first is refused.
void LatePages::Leave(SheetScene& scene, const LateSheet& sheet, bool is_request_lost) {
  const Lines boxes = scene.TakeBoxes();
  EXPECT_TRUE(scene.IsOpen());
  if (is_request_lost) {
    EXPECT_EQ(boxes.size(), 1U);
  } else if (sheet.is_typed_into) {
    EXPECT_THAT(boxes, ElementsAre(StartsWith(kShownOnlyNow)));
    // What cannot be edited of several is hidden by now.
    (void)scene.EditPage(sheet.late);
  } else {
    // What may not be empty was taken for that: the sheet is given up.
    EXPECT_THAT(boxes, ElementsAre(StartsWith(kMissing)));
    EXPECT_TRUE(scene.Cancel());
    if (!sheet.edited) return;
    EXPECT_EQ(scene.Open(), "");
    EXPECT_GT(scene.EditPage(*sheet.edited), 0U);
  }
  EXPECT_TRUE(scene.Ok());
  EXPECT_EQ(scene.TakeBoxes(), Lines());
}

Played LatePages::Play(const Entries& first, const LateSheet& sheet) const {
  MemoryStore store;
  store.SetEntries(first);
  CallFaultStore faulty(store);
  SheetScene scene(faulty, Class(), Names(), Wanted());
  Played played;
  Show(scene, sheet, played);
  if (!sheet.edited || !sheet.is_applied) {
    EXPECT_EQ(store.entries(), first) << "showing writes nothing";
  }
  if (sheet.is_typed_into) played.typed = scene.EditPage(sheet.late);
  const std::size_t before = faulty.calls();
  faulty.Fail(sheet.request, {.status = {ldap::kLdapServerDown, "the store's own words"}});
  played.is_refused = !scene.Ok();
  played.requests = faulty.calls() - before;
  EXPECT_TRUE(sheet.request == 0 || faulty.met());
  if (played.is_refused) Leave(scene, sheet, faulty.met().has_value());
  EXPECT_FALSE(scene.IsOpen());
  played.left = store.entries();
  EXPECT_EQ(scene.Open(), "");
  played.typed_later = scene.EditPage(sheet.late);
  EXPECT_TRUE(scene.Ok());
  EXPECT_EQ(scene.TakeBoxes(), Lines());
  played.edited_later = store.entries();
  scene.Close();
  EXPECT_FALSE(scene.IsLibraryLeft());
  return played;
}

std::string LatePages::Where(const LateSheet& sheet) {
  return "page " + std::to_string(sheet.late) + " late, sheet of " + Class();
}

void LatePages::PlayCalls(const Entries& first, const LateSheet& sheet, std::size_t most_calls,
                          std::span<const Cause> causes) const {
  const Played smooth = Play(first, sheet);
  ASSERT_FALSE(HasFailure());
  EXPECT_GT(smooth.calls, 0U);
  EXPECT_EQ(smooth.left != smooth.edited_later, smooth.typed_later > 0);
  const std::size_t tried = std::min(most_calls, smooth.calls);
  PlayEveryFault(Where(sheet), tried, causes, [&](std::size_t place, const Cause& cause) {
    const std::size_t steps = std::max<std::size_t>(tried - 1, 1);
    const std::size_t call = 1 + (place - 1) * (smooth.calls - 1) / steps;
    SCOPED_TRACE("call " + std::to_string(call) + " of " + std::to_string(smooth.calls));
    LateSheet failing = sheet;
    failing.call = call;
    failing.cause = cause;
    const Played played = Play(first, failing);
    EXPECT_EQ(played.left, smooth.left);
    EXPECT_EQ(played.edited_later, smooth.edited_later);
    // An apply has read the first page anew by the time of typing, and shows it.
    const bool is_read_anew = sheet.late == 0 && sheet.edited && sheet.is_applied;
    if (!played.is_unread || is_read_anew) return;
    // A page may have nothing to type into as long as it shows nothing.
    failing.is_typed_into = true;
    const Played typed = Play(first, failing);
    EXPECT_EQ(typed.is_refused, typed.typed > 0) << "it was typed over what nobody has seen";
    EXPECT_EQ(typed.left, typed.typed > 0 ? smooth.edited_later : smooth.left);
  });
}

void LatePages::PlayRequests(const Entries& first, LateSheet sheet) const {
  const Played smooth = Play(first, sheet);
  // The first page is bound somewhere on the way to a sheet.
  sheet.cause = {"could not be asked", kServerDown};
  Played unread;
  while (!unread.is_unread && sheet.call++ < smooth.calls) unread = Play(first, sheet);
  ASSERT_TRUE(unread.is_unread);
  EXPECT_EQ(unread.requests > 0, sheet.edited.has_value());
  PlayEveryFault(Where(sheet) + ", and left", unread.requests, kServerIsDown,
                 [&](std::size_t request, const StoreCause& /*cause*/) {
                   sheet.request = request;
                   EXPECT_EQ(Play(first, sheet).left, smooth.left);
                 });
}

LatePages::Anew LatePages::PlayAnew(std::size_t page, std::size_t request,
                                    const StoreCause& cause) const {
  MemoryStore store;
  store.SetEntries(WithoutNumbers());
  CallFaultStore faulty(store);
  SheetScene scene(faulty, Class(), Names(), Wanted());
  EXPECT_EQ(scene.Open(), "");
  Anew anew{.typed = scene.EditPage(page)};
  // There may be nothing to be edited of several.
  if (anew.typed == 0) return anew;
  EXPECT_TRUE(scene.sheet().Apply());
  const Entries written = store.entries();
  const std::size_t before = faulty.calls();
  faulty.Fail(request, {.status = {cause.code, "the store's own words"}});
  const bool is_done = scene.Ok();
  anew.stored = store.entries();
  anew.requests = faulty.calls() - before;
  EXPECT_EQ(anew.stored, written);
  EXPECT_EQ(is_done, request == 0);
  EXPECT_EQ(scene.TakeBoxes().size(), request == 0 ? 0U : 1U);
  if (!is_done) {
    EXPECT_TRUE(scene.Ok());
    EXPECT_EQ(scene.TakeBoxes(), Lines());
    anew.stored = store.entries();
  }
  return anew;
}

/// What it shows of what could not be read, and what it shows as 0 of objects that have no number,
/// is nobody's wish, whatever becomes of the rounds in which it is read and written.
TEST_P(LatePages, WhatTheyShowIsNobodysEdit) {
  for (std::size_t late = 0; late < tabs(); ++late) {
    SCOPED_TRACE("page " + std::to_string(late) + " is late");
    LateSheet sheet{.late = late};
    if (tabs() > 1) sheet.edited = late == 0 ? 1 : 0;
    // Of one object the other page is written before, of three along with the late one.
    sheet.is_applied = std::get<1>(GetParam()) == 1;
    PlayCalls(Full(), sheet, RoundsOr(2), kCauses);
    if (HasFailure()) return;
    PlayCalls(WithoutNumbers(), sheet, RoundsOr(1),
              std::span(kCauses).first(std::min(RoundsOr(3), kCauses.size())));
    if (HasFailure()) return;
    PlayRequests(WithoutNumbers(), sheet);
    if (HasFailure()) return;
  }
}

/// A page that was written asks for its objects anew when the sheet is left.
TEST_P(LatePages, WhatIsReadAnewAfterAWriteIsNobodysEdit) {
  for (std::size_t page = 0; page < tabs(); ++page) {
    SCOPED_TRACE("page " + std::to_string(page) + " is read anew");
    const Anew smooth = PlayAnew(page, 0, {});
    ASSERT_FALSE(HasFailure());
    EXPECT_EQ(smooth.requests > 0, smooth.typed > 0);
    PlayEveryFault("page " + std::to_string(page) + " read anew, sheet of " + Class(),
                   smooth.requests, kReads, [&](std::size_t request, const StoreCause& cause) {
                     EXPECT_EQ(PlayAnew(page, request, cause).stored, smooth.stored);
                   });
  }
}

INSTANTIATE_TEST_SUITE_P(EveryClass, LatePages,
                         ::testing::Combine(::testing::ValuesIn(ClassesWithTabs()),
                                            ::testing::Values(std::size_t{1}, std::size_t{3})),
                         [](const auto& row) {
                           return std::get<0>(row.param) +
                                  (std::get<1>(row.param) == 1 ? "OfOne" : "OfThree");
                         });

}  // namespace
}  // namespace pelora::testing
