// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/com/wizard_shell.h"

#include <utility>

#include "hosts/windows/adsi/ads_object.h"
#include "hosts/windows/com/new_object_wizard_port.h"
#include "hosts/windows/values/bstr.h"
#include "hosts/windows/values/wide_text.h"
#include "server/component_server.h"

namespace pelora::windows {

/// The wizard's page, whose release is told to the shell.
class WizardShell::Page final : public PropSheetPage {
 public:
  Page(WizardShell& shell, std::unique_ptr<PropSheetPage> page)
      : shell_(shell), page_(std::move(page)) {}
  ~Page() override {
    page_.reset();
    shell_.OnPageReleased();
  }
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;

  DialogId Template() const override { return page_->Template(); }
  std::string Title() const override { return page_->Title(); }
  IDialogController& Controller() override { return page_->Controller(); }

 private:
  WizardShell& shell_;
  std::unique_ptr<PropSheetPage> page_;
};

HRESULT WizardShell::CreateInstance(const ModuleContext& context,
                                    const ComponentClass& component_class, REFIID iid,
                                    void** object) {
  Ref<pelora::IDsAdminNewObjExt> wizard;
  const HRESULT status =
      CreateComponent(component_class.class_id, context.platform, pelora::IID_IDsAdminNewObjExt,
                      reinterpret_cast<void**>(wizard.Put()));
  if (FAILED(status)) return status;
  return CreateComObject<WizardShell>(iid, object, context, component_class, std::move(wizard));
}

WizardShell::WizardShell(const ModuleContext& context, const ComponentClass& component_class,
                         Ref<pelora::IDsAdminNewObjExt> wizard)
    : CComObjectRootEx(context), CComCoClass(component_class), wizard_(std::move(wizard)) {}

STDMETHODIMP WizardShell::Initialize(::IADsContainer* /*container*/, ::IADs* /*copy_source*/,
                                     LPCWSTR /*class_name*/, ::IDsAdminNewObj* wizard,
                                     LPDSA_NEWOBJ_DISPINFO display_info) {
  if (!wizard_) return E_UNEXPECTED;
  return Guarded([&] {
    NewObjectDisplayInfo info;
    if (display_info != nullptr && display_info->lpszContDisplayName != nullptr) {
      info.container_name = ToNarrow(display_info->lpszContDisplayName);
    }
    Ref<pelora::IDsAdminNewObj> port;
    if (wizard != nullptr) {
      port = Ref<pelora::IDsAdminNewObj>::Adopt(
          new NewObjectWizardPort(Ref<::IDsAdminNewObj>(wizard)));
    }
    return wizard_->Initialize(nullptr, nullptr, {}, port.Get(), info);
  });
}

STDMETHODIMP WizardShell::AddPages(LPFNADDPROPSHEETPAGE add, LPARAM parameter) {
  if (!wizard_) return E_UNEXPECTED;
  // The page takes the shell's own hold on the wizard along when it goes: see `OnPageReleased`.
  struct Extension {
    WizardShell& shell;
    HRESULT AddPages(const AddPropSheetPage& add_page) {
      return shell.wizard_->AddPages([&](std::unique_ptr<PropSheetPage> page) {
        return add_page(std::make_unique<Page>(shell, std::move(page)));
      });
    }
  } extension{*this};
  is_adding_page_ = true;
  const HRESULT status = AddPagesOf(extension, add, parameter);
  is_adding_page_ = false;
  return status;
}

void WizardShell::OnPageReleased() {
  // A page that was refused has not taken the wizard with it.
  if (is_adding_page_) return;
  (void)wizard_.Detach();
  // One reference is that of the page under release.
  if (references() > 1) code_ = HoldThisCode();
  GiveUpModuleLock();
}

STDMETHODIMP WizardShell::SetObject(::IADs* object) {
  if (!wizard_) return E_UNEXPECTED;
  return Guarded([&] {
    if (object == nullptr) return wizard_->SetObject(nullptr);
    const auto port = Ref<pelora::IADs>::Adopt(new AdsObject(Ref<::IADs>(object)));
    return wizard_->SetObject(port.Get());
  });
}

STDMETHODIMP WizardShell::WriteData(HWND /*window*/, ULONG phase) {
  if (!wizard_) return E_UNEXPECTED;
  return Guarded([&] { return wizard_->WriteData(nullptr, static_cast<NewObjectPhase>(phase)); });
}

STDMETHODIMP WizardShell::OnError(HWND /*window*/, HRESULT status, ULONG phase) {
  if (!wizard_) return E_UNEXPECTED;
  return Guarded(
      [&] { return wizard_->OnError(nullptr, status, static_cast<NewObjectPhase>(phase)); });
}

STDMETHODIMP WizardShell::GetSummaryInfo(BSTR* text) {
  if (text == nullptr) return E_POINTER;
  *text = nullptr;
  if (!wizard_) return E_UNEXPECTED;
  return Guarded([&] {
    std::string summary;
    const HRESULT status = wizard_->GetSummaryInfo(summary);
    if (SUCCEEDED(status)) *text = MakeBstr(summary).Detach();
    return status;
  });
}

}  // namespace pelora::windows
