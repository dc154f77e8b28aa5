// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_ext_addresslist.h"

#include <array>

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

/// Without the search base, which is filled by its button only and stays disabled.
constexpr std::array<ControlId, 5> kEnabledControls = {IDC_PELORA_HIDDEN, IDC_SEARCH_BASE_LABEL,
                                                       IDC_SEARCH_BASE_SELECT,
                                                       IDC_SEARCH_QUERY_LABEL, IDC_SEARCH_QUERY};

constexpr const Attribute& kHidden = CatalogueEntry("peloraHidden");
constexpr const Attribute& kBase = CatalogueEntry("peloraBase");
constexpr const Attribute& kFilter = CatalogueEntry("peloraFilter");

}  // namespace

CWizardExtAddresslist::CWizardExtAddresslist(const Platform& platform)
    : CWizardPage(platform, {.dialog_template = IDD_WIZARD_EXT_ADDRESSLIST,
                             .title = "New object: peloraAddresslist",
                             .enabled_controls = kEnabledControls}) {
  using enum ControlNotification;
  RegisterCollect(Handler(this, &CWizardExtAddresslist::Collect));
  RegisterValidate(Handler(this, &CWizardExtAddresslist::Validate));
  Route({
      {IDC_CREATE_PELORA, kClicked, Handler(this, &CWizardExtAddresslist::OnCreateClicked)},
      {IDC_SEARCH_QUERY, kEditChange, Handler(this, &CWizardExtAddresslist::Revalidate)},
      {IDC_SEARCH_BASE_SELECT, kClicked, Handler(this, &CWizardExtAddresslist::OnSelectBase)},
  });
}

HRESULT CWizardExtAddresslist::Collect(ChangeList& changes) {
  changes.push_back(MakeNewObjectChange(kHidden, FlagOf(IDC_PELORA_HIDDEN)));
  changes.push_back(MakeNewObjectChange(kBase, Dialog().Text(IDC_SEARCH_BASE)));
  changes.push_back(MakeNewObjectChange(kFilter, Dialog().Text(IDC_SEARCH_QUERY)));
  return S_OK;
}

HRESULT CWizardExtAddresslist::Validate(std::string* message) {
  return RequireText(IDC_SEARCH_QUERY, "Missing Search Query", message);
}

std::int32_t CWizardExtAddresslist::OnSelectBase() { return ChooseContainer(IDC_SEARCH_BASE); }

}  // namespace pelora
