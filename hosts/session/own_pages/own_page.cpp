// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/own_pages/own_page.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/ads_path.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/session/choose_objects.h"
#include "hosts/sheets/scoped_flag.h"

namespace pelora::session {
namespace {

constexpr std::string_view kChecked = "1";
constexpr const char* kErrorCaption = "Pelora Error";
/// Written so, the directory puts the time in its place.
constexpr const char* kNow = "-1";
constexpr std::string_view kPasswordSet = "pwdLastSet";
constexpr const char* kToBeChanged = "0";

/// What the objects show in a field; none where they differ.
std::optional<std::string> InCommon(const OwnField& field, const std::vector<std::string>& names,
                                    const changes::RecordingDirectory& recording) {
  std::optional<std::string> common;
  for (const std::string& name : names) {
    recording.Breathe();
    std::string shown = field.form->shown(field.attribute, SeenBy(recording, name));
    if (common && *common != shown) return std::nullopt;
    common = std::move(shown);
  }
  return common;
}

}  // namespace

StoredValues SeenBy(const changes::RecordingDirectory& recording, const std::string& name) {
  return [&recording, name](std::string_view attribute) { return recording.Seen(name, attribute); };
}

OwnPage::OwnPage(const OwnPageKind& kind, std::vector<std::string> names,
                 OwnPageSurroundings surroundings)
    : kind_(kind),
      names_(std::move(names)),
      attributes_(kind.Attributes()),
      surroundings_(std::move(surroundings)),
      template_(names_.size() == 1 ? kind.of_one : kind.of_several) {
  for (const OwnField& field : kind.fields) fields_.push_back({.row = &field});
}

std::int32_t OwnPage::OnInitDialog(IDialog& dialog) {
  dialog_ = &dialog;
  ShowReset();
  if (Read()) ShowAll();
  return 0;
}

void OwnPage::ShowAll() {
  const sheets::ScopedFlag loading(is_loading_);
  is_loaded_ = true;
  for (Field& field : fields_) {
    Show(*field.row);
    field.is_changed = false;
  }
}

bool OwnPage::Read() {
  ldap::StoreStatus refused;
  const ldap::StoreStatus read = surroundings_.recording.store().ReadMany(
      names_, attributes_, [&refused](ldap::StoreStatus one, ldap::Entry /*entry*/) {
        refused = std::move(one);
        return refused.Ok();
      });
  if (read.Ok() && refused.Ok()) return true;
  ShowFailure("The settings cannot be read: " + (read.Ok() ? refused : read).text + ".");
  return false;
}

void OwnPage::Show(const OwnField& field) {
  const std::optional<std::string> common = InCommon(field, names_, surroundings_.recording);
  if (field.kind != FieldKind::kFlag) {
    dialog_->SetText(field.control, common.value_or(""));
    return;
  }
  dialog_->SetStyle(field.control,
                    common ? ButtonStyle::kAutoCheckBox : ButtonStyle::kAutoThreeState);
  dialog_->SetCheck(field.control, !common               ? CheckState::kIndeterminate
                                   : *common == kChecked ? CheckState::kChecked
                                                         : CheckState::kUnchecked);
  if (field.form->is_only_cleared) {
    dialog_->SetEnabled(field.control, !common || *common == kChecked);
  }
}

void OwnPage::ShowReset() {
  if (kind_.reset_password == 0) return;
  const bool can_be_given = surroundings_.give_password && surroundings_.why_no_password.empty();
  dialog_->SetEnabled(kind_.reset_password, can_be_given);
  dialog_->SetText(kind_.reset_note, surroundings_.why_no_password);
}

void OwnPage::ResetPassword() {
  const PasswordGiven given = surroundings_.give_password(dialog_, names_.front());
  if (given == PasswordGiven::kNo) return;
  // The directory has set this along with the password: it is known, and nobody's edit.
  const std::string& name = names_.front();
  surroundings_.recording.Settle(
      {.dn = name,
       .attributes = {{.attribute = std::string(kPasswordSet),
                       .wanted = {given == PasswordGiven::kYesToBeChanged ? kToBeChanged : kNow}}}},
      {.dn = name, .outcome = changes::Outcome::kChanged});
  const sheets::ScopedFlag loading(is_loading_);
  for (Field& field : fields_) {
    if (field.row->attribute != kPasswordSet) continue;
    surroundings_.recording.Drop(name, kPasswordSet);
    Show(*field.row);
    field.is_changed = false;
    if (surroundings_.settle) surroundings_.settle(field.row->control);
  }
  dialog_->SetText(kind_.reset_note, "The password was reset.");
}

std::int32_t OwnPage::OnCommand(ControlId id, ControlNotification notification) {
  const bool is_button = notification == ControlNotification::kClicked && id != 0;
  if (is_button && id == kind_.reset_password) ResetPassword();
  for (Field& field : fields_) {
    const OwnField& row = *field.row;
    const bool is_click = notification == ControlNotification::kClicked;
    if (is_click && id != 0 && id == row.choose) Choose(row);
    if (is_click && id != 0 && id == row.clear) dialog_->SetText(row.control, "");
    const bool is_flag = row.kind == FieldKind::kFlag;
    if (id != row.control || is_loading_) continue;
    if (is_flag ? !is_click : notification != ControlNotification::kEditChange) continue;
    field.is_changed = true;
    dialog_->SetPageModified(true);
  }
  return 0;
}

void OwnPage::Choose(const OwnField& field) {
  const std::vector<std::string> chosen =
      ChooseObjects(surroundings_.platform.choosers, dialog_,
                    {.types = kUsersAndGroups | kContacts | kComputers, .takes_several = false});
  // The control reports it as an edit.
  if (!chosen.empty()) dialog_->SetText(field.control, chosen.front());
}

std::int32_t OwnPage::OnPageNotification(PageNotification notification) {
  if (notification != PageNotification::kApply || dialog_ == nullptr) return 0;
  return Apply() ? kPageApplied : kPageInvalidStay;
}

std::string OwnPage::ShownNow(const OwnField& field) const {
  if (field.kind != FieldKind::kFlag) return dialog_->Text(field.control);
  return dialog_->Check(field.control) == CheckState::kChecked ? "1" : "0";
}

bool OwnPage::IsUndecided(const OwnField& field) const {
  return field.kind == FieldKind::kFlag &&
         dialog_->Check(field.control) == CheckState::kIndeterminate;
}

bool OwnPage::Validate() {
  for (const Field& field : fields_) {
    const FieldForm& form = *field.row->form;
    if (!field.is_changed || form.why_not == nullptr || IsUndecided(*field.row)) continue;
    const std::string why = form.why_not(ShownNow(*field.row));
    if (why.empty()) continue;
    ShowFailure(why);
    return false;
  }
  return true;
}

bool OwnPage::Apply() {
  if (std::ranges::none_of(fields_, &Field::is_changed)) return true;
  if (!Validate() || !Read()) return false;
  if (!is_loaded_) {
    ShowAll();
    ShowFailure("The settings could not be shown before. Look at them, and type once more.");
    return false;
  }
  std::map<std::string, changes::Change> pending;
  for (changes::Change& change : surroundings_.recording.TakeRecorded()) {
    pending.insert_or_assign(ldap::FoldCase(change.dn), std::move(change));
  }
  for (const std::string& name : names_) {
    const auto found = pending.find(ldap::FoldCase(name));
    const ldap::StoreStatus staged = Stage(name, found == pending.end() ? nullptr : &found->second);
    if (staged.Ok()) continue;
    ShowFailure("The settings cannot be changed: " + staged.text + ".");
    return false;
  }
  for (Field& field : fields_) field.is_changed = false;
  return true;
}

ldap::StoreStatus OwnPage::Stage(const std::string& name, const changes::Change* pending) {
  ldap::AttributeMap wanted;
  for (const Field& field : fields_) {
    const OwnField& row = *field.row;
    if (!field.is_changed || IsUndecided(row)) continue;
    ldap::AttributeValues now = surroundings_.recording.Seen(name, row.attribute);
    if (now.size() == 1 && now.front() == kNow) {
      // The page knows what was written, and not what the directory made of it.
      Ref<IADs> object;
      Variant ignored;
      const HRESULT bound =
          surroundings_.recording.ADsGetObject(ldap::AdsPathOf(name), IID_IADs, object);
      if (SUCCEEDED(bound)) (void)object->Get(row.attribute, ignored);
      now = surroundings_.recording.Seen(name, row.attribute);
    }
    // What waits to be written, and what another field of the same attribute has made of it.
    const changes::ValueChange* const waiting =
        pending != nullptr ? pending->Find(row.attribute) : nullptr;
    if (waiting != nullptr) now = waiting->wanted;
    const auto other = wanted.find(row.attribute);
    if (other != wanted.end()) now = other->second;
    if (auto values = row.form->stored(ShownNow(row), now)) {
      wanted.insert_or_assign(std::string(row.attribute), *std::move(values));
    }
  }
  std::vector<ldap::Modification> staged;
  for (auto& [attribute, values] : wanted) {
    staged.push_back({.attribute = attribute, .values = std::move(values)});
  }
  if (staged.empty()) return {};
  return surroundings_.recording.store().Modify(name, staged);
}

void OwnPage::ShowFailure(const std::string& text) {
  (void)surroundings_.platform.message_box.Show(
      dialog_, {.text = text, .caption = kErrorCaption, .icon = MessageIcon::kError});
}

}  // namespace pelora::session
