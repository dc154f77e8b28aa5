// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/errands/qt_errands.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEventLoop>
#include <QPointer>
#include <QTimer>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

#include "hosts/console/errands/errand_dialog.h"
#include "hosts/console/reading/post.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {

using Clock = std::chrono::steady_clock;

/// How often the dialog looks how far it is.
constexpr std::chrono::milliseconds kGlance{100};

/// One errand as both threads see it.
class QtErrands::Task final : public session::IErrand {
 public:
  explicit Task(const Work& work) : work_(work) {}

  [[nodiscard]] std::stop_token stop() const override { return stop_.get_token(); }
  [[nodiscard]] std::stop_token give_up() const override { return give_up_.get_token(); }
  void Advance(std::size_t done, std::size_t total) override {
    done_ = done;
    total_ = total;
  }
  [[nodiscard]] std::size_t done() const { return done_; }
  [[nodiscard]] std::size_t total() const { return total_; }

  void Stop() { stop_.request_stop(); }
  void GiveUp() { give_up_.request_stop(); }

  /// On the thread beside.
  void Do() {
    try {
      work_(*this);
    } catch (...) {
      thrown_ = std::current_exception();
    }
    const std::lock_guard lock(mutex_);
    is_over_ = true;
    over_.notify_all();
    // Within the lock: who is told is there as long as it is not over.
    if (on_over_) on_over_();
  }

  [[nodiscard]] bool WaitUntil(Clock::time_point end) {
    std::unique_lock lock(mutex_);
    return over_.wait_until(lock, end, [this] { return is_over_; });
  }
  /// Has `tell` called on the thread beside when it is over. False when it is over by now.
  [[nodiscard]] bool TellWhenOver(std::function<void()> tell) {
    const std::lock_guard lock(mutex_);
    if (!is_over_) on_over_ = std::move(tell);
    return !is_over_;
  }
  /// From now on nobody is told, and whoever was to be may go.
  void TellNobody() {
    const std::lock_guard lock(mutex_);
    on_over_ = nullptr;
  }
  [[nodiscard]] bool IsOver() {
    const std::lock_guard lock(mutex_);
    return is_over_;
  }
  void Wait() {
    std::unique_lock lock(mutex_);
    over_.wait(lock, [this] { return is_over_; });
  }
  void ThrowWhatWasThrown() const {
    if (thrown_) std::rethrow_exception(thrown_);
  }

 private:
  const Work& work_;
  std::stop_source stop_;
  std::stop_source give_up_;
  std::atomic<std::size_t> done_ = 0;
  std::atomic<std::size_t> total_ = 0;
  std::exception_ptr thrown_;
  std::mutex mutex_;
  std::condition_variable over_;
  bool is_over_ = false;
  std::function<void()> on_over_;
};

/// Nobody is told of a task any more when this goes.
class QtErrands::Deafness {
 public:
  explicit Deafness(Task& task) : task_(task) {}
  ~Deafness() { task_.TellNobody(); }
  Deafness(const Deafness&) = delete;
  Deafness& operator=(const Deafness&) = delete;

 private:
  Task& task_;
};

/// One who waits.
class QtErrands::Waiter {
 public:
  explicit Waiter(int& waiting) : waiting_(waiting) { ++waiting_; }
  ~Waiter() { --waiting_; }
  Waiter(const Waiter&) = delete;
  Waiter& operator=(const Waiter&) = delete;

 private:
  int& waiting_;
};

/// The thread beside, which does one task after the other.
class QtErrands::Thread {
 public:
  Thread() : thread_([this](const std::stop_token& stop) { Loop(stop); }) {}

  void Add(std::function<void()> task) {
    {
      const std::lock_guard lock(mutex_);
      tasks_.push_back(std::move(task));
    }
    added_.notify_one();
  }
  [[nodiscard]] bool IsThis() const { return thread_.get_id() == std::this_thread::get_id(); }

 private:
  void Loop(const std::stop_token& stop) {
    while (true) {
      std::function<void()> task;
      {
        std::unique_lock lock(mutex_);
        if (!added_.wait(lock, stop, [this] { return !tasks_.empty(); })) return;
        task = std::move(tasks_.front());
        tasks_.pop_front();
      }
      task();
    }
  }

  std::mutex mutex_;
  std::condition_variable_any added_;
  std::deque<std::function<void()>> tasks_;
  std::jthread thread_;
};

QtErrands::QtErrands(ErrandPatience patience)
    : patience_(patience), thread_(std::make_unique<Thread>()), turned_(Clock::now()) {
  const auto turned = [this] { turned_ = Clock::now(); };
  auto* const dispatcher = QAbstractEventDispatcher::instance();
  if (dispatcher == nullptr) return;
  QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, &turns_, turned);
  QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, &turns_, turned);
}

QtErrands::~QtErrands() = default;

bool QtErrands::IsWithin() const { return thread_->IsThis(); }

void QtErrands::Run(const std::string& what, const Work& work) {
  const auto task = std::make_shared<Task>(work);
  if (IsWithin()) {
    task->Do();
    return task->ThrowWhatWasThrown();
  }
  const Waiter waiter(running_);
  thread_->Add([task] { task->Do(); });
  try {
    if (!WaitStill(*task)) WaitInEvents(task, ToQString(what));
  } catch (...) {
    // Without events, then: whatever it works with stands below.
  }
  task->Wait();
  task->ThrowWhatWasThrown();
}

void QtErrands::LetGo(std::shared_ptr<void> what) noexcept {
  try {
    thread_->Add([what = std::move(what)]() mutable { what.reset(); });
  } catch (...) {
    // It has gone already.
  }
}

bool QtErrands::WaitStill(Task& task) { return task.WaitUntil(turned_ + patience_.still); }

void QtErrands::Breathe() {
  if (IsWithin() || Clock::now() < turned_ + patience_.still) return;
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  turned_ = Clock::now();
}

void QtErrands::WaitInEvents(const std::shared_ptr<Task>& task, const QString& what) {
  QEventLoop unseen;
  QEventLoop* loop = &unseen;
  ErrandDialog* shown = nullptr;
  QObject receiver;
  // By then the one or the other loop runs.
  const auto quit = [&loop, &shown] {
    if (shown != nullptr) shown->hide();
    loop->quit();
  };
  if (!task->TellWhenOver([&receiver, quit] { PostSurely(receiver, quit); })) {
    return;
  }
  const Deafness deaf_in_the_end(*task);
  QTimer patience;
  patience.setSingleShot(true);
  QObject::connect(&patience, &QTimer::timeout, &receiver, quit);
  patience.start(patience_.silent);
  unseen.exec(QEventLoop::ExcludeUserInputEvents);
  if (task->IsOver()) return;

  QEventLoop seen;
  loop = &seen;
  const QPointer<QWidget> owner = QApplication::activeWindow();
  ErrandDialog dialog(what, owner);
  shown = &dialog;
  QTimer until_given_up;
  until_given_up.setSingleShot(true);
  QObject::connect(&until_given_up, &QTimer::timeout, &receiver, [&task] { task->GiveUp(); });
  dialog.on_stop = [&] {
    task->Stop();
    until_given_up.start(patience_.stopping);
  };
  QTimer glance;
  QObject::connect(&glance, &QTimer::timeout, &dialog,
                   [&] { dialog.ShowProgress(task->done(), task->total()); });
  glance.start(kGlance);
  dialog.ShowProgress(task->done(), task->total());
  dialog.show();
  seen.exec();
  // The window system hands the focus back only later; until then no window would be active.
  if (owner != nullptr) QApplication::setActiveWindow(owner);
}

}  // namespace pelora::console
