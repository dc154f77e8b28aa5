// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include "hosts/console/reading/directory_questions.h"
#include "hosts/session/directory_browser.h"
#include "platform/field_rows.h"
#include "platform/modal_dialogs.h"

namespace pelora::console {

/// The modal dialogs of a sheet, of which those in which an e-mail address is typed say, in a line
/// of their own, what is wrong with it and whose it is already; what is wrong holds their OK. Those
/// in which names of servers are typed say when there is no such server.
class CheckedDialogs final : public IModalDialogs {
 public:
  /// `inner` makes the dialogs, and outlives the object.
  explicit CheckedDialogs(IModalDialogs& inner) : inner_(inner) {}

  [[nodiscard]] std::int32_t Run(DialogId dialog, IDialog* owner,
                                 IDialogController& controller) override;

  /// The field whose texts are typed in a dialog; null when it is none's. May be none.
  std::function<const FieldRow*(DialogId dialog)> field_of;
  /// Where it is asked who has an address; null: nowhere.
  DirectoryQuestions* questions = nullptr;
  /// Names of the objects whose own addresses are not somebody else's.
  std::vector<std::string> own;
  /// Shows whose the address is, over the dialog. May be none.
  std::function<void(const session::DirectoryObject& object, QWidget& from)> show_object;

 private:
  IModalDialogs& inner_;
};

}  // namespace pelora::console
