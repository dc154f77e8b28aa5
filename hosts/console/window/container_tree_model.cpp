// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/container_tree_model.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "hosts/console/life/object_drag.h"
#include "hosts/console/program/guarded_application.h"
#include "hosts/console/text/collation.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/object_icons.h"

namespace pelora::console {

struct ContainerTreeModel::Node {
  /// Somebody waits for a row right below this one.
  struct Wait {
    std::string dn;
    IndexSink sink;
  };

  explicit Node(session::DirectoryObject of, Node* above = nullptr)
      : object(std::move(of)), name(ToQString(object.name)), parent(above) {}

  session::DirectoryObject object;
  /// As the tree shows it.
  QString name;
  Node* parent;
  int row = 0;
  bool is_read = false;
  std::vector<std::unique_ptr<Node>> children;
  /// Found by the reading under way.
  std::vector<session::DirectoryObject> arrived;
  std::vector<Wait> waits;
  /// Last: what it tells of must not be told when the rest is gone.
  DirectoryReader::Reading reading;

  [[nodiscard]] bool IsReading() const {
    return reading.IsRunning() ||
           std::ranges::any_of(children, [](const auto& child) { return child->IsReading(); });
  }
};

ContainerTreeModel::ContainerTreeModel(DirectoryReader& reader, session::DirectoryObject base,
                                       FailureSink on_failure)
    : reader_(reader),
      on_failure_(std::move(on_failure)),
      base_(std::make_unique<Node>(std::move(base))) {}

ContainerTreeModel::~ContainerTreeModel() = default;

ContainerTreeModel::Node* ContainerTreeModel::NodeAt(const QModelIndex& index) const {
  return static_cast<Node*>(index.internalPointer());
}

const session::DirectoryObject& ContainerTreeModel::ObjectAt(const QModelIndex& index) const {
  return NodeAt(index)->object;
}

QModelIndex ContainerTreeModel::BaseIndex() const { return IndexOf(base_.get()); }

QModelIndex ContainerTreeModel::IndexOf(Node* node) const {
  return createIndex(node->row, 0, node);
}

bool ContainerTreeModel::IsReading() const { return base_->IsReading(); }

void ContainerTreeModel::Reload() {
  beginResetModel();
  base_ = std::make_unique<Node>(std::move(base_->object));
  endResetModel();
}

QModelIndex ContainerTreeModel::ChildIndex(const Node& node, const std::string& dn) const {
  for (const auto& child : node.children) {
    if (child->object.dn == dn) return IndexOf(child.get());
  }
  return {};
}

void ContainerTreeModel::FindChild(const QModelIndex& parent, const std::string& dn,
                                   IndexSink sink) {
  Node* node = NodeAt(parent);
  if (node->is_read) return sink(ChildIndex(*node, dn));
  node->waits.push_back({dn, std::move(sink)});
  Read(node);
}

QModelIndex ContainerTreeModel::index(int row, int column, const QModelIndex& parent) const {
  if (!hasIndex(row, column, parent)) return {};
  if (!parent.isValid()) return BaseIndex();
  return createIndex(row, column, NodeAt(parent)->children[static_cast<std::size_t>(row)].get());
}

QModelIndex ContainerTreeModel::parent(const QModelIndex& index) const {
  if (!index.isValid()) return {};
  Node* parent = NodeAt(index)->parent;
  return parent != nullptr ? IndexOf(parent) : QModelIndex();
}

int ContainerTreeModel::rowCount(const QModelIndex& parent) const {
  if (!parent.isValid()) return 1;
  return static_cast<int>(NodeAt(parent)->children.size());
}

int ContainerTreeModel::columnCount(const QModelIndex& /*parent*/) const { return 1; }

QVariant ContainerTreeModel::data(const QModelIndex& index, int role) const {
  return DrawnOrNothing([&] { return DataOf(index, role); });
}

QVariant ContainerTreeModel::DataOf(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const session::DirectoryObject& object = ObjectAt(index);
  switch (role) {
    case Qt::DisplayRole:
      return Readable(NodeAt(index)->name);
    case Qt::DecorationRole:
      return IconOf(object.kind.icon);
    case Qt::ToolTipRole:
      return PlainToolTip(ToQString(object.description));
    case Qt::AccessibleDescriptionRole:
      return ToQString(object.kind.type_text);
    default:
      return {};
  }
}

QVariant ContainerTreeModel::headerData(int /*section*/, Qt::Orientation /*orientation*/,
                                        int role) const {
  return role == Qt::DisplayRole ? QVariant(QStringLiteral("Containers")) : QVariant();
}

Qt::ItemFlags ContainerTreeModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractItemModel::flags(index);
  return index.parent().isValid() ? flags | Qt::ItemIsDragEnabled : flags;
}

