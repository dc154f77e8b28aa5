// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/text/qt_text.h"

#include "directory/utf.h"
#include "hosts/resources/mnemonic.h"

namespace pelora::console {

QString ToQString(std::string_view text) {
  const std::u16string wide = ToUtf16(text);
  return QString::fromUtf16(wide.data(), static_cast<qsizetype>(wide.size()));
}

std::string ToUtf8(const QString& text) {
  return pelora::ToUtf8(
      {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())});
}

QString WithoutMnemonic(const QString& label) {
  return ToQString(resources::WithoutMnemonic(ToUtf8(label)));
}

QString AsPlainLabel(const QString& text) {
  return QString(text).replace(QLatin1String("&"), QLatin1String("&&"));
}

}  // namespace pelora::console
