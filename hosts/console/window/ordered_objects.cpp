// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/ordered_objects.h"

#include <algorithm>

namespace pelora::console {
namespace {

/// Where a row goes among others that are in order: most likely near their beginning.
template <class At, class Before>
At PlaceOf(int row, At begin, At end, const Before& before) {
  for (std::ptrdiff_t step = 1; begin != end; step *= 2) {
    const At probe = begin + std::min(step, end - begin) - 1;
    if (before(row, *probe)) return std::upper_bound(begin, probe, row, before);
    begin = probe + 1;
  }
  return end;
}

/// Both, which are in order each, in one. Each of the second is looked for behind the one before
/// it: where they are few, hardly any of the first is looked at.
template <class Before>
std::vector<int> Merged(const std::vector<int>& first, const std::vector<int>& second,
                        const Before& before) {
  std::vector<int> merged;
  merged.reserve(first.size() + second.size());
  auto from = first.begin();
  for (const int row : second) {
    const auto place = PlaceOf(row, from, first.end(), before);
    merged.insert(merged.end(), from, place);
    merged.push_back(row);
    from = place;
  }
  merged.insert(merged.end(), from, first.end());
  return merged;
}

}  // namespace

OrderedObjects::OrderedObjects(ObjectListModel& objects, QObject* parent)
    : QAbstractProxyModel(parent), objects_(objects) {
  setSourceModel(&objects);
  connect(&objects, &QAbstractItemModel::modelAboutToBeReset, this, [this] { beginResetModel(); });
  connect(&objects, &QAbstractItemModel::modelReset, this, [this] {
    Fill();
    endResetModel();
  });
  connect(&objects, &QAbstractItemModel::rowsInserted, this,
          [this](const QModelIndex& /*parent*/, int first, int last) { TakeArrived(first, last); });
}

void OrderedObjects::SetText(const QString& text) {
  if (text == text_) return;
  beginResetModel();
  text_ = text;
  Fill();
  endResetModel();
}

std::vector<int> OrderedObjects::Wanted(int first, int last) const {
  std::vector<int> wanted;
  const int columns = objects_.columnCount({});
  for (int row = first; row <= last; ++row) {
    bool is_wanted = text_.isEmpty();
    for (int column = 0; column < columns && !is_wanted; ++column) {
      is_wanted = objects_.TextAt(row, column).contains(text_, Qt::CaseInsensitive);
    }
    if (is_wanted) wanted.push_back(row);
  }
  return wanted;
}

bool OrderedObjects::ComesBefore(int left, int right) const {
  ++comparisons_;
  const int first = is_descending_ ? right : left;
  const int second = is_descending_ ? left : right;
  if (objects_.IsBefore(column_, first, second)) return true;
  // What is equal stays as it came.
  return left < right && !objects_.IsBefore(column_, second, first);
}

void OrderedObjects::Order(std::vector<int>& rows) const {
  const bool has_order = column_ >= 0 && column_ < objects_.columnCount({});
  std::ranges::sort(rows, [this, has_order](int left, int right) {
    return has_order ? ComesBefore(left, right) : left < right;
  });
}

void OrderedObjects::NotePlaces() {
  places_.assign(static_cast<std::size_t>(objects_.rowCount({})), -1);
  for (std::size_t place = 0; place < rows_.size(); ++place) {
    places_[static_cast<std::size_t>(rows_[place])] = static_cast<int>(place);
  }
}

void OrderedObjects::Fill() {
  rows_ = Wanted(0, objects_.rowCount({}) - 1);
  Order(rows_);
  NotePlaces();
}

template <class Reorder>
void OrderedObjects::Rearrange(const Reorder& reorder) {
  Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
  const QModelIndexList before = persistentIndexList();
  std::vector<int> rows;
  for (const QModelIndex& index : before) {
    rows.push_back(rows_[static_cast<std::size_t>(index.row())]);
  }
  reorder();
  NotePlaces();
  QModelIndexList after;
  for (qsizetype at = 0; at < before.size(); ++at) {
    const int row = rows[static_cast<std::size_t>(at)];
    after.append(createIndex(places_[static_cast<std::size_t>(row)], before[at].column()));
  }
  changePersistentIndexList(before, after);
  Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void OrderedObjects::TakeArrived(int first, int last) {
  std::vector<int> arrived = Wanted(first, last);
  places_.resize(static_cast<std::size_t>(last) + 1, -1);
  if (arrived.empty()) return;
  Order(arrived);
  const auto before = [this](int left, int right) {
    return column_ < 0 ? left < right : ComesBefore(left, right);
  };
  const bool is_in_order = rows_.empty() || !before(arrived.front(), rows_.back());
  std::vector<int> merged;
  if (!is_in_order) merged = Merged(rows_, arrived, before);
  rows_.reserve(rows_.size() + arrived.size());
  // Behind the others first, where nothing that stands there moves.
  beginInsertRows({}, static_cast<int>(rows_.size()),
                  static_cast<int>(rows_.size() + arrived.size()) - 1);
  for (const int row : arrived) {
    places_[static_cast<std::size_t>(row)] = static_cast<int>(rows_.size());
    rows_.push_back(row);
  }
  endInsertRows();
  if (!is_in_order) Rearrange([&] { rows_.swap(merged); });
}

void OrderedObjects::sort(int column, Qt::SortOrder order) {
  column_ = column;
  is_descending_ = order == Qt::DescendingOrder;
  Rearrange([this] { Order(rows_); });
}

QModelIndex OrderedObjects::mapToSource(const QModelIndex& index) const {
  if (!index.isValid() || static_cast<std::size_t>(index.row()) >= rows_.size()) return {};
  return objects_.index(rows_[static_cast<std::size_t>(index.row())], index.column());
}

QModelIndex OrderedObjects::mapFromSource(const QModelIndex& index) const {
  if (!index.isValid() || static_cast<std::size_t>(index.row()) >= places_.size()) return {};
  const int place = places_[static_cast<std::size_t>(index.row())];
  return place < 0 ? QModelIndex() : createIndex(place, index.column());
}

QModelIndex OrderedObjects::index(int row, int column, const QModelIndex& parent) const {
  const bool is_there = !parent.isValid() && row >= 0 && row < rowCount({}) && column >= 0 &&
                        column < columnCount({});
  return is_there ? createIndex(row, column) : QModelIndex();
}

QModelIndex OrderedObjects::parent(const QModelIndex& /*index*/) const { return {}; }

int OrderedObjects::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int OrderedObjects::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : objects_.columnCount({});
}

bool OrderedObjects::hasChildren(const QModelIndex& parent) const {
  return !parent.isValid() && !rows_.empty();
}

QVariant OrderedObjects::headerData(int section, Qt::Orientation orientation, int role) const {
  // Of columns there is one more thing to know than rows say: there may be none.
  return objects_.headerData(section, orientation, role);
}

}  // namespace pelora::console
