// SPDX-License-Identifier: Apache-2.0
// What has to be so after something was done on a sheet.
#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>

#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/name_key.h"
#include "tests/harness/random_objects.h"
#include "tests/harness/sheet_player.h"

namespace pelora::testing {
namespace {

/// Several users are given one list of these, as it stands in its dialog.
constexpr std::string_view kGivenWhole = "peloraUserArchiveServers";

bool IsSeveral(std::string_view attribute) {
  const auto* const found = std::ranges::find(kAttributeCatalogue, attribute, &Attribute::name);
  return found != kAttributeCatalogue.end() && found->is_multi_valued;
}

/// What stands in one of them only, in the case of none.
std::set<std::string> Difference(const ldap::AttributeValues& left,
                                 const ldap::AttributeValues& right) {
  std::set<std::string> difference;
  std::ranges::set_symmetric_difference(Folded(left), Folded(right),
                                        std::inserter(difference, difference.end()));
  return difference;
}

}  // namespace

std::vector<SheetPlayer::FieldKey> SheetPlayer::TouchedFields() {
  std::vector<FieldKey> touched;
  for (const FieldKey& key : handled_) {
    const auto& [page, field] = key;
    const FieldRow& row = Touched(page).Row(field);
    // A row of a list view does not say what each of several objects has, nor which values; one
    // that was clicked back and forth is meant as it stands there.
    const bool is_in_part = !row.entry.empty();
    const bool is_another = ShownIn(Page(page), row) != shown_.at(key);
    if (is_in_part || is_another || removed_.contains(key) || unwritten_.contains(key)) {
      touched.push_back(key);
    }
  }
  return touched;
}

bool SheetPlayer::IsMeddledWith(const WantedValue& wanted) const {
  return std::ranges::any_of(wanted.attributes, [&](const std::string& name) {
    // What another object had when the sheet was opened is not sent to it.
    const bool may_have_been_there = wanted.IsList() || IsAnyValue(name, wanted.text);
    return may_have_been_there && meddled_.contains(name);
  });
}

std::vector<WantedValue> SheetPlayer::WantedValues(const std::vector<FieldKey>& fields) {
  std::vector<WantedValue> values;
  for (const auto& [page, field] : fields) {
    const FieldRow& row = Touched(page).Row(field);
    // What some have already, and what was sent in vain and may be there, is not sent.
    if (unwritten_.contains({page, field})) continue;
    if (ShownIn(Page(page), row) == shown_.at({page, field})) continue;
    std::vector<FieldRow> rows;
    for (std::size_t other = 0; other < Touched(page).Count(); ++other) {
      rows.push_back(Touched(page).Row(other));
    }
    std::optional<WantedValue> wanted = WantedIn(Page(page), row, rows);
    if (!wanted) continue;
    if (IsMeddledWith(*wanted)) continue;
    // Of lists only what was added and removed is sent.
    if (wanted->IsList() && names_.size() > 1) continue;
    values.push_back(*std::move(wanted));
  }
  return values;
}

void SheetPlayer::ExpectNothingElse(const Entries& before, const std::set<std::string>& attributes,
                                    const RandomDesk::Answers& answers) {
  std::set<std::string> handled;
  for (const std::string& value : editor_.handled()) handled.insert(ldap::FoldCase(value));
  std::map<std::string, std::string> selected;
  for (const std::string& name : names_) selected[ldap::NameKey(name)] = name;
  ASSERT_EQ(memory_.entries().size(), before.size());
  for (const auto& [key, now] : memory_.entries()) {
    const ldap::AttributeMap& was = before.at(key);
    std::set<std::string> all;
    for (const ldap::AttributeMap* const map : {&was, &now}) {
      for (const auto& [name, values] : *map) all.insert(name);
    }
    for (const std::string& name : all) {
      const ldap::AttributeValues old = was.contains(name) ? was.at(name) : ldap::AttributeValues();
      const ldap::AttributeValues given =
          now.contains(name) ? now.at(name) : ldap::AttributeValues();
      if (old == given) continue;
      SCOPED_TRACE(::testing::Message()
                   << key << " " << name << ": " << ::testing::PrintToString(old) << " became "
                   << ::testing::PrintToString(given));
      ++played_.written;
      EXPECT_TRUE(selected.contains(key)) << "it was not selected";
      EXPECT_FALSE(answers.taken_out.contains(selected[key])) << "the object was taken out";
      EXPECT_FALSE(answers.theirs.contains({selected[key], name})) << "theirs was to stay";
      EXPECT_TRUE(attributes.contains(name)) << "nobody has touched it";
      if (!IsSeveral(name) || (names_.size() > 1 && name == kGivenWhole)) continue;
      for (const std::string& value : Difference(old, given)) {
        EXPECT_TRUE(handled.contains(value)) << "nobody has touched " << value;
      }
    }
  }
}

void SheetPlayer::ExpectStored(const std::vector<WantedValue>& values) {
  for (const std::string& name : names_) {
    if (answers_.taken_out.contains(name)) continue;
    const ldap::AttributeMap stored = memory_.Stored(name);
    for (const WantedValue& wanted : values) {
      const std::string& attribute = wanted.attributes.front();
      if (answers_.theirs.contains({name, attribute})) continue;
      EXPECT_TRUE(IsStored(wanted, stored))
          << name << " " << attribute << ": " << wanted.text
          << ::testing::PrintToString(wanted.values) << " was to be stored, and there is "
          << ::testing::PrintToString(stored);
      ++played_.found_stored;
    }
  }
}

}  // namespace pelora::testing
