// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_user.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "directory/ascii_case.h"
#include "pages/account_type.h"
#include "pages/choose_name.h"
#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

using enum ControlNotification;

/// The e-mail addresses and the delegates belong to one user.
constexpr std::array<ControlId, 10> kMultiSelectHideList = {
    IDC_EMAIL_LIST,   IDC_SENDAS_LIST,  IDC_EMAIL_GROUP,   IDC_SENDAS_GROUP, IDC_EMAIL_ADD,
    IDC_EMAIL_DELETE, IDC_EMAIL_MODIFY, IDC_EMAIL_DEFAULT, IDC_SENDAS_ADD,   IDC_SENDAS_DELETE};

constexpr const Attribute& kSharedStoreOnly = CatalogueEntry("peloraSharedStoreOnly");
constexpr const Attribute& kAdmin = CatalogueEntry("peloraAdmin");
constexpr const Attribute& kResourceType = CatalogueEntry("peloraResourceType");
constexpr const Attribute& kCapacity = CatalogueEntry("peloraResourceCapacity");
constexpr std::array kServer = {
    EditedFields::Field{IDC_SERVER, CatalogueEntry("peloraUserServer")}};

/// The row of an account: its resource type comes before its being a shared store, both before its
/// administrator level. A level beyond the list has no row.
std::optional<RowIndex> RowOf(std::string_view resource_type, bool is_shared_store,
                              std::uint32_t admin_level) {
  if (EqualsWithoutCase(resource_type, kAccountTypes.at(kRoom).resource_type)) return kRoom;
  if (EqualsWithoutCase(resource_type, kAccountTypes.at(kEquipment).resource_type)) {
    return kEquipment;
  }
  if (is_shared_store) return kSharedStore;
  if (admin_level == 0) return kActiveUser;
  const RowIndex row = kAdministrator + RowIndex{admin_level} - 1;
  return row < kAccountTypes.size() ? std::optional(row) : std::nullopt;
}

}  // namespace

CPropPageUser::CPropPageUser(const Platform& platform)
    : CSnapInPropertyPage(platform, IID_IADsUser, kMultiSelectHideList, IDD_PROPPAGE_USER,
                          "Pelora"),
      person_(*this, platform, true),
      quota_(*this, platform, QuotaKind::kOwn),
      account_(*this),
      server_(*this, kServer) {
  RegisterLoad(Handler(this, &CPropPageUser::Load));
  RegisterCollect(Handler(this, &CPropPageUser::Collect));
  RegisterValidate([](std::string* /*message*/) { return S_OK; });
  Route(account_.Commands());
  Route(person_.AddressCommands());
  Route(person_.DelegateCommands());
  Route(quota_.LimitCommands());
  Route(server_.Commands());
  Route({
      {IDC_ACCOUNT_TYPE, kSelectionChange, Handler(this, &CPropPageUser::OnAccountTypeChanged)},
      {IDC_CAPACITY, kEditChange, Handler(this, &CPropPageUser::OnCapacityEdited)},
      {IDC_SERVER_SELECT, kClicked, Handler(this, &CPropPageUser::OnSelectServer)},
  });
}

HRESULT CPropPageUser::Load(const BoundObjects& objects) {
  server_.Load(objects);
  LoadAccountType(objects);
  type_changed_ = false;
  LoadNumber(objects, kCapacity.name, IDC_CAPACITY);
  FollowAccountType();
  capacity_changed_ = false;
  return S_OK;
}

HRESULT CPropPageUser::Collect(ChangeList& changes) {
  const bool is_multi_select = IsMultiSelect();
  const AccountType type = AccountTypeAt(AccountTypeList().Selection());
  const bool writes_capacity = !capacity_changed_ || type.IsResource();
  const auto add = [&](const Attribute& attribute, std::string value, bool changed) {
    changes.push_back(MakeChange(attribute, std::move(value), changed, is_multi_select));
  };
  add(kAdmin, std::string(type.admin), type_changed_);
  add(kSharedStoreOnly, std::string(type.shared_store_only), type_changed_);
  add(kResourceType, std::string(type.resource_type), type_changed_);
  add(kCapacity, Dialog().Text(IDC_CAPACITY), writes_capacity);
  // Whether the capacity was edited is remembered until the next load or choice of a type.
  type_changed_ = false;
  return server_.Collect(changes);
}

std::int32_t CPropPageUser::OnAccountTypeChanged() {
  type_changed_ = true;
  // An earlier edit of the capacity is forgotten when the account is no resource any more.
  capacity_changed_ = AccountTypeAt(AccountTypeList().Selection()).IsResource();
  FollowAccountType();
  SetModified(true);
  return 0;
}

std::int32_t CPropPageUser::OnCapacityEdited() {
  capacity_changed_ = true;
  SetModified(true);
  return 0;
}

std::int32_t CPropPageUser::OnSelectServer() {
  ChooseName(*this, platform(), &SelectADObject::SelectComputers, IDC_SERVER);
  return 0;
}

void CPropPageUser::LoadAccountType(const BoundObjects& objects) const {
  const ValueSummary<bool> shared_store_only = SummarizeFlag(objects, kSharedStoreOnly.name);
  const ValueSummary<std::int32_t> admin = SummarizeInteger(objects, kAdmin.name);
  const ValueSummary<std::string> resource_type = SummarizeString(objects, kResourceType.name);
  AccountTypeList().Clear();
  for (const AccountType& type : kAccountTypes) AccountTypeList().Add(type.text);
  const bool is_uniform =
      shared_store_only.IsUniform() && admin.IsUniform() && resource_type.IsUniform();
  if (!is_uniform) return;
  AccountTypeList().Select(RowOf(resource_type.value(), shared_store_only.value(),
                                 static_cast<std::uint32_t>(admin.value())));
}

IComboBox& CPropPageUser::AccountTypeList() const { return Dialog().ComboBox(IDC_ACCOUNT_TYPE); }

void CPropPageUser::FollowAccountType() {
  const std::optional<RowIndex> row = AccountTypeList().Selection();
  const bool is_resource = AccountTypeAt(row).IsResource();
  Dialog().SetEnabled(IDC_CAPACITY, is_resource);
  Dialog().SetEnabled(IDC_CAPACITY_LABEL, is_resource);
  person_.set_email_required(row == kActiveUser);
}

}  // namespace pelora
