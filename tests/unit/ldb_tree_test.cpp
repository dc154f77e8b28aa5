// SPDX-License-Identifier: Apache-2.0
// Objects of a directory file that are renamed, moved and deleted with what lies below them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/ldap/forwarding_store.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"
#include "hosts/ldap/object_name.h"
#include "hosts/ldap/remove_bottom_up.h"
#include "tests/unit/ldb_bench.h"

namespace pelora::ldap {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using Extent = IDirectoryStore::Extent;

constexpr const char* kWorks = "OU=Fertigung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
constexpr const char* kCompany = "OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
constexpr const char* kShift =
    "CN=Fertigung Schicht 1,OU=Gruppen,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";

class LdbTreeTest : public LdbBench {
 protected:
  [[nodiscard]] int Rename(const std::string& dn, const std::string& to) {
    status_ = store_->Rename({.dn = dn, .attributes = {}}, to);
    return status_.code;
  }
  [[nodiscard]] bool IsThere(const std::string& dn) {
    Entry entry;
    return store_->Read(dn, {}, entry).Ok();
  }
  [[nodiscard]] std::vector<std::string> NamesBelow(const std::string& dn) {
    std::vector<std::string> names;
    EXPECT_TRUE(store_
                    ->Search({.base = dn, .scope = SearchScope::kSubtree},
                             [&names](const Entry& entry) {
                               names.push_back(entry.dn);
                               return true;
                             })
                    .Ok());
    return names;
  }

  [[nodiscard]] static SearchThere SearchIn(IDirectoryStore& store) {
    return [&store](const SearchRequest& request, const EntrySink& sink) {
      return store.Search(request, sink);
    };
  }

  std::unique_ptr<IDirectoryStore> store_ = Open();
  StoreStatus status_;
};

TEST_F(LdbTreeTest, ARenamedObjectIsCalledSoEverywhere) {
  const std::string to = RenamedName(kUser, "Heike Neumann, geb. Naumann");
  ASSERT_EQ(Rename(kUser, to), 0) << status_.text;
  EXPECT_FALSE(IsThere(kUser));
  // Another store sees it, so it is on the disk.
  const auto again = Open();
  EXPECT_THAT(Read(*again, to, "name"), ElementsAre("Heike Neumann, geb. Naumann"));
  EXPECT_THAT(Read(*again, to, "cn"), ElementsAre("Heike Neumann, geb. Naumann"));
  EXPECT_THAT(Read(*again, to, "peloraUserServer"), ElementsAre("mail01")) << "nothing is lost";
  EXPECT_THAT(Read(*again, kShift, "member"), Contains(to));
  EXPECT_THAT(Read(*again, kShift, "member"), Not(Contains(std::string(kUser))));
  EXPECT_THAT(Read(*again, kShift, "member"), SizeIs(4));
}

TEST_F(LdbTreeTest, TheCaseOfALetterCanBeMended) {
  const std::string to = RenamedName(kUser, "heike naumann");
  ASSERT_EQ(Rename(kUser, to), 0) << status_.text;
  EXPECT_THAT(Read(*store_, kUser, "cn"), ElementsAre("heike naumann"));
  EXPECT_THAT(Read(*store_, kShift, "member"), Contains(to));
  EXPECT_EQ(Rename(to, to), 0) << "and what is so already is no mistake";
}

TEST_F(LdbTreeTest, AUnitMovesWithAllThatLiesBelow) {
  const std::vector<std::string> before = NamesBelow(kWorks);
  const std::string to = MovedName(kWorks, "OU=IT," + std::string(kCompany));
  ASSERT_EQ(Rename(kWorks, to), 0) << status_.text;
  EXPECT_FALSE(IsThere(kWorks));
  EXPECT_THAT(NamesBelow(to), SizeIs(before.size()));
  const std::string user = "CN=Heike Naumann," + to;
  EXPECT_THAT(Read(*store_, user, "name"), ElementsAre("Heike Naumann"));
  EXPECT_THAT(Read(*store_, user, "distinguishedName"), ElementsAre(user));
  EXPECT_THAT(Read(*store_, kShift, "member"), Contains(user));
  EXPECT_THAT(Read(*store_, to, "ou"), ElementsAre("Fertigung"));
  ASSERT_EQ(Rename(to, kWorks), 0) << "and back";
  EXPECT_THAT(NamesBelow(kWorks), ::testing::UnorderedElementsAreArray(before));
}

struct Refusal {
  std::string dn;
  std::string to;
  int code;
};

TEST_F(LdbTreeTest, WhatCannotBeSaysWhyAndChangesNothing) {
  const std::string before = ReadFile(path());
  const std::vector<Refusal> refusals = {
      {kUser, RenamedName(kUser, "Bernd Jahn"), kLdapAlreadyExists},
      {kUser, MovedName(kUser, "OU=Nirgends," + std::string(kCompany)), kLdapNoSuchObject},
      {kUser, "OU=Heike," + std::string(kWorks), kLdapNamingViolation},
      {kUser, "no name", kLdapInvalidDnSyntax},
      {kUser, "CN=," + std::string(kWorks), kLdapInvalidSyntax},
      {"CN=Nobody," + std::string(kWorks), RenamedName(kUser, "Somebody"), kLdapNoSuchObject},
      {kCompany, MovedName(kCompany, kWorks), kLdapUnwillingToPerform},
  };
  for (const Refusal& refusal : refusals) {
    EXPECT_EQ(Rename(refusal.dn, refusal.to), refusal.code) << refusal.to << ": " << status_.text;
    EXPECT_NE(status_.text, "");
  }
  const Entry other{.dn = kUser, .attributes = {{"sAMAccountName", {"somebody-else"}}}};
  EXPECT_EQ(store_->Rename(other, RenamedName(kUser, "Heike")).code, kLdapAssertionFailed);
  EXPECT_EQ(store_->Remove(other, Extent::kAlone).code, kLdapAssertionFailed);
  EXPECT_EQ(store_->Remove({.dn = kWorks, .attributes = {}}, Extent::kAlone).code,
            kLdapNotAllowedOnNonLeaf);
  EXPECT_EQ(store_->Restore({.dn = kUser, .attributes = {}}).code, kLdapUnwillingToPerform);
  EXPECT_EQ(ReadFile(path()), before);
}

TEST_F(LdbTreeTest, WhatIsDeletedGoesAloneOrWithAllBelow) {
  ASSERT_TRUE(store_->Remove({.dn = kUser, .attributes = {}}, Extent::kAlone).Ok());
  EXPECT_FALSE(IsThere(kUser));
  EXPECT_TRUE(IsThere(kWorks));
  const Entry works{.dn = kWorks, .attributes = {{"objectClass", {"top", "organizationalUnit"}}}};
  ASSERT_TRUE(store_->Remove(works, Extent::kWithAllBelow).Ok());
  EXPECT_FALSE(IsThere(kWorks));
  EXPECT_FALSE(IsThere("CN=Bernd Jahn," + std::string(kWorks)));
  EXPECT_TRUE(IsThere(kShift)) << "what refers to it stays";
  EXPECT_EQ(store_->Remove(works, Extent::kWithAllBelow).code, kLdapNoSuchObject);
}

/// Finds what is above first, as servers may.
class TopFirst final : public ForwardingStore {
 public:
  using ForwardingStore::ForwardingStore;

