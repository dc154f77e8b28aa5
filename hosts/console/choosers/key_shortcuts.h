// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QShortcut>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <initializer_list>

namespace pelora::console {

/// Lets keys do something while a widget has the focus, in place of what they do otherwise.
inline void OnKeys(QWidget& widget, std::initializer_list<Qt::Key> keys,
                   const std::function<void()>& action) {
  for (const Qt::Key key : keys) {
    auto* shortcut =
        new QShortcut(QKeySequence(key), &widget, nullptr, nullptr, Qt::WidgetShortcut);
    QObject::connect(shortcut, &QShortcut::activated, &widget, action);
  }
}

/// Gives a view the menu of the right mouse button, and Ctrl+Shift+C, to copy distinguished names.
/// `names` gives those of what is selected.
inline void OfferNames(QWidget& view, const std::function<QStringList()>& names) {
  auto* const copy = new QAction(QStringLiteral("Copy D&istinguished Names"), &view);
  copy->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+C")));
  copy->setShortcutContext(Qt::WidgetShortcut);
  QObject::connect(copy, &QAction::triggered, &view, [names] {
    const QStringList selected = names();
    if (selected.isEmpty()) return;
    QGuiApplication::clipboard()->setText(selected.join(QLatin1Char('\n')));
  });
  view.addAction(copy);
  view.setContextMenuPolicy(Qt::ActionsContextMenu);
}

}  // namespace pelora::console
