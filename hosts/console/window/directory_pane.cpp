// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/directory_pane.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "hosts/console/finding/missing_text.h"
#include "hosts/console/life/object_drag.h"
#include "hosts/console/program/guarded_application.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/distinguished_name.h"

namespace pelora::console {
namespace {

constexpr int kTreeShare = 1;
constexpr int kListShare = 3;

/// Gives the labels of lines that stand below each other one width: then the lines begin at one
/// edge.
void AlignLabelsOf(const QWidget& parent, const QList<const QWidget*>& lines) {
  QList<QLabel*> labels;
  int widest = 0;
  for (auto* label : parent.findChildren<QLabel*>()) {
    if (!lines.contains(label->buddy())) continue;
    labels.append(label);
    widest = std::max(widest, label->sizeHint().width());
  }
  for (QLabel* label : labels) label->setMinimumWidth(widest);
}

}  // namespace

DirectoryPane::DirectoryPane(QWidget* parent) : QSplitter(parent) {
  MakeTree();
  auto* right = new QWidget(this);
  list_ = new ObjectListPane(right);
  find_ = new FindBar(right);
  auto* layout = new QVBoxLayout(right);
  layout->setContentsMargins({});
  layout->addWidget(find_);
  layout->addWidget(list_);
  AlignLabelsOf(*right, {&find_->text(), &find_->views(), &list_->filter()});
  MakeListing();
  MakeFind();
  addWidget(tree_);
  addWidget(right);
  setStretchFactor(0, kTreeShare);
  setStretchFactor(1, kListShare);
  setChildrenCollapsible(false);
  setSizes({kTreeShare, kListShare});
  Changed();
  connect(qApp, &QApplication::focusChanged, this, [this](const QWidget*, const QWidget* now) {
    const bool is_used = now == tree_ || now == &list_->view() || now == &find_->text();
    if (!is_used) return;
    tree_used_last_ = now == tree_;
    DoGuarded([this] { Changed(); });
  });
}

DirectoryPane::~DirectoryPane() {
  // The focus moves on while the window's parts go one by one.
  disconnect(qApp, nullptr, this, nullptr);
  RememberLayout();
  // The tree still looks at its model.
  tree_->setModel(nullptr);
}

void DirectoryPane::MakeTree() {
  tree_ = new QTreeView(this);
  tree_->setObjectName(QStringLiteral("container_tree"));
  tree_->setAccessibleName(QStringLiteral("Containers"));
  tree_->setUniformRowHeights(true);
}

void DirectoryPane::MakeListing() {
  listing_.emplace(*list_);
  listing_->on_changed = [this] {
    const bool is_read = listing_->state() != ContainerListing::State::kReading;
    if (is_read && !select_when_read_.empty()) {
      list_->Select({std::exchange(select_when_read_, {})});
    }
    if (is_read && std::exchange(select_found_, false) &&
        state() == ContainerListing::State::kWhole)
      SelectFound();
    Changed();
  };
  listing_->on_failed = [this](const QString& reason) {
    if (find_->IsAsking() && on_failure) {
      return on_failure(QStringLiteral("The search has failed."), reason);
    }
    const session::DirectoryObject* container = Container();
    Failed(container != nullptr ? ToQString(container->name) : QString(), reason);
  };
  connect(list_, &ObjectListPane::SelectionChanged, this, [this] { Changed(); });
  connect(list_, &ObjectListPane::ContentsChanged, this, [this] { Changed(); });
}

void DirectoryPane::Changed() const {
  list_->SayWhenEmpty(EmptyText());
  if (on_changed) on_changed();
}

void DirectoryPane::Failed(const QString& container, const QString& reason) const {
  if (!on_failure) return;
  on_failure(QStringLiteral("The contents of %1 cannot be read.").arg(container), reason);
}

void DirectoryPane::EndDirectory() {
  RememberLayout();
  listing_->SetReader(nullptr);
  list_reader_.reset();
  fields_ = nullptr;
}

void DirectoryPane::ShowDirectory(session::DirectoryObject base, const ldap::StoreOpener& opener,
                                  session::FieldCatalogue* fields) {
  auto reader = std::make_unique<DirectoryReader>(opener);
  auto model = std::make_unique<ContainerTreeModel>(
      *reader, std::move(base),
      [this](const session::DirectoryObject& container, const QString& reason) {
        Failed(ToQString(container.name), reason);
      });
  model->SetAdvanced(is_advanced_);
  tree_->setModel(model.get());
  tree_model_ = std::move(model);
  tree_reader_ = std::move(reader);
  EndDirectory();
  fields_ = fields;
  find_->Clear();
  listed_container_.clear();
  list_reader_ = std::make_unique<DirectoryReader>(opener);
  listing_->SetReader(list_reader_.get(), fields);
  connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &DirectoryPane::ShowContainer);
  tree_->setCurrentIndex(tree_model_->BaseIndex());
  tree_->expand(tree_model_->BaseIndex());
}

