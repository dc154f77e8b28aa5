// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/choosers/search_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStyle>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <utility>

#include "hosts/console/choosers/key_shortcuts.h"
#include "hosts/console/choosers/search_status.h"
#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/finding/list_line.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/object_icons.h"
#include "hosts/session/find/find_text.h"

namespace pelora::console {
namespace {

/// In average characters.
constexpr int kWidth = 140;
constexpr std::array kColumnWidths = {26, 12, 18, 28};
constexpr std::array kColumnWidthsWithoutAddresses = {40, 22, 0, 0};
constexpr int kResultLines = 14;
constexpr int kChosenLines = 4;

}  // namespace

SearchDialog::SearchDialog(SearchDialogInit init, ldap::StoreOpener opener, QWidget* parent)
    : QDialog(parent),
      init_(std::move(init)),
      found_(new FoundObjectModel(this)),
      shown_(new QSortFilterProxyModel(this)),
      search_(std::move(opener), init_.find_places) {
  setObjectName(QStringLiteral("search_dialog"));
  SetPlainTitle(*this, init_.title);
  auto* layout = new QVBoxLayout(this);
  MakePlaces(*layout);
  MakeText(*layout);
  MakeResults(*layout);
  if (init_.multiple) MakeChosen(*layout);
  MakeButtons(*layout);
  QList<ListHeight> lists = {{results_, kResultLines}};
  if (init_.multiple) lists.append({chosen_list_, kChosenLines});
  ResizeToFit(*this, kWidth * fontMetrics().averageCharWidth(), lists);

  pause_.setSingleShot(true);
  connect(&pause_, &QTimer::timeout, this, &SearchDialog::StartSearch);
  search_.on_found = [this](std::vector<session::FoundObject> objects) {
    OnFound(std::move(objects));
  };
  search_.on_finished = [this](const session::ListingEnd& ending) { OnFinished(ending); };
  search_.on_places = [this](const std::vector<std::string>& domains) { OnPlaces(domains); };
  UpdateButtons();
  StartSearch();
}

SearchDialog::~SearchDialog() = default;

void SearchDialog::MakePlaces(QVBoxLayout& layout) {
  places_ = new QComboBox(this);
  places_->setObjectName(QStringLiteral("search_place"));
  connect(places_, &QComboBox::activated, this, &SearchDialog::StartSearch);
  places_label_ = new QLabel(QStringLiteral("&Look in:"), this);
  places_label_->setBuddy(places_);
  places_->hide();
  places_label_->hide();
  auto* line = new QHBoxLayout;
  line->addWidget(places_label_);
  line->addWidget(places_, 1);
  layout.addLayout(line);
}

void SearchDialog::OnPlaces(const std::vector<std::string>& domains) {
  places_->clear();
  // However long a domain's name is, it widens no window.
  places_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  for (const std::string& domain : domains) {
    places_->addItem(domain.empty() ? QStringLiteral("All domains of the forest")
                                    : Readable(ToQString(domain)));
  }
  places_->show();
  places_label_->show();
}

void SearchDialog::MakeText(QVBoxLayout& layout) {
  text_ = new ListLine(this);
  text_->setObjectName(QStringLiteral("search_text"));
  text_->setPlaceholderText(init_.shows_addresses
                                ? QStringLiteral("Names, addresses, a pasted list")
                                : QStringLiteral("Part of a name"));
  connect(text_, &QLineEdit::textChanged, this, &SearchDialog::OnTextEdited);
  OnKeys(*text_, {Qt::Key_Return, Qt::Key_Enter}, [this] { OnTextEntered(); });
  OnKeys(*text_, {Qt::Key_Down}, [this] { GoToResults(); });
  auto* label = new QLabel(QStringLiteral("Search &for:"), this);
  label->setBuddy(text_);
  auto* line = new QHBoxLayout;
  line->addWidget(label);
  line->addWidget(text_);
  layout.addLayout(line);
}

void SearchDialog::MakeResults(QVBoxLayout& layout) {
  shown_->setSourceModel(found_);
  shown_->setSortCaseSensitivity(Qt::CaseInsensitive);
  shown_->setSortLocaleAware(true);
  results_ = new QTreeView(this);
  results_->setObjectName(QStringLiteral("search_results"));
  results_->setAccessibleName(QStringLiteral("Found"));
  results_->setModel(shown_);
  results_->setRootIsDecorated(false);
  results_->setUniformRowHeights(true);
  results_->setAllColumnsShowFocus(true);
  // Both ends of an address and of a folder tell something.
  results_->setTextElideMode(Qt::ElideMiddle);
  results_->setSelectionMode(init_.multiple ? QAbstractItemView::ExtendedSelection
                                            : QAbstractItemView::SingleSelection);
  results_->setSortingEnabled(true);
  results_->sortByColumn(FoundObjectModel::kName, Qt::AscendingOrder);
  SetColumns(init_.shows_addresses ? kColumnWidths : kColumnWidthsWithoutAddresses);
  connect(results_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &SearchDialog::UpdateButtons);
  connect(results_, &QTreeView::doubleClicked, this, &SearchDialog::TakeSelected);
  OnKeys(*results_, {Qt::Key_Return, Qt::Key_Enter}, [this] { TakeSelected(); });

  OfferNames(*results_, [this] {
    QStringList names;
    for (const session::DirectoryObject& object : Selected()) names.append(ToQString(object.dn));
    return names;
  });

  auto* label = new QLabel(QStringLiteral("Fou&nd:"), this);
  label->setBuddy(results_);
  status_ = new NameLabel(this);
  status_->setObjectName(QStringLiteral("search_status"));
  status_->setWordWrap(true);
  layout.addWidget(label);
  layout.addWidget(results_);
  layout.addWidget(status_);
}

void SearchDialog::SetColumns(std::span<const int> widths) {
  for (int column = 0; column < static_cast<int>(widths.size()); ++column) {
    const int width = widths[static_cast<std::size_t>(column)];
    results_->setColumnWidth(column, width * fontMetrics().averageCharWidth());
    results_->setColumnHidden(column, width == 0);
  }
}

void SearchDialog::MakeChosen(QVBoxLayout& layout) {
  chosen_list_ = new QListWidget(this);
  const int icon = style()->pixelMetric(QStyle::PM_SmallIconSize);
  chosen_list_->setIconSize({icon, icon});
  chosen_list_->setObjectName(QStringLiteral("chosen_objects"));
  // Long names end in dots.
  chosen_list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  chosen_list_->setAccessibleName(QStringLiteral("Chosen"));
  chosen_list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  chosen_list_->setMaximumHeight(kChosenLines * fontMetrics().lineSpacing() +
                                 2 * chosen_list_->frameWidth());
  connect(chosen_list_, &QListWidget::itemSelectionChanged, this, &SearchDialog::UpdateButtons);
  OnKeys(*chosen_list_, {Qt::Key_Delete}, [this] { RemoveChosen(); });
  OfferNames(*chosen_list_, [this] {
    QStringList names;
    for (int row = 0; row < chosen_list_->count(); ++row) {
      if (!chosen_list_->item(row)->isSelected()) continue;
      names.append(ToQString(chosen_[static_cast<std::size_t>(row)].dn));
    }
    return names;
  });
  add_ = new QPushButton(QStringLiteral("&Add"), this);
  add_->setObjectName(QStringLiteral("add_chosen"));
  connect(add_, &QPushButton::clicked, this, &SearchDialog::AddSelected);
  remove_ = new QPushButton(QStringLiteral("&Remove"), this);
  remove_->setObjectName(QStringLiteral("remove_chosen"));
  connect(remove_, &QPushButton::clicked, this, &SearchDialog::RemoveChosen);
  auto* label = new QLabel(QStringLiteral("C&hosen:"), this);
  label->setBuddy(chosen_list_);
  auto* buttons = new QVBoxLayout;
  buttons->addWidget(add_);
  buttons->addWidget(remove_);
  buttons->addStretch();
  auto* line = new QHBoxLayout;
  line->addWidget(chosen_list_);
  line->addLayout(buttons);
  layout.addWidget(label);
  layout.addLayout(line);
}

void SearchDialog::MakeButtons(QVBoxLayout& layout) {
  buttons_ = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons_, &QDialogButtonBox::accepted, this, &SearchDialog::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &SearchDialog::reject);
  layout.addWidget(buttons_);
}

