// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/check/run_check.h"

#include <gmock/gmock.h>

#include <set>

#include "hosts/ldap/ldap_status.h"
#include "tests/support/observed_store.h"
#include "tests/support/sample_file.h"
#include "tests/unit/check/check_bench.h"

namespace pelora::session {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class RunningCheck : public CheckBench {
 protected:
  std::vector<Finding> Run(ldap::IDirectoryStore& store, const CheckRequest& request) {
    std::vector<Finding> findings;
    status_ = RunCheck(store, request, fields(),
                       [&findings](Finding finding) { findings.push_back(std::move(finding)); });
    return findings;
  }

  ldap::StoreStatus status_;
};

TEST_F(RunningCheck, ASoundDirectoryHasNoFindings) {
  EXPECT_THAT(Run(store(), {}), IsEmpty());
  EXPECT_TRUE(status_.Ok());
}

TEST_F(RunningCheck, TheSampleCompanyHasTheFaultsThatItIsMadeWith) {
  pelora::testing::SampleStore untouched;
  std::vector<std::string> found;
  for (const Finding& finding : Run(untouched.store(), {})) {
    found.push_back(std::string(finding.rule) + "\t" + CommonName(finding.dn));
  }
  EXPECT_THAT(found,
              ElementsAre("reference-dangling\tStefan Ebert", "feature-conflict\tSofie Albrecht",
                          "resource-type\tKleiner Saal"));
}

TEST_F(RunningCheck, FindingsAreOrderedByRuleAndThenByName) {
  Put(kUser, "peloraHidden", {"2"});
  Put(kUser, "mail", {"heike"});
  Put(kOtherUser, "mail", {"dieter"});
  Put(kOtherUser, "peloraHidden", {"2"});
  std::vector<std::string> found;
  for (const Finding& finding :
       Run(store(), {.rules = {FindCheckRule("value-range"), FindCheckRule("address-syntax")}})) {
    found.push_back(std::string(finding.rule) + "\t" + CommonName(finding.dn));
  }
  EXPECT_THAT(found, ElementsAre("address-syntax\tDieter Schäfer", "address-syntax\tHeike Naumann",
                                 "value-range\tDieter Schäfer", "value-range\tHeike Naumann"));
}

TEST_F(RunningCheck, ObjectsAreReadOnceWhateverTheNumberOfRules) {
  pelora::testing::ObservedStore observed(store());
  (void)Run(observed, {.rules = {FindCheckRule("address-syntax")}});
  EXPECT_THAT(observed.log, ElementsAre("read root", "search DC=linden-werke,DC=example"));

  observed.log.clear();
  Put(kUser, "peloraSendAsPrivilege", {kNobody, "CN=Somebody,DC=linden-werke,DC=example"});
  EXPECT_EQ(Run(observed, {}).size(), 2U);
  // The servers, the objects, and at once all names that did not pass by.
  EXPECT_THAT(observed.log,
              ElementsAre("read root", "search DC=linden-werke,DC=example",
                          "search DC=linden-werke,DC=example", ::testing::HasSubstr("and 2 more")));
}

TEST_F(RunningCheck, EveryRuleHasANameAndIsFoundByIt) {
  std::set<std::string_view> names;
  for (const CheckRule& rule : CheckRules()) {
    EXPECT_TRUE(names.insert(rule.name).second) << rule.name;
    EXPECT_EQ(FindCheckRule(rule.name), &rule);
    EXPECT_FALSE(rule.finds.empty());
    EXPECT_FALSE(AttributesOf(rule, fields()).empty()) << rule.name;
  }
  EXPECT_EQ(names.size(), 14U);
  EXPECT_EQ(FindCheckRule("address"), nullptr);
}

TEST_F(RunningCheck, NamesAndServersAreThoseThatTheTabsHave) {
  EXPECT_THAT(
      fields().name_attributes(),
      AllOf(Contains("peloraSendAsPrivilege"), Contains("peloraSystemAdmin"),
            Contains("peloraViewPrivilege"), Contains("peloraAdminPrivilege"),
            Contains("peloraQuotaUserWarningRecipients"),
            Contains("peloraQuotaCompanyWarningRecipients"), Not(Contains("peloraUserServer"))));
  EXPECT_THAT(fields().server_attributes(),
              AllOf(Contains("peloraUserServer"), Contains("peloraCompanyServer")));
}

TEST_F(RunningCheck, ABaseThatIsNotThereIsTold) {
  EXPECT_THAT(Run(store(), {.base = kNobody}), IsEmpty());
  EXPECT_EQ(status_.code, ldap::kLdapNoSuchObject);
}

}  // namespace
}  // namespace pelora::session