QMimeData* ContainerTreeModel::mimeData(const QModelIndexList& indexes) const {
  std::vector<std::string> dns;
  for (const QModelIndex& index : indexes) dns.push_back(ObjectAt(index).dn);
  return DraggedObjects(dns);
}

bool ContainerTreeModel::hasChildren(const QModelIndex& parent) const {
  return !parent.isValid() || !NodeAt(parent)->is_read || !NodeAt(parent)->children.empty();
}

bool ContainerTreeModel::canFetchMore(const QModelIndex& parent) const {
  return parent.isValid() && !NodeAt(parent)->is_read && !NodeAt(parent)->reading.IsRunning();
}

void ContainerTreeModel::fetchMore(const QModelIndex& parent) { Read(NodeAt(parent)); }

void ContainerTreeModel::Read(Node* node) {
  if (node->reading.IsRunning()) return;
  node->arrived.clear();
  node->reading = reader_.Start(
      {.container = node->object.dn, .containers_only = true, .advanced = advanced_},
      [node](std::vector<session::DirectoryObject> objects) {
        std::ranges::move(objects, std::back_inserter(node->arrived));
      },
      [this, node](const session::SearchEnd& end) { Finish(node, end); });
}

void ContainerTreeModel::Finish(Node* node, const session::SearchEnd& end) {
  // What there is of a failed reading is not shown: nobody could tell what is missing.
  const bool is_read = end.reason != session::SearchEnd::Reason::kFailed;
  Children children = is_read ? ArrivedAt(*node) : Children();
  node->is_read = is_read;
  if (is_read) Insert(*node, std::move(children));
  node->arrived.clear();
  const session::DirectoryObject object = node->object;
  for (const Node::Wait& wait : std::exchange(node->waits, {})) {
    wait.sink(ChildIndex(*node, wait.dn));
  }
  if (end.reason == session::SearchEnd::Reason::kFailed) on_failure_(object, ToQString(end.text));
  if (end.reason == session::SearchEnd::Reason::kDirectoryLimit) {
    on_failure_(object, QStringLiteral("The directory does not give all of them."));
  }
}

ContainerTreeModel::Children ContainerTreeModel::ArrivedAt(Node& node) {
  Children children;
  children.reserve(node.arrived.size());
  for (session::DirectoryObject& object : node.arrived) {
    children.push_back(std::make_unique<Node>(std::move(object), &node));
  }
  const Collation order;
  std::ranges::sort(children, [&order](const auto& left, const auto& right) {
    return order.IsBefore(left->name, right->name);
  });
  for (int row = 0; auto& child : children) child->row = row++;
  return children;
}

void ContainerTreeModel::Insert(Node& node, Children children) {
  if (children.empty()) {
    // The view showed that it might be opened.
    Q_EMIT dataChanged(IndexOf(&node), IndexOf(&node));
    return;
  }
  beginInsertRows(IndexOf(&node), 0, static_cast<int>(children.size()) - 1);
  node.children = std::move(children);
  endInsertRows();
}

}  // namespace pelora::console
