// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QApplication>
#include <cstdint>
#include <memory>
#include <mutex>
#include <set>
#include <string>

namespace pelora::console {

/// An application that outlives exceptions: one that comes out of the handling of an event ends
/// that and nothing else. The windows stay as they are, with everything that was typed in them, and
/// the person in front of them is told; where nobody is, the program ends with a sentence on
/// standard error and `kExitFailure`.
///
/// The toolkit's views are compiled without exceptions: one that passes through a view that draws
/// leaves it drawing for ever. What views ask for goes through `DrawnOrNothing`.
class GuardedApplication final : public QApplication {
 public:
  enum class Audience : std::uint8_t { kPerson, kNobody };

  GuardedApplication(int& argc, char** argv, Audience audience);
  ~GuardedApplication() override;

  /// On whatever thread.
  bool notify(QObject* receiver, QEvent* event) override;

  /// Tells of the exception being handled, as soon as the program waits for events again. To be
  /// called within a `catch` block, on whatever thread. While one is told of, others are only
  /// written to standard error; `is_repeated`: it comes of something that is done again and again,
  /// and the same is told once.
  void TellException(bool is_repeated) noexcept;
  /// The same of the program's application, where it is one of these.
  static void TellHere(bool is_repeated) noexcept;

 private:
  void Post(bool is_repeated);
  void Show(const std::string& reason, bool is_repeated);
  void SetMemoryAside() noexcept;

  Audience audience_;
  /// On the thread of the user interface only.
  bool is_showing_ = false;
  std::set<std::string> told_;
  std::mutex mutex_;
  /// To be given back where there is no other: telling takes some.
  std::unique_ptr<char[]> set_aside_;
};

/// What a view is to draw; nothing when making it ends in an exception, which is told.
template <class Make>
auto DrawnOrNothing(const Make& make) noexcept -> decltype(make()) {
  try {
    return make();
  } catch (...) {
    GuardedApplication::TellHere(true);
  }
  return decltype(make())();
}

/// Does what the toolkit asks for outside of all events: when the focus goes elsewhere. An
/// exception ends it and is told.
template <class Action>
void DoGuarded(const Action& action) noexcept {
  try {
    action();
  } catch (...) {
    GuardedApplication::TellHere(false);
  }
}

}  // namespace pelora::console
