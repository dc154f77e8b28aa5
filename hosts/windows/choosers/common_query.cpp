// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/choosers/common_query.h"

#include <utility>

#include "hosts/windows/choosers/activate.h"
#include "hosts/windows/choosers/owner_window.h"
#include "hosts/windows/guarded.h"
#include "hosts/windows/selection_data_object.h"
#include "hosts/windows/values/system_guid.h"

namespace pelora::windows {
namespace {

static_assert(sizeof(OPENQUERYWINDOW) == 64 && sizeof(DSQUERYINITPARAMS) == 48);

constexpr CLSID kCommonQueryClass = {
    0x83BC5EC0, 0x6F2A, 0x11D0, {0xA1, 0xC4, 0x00, 0xAA, 0x00, 0xC1, 0x6E, 0x65}};
constexpr IID kCommonQueryInterface = {
    0xAB50DEC0, 0x6F1D, 0x11D0, {0xA1, 0xC4, 0x00, 0xAA, 0x00, 0xC1, 0x6E, 0x65}};

}  // namespace

HRESULT CommonQuery::Create(std::unique_ptr<pelora::ICommonQuery>& chooser) {
  chooser.reset();
  return Guarded([&] {
    Ref<::ICommonQuery> query;
    const HRESULT status = Activate(kCommonQueryClass, kCommonQueryInterface, query);
    if (SUCCEEDED(status)) chooser = std::make_unique<CommonQuery>(std::move(query));
    return status;
  });
}

HRESULT CommonQuery::OpenQueryWindow(ChooserOwner owner, const QueryWindowInit& init,
                                     Ref<pelora::IDataObject>& chosen) {
  chosen.Reset();
  DSQUERYINITPARAMS handler = {};
  handler.cbStruct = sizeof(handler);
  handler.dwFlags = init.handler_flags;
  OPENQUERYWINDOW window = {};
  window.cbStruct = sizeof(window);
  window.dwFlags = init.window_flags;
  window.clsidHandler = ToSystem(init.handler);
  window.pHandlerParameters = &handler;
  window.clsidDefaultForm = ToSystem(init.default_form);
  return Guarded([&] {
    Ref<::IDataObject> found;
    const HRESULT status = query_->OpenQueryWindow(WindowOf(owner), &window, found.Put());
    if (FAILED(status)) return status;
    if (!found) return S_FALSE;
    chosen = Ref<pelora::IDataObject>::Adopt(new SelectionDataObject(std::move(found)));
    return status;
  });
}

}  // namespace pelora::windows
