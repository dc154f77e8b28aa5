// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_ext_dynamic_distlist.h"

#include <array>

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

/// Without the search base, which is filled by its button only and stays disabled.
constexpr std::array<ControlId, 7> kEnabledControls = {
    IDC_PELORA_HIDDEN,      IDC_NEW_ADDRESS_LABEL,  IDC_NEW_ADDRESS, IDC_SEARCH_BASE_LABEL,
    IDC_SEARCH_BASE_SELECT, IDC_SEARCH_QUERY_LABEL, IDC_SEARCH_QUERY};

constexpr const Attribute& kHidden = CatalogueEntry("peloraHidden");
constexpr const Attribute& kMail = CatalogueEntry("mail");
constexpr const Attribute& kBase = CatalogueEntry("peloraBase");
constexpr const Attribute& kFilter = CatalogueEntry("peloraFilter");

}  // namespace

CWizardExtDynamicDistlist::CWizardExtDynamicDistlist(const Platform& platform)
    : CWizardPage(platform, {.dialog_template = IDD_WIZARD_EXT_DYNAMIC_DISTLIST,
                             .title = "New object: dynamic distlist",
                             .enabled_controls = kEnabledControls}) {
  using enum ControlNotification;
  RegisterCollect(Handler(this, &CWizardExtDynamicDistlist::Collect));
  RegisterValidate(Handler(this, &CWizardExtDynamicDistlist::Validate));
  Route({
      {IDC_CREATE_PELORA, kClicked, Handler(this, &CWizardExtDynamicDistlist::OnCreateClicked)},
      {IDC_SEARCH_QUERY, kEditChange, Handler(this, &CWizardExtDynamicDistlist::Revalidate)},
      {IDC_SEARCH_BASE_SELECT, kClicked, Handler(this, &CWizardExtDynamicDistlist::OnSelectBase)},
  });
}

HRESULT CWizardExtDynamicDistlist::Collect(ChangeList& changes) {
  changes.push_back(MakeNewObjectChange(kHidden, FlagOf(IDC_PELORA_HIDDEN)));
  changes.push_back(MakeNewObjectChange(kMail, Dialog().Text(IDC_NEW_ADDRESS)));
  changes.push_back(MakeNewObjectChange(kBase, Dialog().Text(IDC_SEARCH_BASE)));
  changes.push_back(MakeNewObjectChange(kFilter, Dialog().Text(IDC_SEARCH_QUERY)));
  return S_OK;
}

HRESULT CWizardExtDynamicDistlist::Validate(std::string* message) {
  return RequireText(IDC_SEARCH_QUERY, "Missing Search Query", message);
}

std::int32_t CWizardExtDynamicDistlist::OnSelectBase() { return ChooseContainer(IDC_SEARCH_BASE); }

}  // namespace pelora
