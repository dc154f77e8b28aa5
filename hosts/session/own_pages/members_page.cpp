// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/own_pages/members_page.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/choose_objects.h"
#include "hosts/session/field_rights.h"
#include "hosts/session/folder_name.h"
#include "hosts/session/own_pages/listed_members.h"
#include "hosts/session/own_pages/own_page_ids.h"
#include "hosts/session/text.h"

namespace pelora::session {
namespace {

using changes::AttributeValues;

constexpr const char* kMember = "member";
constexpr const char* kMayBeMember =
    "(|(objectClass=user)(objectClass=inetOrgPerson)(objectClass=contact)(objectClass=computer)"
    "(objectClass=group))";
constexpr const char* kIsGroup = "(objectClass=group)";
/// So many names are given in a sentence.
constexpr std::size_t kNamed = 5;
/// Of the list's width, where the folders begin.
constexpr int kNamesPart = 2;

std::string Sentence(const std::string& what, const std::vector<std::string>& names) {
  if (names.empty()) return {};
  std::string text = what;
  for (std::size_t at = 0; at < std::min(kNamed, names.size()); ++at) {
    text += (at == 0 ? " " : ", ") + names[at];
  }
  if (names.size() > kNamed) text += " and " + std::to_string(names.size() - kNamed) + " more";
  return text + ".";
}

/// One sentence behind the other.
std::string Joined(std::initializer_list<std::string> sentences) {
  std::string text;
  for (const std::string& sentence : sentences) {
    if (!sentence.empty()) text += (text.empty() ? "" : " ") + sentence;
  }
  return text;
}

}  // namespace

MembersPage::MembersPage(const OwnPageKind& kind, std::vector<std::string> names,
                         MembersSurroundings surroundings)
    : kind_(kind), names_(std::move(names)), surroundings_(std::move(surroundings)) {}

std::int32_t MembersPage::OnInitDialog(IDialog& dialog) {
  dialog_ = &dialog;
  const std::array stops = {dialog.ClientWidth(IDC_OWN_MEMBERS) / kNamesPart};
  dialog.ListBox(IDC_OWN_MEMBERS).SetTabStops(stops);
  if (IsOfSeveral()) {
    is_loaded_ = true;
    const std::string count = std::to_string(names_.size());
    dialog.SetText(IDC_OWN_MEMBERS_LABEL, ListsGroups()
                                              ? "To be put into, all " + count + " objects:"
                                              : "To be put into each of the " + count + " groups:");
  } else {
    is_loaded_ = Read();
  }
  Fill();
  if (is_loaded_ && !surroundings_.why_read_only.empty()) Note(surroundings_.why_read_only);
  UpdateButtons();
  return 0;
}

bool MembersPage::Read() {
  ListedMembers read;
  const std::string& name = names_.front();
  surroundings_.errands.Run((ListsGroups() ? "Reading the groups of " : "Reading the members of ") +
                                OwnNameOf(name) + "...",
                            [&](IErrand& errand) {
                              ldap::IDirectoryStore& store = surroundings_.recording.store();
                              store.StopOn(errand.stop());
                              read = ListsGroups() ? ReadGroupsOf(store, name)
                                                   : ReadMembersOf(store, name);
                              store.StopOn({});
                            });
  if (!read.status.Ok()) {
    Note("The list cannot be read: " + read.status.text + ". Open the properties once more.");
    return false;
  }
  for (std::string& listed : read.names) there_.emplace(ldap::NameKey(listed), std::move(listed));
  Note(read.note);
  return true;
}

void MembersPage::Fill() {
  dialog_->ListBox(IDC_OWN_MEMBERS).Clear();
  for (auto& [key, name] : there_) {
    if (!taken_out_.contains(key)) AddRow(name);
  }
  for (auto& [key, name] : put_in_) AddRow(name);
}

void MembersPage::AddRow(std::string& name) {
  IListBox& list = dialog_->ListBox(IDC_OWN_MEMBERS);
  const std::optional<RowIndex> row = list.Add(OwnNameOf(name) + "\t" + FolderOf(name));
  if (row) list.SetData(*row, &name);
  surroundings_.errands.Breathe();
}

std::int32_t MembersPage::OnCommand(ControlId id, ControlNotification notification) {
  if (id == IDC_OWN_MEMBERS && notification == ControlNotification::kSelectionChange) {
    UpdateButtons();
  }
  if (notification != ControlNotification::kClicked) return 0;
  if (id == IDC_OWN_MEMBERS_ADD) Choose();
  if (id == IDC_OWN_MEMBERS_ADD_PASTED) AddPasted();
  if (id == IDC_OWN_MEMBERS_REMOVE) Remove();
  return 0;
}

void MembersPage::Choose() {
  const std::uint32_t types =
      ListsGroups() ? kGroupsOnly : kUsersAndGroups | kContacts | kComputers;
  const std::string left_out =
      Add(ChooseObjects(surroundings_.platform.choosers, dialog_, {.types = types}));
  if (!left_out.empty()) Note(left_out);
}

void MembersPage::AddPasted() {
  const std::string text = Trimmed(dialog_->Text(IDC_OWN_MEMBERS_PASTED));
  if (text.empty() || !surroundings_.find_names) return;
  FoundNames found;
  surroundings_.errands.Run("Looking for the names...", [&](IErrand& errand) {
    ldap::IDirectoryStore& store = surroundings_.recording.store();
    store.StopOn(errand.stop());
    found = surroundings_.find_names(store, text, ListsGroups() ? kIsGroup : kMayBeMember,
                                     errand.stop());
    store.StopOn({});
  });
  if (!found.status.Ok()) return Note("The names cannot be found: " + found.status.text + ".");
  const std::string foreign = Add(found.names);
  // What is left to be looked at stays where it was typed.
  std::string left;
  for (const auto* const names : {&found.not_found, &found.ambiguous}) {
    for (const std::string& name : *names) left += name + "\r\n";
  }
  dialog_->SetText(IDC_OWN_MEMBERS_PASTED, left);
  const std::string too_many =
      found.left_out == 0 ? ""
                          : "The last " + std::to_string(found.left_out) + " were not looked for.";
  Note(Joined({Sentence("There is nothing for:", found.not_found),
               Sentence("There are several for:", found.ambiguous),
               Sentence("Nobody could be looked for in", found.unreached), too_many, foreign}));
}

std::string MembersPage::LeaveOutForeign(std::vector<std::string>& groups) {
  // Of the selected groups it is known already.
  if (!ListsGroups() || groups.empty()) return {};
  const FieldRow row{.name = {}, .attributes = {kMember}};
  std::vector<std::string> own;
  std::vector<std::string> foreign;
  surroundings_.errands.Run("Asking which groups you may change...", [&](IErrand& errand) {
    ldap::IDirectoryStore& store = surroundings_.recording.store();
    store.StopOn(errand.stop());
    const std::array<std::string, 1> asked = {FieldRights::kAttribute};
    std::size_t at = 0;
    (void)store.ReadMany(groups, asked, [&](const ldap::StoreStatus&, const ldap::Entry& entry) {
      FieldRights rights(store.schema());
      rights.Learn(entry);
      const std::string& group = groups[at++];
      if (rights.WhyReadOnly(row).empty()) {
        own.push_back(group);
      } else {
        foreign.push_back(OwnNameOf(group));
      }
      return true;
    });
    // What the directory did not say it will when it is written.
    std::copy(groups.begin() + static_cast<std::ptrdiff_t>(at), groups.end(),
              std::back_inserter(own));
    store.StopOn({});
  });
  groups = std::move(own);
  return Sentence("You have no right to change the members of", foreign);
}

std::string MembersPage::Add(std::vector<std::string> names) {
  std::set<std::string> own;
  for (const std::string& name : names_) own.insert(ldap::NameKey(name));
  std::erase_if(names, [&](const std::string& name) {
    const std::string key = ldap::NameKey(name);
    // Nothing is a member of itself.
    const bool is_listed = there_.contains(key) && !taken_out_.contains(key);
    return is_listed || put_in_.contains(key) || own.contains(key);
  });
  std::string foreign = LeaveOutForeign(names);
  for (const std::string& name : names) AddOne(name);
  if (!names.empty()) TellEdited();
  return foreign;
}

void MembersPage::AddOne(const std::string& name) {
  const std::string key = ldap::NameKey(name);
  if (taken_out_.erase(key) > 0) return AddRow(there_.at(key));
  const auto [added, is_new] = put_in_.emplace(key, name);
  if (is_new) AddRow(added->second);
}

void MembersPage::Remove() {
  IListBox& list = dialog_->ListBox(IDC_OWN_MEMBERS);
  std::vector<std::string> chosen;
  std::vector<std::string> removed;
  while (const auto row = list.Selection()) {
    chosen.push_back(*static_cast<const std::string*>(list.Data(*row)));
    if (!list.Remove(*row)) break;
  }
  for (const std::string& name : chosen) {
    // What was only put in here is anybody's to take out.
    if (put_in_.erase(ldap::NameKey(name)) == 0) removed.push_back(name);
  }
  const std::string foreign = LeaveOutForeign(removed);
  for (const std::string& name : removed) taken_out_.insert(ldap::NameKey(name));
  if (!foreign.empty()) {
    Fill();
    Note(foreign);
  }
  if (!chosen.empty()) TellEdited();
}

void MembersPage::TellEdited() {
  UpdateButtons();
  dialog_->SetPageModified(!put_in_.empty() || !taken_out_.empty());
}

void MembersPage::UpdateButtons() {
  const bool may_edit = is_loaded_ && surroundings_.why_read_only.empty();
  const bool is_one_chosen = dialog_->ListBox(IDC_OWN_MEMBERS).Selection().has_value();
  dialog_->SetEnabled(IDC_OWN_MEMBERS_ADD, may_edit);
  dialog_->SetEnabled(IDC_OWN_MEMBERS_REMOVE, may_edit && is_one_chosen);
  const bool may_paste = may_edit && static_cast<bool>(surroundings_.find_names);
  dialog_->SetEnabled(IDC_OWN_MEMBERS_PASTED, may_paste);
  dialog_->SetEnabled(IDC_OWN_MEMBERS_ADD_PASTED, may_paste);
}

void MembersPage::Note(const std::string& text) { dialog_->SetText(IDC_OWN_MEMBERS_NOTE, text); }

std::int32_t MembersPage::OnPageNotification(PageNotification notification) {
  if (notification != PageNotification::kApply || dialog_ == nullptr) return 0;
  Apply();
  return kPageApplied;
}

void MembersPage::Record(const std::string& group, AttributeValues out, AttributeValues in) {
  surroundings_.recording.Record({.dn = group,
                                  .attributes = {{.attribute = kMember,
                                                  .is_list = true,
                                                  .seen = std::move(out),
                                                  .wanted = std::move(in)}}});
  recorded_.insert_or_assign(ldap::NameKey(group), group);
}

void MembersPage::Apply() {
  // What waits is recorded anew, as far as it is still wanted.
  for (const auto& [key, group] : recorded_) surroundings_.recording.Drop(group, kMember);
  recorded_.clear();
  AttributeValues in;
  AttributeValues out;
  for (const auto& [key, name] : put_in_) in.push_back(name);
  for (const std::string& key : taken_out_) out.push_back(there_.at(key));
  if (ListsGroups()) {
    for (const std::string& group : in) Record(group, {}, names_);
    for (const std::string& group : out) Record(group, names_, {});
  } else if (!in.empty() || !out.empty()) {
    for (const std::string& group : names_) Record(group, out, in);
  }
}

void MembersPage::OnCommitted(const std::function<bool(const std::string& dn)>& is_done) {
  if (dialog_ == nullptr || recorded_.empty()) return;
  std::set<std::string> left;
  for (const changes::Change& change : surroundings_.recording.TakeRecorded()) {
    left.insert(ldap::NameKey(change.dn));
  }
  bool is_shown = true;
  if (ListsGroups()) {
    for (const auto& [key, group] : recorded_) {
      if (!left.contains(key)) is_shown = SettleOne(key, is_done(group)) && is_shown;
    }
  } else if (left.empty()) {
    const auto is_written = [&](const auto& group) { return is_done(group.second); };
    const bool are_written = std::ranges::any_of(recorded_, is_written);
    std::set<std::string> edited = taken_out_;
    for (const auto& [key, name] : put_in_) edited.insert(key);
    for (const std::string& key : edited) is_shown = SettleOne(key, are_written) && is_shown;
  }
  std::erase_if(recorded_, [&left](const auto& group) { return !left.contains(group.first); });
  if (IsOfSeveral() && left.empty()) Note("What was listed here has been put in.");
  if (!is_shown) Fill();
  UpdateButtons();
}

bool MembersPage::SettleOne(const std::string& key, bool is_written) {
  if (taken_out_.erase(key) > 0) {
    if (is_written) there_.erase(key);
    return is_written;
  }
  auto edit = put_in_.extract(key);
  // Of several objects nothing is listed that is there.
  if (!is_written || IsOfSeveral() || edit.empty()) return false;
  there_.insert(std::move(edit));
  return true;
}

}  // namespace pelora::session
