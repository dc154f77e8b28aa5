// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page_ext_pelora.h"

#include <string>

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr const Attribute& kAccount = CatalogueEntry("peloraAccount");
constexpr const Attribute& kHidden = CatalogueEntry("peloraHidden");

}  // namespace

CPropPageExtPelora::CPropPageExtPelora(CPropPage& page) : CPropPageExt(page) {
  page.RegisterLoad(Handler(this, &CPropPageExtPelora::Load));
  page.RegisterCollect(Handler(this, &CPropPageExtPelora::Collect));
  page.RegisterSkipValidation(Handler(this, &CPropPageExtPelora::SkipValidation));
  page.RegisterValidate([](std::string* /*message*/) { return S_OK; });
}

std::vector<Command> CPropPageExtPelora::Commands() {
  using enum ControlNotification;
  return {{IDC_PELORA_ACCOUNT, kClicked, Handler(this, &CPropPageExtPelora::OnAccountClicked)},
          {IDC_PELORA_HIDDEN, kClicked, Handler(this, &CPropPageExtPelora::OnHiddenClicked)}};
}

std::int32_t CPropPageExtPelora::OnAccountClicked() {
  OnClicked(IDC_PELORA_ACCOUNT, account_changed_);
  return 0;
}

std::int32_t CPropPageExtPelora::OnHiddenClicked() {
  OnClicked(IDC_PELORA_HIDDEN, hidden_changed_);
  return 0;
}

HRESULT CPropPageExtPelora::Load(const BoundObjects& objects) {
  page().LoadCheckBox(objects, kAccount.name, IDC_PELORA_ACCOUNT);
  page().LoadCheckBox(objects, kHidden.name, IDC_PELORA_HIDDEN);
  account_changed_ = false;
  hidden_changed_ = false;
  return S_OK;
}

HRESULT CPropPageExtPelora::Collect(ChangeList& changes) {
  const bool is_multi_select = page().IsMultiSelect();
  changes.push_back(MakeChange(kAccount, IsChecked(IDC_PELORA_ACCOUNT) ? "1" : "0",
                               account_changed_, is_multi_select));
  changes.push_back(MakeChange(kHidden, IsChecked(IDC_PELORA_HIDDEN) ? "1" : "0", hidden_changed_,
                               is_multi_select));
  return S_OK;
}

int CPropPageExtPelora::SkipValidation() const {
  return IsChecked(IDC_PELORA_ACCOUNT) ? kValidate : kSkipValidation;
}

bool CPropPageExtPelora::IsChecked(ControlId box) const {
  return dialog().Check(box) == CheckState::kChecked;
}

void CPropPageExtPelora::OnClicked(ControlId box, bool& changed) {
  changed = true;
  // A box that was loaded indeterminate leaves that state for good with its first click.
  dialog().SetStyle(box, ButtonStyle::kAutoCheckBox);
  page().SetModified(true);
}

}  // namespace pelora
