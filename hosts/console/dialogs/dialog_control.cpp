// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/dialog_control.h"

#include "hosts/console/dialogs/control_styles.h"

namespace pelora::console {

DialogControl::DialogControl(const resources::DialogItem& item, QWidget& widget,
                             ControlEvents& events)
    : id_(item.id), widget_(widget), events_(events) {
  widget.setObjectName(QStringLiteral("control_%1").arg(item.id));
  widget.setEnabled((item.style & style::kDisabled) == 0);
  // Said aloud in either case: a widget nobody spoke of counts as hidden until its parent is shown.
  widget.setVisible((item.style & style::kVisible) != 0);
  if ((item.style & style::kTabStop) == 0 && (widget.focusPolicy() & Qt::TabFocus) != 0) {
    widget.setFocusPolicy(Qt::ClickFocus);
  }
}

}  // namespace pelora::console
