// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/stand_in_query.h"

#include <sstream>
#include <utility>

#include "hosts/windows/values/system_guid.h"
#include "server/guid_text.h"

namespace pelora::windows::test {
namespace {

constexpr CLSID kClass = {
    0x83BC5EC0, 0x6F2A, 0x11D0, {0xA1, 0xC4, 0x00, 0xAA, 0x00, 0xC1, 0x6E, 0x65}};
constexpr IID kInterface = {
    0xAB50DEC0, 0x6F1D, 0x11D0, {0xA1, 0xC4, 0x00, 0xAA, 0x00, 0xC1, 0x6E, 0x65}};

const char* Presence(const void* pointer) { return pointer == nullptr ? "null" : "something"; }

std::string Describe(const OPENQUERYWINDOW& window) {
  std::ostringstream text;
  text << "window size " << window.cbStruct << std::hex << ", flags 0x" << window.dwFlags
       << ", handler " << GuidText(FromSystem(window.clsidHandler)) << ", form "
       << GuidText(FromSystem(window.clsidDefaultForm)) << ", stored query "
       << Presence(window.pPersistQuery) << ", form parameters "
       << Presence(window.pFormParameters);
  return text.str();
}

std::string Describe(const DSQUERYINITPARAMS& handler) {
  std::ostringstream text;
  text << "handler size " << handler.cbStruct << std::hex << ", flags 0x" << handler.dwFlags
       << ", scope " << Presence(handler.pDefaultScope) << ", save location "
       << Presence(handler.pDefaultSaveLocation) << ", user " << Presence(handler.pUserName)
       << ", password " << Presence(handler.pPassword) << ", server " << Presence(handler.pServer);
  return text.str();
}

}  // namespace

StandInQuery::StandInQuery() : class_object_(kClass, *this) {}

void StandInQuery::Find(Selection& found, HRESULT status) {
  found_ = &found;
  answer_ = status;
}

STDMETHODIMP StandInQuery::QueryInterface(REFIID iid, void** object) {
  const bool offered = IsEqualIID(iid, ::IID_IUnknown) || IsEqualIID(iid, kInterface);
  *object = offered ? this : nullptr;
  if (!offered) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP StandInQuery::OpenQueryWindow(HWND owner, OPENQUERYWINDOW* window,
                                           ::IDataObject** found) {
  log_.push_back(Describe(*window));
  log_.push_back(Describe(*static_cast<const DSQUERYINITPARAMS*>(window->pHandlerParameters)));
  owner_ = owner;
  const HRESULT answer = std::exchange(answer_, S_FALSE);
  Selection* const handed_out = std::exchange(found_, nullptr);
  if (handed_out == nullptr) return answer;
  handed_out->AddRef();
  *found = handed_out;
  return answer;
}

}  // namespace pelora::windows::test
