// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>

#include "pages/dialog_page.h"
#include "wizards/wizard_base.h"

namespace pelora {

/// What tells one wizard page from another. Lists and identifiers outlive the pages.
struct WizardPageTraits {
  DialogId dialog_template = 0;
  const char* title = "";
  const Guid& object_interface = IID_IADs;
  std::span<const ControlId> enabled_controls{};
};

/// A wizard page with its dialog: joins the steps of `Wizard` (`CWizardExtension` or
/// `CWizardCreate`) to what the dialog and the wizard's window report.
template <class Wizard>
class CWizardPage : public Wizard, public CDialogPage {
 public:
  [[nodiscard]] IDialog* OwnerWindow() const final { return dialog(); }
  HRESULT AddPages(const AddPropSheetPage& add_page) final {
    return this->OfferPage(*this, add_page);
  }

 protected:
  CWizardPage(const Platform& platform, const WizardPageTraits& traits)
      : Wizard(platform, traits.object_interface, traits.enabled_controls),
        CDialogPage(traits.dialog_template, traits.title) {}
  ~CWizardPage() override = default;

  std::int32_t InitDialog() final { return this->InitPage(); }
  std::int32_t AnswerPage(PageNotification notification) final {
    return this->AnswerNotification(notification);
  }
  void ReportException(HRESULT status) final { this->ShowError(status, ""); }
};

}  // namespace pelora
