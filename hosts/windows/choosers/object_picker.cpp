// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/choosers/object_picker.h"

#include <utility>

#include "hosts/windows/choosers/activate.h"
#include "hosts/windows/choosers/gathered_selection.h"
#include "hosts/windows/choosers/owner_window.h"
#include "hosts/windows/guarded.h"

namespace pelora::windows {
namespace {

static_assert(sizeof(DSOP_INIT_INFO) == 48 && sizeof(DSOP_SCOPE_INIT_INFO) == 56);

DSOP_SCOPE_INIT_INFO ToSystem(const ObjectPickerScope& scope) {
  DSOP_SCOPE_INIT_INFO record = {};
  record.cbSize = sizeof(record);
  record.flType = scope.types;
  record.flScope = scope.flags;
  record.FilterFlags.Uplevel.flBothModes = scope.up_level_both_modes;
  record.FilterFlags.Uplevel.flMixedModeOnly = scope.up_level_mixed_mode;
  record.FilterFlags.Uplevel.flNativeModeOnly = scope.up_level_native_mode;
  record.FilterFlags.flDownlevel = scope.down_level;
  return record;
}

}  // namespace

HRESULT ObjectPicker::Create(std::unique_ptr<pelora::IDsObjectPicker>& chooser) {
  chooser.reset();
  return Guarded([&] {
    Ref<::IDsObjectPicker> picker;
    const HRESULT status = Activate(CLSID_DsObjectPicker, ::IID_IDsObjectPicker, picker);
    if (SUCCEEDED(status)) chooser = std::make_unique<ObjectPicker>(std::move(picker));
    return status;
  });
}

HRESULT ObjectPicker::Initialize(const ObjectPickerInit& init) {
  DSOP_SCOPE_INIT_INFO scope = ToSystem(init.scope);
  DSOP_INIT_INFO record = {};
  record.cbSize = sizeof(record);
  record.cDsScopeInfos = 1;
  record.aDsScopeInfos = &scope;
  record.flOptions = init.options;
  // The picker copies what it is given.
  return picker_->Initialize(&record);
}

HRESULT ObjectPicker::InvokeDialog(ChooserOwner owner, Ref<pelora::IDataObject>& chosen) {
  chosen.Reset();
  return Guarded([&] {
    Ref<::IDataObject> picked;
    const HRESULT status = picker_->InvokeDialog(WindowOf(owner), picked.Put());
    if (FAILED(status)) return status;
    if (!picked) return S_FALSE;
    chosen = Ref<pelora::IDataObject>::Adopt(new GatheredSelection(std::move(picked)));
    return status;
  });
}

}  // namespace pelora::windows
