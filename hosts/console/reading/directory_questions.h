// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

#include "hosts/ldap/store_opener.h"

namespace pelora::console {

/// Asks a directory small questions beside the window, one after the other, over a store of its
/// own.
///
/// Answers arrive on the thread of the user interface. Destroying the object ends what it was asked
/// without a word; the request under way is given up, answered or not. A directory that cannot be
/// opened answers nothing.
class DirectoryQuestions final {
 public:
  /// What is done with an answer, on the thread of the user interface.
  using Answer = std::function<void()>;
  /// Asks the store, on another thread.
  using Question = std::function<Answer(ldap::IDirectoryStore& store)>;

  explicit DirectoryQuestions(ldap::StoreOpener opener);
  ~DirectoryQuestions();
  DirectoryQuestions(const DirectoryQuestions&) = delete;
  DirectoryQuestions& operator=(const DirectoryQuestions&) = delete;

  void Ask(Question question);
  /// Whether an answer is awaited.
  [[nodiscard]] bool IsAsking() const { return awaited_ > 0; }

 private:
  void Work(const std::stop_token& stop);

  ldap::StoreOpener opener_;
  std::mutex mutex_;
  std::condition_variable_any wakes_;
  std::deque<Question> questions_;
  /// On the thread of the user interface only.
  int awaited_ = 0;
  /// Where answers arrive; those that have not arrived go with it.
  QObject receiver_;
  std::jthread thread_;
};

}  // namespace pelora::console
