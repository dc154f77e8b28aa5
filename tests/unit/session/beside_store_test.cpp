// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/beside_store.h"

#include <gmock/gmock.h>

#include "hosts/ldap/ldap_status.h"
#include "tests/support/memory_store.h"

namespace pelora::session {
namespace {

using ::testing::ElementsAre;

/// Cannot say what it is at first.
class LateStore final : public ldap::IDirectoryStore {
 public:
  [[nodiscard]] const ldap::Schema& schema() const override { return memory_.schema(); }
  ldap::StoreStatus ReadRoot(ldap::Entry& root) override {
    if (++asked == 1) return {ldap::kLdapBusy, "busy"};
    return memory_.ReadRoot(root);
  }
  ldap::StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                         ldap::Entry& entry) override {
    return memory_.Read(dn, attributes, entry);
  }
  ldap::StoreStatus Search(const ldap::SearchRequest& request,
                           const ldap::EntrySink& sink) override {
    return memory_.Search(request, sink);
  }
  ldap::StoreStatus Modify(const std::string& dn,
                           std::span<const ldap::Modification> modifications) override {
    return memory_.Modify(dn, modifications);
  }
  ldap::StoreStatus ModifyStrictly(const std::string& dn,
                                   std::span<const ldap::Modification> modifications) override {
    return memory_.ModifyStrictly(dn, modifications);
  }
  ldap::StoreStatus Add(const ldap::Entry& entry) override { return memory_.Add(entry); }
  ldap::StoreStatus Delete(const ldap::Entry& made) override { return memory_.Delete(made); }

  int asked = 0;

 private:
  pelora::testing::MemoryStore memory_;
};

TEST(BesideStore, AsksOnceWhatTheDirectoryIs) {
  LateStore directory;
  ErrandsAtOnce errands;
  BesideStore store(directory, errands);
  ldap::Entry root;
  EXPECT_EQ(store.ReadRoot(root).code, ldap::kLdapBusy);
  for (int times = 0; times < 3; ++times) {
    root = {};
    EXPECT_TRUE(store.ReadRoot(root).Ok());
    EXPECT_THAT(root.attributes["defaultNamingContext"],
                ElementsAre(pelora::testing::MemoryStore::kBase));
  }
  EXPECT_EQ(directory.asked, 2) << "once in vain";
}

}  // namespace
}  // namespace pelora::session
