// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/com/property_page_shell.h"

#include <utility>

#include "hosts/windows/selection_data_object.h"
#include "server/component_server.h"

namespace pelora::windows {

HRESULT PropertyPageShell::CreateInstance(const ModuleContext& context,
                                          const ComponentClass& component_class, REFIID iid,
                                          void** object) {
  Ref<pelora::IShellExtInit> init;
  const HRESULT status =
      CreateComponent(component_class.class_id, context.platform, pelora::IID_IShellExtInit,
                      reinterpret_cast<void**>(init.Put()));
  if (FAILED(status)) return status;
  auto pages = Query<pelora::IShellPropSheetExt>(*init);
  if (!pages) return E_NOINTERFACE;
  return CreateComObject<PropertyPageShell>(iid, object, context, component_class, std::move(init),
                                            std::move(pages));
}

PropertyPageShell::PropertyPageShell(const ModuleContext& context,
                                     const ComponentClass& component_class,
                                     Ref<pelora::IShellExtInit> init,
                                     Ref<pelora::IShellPropSheetExt> pages)
    : CComObjectRootEx(context),
      CComCoClass(component_class),
      init_(std::move(init)),
      pages_(std::move(pages)) {}

STDMETHODIMP PropertyPageShell::Initialize(LPCITEMIDLIST /*folder*/, ::IDataObject* data_object,
                                           HKEY /*key*/) {
  return Guarded([&] {
    if (data_object == nullptr) return init_->Initialize(nullptr);
    const auto selection =
        Ref<pelora::IDataObject>::Adopt(new SelectionDataObject(Ref<::IDataObject>(data_object)));
    return init_->Initialize(selection.Get());
  });
}

void STDMETHODCALLTYPE PropertyPageShell::SetModified(BOOL modified) {
  (void)Guarded([&] {
    if (const auto tab = Query<IPropertyTab>(*init_)) tab->SetModified(modified != FALSE);
    return S_OK;
  });
}

STDMETHODIMP PropertyPageShell::AddPages(LPFNADDPROPSHEETPAGE add, LPARAM parameter) {
  return AddPagesOf(*pages_, add, parameter);
}

STDMETHODIMP PropertyPageShell::ReplacePage(EXPPS /*page*/, LPFNADDPROPSHEETPAGE /*replace*/,
                                            LPARAM /*parameter*/) {
  return E_NOTIMPL;
}

}  // namespace pelora::windows
