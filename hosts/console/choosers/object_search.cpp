// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/choosers/object_search.h"

#include <mutex>
#include <utility>

#include "hosts/console/reading/in_order.h"
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
  Worker(ObjectSearch& owner, ldap::StoreOpener opener, ldap::PlaceFinder find_places)
      : owner_(owner), find_places_(std::move(find_places)) {
    places_.push_back({.place = {.domain = {}, .bases = {""}, .open = std::move(opener)}});
  }

  void Run(const std::stop_token& stop, const session::ObjectQuery& query, std::size_t place) {
    if (stop.stop_requested()) return;
    session::ListingEnd ending;
    try {
      ending = Search(stop, query, places_.at(place));
    } catch (...) {
      ending = Failed();
    }
    // The next search opens the directory anew: the connection may have been lost.
    const bool has_failed = ending.end.reason == session::SearchEnd::Reason::kFailed;
    if (has_failed && !stop.stop_requested()) places_.at(place).store.reset();
    Post([&owner = owner_, stop, ending] { owner.Finish(stop, ending); });
    if (!has_failed && !stop.stop_requested()) FindPlaces();
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

  /// A place, and what it is searched over once it has been.
  struct OpenPlace {
    ldap::SearchPlace place;
    std::unique_ptr<ldap::IDirectoryStore> store{};
  };

  session::ListingEnd Search(const std::stop_token& stop, const session::ObjectQuery& query,
                             OpenPlace& where) {
    const auto inbox = std::make_shared<Inbox>();
    if (where.store == nullptr) {
      const ldap::StoreStatus status = where.place.open(where.store, stop);
      if (!status.Ok()) return {.end = session::EndOf(status)};
    }
    where.store->StopOn(stop);
    const auto& bases = where.place.bases;
    return session::FindObjectsBelow(*where.store, bases, query, [&](session::FoundObject found) {
      if (stop.stop_requested()) return false;
      // One announcement stands for all that is found until it arrives.
      if (inbox->Add(std::move(found))) {
        Post([&owner = owner_, stop, inbox] { owner.Deliver(stop, inbox->Fetch()); });
      }
      return true;
    });
  }

  /// Once, beside what the person does with what has been found.
  void FindPlaces() {
    OpenPlace& own = places_.front();
    if (!find_places_ || own.store == nullptr) return;
    std::vector<ldap::SearchPlace> found;
    // A directory that does not say has one place until it does.
    if (!find_places_(*own.store, found).Ok()) return;
    find_places_ = {};
    std::vector<std::string> domains;
    for (std::size_t at = 0; at < found.size(); ++at) {
      domains.push_back(found[at].domain);
      if (at > 0) places_.push_back({.place = std::move(found[at])});
    }
    if (domains.size() < 2) return;
    Post([&owner = owner_, domains] { owner.Tell(domains); });
  }

  ObjectSearch& owner_;
  ldap::PlaceFinder find_places_;
  /// The directory's own domain first.
  std::vector<OpenPlace> places_;
};

ObjectSearch::ObjectSearch(ldap::StoreOpener opener, ldap::PlaceFinder find_places)
    : worker_(new Worker(*this, std::move(opener), std::move(find_places))) {
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

void ObjectSearch::Start(session::ObjectQuery query, std::size_t place) {
  Stop();
  stop_ = std::stop_source();
  QMetaObject::invokeMethod(
      worker_,
      InOrder([worker = worker_, stop = stop_.get_token(), query = std::move(query), place] {
        worker->Run(stop, query, place);
      }),
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

void ObjectSearch::Tell(std::vector<std::string> domains) {
  if (on_places) on_places(std::move(domains));
}

}  // namespace pelora::console
