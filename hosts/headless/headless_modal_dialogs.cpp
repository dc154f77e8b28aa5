// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_modal_dialogs.h"

#include <utility>

namespace pelora {

std::int32_t HeadlessModalDialogs::Run(DialogId dialog, IDialog* owner,
                                       IDialogController& controller) {
  constexpr std::int32_t kNotMade = -1;
  const auto described = templates_.Dialog(dialog);
  if (!described.value) {
    records_.push_back({dialog, owner, kNotMade, false});
    return kNotMade;
  }
  HeadlessDialog window(*described.value, controller, HeadlessDialog::Role::kModal);
  window.Open();
  const bool played = !window.Result() && Play(window);
  window.Close();
  // A dialog that does not even end on its close box ends as if it had.
  const std::int32_t result = window.Result().value_or(kDialogCancel);
  records_.push_back({dialog, owner, result, played});
  return result;
}

bool HeadlessModalDialogs::Play(HeadlessDialog& dialog) {
  HeadlessUser user(dialog);
  const bool scripted = !scripts_.empty();
  if (scripted) {
    const Script script = std::move(scripts_.front());
    scripts_.pop_front();
    script(user);
  }
  if (!dialog.Result()) user.CloseWindow();
  return scripted;
}

}  // namespace pelora
