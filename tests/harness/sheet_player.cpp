// SPDX-License-Identifier: Apache-2.0
#include "tests/harness/sheet_player.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>

#include "hosts/ldap/ldap_status.h"
#include "hosts/session/typed/judge_page.h"
#include "tests/harness/random_objects.h"

namespace pelora::testing {
namespace {

using Lines = std::vector<std::string>;

/// Why a request fails, or seems to.
const auto kFaults = std::to_array<CallFaultStore::Fault>({
    {{ldap::kLdapInsufficientAccessRights, "no right"}},
    {{ldap::kLdapTimeout, "no answer"}},
    {{ldap::kLdapTimeout, "no answer"}, true},
    {{ldap::kLdapServerDown, "the server is gone"}},
    {{ldap::kLdapBusy, "too much to do"}},
});

/// Whether a box says that a page could not be filled before, and that nothing of it was written.
bool IsShownOnlyNow(const std::string& box) {
  return box.find("could not be read before and are shown only now") != std::string::npos;
}

bool IsText(const FieldRow& row) {
  const bool is_typed = row.kind == FieldKind::kNumber || row.kind == FieldKind::kText;
  return is_typed && row.entry.empty() && !row.is_read_only;
}

}  // namespace

SheetPlayer::SheetPlayer(const std::string& object_class, const Dice& contents, const Dice& dice,
                         PlayedSheets& played)
    : played_(played),
      dice_(dice),
      names_(SomeNames(dice)),
      desk_(dice),
      scene_(store_, object_class, names_, {.chosen = ChosenNames().front()}),
      editor_(scene_.dialogs(), scene_.choosers(),
              {.chosen = {"LDAP://" + ChosenNames()[0], "LDAP://" + ChosenNames()[1]},
               .odd_numbers = {"2 GB", "500abc", "99999999999", "1 000", "70000", "0"},
               .empties_lists = true},
              dice) {
  if (Roll(4) != 0) scene_.SitAt(desk_);
  // What the tabs of the class know nothing of is there, too.
  for (ldap::Entry& entry : scene_.FirstEntries()) {
    GiveAnyValues(entry, contents);
    memory_.Place(std::move(entry));
  }
  memory_.Place({.dn = ChosenNames().back(),
                 .attributes = {{"objectClass", {"top", "user"}}, {"cn", {"another"}}}});
}

void SheetPlayer::TellFault() {
  if (const auto& met = store_.met()) {
    Tell(std::string(met->is_change ? "changing " : "reading ") + met->dn + " failed: " + met->why);
  }
}

void SheetPlayer::Arm() { store_.Fail(Roll(8) + 1, kFaults[Roll(kFaults.size())]); }

void SheetPlayer::Open() {
  const Entries before = memory_.entries();
  const bool may_fail = Roll(10) == 0;
  if (may_fail) Arm();
  std::string missing = scene_.Open();
  TellFault();
  Disarm();
  EXPECT_EQ(memory_.entries(), before) << "opening wrote";
  if (may_fail && !missing.empty()) {
    Tell("not all was opened: " + missing);
    ++played_.not_opened;
    // What there is of it is used, or the whole is opened anew.
    if (scene_.PageCount() == 0 || Roll(2) == 0) missing = scene_.Open();
  }
  if (!may_fail) {
    ASSERT_EQ(missing, "");
  }
  ASSERT_GT(scene_.PageCount(), 0U);
  (void)scene_.TakeBoxes();
  scene_.guarded().on_edited = [this](std::size_t page) {
    const session::TouchedFields& touched = Touched(page);
    if (touched.HasChangedFields()) return scene_.sheet().machine().SetModified(page, true);
    if (!touched.HasOtherEdits()) scene_.sheet().machine().SetModified(page, false);
  };
  meddled_.clear();
  Begin(true);
  ++played_.sheets;
  if (names_.size() > 1) ++played_.of_several;
}

void SheetPlayer::Begin(bool is_opened_anew) {
  const bool keeps_rows = !is_opened_anew && names_.size() > 1;
  std::erase_if(handled_, [&](const FieldKey& key) {
    return !keeps_rows || Touched(key.first).Row(key.second).entry.empty();
  });
  removed_.clear();
  unwritten_.clear();
  answers_ = {};
  if (handled_.empty()) editor_.ForgetHandled();
  shown_ = LookAtAll();
}

void SheetPlayer::Look(std::size_t page, Shown& shown) {
  for (std::size_t field = 0; field < Touched(page).Count(); ++field) {
    shown[{page, field}] = ShownIn(Page(page), Touched(page).Row(field));
  }
}

SheetPlayer::Shown SheetPlayer::LookAtAll() {
  Shown shown;
  for (std::size_t page = 0; page < scene_.PageCount(); ++page) {
    if (scene_.sheet().Dialog(page) != nullptr) Look(page, shown);
  }
  return shown;
}

void SheetPlayer::Forget(std::size_t page, const Shown& wanted) {
  Tell("what page " + std::to_string(page) + " says is shown only now");
  Look(page, shown_);
  for (std::set<FieldKey>* const keys : {&handled_, &removed_, &unwritten_}) {
    std::erase_if(*keys, [&](const FieldKey& key) {
      return key.first == page && shown_.at(key) != wanted.at(key);
    });
  }
}

void SheetPlayer::Turn(std::size_t page) {
  const bool was_shown = scene_.sheet().Dialog(page) != nullptr;
  if (scene_.sheet().SelectPage(page) && !was_shown) Look(page, shown_);
}

void SheetPlayer::EditSomething() {
  const std::size_t page = scene_.sheet().CurrentPage();
  const std::size_t field = Roll(Touched(page).Count());
  if (!editor_.Edit(scene_.sheet().User(), Touched(page).Row(field))) return;
  const FieldRow& row = Touched(page).Row(field);
  Tell("edited " + row.name + ": " + ShownIn(Page(page), row));
  handled_.emplace(page, field);
  // Typed over, it is as any other edit.
  if (!ShownIn(Page(page), row).empty()) removed_.erase({page, field});
  ++played_.edits;
}

void SheetPlayer::SetBackSomething() {
  const std::size_t page = scene_.sheet().CurrentPage();
  session::PageFields& fields = scene_.guarded().Fields(page);
  const std::size_t field = Roll(fields.touched.Count());
  if (!fields.touched.CanSetBack(field)) return;
  session::SetBack(fields, field);
  scene_.guarded().on_edited(page);
  Tell("set back " + fields.touched.Row(field).name);
  removed_.erase({page, field});
  ++played_.set_back;
}

void SheetPlayer::RemoveSomething() {
  const std::size_t page = scene_.sheet().CurrentPage();
  session::PageFields& fields = scene_.guarded().Fields(page);
  const std::size_t field = Roll(fields.touched.Count());
  const FieldRow& row = fields.touched.Row(field);
  const bool can_be_used = Page(page).IsShown(row.control) && Page(page).IsEnabled(row.control);
  if (!IsText(row) || !can_be_used) return;
  fields.touched.RemoveValue(field, *fields.dialog);
  scene_.sheet().machine().SetModified(page, true);
  Tell("removed " + row.name);
  handled_.emplace(page, field);
  removed_.emplace(page, field);
  ++played_.removed;
}

void SheetPlayer::Meddle() {
  const std::string& name = names_[Roll(names_.size())];
  std::size_t place = Roll(kAttributeCatalogue.size());
  if (!handled_.empty() && Roll(2) == 0) {
    // The two meet.
    const auto& [page, field] = *handled_.rbegin();
    const std::string_view met = Touched(page).Row(field).attributes.front();
    while (kAttributeCatalogue[place].name != met) place = (place + 1) % kAttributeCatalogue.size();
  }
  const Attribute& attribute = kAttributeCatalogue[place];
  if (attribute.multi_selection == MultiSelectionRule::kNeverWritten) return;
  ldap::Entry entry{.dn = name, .attributes = memory_.Stored(name)};
  const ldap::AttributeValues values = AnyValues(attribute, dice_);
  Tell("another changed " + std::string(attribute.name) + " of " + name);
  entry.attributes.erase(std::string(attribute.name));
  if (!values.empty()) entry.attributes[std::string(attribute.name)] = values;
  memory_.Place(std::move(entry));
  meddled_.emplace(attribute.name);
}

bool SheetPlayer::IsHeld() {
  bool is_held = false;
  for (std::size_t page = 0; page < scene_.PageCount(); ++page) {
    session::PageFields& fields = scene_.guarded().Fields(page);
    if (!fields.IsShown()) continue;
    session::PutWhatIsMeant(fields);
    fields.touched.Look(*fields.dialog);
    for (const session::FieldJudgement& one : session::JudgePage(fields)) {
      if (one.judgement.verdict != session::Verdict::kWrong) continue;
      is_held = true;
      Tell("held by " + fields.touched.Row(one.field).name + ": " + one.judgement.sentence);
      // Half of the time it is put right, so that something comes of the sheet.
      if (Roll(2) == 0 && fields.touched.CanSetBack(one.field)) {
        session::SetBack(fields, one.field);
        removed_.erase({page, one.field});
      }
    }
  }
  if (is_held) ++played_.held;
  return is_held;
}

void SheetPlayer::Apply(bool is_ok) {
  if (IsHeld()) return;
  const std::vector<FieldKey> fields = TouchedFields();
  std::set<std::string> attributes;
  for (const auto& [page, field] : fields) {
    const FieldRow& row = Touched(page).Row(field);
    attributes.insert(row.attributes.begin(), row.attributes.end());
  }
  const std::vector<WantedValue> wanted = WantedValues(fields);
  const Shown shown = LookAtAll();
  const Entries before = memory_.entries();
  if (Roll(5) == 0) Arm();
  const bool was_to_be_applied = is_ok || scene_.sheet().IsApplyEnabled();
  const bool is_done = is_ok ? scene_.Ok() : scene_.sheet().Apply();
  TellFault();
  Disarm();
  const Lines boxes = scene_.TakeBoxes();
  const RandomDesk::Answers answers = desk_.Take();
  Tell(std::string(is_ok ? "OK" : "applied") + (is_done ? "" : ", in vain") +
       (answers.has_gone_back ? ", went back" : "") + ", " +
       std::to_string(answers.taken_out.size()) + " taken out, " +
       std::to_string(answers.theirs.size()) + " left as theirs");
  ExpectNothingElse(before, attributes, answers);
  played_.taken_out += answers.taken_out.size();
  played_.theirs_kept += answers.theirs.size();
  answers_.Add(answers);
  if (!was_to_be_applied) return;
  if (!is_done) {
    ++played_.not_applied;
    unwritten_.insert(fields.begin(), fields.end());
    if (std::ranges::any_of(boxes, IsShownOnlyNow)) Forget(scene_.sheet().CurrentPage(), shown);
    return;
  }
  ++played_.applied;
  ExpectStored(wanted);
  // As the console has it: what shows something that is not there is opened anew.
  if (is_ok || scene_.guarded().is_outdated()) return Open();
  Begin(false);
}

void SheetPlayer::Cancel() {
  const Entries before = memory_.entries();
  if (!scene_.Cancel()) return;
  Tell("cancelled");
  ++played_.cancelled;
  EXPECT_EQ(memory_.entries(), before);
  (void)desk_.Take();
  Open();
}

void SheetPlayer::Step() {
  switch (Roll(20)) {
    case 0:
      return Apply(false);
    case 1:
      return Apply(true);
    case 2:
      return Roll(3) == 0 ? Cancel() : Apply(false);
    case 3:
    case 4:
      return Meddle();
    case 5:
    case 6:
      return SetBackSomething();
    case 7:
      return RemoveSomething();
    case 8:
    case 9:
      return Turn(Roll(scene_.PageCount()));
    default:
      return EditSomething();
  }
}

void SheetPlayer::Play(const std::function<bool()>& goes_on) {
  Open();
  for (std::size_t step = 0; goes_on() && !::testing::Test::HasFailure(); ++step) {
    SCOPED_TRACE("step " + std::to_string(step));
    Step();
  }
  if (!::testing::Test::HasFailure()) Apply(true);
}

}  // namespace pelora::testing
