// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/new_object/watched_wizard_page.h"

#include "hosts/resources/field_label.h"
#include "hosts/session/filled_fields.h"
#include "hosts/session/typed/judge_page.h"

namespace pelora::console {

void WatchedWizardPage::Learn(std::vector<FieldRow> rows, const resources::DialogTemplate& page) {
  rows_ = rows;
  for (const FieldRow& row : rows) fields_.labels.push_back(resources::FieldLabel(row, page));
  fields_.touched.Watch(std::move(rows));
}

bool WatchedWizardPage::IsWrong() const {
  return care_ && session::IsPageWanted(rows_, *fields_.dialog) && care_->IsWrong();
}

void WatchedWizardPage::PutWhatIsMeant() {
  if (!care_) return;
  session::PutWhatIsMeant(fields_);
  Look();
}

std::int32_t WatchedWizardPage::OnInitDialog(IDialog& dialog) {
  const std::int32_t result = inner().OnInitDialog(dialog);
  fields_.dialog = &dialog;
  fields_.page = &inner();
  fields_.touched.Settle(dialog);
  // Dialogs of wizards come from this console alone.
  care_ = std::make_unique<PageCare>(fields_, static_cast<QtDialog&>(dialog));
  care_->on_changed = [this] {
    Look();
    if (on_edited) on_edited();
  };
  return result;
}

std::int32_t WatchedWizardPage::OnCommand(ControlId id, ControlNotification notification) {
  fields_.touched.Touch(id);
  const std::int32_t answer = inner().OnCommand(id, notification);
  if (!care_) return answer;
  Look();
  if (on_edited) on_edited();
  return answer;
}

void WatchedWizardPage::OnDestroy() {
  care_.reset();
  fields_.dialog = nullptr;
  inner().OnDestroy();
}

void WatchedWizardPage::Look() {
  fields_.touched.Look(*fields_.dialog);
  care_->Refresh();
}

}  // namespace pelora::console
