// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QThread>
#include <functional>
#include <memory>
#include <stop_token>
#include <utility>
#include <vector>

#include "hosts/ldap/store_opener.h"
#include "hosts/session/directory_browser.h"
#include "hosts/session/search_end.h"

namespace pelora::console {

/// Lists containers on a thread of its own, over a store of its own, one after the other in the
/// order of the calls; what is found is handed over at once, as fast as the user interface takes
/// it.
///
/// Everything here happens on the thread of the user interface, the callbacks too. Destroying the
/// reader ends what it was asked for without a word; the request under way is given up, answered or
/// not.
class DirectoryReader final {
 public:
  using FoundSink = std::function<void(std::vector<session::DirectoryObject> objects)>;
  /// Called once, after the last objects.
  using EndSink = std::function<void(const session::SearchEnd& end)>;

  /// One listing. When it is dropped nothing of it arrives any more, and it is not read on.
  class Reading final {
   public:
    Reading() = default;
    ~Reading() { Stop(); }
    Reading(Reading&& other) noexcept
        : stop_(std::exchange(other.stop_, std::stop_source(std::nostopstate))) {}
    Reading& operator=(Reading&& other) noexcept;
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

    void Stop();
    /// Until the end has been told, or it was stopped.
    [[nodiscard]] bool IsRunning() const {
      return stop_.stop_possible() && !stop_.stop_requested();
    }

   private:
    friend class DirectoryReader;
    explicit Reading(std::stop_source stop) : stop_(std::move(stop)) {}

    std::stop_source stop_{std::nostopstate};
  };

  /// `opener` is called on the reader's thread, when the first listing begins, and again after one
  /// that failed: the connection may have been lost.
  explicit DirectoryReader(ldap::StoreOpener opener);
  ~DirectoryReader();
  DirectoryReader(const DirectoryReader&) = delete;
  DirectoryReader& operator=(const DirectoryReader&) = delete;

  [[nodiscard]] Reading Start(session::ListRequest request, FoundSink on_found, EndSink on_end);

 private:
  class Worker;
  struct Task;

  /// Of everything that is asked of the reader.
  std::stop_source over_;
  QThread thread_;
  /// Lives on `thread_`.
  Worker* worker_;
  /// Where the worker's calls arrive; those that have not arrived go with it.
  QObject receiver_;
};

}  // namespace pelora::console
