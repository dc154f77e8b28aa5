// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/objects/object_finder.h"

#include <gmock/gmock.h>

#include "hosts/ldap/ldap_status.h"

namespace pelora::ctl {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

constexpr const char* kBase = "DC=many,DC=example";

/// Contacts in no order, as many as are wanted; what is asked for is written down. It is for
/// searching alone.
class StoreOfMany final : public ldap::IDirectoryStore {
 public:
  explicit StoreOfMany(std::size_t count) : count_(count) {}

  /// The attributes of every search.
  std::vector<std::vector<std::string>> searches;

  [[nodiscard]] static std::string NameOf(std::size_t number) {
    constexpr std::size_t kDigits = 5;
    const std::string digits = std::to_string(number);
    return "CN=Contact " + std::string(kDigits - digits.size(), '0') + digits + "," + kBase;
  }

  [[nodiscard]] const ldap::Schema& schema() const override { return schema_; }
  ldap::StoreStatus ReadRoot(ldap::Entry& root) override {
    root = {.dn = "", .attributes = {{"defaultNamingContext", {kBase}}}};
    return {};
  }
  ldap::StoreStatus Read(const std::string& dn, std::span<const std::string> /*attributes*/,
                         ldap::Entry& entry) override {
    entry = {.dn = dn, .attributes = {{"objectClass", {"top", "domainDNS"}}}};
    return {};
  }
  ldap::StoreStatus Search(const ldap::SearchRequest& request,
                           const ldap::EntrySink& sink) override {
    searches.push_back(request.attributes);
    for (std::size_t number = count_; number > 0; --number) {
      ldap::Entry entry{.dn = NameOf(number - 1),
                        .attributes = {{"objectClass", {"top", "person", "contact"}}}};
      if (request.attributes.size() > 1) entry.attributes["mail"] = {"a@b.example"};
      if (!sink(std::move(entry))) break;
    }
    return {};
  }
  ldap::StoreStatus Modify(const std::string& /*dn*/,
                           std::span<const ldap::Modification> /*modifications*/) override {
    return Refuse();
  }
  ldap::StoreStatus ModifyStrictly(const std::string& /*dn*/,
                                   std::span<const ldap::Modification> /*modifications*/) override {
    return Refuse();
  }
  ldap::StoreStatus Add(const ldap::Entry& /*entry*/) override { return Refuse(); }
  ldap::StoreStatus Delete(const ldap::Entry& /*made*/) override { return Refuse(); }

 private:
  static ldap::StoreStatus Refuse() { return {ldap::kLdapUnwillingToPerform, "for searching"}; }

  std::size_t count_;
  ldap::Schema schema_;
};

/// What is selected of so many contacts.
class SelectedContacts {
 public:
  explicit SelectedContacts(std::size_t count)
      : store_(new StoreOfMany(count)),
        session_("many", std::unique_ptr<ldap::IDirectoryStore>(store_), ldap::StoreOpener()),
        targets_(ObjectFinder(session_).Select(
            {.filter = {}, .class_word = "contact", .base = kBase}, {"objectClass", "mail"})) {}

  [[nodiscard]] const std::vector<Target>& targets() const { return targets_; }
  [[nodiscard]] const StoreOfMany& store() const { return *store_; }
  /// Whether they are all there, in the order of their names.
  [[nodiscard]] bool AreAllInOrder() const {
    for (std::size_t at = 0; at < targets_.size(); ++at) {
      if (targets_[at].dn != StoreOfMany::NameOf(at)) return false;
    }
    return true;
  }

 private:
  StoreOfMany* store_;
  session::DirectorySession session_;
  std::vector<Target> targets_;
};

TEST(SelectedObjects, AreKeptAsTheyWereRead) {
  const SelectedContacts selected(ObjectFinder::kMostKept);
  ASSERT_THAT(selected.targets(), SizeIs(ObjectFinder::kMostKept));
  EXPECT_TRUE(selected.AreAllInOrder());
  for (const Target& target : selected.targets()) {
    ASSERT_NE(target.entry, nullptr);
    ASSERT_TRUE(target.entry->attributes.contains("mail"));
  }
  EXPECT_THAT(selected.store().searches, ElementsAre(ElementsAre("objectClass", "mail")));
}

TEST(SelectedObjects, AreNamedAloneWhenThereAreVeryMany) {
  const SelectedContacts selected(ObjectFinder::kMostKept + 1);
  ASSERT_THAT(selected.targets(), SizeIs(ObjectFinder::kMostKept + 1));
  EXPECT_TRUE(selected.AreAllInOrder());
  for (const Target& target : selected.targets()) ASSERT_EQ(target.entry, nullptr);
  EXPECT_THAT(selected.store().searches,
              ElementsAre(ElementsAre("objectClass", "mail"), ElementsAre("objectClass")));
}

}  // namespace
}  // namespace pelora::ctl
