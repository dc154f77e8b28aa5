// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <vector>

#include "pages/dialog_page.h"
#include "wizards/wizard_base.h"
#include "wizards/wizard_fields.h"

namespace pelora {

/// What tells one wizard page from another. Lists and identifiers outlive the pages.
struct WizardPageTraits {
  DialogId dialog_template = 0;
  const char* title = "";
  const Guid& object_interface = IID_IADs;
  /// Controls that are enabled before those of the fields.
  std::span<const ControlId> enabled_controls{};
  std::span<const WizardField> fields{};
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
  [[nodiscard]] std::vector<FieldRow> Fields() const final { return Rows(); }

 protected:
  /// Routes the page's check box or name. The fields are the concrete class's to add, among what
  /// else it has.
  CWizardPage(const Platform& platform, const WizardPageTraits& traits)
      : Wizard(platform, traits.object_interface,
               EnabledControls(traits.enabled_controls, traits.fields)),
        CDialogPage(traits.dialog_template, traits.title),
        fields_(*this, traits.fields) {
    Route(this->OwnCommands());
    RegisterRows([] { return Wizard::OwnRows(); });
  }
  ~CWizardPage() override = default;

  /// Takes the fields of a group, a member of the page, into it (see `AddGroup`).
  template <FieldGroup Group>
  void Add(Group& group) {
    AddGroup(*this, group);
  }
  /// Those of the traits.
  [[nodiscard]] WizardFields& fields() { return fields_; }

  std::int32_t InitDialog() final { return this->InitPage(); }
  std::int32_t AnswerPage(PageNotification notification) final {
    return this->AnswerNotification(notification);
  }
  void ReportException(HRESULT status) final { this->ShowError(status, ""); }

 private:
  WizardFields fields_;
};

/// A wizard page that is its traits and nothing else.
template <class Wizard, const WizardPageTraits& kTraits>
class CWizardFieldPage : public CWizardPage<Wizard> {
 public:
  explicit CWizardFieldPage(const Platform& platform) : CWizardPage<Wizard>(platform, kTraits) {
    this->Add(this->fields());
  }

 protected:
  ~CWizardFieldPage() override = default;
};

}  // namespace pelora
