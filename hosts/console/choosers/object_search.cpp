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
      : owner_(owner), wanted_(owner.wanted_), opener_(std::move(opener)) {}

  void Run(unsigned number, const ObjectQuery& query) {
    if (!IsWanted(number)) return;
    const SearchEnd end = Search(number, query);
    // The next search opens the directory anew: the connection may have been lost.
    if (end.reason == SearchEnd::Reason::kFailed) store_.reset();
    Post([&owner = owner_, number, end] { owner.Finish(number, end); });
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

  [[nodiscard]] bool IsWanted(unsigned number) const { return *wanted_ == number; }

  /// Lets the user interface's thread do something, if it still listens.
  template <class Action>
  void Post(Action action) {
    QMetaObject::invokeMethod(&owner_.receiver_, std::move(action), Qt::QueuedConnection);
  }

  SearchEnd Search(unsigned number, const ObjectQuery& query) {
    const auto inbox = std::make_shared<Inbox>();
    ldap::Entry root;
    ldap::StoreStatus status = store_ ? ldap::StoreStatus{} : opener_(store_);
    if (status.Ok()) status = store_->ReadRoot(root);
    if (!status.Ok()) return EndOf(status);
    std::size_t count = 0;
    bool has_more = false;
    const auto take = [&](const ldap::Entry& entry) {
      if (!IsWanted(number)) return false;
      FoundObject found = FoundObjectOf(entry);
      if (found.object.kind.is_internal) return true;
      has_more = count == query.limit;
      if (has_more) return false;
      ++count;
      // One announcement stands for all that is found until it arrives.
      if (inbox->Add(std::move(found))) {
        Post([&owner = owner_, number, inbox] { owner.Deliver(number, inbox->Fetch()); });
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
  Ticket wanted_;
  ldap::StoreOpener opener_;
  std::unique_ptr<ldap::IDirectoryStore> store_;
};

ObjectSearch::ObjectSearch(ldap::StoreOpener opener)
    : wanted_(std::make_shared<std::atomic<unsigned>>(0)),
      worker_(new Worker(*this, std::move(opener))) {
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
  const unsigned number = ++*wanted_;
  is_running_ = true;
  QMetaObject::invokeMethod(
      worker_, [worker = worker_, number, query = std::move(query)] { worker->Run(number, query); },
      Qt::QueuedConnection);
}

void ObjectSearch::Stop() {
  ++*wanted_;
  is_running_ = false;
}

void ObjectSearch::Deliver(unsigned number, std::vector<FoundObject> objects) {
  if (number == *wanted_ && on_found) on_found(std::move(objects));
}

void ObjectSearch::Finish(unsigned number, const SearchEnd& end) {
  if (number != *wanted_) return;
  is_running_ = false;
  if (on_finished) on_finished(end);
}

}  // namespace pelora::console
