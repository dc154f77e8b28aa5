// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <cstddef>
#include <functional>

class QMenu;
class QWidget;

namespace pelora::console {

class PageCare;

/// What can be done with a field beside editing it, in the menu of its control and by keys: back to
/// what was read (Ctrl+R), the values of the objects (F2), and their removal.
class FieldMenu final : public QObject {
 public:
  /// `page` outlives it.
  explicit FieldMenu(PageCare& page);

  /// Offers it on a control from now on.
  void Watch(QWidget& control);

  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void Open(QWidget& control, std::size_t field, const QPoint& place);
  void ShowValues(QWidget& control, std::size_t field);

  PageCare& page_;
};

}  // namespace pelora::console
