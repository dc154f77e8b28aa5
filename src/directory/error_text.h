// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "platform/message_box.h"
#include "platform/unknown.h"

namespace pelora {

/// A status as it is shown: in hexadecimal, "0X80070005".
[[nodiscard]] std::string CodeText(HRESULT status);

/// The error box of a status and a message: caption "Pelora Error", the message ("Unknown error
/// occured" when there is none) and, unless the status is 0, a blank line and the status in
/// hexadecimal. A failure gets the error icon, anything else the warning icon.
[[nodiscard]] Message MakeErrorMessage(HRESULT status, std::string_view message);

}  // namespace pelora
