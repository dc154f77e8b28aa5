// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/container_tree_model.h"

#include <algorithm>

#include "hosts/console/collation.h"
#include "hosts/console/object_icons.h"
#include "hosts/console/qt_text.h"

namespace pelora::console {

struct ContainerTreeModel::Node {
  DirectoryObject object;
  Node* parent = nullptr;
  int row = 0;
  bool is_read = false;
  std::vector<std::unique_ptr<Node>> children;
};

ContainerTreeModel::ContainerTreeModel(DirectoryBrowser browser, DirectoryObject base,
                                       FailureSink on_failure)
    : browser_(browser), on_failure_(std::move(on_failure)), base_(std::make_unique<Node>()) {
  base_->object = std::move(base);
}

ContainerTreeModel::~ContainerTreeModel() = default;

ContainerTreeModel::Node* ContainerTreeModel::NodeAt(const QModelIndex& index) const {
  return static_cast<Node*>(index.internalPointer());
}

const DirectoryObject& ContainerTreeModel::ObjectAt(const QModelIndex& index) const {
  return NodeAt(index)->object;
}

QModelIndex ContainerTreeModel::BaseIndex() const { return createIndex(0, 0, base_.get()); }

void ContainerTreeModel::Reload() {
  beginResetModel();
  base_->children.clear();
  base_->is_read = false;
  endResetModel();
}

QModelIndex ContainerTreeModel::ChildOf(const QModelIndex& parent, const std::string& dn) {
  if (!parent.isValid()) return {};
  if (canFetchMore(parent)) fetchMore(parent);
  for (const auto& child : NodeAt(parent)->children) {
    if (child->object.dn == dn) return createIndex(child->row, 0, child.get());
  }
  return {};
}

QModelIndex ContainerTreeModel::index(int row, int column, const QModelIndex& parent) const {
  if (!hasIndex(row, column, parent)) return {};
  if (!parent.isValid()) return BaseIndex();
  return createIndex(row, column, NodeAt(parent)->children[static_cast<std::size_t>(row)].get());
}

QModelIndex ContainerTreeModel::parent(const QModelIndex& index) const {
  if (!index.isValid()) return {};
  Node* parent = NodeAt(index)->parent;
  return parent != nullptr ? createIndex(parent->row, 0, parent) : QModelIndex();
}

int ContainerTreeModel::rowCount(const QModelIndex& parent) const {
  if (!parent.isValid()) return 1;
  return static_cast<int>(NodeAt(parent)->children.size());
}

int ContainerTreeModel::columnCount(const QModelIndex& /*parent*/) const { return 1; }

QVariant ContainerTreeModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const DirectoryObject& object = ObjectAt(index);
  switch (role) {
    case Qt::DisplayRole:
      return object.name;
    case Qt::DecorationRole:
      return IconOf(object.kind.icon);
    case Qt::ToolTipRole:
      return object.description;
    case Qt::AccessibleDescriptionRole:
      return object.kind.type_text;
    default:
      return {};
  }
}

QVariant ContainerTreeModel::headerData(int /*section*/, Qt::Orientation /*orientation*/,
                                        int role) const {
  return role == Qt::DisplayRole ? QVariant(QStringLiteral("Containers")) : QVariant();
}

bool ContainerTreeModel::hasChildren(const QModelIndex& parent) const {
  return !parent.isValid() || !NodeAt(parent)->is_read || !NodeAt(parent)->children.empty();
}

bool ContainerTreeModel::canFetchMore(const QModelIndex& parent) const {
  return parent.isValid() && !NodeAt(parent)->is_read;
}

void ContainerTreeModel::fetchMore(const QModelIndex& parent) {
  Node* node = NodeAt(parent);
  node->is_read = true;
  std::vector<DirectoryObject> found;
  const ldap::StoreStatus status = browser_.ListChildren(node->object.dn, found);
  std::erase_if(found, [](const DirectoryObject& object) { return !object.kind.is_container; });
  const Collation order;
  std::ranges::sort(found, [&order](const DirectoryObject& left, const DirectoryObject& right) {
    return order.IsBefore(left.name, right.name);
  });
  if (!found.empty()) {
    beginInsertRows(parent, 0, static_cast<int>(found.size()) - 1);
    for (DirectoryObject& object : found) {
      auto child = std::make_unique<Node>();
      child->object = std::move(object);
      child->parent = node;
      child->row = static_cast<int>(node->children.size());
      node->children.push_back(std::move(child));
    }
    endInsertRows();
  }
  if (!status.Ok()) {
    node->is_read = false;
    on_failure_(node->object, ToQString(status.text));
  }
}

}  // namespace pelora::console
