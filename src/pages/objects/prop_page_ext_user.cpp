// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_ext_user.h"

#include <array>
#include <optional>
#include <string>
#include <utility>

#include "pages/account_type.h"
#include "pages/attribute_row.h"
#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr const Attribute& kSharedStoreOnly = CatalogueEntry("peloraSharedStoreOnly");
constexpr const Attribute& kAdmin = CatalogueEntry("peloraAdmin");
constexpr const Attribute& kResourceType = CatalogueEntry("peloraResourceType");
constexpr const Attribute& kCapacity = CatalogueEntry("peloraResourceCapacity");
constexpr std::array kServer = {
    EditedFields::Field{.control = IDC_SERVER,
                        .attribute = CatalogueEntry("peloraUserServer"),
                        .label = IDC_SERVER_GROUP,
                        .choose = {IDC_SERVER_SELECT, &kComputerChooser}}};

}  // namespace

CPropPageExtUser::CPropPageExtUser(CPropPage& page, CPropPageExtPerson& person)
    : CPropPageExt(page), person_(person), server_(page, kServer) {}

HRESULT CPropPageExtUser::Load(const BoundObjects& objects) {
  server_.Load(objects);
  LoadAccountType(objects);
  type_changed_ = false;
  page().LoadNumber(objects, kCapacity.name, IDC_CAPACITY);
  FollowAccountType();
  capacity_changed_ = false;
  return S_OK;
}

HRESULT CPropPageExtUser::Collect(ChangeList& changes) {
  const bool is_multi_select = page().IsMultiSelect();
  const AccountType type = AccountTypeAt(AccountTypeList().Selection());
  const bool writes_capacity = !capacity_changed_ || type.IsResource();
  const auto add = [&](const Attribute& attribute, std::string value, bool changed) {
    changes.push_back(MakeChange(attribute, std::move(value), changed, is_multi_select));
  };
  add(kAdmin, std::string(type.admin), type_changed_);
  add(kSharedStoreOnly, std::string(type.shared_store_only), type_changed_);
  add(kResourceType, std::string(type.resource_type), type_changed_);
  add(kCapacity, dialog().Text(IDC_CAPACITY), writes_capacity);
  // Whether the capacity was edited is remembered until the next load or choice of a type.
  type_changed_ = false;
  return server_.Collect(changes);
}

std::vector<Command> CPropPageExtUser::Commands() {
  using enum ControlNotification;
  std::vector<Command> commands = server_.Commands();
  commands.push_back(
      {IDC_ACCOUNT_TYPE, kSelectionChange, Handler(this, &CPropPageExtUser::OnAccountTypeChanged)});
  commands.push_back(
      {IDC_CAPACITY, kEditChange, Handler(this, &CPropPageExtUser::OnCapacityEdited)});
  return commands;
}

std::vector<FieldRow> CPropPageExtUser::Rows() const {
  std::vector<FieldRow> rows = server_.Rows();
  rows.push_back(AccountTypeRow());
  rows.push_back(AttributeRow(kCapacity, IDC_CAPACITY, IDC_CAPACITY_LABEL));
  return rows;
}

std::int32_t CPropPageExtUser::OnAccountTypeChanged() {
  type_changed_ = true;
  // An earlier edit of the capacity is forgotten when the account is no resource any more.
  capacity_changed_ = AccountTypeAt(AccountTypeList().Selection()).IsResource();
  FollowAccountType();
  page().SetModified(true);
  return 0;
}

std::int32_t CPropPageExtUser::OnCapacityEdited() {
  capacity_changed_ = true;
  page().SetModified(true);
  return 0;
}

void CPropPageExtUser::LoadAccountType(const BoundObjects& objects) const {
  const std::optional<RowIndex> row = AccountTypeOf(objects);
  AccountTypeList().Clear();
  for (const AccountType& type : kAccountTypes) AccountTypeList().Add(type.text);
  AccountTypeList().Select(row);
}

IComboBox& CPropPageExtUser::AccountTypeList() const { return dialog().ComboBox(IDC_ACCOUNT_TYPE); }

void CPropPageExtUser::FollowAccountType() {
  const std::optional<RowIndex> row = AccountTypeList().Selection();
  const bool is_resource = AccountTypeAt(row).IsResource();
  dialog().SetEnabled(IDC_CAPACITY, is_resource);
  dialog().SetEnabled(IDC_CAPACITY_LABEL, is_resource);
  person_.set_email_required(row == kActiveUser);
}

}  // namespace pelora
