// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>
#include <string>
#include <vector>

namespace pelora::test {

/// Controls of a page that do not show whole, each with the reason in words: one that reaches over
/// the page's edge, a text that is wider or higher than its control, two fields that overlap.
[[nodiscard]] std::vector<std::string> FaultsOfSight(const QWidget& page);

}  // namespace pelora::test
