// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "hosts/ldap/file_descriptor.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_connection.h"
#include "hosts/ldap/ldb_file_lock.h"
#include "tests/unit/ldb_bench.h"

namespace pelora::ldap {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using Clock = std::chrono::steady_clock;

/// A part of the file that another program locks, as the database library does.
struct Lock {
  short type;
  off_t start;
  off_t length;
};

constexpr Lock kWholeFile{F_WRLCK, 0, 0};
constexpr Lock kRecordsForReading{F_RDLCK, 168, 0};
constexpr Lock kTransaction{F_WRLCK, 8, 1};
constexpr Lock kOpening{F_WRLCK, 0, 1};

bool Take(int file, const Lock& lock, int command = F_SETLK) {
  struct flock request {};
  request.l_type = lock.type;
  request.l_whence = SEEK_SET;
  request.l_start = lock.start;
  request.l_len = lock.length;
  return fcntl(file, command, &request) == 0;
}

/// Another process that holds a lock until it is ended.
class LockingProcess {
 public:
  /// Returns when it has the lock or, with `F_SETLKW`, when it waits for it.
  LockingProcess(const std::string& path, const Lock& lock, int command = F_SETLK) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    process_ = fork();
    if (process_ == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      const int file = open(path.c_str(), O_RDWR);
      const bool waits = command == F_SETLKW;
      if (!waits && !Take(file, lock)) _exit(1);
      if (write(ends[1], "y", 1) != 1) _exit(1);
      if (waits && !Take(file, lock, command)) _exit(1);
      while (true) pause();
    }
    close(ends[1]);
    char answer = 'n';
    const bool was_told = read(ends[0], &answer, 1) == 1;
    close(ends[0]);
    if (!was_told) throw std::runtime_error("the lock could not be taken");
    while (command == F_SETLKW && !IsWaiting()) std::this_thread::yield();
  }
  LockingProcess(const LockingProcess&) = delete;
  LockingProcess& operator=(const LockingProcess&) = delete;
  ~LockingProcess() { End(); }

  void End() {
    if (process_ <= 0) return;
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    process_ = 0;
  }
  [[nodiscard]] std::string id() const { return std::to_string(process_); }

 private:
  /// The system lists locks that are waited for with an arrow.
  [[nodiscard]] bool IsWaiting() const {
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
      const bool is_ours = line.find(" " + id() + " ") != std::string::npos;
      if (is_ours && line.find("->") != std::string::npos) return true;
    }
    return false;
  }

  pid_t process_ = 0;
};

class LdbLockTest : public LdbBench {
 protected:
  /// Every kind of request that goes to the file.
  static std::vector<StoreStatus> ReadEveryWay(IDirectoryStore& store) {
    Entry entry;
    return {store.Read(kUser, {}, entry), store.ReadRoot(entry),
            store.Search({.base = kBase, .scope = SearchScope::kOneLevel, .attributes = {}},
                         [](const Entry&) { return true; })};
  }
  static std::vector<StoreStatus> WriteEveryWay(IDirectoryStore& store) {
    return {Replace(store, kUser, "peloraQuotaHard", {"1"}),
            store.Add({.dn = "CN=New,CN=Users,DC=linden-werke,DC=example",
                       .attributes = {{"objectClass", {"top"}}}})};
  }
  void ExpectBusy(const StoreStatus& status, const LockingProcess& holder) const {
    EXPECT_EQ(status.code, kLdapBusy) << status.text;
    EXPECT_THAT(status.text, AllOf(HasSubstr("'" + path() + "'"), HasSubstr(holder.id()),
                                   HasSubstr("(ldb_directory_t"), Not(HasSubstr("\n"))));
  }
};

TEST_F(LdbLockTest, OpeningALockedFileGivesUpAndNamesTheHolder) {
  for (const Lock& lock : {kWholeFile, kOpening}) {
    const LockingProcess holder(path(), lock);
    const std::string before = ReadFile(path());
    const Clock::time_point start = Clock::now();
    std::unique_ptr<IDirectoryStore> store;
    const StoreStatus status = TryOpen(store);
    ExpectBusy(status, holder);
    EXPECT_FALSE(store);
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(150));
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(3));
    EXPECT_TRUE(ReadFile(path()) == before);
  }
}

