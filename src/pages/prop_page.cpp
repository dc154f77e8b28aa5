// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page.h"

namespace pelora {

CPropPage::CPropPage(const Platform& platform, const Guid& bind_interface,
                     std::span<const ControlId> multi_select_hide_list)
    : CADSBase(platform),
      bind_interface_(bind_interface),
      multi_select_hide_list_(multi_select_hide_list) {}

HRESULT CPropPage::QueryInterface(const Guid& iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (iid == IID_IShellPropSheetExt) {
    *object = static_cast<IShellPropSheetExt*>(this);
  } else if (iid == IID_IFieldRows) {
    *object = static_cast<IFieldRows*>(this);
  } else if (iid == IID_IShellExtInit || iid == IID_IUnknown) {
    *object = static_cast<IShellExtInit*>(this);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

std::uint32_t CPropPage::AddRef() { return ++references_; }

std::uint32_t CPropPage::Release() {
  const std::uint32_t left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT CPropPage::Initialize(IDataObject* data_object) {
  return CADSBase::Initialize(data_object);
}

HRESULT CPropPage::InitPage() {
  // Until the loading has come to its end it has failed, exceptions included.
  load_status_ = E_UNEXPECTED;
  load_status_ = Load();
  return load_status_;
}

HRESULT CPropPage::Load() {
  BoundObjects objects;
  if (const HRESULT status = BindObjects(bind_interface_, objects); status != S_OK) {
    ShowError(status, "Unable to get connection with the ldap user.");
    return status;
  }
  ShowForSelection(multi_select_hide_list_);
  const HRESULT status = LoadAll(objects);
  ReleaseObjects(objects);
  return status;
}

bool CPropPage::Apply() {
  BoundObjects objects;
  if (!BindForApply(objects) || !ValidateForApply()) return false;
  ChangeList changes;
  if (const HRESULT status = CollectAll(changes); FAILED(status)) {
    ShowError(status, "Unable to collect pelora attributes");
    return false;
  }
  SetModified(false);
  return SUCCEEDED(WriteAndCommit(objects, changes));
}

bool CPropPage::BindForApply(BoundObjects& objects) const {
  HRESULT status = load_status_;
  if (status == S_OK) status = BindObjects(IID_IADs, objects);
  if (status != S_OK) ShowError(status, "Unable to get connection with the ldap user");
  return status == S_OK;
}

bool CPropPage::ValidateForApply() const {
  std::string message;
  const HRESULT status = ValidateAll(&message);
  if (FAILED(status)) ShowError(status, "Validation of input fields failed: " + message);
  return SUCCEEDED(status);
}

HRESULT CPropPage::WriteAndCommit(const BoundObjects& objects, ChangeList& changes) const {
  constexpr bool kClearEmpty = true;
  HRESULT status = S_OK;
  for (const Ref<IADs>& object : objects) {
    status = WriteAttributes(*object, changes, kClearEmpty);
    if (FAILED(status)) return status;
    status = object->SetInfo();
    if (FAILED(status)) {
      ShowError(status, "");
      return status;
    }
  }
  return status;
}

void CPropPage::ShowForSelection(std::span<const ControlId> controls) const {
  for (const ControlId control : controls) Dialog().SetShown(control, !IsMultiSelect());
}

}  // namespace pelora
