// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/sheets/sheet_places.h"

#include <QScreen>
#include <QStyle>
#include <algorithm>

#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

/// What stands in the name of a class is no path.
QString KeyOf(std::span<const session::DirectoryObject> selection) {
  const QByteArray name = ToQString(selection.front().kind.class_name).toUtf8();
  return QStringLiteral("sheets/%1/geometry")
      .arg(QString::fromLatin1(name.toLower().toPercentEncoding()));
}

}  // namespace

void SheetPlaces::Recall(QtPropertySheet& sheet,
                         std::span<const session::DirectoryObject> selection) const {
  // What cannot be used changes nothing.
  if (sheet.restoreGeometry(remembered_.Bytes(KeyOf(selection)))) KeepOnScreen(sheet);
}

void SheetPlaces::Remember(const QtPropertySheet& sheet,
                           std::span<const session::DirectoryObject> selection) {
  remembered_.SetBytes(KeyOf(selection), sheet.saveGeometry());
}

void PutBeside(QtPropertySheet& sheet, const QList<QtPropertySheet*>& others) {
  const int step = sheet.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &sheet);
  const auto is_covered = [&] {
    return std::any_of(others.begin(), others.end(), [&sheet](const QtPropertySheet* other) {
      return other != &sheet && other->pos() == sheet.pos();
    });
  };
  const QRect screen = sheet.screen()->availableGeometry();
  for (qsizetype tries = 0; tries < others.size() && is_covered(); ++tries) {
    QPoint place = sheet.pos() + QPoint(step, step);
    const QRect moved(place, sheet.frameGeometry().size());
    if (moved.right() > screen.right()) place.setX(screen.left());
    if (moved.bottom() > screen.bottom()) place.setY(screen.top());
    sheet.move(place);
  }
}

}  // namespace pelora::console
