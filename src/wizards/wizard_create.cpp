// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_create.h"

#include <string_view>
#include <utility>

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::string_view kMissingName = "Missing Name";

}  // namespace

CWizardCreate::CWizardCreate(const Platform& platform, const Guid& object_interface,
                             std::vector<ControlId> enabled_controls)
    : CWizardBase(platform, object_interface, std::move(enabled_controls)) {
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

std::vector<Command> CWizardCreate::OwnCommands() {
  return {{IDC_OBJECT_NAME, ControlNotification::kEditChange,
           Handler(this, &CWizardCreate::OnNameChanged)}};
}

std::vector<FieldRow> CWizardCreate::OwnRows() {
  return {{.name = "name",
           .control = IDC_OBJECT_NAME,
           .attributes = {"name"},
           .missing = kMissingName}};
}

std::int32_t CWizardCreate::OnNameChanged() {
  object_name_ = Dialog().Text(IDC_OBJECT_NAME);
  EnableControls(!object_name_.empty());
  return Revalidate();
}

void CWizardCreate::Activate() const { Revalidate(); }

HRESULT CWizardCreate::Validate(std::string* message) const {
  if (!IsFieldEmpty(Dialog(), IDC_OBJECT_NAME)) return S_OK;
  if (message != nullptr) *message = kMissingName;
  return E_FAIL;
}

}  // namespace pelora
