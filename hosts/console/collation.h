// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCollator>
#include <QString>

namespace pelora::console {

/// The order in which the console sorts texts: that of the user's language, without regard to case.
class Collation {
 public:
  Collation() { collator_.setCaseSensitivity(Qt::CaseInsensitive); }

  [[nodiscard]] bool IsBefore(const QString& left, const QString& right) const {
    return collator_.compare(left, right) < 0;
  }

 private:
  QCollator collator_;
};

}  // namespace pelora::console
