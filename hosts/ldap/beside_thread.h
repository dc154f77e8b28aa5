// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace pelora::ldap {

/// A thread that does one thing after the other beside the one that owns it. Where the system gives
/// no thread, each thing is done by the owner's while it begins.
class BesideThread {
 public:
  BesideThread();
  BesideThread(const BesideThread&) = delete;
  BesideThread& operator=(const BesideThread&) = delete;
  /// Waits for what is under way; what it throws is lost.
  ~BesideThread();

  /// Begins with something; nothing else is under way.
  void Begin(std::function<void()> work);
  /// Waits for its end, and throws what it has thrown.
  void Await();

 private:
  void Serve();
  /// What it throws is kept.
  void DoWork();

  std::mutex mutex_;
  std::condition_variable changed_;
  /// What is to be done, until it is done.
  std::function<void()> work_;
  std::exception_ptr thrown_;
  bool is_over_ = false;
  std::thread thread_;
};

}  // namespace pelora::ldap
