// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_ext_user.h"

#include <array>

#include "pages/account_type.h"
#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

/// Without the capacity, which the account type alone enables.
constexpr std::array<ControlId, 7> kEnabledControls = {
    IDC_ACCOUNT_TYPE, IDC_PELORA_HIDDEN, IDC_NEW_ADDRESS_LABEL, IDC_NEW_ADDRESS,
    IDC_SERVER_LABEL, IDC_SERVER,        IDC_SERVER_SELECT};

constexpr const Attribute& kAdmin = CatalogueEntry("peloraAdmin");
constexpr const Attribute& kSharedStoreOnly = CatalogueEntry("peloraSharedStoreOnly");
constexpr const Attribute& kResourceType = CatalogueEntry("peloraResourceType");
constexpr const Attribute& kCapacity = CatalogueEntry("peloraResourceCapacity");
constexpr const Attribute& kHidden = CatalogueEntry("peloraHidden");
constexpr const Attribute& kServer = CatalogueEntry("peloraUserServer");
constexpr const Attribute& kMail = CatalogueEntry("mail");

}  // namespace

CWizardExtUser::CWizardExtUser(const Platform& platform)
    : CWizardPage(platform, {.dialog_template = IDD_WIZARD_EXT_USER,
                             .title = "New object: User",
                             .object_interface = IID_IADsUser,
                             .enabled_controls = kEnabledControls}) {
  using enum ControlNotification;
  RegisterLoad(Handler(this, &CWizardExtUser::Load));
  RegisterCollect(Handler(this, &CWizardExtUser::Collect));
  RegisterValidate(Handler(this, &CWizardExtUser::Validate));
  Route({
      {IDC_CREATE_PELORA, kClicked, Handler(this, &CWizardExtUser::OnCreateClicked)},
      {IDC_ACCOUNT_TYPE, kSelectionChange, Handler(this, &CWizardExtUser::OnAccountTypeChanged)},
      {IDC_SERVER_SELECT, kClicked, Handler(this, &CWizardExtUser::OnSelectServer)},
      {IDC_NEW_ADDRESS, kEditChange, Handler(this, &CWizardExtUser::Revalidate)},
  });
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
  add(kHidden, FlagOf(IDC_PELORA_HIDDEN));
  add(kServer, Dialog().Text(IDC_SERVER));
  add(kMail, Dialog().Text(IDC_NEW_ADDRESS));
  return S_OK;
}

HRESULT CWizardExtUser::Validate(std::string* message) {
  const bool needs_address = AccountTypeList().Selection() == kActiveUser;
  return needs_address ? RequireText(IDC_NEW_ADDRESS, "Missing Email Address", message) : S_OK;
}

std::int32_t CWizardExtUser::OnAccountTypeChanged() {
  const bool is_resource = AccountTypeAt(AccountTypeList().Selection()).IsResource();
  Dialog().SetEnabled(IDC_CAPACITY_LABEL, is_resource);
  Dialog().SetEnabled(IDC_CAPACITY, is_resource);
  return Revalidate();
}

std::int32_t CWizardExtUser::OnSelectServer() { return ChooseComputer(IDC_SERVER); }

IComboBox& CWizardExtUser::AccountTypeList() const { return Dialog().ComboBox(IDC_ACCOUNT_TYPE); }

}  // namespace pelora
