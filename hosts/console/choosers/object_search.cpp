// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/choosers/object_search.h"

#include <mutex>
#include <utility>

#include "hosts/console/choosers/folder_name.h"
#include "hosts/console/qt_text.h"

namespace pelora::console {
namespace {

QString FirstValue(const ldap::Entry& entry, std::string_view attribute) {
  const auto found = entry.attributes.find(attribute);
  if (found == entry.attributes.end() || found->second.empty()) return {};
  return ToQString(found->second.front());
}

FoundObject FoundObjectOf(const ldap::Entry& entry) {
  FoundObject found{.object = ObjectOf(entry),
                    .logon_name = FirstValue(entry, "sAMAccountName"),
                    .mail = FirstValue(entry, "mail"),
                    .folder = {}};
  // A domain's name says where it is.
  if (found.object.kind.icon != ObjectIcon::kDomain) found.folder = FolderOf(entry.dn);
  return found;
}

}  // namespace

/// The part that works on the search's thread.
class ObjectSearch::Worker final : public QObject {
 public:
  Worker(ObjectSearch& owner, ldap::StoreOpener opener)
      : owner_(owner), opener_(std::move(opener)) {}

  void Run(const std::stop_token& stop, const ObjectQuery& query) {
    if (stop.stop_requested()) return;
    const SearchEnd end = Search(stop, query);
    // The next search opens the directory anew: the connection may have been lost.
    if (end.reason == SearchEnd::Reason::kFailed && !stop.stop_requested()) store_.reset();
    Post([&owner = owner_, stop, end] { owner.Finish(stop, end); });
  }

 private:
  /// What one search has found and the user interface has not fetched yet.
  class Inbox {
   public:
    /// Whether the other side is to be told that there is something to fetch.
    [[nodiscard]] bool Add(FoundObject object) {
      const std::lock_guard lock(mutex_);
      objects_.push_back(std::move(object));
      return !std::exchange(is_announced_, true);
    }
    [[nodiscard]] std::vector<FoundObject> Fetch() {
      const std::lock_guard lock(mutex_);
      is_announced_ = false;
      return std::exchange(objects_, {});
    }

   private:
    std::mutex mutex_;
    std::vector<FoundObject> objects_;
    bool is_announced_ = false;
  };

  /// Lets the user interface's thread do something, if it still listens.
  template <class Action>
  void Post(Action action) {
    QMetaObject::invokeMethod(&owner_.receiver_, std::move(action), Qt::QueuedConnection);
  }

  SearchEnd Search(const std::stop_token& stop, const ObjectQuery& query) {
    const auto inbox = std::make_shared<Inbox>();
    ldap::Entry root;
    ldap::StoreStatus status = store_ ? ldap::StoreStatus{} : opener_(store_, stop);
    if (!status.Ok()) return EndOf(status);
    store_->StopOn(stop);
    status = store_->ReadRoot(root);
    if (!status.Ok()) return EndOf(status);
    std::size_t count = 0;
    bool has_more = false;
    const auto take = [&](const ldap::Entry& entry) {
      if (stop.stop_requested()) return false;
      FoundObject found = FoundObjectOf(entry);
      if (found.object.kind.is_internal) return true;
      has_more = count == query.limit;
      if (has_more) return false;
      ++count;
      // One announcement stands for all that is found until it arrives.
      if (inbox->Add(std::move(found))) {
        Post([&owner = owner_, stop, inbox] { owner.Deliver(stop, inbox->Fetch()); });
      }
      return true;
    };
    const QString base = FirstValue(root, "defaultNamingContext");
    status = store_->Search(
        {.base = ToUtf8(base),
         .scope = ldap::SearchScope::kSubtree,
         .filter = query.filter,
         .attributes = {"objectClass", "name", "description", "sAMAccountName", "mail"}},
        take);
    if (has_more) return {SearchEnd::Reason::kOwnLimit, {}};
    return EndOf(status);
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

void ObjectSearch::Start(ObjectQuery query) {
  Stop();
  stop_ = std::stop_source();
  is_running_ = true;
  QMetaObject::invokeMethod(
      worker_,
      [worker = worker_, stop = stop_.get_token(), query = std::move(query)] {
        worker->Run(stop, query);
      },
      Qt::QueuedConnection);
}

void ObjectSearch::Stop() {
  stop_.request_stop();
  is_running_ = false;
}

void ObjectSearch::Deliver(const std::stop_token& stop, std::vector<FoundObject> objects) const {
  if (!stop.stop_requested() && on_found) on_found(std::move(objects));
}

void ObjectSearch::Finish(const std::stop_token& stop, const SearchEnd& end) {
  if (stop.stop_requested()) return;
  is_running_ = false;
  if (on_finished) on_finished(end);
}

}  // namespace pelora::console
