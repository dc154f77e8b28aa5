// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/text_service.h"

#include "hosts/console/qt_text.h"

namespace pelora::console {

std::string QtTextService::UpperCase(std::string_view text) const {
  return ToUtf8(ToQString(text).toUpper());
}

}  // namespace pelora::console
