// SPDX-License-Identifier: Apache-2.0
#pragma once

#if defined(__SANITIZE_THREAD__)
#include <sanitizer/tsan_interface.h>

#include <utility>
#endif

namespace pelora::console {

// The toolkit is not built for the thread sanitizer, which does not see that what is posted to a
// thread was finished before it is done there. It is told here, of each post by itself: what no
// post orders stays unordered for it. In any other build nothing of this is there.

#if defined(__SANITIZE_THREAD__)

/// An action that one thread posts and another does, or lets go of undone.
template <class Action>
class InOrder {
 public:
  explicit InOrder(Action action) : action_(std::move(action)) { __tsan_release(this); }
  InOrder(const InOrder& other) : action_(other.action_) { __tsan_release(this); }
  InOrder(InOrder&& other) noexcept : action_(std::move(other.action_)) { __tsan_release(this); }
  InOrder& operator=(const InOrder&) = delete;
  InOrder& operator=(InOrder&&) = delete;
  ~InOrder() { __tsan_acquire(this); }

  void operator()() {
    __tsan_acquire(this);
    action_();
    // The thread that posted it may be the last to let go of it.
    __tsan_release(this);
  }

 private:
  Action action_;
};

#else

template <class Action>
Action InOrder(Action action) {
  return action;
}

#endif

}  // namespace pelora::console
