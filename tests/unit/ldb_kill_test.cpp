// SPDX-License-Identifier: Apache-2.0
// Programs that are killed while they write: what was told to be done is there, nothing is half
// done.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <random>
#include <stdexcept>
#include <thread>

#include "tests/support/long_form.h"
#include "tests/unit/ldb_bench.h"

namespace pelora::ldap {
namespace {

using std::chrono::microseconds;

/// Enough to see it; many more are run by hand (tests/long.sh).
int Rounds() { return static_cast<int>(pelora::testing::RoundsOr(12)); }

/// Another program that writes one number after the other, each to several attributes by one
/// change, and tells of each when it is done.
class Writer {
 public:
  Writer(const std::string& path, const std::string& object, int first) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    told_ = ends[0];
    process_ = fork();
    if (process_ == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      Write(path, object, first, ends[1]);
      _exit(1);
    }
    close(ends[1]);
  }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;
  ~Writer() {
    Kill();
    close(told_);
  }

  /// Returns when it has told of its first number.
  void AwaitFirst() {
    if (read(told_, &last_, sizeof last_) != sizeof last_) {
      throw std::runtime_error("the writer does not write");
    }
  }

  /// The last number that it told of; `none` when it told of none.
  int Kill(int none = 0) {
    if (process_ > 0) {
      kill(process_, SIGKILL);
      int status = 0;
      waitpid(process_, &status, 0);
      process_ = 0;
      if (!WIFSIGNALED(status)) throw std::runtime_error("the writer ended by itself");
    }
    for (int number = 0; read(told_, &number, sizeof number) == sizeof number;) last_ = number;
    return last_ == 0 ? none : last_;
  }

 private:
  static void Write(const std::string& path, const std::string& object, int first, int tell) {
    std::unique_ptr<IDirectoryStore> store;
    if (!OpenLdbStore(path, {.lock_wait = std::chrono::seconds(10)}, store).Ok()) return;
    for (int number = first;; ++number) {
      const std::string text = std::to_string(number);
      // Of very different size, so that the records move about in the file.
      const std::string filling(static_cast<std::size_t>(number * 37 % 5000), 'x');
      const std::vector<Modification> changes = {
          {Modification::Operation::kReplace, "peloraQuotaHard", {text}},
          {Modification::Operation::kReplace, "otherMailbox", {text + filling}},
          {Modification::Operation::kReplace, "description", {text}}};
      if (!store->Modify(object, changes).Ok()) return;
      if (write(tell, &number, sizeof number) != sizeof number) return;
    }
  }

  pid_t process_ = 0;
  int told_ = -1;
  int last_ = 0;
};

using LdbKillTest = LdbBench;

TEST_F(LdbKillTest, WhatWasToldIsThereAndNothingIsHalfDone) {
  // The same in every run of the short form.
  constexpr unsigned kSeed = 1;
  const unsigned seed = pelora::testing::RoundsOr(0) == 0 ? kSeed : std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_int_distribution<int> pause(0, 60'000);
  int done = 0;
  int written = 0;
  for (int round = 0; round < Rounds(); ++round) {
    Writer writer(path(), kUser, done + 1);
    // Some while they open the file, and some for certain while they write.
    if (round % 3 != 0) writer.AwaitFirst();
    std::this_thread::sleep_for(microseconds(pause(random)));
    const int told = writer.Kill(done);
    const std::unique_ptr<IDirectoryStore> store = Open();
    const AttributeValues stored = Read(*store, kUser, "peloraQuotaHard");
    const int now = stored.empty() ? 0 : std::stoi(stored.front());
    // The one under way may have been done, and it had no time to tell.
    ASSERT_GE(now, told) << "round " << round;
    ASSERT_LE(now, told + 1) << "round " << round;
    if (now == 0) continue;
    const std::string text = std::to_string(now);
    ASSERT_EQ(Read(*store, kUser, "description"), AttributeValues{text}) << "round " << round;
    const AttributeValues filled = Read(*store, kUser, "otherMailbox");
    ASSERT_EQ(filled.size(), 1U);
    ASSERT_EQ(filled.front(), text + std::string(static_cast<std::size_t>(now * 37 % 5000), 'x'));
    written += now - done;
    done = now;
  }
  std::printf("%d kills, %d changes\n", Rounds(), written);
  RecordProperty("kills", Rounds());
  EXPECT_GE(written, Rounds() / 2);
}

}  // namespace
}  // namespace pelora::ldap
