// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMimeData>
#include <QObject>
#include <functional>
#include <string>
#include <vector>

class QTreeView;
class QDropEvent;

namespace pelora::console {

/// The names of objects as they are dragged from one view of the window to another.
[[nodiscard]] QMimeData* DraggedObjects(const std::vector<std::string>& dns);
/// What is dragged; nothing when it is something else.
[[nodiscard]] std::vector<std::string> ObjectsIn(const QMimeData& data);

/// Lets objects be dropped on the containers of a view.
class ObjectDrop final : public QObject {
 public:
  /// The container at a row of the view; empty for a row of anything else.
  using ContainerAt = std::function<std::string(const QModelIndex& index)>;
  using Dropped =
      std::function<void(const std::vector<std::string>& dns, const std::string& container)>;

  /// `on_dropped` is called when the drop is over: it may ask.
  ObjectDrop(QTreeView& view, ContainerAt container_at, Dropped on_dropped);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Where something is being dropped; empty where it cannot be.
  [[nodiscard]] std::string TargetOf(const QDropEvent& event) const;

  QTreeView& view_;
  ContainerAt container_at_;
  Dropped on_dropped_;
};

}  // namespace pelora::console
