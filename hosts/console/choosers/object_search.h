// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QThread>
#include <cstddef>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

#include "hosts/ldap/search_place.h"
#include "hosts/ldap/store_opener.h"
#include "hosts/session/find/object_search.h"

namespace pelora::console {

/// Searches a directory on a thread of its own, over a store of its own, one search at a time; what
/// is found is handed over at once, as fast as the user interface takes it.
///
/// Everything here happens on the thread of the user interface, the callbacks too. After `Start` or
/// `Stop` nothing of an earlier search arrives any more; its request is given up, answered or not.
/// Destroying the object stops it too.
class ObjectSearch final {
 public:
  /// `opener` is called on the search's thread, when the first search begins; `find_places`, which
  /// may be none, after it.
  explicit ObjectSearch(ldap::StoreOpener opener, ldap::PlaceFinder find_places = {});
  ~ObjectSearch();
  ObjectSearch(const ObjectSearch&) = delete;
  ObjectSearch& operator=(const ObjectSearch&) = delete;

  /// `place` is one of those that were found: 0 is the directory's own domain.
  void Start(session::ObjectQuery query, std::size_t place = 0);
  void Stop();
  [[nodiscard]] bool IsRunning() const { return is_running_; }

  std::function<void(std::vector<session::FoundObject> objects)> on_found;
  std::function<void(const session::ListingEnd& ending)> on_finished;
  /// Where else may be searched: the places' domains, the directory's own first. Is told once, and
  /// not at all where there is no other.
  std::function<void(std::vector<std::string> domains)> on_places;

 private:
  class Worker;

  void Deliver(const std::stop_token& stop, std::vector<session::FoundObject> objects);
  void Finish(const std::stop_token& stop, const session::ListingEnd& ending);
  void Tell(std::vector<std::string> domains);

  /// Of the latest search.
  std::stop_source stop_{std::nostopstate};
  bool is_running_ = false;
  QThread thread_;
  /// Lives on `thread_`.
  Worker* worker_;
  /// Where the worker's calls arrive; those that have not arrived go with it.
  QObject receiver_;
};

}  // namespace pelora::console