TEST_F(LdbLockTest, AnOpenStoreWaitsForNobodyForEver) {
  const std::unique_ptr<IDirectoryStore> store = Open();
  LockingProcess holder(path(), kWholeFile);
  for (const StoreStatus& status : ReadEveryWay(*store)) ExpectBusy(status, holder);
  for (const StoreStatus& status : WriteEveryWay(*store)) ExpectBusy(status, holder);
  holder.End();
  for (const StoreStatus& status : ReadEveryWay(*store)) EXPECT_TRUE(status.Ok()) << status.text;
  for (const StoreStatus& status : WriteEveryWay(*store)) EXPECT_TRUE(status.Ok()) << status.text;
  EXPECT_THAT(OnUser("peloraQuotaHard"), ElementsAre("1"));
}

TEST_F(LdbLockTest, AReaderKeepsOutWritersOnly) {
  const std::unique_ptr<IDirectoryStore> store = Open();
  const LockingProcess holder(path(), kRecordsForReading);
  for (const StoreStatus& status : ReadEveryWay(*store)) EXPECT_TRUE(status.Ok()) << status.text;
  for (const StoreStatus& status : WriteEveryWay(*store)) ExpectBusy(status, holder);
  std::unique_ptr<IDirectoryStore> second;
  EXPECT_TRUE(TryOpen(second).Ok());
}

TEST_F(LdbLockTest, ATransactionElsewhereKeepsOutWritersOnly) {
  const std::unique_ptr<IDirectoryStore> store = Open();
  const LockingProcess holder(path(), kTransaction);
  for (const StoreStatus& status : ReadEveryWay(*store)) EXPECT_TRUE(status.Ok()) << status.text;
  for (const StoreStatus& status : WriteEveryWay(*store)) ExpectBusy(status, holder);
}

TEST_F(LdbLockTest, ALockThatIsGivenBackInTimeIsWaitedFor) {
  std::unique_ptr<IDirectoryStore> store;
  ASSERT_TRUE(OpenLdbStore(path(), {.lock_wait = std::chrono::seconds(20)}, store).Ok());
  LockingProcess holder(path(), kWholeFile);
  std::thread ender([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    holder.End();
  });
  EXPECT_TRUE(Replace(*store, kUser, "peloraQuotaHard", {"5"}).Ok());
  ender.join();
  EXPECT_THAT(OnUser("peloraQuotaHard"), ElementsAre("5"));
}

TEST_F(LdbLockTest, NoLockIsKeptBetweenRequests) {
  const std::unique_ptr<IDirectoryStore> store = Open();
  for (const StoreStatus& status : ReadEveryWay(*store)) EXPECT_TRUE(status.Ok());
  for (const StoreStatus& status : WriteEveryWay(*store)) EXPECT_TRUE(status.Ok());
  EXPECT_FALSE(Replace(*store, kUser, "mail", {"a", "b"}).Ok());
  EXPECT_NO_THROW(LockingProcess(path(), kWholeFile));
}

TEST_F(LdbLockTest, AFileIsReopenedWhileItIsReadAndWritten) {
  std::atomic<bool> is_over = false;
  std::atomic<int> readings = 0;
  std::vector<std::string> troubles(2);
  std::vector<std::jthread> threads;
  for (std::string& trouble : troubles) {
    threads.emplace_back([&] {
      std::unique_ptr<IDirectoryStore> store;
      StoreStatus status = TryOpen(store);
      for (int round = 0; status.Ok() && !is_over; ++round, ++readings) {
        status = store->Search({.base = kBase, .scope = SearchScope::kSubtree, .attributes = {}},
                               [](const Entry&) { return true; });
        if (status.Ok() && round % 4 == 0) {
          status = Replace(*store, kUser, "description", {std::to_string(round)});
        }
      }
      trouble = status.text;
    });
  }
  // Another name of the file makes no difference.
  const std::string link = File("link.ldb");
  std::filesystem::create_hard_link(path(), link);
  int reopened = 0;
  while (reopened < 20 || readings < 20) {
    std::unique_ptr<IDirectoryStore> again;
    const StoreStatus status = OpenLdbStore(reopened % 2 == 0 ? path() : link,
                                            {.lock_wait = std::chrono::seconds(20)}, again);
    ASSERT_TRUE(status.Ok()) << status.text;
    ASSERT_TRUE(Replace(*again, kUser, "mail", {std::to_string(reopened)}).Ok());
    ++reopened;
  }
  is_over = true;
  threads.clear();
  EXPECT_THAT(troubles, ElementsAre("", ""));
  EXPECT_THAT(OnUser("mail"), ElementsAre(std::to_string(reopened - 1)));
}

