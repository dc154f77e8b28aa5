// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/secret.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/resource.h>

#include <array>
#include <cstddef>
#include <memory>
#include <new>

namespace pelora::session {
namespace {

/// Short enough to stand within the object itself, where the test can look at what is left.
constexpr std::string_view kShort = "Gehe1m!";

rlim_t CoreLimit() {
  rlimit limit{};
  getrlimit(RLIMIT_CORE, &limit);
  return limit.rlim_cur;
}

/// A secret in memory that outlives it.
class Laid {
 public:
  explicit Laid(std::string_view text) : secret_(new (bytes_.data()) Secret(std::string(text))) {}
  [[nodiscard]] Secret& secret() { return *secret_; }
  void End() { std::destroy_at(secret_); }
  [[nodiscard]] bool Holds(std::string_view text) const {
    const std::string_view all(reinterpret_cast<const char*>(bytes_.data()), bytes_.size());
    return all.find(text) != std::string_view::npos;
  }

 private:
  alignas(Secret) std::array<std::byte, sizeof(Secret)> bytes_{};
  Secret* secret_;
};

TEST(Secret, NothingIsLeftOfOneThatHasGone) {
  Laid laid(kShort);
  EXPECT_TRUE(laid.Holds(kShort));
  laid.End();
  EXPECT_FALSE(laid.Holds(kShort));
  EXPECT_FALSE(laid.Holds(kShort.substr(1))) << "not even its end";
}

TEST(Secret, NothingIsLeftWhereItWasMovedFrom) {
  Laid laid(kShort);
  const Secret taken = std::move(laid.secret());
  EXPECT_EQ(taken.text(), kShort);
  EXPECT_FALSE(laid.Holds(kShort.substr(1)));
  laid.End();
}

TEST(Secret, NothingIsLeftOfWhatItWas) {
  Laid laid(kShort);
  laid.secret() = Secret("x");
  EXPECT_EQ(laid.secret().text(), "x");
  EXPECT_FALSE(laid.Holds(kShort.substr(1)));
  laid.End();
}

TEST(Secret, WipingTakesWhatStandsBehindTheEnd) {
  std::string text(100, 's');
  text.resize(1);
  const char* const memory = text.data();
  ldap::Wipe(text);
  EXPECT_TRUE(text.empty());
  for (std::size_t at = 0; at < 100; ++at) ASSERT_EQ(memory[at], '\0') << at;
}

TEST(DumpGuard, KeepsTheProcessFromBeingDumpedWhileOneLives) {
  const int dumpable = prctl(PR_GET_DUMPABLE);
  const rlim_t limit = CoreLimit();
  {
    const DumpGuard guard;
    const auto another = std::make_unique<DumpGuard>();
    EXPECT_EQ(prctl(PR_GET_DUMPABLE), 0);
    EXPECT_EQ(CoreLimit(), 0U);
  }
  EXPECT_EQ(prctl(PR_GET_DUMPABLE), dumpable);
  EXPECT_EQ(CoreLimit(), limit);
}

}  // namespace
}  // namespace pelora::session
