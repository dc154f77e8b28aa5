// SPDX-License-Identifier: Apache-2.0
#include "directory/creation_failure.h"

namespace pelora {

CreationFailure DescribeCreationFailure(HRESULT status) {
  if (status != kObjectAlreadyExists) return {.status = status, .message = {}};
  return {.status = S_OK,
          .message =
              "The new object cannot be created because the name is already in use.\r\n"
              "Please select a different name and try again."};
}

}  // namespace pelora
