// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "hosts/console/fields/page_care.h"
#include "hosts/resources/dialog_template.h"
#include "hosts/session/page_fields.h"
#include "hosts/sheets/forwarding_controller.h"
#include "platform/field_rows.h"

namespace pelora::console {

/// An extension's page of a wizard whose fields are judged while they are edited. Stands between
/// the page's dialog and its controller.
class WatchedWizardPage final : public sheets::ForwardingController {
 public:
  /// `page` outlives the object.
  explicit WatchedWizardPage(IDialogController& page) : ForwardingController(page) {}

  /// What the page's fields are, before its dialog is opened; `page` is its template.
  void Learn(std::vector<FieldRow> rows, const resources::DialogTemplate& page);
  [[nodiscard]] const std::vector<FieldRow>& rows() const { return rows_; }

  /// The fields as they stand; null while there is no dialog.
  [[nodiscard]] PageCare* care() const { return care_.get(); }
  /// Whether one of the fields cannot be written. A page whose box is not checked writes none.
  [[nodiscard]] bool IsWrong() const;
  /// Puts into the fields what is meant by what was typed.
  void PutWhatIsMeant();

  /// Told when something may have been edited. May be none.
  std::function<void()> on_edited;

  std::int32_t OnInitDialog(IDialog& dialog) override;
  std::int32_t OnCommand(ControlId id, ControlNotification notification) override;
  void OnDestroy() override;

 private:
  void Look();

  std::vector<FieldRow> rows_;
  session::PageFields fields_;
  std::unique_ptr<PageCare> care_;
};

}  // namespace pelora::console
