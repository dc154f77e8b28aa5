// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page_ext_person.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <utility>

#include "pages/email_address_dlg.h"
#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr const Attribute& kDefaultAddress = CatalogueEntry("mail");
constexpr const Attribute& kOtherAddresses = CatalogueEntry("otherMailbox");

constexpr NameList::Layout kDelegates = {IDC_SENDAS_LIST,
                                         IDC_SENDAS_ADD,
                                         IDC_SENDAS_DELETE,
                                         IDC_SENDAS_GROUP,
                                         CatalogueEntry("peloraSendAsPrivilege"),
                                         &SelectADObject::SelectUsersAndGroups,
                                         IDC_SENDAS_ADD};

}  // namespace

CPropPageExtPerson::CPropPageExtPerson(CPropPage& page, const Platform& platform,
                                       bool email_required)
    : CPropPageExt(page),
      platform_(platform),
      addresses_(platform.text),
      delegates_(page, platform, kDelegates),
      email_required_(email_required) {}

std::vector<Command> CPropPageExtPerson::Commands() {
  using enum ControlNotification;
  std::vector<Command> commands = {
      {IDC_EMAIL_ADD, kClicked, Handler(this, &CPropPageExtPerson::OnAddAddress)},
      {IDC_EMAIL_DELETE, kClicked, Handler(this, &CPropPageExtPerson::OnDeleteAddress)},
      {IDC_EMAIL_MODIFY, kClicked, Handler(this, &CPropPageExtPerson::OnModifyAddress)},
      {IDC_EMAIL_DEFAULT, kClicked, Handler(this, &CPropPageExtPerson::OnSetDefaultAddress)},
      {IDC_EMAIL_LIST, kSelectionChange, Handler(this, &CPropPageExtPerson::OnAddressSelected)}};
  std::ranges::move(delegates_.Commands(), std::back_inserter(commands));
  return commands;
}

std::vector<FieldRow> CPropPageExtPerson::Rows() {
  FieldRow default_address = {
      .name = std::string(kDefaultAddress.name),
      .kind = FieldKind::kDefaultEntry,
      .control = IDC_EMAIL_LIST,
      .label = IDC_EMAIL_GROUP,
      .attributes = {kDefaultAddress.name, kOtherAddresses.name},
      .choose = IDC_EMAIL_ADD,
      .remove = IDC_EMAIL_DELETE,
      .make_default = IDC_EMAIL_DEFAULT,
      .typed_in = {.dialog = IDD_EMAIL_ADDRESS, .text = IDC_EMAIL_ADDRESS},
      .keep_default = [this](RowIndex row) { addresses_.KeepDefault(AddressList(), row); },
      .take_down = [this] { return TakeDownAddresses(); },
  };
  FieldRow other_addresses = default_address;
  other_addresses.name = kOtherAddresses.name;
  other_addresses.kind = FieldKind::kList;
  other_addresses.attributes = {kOtherAddresses.name, kDefaultAddress.name};
  std::vector<FieldRow> rows = {std::move(default_address), std::move(other_addresses)};
  std::ranges::move(delegates_.Rows(), std::back_inserter(rows));
  return rows;
}

std::int32_t CPropPageExtPerson::OnAddAddress() {
  CEmailAddressDlg address_dialog(platform_, "");
  if (address_dialog.Show(nullptr) == kDialogOk) {
    const bool is_first = AddressList().Count() == 0;
    addresses_.Add(AddressList(), address_dialog.address(), true, is_first);
    page().SetModified(true);
  }
  UpdateAddressButtons();
  return 0;
}

std::int32_t CPropPageExtPerson::OnModifyAddress() {
  const std::string* const selected = MultiValueAttribute::SelectedValue(AddressList());
  if (selected == nullptr) return 1;
  CEmailAddressDlg address_dialog(platform_, *selected);
  if (address_dialog.Show(nullptr) != kDialogOk) return 0;
  if (addresses_.Modify(AddressList(), address_dialog.address()) == 0) page().SetModified(true);
  return 0;
}

std::int32_t CPropPageExtPerson::OnDeleteAddress() {
  if (email_required_ && AddressList().Count() == 1) {
    // A warning and no refusal: the address goes all the same.
    page().ShowError(S_OK, "Pelora user requires at least one email address");
  }
  addresses_.Delete(AddressList());
  page().SetModified(true);
  UpdateAddressButtons();
  return 0;
}

std::int32_t CPropPageExtPerson::OnSetDefaultAddress() {
  page().SetModified(true);
  addresses_.SetDefault(AddressList());
  return 0;
}

std::int32_t CPropPageExtPerson::OnAddressSelected() {
  UpdateAddressButtons();
  return 0;
}

HRESULT CPropPageExtPerson::Load(const BoundObjects& objects) {
  page().EmptyIfLoadedAnew(addresses_, AddressList());
  LoadDefaultAddress(objects);
  page().LoadMultiValue(objects, kOtherAddresses.name, [this](StoredValue value) {
    return addresses_.Load(AddressList(), std::move(value));
  });
  delegates_.Load(objects);
  const int width = dialog().ClientWidth(IDC_EMAIL_LIST);
  AddressList().SetTabStops(std::array{width / 2, width});
  return S_OK;
}

HRESULT CPropPageExtPerson::Collect(ChangeList& changes) {
  CollectAddresses(changes);
  return delegates_.Collect(changes);
}

HRESULT CPropPageExtPerson::Validate(std::string* message) const {
  if (!email_required_ || AddressList().Count() != 0 || page().IsMultiSelect()) return S_OK;
  if (message != nullptr) *message = "Missing Email Address";
  return E_FAIL;
}

void CPropPageExtPerson::LoadDefaultAddress(const BoundObjects& objects) {
  if (page().IsMultiSelect() || objects.empty()) return;
  Variant stored;
  const HRESULT status = objects.front()->Get(kDefaultAddress.name, stored);
  if (FAILED(status) || stored.type() != VT_BSTR) return;
  addresses_.Add(AddressList(), stored.string(), false, true);
}

void CPropPageExtPerson::CollectAddresses(ChangeList& changes) const {
  const bool is_multi_select = page().IsMultiSelect();
  Variant others;
  std::string default_address;
  if (!addresses_.BuildValue(&others, &default_address)) return;
  if (!default_address.empty()) {
    changes.push_back(
        MakeChange(kDefaultAddress, std::move(default_address), true, is_multi_select));
  }
  changes.push_back(MakeListChange(kOtherAddresses, std::move(others), is_multi_select));
}

std::function<void()> CPropPageExtPerson::TakeDownAddresses() {
  return [this, put_back = addresses_.TakeDown()] {
    put_back(AddressList());
    UpdateAddressButtons();
  };
}

void CPropPageExtPerson::UpdateAddressButtons() const {
  const bool is_selected = AddressList().Selection().has_value();
  const bool is_only = AddressList().Count() == 1;
  dialog().SetEnabled(IDC_EMAIL_DELETE, is_only ? !email_required_ : is_selected);
  dialog().SetEnabled(IDC_EMAIL_MODIFY, is_selected);
  dialog().SetEnabled(IDC_EMAIL_DEFAULT, !is_only && is_selected);
}

IListBox& CPropPageExtPerson::AddressList() const { return dialog().ListBox(IDC_EMAIL_LIST); }

}  // namespace pelora
