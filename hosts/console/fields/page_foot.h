// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFrame>
#include <cstdint>
#include <functional>

class QLabel;
class QPushButton;

namespace pelora::console {

/// Something that is said of a page below it.
struct FootNote {
  enum class Level : std::uint8_t { kNothing, kHint, kOdd, kWrong };
  Level level = Level::kNothing;
  QString text;
  /// What can be done about it: the text of a button; empty where there is none.
  QString action{};
  std::function<void()> act{};
};

/// The line below a page in which is said what is wrong with what is typed on it. It keeps room for
/// two lines whether something is said or not, so that nothing moves.
class PageFoot final : public QFrame {
  Q_OBJECT

 public:
  explicit PageFoot(QWidget* parent);

  void Show(const FootNote& note);
  [[nodiscard]] const FootNote& note() const { return note_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void SetHeight();
  void ShowText();

  FootNote note_;
  QLabel* icon_;
  QLabel* text_;
  QPushButton* action_;
};

}  // namespace pelora::console
