// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>

class QHelpEvent;

namespace pelora::console {

/// A label for a text of any length, which widens no window: what there is no room for ends in dots
/// or, where the label breaks its text, is cut off. With the mouse on it the whole text is shown.
/// The text is never taken for markup, and shown as `Readable` has it.
class NameLabel : public QLabel {
 public:
  explicit NameLabel(QWidget* parent = nullptr);

  void setText(const QString& text);
  /// As much of the text as there is room for, with dots where there is more.
  [[nodiscard]] QString ShownText() const;
  [[nodiscard]] QSize minimumSizeHint() const override;
  [[nodiscard]] int heightForWidth(int width) const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QSize RoomOfText(int width) const;
};

/// Shows the whole of a text for which a widget has no room, where the mouse rests.
void ShowWholeText(QWidget& widget, const QHelpEvent& event, const QString& text);

}  // namespace pelora::console
