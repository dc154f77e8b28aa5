// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QWidget>
#include <deque>
#include <functional>

namespace pelora::contract {

/// What is done in one modal window. When it returns the window has to be gone.
using ModalScript = std::function<void(QWidget& window)>;

/// Plays scripts, one each, to the modal windows that come up while it lives, from within the loop
/// of the window. A window that no script awaits, a script whose window never came and a window
/// left standing fail the test; none of them makes it hang.
class ModalScripts final : public QObject {
 public:
  ModalScripts();
  ~ModalScripts() override;

  void Add(ModalScript script) { scripts_.push_back(std::move(script)); }
  [[nodiscard]] std::size_t waiting() const { return scripts_.size(); }

  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void Play();

  std::deque<ModalScript> scripts_;
};

/// While it lives, windows of a name are no script's. The name stands for those that come up on a
/// slow machine only: "Please Wait", unless another one is given.
class PassedOver {
 public:
  explicit PassedOver(const char* name = "errand");
  ~PassedOver();
  PassedOver(const PassedOver&) = delete;
  PassedOver& operator=(const PassedOver&) = delete;
};

/// Brings a window to the front, as the desktop would, and waits until keys go to it. (The toolkit
/// calls a dialog active as soon as the window behind it is.)
void Activate(QWidget& window);

}  // namespace pelora::contract
