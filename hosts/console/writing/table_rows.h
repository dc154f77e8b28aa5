// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractTableModel>
#include <cstddef>
#include <span>

namespace pelora::console {

/// Rows of a table that is read, under headings that stay: what is the same of all such models. Who
/// derives from it says how many rows there are and what stands in them.
class TableRows : public QAbstractTableModel {
 public:
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const final;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const final;
  /// Nothing, and the failure told, where a cell cannot be made.
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const final;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const final;

 protected:
  /// `headings`, one for each column, outlive the model.
  TableRows(std::span<const char* const> headings, QObject* parent);

  [[nodiscard]] virtual std::size_t CountRows() const = 0;
  [[nodiscard]] virtual QVariant DataOf(const QModelIndex& index, int role) const = 0;

  /// Every cell may say something else now.
  void TellAllChanged();

 private:
  std::span<const char* const> headings_;
};

/// Whether a role asks for the text that is shown, and told to screen readers.
[[nodiscard]] bool IsShownText(int role);

}  // namespace pelora::console
