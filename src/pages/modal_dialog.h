// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pages/dialog_page.h"
#include "platform/missing_dialog.h"
#include "platform/platform.h"

namespace pelora {

/// A small modal dialog that a page opens: made for one run, it holds what the administrator
/// enters. A concrete dialog fills its controls, and routes its buttons to handlers that end it.
class CModalDialog : public CDialogPage {
 public:
  /// `platform` outlives the dialog.
  CModalDialog(const Platform& platform, DialogId dialog_template);

  /// Runs the dialog, modal to `owner` (none: the active window), and gives the result that it
  /// ended with: `kDialogOk`, `kDialogCancel`, or -1 when it could not be made.
  [[nodiscard]] std::int32_t Show(IDialog* owner);

 protected:
  [[nodiscard]] const Platform& platform() const { return platform_; }
  /// The dialog's controls; as `CADSBase::Dialog`.
  [[nodiscard]] IDialog& Dialog() const;
  /// No sheet holds the dialog: there is nothing to answer.
  std::int32_t AnswerPage(PageNotification notification) final;
  void ReportException(HRESULT status) final;

 private:
  const Platform& platform_;
  /// It holds nothing that could change.
  mutable MissingDialog missing_dialog_;
};

}  // namespace pelora
