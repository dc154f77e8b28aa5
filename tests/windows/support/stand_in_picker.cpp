// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/stand_in_picker.h"

#include <sstream>
#include <utility>

namespace pelora::windows::test {
namespace {

/// "null", or that there is something.
const char* Presence(const void* pointer) { return pointer == nullptr ? "null" : "something"; }

std::string Describe(const DSOP_INIT_INFO& init) {
  std::ostringstream text;
  text << "size " << init.cbSize << ", computer " << Presence(init.pwzTargetComputer) << std::hex
       << ", options 0x" << init.flOptions << std::dec << ", attributes " << init.cAttributesToFetch
       << ' ' << Presence(init.apwzAttributeNames) << ", scopes " << init.cDsScopeInfos;
  return text.str();
}

std::string Describe(const DSOP_SCOPE_INIT_INFO& scope) {
  std::ostringstream text;
  text << "size " << scope.cbSize << std::hex << ", type 0x" << scope.flType << ", flags 0x"
       << scope.flScope << ", both 0x" << scope.FilterFlags.Uplevel.flBothModes << ", mixed 0x"
       << scope.FilterFlags.Uplevel.flMixedModeOnly << ", native 0x"
       << scope.FilterFlags.Uplevel.flNativeModeOnly << ", down 0x" << scope.FilterFlags.flDownlevel
       << ", controller " << Presence(scope.pwzDcName) << ", path " << Presence(scope.pwzADsPath)
       << ", status 0x" << scope.hr;
  return text.str();
}

}  // namespace

StandInPicker::StandInPicker() : class_object_(CLSID_DsObjectPicker, *this) {}

void StandInPicker::Choose(PickedObjects& picked, HRESULT status) {
  picked_ = &picked;
  answer_ = status;
}

STDMETHODIMP StandInPicker::QueryInterface(REFIID iid, void** object) {
  const bool offered = IsEqualIID(iid, ::IID_IUnknown) || IsEqualIID(iid, ::IID_IDsObjectPicker);
  *object = offered ? this : nullptr;
  if (!offered) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP StandInPicker::Initialize(DSOP_INIT_INFO* init) {
  log_.push_back("Initialize " + Describe(*init));
  for (ULONG scope = 0; scope < init->cDsScopeInfos; ++scope) {
    log_.push_back("scope " + Describe(init->aDsScopeInfos[scope]));
  }
  return initialized_;
}

STDMETHODIMP StandInPicker::InvokeDialog(HWND owner, ::IDataObject** chosen) {
  log_.emplace_back("InvokeDialog");
  owner_ = owner;
  if (const auto action = std::exchange(while_open_, nullptr)) action();
  const HRESULT answer = std::exchange(answer_, S_FALSE);
  // Cancelled, a picker may leave what it was given as it was.
  PickedObjects* const picked = std::exchange(picked_, nullptr);
  if (picked == nullptr) return answer;
  picked->AddRef();
  *chosen = picked;
  return answer;
}

}  // namespace pelora::windows::test
