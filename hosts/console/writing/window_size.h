// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSize>

class QAbstractItemModel;
class QDialog;
class QTableView;

namespace pelora::console {

/// Gives a window the size that is wanted for it, as far as the screen has room.
void ResizeToFit(QDialog& window, QSize wanted);

/// A table to read: whole rows are selected, columns have room for their headings and share what
/// there is, long texts end in dots. Tab leaves it.
void SetUpTable(QTableView& table, QAbstractItemModel& model);

/// Columns share what room there is, and none is narrower than its heading.
void ShareColumns(QTableView& table);

}  // namespace pelora::console