TEST_F(LdbLockTest, TheLibraryOpensTheVeryFileThatWasLookedThrough) {
  std::unique_ptr<LdbFileLock> lock;
  ASSERT_TRUE(LdbFileLock::Open(path(), std::chrono::milliseconds(150), lock).Ok());
  // Somebody puts another file in its place.
  const std::string other = File("other.ldb");
  WriteFile(other, "no directory at all");
  std::filesystem::rename(other, path());
  std::unique_ptr<LdbConnection> connection;
  ASSERT_TRUE(
      LdbConnection::Open(lock->LibraryPath(), LdbConnection::Mode::kExisting, connection).Ok());
  Entry entry;
  EXPECT_TRUE(connection->Read(kUser, {}, entry).Ok());
  // And nothing is done with it under the name that now means another file.
  LdbFileLock::Hold hold;
  EXPECT_EQ(lock->Acquire(LdbFileLock::Purpose::kRead, hold).code, kLdapUnavailable);
}

TEST_F(LdbLockTest, AHolderWithoutANameIsAnotherProcess) {
  const std::unique_ptr<IDirectoryStore> store = Open();
  // A lock of an open file belongs to no process that could be named.
  const FileDescriptor file(open(path().c_str(), O_RDWR | O_CLOEXEC));
  ASSERT_TRUE(Take(file.get(), kWholeFile, F_OFD_SETLK));
  Entry entry;
  const StoreStatus status = store->Read(kUser, {}, entry);
  EXPECT_EQ(status.code, kLdapBusy);
  EXPECT_THAT(status.text, HasSubstr("is locked by another process"));
}

TEST_F(LdbLockTest, ACommitDoesNotWaitForEverForAReaderThatCameInBefore) {
  const std::unique_ptr<IDirectoryStore> store = Open();
  // The reader waits already when the transaction begins, and the transaction takes its time.
  const FileDescriptor file(open(path().c_str(), O_RDWR | O_CLOEXEC));
  ASSERT_TRUE(Take(file.get(), kWholeFile));
  const LockingProcess reader(path(), kRecordsForReading, F_SETLKW);
  AttributeValues many;
  for (int number = 0; number < 2000; ++number) {
    many.push_back(std::to_string(10000 + number) + std::string(1000, 'x'));
  }
  ExpectBusy(Replace(*store, kUser, "otherMailbox", many), reader);
  EXPECT_THAT(OnUser("otherMailbox"), IsEmpty());
}

TEST_F(LdbLockTest, AReaderThatCameInDuringATransactionIsNotWaitedForForEver) {
  std::unique_ptr<LdbFileLock> lock;
  ASSERT_TRUE(LdbFileLock::Open(path(), std::chrono::milliseconds(150), lock).Ok());
  LdbFileLock::Hold hold;
  ASSERT_TRUE(lock->Acquire(LdbFileLock::Purpose::kWrite, hold).Ok());
  EXPECT_TRUE(lock->KeepReadersOut().Ok());
  // The library lets readers in when its transaction begins.
  const FileDescriptor library(open(path().c_str(), O_RDWR | O_CLOEXEC));
  ASSERT_TRUE(Take(library.get(), kRecordsForReading));
  const LockingProcess reader(path(), kRecordsForReading);
  ExpectBusy(lock->KeepReadersOut(), reader);
}

}  // namespace
}  // namespace pelora::ldap
