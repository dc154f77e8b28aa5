// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/text/text_service.h"

#include "hosts/console/text/qt_text.h"

namespace pelora::console {

// Letter by letter: as a whole, a text would get two capitals for a letter that has none.
std::string QtTextService::UpperCase(std::string_view text) const {
  QString upper = ToQString(text);
  for (qsizetype at = 0; at < upper.size(); ++at) {
    const bool is_pair =
        upper[at].isHighSurrogate() && at + 1 < upper.size() && upper[at + 1].isLowSurrogate();
    if (!is_pair) {
      upper[at] = upper[at].toUpper();
      continue;
    }
    // A capital lies in the same plane as its letter.
    const char32_t capital = QChar::toUpper(QChar::surrogateToUcs4(upper[at], upper[at + 1]));
    upper[at] = QChar(QChar::highSurrogate(capital));
    upper[++at] = QChar(QChar::lowSurrogate(capital));
  }
  return ToUtf8(upper);
}

}  // namespace pelora::console
