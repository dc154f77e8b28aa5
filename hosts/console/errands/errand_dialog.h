// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <functional>

class QLabel;
class QProgressBar;
class QPushButton;

namespace pelora::console {

class NameLabel;

/// Says what the program is waiting for, how far it is, and takes Stop: the button, Escape or the
/// close box. It closes only when the one who waits takes it away.
class ErrandDialog final : public QDialog {
 public:
  ErrandDialog(const QString& what, QWidget* parent);

  /// How far it is; a total of 0: nobody knows.
  void ShowProgress(std::size_t done, std::size_t total) {
    ShowProgress(done, total, since_.elapsed());
  }
  /// The same, after so long.
  void ShowProgress(std::size_t done, std::size_t total, qint64 milliseconds);

  /// Stop was asked for; called once.
  std::function<void()> on_stop;

  /// Stop, not the end.
  void reject() override;

 private:
  NameLabel* what_ = nullptr;
  QLabel* left_ = nullptr;
  QProgressBar* bar_ = nullptr;
  QPushButton* stop_ = nullptr;
  QElapsedTimer since_;
};

/// What is left of a work of which so much is done after so long, in words for people: "about 2
/// minutes left". Empty while it cannot be said.
[[nodiscard]] QString TimeLeft(std::size_t done, std::size_t total, qint64 milliseconds);

}  // namespace pelora::console
