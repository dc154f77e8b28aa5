// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/object_list_pane.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QSortFilterProxyModel>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <string_view>
#include <unordered_set>

#include "hosts/console/text/collation.h"

namespace pelora::console {
namespace {

constexpr int kAnyColumn = -1;
/// Widths of the columns before the last, in average characters.
constexpr int kNameCharacters = 32;
constexpr int kTypeCharacters = 24;

/// The rows that the filter leaves, in the user's order.
class ShownRows final : public QSortFilterProxyModel {
 public:
  using QSortFilterProxyModel::QSortFilterProxyModel;

 protected:
  [[nodiscard]] bool lessThan(const QModelIndex& left, const QModelIndex& right) const override {
    return order_.IsBefore(left.data().toString(), right.data().toString());
  }

 private:
  Collation order_;
};

}  // namespace

ObjectListPane::ObjectListPane(QWidget* parent)
    : QWidget(parent), model_(new ObjectListModel(this)), shown_(new ShownRows(this)) {
  shown_->setSourceModel(model_);
  shown_->setFilterKeyColumn(kAnyColumn);
  shown_->setFilterCaseSensitivity(Qt::CaseInsensitive);
  MakeFilter();
  MakeView();

  auto* label = new QLabel(QStringLiteral("Fi&lter:"), this);
  label->setBuddy(filter_);
  auto* line = new QHBoxLayout;
  line->addWidget(label);
  line->addWidget(filter_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->addLayout(line);
  layout->addWidget(view_);
}

void ObjectListPane::MakeFilter() {
  filter_ = new QLineEdit(this);
  filter_->setObjectName(QStringLiteral("object_filter"));
  filter_->setClearButtonEnabled(true);
  filter_->setPlaceholderText(QStringLiteral("Part of a name, type or description"));
  connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
    shown_->setFilterFixedString(text);
    Q_EMIT ContentsChanged();
  });
  auto* clear =
      new QShortcut(QKeySequence(Qt::Key_Escape), filter_, nullptr, nullptr, Qt::WidgetShortcut);
  connect(clear, &QShortcut::activated, filter_, &QLineEdit::clear);
}

void ObjectListPane::MakeView() {
  view_ = new QTreeView(this);
  view_->setObjectName(QStringLiteral("object_list"));
  view_->setAccessibleName(QStringLiteral("Objects"));
  view_->setModel(shown_);
  view_->setRootIsDecorated(false);
  view_->setUniformRowHeights(true);
  view_->setAllColumnsShowFocus(true);
  view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  view_->setSortingEnabled(true);
  view_->sortByColumn(ObjectListModel::kName, Qt::AscendingOrder);
  const int character = fontMetrics().averageCharWidth();
  view_->setColumnWidth(ObjectListModel::kName, kNameCharacters * character);
  view_->setColumnWidth(ObjectListModel::kType, kTypeCharacters * character);
  connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &ObjectListPane::SelectionChanged);
  connect(view_, &QTreeView::doubleClicked, this, &ObjectListPane::Opened);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* enter = new QShortcut(QKeySequence(key), view_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(enter, &QShortcut::activated, this, &ObjectListPane::Opened);
  }
}

void ObjectListPane::SetObjects(std::vector<session::DirectoryObject> objects) {
  std::vector<std::string> selected;
  for (const session::DirectoryObject& object : Selection()) selected.push_back(object.dn);
  model_->SetObjects(std::move(objects));
  Select(selected);
  Q_EMIT ContentsChanged();
}

void ObjectListPane::AddObjects(std::vector<session::DirectoryObject> objects) {
  model_->AddObjects(std::move(objects));
  Q_EMIT ContentsChanged();
}

void ObjectListPane::Select(const std::vector<std::string>& names) {
  const std::unordered_set<std::string_view> wanted(names.begin(), names.end());
  const auto index_of = [this](int row) { return shown_->index(row, ObjectListModel::kName); };
  const auto is_wanted = [&](int row) {
    const QModelIndex source = shown_->mapToSource(index_of(row));
    return wanted.contains(model_->ObjectAt(source.row()).dn);
  };
  // Rows that follow each other make one range: thousands may be selected.
  QItemSelection rows;
  for (int row = 0; row < shown_->rowCount(); ++row) {
    if (!is_wanted(row)) continue;
    const int first = row;
    while (row + 1 < shown_->rowCount() && is_wanted(row + 1)) ++row;
    rows.select(index_of(first), index_of(row));
  }
  if (rows.isEmpty()) return;
  constexpr auto kWholeRows = QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
  view_->selectionModel()->setCurrentIndex(rows.indexes().first(), QItemSelectionModel::NoUpdate);
  view_->selectionModel()->select(rows, kWholeRows);
}

std::vector<session::DirectoryObject> ObjectListPane::Selection() const {
  QModelIndexList rows = view_->selectionModel()->selectedRows();
  std::ranges::sort(rows, {}, &QModelIndex::row);
  std::vector<session::DirectoryObject> selected;
  selected.reserve(static_cast<std::size_t>(rows.size()));
  for (const QModelIndex& row : rows) {
    selected.push_back(model_->ObjectAt(shown_->mapToSource(row).row()));
  }
  return selected;
}

int ObjectListPane::ShownCount() const { return shown_->rowCount(); }

int ObjectListPane::Count() const { return model_->rowCount({}); }

}  // namespace pelora::console
