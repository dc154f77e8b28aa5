// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/text/collation.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace pelora::test {
namespace {

/// Puts texts in order one by one; counts how many it looks at.
int LookedAt(const QStringList& texts, QStringList& ordered) {
  const console::Collation order;
  int looked_at = 0;
  for (const QString& text : texts) {
    const auto text_at = [&](int place) {
      ++looked_at;
      return ordered.at(place);
    };
    ordered.insert(order.PlaceOf(text, static_cast<int>(ordered.size()), text_at), text);
  }
  return looked_at;
}

TEST(CollationPlace, ManyTextsAreLookedAtSeldom) {
  constexpr int kCount = 20'000;
  constexpr int kHalvings = 15;
  for (const int step : {1, kCount - 1, 7919}) {
    QStringList texts;
    for (int i = 0; i < kCount; ++i) {
      texts.append(QStringLiteral("value %1").arg(i * step % kCount, 5, 10, QLatin1Char('0')));
    }
    QStringList ordered;
    EXPECT_LE(LookedAt(texts, ordered), kCount * kHalvings);
    QStringList expected = texts;
    expected.sort();
    EXPECT_EQ(ordered, expected);
  }
}

TEST(CollationPlace, EqualsStandInTheOrderInWhichTheyCame) {
  QStringList ordered;
  LookedAt({QStringLiteral("b"), QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("a"),
            QStringLiteral("b")},
           ordered);
  EXPECT_EQ(ordered, (QStringList{QStringLiteral("A"), QStringLiteral("a"), QStringLiteral("b"),
                                  QStringLiteral("B"), QStringLiteral("b")}));
}

}  // namespace
}  // namespace pelora::test