  StoreStatus Search(const SearchRequest& request, const EntrySink& sink) override {
    std::vector<Entry> entries;
    const StoreStatus status = ForwardingStore::Search(request, [&entries](Entry entry) {
      entries.push_back(std::move(entry));
      return true;
    });
    SortBottomUp(entries);
    std::ranges::reverse(entries);
    for (Entry& entry : entries) {
      if (!sink(std::move(entry))) break;
    }
    return status;
  }
};

TEST_F(LdbTreeTest, WithoutAServersHelpEverythingGoesFromTheBottomUp) {
  std::vector<std::string> gone;
  const auto remove = [&](const std::string& dn) {
    gone.push_back(dn);
    return store_->Remove({.dn = dn, .attributes = {}}, Extent::kAlone);
  };
  const std::size_t count = NamesBelow(kWorks).size();
  TopFirst server(*store_);
  EXPECT_TRUE(RemoveBottomUp(kWorks, SearchIn(server), remove).Ok());
  EXPECT_THAT(gone, SizeIs(count));
  EXPECT_EQ(gone.back(), kWorks);
  EXPECT_FALSE(IsThere(kWorks));
}

TEST_F(LdbTreeTest, WhatWasDeletedBeforeARefusalIsSaid) {
  int left = 2;
  const StoreStatus status = RemoveBottomUp(kWorks, SearchIn(*store_), [&](const std::string& dn) {
    if (left-- == 0) return StoreStatus{kLdapInsufficientAccessRights, "no rights"};
    return store_->Remove({.dn = dn, .attributes = {}}, Extent::kAlone);
  });
  EXPECT_EQ(status.code, kLdapInsufficientAccessRights);
  EXPECT_EQ(status.text, "2 of 9 objects were deleted before: no rights");
}

TEST_F(LdbTreeTest, WhatSomebodyElseDeletesMeanwhileHoldsUpNothingButTheObjectItself) {
  const auto remove = [this](const std::string& dn) {
    return store_->Remove({.dn = dn, .attributes = {}}, Extent::kAlone);
  };
  std::vector<std::string> gone;
  const auto twice = [&](const std::string& dn) {
    gone.push_back(dn);
    EXPECT_TRUE(remove(dn).Ok()) << "somebody else";
    return remove(dn);
  };
  const std::size_t count = NamesBelow(kWorks).size();
  const StoreStatus status = RemoveBottomUp(kWorks, SearchIn(*store_), twice);
  EXPECT_EQ(status.code, kLdapNoSuchObject);
  EXPECT_THAT(status.text, HasSubstr("8 of 9 objects were deleted before: "));
  EXPECT_THAT(gone, SizeIs(count));
}

TEST(ObjectName, GetsAnotherFirstPartOrAnotherContainer) {
  EXPECT_EQ(FirstPart("CN=a\\,b,OU=c,DC=d"), "CN=a\\,b");
  EXPECT_EQ(ContainerOf("CN=a\\,b,OU=c,DC=d"), "OU=c,DC=d");
  EXPECT_EQ(ContainerOf("DC=d"), "");
  EXPECT_EQ(RenamedName("ou=c,DC=d", "x, y"), "ou=x\\, y,DC=d");
  EXPECT_EQ(MovedName("CN=a\\,b,OU=c,DC=d", "DC=d"), "CN=a\\,b,DC=d");
}

TEST(NameKey, TellsWhatLiesBelow) {
  EXPECT_TRUE(LiesBelow(NameKey("CN=a,OU=b,DC=c"), NameKey("ou=B, dc=c")));
  EXPECT_FALSE(LiesBelow(NameKey("OU=b,DC=c"), NameKey("OU=b,DC=c")));
  EXPECT_FALSE(LiesBelow(NameKey("OU=ab,DC=c"), NameKey("b,DC=c")));
  EXPECT_FALSE(LiesBelow(NameKey("CN=x\\,OU=b,DC=c"), NameKey("OU=b,DC=c")));
}

}  // namespace
}  // namespace pelora::ldap
