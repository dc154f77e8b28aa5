// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QThread>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <utility>
#include <vector>

#include "hosts/ldap/store_opener.h"
#include "hosts/session/directory_browser.h"
#include "hosts/session/search_end.h"

namespace pelora::console {

/// Lists containers, and reads what else is asked for, on a thread of its own, over a store of its
/// own, one after the other in the order of the calls; what is found is handed over at once, as
/// fast as the user interface takes it: no more than `kMostAtATime` items by one call, and the
/// reader's thread waits while as many have not been fetched.
///
/// Everything here happens on the thread of the user interface, the callbacks too. Destroying the
/// reader ends what it was asked for without a word; the request under way is given up, answered or
/// not.
class DirectoryReader final {
 public:
  static constexpr std::size_t kMostAtATime = 1000;

  template <class Item>
  using ItemSink = std::function<void(std::vector<Item> items)>;
  using FoundSink = ItemSink<session::DirectoryObject>;
  /// What is done on the reader's thread: gives items to `take` until that is false.
  template <class Item>
  using Work = std::function<session::SearchEnd(ldap::IDirectoryStore& store,
                                                const std::function<bool(Item item)>& take)>;
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
  /// The same for anything that is read item by item.
  template <class Item>
  [[nodiscard]] Reading StartWork(Work<Item> work, ItemSink<Item> on_found, EndSink on_end) {
    const auto inbox = std::make_shared<Inbox<Item>>();
    return Begin({.work =
                      [inbox, work = std::move(work)](ldap::IDirectoryStore& store,
                                                      const OtherSide& other_side) {
                        return work(store, [&](Item item) {
                          if (inbox->Add(std::move(item), other_side.stop)) other_side.announce();
                          return !other_side.stop.stop_requested();
                        });
                      },
                  .deliver =
                      [inbox, on_found = std::move(on_found)] {
                        std::vector<Item> items = inbox->Fetch();
                        if (!items.empty()) on_found(std::move(items));
                      },
                  .on_end = std::move(on_end)});
  }

 private:
  class Worker;
  struct Task;

  /// What has been found and the user interface has not fetched yet.
  template <class Item>
  class Inbox {
   public:
    /// Waits for room, unless nothing is wanted any more. Whether the other side is to be told that
    /// there is something to fetch: one announcement stands for all that is found until it arrives.
    [[nodiscard]] bool Add(Item item, const std::stop_token& stop) {
      std::unique_lock lock(mutex_);
      if (items_.size() >= kMostAtATime) {
        fetched_.wait(lock, stop, [this] { return items_.size() < kMostAtATime; });
      }
      items_.push_back(std::move(item));
      return !std::exchange(is_announced_, true);
    }
    [[nodiscard]] std::vector<Item> Fetch() {
      const std::lock_guard lock(mutex_);
      is_announced_ = false;
      fetched_.notify_one();
      return std::exchange(items_, {});
    }

   private:
    std::mutex mutex_;
    std::condition_variable_any fetched_;
    std::vector<Item> items_;
    bool is_announced_ = false;
  };

  /// The user interface as the reader's thread sees it.
  struct OtherSide {
    std::function<void()> announce;
    /// Told when it does not listen any more.
    std::stop_token stop;
  };
  struct Order {
    /// Called on the reader's thread, the others on the user interface's.
    std::function<session::SearchEnd(ldap::IDirectoryStore& store, const OtherSide& other_side)>
        work;
    std::function<void()> deliver;
    EndSink on_end;
  };
  [[nodiscard]] Reading Begin(Order order);

  /// Of everything that is asked of the reader.
  std::stop_source over_;
  QThread thread_;
  /// Lives on `thread_`.
  Worker* worker_;
  /// Where the worker's calls arrive; those that have not arrived go with it.
  QObject receiver_;
};

}  // namespace pelora::console
