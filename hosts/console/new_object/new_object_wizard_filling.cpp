// SPDX-License-Identifier: Apache-2.0
// What the wizard fills in by itself: after another object, and by a company's patterns.
#include <algorithm>

#include "hosts/console/new_object/new_object_wizard.h"
#include "hosts/console/new_object/pattern_dialog.h"
#include "hosts/session/filled_fields.h"
#include "hosts/session/typed/field_roles.h"

namespace pelora::console {

void QtNewObjectWizard::TakeOverOn(std::size_t place) {
  if (!parts_.start.model) return;
  WatchedWizardPage& page = *watched_[place - machine_.OwnPages()];
  parts_.start.model->FillIn(page.rows(), *Dialog(place), page);
}

session::ModelObject::Rest QtNewObjectWizard::TakenOverBeside() const {
  // Without a page of the console's own nothing is written beside the extensions.
  if (!parts_.start.model || own_page_ == nullptr) return {};
  std::vector<std::string_view> shown;
  bool is_wanted = !watched_.empty();
  for (std::size_t at = 0; at < watched_.size(); ++at) {
    const QtDialog* const dialog = Dialog(machine_.OwnPages() + at);
    const std::vector<FieldRow>& rows = watched_[at]->rows();
    is_wanted = is_wanted && dialog != nullptr && session::IsPageWanted(rows, *dialog);
    for (const FieldRow& row : rows) {
      shown.insert(shown.end(), row.attributes.begin(), row.attributes.end());
    }
  }
  return parts_.start.model->RestBeside(shown, is_wanted);
}

void QtNewObjectWizard::SuggestAddress(std::size_t place) {
  const bool has_pattern = own_page_ != nullptr && !own_page_->patterns().address.empty();
  QtDialog* const dialog = Dialog(place);
  if (!has_pattern || dialog == nullptr) return;
  const std::vector<FieldRow>& rows = watched_[place - machine_.OwnPages()]->rows();
  const auto field = std::ranges::find_if(rows, [](const FieldRow& row) {
    return row.kind == FieldKind::kText && session::HoldsAddresses(row);
  });
  // A page that writes nothing asks for nothing.
  if (field == rows.end() || !session::IsPageWanted(rows, *dialog)) return;
  const std::string address = session::AddressOf(own_page_->patterns(), own_page_->OpenValues());
  if (address == suggested_address_ || dialog->Text(field->control) != suggested_address_) return;
  suggested_address_ = address;
  dialog->SetText(field->control, address);
}

void QtNewObjectWizard::ChangePatterns() {
  PatternDialog dialog(own_page_->patterns(), parts_.start.patterns.company,
                       own_page_->OpenValues(), this);
  if (RunModal(dialog) != QDialog::Accepted) return;
  own_page_->SetPatterns(dialog.Patterns());
  if (parts_.start.patterns.keep) parts_.start.patterns.keep(dialog.Patterns());
}

}  // namespace pelora::console
