// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCollator>
#include <QLocale>
#include <QString>

namespace pelora::console {

/// The order in which the console sorts texts: that of the user's language, without regard to case.
/// Where no language is set it is that of English, in which "Ł" stands by "L" and not behind "Z".
class Collation {
 public:
  Collation() : collator_(Language()) { collator_.setCaseSensitivity(Qt::CaseInsensitive); }

  [[nodiscard]] bool IsBefore(const QString& left, const QString& right) const {
    return collator_.compare(left, right) < 0;
  }

 private:
  static QLocale Language() {
    const QLocale system;
    return system.language() == QLocale::C ? QLocale(QLocale::English) : system;
  }

  QCollator collator_;
};

}  // namespace pelora::console
