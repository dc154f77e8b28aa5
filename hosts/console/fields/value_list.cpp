// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/fields/value_list.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

/// In average characters.
constexpr int kWidth = 70;
constexpr int kValueWidth = 24;
constexpr int kLines = 12;

QString Shown(const session::FieldValue& value) {
  return value.text.empty() ? QStringLiteral("not set") : Readable(ToQString(value.text));
}

}  // namespace

ValueList::ValueList(const QString& label, const std::vector<session::FieldValue>& values,
                     QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("value_list"));
  setWindowTitle(QStringLiteral("Values of %1").arg(Readable(label)));
  auto* list = new QTreeWidget(this);
  list->setObjectName(QStringLiteral("value_list_rows"));
  list->setAccessibleName(QStringLiteral("Values"));
  list->setHeaderLabels({QStringLiteral("Value"), QStringLiteral("Object")});
  list->setRootIsDecorated(false);
  list->setUniformRowHeights(true);
  list->setColumnWidth(0, kValueWidth * fontMetrics().averageCharWidth());
  for (const session::FieldValue& value : values) {
    for (const std::string& object : value.objects) {
      auto* row = new QTreeWidgetItem(list);
      row->setText(0, Shown(value));
      row->setText(1, Readable(ToQString(object)));
    }
  }
  if (list->topLevelItemCount() > 0) list->setCurrentItem(list->topLevelItem(0));
  auto* name = new QLabel(QStringLiteral("&Values and whose they are:"), this);
  name->setBuddy(list);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(name);
  layout->addWidget(list);
  layout->addWidget(buttons);
  ResizeToFit(*this, kWidth * fontMetrics().averageCharWidth(), {{list, kLines}});
}

}  // namespace pelora::console
