// SPDX-License-Identifier: Apache-2.0
// What is looked up in the directory while something is typed, in the sample company.
#include <gtest/gtest.h>

#include "hosts/session/directory_session.h"
#include "hosts/session/typed/address_owner.h"
#include "hosts/session/typed/default_quota.h"
#include "hosts/session/typed/known_server.h"
#include "tests/support/sample_file.h"

namespace pelora::session {
namespace {

const std::string kCompany = "OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
const std::string kBirgit = "CN=Birgit Krämer,OU=Vertrieb," + kCompany;

class LookUps : public ::testing::Test {
 protected:
  [[nodiscard]] ldap::IDirectoryStore& store() { return sample_.store(); }
  [[nodiscard]] std::string Owner(std::string_view address,
                                  const std::vector<std::string>& except) {
    const std::optional<DirectoryObject> owner = FindAddressOwner(store(), address, except);
    return owner ? owner->name : "nobody";
  }
  void Set(const std::string& dn, const std::string& attribute, const std::string& value) {
    const std::vector<ldap::Modification> change = {{.attribute = attribute, .values = {value}}};
    EXPECT_TRUE(store().Modify(dn, change).Ok());
  }

 private:
  pelora::testing::SampleStore sample_;
};

TEST_F(LookUps, AnAddressBelongsToWhoHasItInWhateverPlaceAndCase) {
  EXPECT_EQ(Owner("b.kraemer@linden-werke.example", {}), "Birgit Krämer");
  EXPECT_EQ(Owner("VERTRIEB@linden-werke.example", {}), "Birgit Krämer") << "among the others";
  EXPECT_EQ(Owner("b.kraemer@linden-werke.example", {"cn=birgit krämer, ou=Vertrieb," + kCompany}),
            "nobody");
  EXPECT_EQ(Owner("new@linden-werke.example", {}), "nobody");
  EXPECT_EQ(Owner("*", {}), "nobody") << "taken literally";
}

TEST_F(LookUps, AUserFollowsTheNearestCompany) {
  Set(kCompany, "peloraUserDefaultQuotaOverride", "1");
  Set(kCompany, "peloraUserDefaultQuotaWarn", "800");
  Set(kCompany, "peloraUserDefaultQuotaSoft", "0");
  Set(kCompany, "peloraUserDefaultQuotaHard", "1000");
  const std::optional<DefaultQuota> quota = FindDefaultQuota(store(), kBirgit);
  ASSERT_TRUE(quota);
  EXPECT_EQ(DefaultQuotaSentence(*quota),
            "The default of Linden-Werke Chemnitz holds: warning at 800 MB, hard limit 1000 MB.");
  Set(kCompany, "peloraUserDefaultQuotaOverride", "0");
  EXPECT_EQ(DefaultQuotaSentence(FindDefaultQuota(store(), kBirgit).value()),
            "Linden-Werke Chemnitz gives its users no default quota.");
  Set(kCompany, "peloraAccount", "0");
  EXPECT_FALSE(FindDefaultQuota(store(), kBirgit)) << "it is no company";
}

TEST_F(LookUps, AHomeServerIsAComputerWithThatRole) {
  EXPECT_EQ(JudgeServer(store(), "mail01").sentence, "");
  EXPECT_EQ(JudgeServer(store(), "").sentence, "");
  EXPECT_EQ(JudgeServer(store(), "mail*").verdict, Verdict::kOdd);
  EXPECT_EQ(JudgeServer(store(), "nowhere").sentence, "There is no server of the name nowhere.");
  Set("CN=mail01,OU=Groupware Servers,DC=linden-werke,DC=example", "peloraAccount", "0");
  EXPECT_EQ(JudgeServer(store(), "mail01").sentence, "mail01 is a computer, but no Pelora server.");
}

}  // namespace
}  // namespace pelora::session
