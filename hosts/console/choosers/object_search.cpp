// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/choosers/object_search.h"

#include <mutex>
#include <utility>

#include "hosts/console/reading/post.h"
#include "hosts/console/text/exception_text.h"

namespace pelora::console {
namespace {

/// How a search ends that an exception ends, which is being handled.
session::ListingEnd Failed() {
  return {.end = {session::SearchEnd::Reason::kFailed, TextOfException()}};
}

}  // namespace

/// The part that works on the search's thread.
class ObjectSearch::Worker final : public QObject {
 public:
  Worker(ObjectSearch& owner, ldap::StoreOpener opener)
      : owner_(owner), opener_(std::move(opener)) {}

  void Run(const std::stop_token& stop, const session::ObjectQuery& query) {
    if (stop.stop_requested()) return;
    session::ListingEnd ending;
    try {
      ending = Search(stop, query);
    } catch (...) {
      ending = Failed();
    }
    // The next search opens the directory anew: the connection may have been lost.
    const bool has_failed = ending.end.reason == session::SearchEnd::Reason::kFailed;
    if (has_failed && !stop.stop_requested()) store_.reset();
    Post([&owner = owner_, stop, ending] { owner.Finish(stop, ending); });
  }

 private:
  /// What one search has found and the user interface has not fetched yet.
  class Inbox {
   public:
    /// Whether the other side is to be told that there is something to fetch.
    [[nodiscard]] bool Add(session::FoundObject object) {
      const std::lock_guard lock(mutex_);
      objects_.push_back(std::move(object));
      return !std::exchange(is_announced_, true);
    }
    [[nodiscard]] std::vector<session::FoundObject> Fetch() {
      const std::lock_guard lock(mutex_);
      is_announced_ = false;
      return std::exchange(objects_, {});
    }

   private:
    std::mutex mutex_;
    std::vector<session::FoundObject> objects_;
    bool is_announced_ = false;
  };

  /// Lets the user interface's thread do something, if it still listens.
  template <class Action>
  void Post(const Action& action) {
    PostSurely(owner_.receiver_, action);
  }

  session::ListingEnd Search(const std::stop_token& stop, const session::ObjectQuery& query) {
    const auto inbox = std::make_shared<Inbox>();
    if (const auto status = store_ ? ldap::StoreStatus{} : opener_(store_, stop); !status.Ok()) {
      return {.end = session::EndOf(status)};
    }
    store_->StopOn(stop);
    return session::FindObjects(*store_, query, [&](session::FoundObject found) {
      if (stop.stop_requested()) return false;
      // One announcement stands for all that is found until it arrives.
      if (inbox->Add(std::move(found))) {
        Post([&owner = owner_, stop, inbox] { owner.Deliver(stop, inbox->Fetch()); });
      }
      return true;
    });
  }

  ObjectSearch& owner_;
  ldap::StoreOpener opener_;
  std::unique_ptr<ldap::IDirectoryStore> store_;
};

ObjectSearch::ObjectSearch(ldap::StoreOpener opener)
    : worker_(new Worker(*this, std::move(opener))) {
  worker_->moveToThread(&thread_);
  // Its store ends where it was used.
  QObject::connect(&thread_, &QThread::finished, worker_, &QObject::deleteLater);
  thread_.start();
}

ObjectSearch::~ObjectSearch() {
  Stop();
  thread_.quit();
  thread_.wait();
}

void ObjectSearch::Start(session::ObjectQuery query) {
  Stop();
  stop_ = std::stop_source();
  QMetaObject::invokeMethod(
      worker_,
      [worker = worker_, stop = stop_.get_token(), query = std::move(query)] {
        worker->Run(stop, query);
      },
      Qt::QueuedConnection);
  is_running_ = true;
}

void ObjectSearch::Stop() {
  stop_.request_stop();
  is_running_ = false;
}

void ObjectSearch::Deliver(const std::stop_token& stop, std::vector<session::FoundObject> objects) {
  if (stop.stop_requested() || !on_found) return;
  try {
    on_found(std::move(objects));
  } catch (...) {
    // What was lost on the way must not be missing unseen.
    Finish(stop, Failed());
    stop_.request_stop();
  }
}

void ObjectSearch::Finish(const std::stop_token& stop, const session::ListingEnd& ending) {
  if (stop.stop_requested()) return;
  is_running_ = false;
  if (on_finished) on_finished(ending);
}

}  // namespace pelora::console
