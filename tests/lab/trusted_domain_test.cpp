// SPDX-License-Identifier: Apache-2.0
// A second domain, of a forest of its own, that trusts the first one (tests/lab/make_trusted.sh):
// who is found there and written there by whom.
#include "hosts/ldap/ldap_status.h"
#include "hosts/session/directory_session.h"
#include "hosts/session/find/find_pasted_names.h"
#include "tests/lab/peloractl_lab.h"

namespace pelora::lab {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr const char* kPartner = "partner.test";
constexpr const char* kPartnerController = "pdc.partner.test";
constexpr const char* kPartnerBase = "DC=partner,DC=test";
constexpr const char* kPetra = "CN=Petra Partner,OU=Partners,DC=partner,DC=test";

/// What the tool, which asks the second domain's controller, prints of an attribute.
std::string ByTool(const std::string& dn, const std::string& attribute) {
  return OutputOf(std::string("ldapsearch -N -Q -Y GSSAPI -LLL -o ldif-wrap=no -H ldap://") +
                  kPartnerController + " -s base -b '" + dn + "' " + attribute + " | grep '^" +
                  attribute + ":' || true");
}

class TrustedDomain : public LabPeloractl {
 protected:
  TrustedDomain() {
    EXPECT_EQ(ToText(session_->find_places()(session_->store(), places_)), "0");
    EXPECT_EQ(places_.size(), 2U);
  }
  ~TrustedDomain() override {
    static_cast<void>(Replace(session_->store(), kPetra, "description", {"as it was"}));
  }
  [[nodiscard]] ldap::IDirectoryStore& store() { return session_->store(); }

  std::unique_ptr<NetworkSession> session_ = OpenSession(NetworkOptions{});
  std::vector<ldap::SearchPlace> places_;
};

TEST_F(TrustedDomain, IsAPlaceToLookInAndItsControllerFindsWhoIsThere) {
  ASSERT_EQ(places_.size(), 2U);
  EXPECT_EQ(places_[0].domain, "pelora.test");
  EXPECT_EQ(places_[1].domain, kPartner);
  EXPECT_THAT(places_[1].bases, ElementsAre(kPartnerBase));
  std::unique_ptr<ldap::IDirectoryStore> opened;
  ASSERT_EQ(ToText(places_[1].open(opened, {})), "0");
  EXPECT_TRUE(opened->IsSealed());
  ldap::Entry root;
  ASSERT_EQ(ToText(opened->ReadRoot(root)), "0");
  EXPECT_THAT(root.attributes["dnsHostName"], ElementsAre(kPartnerController));
  std::vector<std::string> found;
  EXPECT_EQ(ToText(opened->Search({.base = kPartnerBase,
                                   .scope = ldap::SearchScope::kSubtree,
                                   .filter = "(&(objectClass=user)(mail=petra@partner.test))",
                                   .attributes = {"mail"}},
                                  [&](const Entry& entry) {
                                    found.push_back(entry.dn);
                                    return true;
                                  })),
            "0");
  EXPECT_THAT(found, ElementsAre(kPetra));
}

TEST_F(TrustedDomain, APastedNameIsFoundThere) {
  const session::FoundNames found = session::FindPastedNames(
      store(), "Ada Brandt; petra; nobody at all", "(objectClass=user)", session_->find_places());
  EXPECT_TRUE(found.status.Ok()) << found.status.text;
  EXPECT_THAT(found.names, ElementsAre("CN=Ada Brandt,OU=Linden," + Base(), kPetra));
  EXPECT_THAT(found.not_found, ElementsAre("nobody at all"));
  EXPECT_THAT(found.unreached, IsEmpty());
}

TEST_F(TrustedDomain, ItsObjectsAreReadAndWrittenOnItsController) {
  EXPECT_EQ(ReadValue(store(), kPetra, "mail"), "petra@partner.test");
  EXPECT_EQ(ToText(Replace(store(), kPetra, "description", {"by the other domain"})), "0");
  EXPECT_EQ(ByTool(kPetra, "description"), "description: by the other domain\n");
  const std::string made = "CN=Made from elsewhere,OU=Partners,DC=partner,DC=test";
  EXPECT_EQ(ToText(store().Add({.dn = made, .attributes = {{"objectClass", {"contact"}}}})), "0");
  EXPECT_EQ(ByTool(made, "cn"), "cn: Made from elsewhere\n");
  EXPECT_EQ(ToText(store().Remove({made, {}}, ldap::IDirectoryStore::Extent::kAlone)), "0");
  // The home server has no part in it.
  EXPECT_EQ(session_->server(), Server());
}

TEST_F(TrustedDomain, PeloractlShowsAndSetsWhatLiesThere) {
  const std::string named = "'" + std::string(kPetra) + "'";
  const ProgramRun shown = Ctl("show " + named);
  EXPECT_EQ(shown.code, 0) << shown.errors;
  EXPECT_THAT(shown.output, HasSubstr("petra@partner.test"));
  for (const char* const value : {"yes", "no"}) {
    const ProgramRun set = Ctl("set " + named + " peloraHidden=" + value);
    EXPECT_EQ(set.code, 0) << set.errors;
    EXPECT_EQ(ByTool(kPetra, "peloraHidden"),
              std::string("peloraHidden: ") + (*value == 'y' ? "1\n" : "0\n"));
  }
}

TEST_F(TrustedDomain, WhoMayNotWriteThereIsToldSoByItsController) {
  const EnvironmentVariable tickets("KRB5CCNAME", TicketsOf(kHelper));
  const auto session = OpenSession(NetworkOptions{});
  EXPECT_EQ(ReadValue(session->store(), kPetra, "mail"), "petra@partner.test");
  EXPECT_EQ(Replace(session->store(), kPetra, "description", {"not allowed"}).code,
            ldap::kLdapInsufficientAccessRights);
}

TEST_F(TrustedDomain, OneWhoseControllerIsGoneSaysSoAndTheOwnGoesOn) {
  const std::string pid = OutputOf("cat '" + Home() + "/pdc.pid'");
  // It is not killed: the tests after this one need it.
  static_cast<void>(OutputOf("kill -STOP " + pid));
  const auto session = OpenSession({.connect_timeout = kShortWait, .request_timeout = kShortWait});
  EXPECT_THAT(ToText(Replace(session->store(), kPetra, "description", {"not written"})),
              StartsWith("-1 no controller of the domain 'partner.test': "));
  EXPECT_EQ(ReadValueAtLast(session->store(), ada_, "cn").substr(0, 3), "Ada");
  static_cast<void>(OutputOf("kill -CONT " + pid));
  std::string told;
  for (int tries = 0; tries < kTries && told != "0"; ++tries) {
    told = ToText(Replace(session->store(), kPetra, "description", {"written"}));
  }
  EXPECT_EQ(told, "0");
}

}  // namespace
}  // namespace pelora::lab
