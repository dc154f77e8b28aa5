// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/beside_thread.h"

#include <utility>

namespace pelora::ldap {

BesideThread::BesideThread() : thread_([this] { Serve(); }) {}

BesideThread::~BesideThread() {
  {
    const std::lock_guard alone(mutex_);
    is_over_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void BesideThread::Begin(std::function<void()> work) {
  {
    const std::lock_guard alone(mutex_);
    work_ = std::move(work);
  }
  changed_.notify_all();
}

void BesideThread::Await() {
  std::unique_lock alone(mutex_);
  changed_.wait(alone, [this] { return !work_; });
  if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
}

void BesideThread::Serve() {
  std::unique_lock alone(mutex_);
  while (true) {
    changed_.wait(alone, [this] { return work_ || is_over_; });
    if (!work_) return;
    alone.unlock();
    std::exception_ptr thrown;
    try {
      work_();
    } catch (...) {
      thrown = std::current_exception();
    }
    alone.lock();
    thrown_ = thrown;
    work_ = nullptr;
    changed_.notify_all();
  }
}

}  // namespace pelora::ldap
