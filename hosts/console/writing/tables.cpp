// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/writing/tables.h"

#include <QHeaderView>
#include <QTableView>
#include <algorithm>

namespace pelora::console {
void SetUpTable(QTableView& table, QAbstractItemModel& model) {
  table.setModel(&model);
  table.setSelectionBehavior(QAbstractItemView::SelectRows);
  table.setTabKeyNavigation(false);
  table.setWordWrap(false);
  table.setAlternatingRowColors(true);
  table.verticalHeader()->hide();
  table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + 8);
  ShareColumns(table);
  if (model.rowCount() > 0) table.setCurrentIndex(model.index(0, 0));
}

void ShareColumns(QTableView& table) {
  QHeaderView& header = *table.horizontalHeader();
  header.setSectionResizeMode(QHeaderView::Stretch);
  header.setHighlightSections(false);
  int widest = 0;
  for (int column = 0; column < table.model()->columnCount(); ++column) {
    const QString heading = table.model()->headerData(column, Qt::Horizontal).toString();
    widest = std::max(widest, header.fontMetrics().horizontalAdvance(heading));
  }
  header.setMinimumSectionSize(widest + 2 * header.fontMetrics().averageCharWidth());
}

}  // namespace pelora::console