const session::DirectoryObject* DirectoryPane::Container() const {
  const QModelIndex current = tree_->currentIndex();
  return current.isValid() ? &tree_model_->ObjectAt(current) : nullptr;
}

std::vector<session::DirectoryObject> DirectoryPane::Selection() const {
  std::vector<session::DirectoryObject> selected = list_->Selection();
  const session::DirectoryObject* container = Container();
  if ((tree_used_last_ || selected.empty()) && container != nullptr) return {*container};
  return selected;
}

std::optional<session::DirectoryObject> DirectoryPane::PlaceForNew() const {
  const session::DirectoryObject* const shown = Container();
  if (shown == nullptr) return std::nullopt;
  std::vector<session::DirectoryObject> selected = Selection();
  if (selected.size() == 1 && selected.front().kind.is_container)
    return std::move(selected.front());
  return *shown;
}

bool DirectoryPane::HasParent() const { return tree_->currentIndex().parent().isValid(); }

void DirectoryPane::ShowContainer() {
  const session::DirectoryObject* container = Container();
  if (container == nullptr) return;
  find_->SetContainer(ToQString(container->name));
  // What was found stays when the same container has only been read anew.
  const bool is_same = std::exchange(is_recalling_, false) || container->dn == listed_container_;
  listed_container_ = container->dn;
  if (is_same && find_->IsAsking()) return ShowAsked();
  find_->Clear();
  List(ContainerOrder(), find_->ViewName());
}

void DirectoryPane::GoToParent() {
  const QModelIndex parent = tree_->currentIndex().parent();
  if (parent.isValid()) tree_->setCurrentIndex(parent);
}

void DirectoryPane::GoToChild(const std::string& dn) {
  const QModelIndex current = tree_->currentIndex();
  const auto go = [this, from = QPersistentModelIndex(current)](const QModelIndex& child) {
    // Not if the administrator has gone elsewhere meanwhile.
    if (!child.isValid() || tree_->currentIndex() != from) return;
    tree_->expand(from);
    tree_->setCurrentIndex(child);
  };
  if (current.isValid()) tree_model_->FindChild(current, dn, go);
}

void DirectoryPane::GoTo(const std::string& dn) {
  const QModelIndex base = tree_model_ ? tree_model_->BaseIndex() : QModelIndex();
  if (!base.isValid()) return;
  tree_->setCurrentIndex({});
  find_->Clear();
  FollowPath(base, PathTo(dn));
}

std::vector<std::string> DirectoryPane::PathTo(const std::string& dn) const {
  const std::string& top = tree_model_->ObjectAt(tree_model_->BaseIndex()).dn;
  std::vector<std::string> path;
  for (std::string_view step = dn; step.size() > top.size(); step = session::ParentName(step)) {
    path.emplace(path.begin(), step);
  }
  return path;
}

void DirectoryPane::RefreshAt(const std::string& dn) {
  if (!tree_model_) return;
  refreshed_path_ = PathTo(dn);
  tree_model_->Reload();
  FollowPath(tree_model_->BaseIndex(), refreshed_path_);
}

void DirectoryPane::ShowAdvanced(bool advanced) {
  is_advanced_ = advanced;
  if (!tree_model_) return;
  tree_model_->SetAdvanced(advanced);
  Refresh();
}

void DirectoryPane::Recall(const std::string& dn) {
  if (!tree_model_) return;
  const QModelIndex base = tree_model_->BaseIndex();
  const std::string top = ldap::NameKey(tree_model_->ObjectAt(base).dn);
  if (!ldap::LiesBelow(ldap::NameKey(dn), top)) return;
  is_recalling_ = true;
  tree_->setCurrentIndex({});
  FollowPath(base, PathTo(dn));
}

