// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/finding/missing_text.h"

#include <QStringList>

#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

/// So many items of a pasted list are named that were not found.
constexpr std::size_t kMostNamed = 3;

}  // namespace

QString MissingText(const session::ListingEnd& ending) {
  QString text;
  const std::vector<std::string>& missing = ending.not_found;
  if (!missing.empty()) {
    QStringList names;
    for (const std::string& name : missing) {
      if (static_cast<std::size_t>(names.size()) < kMostNamed) names.append(ToQString(name));
    }
    text = QStringLiteral(", %1 not found: %2")
               .arg(missing.size())
               .arg(names.join(QLatin1String(", ")));
    if (missing.size() > kMostNamed) text += QStringLiteral(", ...");
  }
  if (ending.left_out > 0) {
    text += QStringLiteral(", %1 not looked for").arg(ending.left_out);
  }
  return Readable(text);
}

}  // namespace pelora::console
