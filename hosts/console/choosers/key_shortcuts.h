// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QShortcut>
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

}  // namespace pelora::console
