// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldb_file_lock.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <fstream>
#include <span>
#include <system_error>
#include <thread>
#include <utility>

#include "hosts/ldap/ldap_status.h"

namespace pelora::ldap {

struct LdbFileLock::Range {
  short type;
  off_t start;
  /// 0: to the end, wherever that is.
  off_t length;
};

namespace {

/// Where the database's records begin; before them lie its header and the bytes that stand for
/// locks.
constexpr off_t kRecords = 168;
constexpr std::chrono::milliseconds kPause{10};

std::string SystemError(int error) { return std::generic_category().message(error); }

StoreStatus CannotOpen(const std::string& path, const std::string& reason) {
  return {kLdapServerDown, "cannot open the directory '" + path + "': " + reason};
}

/// The name of an open file that no renaming changes.
std::string PathOf(const FileDescriptor& file) {
  return "/proc/self/fd/" + std::to_string(file.get());
}

}  // namespace

LdbFileLock::LdbFileLock(std::string path, FileDescriptor file,
                         std::shared_ptr<ProcessFileLock> in_process,
                         std::chrono::milliseconds wait)
    : path_(std::move(path)),
      file_(std::move(file)),
      in_process_(std::move(in_process)),
      wait_(wait) {}

LdbFileLock::~LdbFileLock() {
  // It takes the locks of the whole process along.
  const auto alone = KeepThreadsOut();
  file_ = {};
}

std::string LdbFileLock::LibraryPath() const { return PathOf(file_); }

StoreStatus LdbFileLock::Open(const std::string& path, std::chrono::milliseconds wait,
                              std::unique_ptr<LdbFileLock>& lock) {
  // A look that opens no device and waits for no pipe, and whose end is none of any lock.
  const FileDescriptor look(open(path.c_str(), O_PATH | O_CLOEXEC));
  struct stat info {};
  if (!look || fstat(look.get(), &info) != 0) return CannotOpen(path, SystemError(errno));
  if (S_ISDIR(info.st_mode)) return CannotOpen(path, SystemError(EISDIR));
  if (!S_ISREG(info.st_mode)) return CannotOpen(path, "not a regular file");
  FileDescriptor file(open(PathOf(look).c_str(), O_RDWR | O_CLOEXEC));
  if (!file) return CannotOpen(path, SystemError(errno));
  lock.reset(new LdbFileLock(path, std::move(file),
                             ProcessLockOf({.device = info.st_dev, .inode = info.st_ino}), wait));
  return {};
}

StoreStatus LdbFileLock::Acquire(Purpose purpose, Hold& hold) const {
  Hold taken(*this);
  if (in_process_->is_stuck) {
    return {kLdapUnavailable, "the directory '" + path_ +
                                  "' has to be closed and opened anew: a change of it could not be "
                                  "written to its end"};
  }
  StoreStatus status = CheckIdentity();
  if (status.Ok()) status = AcquireAnew(purpose);
  if (status.Ok()) hold = std::move(taken);
  return status;
}

StoreStatus LdbFileLock::AcquireAnew(Purpose purpose) const {
  static constexpr auto kForOpening =
      std::to_array<Range>({{F_WRLCK, 0, 1}, {F_RDLCK, kRecords, 0}});
  static constexpr auto kForReading = std::to_array<Range>({{F_RDLCK, kRecords, 0}});
  static constexpr auto kForWriting = std::to_array<Range>({{F_WRLCK, 0, 0}});
  std::span<const Range> ranges = kForReading;
  if (purpose == Purpose::kOpen) ranges = kForOpening;
  if (purpose == Purpose::kWrite) ranges = kForWriting;

  for (const Range& range : ranges) {
    StoreStatus status = WaitFor(range);
    if (!status.Ok()) return status;
  }
  return {};
}

StoreStatus LdbFileLock::KeepReadersOut() const { return WaitFor({F_WRLCK, kRecords, 0}); }

StoreStatus LdbFileLock::WaitFor(const Range& range) const {
  const auto deadline = std::chrono::steady_clock::now() + wait_;
  while (true) {
    struct flock request {};
    request.l_type = range.type;
    request.l_whence = SEEK_SET;
    request.l_start = range.start;
    request.l_len = range.length;
    if (fcntl(file_.get(), F_SETLK, &request) == 0) return {};
    if (errno != EAGAIN && errno != EACCES && errno != EINTR) {
      return {kLdapServerDown, "cannot lock the directory '" + path_ + "': " + SystemError(errno)};
    }
    if (std::chrono::steady_clock::now() >= deadline) {
      return {kLdapBusy, "the directory '" + path_ + "' is locked by " + DescribeHolder(range)};
    }
    std::this_thread::sleep_for(kPause);
  }
}

StoreStatus LdbFileLock::CheckIdentity() const {
  struct stat opened {};
  struct stat named {};
  const bool is_same = fstat(file_.get(), &opened) == 0 && stat(path_.c_str(), &named) == 0 &&
                       opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
  if (is_same) return {};
  return {kLdapUnavailable,
          "the directory '" + path_ + "' has been removed or replaced since it was opened"};
}

std::string LdbFileLock::DescribeHolder(const Range& range) const {
  struct flock probe {};
  probe.l_type = range.type;
  probe.l_whence = SEEK_SET;
  probe.l_start = range.start;
  probe.l_len = range.length;
  const bool is_known =
      fcntl(file_.get(), F_GETLK, &probe) == 0 && probe.l_type != F_UNLCK && probe.l_pid > 0;
  if (!is_known) return "another process";
  const std::string process = std::to_string(probe.l_pid);
  std::ifstream file("/proc/" + process + "/comm");
  std::string program;
  if (!std::getline(file, program)) return "process " + process;
  return "process " + process + " (" + program + ")";
}

void LdbFileLock::Release() const {
  struct flock request {};
  request.l_type = F_UNLCK;
  request.l_whence = SEEK_SET;
  // Nothing can be done about a failure, and the descriptor's end gives the locks back at the
  // latest.
  static_cast<void>(fcntl(file_.get(), F_SETLK, &request));
}

}  // namespace pelora::ldap
