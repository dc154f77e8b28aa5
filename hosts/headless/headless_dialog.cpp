// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_dialog.h"

#include <algorithm>
#include <utility>

namespace pelora {
namespace {

constexpr std::uint32_t kBorderBit = 0x00800000;
constexpr int kBaseWidth = 6;
/// A bordered control's sunken edge, on each side.
constexpr int kEdge = 2;

}  // namespace

HeadlessDialog::HeadlessDialog(const resources::DialogTemplate& described,
                               IDialogController& controller, Role role)
    : controller_(controller), role_(role), title_(described.title) {
  controls_.reserve(described.items.size());
  ids_.reserve(described.items.size());
  for (const resources::DialogItem& item : described.items) {
    ids_.push_back(item.id);
    controls_.emplace_back(item, [this, id = item.id](const ListViewItemChange& change) {
      ListViewChanged(id, change);
    });
  }
}

HeadlessDialog::~HeadlessDialog() { Close(); }

std::int32_t HeadlessDialog::Open() {
  open_ = true;
  return controller_.OnInitDialog(*this);
}

void HeadlessDialog::Close() {
  if (!open_) return;
  open_ = false;
  controller_.OnDestroy();
}

HeadlessControl* HeadlessDialog::Find(ControlId id) {
  return const_cast<HeadlessControl*>(std::as_const(*this).Find(id));
}

const HeadlessControl* HeadlessDialog::Find(ControlId id) const {
  const auto found = std::ranges::find(ids_, id);
  if (found == ids_.end()) return nullptr;
  return &controls_[static_cast<std::size_t>(found - ids_.begin())];
}

HeadlessControl* HeadlessDialog::FindCheckBox(ControlId id) {
  HeadlessControl* control = Find(id);
  return control != nullptr && control->IsCheckBox() ? control : nullptr;
}

std::int32_t HeadlessDialog::Notify(ControlId id, ControlNotification notification) {
  return open_ ? controller_.OnCommand(id, notification) : 0;
}

void HeadlessDialog::ListViewChanged(ControlId id, const ListViewItemChange& change) {
  if (open_) controller_.OnListViewItemChanged(id, change);
}

std::string HeadlessDialog::Text(ControlId id) const {
  const HeadlessControl* control = Find(id);
  return control != nullptr && control->HasText() ? control->text : std::string();
}

void HeadlessDialog::SetText(ControlId id, std::string_view text) {
  HeadlessControl* control = Find(id);
  if (control == nullptr || !control->HasText()) return;
  control->text = text;
  if (control->IsEdit()) Notify(id, ControlNotification::kEditChange);
}

bool HeadlessDialog::IsEnabled(ControlId id) const {
  const HeadlessControl* control = Find(id);
  return control != nullptr && control->enabled;
}

void HeadlessDialog::SetEnabled(ControlId id, bool enabled) {
  if (HeadlessControl* control = Find(id); control != nullptr) control->enabled = enabled;
}

bool HeadlessDialog::IsShown(ControlId id) const {
  const HeadlessControl* control = Find(id);
  return control != nullptr && control->shown;
}

void HeadlessDialog::SetShown(ControlId id, bool shown) {
  if (HeadlessControl* control = Find(id); control != nullptr) control->shown = shown;
}

CheckState HeadlessDialog::Check(ControlId id) const {
  const HeadlessControl* control = Find(id);
  return control != nullptr ? control->check : CheckState::kUnchecked;
}

void HeadlessDialog::SetCheck(ControlId id, CheckState state) {
  HeadlessControl* control = FindCheckBox(id);
  if (control == nullptr) return;
  const bool two_states = control->style != ButtonStyle::kAutoThreeState;
  control->check = two_states && state == CheckState::kIndeterminate ? CheckState::kChecked : state;
}

ButtonStyle HeadlessDialog::Style(ControlId id) const {
  const HeadlessControl* control = Find(id);
  if (control == nullptr) return ButtonStyle::kAutoCheckBox;
  return control->style.value_or(ButtonStyle::kAutoCheckBox);
}

void HeadlessDialog::SetStyle(ControlId id, ButtonStyle style) {
  if (HeadlessControl* control = FindCheckBox(id); control != nullptr) control->style = style;
}

IListBox& HeadlessDialog::ListBox(ControlId id) {
  HeadlessControl* control = Find(id);
  if (control == nullptr || !control->list_box) return missing_list_box_;
  return *control->list_box;
}

IComboBox& HeadlessDialog::ComboBox(ControlId id) {
  HeadlessControl* control = Find(id);
  if (control == nullptr || !control->combo_box) return missing_combo_box_;
  return *control->combo_box;
}

IListView& HeadlessDialog::ListView(ControlId id) {
  HeadlessControl* control = Find(id);
  if (control == nullptr || !control->list_view) return missing_list_view_;
  return *control->list_view;
}

int HeadlessDialog::ClientWidth(ControlId id) const {
  const HeadlessControl* control = Find(id);
  if (control == nullptr) return 0;
  const int width = (control->item.width * kBaseWidth + 2) / 4;
  const int edges = (control->item.style & kBorderBit) != 0 ? 2 * kEdge : 0;
  return std::max(width - edges, 0);
}

void HeadlessDialog::SetPageModified(bool modified) {
  page_modified_ = modified;
  if (on_page_modified) on_page_modified(modified);
}

void HeadlessDialog::End(std::int32_t result) {
  if (role_ == Role::kModal && !result_) result_ = result;
}

}  // namespace pelora