void SearchDialog::OnTextEdited() { pause_.start(init_.typing_pause); }

void SearchDialog::OnTextEntered() {
  if (!pause_.isActive()) return GoToResults();
  pause_.stop();
  StartSearch();
}

void SearchDialog::StartSearch() {
  found_->Clear();
  UpdateButtons();
  status_->setText(DescribeRunning(0));
  // Before there is a choice, none is made: the directory's own domain.
  const auto place = static_cast<std::size_t>(std::max(0, places_->currentIndex()));
  search_.Start({.filter = init_.type_filter, .text = ToUtf8(text_->text()), .limit = init_.limit},
                place);
}

void SearchDialog::OnFound(std::vector<session::FoundObject> objects) {
  found_->Append(std::move(objects));
  status_->setText(DescribeRunning(found_->Count()));
}

void SearchDialog::OnFinished(const session::ListingEnd& ending) {
  status_->setText(DescribeEnd(ending, found_->Count()));
  // Who has written a list means all of it.
  const bool is_list = !session::FindText(ToUtf8(text_->text())).items().empty();
  if (init_.multiple && is_list) results_->selectAll();
}

void SearchDialog::GoToResults() {
  if (found_->Count() == 0) return;
  results_->setFocus();
  if (Selected().empty()) results_->setCurrentIndex(shown_->index(0, FoundObjectModel::kName));
}

