// SPDX-License-Identifier: Apache-2.0
#include "tests/support/variant_text.h"

#include <iomanip>
#include <ostream>
#include <sstream>

namespace pelora {

std::string ToText(const Variant& value) {
  switch (value.type()) {
    case VT_EMPTY:
      return "nothing";
    case VT_I4:
      return std::to_string(value.integer());
    case VT_BSTR:
      return '"' + value.string() + '"';
    case kVariantArray: {
      std::string text = "[";
      for (const Variant& element : value.array()) {
        if (text.size() > 1) text += ", ";
        text += ToText(element);
      }
      return text + ']';
    }
    default: {
      std::ostringstream text;
      text << "type 0x" << std::hex << std::uppercase << std::setw(4) << std::setfill('0')
           << value.type();
      return text.str();
    }
  }
}

void PrintTo(const Variant& value, std::ostream* out) { *out << ToText(value); }

}  // namespace pelora
