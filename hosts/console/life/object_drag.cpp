// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/life/object_drag.h"

#include <QDropEvent>
#include <QTreeView>
#include <algorithm>
#include <utility>

#include "hosts/ldap/name_key.h"

namespace pelora::console {
namespace {

constexpr const char* kKind = "application/x-pelora-objects";
/// Does not stand in a name: directories write it in hexadecimal.
constexpr char kBetween = '\n';

}  // namespace

QMimeData* DraggedObjects(const std::vector<std::string>& dns) {
  QByteArray names;
  for (const std::string& dn : dns) {
    if (!names.isEmpty()) names.append(kBetween);
    names.append(dn.data(), static_cast<qsizetype>(dn.size()));
  }
  auto* data = new QMimeData;
  data->setData(QLatin1String(kKind), names);
  return data;
}

std::vector<std::string> ObjectsIn(const QMimeData& data) {
  std::vector<std::string> dns;
  if (!data.hasFormat(QLatin1String(kKind))) return dns;
  for (const QByteArray& name : data.data(QLatin1String(kKind)).split(kBetween)) {
    if (!name.isEmpty()) dns.push_back(name.toStdString());
  }
  return dns;
}

ObjectDrop::ObjectDrop(QTreeView& view, ContainerAt container_at, Dropped on_dropped)
    : QObject(&view),
      view_(view),
      container_at_(std::move(container_at)),
      on_dropped_(std::move(on_dropped)) {
  view_.setDragEnabled(true);
  view_.setDefaultDropAction(Qt::MoveAction);
  view_.viewport()->setAcceptDrops(true);
  view_.viewport()->installEventFilter(this);
}

std::string ObjectDrop::TargetOf(const QDropEvent& event) const {
  const std::vector<std::string> dns = ObjectsIn(*event.mimeData());
  const QModelIndex index = view_.indexAt(event.position().toPoint());
  if (dns.empty() || !index.isValid()) return {};
  std::string container = container_at_(index);
  const std::string there = ldap::NameKey(container);
  const bool is_itself = std::ranges::any_of(dns, [&there](const std::string& dn) {
    const std::string key = ldap::NameKey(dn);
    return key == there || ldap::LiesBelow(there, key);
  });
  return is_itself ? std::string() : container;
}

bool ObjectDrop::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  const bool is_drag = type == QEvent::DragEnter || type == QEvent::DragMove;
  if (!is_drag && type != QEvent::Drop) return QObject::eventFilter(watched, event);
  auto& drop = *static_cast<QDropEvent*>(event);
  // What is none of ours, a file say, is the window's.
  if (ObjectsIn(*drop.mimeData()).empty()) {
    event->ignore();
    return true;
  }
  const std::string container = TargetOf(drop);
  const bool is_possible = !container.empty();
  // Once it was let in, each place is asked for by itself.
  drop.setDropAction(Qt::MoveAction);
  drop.setAccepted(is_possible || type == QEvent::DragEnter);
  if (type == QEvent::Drop && is_possible) {
    // The view that was dragged from is not to take its rows out.
    drop.setDropAction(Qt::CopyAction);
    QMetaObject::invokeMethod(
        this, [this, dns = ObjectsIn(*drop.mimeData()), container] { on_dropped_(dns, container); },
        Qt::QueuedConnection);
  }
  return true;
}

}  // namespace pelora::console
