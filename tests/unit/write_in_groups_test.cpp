// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/write_in_groups.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>

namespace pelora::ldap {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::SizeIs;

class WriteInGroupsTest : public ::testing::Test {
 protected:
  /// Gives so many requests, named by their numbers.
  ModifySource Numbers(int count) {
    return [this, count]() -> std::optional<ModifyRequest> {
      if (fetched_ == count) return std::nullopt;
      return ModifyRequest{std::to_string(fetched_++), {}};
    };
  }
  /// Answers each by its name.
  WrittenGroup Answer(std::span<const ModifyRequest> group) {
    sizes_.push_back(group.size());
    writers_.push_back(std::this_thread::get_id());
    WrittenGroup written;
    for (const ModifyRequest& request : group) written.outcomes.push_back({0, request.dn});
    written.spent = std::shared_ptr<void>(
        nullptr, [this](void*) { releasers_.push_back(std::this_thread::get_id()); });
    ++written_;
    return written;
  }
  GroupWriting Writing() {
    return {.write = [this](std::span<const ModifyRequest> group) { return Answer(group); },
            .read_ahead = [this] { ++readings_; }};
  }
  ModifySink Taking() {
    return [this](const StoreStatus& status) { answers_.push_back(status.text); };
  }

  int fetched_ = 0;
  std::atomic<int> written_ = 0;
  std::atomic<int> readings_ = 0;
  std::vector<std::size_t> sizes_;
  std::vector<std::thread::id> writers_;
  std::vector<std::thread::id> releasers_;
  std::vector<std::string> answers_;
};

TEST_F(WriteInGroupsTest, GroupsGrowAndAreAnsweredInTheirOrder) {
  constexpr int kCount = 256 + 512 + 1024 + 2048 + 2048 + 7;
  WriteInGroups(Numbers(kCount), Taking(), Writing());
  EXPECT_THAT(sizes_, ElementsAre(256, 512, 1024, 2048, 2048, 7));
  ASSERT_THAT(answers_, SizeIs(kCount));
  for (int number = 0; number < kCount; ++number) {
    ASSERT_EQ(answers_[static_cast<std::size_t>(number)], std::to_string(number));
  }
  // Before each full group that is written, and behind it.
  EXPECT_EQ(readings_, 10);
}

TEST_F(WriteInGroupsTest, AllFullGroupsAreWrittenOnOneOtherThread) {
  WriteInGroups(Numbers(256 + 512 + 1), Taking(), Writing());
  const std::thread::id here = std::this_thread::get_id();
  ASSERT_THAT(writers_, SizeIs(3));
  EXPECT_NE(writers_[0], here);
  EXPECT_EQ(writers_[1], writers_[0]);
  EXPECT_EQ(writers_[2], here);
  // What is spent does not hold up who writes.
  EXPECT_THAT(releasers_, SizeIs(3));
  EXPECT_THAT(releasers_, Each(here));
}

TEST_F(WriteInGroupsTest, ASourceThatThrowsIsHeardOnceTheGroupUnderWayIsWritten) {
  const ModifySource numbers = Numbers(1000);
  std::atomic<bool> is_thrown = false;
  const ModifySource source = [&] {
    if (fetched_ == 300) {
      is_thrown = true;
      throw std::runtime_error("no more");
    }
    return numbers();
  };
  GroupWriting writing = Writing();
  writing.write = [&](std::span<const ModifyRequest> group) {
    while (!is_thrown) std::this_thread::yield();
    return Answer(group);
  };
  EXPECT_THROW(WriteInGroups(source, Taking(), writing), std::runtime_error);
  EXPECT_THAT(sizes_, ElementsAre(256));
  EXPECT_EQ(written_, 1);
  EXPECT_THAT(answers_, SizeIs(0));
}

TEST_F(WriteInGroupsTest, WhatWritingThrowsComesThrough) {
  GroupWriting writing = Writing();
  writing.write = [](std::span<const ModifyRequest> /*group*/) -> WrittenGroup {
    throw std::runtime_error("no memory");
  };
  EXPECT_THROW(WriteInGroups(Numbers(1000), Taking(), writing), std::runtime_error);
  EXPECT_THROW(WriteInGroups(Numbers(1000), Taking(), writing), std::runtime_error);
}

TEST_F(WriteInGroupsTest, FewRequestsNeedNoOtherThread) {
  WriteInGroups(Numbers(255), Taking(), Writing());
  EXPECT_THAT(writers_, ElementsAre(std::this_thread::get_id()));
  EXPECT_THAT(answers_, SizeIs(255));
  EXPECT_EQ(readings_, 0);
}

/// No thread can be begun while one lives: none finds room for its stack.
class NoThreads {
 public:
  NoThreads() {
    pthread_getattr_default_np(&before_);
    pthread_attr_t boundless;
    pthread_getattr_default_np(&boundless);
    pthread_attr_setstacksize(&boundless, std::size_t{1} << 50U);
    pthread_setattr_default_np(&boundless);
    pthread_attr_destroy(&boundless);
  }
  NoThreads(const NoThreads&) = delete;
  NoThreads& operator=(const NoThreads&) = delete;
  ~NoThreads() {
    pthread_setattr_default_np(&before_);
    pthread_attr_destroy(&before_);
  }

 private:
  pthread_attr_t before_{};
};

TEST_F(WriteInGroupsTest, AreWrittenInTurnWhereThereIsNoThread) {
  constexpr int kCount = 256 + 512 + 7;
  {
    const NoThreads none;
    WriteInGroups(Numbers(kCount), Taking(), Writing());
  }
  EXPECT_THAT(sizes_, ElementsAre(256, 512, 7));
  EXPECT_THAT(answers_, SizeIs(kCount));
  EXPECT_THAT(writers_, Each(std::this_thread::get_id()));
}

}  // namespace
}  // namespace pelora::ldap
