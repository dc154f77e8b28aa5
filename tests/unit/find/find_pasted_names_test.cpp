// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/find/find_pasted_names.h"

#include <memory>
#include <utility>

#include "hosts/ldap/forwarding_store.h"
#include "hosts/ldap/ldap_status.h"
#include "tests/unit/find/find_bench.h"

namespace pelora::session {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

constexpr const char* kAnybody = "(|(objectClass=user)(objectClass=contact)(objectClass=group))";
constexpr const char* kMeyer =
    "CN=Meyer\\, Anna,OU=Geschäftsleitung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";

class PastedNames : public FindBench {
 protected:
  FoundNames Find(const std::string& text, const std::string& filter = kAnybody) {
    FoundNames found = FindPastedNames(store(), text, filter);
    EXPECT_TRUE(found.status.Ok()) << found.status.text;
    return found;
  }
};

TEST_F(PastedNames, AreNamesLogonNamesAddressesAndDistinguishedNames) {
  const FoundNames found =
      Find("s.ebert; birgit krämer\r\n\"Anna\" <A.Meyer@linden-werke.example>\n" +
           std::string(kMeyer) + "\nVertrieb Alle\n");
  EXPECT_THAT(found.names,
              UnorderedElementsAre(HasSubstr("Stefan Ebert"), HasSubstr("Birgit Krämer"), kMeyer,
                                   HasSubstr("CN=Vertrieb Alle")))
      << "each once";
  EXPECT_THAT(found.not_found, IsEmpty());
}

TEST_F(PastedNames, OneThatStandsAloneIsWholeToo) {
  EXPECT_THAT(Find(" Birgit Krämer ").names, ElementsAre(HasSubstr("CN=Birgit Krämer,")));
  EXPECT_THAT(Find("Ada <a.meyer@linden-werke.example>").names, ElementsAre(kMeyer));
  EXPECT_THAT(Find("Meyer, Anna").names, ElementsAre(kMeyer));
  EXPECT_THAT(Find("Birgit").not_found, ElementsAre("Birgit")) << "a part is not the whole";
}

TEST_F(PastedNames, WhoIsNobodyAndWhoIsSeveralIsTold) {
  ldap::Entry twin{
      .dn = "CN=Birgit Krämer,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example",
      .attributes = {{"objectClass", {"top", "person", "organizationalPerson", "contact"}},
                     {"cn", {"Birgit Krämer"}},
                     {"name", {"Birgit Krämer"}}}};
  (void)store().Add(twin);
  const FoundNames found = Find("Birgit Krämer\nnobody@example.org\nCN=x,DC=nowhere\ns.ebert");
  EXPECT_THAT(found.names, ElementsAre(HasSubstr("Stefan Ebert")));
  EXPECT_THAT(found.ambiguous, ElementsAre("Birgit Krämer"));
  EXPECT_THAT(found.not_found, UnorderedElementsAre("nobody@example.org", "CN=x,DC=nowhere"));
}

TEST_F(PastedNames, AreOfTheKindThatIsAskedFor) {
  const FoundNames found =
      Find("Vertrieb Alle\nBirgit Krämer\n" + std::string(kMeyer), "(objectClass=group)");
  EXPECT_THAT(found.names, ElementsAre(HasSubstr("CN=Vertrieb Alle")));
  EXPECT_THAT(found.not_found, UnorderedElementsAre("Birgit Krämer", kMeyer));
}

/// A directory of its own, which notes what it is asked for.
class Elsewhere final : public ldap::ForwardingStore {
 public:
  Elsewhere(ldap::IDirectoryStore& any, std::vector<ldap::Entry> there,
            std::vector<std::string>& log)
      : ForwardingStore(any), there_(std::move(there)), log_(log) {}

  ldap::StoreStatus Search(const ldap::SearchRequest& request,
                           const ldap::EntrySink& sink) override {
    log_.push_back(request.base + " " + request.filter);
    for (const ldap::Entry& entry : there_) {
      if (entry.dn.ends_with("," + request.base)) sink(entry);
    }
    return {};
  }

 private:
  std::vector<ldap::Entry> there_;
  std::vector<std::string>& log_;
};

ldap::Entry Somebody(const std::string& name, const std::string& base) {
  return {.dn = "CN=" + name + "," + base, .attributes = {{"name", {name}}}};
}

class PastedNamesAround : public PastedNames {
 protected:
  [[nodiscard]] ldap::StoreOpener Opens(std::vector<ldap::Entry> there) {
    return [this, there = std::move(there)](std::unique_ptr<ldap::IDirectoryStore>& opened,
                                            const std::stop_token& stop) {
      if (stop.stop_requested()) return ldap::StoreStatus{ldap::kLdapUserCancelled, "stopped"};
      opened = std::make_unique<Elsewhere>(store(), there, asked_);
      return ldap::StoreStatus{};
    };
  }
  FoundNames FindAround(const std::string& text) {
    const ldap::PlaceFinder find_places = [this](ldap::IDirectoryStore& /*store*/, auto& places) {
      places = places_;
      return told_;
    };
    return FindPastedNames(store(), text, kAnybody, find_places, stop_.get_token());
  }