void DirectoryPane::TakeDrops(
    std::function<void(const std::vector<std::string>& dns, const std::string& container)> take) {
  // Both go with their views.
  new ObjectDrop(
      *tree_, [this](const QModelIndex& index) { return tree_model_->ObjectAt(index).dn; }, take);
  new ObjectDrop(
      list_->view(),
      [this](const QModelIndex& index) {
        const session::DirectoryObject& object = list_->ObjectAt(index);
        return object.kind.is_container ? object.dn : std::string();
      },
      std::move(take));
}

void DirectoryPane::RefreshList() { listing_->Refresh(); }

void DirectoryPane::Refresh() {
  if (!tree_model_) return;
  // While one refresh is under way no container is current; another one leads to the same.
  if (tree_->currentIndex().isValid()) refreshed_path_.clear();
  for (QModelIndex step = tree_->currentIndex(); step.parent().isValid(); step = step.parent()) {
    refreshed_path_.insert(refreshed_path_.begin(), tree_model_->ObjectAt(step).dn);
  }
  tree_model_->Reload();
  FollowPath(tree_model_->BaseIndex(), refreshed_path_);
}

void DirectoryPane::FollowPath(const QModelIndex& container, std::vector<std::string> path) {
  tree_->expand(container);
  // Nothing is current until the path has been followed, so that this shows the container anew.
  if (path.empty()) return tree_->setCurrentIndex(container);
  const std::string next = path.front();
  path.erase(path.begin());
  tree_model_->FindChild(container, next,
                         [this, from = QPersistentModelIndex(container),
                          path = std::move(path)](const QModelIndex& found) mutable {
                           // The administrator may have gone elsewhere meanwhile.
                           if (tree_->currentIndex().isValid()) return;
                           if (found.isValid()) return FollowPath(found, std::move(path));
                           tree_->setCurrentIndex(from);
                         });
}

bool DirectoryPane::IsReading() const {
  return listing_->state() == ContainerListing::State::kReading ||
         (tree_model_ && tree_model_->IsReading());
}

void DirectoryPane::StopReading() { listing_->Stop(); }

QString DirectoryPane::EmptyText() const {
  using enum ContainerListing::State;
  if (!list_reader_) {
    return QStringLiteral(
        "Nothing is open. \"Open Directory File\" and \"Connect to Domain\" are in the menu "
        "\"File\".");
  }
  if (!answer_error_.isEmpty()) return answer_error_;
  if (list_->Count() > 0) {
    return QStringLiteral(
               "No object here has \"%1\" in a column. Without a text in \"Filter\" all of them "
               "are "
               "shown.")
        .arg(list_->filter().text());
  }
  // What is being read comes in a moment.
  if (state() == kReading) return {};
  if (state() != kWhole) return CountText();
  return find_->IsAsking() ? QStringLiteral("Nothing was found.")
                           : QStringLiteral("There is nothing in this container.");
}

QString DirectoryPane::CountText() const {
  if (!answer_error_.isEmpty()) return answer_error_;
  const int shown = list_->ShownCount();
  const int all = list_->Count();
  const std::size_t selected = list_->Selection().size();
  QString count = all == 1 ? QStringLiteral("1 object") : QStringLiteral("%1 objects").arg(all);
  if (shown != all) count = QStringLiteral("%1 of %2").arg(shown).arg(count);
  if (selected > 0) count += QStringLiteral(", %1 selected").arg(selected);
  switch (listing_->state()) {
    case ContainerListing::State::kReading:
      return count + QStringLiteral(", reading...");
    case ContainerListing::State::kStopped:
      return count + QStringLiteral(", stopped before the end");
    case ContainerListing::State::kCutShort:
      return count + QStringLiteral(", the directory gives no more");
    case ContainerListing::State::kTooMany:
      return count + QStringLiteral(", there are more than are shown");
    case ContainerListing::State::kFailed:
      return count + QStringLiteral(", the rest cannot be read");
    case ContainerListing::State::kWhole:
      break;
  }
  return count + MissingText(listing_->ending());
}

}  // namespace pelora::console
