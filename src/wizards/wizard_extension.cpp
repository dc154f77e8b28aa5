// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_extension.h"

#include <utility>
#include <vector>

#include "directory/exception_status.h"
#include "pages/attribute_row.h"
#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr const Attribute& kAccount = CatalogueEntry("peloraAccount");

constexpr const char* kNoConnection = "Unable to get connection with the ldap user";
constexpr const char* kNotCollected = "Unable to collect pelora attributes";

}  // namespace

HRESULT CWizardExtension::WriteData(IDialog* /*owner*/, NewObjectPhase phase) {
  if (phase != NewObjectPhase::kPreCommit) return kDataWritten;
  try {
    return WriteNewObject() == S_OK ? kDataWritten : kDataNotWritten;
  } catch (...) {
    ShowError(StatusOfException(), "");
    return kDataNotWritten;
  }
}

HRESULT CWizardExtension::WriteNewObject() const {
  BoundObjects objects;
  HRESULT status = BindObjects(object_interface(), objects);
  // Without a new object nothing is bound, and nothing failed.
  if (status == S_OK && objects.empty()) status = E_ADS_OBJECT_UNBOUND;
  if (status != S_OK) {
    ShowError(status, kNoConnection);
    return status;
  }
  status = WriteChanges(objects);
  ReleaseObjects(objects);
  return status;
}

HRESULT CWizardExtension::WriteChanges(const BoundObjects& objects) const {
  constexpr bool kClearEmpty = false;
  ChangeList changes;
  if (const HRESULT status = CollectChanges(changes); FAILED(status)) {
    ShowError(status, kNotCollected);
    return status;
  }
  return WriteAttributes(*objects.front(), changes, kClearEmpty);
}

HRESULT CWizardExtension::CollectChanges(ChangeList& changes) const {
  changes = {MakeNewObjectChange(kAccount, create_checked_ ? "1" : "0")};
  if (!create_checked_) return S_OK;
  // The fields go with the page's dialog, and what they held with them.
  return OwnerWindow() != nullptr ? CollectAll(changes) : E_UNEXPECTED;
}

HRESULT CWizardExtension::GetSummaryInfo(std::string& text) {
  text = create_checked_ ? "Pelora enabled" : "Pelora disabled";
  return S_OK;
}

std::vector<Command> CWizardExtension::OwnCommands() {
  return {{IDC_CREATE_PELORA, ControlNotification::kClicked,
           Handler(this, &CWizardExtension::OnCreateClicked)}};
}

std::vector<FieldRow> CWizardExtension::OwnRows() {
  return {AttributeRow(kAccount, IDC_CREATE_PELORA, 0)};
}

std::int32_t CWizardExtension::OnCreateClicked() {
  create_checked_ = Dialog().Check(IDC_CREATE_PELORA) == CheckState::kChecked;
  EnableControls(create_checked_);
  Activate();
  return 0;
}

void CWizardExtension::Activate() const {
  if (create_checked_) {
    Revalidate();
  } else {
    SetButtons(true);
  }
}

}  // namespace pelora
