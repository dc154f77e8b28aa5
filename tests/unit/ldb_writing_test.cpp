// SPDX-License-Identifier: Apache-2.0
// Strict modifications, many of them, and deletions, on a directory file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/reads_ahead.h"
#include "tests/unit/ldb_bench.h"

namespace pelora::ldap {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Operation = Modification::Operation;

class LdbWritingTest : public LdbBench {
 protected:
  static std::vector<Modification> CountOn(int from) {
    std::vector<Modification> request;
    if (from > 0)
      request.push_back({Operation::kDelete, "peloraQuotaHard", {std::to_string(from)}});
    request.push_back({Operation::kAdd, "peloraQuotaHard", {std::to_string(from + 1)}});
    return request;
  }
  /// Does the requests; the codes of their ends.
  static std::vector<int> DoAll(IDirectoryStore& store, std::vector<ModifyRequest> requests) {
    std::vector<int> codes;
    std::size_t at = 0;
    store.ModifyManyStrictly(
        [&]() -> std::optional<ModifyRequest> {
          // The source may ask for more while others are under way.
          Entry entry;
          EXPECT_TRUE(store.Read(kUser, {}, entry).Ok());
          if (at == requests.size()) return std::nullopt;
          return requests[at++];
        },
        [&](const StoreStatus& status) {
          Entry entry;
          EXPECT_TRUE(store.Read(kUser, {}, entry).Ok());
          codes.push_back(status.code);
        });
    return codes;
  }

  static int QuotaOf(const Entry& entry) {
    const auto found = entry.attributes.find("peloraQuotaHard");
    return found == entry.attributes.end() ? 0 : std::stoi(found->second.front());
  }

  /// Reads the user and another one together.
  static void ReadTogether(IDirectoryStore& store, const std::vector<std::string>& attributes = {
                                                       "peloraQuotaHard", "mail"}) {
    const std::vector<std::string> names = {kUser, pelora::sample::kTom};
    const StoreStatus read =
        store.ReadMany(names, attributes, [](const StoreStatus& status, const Entry& /*entry*/) {
          EXPECT_TRUE(status.Ok()) << status.text;
          return true;
        });
    EXPECT_TRUE(read.Ok());
  }
  /// Does the requests, and asks nothing meanwhile; the codes of their ends.
  std::vector<int> DoKnown(std::vector<ModifyRequest> requests) {
    std::vector<int> codes;
    std::size_t at = 0;
    store_->ModifyManyStrictly(
        [&]() -> std::optional<ModifyRequest> {
          if (at == requests.size()) return std::nullopt;
          return requests[at++];
        },
        [&](const StoreStatus& status) { codes.push_back(status.code); });
    return codes;
  }

