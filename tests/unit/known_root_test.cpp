// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/known_root.h"

#include <gmock/gmock.h>

#include "hosts/ldap/ldap_status.h"
#include "tests/support/memory_store.h"

namespace pelora::ldap {
namespace {

using ::testing::ElementsAre;

/// Cannot say what it is at first.
class LateStore final : public ForwardingStore {
 public:
  using ForwardingStore::ForwardingStore;

  StoreStatus ReadRoot(Entry& root) override {
    if (++asked == 1) return {kLdapBusy, "busy"};
    return ForwardingStore::ReadRoot(root);
  }

  int asked = 0;
};

TEST(KnownRoot, AsksOnceWhatTheDirectoryIs) {
  pelora::testing::MemoryStore memory;
  LateStore directory(memory);
  KnownRoot store(directory);
  Entry root;
  EXPECT_EQ(store.ReadRoot(root).code, kLdapBusy);
  for (int times = 0; times < 3; ++times) {
    root = {};
    EXPECT_TRUE(store.ReadRoot(root).Ok());
    EXPECT_THAT(root.attributes["defaultNamingContext"],
                ElementsAre(pelora::testing::MemoryStore::kBase));
  }
  EXPECT_EQ(directory.asked, 2) << "once in vain";
}

}  // namespace
}  // namespace pelora::ldap
