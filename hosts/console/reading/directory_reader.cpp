// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/reading/directory_reader.h"

#include <mutex>
#include <utility>

namespace pelora::console {

DirectoryReader::Reading& DirectoryReader::Reading::operator=(Reading&& other) noexcept {
  Stop();
  stop_ = std::exchange(other.stop_, std::stop_source(std::nostopstate));
  return *this;
}

void DirectoryReader::Reading::Stop() { stop_.request_stop(); }

/// One listing as both threads see it.
struct DirectoryReader::Task {
  explicit Task(const std::stop_token& over) : on_over(over, [this] { stop.request_stop(); }) {}

  session::ListRequest request;
  /// Told when nothing more of it is wanted, and when it has ended.
  std::stop_source stop;
  /// Called on the user interface's thread only.
  FoundSink on_found;
  EndSink on_end;

  std::mutex mutex;
  /// Found, and not yet fetched by the user interface.
  std::vector<session::DirectoryObject> found;
  bool is_announced = false;
  /// With the reader this ends too.
  std::stop_callback<std::function<void()>> on_over;

  [[nodiscard]] bool IsWanted() const { return !stop.stop_requested(); }
  /// Whether the other side is to be told that there is something to fetch.
  [[nodiscard]] bool Add(session::DirectoryObject object) {
    const std::lock_guard lock(mutex);
    found.push_back(std::move(object));
    return !std::exchange(is_announced, true);
  }

  void Deliver() {
    std::vector<session::DirectoryObject> objects;
    {
      const std::lock_guard lock(mutex);
      is_announced = false;
      objects.swap(found);
    }
    if (IsWanted() && !objects.empty()) on_found(std::move(objects));
  }

  void Finish(const session::SearchEnd& end) {
    Deliver();
    if (stop.request_stop()) on_end(end);
  }
};

/// The part that works on the reader's thread.
class DirectoryReader::Worker final : public QObject {
 public:
  Worker(QObject& receiver, ldap::StoreOpener opener)
      : receiver_(receiver), opener_(std::move(opener)) {}

  void Run(const std::shared_ptr<Task>& task) {
    if (!task->IsWanted()) return;
    const session::SearchEnd end = session::EndOf(List(task));
    // What was stopped has not failed.
    if (end.reason == session::SearchEnd::Reason::kFailed && task->IsWanted()) store_.reset();
    Post([task, end] { task->Finish(end); });
  }

 private:
  /// Lets the user interface's thread do something, if it still listens.
  template <class Action>
  void Post(Action action) {
    QMetaObject::invokeMethod(&receiver_, std::move(action), Qt::QueuedConnection);
  }

  ldap::StoreStatus List(const std::shared_ptr<Task>& task) {
    const std::stop_token stop = task->stop.get_token();
    ldap::StoreStatus status = store_ ? ldap::StoreStatus{} : opener_(store_, stop);
    if (!status.Ok()) return status;
    store_->StopOn(stop);
    const auto take = [&](session::DirectoryObject object) {
      // One announcement stands for all that is found until it arrives.
      if (task->Add(std::move(object))) Post([task] { task->Deliver(); });
      return task->IsWanted();
    };
    return session::DirectoryBrowser(*store_).ListChildren(task->request, take);
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
  over_.request_stop();
  thread_.quit();
  thread_.wait();
}

DirectoryReader::Reading DirectoryReader::Start(session::ListRequest request, FoundSink on_found,
                                                EndSink on_end) {
  auto task = std::make_shared<Task>(over_.get_token());
  task->request = std::move(request);
  task->on_found = std::move(on_found);
  task->on_end = std::move(on_end);
  QMetaObject::invokeMethod(
      worker_, [worker = worker_, task] { worker->Run(task); }, Qt::QueuedConnection);
  return Reading(task->stop);
}

}  // namespace pelora::console
