// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_create.h"

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {

CWizardCreate::CWizardCreate(const Platform& platform, const Guid& object_interface,
                             std::span<const ControlId> enabled_controls)
    : CWizardBase(platform, object_interface, enabled_controls) {
  RegisterValidate(Handler(this, &CWizardCreate::Validate));
}

HRESULT CWizardCreate::WriteData(IDialog* /*owner*/, NewObjectPhase phase) {
  if (phase != NewObjectPhase::kPreCommit) return kDataWritten;
  if (wizard() == nullptr) return kDataNotWritten;
  const Ref<IDsAdminNewObjPrimarySite> site = Query<IDsAdminNewObjPrimarySite>(*wizard());
  if (!site) return kDataNotWritten;
  return SUCCEEDED(site->CreateNew(object_name_)) ? kDataWritten : kDataNotWritten;
}

HRESULT CWizardCreate::GetSummaryInfo(std::string& text) {
  text = "Fullname: " + object_name_ + "\r\n";
  return S_OK;
}

std::int32_t CWizardCreate::OnNameChanged() {
  object_name_ = Dialog().Text(IDC_OBJECT_NAME);
  EnableControls(!object_name_.empty());
  return Revalidate();
}

void CWizardCreate::Activate() const { Revalidate(); }

HRESULT CWizardCreate::Validate(std::string* message) const {
  return RequireText(IDC_OBJECT_NAME, "Missing Name", message);
}

}  // namespace pelora
