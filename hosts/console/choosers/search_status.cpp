// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/choosers/search_status.h"

#include "hosts/console/finding/missing_text.h"
#include "hosts/console/text/qt_text.h"

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

QString DescribeEnd(const session::ListingEnd& ending, int count) {
  const QString missing = MissingText(ending);
  switch (ending.end.reason) {
    case session::SearchEnd::Reason::kComplete:
      if (count == 0) return QStringLiteral("Nothing was found%1.").arg(missing);
      return QStringLiteral("%1 found%2.").arg(Objects(count), missing);
    case session::SearchEnd::Reason::kOwnLimit:
      return QStringLiteral(
                 "%1 are shown and there are more. Type more of the name to narrow the search.")
          .arg(Objects(count));
    case session::SearchEnd::Reason::kDirectoryLimit:
      return QStringLiteral(
                 "The directory ended the search at a limit of its own; %1 found until "
                 "then. Type more of the name to narrow the search.")
          .arg(Objects(count));
    case session::SearchEnd::Reason::kFailed:
      return QStringLiteral("The search failed, %1 found until then: %2")
          .arg(Objects(count), ToQString(ending.end.text));
  }
  return {};
}

}  // namespace pelora::console
