// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/reading/directory_reader.h"

#include <utility>

#include "hosts/console/reading/in_order.h"
#include "hosts/console/reading/post.h"
#include "hosts/console/text/exception_text.h"

namespace pelora::console {

DirectoryReader::Reading& DirectoryReader::Reading::operator=(Reading&& other) noexcept {
  Stop();
  stop_ = std::exchange(other.stop_, std::stop_source(std::nostopstate));
  return *this;
}

void DirectoryReader::Reading::Stop() { stop_.request_stop(); }

namespace {

session::SearchEnd FailedByException() {
  return {session::SearchEnd::Reason::kFailed, TextOfException()};
}

}  // namespace

/// One listing as both threads see it.
struct DirectoryReader::Task {
  explicit Task(const std::stop_token& over) : on_over(over, [this] { stop.request_stop(); }) {}

  Order order;
  /// Told when nothing more of it is wanted, and when it has ended.
  std::stop_source stop;
  /// With the reader this ends too.
  std::stop_callback<std::function<void()>> on_over;

  [[nodiscard]] bool IsWanted() const { return !stop.stop_requested(); }

  void Deliver() {
    if (!IsWanted()) return;
    try {
      order.deliver();
    } catch (...) {
      // What was lost on the way must not be missing unseen.
      if (stop.request_stop()) order.on_end(FailedByException());
    }
  }

  void Finish(const session::SearchEnd& end) {
    Deliver();
    if (stop.request_stop()) order.on_end(end);
  }
};

/// The part that works on the reader's thread.
class DirectoryReader::Worker final : public QObject {
 public:
  Worker(QObject& receiver, ldap::StoreOpener opener)
      : receiver_(receiver), opener_(std::move(opener)) {}

  void Run(const std::shared_ptr<Task>& task) {
    if (!task->IsWanted()) return;
    session::SearchEnd end;
    try {
      end = Do(task);
    } catch (...) {
      end = FailedByException();
    }
    // What was stopped has not failed.
    if (end.reason == session::SearchEnd::Reason::kFailed && task->IsWanted()) store_.reset();
    Post([task, end] { task->Finish(end); });
  }

 private:
  /// Lets the user interface's thread do something, if it still listens.
  template <class Action>
  void Post(const Action& action) {
    PostSurely(receiver_, action);
  }

  session::SearchEnd Do(const std::shared_ptr<Task>& task) {
    const std::stop_token stop = task->stop.get_token();
    const ldap::StoreStatus status = store_ ? ldap::StoreStatus{} : opener_(store_, stop);
    if (!status.Ok()) return session::EndOf(status);
    store_->StopOn(stop);
    return task->order.work(*store_,
                            {.announce = [&] { Post([task] { task->Deliver(); }); }, .stop = stop});
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
  using session::DirectoryObject;
  return StartWork<DirectoryObject>(
      [request = std::move(request)](ldap::IDirectoryStore& store,
                                     const std::function<bool(DirectoryObject)>& take) {
        return session::EndOf(session::DirectoryBrowser(store).ListChildren(request, take));
      },
      std::move(on_found), std::move(on_end));
}

DirectoryReader::Reading DirectoryReader::Begin(Order order) {
  auto task = std::make_shared<Task>(over_.get_token());
  task->order = std::move(order);
  QMetaObject::invokeMethod(worker_, InOrder([worker = worker_, task] { worker->Run(task); }),
                            Qt::QueuedConnection);
  return Reading(task->stop);
}

}  // namespace pelora::console
