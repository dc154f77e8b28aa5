// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/directory_reader.h"

#include <mutex>
#include <utility>

namespace pelora::console {

DirectoryReader::Reading& DirectoryReader::Reading::operator=(Reading&& other) noexcept {
  Stop();
  wanted_ = std::exchange(other.wanted_, nullptr);
  return *this;
}

void DirectoryReader::Reading::Stop() {
  if (wanted_) *wanted_ = false;
}

/// One listing as both threads see it.
struct DirectoryReader::Task {
  ListRequest request;
  std::shared_ptr<std::atomic<bool>> wanted;
  /// Called on the user interface's thread only.
  FoundSink on_found;
  EndSink on_end;

  std::mutex mutex;
  /// Found, and not yet fetched by the user interface.
  std::vector<DirectoryObject> found;
  bool is_announced = false;

  /// Whether the other side is to be told that there is something to fetch.
  [[nodiscard]] bool Add(DirectoryObject object) {
    const std::lock_guard lock(mutex);
    found.push_back(std::move(object));
    return !std::exchange(is_announced, true);
  }

  void Deliver() {
    std::vector<DirectoryObject> objects;
    {
      const std::lock_guard lock(mutex);
      is_announced = false;
      objects.swap(found);
    }
    if (*wanted && !objects.empty()) on_found(std::move(objects));
  }

  void Finish(const SearchEnd& end) {
    Deliver();
    if (wanted->exchange(false)) on_end(end);
  }
};

/// The part that works on the reader's thread.
class DirectoryReader::Worker final : public QObject {
 public:
  Worker(QObject& receiver, ldap::StoreOpener opener)
      : receiver_(receiver), opener_(std::move(opener)) {}

  void Run(const std::shared_ptr<Task>& task) {
    if (!*task->wanted) return;
    const SearchEnd end = EndOf(List(task));
    if (end.reason == SearchEnd::Reason::kFailed) store_.reset();
    Post([task, end] { task->Finish(end); });
  }

 private:
  /// Lets the user interface's thread do something, if it still listens.
  template <class Action>
  void Post(Action action) {
    QMetaObject::invokeMethod(&receiver_, std::move(action), Qt::QueuedConnection);
  }

  ldap::StoreStatus List(const std::shared_ptr<Task>& task) {
    ldap::StoreStatus status = store_ ? ldap::StoreStatus{} : opener_(store_);
    if (!status.Ok()) return status;
    const auto take = [&](DirectoryObject object) {
      // One announcement stands for all that is found until it arrives.
      if (task->Add(std::move(object))) Post([task] { task->Deliver(); });
      return task->wanted->load();
    };
    return DirectoryBrowser(*store_).ListChildren(task->request, take);
  }

  QObject& receiver_;
  ldap::StoreOpener opener_;
  std::unique_ptr<ldap::IDirectoryStore> store_;
};

DirectoryReader::DirectoryReader(ldap::StoreOpener opener)
    : worker_(new Worker(receiver_, std::move(opener))) {
  worker_->moveToThread(&thread_);
  // Its store ends where it was used.
  QObject::connect(&thread_, &QThread::finished, worker_, &QObject::deleteLater);
  thread_.start();
}

DirectoryReader::~DirectoryReader() {
  thread_.quit();
  thread_.wait();
}

DirectoryReader::Reading DirectoryReader::Start(ListRequest request, FoundSink on_found,
                                                EndSink on_end) {
  auto task = std::make_shared<Task>();
  task->request = std::move(request);
  task->wanted = std::make_shared<std::atomic<bool>>(true);
  task->on_found = std::move(on_found);
  task->on_end = std::move(on_end);
  QMetaObject::invokeMethod(
      worker_, [worker = worker_, task] { worker->Run(task); }, Qt::QueuedConnection);
  return Reading(task->wanted);
}

}  // namespace pelora::console
