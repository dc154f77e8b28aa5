// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/hint_label.h"

#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"

namespace pelora::console {

HintLabel::HintLabel(const char* name, int lines, QWidget* parent) : NameLabel(parent) {
  setObjectName(QLatin1String(name));
  setWordWrap(true);
  setAlignment(Qt::AlignLeading | Qt::AlignTop);
  setMinimumHeight(lines * fontMetrics().lineSpacing());
}

void HintLabel::Say(const QString& text) {
  setText(Readable(text));
  if (isVisible()) GrowToTexts(*window());
}

}  // namespace pelora::console
