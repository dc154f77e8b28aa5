// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/fields/value_list.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/table_rows.h"

namespace pelora::console {
namespace {

/// In average characters.
constexpr int kWidth = 70;
constexpr int kValueWidth = 24;
constexpr int kLines = 12;
constexpr std::array kValueHeadings = {"Value", "Object"};

QString Shown(const session::HeldValue& value) {
  return value.text.empty() ? QStringLiteral("not set") : Readable(ToQString(value.text));
}

/// One row for each object; texts are made when they are drawn.
class ValueRows final : public TableRows {
 public:
  ValueRows(std::span<const session::HeldValue> values, QObject* parent)
      : TableRows(kValueHeadings, parent), values_(values.begin(), values.end()) {
    for (const session::HeldValue& value : values_) {
      ends_.push_back((ends_.empty() ? 0 : ends_.back()) + value.objects.size());
    }
  }

 private:
  [[nodiscard]] std::size_t CountRows() const override { return ends_.empty() ? 0 : ends_.back(); }
  [[nodiscard]] QVariant DataOf(const QModelIndex& index, int role) const override {
    if (role != Qt::DisplayRole) return {};
    const auto row = static_cast<std::size_t>(index.row());
    const auto end = std::ranges::upper_bound(ends_, row);
    const session::HeldValue& value = values_[static_cast<std::size_t>(end - ends_.begin())];
    if (index.column() == 0) return Shown(value);
    return Readable(ToQString(value.objects[row - (*end - value.objects.size())]));
  }

  std::vector<session::HeldValue> values_;
  /// Behind the last row of each value.
  std::vector<std::size_t> ends_;
};

}  // namespace

ValueList::ValueList(const QString& label, std::span<const session::HeldValue> values,
                     QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("value_list"));
  SetPlainTitle(*this, QStringLiteral("Values of %1").arg(label));
  auto* list = new QTreeView(this);
  list->setObjectName(QStringLiteral("value_list_rows"));
  list->setAccessibleName(QStringLiteral("Values"));
  list->setModel(new ValueRows(values, list));
  list->setRootIsDecorated(false);
  list->setUniformRowHeights(true);
  list->setColumnWidth(0, kValueWidth * fontMetrics().averageCharWidth());
  list->setCurrentIndex(list->model()->index(0, 0));
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
