// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_base.h"

#include <memory>
#include <utility>

#include "directory/creation_failure.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::uint32_t kOnlyPage = 0;
constexpr std::int32_t kAccepted = 0;
constexpr std::int32_t kLoaded = 0;
constexpr std::int32_t kNotLoaded = 1;

}  // namespace

/// A page as the wizard holds it: the first one that is destroyed is the release that ends the
/// object. What the dialogs of pages that are left over report is nobody's business.
class CWizardBase::Page final : public PropSheetPage, private IDialogController {
 public:
  Page(CWizardBase& owner, CDialogPage& dialog)
      : owner_(owner.self_),
        template_(dialog.dialog_template()),
        title_(dialog.title()),
        dialog_(dialog) {
    owner.AddRef();
  }
  ~Page() override {
    if (IsAlive()) (*owner_)->OnPageReleased();
  }
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;

  DialogId Template() const override { return template_; }
  std::string Title() const override { return title_; }
  IDialogController& Controller() override { return *this; }

 private:
  [[nodiscard]] bool IsAlive() const { return *owner_ != nullptr; }

  std::int32_t OnInitDialog(IDialog& dialog) override {
    return IsAlive() ? dialog_.OnInitDialog(dialog) : kNotLoaded;
  }
  std::int32_t OnCommand(ControlId id, ControlNotification notification) override {
    return IsAlive() ? dialog_.OnCommand(id, notification) : 0;
  }
  std::int32_t OnPageNotification(PageNotification notification) override {
    return IsAlive() ? dialog_.OnPageNotification(notification) : kAccepted;
  }
  void OnDestroy() override {
    if (IsAlive()) dialog_.OnDestroy();
  }

  std::shared_ptr<CWizardBase*> owner_;
  DialogId template_;
  std::string title_;
  CDialogPage& dialog_;
};

CWizardBase::CWizardBase(const Platform& platform, const Guid& object_interface,
                         std::vector<ControlId> enabled_controls)
    : CountedBy(0),
      CADSBase(platform),
      object_interface_(object_interface),
      enabled_controls_(std::move(enabled_controls)) {}

HRESULT CWizardBase::QueryInterface(const Guid& /*iid*/, void** object) {
  if (object != nullptr) *object = nullptr;
  return E_NOTIMPL;
}

HRESULT CWizardBase::Initialize(IADs* /*container*/, IADs* /*copy_source*/,
                                const std::string& /*class_name*/, IDsAdminNewObj* wizard,
                                const NewObjectDisplayInfo& display_info) {
  wizard_ = Ref<IDsAdminNewObj>(wizard);
  container_name_ = display_info.container_name;
  return S_OK;
}

HRESULT CWizardBase::SetObject(IADs* object) {
  CADSBase::SetObject(object);
  return S_OK;
}

HRESULT CWizardBase::OnError(IDialog* /*owner*/, HRESULT status, NewObjectPhase /*phase*/) {
  const CreationFailure failure = DescribeCreationFailure(status);
  ShowError(failure.status, failure.message);
  return S_OK;
}

bool CWizardBase::IsValid() const { return SUCCEEDED(ValidateAll(nullptr)); }

std::int32_t CWizardBase::InitPage() {
  Dialog().SetText(IDC_CONTAINER_NAME, container_name_);
  if (FAILED(LoadAll({}))) return kNotLoaded;
  // Whether the check box asks for anything is not looked at before the page is activated.
  SetButtons(IsValid());
  return kLoaded;
}

std::int32_t CWizardBase::Revalidate() const {
  SetButtons(IsValid());
  return 0;
}

std::int32_t CWizardBase::AnswerNotification(PageNotification notification) const {
  if (notification == PageNotification::kSetActive) Activate();
  // The page before is complete, or it would not have been left.
  if (notification == PageNotification::kWizardBack) SetButtons(true);
  return kAccepted;
}

void CWizardBase::SetButtons(bool valid) const {
  // A wizard that does not take it says so to nobody who could do anything about it.
  if (wizard_) (void)wizard_->SetButtons(kOnlyPage, valid);
}

void CWizardBase::EnableControls(bool enabled) const {
  for (const ControlId control : enabled_controls_) Dialog().SetEnabled(control, enabled);
}

HRESULT CWizardBase::OfferPage(CDialogPage& page, const AddPropSheetPage& add_page) {
  auto offered = std::make_unique<Page>(*this, page);
  is_offering_page_ = true;
  (void)add_page(std::move(offered));
  is_offering_page_ = false;
  return S_OK;
}

void CWizardBase::OnPageReleased() {
  if (!is_offering_page_) {
    delete this;
    return;
  }
  // The wizard has refused the page, and the object has never been on one.
  ForgetReference();
}

}  // namespace pelora
