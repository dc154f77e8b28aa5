// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/pages/settings_changer.h"

#include <gmock/gmock.h>

#include "hosts/ctl/objects/read_settings.h"
#include "hosts/ctl/results/show_settings.h"
#include "hosts/ldap/ldap_status.h"
#include "tests/ctl/tab_with_a_new_field.h"
#include "tests/support/fault_store.h"
#include "tests/support/observed_store.h"
#include "tests/support/sample_file.h"

namespace pelora::ctl {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

constexpr const char* kHelga =
    "CN=Helga Önder,OU=IT,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
constexpr const char* kTom =
    "CN=Tom Richter,OU=IT,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";

/// What becomes of assignments, on the sample company in a file whose readings can be made to fail.
class SettingsChangerTest : public ::testing::Test {
 protected:
  SettingsChangerTest() {
    auto fault = std::make_unique<testing::FaultStore>(sample_.store());
    fault_ = fault.get();
    session_.emplace(sample_.file().path(), std::move(fault), ldap::StoreOpener());
    platform_.emplace(session_->service, session_->store, module_);
  }

  [[nodiscard]] ldap::Entry Entry() {
    ldap::Entry entry;
    EXPECT_TRUE(sample_.store().Read(kHelga, SettingsAttributes(), entry).Ok());
    return entry;
  }
  [[nodiscard]] changes::Prepared Prepare(const Assignment& assignment,
                                          const session::ComponentMaker& make = &CreateComponent) {
    FieldCatalogue catalogue(session_->specifiers, platform_->platform, module_, make);
    ObjectFinder finder(*session_);
    SettingsChanger changer(*session_, module_, catalogue, finder);
    return changer.Prepare({.entry = Entry()}, std::span(&assignment, 1));
  }
  [[nodiscard]] changes::Result Failed(const std::string& added) {
    const changes::Prepared prepared = Prepare({.field = "peloraSendAsPrivilege",
                                                .operation = Assignment::Operation::kAdd,
                                                .value = added});
    return prepared.instead.value_or(changes::Result{.dn = "nothing happened instead"});
  }

  testing::SampleStore sample_;
  resources::ResourceFile module_ =
      *resources::ResourceFile::Read(resources::EmbeddedResourceBytes()).value;
  testing::FaultStore* fault_ = nullptr;
  std::optional<session::DirectorySession> session_;
  std::optional<PagePlatform> platform_;
};

TEST_F(SettingsChangerTest, AFieldThatIsAddedToATabIsShownAndSet) {
  const changes::Prepared prepared =
      Prepare({.field = "DESCRIPTION", .value = "onwards"}, &MakeTabWithANewField);
  ASSERT_FALSE(prepared.instead) << prepared.instead->message;
  ASSERT_THAT(prepared.change.attributes, SizeIs(1));
  EXPECT_EQ(prepared.change.attributes.front().attribute, "description");
  EXPECT_THAT(prepared.change.attributes.front().wanted, ElementsAre("onwards"));

  FieldCatalogue catalogue(session_->specifiers, platform_->platform, module_,
                           &MakeTabWithANewField);
  ldap::Entry entry = Entry();
  entry.attributes["description"] = {"onwards"};
  EXPECT_THAT(SettingsJson(SettingsOf(entry, session_->store->schema(), catalogue)),
              HasSubstr("\"fields\":{\"description\":\"onwards\"}"));
}

TEST_F(SettingsChangerTest, OfManyObjectsThatWereReadNothingIsAskedAnyMore) {
  auto observed = std::make_unique<testing::ObservedStore>(sample_.store());
  const std::vector<std::string>& asked = observed->log;
  session::DirectorySession session(sample_.file().path(), std::move(observed),
                                    ldap::StoreOpener());
  const PagePlatform platform(session.service, session.store, module_);
  FieldCatalogue catalogue(session.specifiers, platform.platform, module_, &CreateComponent);
  ObjectFinder finder(session);
  SettingsChanger changer(session, module_, catalogue, finder);
  const auto change = [&](const std::string& limit) {
    const std::vector<Assignment> wanted = {{.field = "peloraQuotaOverride", .value = "yes"},
                                            {.field = "peloraQuotaHard", .value = limit}};
    const changes::Prepared prepared = changer.Prepare({.entry = Entry()}, wanted);
    EXPECT_FALSE(prepared.instead);
    EXPECT_THAT(prepared.change.attributes, SizeIs(2));
  };
  // Every tab binds the root entry of the directory; that of the first object serves them all.
  change("100");
  const std::size_t asked_for_one = asked.size();
  for (const char* limit : {"200", "300", "400"}) change(limit);
  EXPECT_EQ(asked.size(), asked_for_one) << ::testing::PrintToString(asked);
}

TEST_F(SettingsChangerTest, ADirectoryThatCannotBeAskedIsThatObjectsFailure) {
  const ldap::StoreStatus lost{ldap::kLdapTimeout, "no answer"};
  fault_->FailSearching(lost);
  // The name cannot be looked for, and what is found cannot be looked at.
  for (const char* added : {"t.richter", kTom}) {
    const changes::Result result = Failed(added);
    EXPECT_EQ(result.dn, kHelga);
    // Nothing was sent that could have been done.
    EXPECT_EQ(result.outcome, changes::Outcome::kFailed) << added;
    EXPECT_EQ(result.message, "no answer");
    EXPECT_EQ(result.code, ldap::HresultOfLdap(ldap::kLdapTimeout));
  }
  fault_->FailSearching({});
  fault_->FailReading(lost);
  EXPECT_EQ(Failed(kTom).outcome, changes::Outcome::kFailed);
}

}  // namespace
}  // namespace pelora::ctl
