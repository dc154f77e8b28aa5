// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/fields/shown_rows.h"

#include <QListWidget>
#include <QMap>

#include "hosts/console/dialogs/list_box_control.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/text/text_service.h"
#include "hosts/session/folder_name.h"

namespace pelora::console {
namespace {

constexpr int kNone = -1;
/// Between a text and the word behind it, and behind that.
constexpr int kLettersBetween = 2;

/// The row of the default address among those that stand in capitals.
int DefaultRow(const QListWidget& list, const QString& stored) {
  const QtTextService text;
  const auto in_capitals = [&text](const QString& address) {
    return ToQString(text.UpperCase(ToUtf8(address)));
  };
  int found = kNone;
  int count = 0;
  for (int row = 0; row < list.count(); ++row) {
    const QString address = list.item(row)->text();
    if (address != in_capitals(address)) continue;
    if (!stored.isEmpty() && address == in_capitals(stored)) return row;
    found = row;
    ++count;
  }
  return count == 1 ? found : kNone;
}

}  // namespace

void ShowOwnNames(QListWidget& list) {
  QMap<QString, int> uses;
  const auto name_of = [](const QListWidgetItem& item) {
    return Readable(ToQString(session::OwnNameOf(ToUtf8(item.text()))));
  };
  for (int row = 0; row < list.count(); ++row) ++uses[name_of(*list.item(row)).toCaseFolded()];
  for (int row = 0; row < list.count(); ++row) {
    QListWidgetItem& item = *list.item(row);
    QString shown = name_of(item);
    if (uses.value(shown.toCaseFolded()) > 1) {
      const QString folder = ToQString(session::FolderOf(ToUtf8(item.text())));
      shown += QStringLiteral(" (%1)").arg(Readable(folder));
    }
    item.setData(kShownTextRole, shown);
    item.setData(Qt::AccessibleTextRole, shown);
    item.setData(Qt::AccessibleDescriptionRole, Readable(item.text()));
  }
}

QString DefaultWord() { return QStringLiteral("default"); }

int MarkDefault(QListWidget& list, const QString& stored) {
  const int marked = DefaultRow(list, stored);
  const QFontMetrics metrics = list.fontMetrics();
  const int kept_free =
      metrics.horizontalAdvance(DefaultWord()) + kLettersBetween * metrics.averageCharWidth();
  for (int row = 0; row < list.count(); ++row) {
    QListWidgetItem& item = *list.item(row);
    const bool is_default = row == marked;
    QFont font = list.font();
    font.setBold(is_default);
    item.setFont(font);
    item.setData(kKeptFreeRole, is_default ? QVariant(kept_free) : QVariant());
    const QString text = Readable(item.text());
    item.setData(Qt::AccessibleTextRole,
                 is_default ? QStringLiteral("%1 (default)").arg(text) : text);
  }
  return marked;
}

}  // namespace pelora::console