  std::vector<std::string> asked_;
  std::stop_source stop_;
  ldap::StoreStatus told_;
  const ldap::StoreOpener forest_ =
      Opens({Somebody("Ann", "DC=a"), Somebody("Bob", "DC=a"), Somebody("Bob", "DC=b"),
             Somebody("Birgit Krämer", "DC=b")});
  std::vector<ldap::SearchPlace> places_ = {
      {"linden-werke.example", {"DC=linden-werke,DC=example"}, {}},
      {"", {"DC=a", "DC=b"}, forest_},
      {"a", {"DC=a"}, forest_},
      {"partner",
       {"DC=partner"},
       Opens({Somebody("Ann", "DC=partner"), Somebody("Cid", "DC=partner")})}};
};

TEST_F(PastedNamesAround, WhoIsNobodyHereIsLookedForInTheForestAndThenWhereItTrusts) {
  const FoundNames found = FindAround("Birgit Krämer\nAnn\nBob\nCid\nnobody@x");
  EXPECT_TRUE(found.status.Ok()) << found.status.text;
  EXPECT_THAT(found.names,
              ElementsAre(HasSubstr("CN=Birgit Krämer,OU="), "CN=Ann,DC=a", "CN=Cid,DC=partner"))
      << "whoever is nearer is meant";
  EXPECT_THAT(found.ambiguous, ElementsAre("Bob"));
  EXPECT_THAT(found.not_found, ElementsAre("nobody@x"));
  EXPECT_THAT(found.unreached, IsEmpty());
  // Each place once, and only for whom is missing.
  ASSERT_EQ(asked_.size(), 3U);
  EXPECT_THAT(asked_[0], AllOf(StartsWith("DC=a "), HasSubstr("Ann"), Not(HasSubstr("Birgit"))));
  EXPECT_THAT(asked_[1], StartsWith("DC=b "));
  EXPECT_THAT(asked_[2], AllOf(StartsWith("DC=partner "), HasSubstr("Cid"), Not(HasSubstr("Ann"))));
}

TEST_F(PastedNamesAround, NobodyIsAskedWhenEverybodyIsFound) {
  EXPECT_THAT(FindAround("Birgit Krämer\nCN=x,DC=a").names, ElementsAre(HasSubstr("Birgit")));
  EXPECT_THAT(asked_, IsEmpty());
}

TEST_F(PastedNamesAround, WhereNobodyCanBeAskedIsTold) {
  places_[1].open = [](auto& /*store*/, const std::stop_token& /*stop*/) {
    return ldap::StoreStatus{ldap::kLdapServerDown, "gone"};
  };
  const FoundNames found = FindAround("Ann\nCid");
  EXPECT_TRUE(found.status.Ok()) << found.status.text;
  EXPECT_THAT(found.unreached, ElementsAre("the whole forest"));
  // A domain of it may be had by itself.
  EXPECT_THAT(found.names, ElementsAre("CN=Ann,DC=a", "CN=Cid,DC=partner"));
}

TEST_F(PastedNamesAround, WhoeverStopsItWaitsForNoOtherDomain) {
  stop_.request_stop();
  EXPECT_EQ(FindAround("Ann").status.code, ldap::kLdapUserCancelled);
  EXPECT_THAT(asked_, IsEmpty());
}

TEST_F(PastedNamesAround, ADirectoryThatDoesNotSayHasOneDomain) {
  told_ = {ldap::kLdapNoSuchObject, "no partitions"};
  EXPECT_THAT(FindAround("Ann").not_found, ElementsAre("Ann"));
  told_ = {ldap::kLdapServerDown, "gone"};
  EXPECT_EQ(FindAround("Ann").status.code, ldap::kLdapServerDown)
      << "one that is gone does not say";
}

TEST_F(PastedNames, MayBeMoreThanGoIntoOneQuestion) {
  std::string list = "s.ebert";
  for (int at = 0; at < 120; ++at) list += "\nnobody" + std::to_string(at);
  const FoundNames found = Find(list + "\n" + std::string("a.meyer@linden-werke.example"));
  EXPECT_THAT(found.names, UnorderedElementsAre(HasSubstr("Stefan Ebert"), kMeyer));
  EXPECT_EQ(found.not_found.size(), 120U);
}

}  // namespace
}  // namespace pelora::session
