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

  /// What stands for a text in many comparisons: keys compare as their texts do, and faster.
  [[nodiscard]] QCollatorSortKey KeyOf(const QString& text) const {
    return collator_.sortKey(text);
  }

  /// Where a text goes among `count` texts in this order: behind its equals, so that texts that
  /// read the same stand in the order in which they came. Few of them are looked at, by
  /// `text_at(place)`.
  template <class TextAt>
  [[nodiscard]] int PlaceOf(const QString& text, int count, const TextAt& text_at) const {
    int place = 0;
    while (count > 0) {
      const int half = count / 2;
      if (IsBefore(text, text_at(place + half))) {
        count = half;
      } else {
        place += half + 1;
        count -= half + 1;
      }
    }
    return place;
  }

 private:
  static QLocale Language() {
    const QLocale system;
    return system.language() == QLocale::C ? QLocale(QLocale::English) : system;
  }

  QCollator collator_;
};

}  // namespace pelora::console
