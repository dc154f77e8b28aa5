// SPDX-License-Identifier: Apache-2.0
#include "directory/ads_base.h"

#include <memory>
#include <optional>
#include <utility>

#include "directory/attribute_writer.h"
#include "directory/ds_object_names.h"
#include "directory/error_text.h"

namespace pelora {

CADSBase::CADSBase(const Platform& platform)
    : platform_(platform), library_thread_(platform.component_library.CoInitialize()) {}

CADSBase::~CADSBase() {
  preset_object_.Reset();
  paths_.clear();
  platform_.component_library.CoUninitialize(library_thread_);
}

IDialog& CADSBase::Dialog() const {
  IDialog* const dialog = OwnerWindow();
  return dialog != nullptr ? *dialog : missing_dialog_;
}

HRESULT CADSBase::Initialize(IDataObject* data_object) {
  if (data_object == nullptr) return E_INVALIDARG;
  std::unique_ptr<IStorageMedium> medium;
  const HRESULT rendered = data_object->GetData({.format = kDsObjectNamesFormat}, medium);
  if (FAILED(rendered)) return rendered;
  if (medium == nullptr) return E_UNEXPECTED;
  preset_object_.Reset();
  paths_.clear();

  // The block belongs to the console: it is read where it lies and not released.
  const HRESULT read = ReadDsObjectNames(medium->Lock(), paths_);
  medium->Unlock();
  if (FAILED(read)) return read;

  Ref<IADs> root;
  return platform_.directory.ADsOpenObject("LDAP://rootDSE", std::nullopt, std::nullopt,
                                           ADS_SECURE_AUTHENTICATION, IID_IADs, root);
}

void CADSBase::SetObject(IADs* object) { preset_object_ = Ref<IADs>(object); }

HRESULT CADSBase::BindObjects(const Guid& iid, BoundObjects& objects) const {
  objects.clear();
  if (!preset_object_) return platform_.directory.BindPaths(paths_, iid, objects);
  void* found = nullptr;
  const HRESULT status = preset_object_->QueryInterface(iid, &found);
  // What comes with any other success counts as not had, and is let go.
  auto object = Ref<IADs>::Adopt(static_cast<IADs*>(found));
  if (status == S_OK) objects.push_back(std::move(object));
  return status;
}

void CADSBase::ReleaseObjects(BoundObjects& objects) { objects.clear(); }

bool CADSBase::IsMultiSelect() const { return !preset_object_ && paths_.size() >= 2; }

bool CADSBase::IsFieldEmpty(const IDialog& dialog, ControlId edit) {
  return dialog.Text(edit).empty();
}

void CADSBase::ShowError(HRESULT status, std::string_view message) const {
  platform_.message_box.Show(OwnerWindow(), MakeErrorMessage(status, message));
}

HRESULT CADSBase::WriteAttributes(IADs& object, ChangeList& changes, bool clear_empty) const {
  for (AttributeChange& change : changes) {
    const HRESULT status = WriteAttribute(object, change, clear_empty);
    if (SUCCEEDED(status) && status != S_ADS_ERRORSOCCURRED) continue;
    ShowError(status, "Failed on field '" + change.name);
    return status;
  }
  return S_OK;
}

void CADSBase::RegisterLoad(LoadHandler handler) { load_handlers_.push_back(std::move(handler)); }

void CADSBase::RegisterCollect(CollectHandler handler) {
  collect_handlers_.push_back(std::move(handler));
}

void CADSBase::RegisterSkipValidation(SkipValidationHandler handler) {
  skip_validation_handlers_.push_back(std::move(handler));
}

void CADSBase::RegisterValidate(ValidateHandler handler) {
  validate_handlers_.push_back(std::move(handler));
}

HRESULT CADSBase::LoadAll(const BoundObjects& objects) const {
  for (const LoadHandler& load : load_handlers_) {
    if (const HRESULT status = load(objects); FAILED(status)) return status;
  }
  return S_OK;
}

HRESULT CADSBase::CollectAll(ChangeList& changes) const {
  for (const CollectHandler& collect : collect_handlers_) {
    if (const HRESULT status = collect(changes); FAILED(status)) return status;
  }
  return S_OK;
}

HRESULT CADSBase::ValidateAll(std::string* message) const {
  for (const SkipValidationHandler& skip : skip_validation_handlers_) {
    if (skip() == kSkipValidation) return S_OK;
  }
  for (const ValidateHandler& validate : validate_handlers_) {
    if (const HRESULT status = validate(message); FAILED(status)) return status;
  }
  return S_OK;
}

}  // namespace pelora
