// SPDX-License-Identifier: Apache-2.0
#pragma once

class QAbstractItemModel;
class QTableView;

namespace pelora::console {

/// A table to read: whole rows are selected, columns have room for their headings and share what
/// there is, long texts end in dots. Tab leaves it.
void SetUpTable(QTableView& table, QAbstractItemModel& model);

/// Columns share what room there is, and none is narrower than its heading.
void ShareColumns(QTableView& table);

}  // namespace pelora::console
