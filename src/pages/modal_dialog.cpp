// SPDX-License-Identifier: Apache-2.0
#include "pages/modal_dialog.h"

#include "directory/error_text.h"

namespace pelora {

CModalDialog::CModalDialog(const Platform& platform, DialogId dialog_template)
    : CDialogPage(dialog_template, ""), platform_(platform) {}

std::int32_t CModalDialog::Show(IDialog* owner) {
  return platform_.modal_dialogs.Run(dialog_template(), owner, *this);
}

IDialog& CModalDialog::Dialog() const { return dialog() != nullptr ? *dialog() : missing_dialog_; }

std::int32_t CModalDialog::AnswerPage(PageNotification /*notification*/) { return 0; }

void CModalDialog::ReportException(HRESULT status) {
  platform_.message_box.Show(dialog(), MakeErrorMessage(status, ""));
}

}  // namespace pelora
