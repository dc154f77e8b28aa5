// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_ext_user.h"

#include <array>

#include "pages/account_type.h"
#include "pages/attribute_row.h"
#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr const Attribute& kAdmin = CatalogueEntry("peloraAdmin");
constexpr const Attribute& kSharedStoreOnly = CatalogueEntry("peloraSharedStoreOnly");
constexpr const Attribute& kResourceType = CatalogueEntry("peloraResourceType");
constexpr const Attribute& kCapacity = CatalogueEntry("peloraResourceCapacity");

constexpr std::array kFields = {
    WizardField{.control = IDC_PELORA_HIDDEN, .attribute = CatalogueEntry("peloraHidden")},
    WizardField{.control = IDC_SERVER,
                .attribute = CatalogueEntry("peloraUserServer"),
                .label = IDC_SERVER_LABEL,
                .choose = {IDC_SERVER_SELECT, &kComputerChooser}},
    WizardField{.control = IDC_NEW_ADDRESS,
                .attribute = CatalogueEntry("mail"),
                .label = IDC_NEW_ADDRESS_LABEL},
};

/// The address goes before the server here. The capacity is enabled by the account type alone.
constexpr std::array<ControlId, 4> kEnabledControls = {IDC_ACCOUNT_TYPE, IDC_PELORA_HIDDEN,
                                                       IDC_NEW_ADDRESS_LABEL, IDC_NEW_ADDRESS};

}  // namespace

CWizardExtUser::CWizardExtUser(const Platform& platform)
    : CWizardPage(platform, {.dialog_template = IDD_WIZARD_EXT_USER,
                             .title = "New object: User",
                             .object_interface = IID_IADsUser,
                             .enabled_controls = kEnabledControls,
                             .fields = kFields}) {
  using enum ControlNotification;
  RegisterLoad(Handler(this, &CWizardExtUser::Load));
  RegisterCollect(Handler(this, &CWizardExtUser::Collect));
  RegisterValidate(Handler(this, &CWizardExtUser::Validate));
  Route({
      {IDC_ACCOUNT_TYPE, kSelectionChange, Handler(this, &CWizardExtUser::OnAccountTypeChanged)},
      {IDC_NEW_ADDRESS, kEditChange, Handler(this, &CWizardExtUser::Revalidate)},
  });
  RegisterRows(&CWizardExtUser::TypeRows);
  Add(fields());
}

HRESULT CWizardExtUser::Load(const BoundObjects& /*objects*/) {
  for (const AccountType& type : kAccountTypes) AccountTypeList().Add(type.text);
  AccountTypeList().Select(kActiveUser);
  return S_OK;
}

HRESULT CWizardExtUser::Collect(ChangeList& changes) {
  const AccountType type = AccountTypeAt(AccountTypeList().Selection());
  const auto add = [&](const Attribute& attribute, std::string_view value, bool is_written = true) {
    changes.push_back(MakeNewObjectChange(attribute, std::string(value), is_written));
  };
  add(kAdmin, type.admin);
  add(kSharedStoreOnly, type.shared_store_only);
  add(kResourceType, type.resource_type, type.IsResource());
  add(kCapacity, Dialog().Text(IDC_CAPACITY), type.IsResource());
  return S_OK;
}

HRESULT CWizardExtUser::Validate(std::string* message) {
  const bool needs_address = AccountTypeList().Selection() == kActiveUser;
  if (!needs_address || !IsFieldEmpty(Dialog(), IDC_NEW_ADDRESS)) return S_OK;
  if (message != nullptr) *message = "Missing Email Address";
  return E_FAIL;
}

std::vector<FieldRow> CWizardExtUser::TypeRows() {
  return {AccountTypeRow(), AttributeRow(kCapacity, IDC_CAPACITY, IDC_CAPACITY_LABEL)};
}

std::int32_t CWizardExtUser::OnAccountTypeChanged() {
  const bool is_resource = AccountTypeAt(AccountTypeList().Selection()).IsResource();
  Dialog().SetEnabled(IDC_CAPACITY_LABEL, is_resource);
  Dialog().SetEnabled(IDC_CAPACITY, is_resource);
  return Revalidate();
}

IComboBox& CWizardExtUser::AccountTypeList() const { return Dialog().ComboBox(IDC_ACCOUNT_TYPE); }

}  // namespace pelora
