// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/reading/directory_questions.h"

#include <memory>
#include <optional>
#include <utility>

#include "hosts/console/reading/post.h"
#include "hosts/ldap/known_root.h"

namespace pelora::console {

DirectoryQuestions::DirectoryQuestions(ldap::StoreOpener opener)
    : opener_(std::move(opener)), thread_([this](const std::stop_token& stop) { Work(stop); }) {}

DirectoryQuestions::~DirectoryQuestions() = default;

void DirectoryQuestions::Ask(Question question) {
  {
    const std::lock_guard lock(mutex_);
    questions_.push_back(std::move(question));
  }
  ++awaited_;
  wakes_.notify_one();
}

void DirectoryQuestions::Work(const std::stop_token& stop) {
  std::unique_ptr<ldap::IDirectoryStore> opened;
  // Most questions begin with what the directory says of itself.
  std::optional<ldap::KnownRoot> store;
  while (true) {
    Question question;
    {
      std::unique_lock lock(mutex_);
      if (!wakes_.wait(lock, stop, [this] { return !questions_.empty(); })) return;
      question = std::move(questions_.front());
      questions_.pop_front();
    }
    Answer answer;
    try {
      // The next question opens it anew: the connection may be back by then.
      if (!store && opener_(opened, stop).Ok()) store.emplace(*opened);
      if (store) {
        store->StopOn(stop);
        answer = question(*store);
      }
    } catch (...) {
      // As from a directory that cannot be opened.
      store.reset();
      opened.reset();
    }
    const auto tell = [this, answer = std::move(answer)] {
      --awaited_;
      if (answer) answer();
    };
    PostSurely(receiver_, tell);
  }
}

}  // namespace pelora::console
