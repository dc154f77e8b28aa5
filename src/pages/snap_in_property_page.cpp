// SPDX-License-Identifier: Apache-2.0
#include "pages/snap_in_property_page.h"

#include <memory>
#include <utility>

namespace pelora {
namespace {

class ComponentPage final : public PropSheetPage {
 public:
  explicit ComponentPage(CSnapInPropertyPage* component) : component_(component) {}

  DialogId Template() const override { return component_->dialog_template(); }
  std::string Title() const override { return component_->title(); }
  IDialogController& Controller() override { return *component_; }

 private:
  Ref<CSnapInPropertyPage> component_;
};

}  // namespace

CSnapInPropertyPage::CSnapInPropertyPage(const Platform& platform, const Guid& bind_interface,
                                         std::span<const ControlId> multi_select_hide_list,
                                         DialogId dialog_template, std::string title)
    : CPropPage(platform, bind_interface, multi_select_hide_list),
      CDialogPage(dialog_template, std::move(title)) {}

void CSnapInPropertyPage::SetModified(bool modified) {
  if (is_loading() || dialog() == nullptr) return;
  if (modified) NoteEdit();
  dialog()->SetPageModified(modified);
}

HRESULT CSnapInPropertyPage::AddPages(const AddPropSheetPage& add_page) {
  add_page(std::make_unique<ComponentPage>(this));
  return S_OK;
}

std::int32_t CSnapInPropertyPage::InitDialog() { return InitPage(); }

std::int32_t CSnapInPropertyPage::AnswerPage(PageNotification notification) {
  if (notification != PageNotification::kApply) return 0;
  if (dialog() == nullptr) {
    // What the controls held has gone with them, and is not to be written as if they were empty.
    ReportException(E_UNEXPECTED);
    return kPageInvalidStay;
  }
  return Apply() ? kPageApplied : kPageInvalidStay;
}

void CSnapInPropertyPage::ReportException(HRESULT status) { ShowError(status, ""); }

}  // namespace pelora