void SearchDialog::TakeSelected() {
  if (init_.multiple) return AddSelected();
  if (!Selected().empty()) accept();
}

void SearchDialog::AddSelected() {
  for (session::DirectoryObject& object : Selected()) {
    if (IsChosen(object.dn)) continue;
    auto* item = new QListWidgetItem(IconOf(object.kind.icon), Readable(ToQString(object.name)),
                                     chosen_list_);
    item->setToolTip(
        PlainToolTip(ToQString(object.name) + QLatin1Char('\n') + ToQString(object.dn)));
    chosen_.push_back(std::move(object));
  }
  results_->clearSelection();
  UpdateButtons();
}

void SearchDialog::RemoveChosen() {
  for (int row = chosen_list_->count() - 1; row >= 0; --row) {
    if (!chosen_list_->item(row)->isSelected()) continue;
    delete chosen_list_->takeItem(row);
    chosen_.erase(chosen_.begin() + row);
  }
  UpdateButtons();
}

void SearchDialog::UpdateButtons() {
  const bool is_selected = !Selected().empty();
  if (buttons_ != nullptr) {
    buttons_->button(QDialogButtonBox::Ok)->setEnabled(is_selected || !chosen_.empty());
  }
  if (!init_.multiple || remove_ == nullptr) return;
  add_->setEnabled(is_selected);
  remove_->setEnabled(!chosen_list_->selectedItems().isEmpty());
}

std::vector<session::DirectoryObject> SearchDialog::Selected() const {
  QModelIndexList rows = results_->selectionModel()->selectedRows();
  std::ranges::sort(rows, {}, &QModelIndex::row);
  std::vector<session::DirectoryObject> selected;
  selected.reserve(static_cast<std::size_t>(rows.size()));
  for (const QModelIndex& row : rows) {
    selected.push_back(found_->ObjectAt(shown_->mapToSource(row).row()));
  }
  return selected;
}

bool SearchDialog::IsChosen(const std::string& dn) const {
  return std::ranges::find(chosen_, dn, &session::DirectoryObject::dn) != chosen_.end();
}

std::vector<session::DirectoryObject> SearchDialog::Chosen() const {
  std::vector<session::DirectoryObject> chosen = chosen_;
  for (session::DirectoryObject& object : Selected()) {
    if (!IsChosen(object.dn)) chosen.push_back(std::move(object));
  }
  return chosen;
}

}  // namespace pelora::console
