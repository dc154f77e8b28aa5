// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/beside_thread.h"

#include <system_error>
#include <utility>

namespace pelora::ldap {

BesideThread::BesideThread() {
  try {
    thread_ = std::thread([this] { Serve(); });
  } catch (const std::system_error&) {
    // The system gives no more of them: slower, and right all the same.
  }
}

BesideThread::~BesideThread() {
  if (!thread_.joinable()) return;
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
  if (!thread_.joinable()) DoWork();
  changed_.notify_all();
}

void BesideThread::Await() {
  std::unique_lock alone(mutex_);
  changed_.wait(alone, [this] { return !work_; });
  if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
}

void BesideThread::Serve() {
  while (true) {
    {
      std::unique_lock alone(mutex_);
      changed_.wait(alone, [this] { return work_ || is_over_; });
      if (!work_) return;
    }
    DoWork();
    changed_.notify_all();
  }
}

void BesideThread::DoWork() {
  std::exception_ptr thrown;
  try {
    work_();
  } catch (...) {
    thrown = std::current_exception();
  }
  const std::lock_guard alone(mutex_);
  thrown_ = thrown;
  work_ = nullptr;
}

}  // namespace pelora::ldap
