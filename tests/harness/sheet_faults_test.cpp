// SPDX-License-Identifier: Apache-2.0
// The console's sheets, of every class that has tabs: every field of every tab is edited, on one
// and on three objects, with each request to the directory failing in turn, for each cause.
#include <gmock/gmock.h>

#include <array>

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

  // Everything is read when the sheet is opened: without it there is none.
  const std::string problem = scene.Open();
  EXPECT_EQ(problem.empty(), !is_met()) << problem;
  EXPECT_EQ(scene.TakeBoxes(), Lines());
  if (is_met()) {
    EXPECT_EQ(store.entries(), before_);
    ASSERT_EQ(scene.Open(), "");
  }
  ASSERT_EQ(scene.PageCount(), tabs_);
  scene.Edit();
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

INSTANTIATE_TEST_SUITE_P(EveryClass, SheetFaults,
                         ::testing::Combine(::testing::ValuesIn(ClassesWithTabs()),
                                            ::testing::Values(std::size_t{1}, std::size_t{3})),
                         [](const auto& row) {
                           return std::get<0>(row.param) +
                                  (std::get<1>(row.param) == 1 ? "OfOne" : "OfThree");
                         });

}  // namespace
}  // namespace pelora::testing
