// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page.h"

#include <string>

namespace pelora {
namespace {

constexpr const char* kNoConnection = "Unable to get connection with the ldap user";
constexpr const char* kValidationFailed = "Validation of input fields failed: ";

}  // namespace

/// A loading: until it has come to its end it has failed, exceptions included.
struct CPropPage::LoadingScope {
  explicit LoadingScope(Loading& loading) : state(loading) { state = Loading::kRunning; }
  ~LoadingScope() { state = outcome; }
  LoadingScope(const LoadingScope&) = delete;
  LoadingScope& operator=(const LoadingScope&) = delete;

  Loading& state;
  Loading outcome = Loading::kFailed;
};

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
  } else if (iid == IID_IPropertyTab) {
    *object = static_cast<IPropertyTab*>(this);
  } else if (iid == IID_IShellExtInit || iid == IID_IUnknown) {
    *object = static_cast<IShellExtInit*>(this);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

HRESULT CPropPage::Initialize(IDataObject* data_object) {
  return CADSBase::Initialize(data_object);
}

HRESULT CPropPage::InitPage() {
  loading_ = Loading::kFailed;
  BoundObjects objects;
  if (const HRESULT status = BindObjects(bind_interface_, objects); status != S_OK) {
    ShowError(status, "Unable to get connection with the ldap user.");
    return status;
  }
  return Load(objects);
}

HRESULT CPropPage::LoadAnew() {
  BoundObjects objects;
  if (const HRESULT status = BindObjects(bind_interface_, objects); status != S_OK) return status;
  loads_anew_ = true;
  return Load(objects);
}

HRESULT CPropPage::Load(const BoundObjects& objects) {
  LoadingScope scope(loading_);
  ShowForSelection(multi_select_hide_list_);
  const HRESULT status = LoadAll(objects);
  if (SUCCEEDED(status)) scope.outcome = Loading::kAtRest;
  return status;
}

bool CPropPage::Apply() {
  BoundObjects objects;
  if (!BindForApply(objects)) return false;
  if (has_failed_to_load()) {
    const HRESULT loaded = LoadAnew();
    if (edited_unloaded_) return RefuseUnloadedEdits(loaded);
    if (loaded != S_OK) return true;
  }
  if (!ValidateForApply()) return false;
  ChangeList changes;
  if (const HRESULT status = CollectAll(changes); FAILED(status)) {
    ShowError(status, "Unable to collect pelora attributes");
    return false;
  }
  SetModified(false);
  return SUCCEEDED(WriteAndCommit(objects, changes));
}

bool CPropPage::BindForApply(BoundObjects& objects) const {
  const HRESULT status = BindObjects(IID_IADs, objects);
  if (status != S_OK) ShowError(status, kNoConnection);
  return status == S_OK;
}

bool CPropPage::RefuseUnloadedEdits(HRESULT loaded) {
  if (loaded != S_OK) {
    ShowError(loaded, kNoConnection);
    return false;
  }
  edited_unloaded_ = false;
  SetModified(false);
  std::string message(kValidationFailed);
  message.append(
      "The settings could not be read before and are shown only now. Please enter your changes "
      "again");
  ShowError(E_FAIL, message);
  return false;
}

bool CPropPage::ValidateForApply() const {
  std::string message;
  const HRESULT status = ValidateAll(&message);
  if (FAILED(status)) ShowError(status, kValidationFailed + message);
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
