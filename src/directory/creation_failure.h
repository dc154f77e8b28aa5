// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "platform/hresult.h"

namespace pelora {

/// The box that tells of a failed creation: the status and text for `MakeErrorMessage`. A name that
/// is in use is the administrator's to change and shows no code.
struct CreationFailure {
  HRESULT status = S_OK;
  std::string message;
};
[[nodiscard]] CreationFailure DescribeCreationFailure(HRESULT status);

}  // namespace pelora
