// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/object_list_pane.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <string_view>
#include <unordered_set>

#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/session/fields/csv_writer.h"
#include "hosts/session/visible_text.h"

namespace pelora::console {
namespace {

/// Widths of columns, in average characters.
constexpr int kNameCharacters = 32;
constexpr int kOtherCharacters = 24;
constexpr int kSortKeys = 9;
/// Room around what an empty list says, in dots.
constexpr int kAroundWords = 24;

/// Draws what does not fit with dots where it tells least, and has a tooltip for that alone.
class CutTexts final : public QStyledItemDelegate {
 public:
  CutTexts(const ObjectListModel& objects, QObject* parent)
      : QStyledItemDelegate(parent), objects_(objects) {}

  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override {
    if (sizeHint(option, index).width() > option.rect.width()) {
      return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    QToolTip::hideText();
    return true;
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const auto column = static_cast<std::size_t>(index.column());
    option->textElideMode =
        objects_.columns()[column].tells_at_end ? Qt::ElideMiddle : Qt::ElideRight;
  }

 private:
  const ObjectListModel& objects_;
};

}  // namespace

ObjectListPane::ObjectListPane(QWidget* parent)
    : QWidget(parent),
      model_(new ObjectListModel(this)),
      shown_(new OrderedObjects(*model_, this)) {
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
  filter_->setPlaceholderText(QStringLiteral("Part of what a column shows"));
  connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
    const std::vector<std::string> selected = SelectedNames();
    shown_->SetText(text);
    Select(selected);
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
  view_->setItemDelegate(new CutTexts(*model_, view_));
  view_->header()->setTextElideMode(Qt::ElideRight);
  view_->header()->setSectionsMovable(true);
  view_->header()->setFirstSectionMovable(false);
  SetColumns({{.name = "name", .title = "Name"},
              {.name = "type", .title = "Type"},
              {.name = "remark", .title = "Description"}});
  MakeKeys();
  MakeWords();
  connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &ObjectListPane::SelectionChanged);
  connect(view_, &QTreeView::doubleClicked, this, &ObjectListPane::Opened);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* enter = new QShortcut(QKeySequence(key), view_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(enter, &QShortcut::activated, this, &ObjectListPane::Opened);
  }
}

void ObjectListPane::MakeWords() {
  empty_ = new NameLabel(view_->viewport());
  empty_->setObjectName(QStringLiteral("list_is_empty"));
  empty_->setWordWrap(true);
  empty_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  empty_->setForegroundRole(QPalette::Text);
  empty_->setAttribute(Qt::WA_TransparentForMouseEvents);
  empty_->hide();
  auto* const layout = new QVBoxLayout(view_->viewport());
  layout->setSizeConstraint(QLayout::SetNoConstraint);
  layout->setContentsMargins(kAroundWords, kAroundWords, kAroundWords, kAroundWords);
  layout->addWidget(empty_);
}

void ObjectListPane::SayWhenEmpty(const QString& text) {
  empty_->setText(text);
  empty_->setVisible(ShownCount() == 0 && !text.isEmpty());
}

void ObjectListPane::MakeKeys() {
  auto* down =
      new QShortcut(QKeySequence(Qt::Key_Down), filter_, nullptr, nullptr, Qt::WidgetShortcut);
  connect(down, &QShortcut::activated, this, [this] {
    if (!view_->currentIndex().isValid()) {
      view_->setCurrentIndex(shown_->index(0, ObjectListModel::kName, {}));
    }
    view_->setFocus();
  });
  for (int place = 0; place < kSortKeys; ++place) {
    auto* sort = new QShortcut(QKeySequence(static_cast<int>(Qt::CTRL) | (Qt::Key_1 + place)),
                               view_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(sort, &QShortcut::activated, this, [this, place] { SortBy(place); });
  }
}

void ObjectListPane::SortBy(int place) {
  const int column = view_->header()->logicalIndex(place);
  if (column < 0) return;
  const bool turns = view_->header()->sortIndicatorSection() == column &&
                     view_->header()->sortIndicatorOrder() == Qt::AscendingOrder;
  view_->sortByColumn(column, turns ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void ObjectListPane::SetColumns(std::vector<session::ListColumn> columns) {
  model_->SetColumns(std::move(columns));
  QHeaderView& header = *view_->header();
  // Where the columns lay that were there before says nothing of these.
  for (int column = 0; column < header.count(); ++column) {
    header.moveSection(header.visualIndex(column), column);
  }
  const int character = fontMetrics().averageCharWidth();
  for (int column = 0; column < model_->columnCount({}); ++column) {
    const bool is_name = column == ObjectListModel::kName;
    view_->setColumnWidth(column, (is_name ? kNameCharacters : kOtherCharacters) * character);
  }
  view_->sortByColumn(ObjectListModel::kName, Qt::AscendingOrder);
}

std::vector<LyingColumn> ObjectListPane::Lying() const {
  const int character = fontMetrics().averageCharWidth();
  std::vector<LyingColumn> lying;
  for (const int column : ColumnsShown()) {
    lying.push_back({.name = columns()[static_cast<std::size_t>(column)].name,
                     .width = view_->columnWidth(column) / character});
  }
  return lying;
}

void ObjectListPane::SetWidths(const std::vector<LyingColumn>& widths) {
  const int character = fontMetrics().averageCharWidth();
  for (const LyingColumn& lying : widths) {
    const auto column = std::ranges::find(columns(), lying.name, &session::ListColumn::name);
    if (column == columns().end()) continue;
    view_->setColumnWidth(static_cast<int>(column - columns().begin()), lying.width * character);
  }
}

QByteArray ObjectListPane::Layout() const { return view_->header()->saveState(); }

void ObjectListPane::SetLayout(const QByteArray& layout) {
  const int count = view_->header()->count();
  if (layout.isEmpty() || !view_->header()->restoreState(layout)) return;
  const int sorted = view_->header()->sortIndicatorSection();
  // A layout of other columns, or one that hides them all, is of no use.
  if (view_->header()->count() != count || sorted < 0 || sorted >= count) {
    return view_->sortByColumn(ObjectListModel::kName, Qt::AscendingOrder);
  }
  view_->sortByColumn(sorted, view_->header()->sortIndicatorOrder());
}

std::vector<int> ObjectListPane::RowsToGive() const {
  QModelIndexList selected = view_->selectionModel()->selectedRows();
  std::ranges::sort(selected, {}, &QModelIndex::row);
  std::vector<int> rows;
  for (const QModelIndex& row : selected) rows.push_back(shown_->mapToSource(row).row());
  if (!rows.empty()) return rows;
  for (int row = 0; row < shown_->rowCount({}); ++row) {
    rows.push_back(shown_->mapToSource(shown_->index(row, ObjectListModel::kName, {})).row());
  }
  return rows;
}

std::vector<int> ObjectListPane::ColumnsShown() const {
  const QHeaderView& header = *view_->header();
  std::vector<int> columns;
  for (int place = 0; place < header.count(); ++place) {
    const int column = header.logicalIndex(place);
    if (!header.isSectionHidden(column)) columns.push_back(column);
  }
  return columns;
}

QString ObjectListPane::AsText() const {
  const std::vector<int> columns = ColumnsShown();
  QStringList lines;
  QStringList cells;
  for (const int column : columns) {
    cells.append(model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
  }
  lines.append(cells.join(QLatin1Char('\t')));
  for (const int row : RowsToGive()) {
    cells.clear();
    for (const int column : columns) {
      cells.append(ToQString(session::OnOneLine(ToUtf8(model_->TextAt(row, column)))));
    }
    lines.append(cells.join(QLatin1Char('\t')));
  }
  return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

std::string ObjectListPane::AsCsv() const {
  const std::vector<int> columns = ColumnsShown();
  std::vector<std::string> cells = {"dn"};
  for (const int column : columns) {
    cells.push_back(model_->columns()[static_cast<std::size_t>(column)].name);
  }
  std::string table = session::CsvRow(cells);
  std::unordered_set<std::string_view> known;
  for (const int row : RowsToGive()) {
    const std::string& dn = model_->DnAt(row);
    if (!known.insert(dn).second) continue;
    cells = {dn};
    for (const int column : columns) cells.push_back(ToUtf8(model_->TextAt(row, column)));
    table += session::CsvRow(cells);
  }
  return table;
}

std::vector<std::string> ObjectListPane::SelectedNames() const {
  std::vector<std::string> selected;
  for (const session::DirectoryObject& object : Selection()) selected.push_back(object.dn);
  return selected;
}

void ObjectListPane::Gather(std::vector<session::ListedObject> objects) {
  model_->Gather(std::move(objects));
}

void ObjectListPane::DropGathered() { model_->DropGathered(); }

void ObjectListPane::ShowGathered() {
  model_->ShowGathered();
  Q_EMIT ContentsChanged();
}

void ObjectListPane::ShowGatheredOnly() {
  const std::vector<std::string> selected = SelectedNames();
  model_->ShowGatheredOnly();
  Select(selected);
  Q_EMIT ContentsChanged();
}

void ObjectListPane::Select(const std::vector<std::string>& names) {
  const std::unordered_set<std::string_view> wanted(names.begin(), names.end());
  const auto index_of = [this](int row) { return shown_->index(row, ObjectListModel::kName, {}); };
  const auto is_wanted = [&](int row) {
    const QModelIndex source = shown_->mapToSource(index_of(row));
    return wanted.contains(model_->DnAt(source.row()));
  };
  // Rows that follow each other make one range: thousands may be selected.
  QItemSelection rows;
  for (int row = 0; row < shown_->rowCount({}); ++row) {
    if (!is_wanted(row)) continue;
    const int first = row;
    while (row + 1 < shown_->rowCount({}) && is_wanted(row + 1)) ++row;
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
  // What a rule finds has a row each, several of one object.
  std::unordered_set<std::string_view> known;
  for (const QModelIndex& row : rows) {
    const int at = shown_->mapToSource(row).row();
    if (known.insert(model_->DnAt(at)).second) selected.push_back(model_->ObjectAt(at));
  }
  return selected;
}

session::DirectoryObject ObjectListPane::ObjectAt(const QModelIndex& index) const {
  return model_->ObjectAt(shown_->mapToSource(index).row());
}

std::string ObjectListPane::SelectedAttribute() const {
  const QModelIndexList rows = view_->selectionModel()->selectedRows();
  return rows.size() == 1 ? model_->AttributeAt(shown_->mapToSource(rows.front()).row())
                          : std::string();
}

int ObjectListPane::ShownCount() const { return shown_->rowCount({}); }

int ObjectListPane::Count() const { return model_->rowCount({}); }

}  // namespace pelora::console
