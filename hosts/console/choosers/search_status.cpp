// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/choosers/search_status.h"

namespace pelora::console {
namespace {

QString Objects(int count) {
  return count == 1 ? QStringLiteral("1 object") : QStringLiteral("%1 objects").arg(count);
}

}  // namespace

QString DescribeRunning(int count) {
  if (count == 0) return QStringLiteral("Searching...");
  return QStringLiteral("Searching... %1 so far.").arg(Objects(count));
}

QString DescribeEnd(const SearchEnd& end, int count) {
  switch (end.reason) {
    case SearchEnd::Reason::kComplete:
      if (count == 0) return QStringLiteral("Nothing was found.");
      return QStringLiteral("%1 found.").arg(Objects(count));
    case SearchEnd::Reason::kOwnLimit:
      return QStringLiteral(
                 "%1 are shown and there are more. Type more of the name to narrow the search.")
          .arg(Objects(count));
    case SearchEnd::Reason::kDirectoryLimit:
      return QStringLiteral(
                 "The directory ended the search at a limit of its own; %1 found until "
                 "then. Type more of the name to narrow the search.")
          .arg(Objects(count));
    case SearchEnd::Reason::kFailed:
      return QStringLiteral("The search failed, %1 found until then: %2")
          .arg(Objects(count), end.text);
  }
  return {};
}

}  // namespace pelora::console