  std::unique_ptr<IDirectoryStore> store_ = Open();
};

TEST_F(LdbWritingTest, AStrictModificationComparesAndWritesInOneStep) {
  EXPECT_TRUE(store_->ModifyStrictly(kUser, CountOn(0)).Ok());
  EXPECT_EQ(store_->ModifyStrictly(kUser, CountOn(0)).code, kLdapValueExists);
  EXPECT_TRUE(store_->ModifyStrictly(kUser, CountOn(1)).Ok());
  const StoreStatus stale = store_->ModifyStrictly(kUser, CountOn(1));
  EXPECT_EQ(stale.code, kLdapNoSuchAttribute);
  EXPECT_EQ(stale.text, "attribute 'peloraQuotaHard': a value that is to be deleted is not there");
  EXPECT_THAT(OnUser("peloraQuotaHard"), ElementsAre("2"));
  // The other way is as it was.
  const std::vector<Modification> permissive = {{Operation::kDelete, "peloraQuotaHard", {"9"}}};
  EXPECT_TRUE(store_->Modify(kUser, permissive).Ok());
}

TEST_F(LdbWritingTest, OfManyTheRefusedOnesDoNotKeepTheOthersFromBeingDone) {
  std::vector<ModifyRequest> requests;
  for (int number = 0; number < 300; ++number) requests.push_back({kUser, CountOn(number)});
  requests.insert(requests.begin() + 2, {kUser, CountOn(0)});
  requests.insert(requests.begin() + 4, {"no name", CountOn(0)});
  requests.insert(requests.begin() + 5, {std::string("CN=Nobody,") + kBase, CountOn(0)});
  const std::vector<int> codes = DoAll(*store_, requests);
  ASSERT_THAT(codes, SizeIs(303));
  for (std::size_t at = 0; at < codes.size(); ++at) {
    const int expected = at == 2   ? kLdapValueExists
                         : at == 4 ? kLdapInvalidDnSyntax
                         : at == 5 ? kLdapNoSuchObject
                                   : 0;
    EXPECT_EQ(codes[at], expected) << at;
  }
  EXPECT_THAT(OnUser("peloraQuotaHard"), ElementsAre("300"));
  EXPECT_THAT(DoAll(*store_, {}), IsEmpty());
}

TEST_F(LdbWritingTest, MoreThanAreWrittenTogetherAreDoneInTheirOrder) {
  constexpr int kRequests = 4300;
  int fetched = 0;
  int done = 0;
  store_->ModifyManyStrictly(
      [&]() -> std::optional<ModifyRequest> {
        // The source reads what it is about, also while others are written.
        if (fetched % 100 == 0) ReadTogether(*store_);
        if (fetched == kRequests) return std::nullopt;
        return ModifyRequest{kUser, CountOn(fetched++)};
      },
      [&](const StoreStatus& status) {
        EXPECT_TRUE(status.Ok()) << done << status.text;
        if (++done % 1000 == 0) ReadTogether(*store_);
      });
  EXPECT_EQ(done, kRequests);
  EXPECT_THAT(OnUser("peloraQuotaHard"), ElementsAre(std::to_string(kRequests)));
}

TEST_F(LdbWritingTest, WhatWasAnnouncedIsReadWhileOthersAreWritten) {
  auto& ahead = dynamic_cast<IReadsAhead&>(*store_);
  const std::vector<std::string> names = {kUser, pelora::sample::kTom, "no name",
                                          std::string("CN=Nobody,") + kBase};
  const std::vector<std::string> attributes = {"peloraQuotaHard", "mail"};
  constexpr int kRequests = 6200;
  int fetched = 0;
  int done = 0;
  int last = 0;
  store_->ModifyManyStrictly(
      [&]() -> std::optional<ModifyRequest> {
        if (fetched % 500 == 0) {
          std::vector<int> codes;
          EXPECT_TRUE(store_
                          ->ReadMany(names, attributes,
                                     [&](const StoreStatus& status, const Entry& entry) {
                                       if (codes.empty() && fetched > 0) {
                                         const int is = QuotaOf(entry);
                                         // Not older than what was seen before.
                                         EXPECT_GE(is, last);
                                         EXPECT_LE(is, fetched);
                                         last = is;
                                       }
                                       codes.push_back(status.code);
                                       return true;
                                     })
                          .Ok());
          EXPECT_THAT(codes, ElementsAre(0, 0, kLdapInvalidDnSyntax, kLdapNoSuchObject));
          ahead.Expect(names, attributes);
        }
        if (fetched == kRequests) return std::nullopt;
        return ModifyRequest{kUser, CountOn(fetched++)};
      },
      [&](const StoreStatus& status) { EXPECT_TRUE(status.Ok()) << done++ << status.text; });
  EXPECT_GT(last, 0);
  EXPECT_THAT(OnUser("peloraQuotaHard"), ElementsAre(std::to_string(kRequests)));
  // Once the writing is over, nothing is answered from before.
  ASSERT_TRUE(Replace(*store_, kUser, "peloraQuotaHard", {"7"}).Ok());
  const StoreStatus read =
      store_->ReadMany(names, attributes, [](const StoreStatus& /*status*/, const Entry& entry) {
        EXPECT_EQ(QuotaOf(entry), 7);
        return false;
      });
  EXPECT_TRUE(read.Ok());
}

TEST_F(LdbWritingTest, WhatWasReadBeforeIsComparedWithWhatIsThere) {
  const std::unique_ptr<IDirectoryStore> other = Open();
  ReadTogether(*store_);
  ASSERT_TRUE(Replace(*other, kUser, "peloraQuotaHard", {"5"}).Ok());
  EXPECT_THAT(DoKnown({{kUser, CountOn(0)}}), ElementsAre(kLdapValueExists));
  // Known as it is now, it changes with the first of two.
  ReadTogether(*store_);
  EXPECT_THAT(DoKnown({{kUser, CountOn(5)}, {kUser, CountOn(5)}, {kUser, CountOn(6)}}),
              ElementsAre(0, kLdapNoSuchAttribute, 0));
  EXPECT_THAT(OnUser("peloraQuotaHard"), ElementsAre("7"));
  // What was refused did not become so, and what another object became is nobody else's matter.
  ReadTogether(*store_);
  EXPECT_THAT(DoKnown({{kUser, CountOn(1)}}), ElementsAre(kLdapNoSuchAttribute));
  ReadTogether(*store_);
  ASSERT_TRUE(Replace(*other, pelora::sample::kTom, "peloraQuotaHard", {"1"}).Ok());
  EXPECT_THAT(DoKnown({{kUser, CountOn(7)}, {pelora::sample::kTom, CountOn(1)}}),
              ElementsAre(0, 0));
  EXPECT_THAT(Read(*other, pelora::sample::kTom, "peloraQuotaHard"), ElementsAre("2"));
  // An attribute that was not read is no unset one.
  ReadTogether(*store_, {"mail"});
  EXPECT_THAT(DoKnown({{kUser, CountOn(0)}}), ElementsAre(kLdapValueExists));
}

TEST_F(LdbWritingTest, ADeletionIsOfWhatIsAsItWasMade) {
  const Entry made{
      .dn = std::string("OU=New,") + kBase,
      .attributes = {{"objectClass", {"organizationalUnit"}}, {"peloraAccount", {"1"}}}};
  ASSERT_TRUE(store_->Add(made).Ok());
  Entry other = made;
  other.attributes["peloraAccount"] = {"0"};
  StoreStatus status = store_->Delete(other);
  EXPECT_EQ(status.code, kLdapAssertionFailed);
  EXPECT_EQ(status.text, "attribute 'peloraAccount' was changed since the object was made");
  status = store_->Delete({.dn = made.dn, .attributes = {}});
  EXPECT_EQ(status.code, kLdapAssertionFailed);
  EXPECT_EQ(status.text, "attribute 'peloraAccount' was set since the object was made");
  EXPECT_EQ(store_->Delete({.dn = "no name", .attributes = {}}).code, kLdapInvalidDnSyntax);
  const Entry below{.dn = "CN=x," + made.dn, .attributes = {{"objectClass", {"contact"}}}};
  ASSERT_TRUE(store_->Add(below).Ok());
  EXPECT_EQ(store_->Delete(made).code, kLdapNotAllowedOnNonLeaf);
  EXPECT_TRUE(store_->Delete(below).Ok());
  EXPECT_TRUE(store_->Delete(made).Ok());
  EXPECT_EQ(store_->Delete(made).code, kLdapNoSuchObject);
  Entry entry;
  EXPECT_EQ(Open()->Read(made.dn, {}, entry).code, kLdapNoSuchObject);
}

}  // namespace
}  // namespace pelora::ldap
