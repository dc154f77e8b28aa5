// SPDX-License-Identifier: Apache-2.0
#include "tests/harness/sheet_player.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/typed/judge_page.h"

namespace pelora::testing {
namespace {

using Lines = std::vector<std::string>;

const std::string kBase = std::string(",") + MemoryStore::kBase;
const Lines kChosen = {"CN=chosen" + kBase, "CN=another" + kBase};
constexpr std::size_t kMostObjects = 4;
/// Several users are given one list of these, as it stands in its dialog.
constexpr std::string_view kGivenWhole = "peloraUserArchiveServers";

/// Objects of a class, of which the selection is a random part.
Lines SomeNames(unsigned seed) {
  std::mt19937 random(seed);
  Lines names;
  for (std::size_t place = 0; place < kMostObjects; ++place) {
    names.push_back("CN=object" + std::to_string(place) + kBase);
  }
  std::shuffle(names.begin(), names.end(), random);
  names.resize(random() % kMostObjects + 1);
  return names;
}

bool IsSeveral(std::string_view attribute) {
  const auto* const found = std::ranges::find(kAttributeCatalogue, attribute, &Attribute::name);
  return found != kAttributeCatalogue.end() && found->is_multi_valued;
}

/// What stands in one of them only, in the case of none.
std::set<std::string> Difference(const ldap::AttributeValues& left,
                                 const ldap::AttributeValues& right) {
  std::set<std::string> one;
  std::set<std::string> other;
  for (const std::string& value : left) one.insert(ldap::FoldCase(value));
  for (const std::string& value : right) other.insert(ldap::FoldCase(value));
  std::set<std::string> difference;
  std::ranges::set_symmetric_difference(one, other, std::inserter(difference, difference.end()));
  return difference;
}

bool IsText(const FieldRow& row) {
  const bool is_typed = row.kind == FieldKind::kNumber || row.kind == FieldKind::kText;
  return is_typed && row.entry.empty() && !row.is_read_only;
}

}  // namespace

SheetPlayer::SheetPlayer(const std::string& object_class, unsigned seed, PlayedSheets& played)
    : played_(played),
      names_(SomeNames(seed)),
      desk_(seed),
      scene_(store_, object_class, names_, {.chosen = kChosen.front()}),
      editor_(scene_.dialogs(), scene_.choosers(),
              {.chosen = {"LDAP://" + kChosen[0], "LDAP://" + kChosen[1]},
               .odd_numbers = {"2 GB", "500abc", "99999999999", "1 000", "70000", "0"},
               .empties_lists = true},
              DiceOf(seed)) {
  if (Roll(4) != 0) scene_.SitAt(desk_);
  PlaceObjects();
}

ldap::AttributeValues SheetPlayer::AnyValues(const Attribute& attribute) {
  const auto one_of = [this](const Lines& values) { return values[Roll(values.size())]; };
  if (Roll(3) == 0) return {};
  if (attribute.name == "peloraResourceType") return {one_of({"room", "Equipment", "boat"})};
  if (attribute.name == "mail")
    return {one_of({"first@x.example", "b@x.example", "odd one@x.example"})};
  if (attribute.name == "peloraAdmin") return {one_of({"0", "1", "2", "7"})};
  switch (attribute.encoding) {
    case Encoding::kFlag:
      return {one_of({"0", "1", "5"})};
    case Encoding::kInteger:
      return {one_of({"0", "-1", "80", "443", "70000", "4000", "2147483647"})};
    case Encoding::kString:
      return {one_of({"first", "zweites Wort", kChosen.front(), "CN=gone,DC=x"})};
    default:
      break;
  }
  const Lines all = attribute.name.ends_with("Features")    ? Lines{"imap", "pop3", "unheard-of"}
                    : attribute.encoding == Encoding::kList ? Lines{"c@x.example", "d@x.example"}
                                                            : Lines{"CN=a,DC=x", "CN=b,DC=x"};
  Lines values;
  for (const std::string& value : all) {
    if (Roll(2) == 0) values.push_back(value);
  }
  return values;
}

void SheetPlayer::PlaceObjects() {
  for (ldap::Entry& entry : scene_.FirstEntries()) {
    // What the tabs of the class know nothing of is there, too.
    for (const Attribute& attribute : kAttributeCatalogue) {
      if (attribute.multi_selection == MultiSelectionRule::kNeverWritten) continue;
      if (Roll(3) == 0) continue;
      entry.attributes[std::string(attribute.name)] = AnyValues(attribute);
      if (entry.attributes[std::string(attribute.name)].empty()) {
        entry.attributes.erase(std::string(attribute.name));
      }
    }
    memory_.Place(std::move(entry));
  }
  memory_.Place({.dn = kChosen.back(),
                 .attributes = {{"objectClass", {"top", "user"}}, {"cn", {"another"}}}});
}

void SheetPlayer::Open() {
  ASSERT_EQ(scene_.Open(), "");
  scene_.guarded().on_edited = [this](std::size_t page) {
    const session::TouchedFields& touched = Touched(page);
    if (touched.HasChangedFields()) return scene_.sheet().machine().SetModified(page, true);
    if (!touched.HasOtherEdits()) scene_.sheet().machine().SetModified(page, false);
  };
  Begin(true);
  ++played_.sheets;
  if (names_.size() > 1) ++played_.of_several;
}

void SheetPlayer::Begin(bool is_opened_anew) {
  shown_.clear();
  const bool keeps_rows = !is_opened_anew && names_.size() > 1;
  std::erase_if(handled_, [&](const FieldKey& key) {
    return !keeps_rows || Touched(key.first).Row(key.second).entry.empty();
  });
  removed_.clear();
  unwritten_.clear();
  answers_ = {};
  if (handled_.empty()) editor_.ForgetHandled();
  for (std::size_t page = 0; page < scene_.PageCount(); ++page) {
    if (scene_.sheet().Dialog(page) == nullptr) continue;
    for (std::size_t field = 0; field < Touched(page).Count(); ++field) {
      shown_[{page, field}] = ShownIn(Page(page), Touched(page).Row(field));
    }
  }
}

void SheetPlayer::Turn(std::size_t page) {
  const bool was_shown = scene_.sheet().Dialog(page) != nullptr;
  if (!scene_.sheet().SelectPage(page) || was_shown) return;
  for (std::size_t field = 0; field < Touched(page).Count(); ++field) {
    shown_[{page, field}] = ShownIn(Page(page), Touched(page).Row(field));
  }
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
  const ldap::AttributeValues values = AnyValues(attribute);
  Tell("another changed " + std::string(attribute.name) + " of " + name);
  entry.attributes.erase(std::string(attribute.name));
  if (!values.empty()) entry.attributes[std::string(attribute.name)] = values;
  memory_.Place(std::move(entry));
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

std::vector<SheetPlayer::FieldKey> SheetPlayer::TouchedFields() {
  std::vector<FieldKey> touched;
  for (const FieldKey& key : handled_) {
    const auto& [page, field] = key;
    const FieldRow& row = Touched(page).Row(field);
    // A row of a list view does not say what each of several objects has, nor which values.
    const bool is_in_part =
        !row.entry.empty() && (names_.size() > 1 || row.kind != FieldKind::kChoice);
    const bool is_another = ShownIn(Page(page), row) != shown_.at(key);
    if (is_in_part || is_another || removed_.contains(key) || unwritten_.contains(key)) {
      touched.push_back(key);
    }
  }
  return touched;
}

std::map<std::string, std::string> SheetPlayer::TypedTexts(const std::vector<FieldKey>& fields) {
  std::map<std::string, std::string> typed;
  for (const auto& [page, field] : fields) {
    const FieldRow& row = Touched(page).Row(field);
    if (!IsText(row) || !Page(page).IsEnabled(row.control)) continue;
    // What is as it was read, as nothing and 0 may be, and what some have already, is not sent.
    if (unwritten_.contains({page, field})) continue;
    const std::string text = Page(page).Text(row.control);
    if (text.empty() || text == "0" || text == shown_.at({page, field})) continue;
    typed[std::string(row.attributes.front())] = text;
  }
  return typed;
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
      const ldap::AttributeValues old = was.contains(name) ? was.at(name) : Lines();
      const ldap::AttributeValues given = now.contains(name) ? now.at(name) : Lines();
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

void SheetPlayer::ExpectStored(const std::map<std::string, std::string>& typed) const {
  for (const std::string& name : names_) {
    if (answers_.taken_out.contains(name)) continue;
    const ldap::AttributeMap stored = memory_.Stored(name);
    for (const auto& [attribute, text] : typed) {
      if (answers_.theirs.contains({name, attribute})) continue;
      const auto found = stored.find(attribute);
      EXPECT_EQ(found == stored.end() ? std::string() : found->second.front(), text)
          << name << " " << attribute;
    }
  }
}

void SheetPlayer::Apply(bool is_ok) {
  if (IsHeld()) return;
  const std::vector<FieldKey> fields = TouchedFields();
  std::set<std::string> attributes;
  for (const auto& [page, field] : fields) {
    const FieldRow& row = Touched(page).Row(field);
    attributes.insert(row.attributes.begin(), row.attributes.end());
  }
  const std::map<std::string, std::string> typed = TypedTexts(fields);
  const Entries before = memory_.entries();
  switch (Roll(10)) {
    case 0:
      store_.FailChange(Roll(2) + 1, {ldap::kLdapInsufficientAccessRights, "no right"});
      break;
    case 1:
      store_.FailChange(Roll(2) + 1, {ldap::kLdapTimeout, "no answer"}, Roll(2) == 0);
      break;
    default:
      break;
  }
  const bool was_to_be_applied = is_ok || scene_.sheet().IsApplyEnabled();
  const bool is_done = is_ok ? scene_.Ok() : scene_.sheet().Apply();
  (void)scene_.TakeBoxes();
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
    return;
  }
  ++played_.applied;
  ExpectStored(typed);
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

void SheetPlayer::Play(std::size_t steps) {
  Open();
  for (std::size_t step = 0; step < steps && !::testing::Test::HasFailure(); ++step) {
    SCOPED_TRACE("step " + std::to_string(step));
    Step();
  }
  if (!::testing::Test::HasFailure()) Apply(true);
}

}  // namespace pelora::testing
