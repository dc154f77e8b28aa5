// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <QWidget>
#include <cstdint>
#include <vector>

namespace pelora::console {

/// What a control is marked as.
enum class MarkKind : std::uint8_t {
  /// A bar before it.
  kChanged,
  /// A bar and a broken frame.
  kOdd,
  /// A thick bar and a frame.
  kWrong,
};

struct Mark {
  QPointer<QWidget> control;
  MarkKind kind = MarkKind::kChanged;
};

/// What is said within a control, behind its text.
struct Hint {
  QPointer<QWidget> control;
  QString text;
};

/// Marks on the controls of a page, drawn over the page by a pane that takes neither the mouse nor
/// the keyboard: the page's own layout stays what it is. Each kind has a shape of its own, beside
/// its colour.
class PageMarks final : public QWidget {
  Q_OBJECT

 public:
  /// Lies over `page`, in its parent.
  explicit PageMarks(QWidget& page);

  void SetMarks(std::vector<Mark> marks, std::vector<Hint> hints);
  [[nodiscard]] const std::vector<Mark>& marks() const { return marks_; }
  [[nodiscard]] const std::vector<Hint>& hints() const { return hints_; }

  bool eventFilter(QObject* object, QEvent* event) override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QWidget& page_;
  std::vector<Mark> marks_;
  std::vector<Hint> hints_;
};

}  // namespace pelora::console
