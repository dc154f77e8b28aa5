// SPDX-License-Identifier: Apache-2.0
// A domain of several controllers: which one is worked with, and what a read-only one is good for.
#include "hosts/session/connection_status.h"
#include "tests/lab/several_controllers.h"

namespace pelora::lab {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Extent = ldap::IDirectoryStore::Extent;

class Controllers : public SeveralControllers {};

TEST_F(Controllers, TheNearestIsTheOneOfThisMachinesSite) {
  // It waits for all of them as long as it has to.
  const NetworkOptions options{.ping_timeout = std::chrono::minutes(1)};
  const auto session = OpenSession(options);
  const ldap::ChosenServer chosen = session->chosen();
  EXPECT_EQ(chosen.name.Text(), HostOf(kNear));
  EXPECT_EQ(chosen.wanted_site, kNearSite);
  EXPECT_TRUE(chosen.is_near);
  EXPECT_EQ(session::WhyChosen(chosen), "writable, of the site 'Branch'");
  EXPECT_EQ(ReadValue(session->store(), user_, "description"), "before");

  NetworkOptions far = options;
  far.site = kFarSite;
  EXPECT_EQ(OpenSession(far)->server(), HostOf(kFirstController));
}

TEST_F(Controllers, ASiteThatGoesAwayIsLeftForAnother) {
  const auto session = OpenSession(NetworkOptions{});
  ASSERT_EQ(session->server(), HostOf(kNear));
  RunningServer near(kNear);
  RunningServer read_only(kReadOnly);
  near.Kill();
  read_only.Kill();
  EXPECT_EQ(ReadValue(session->store(), user_, "description"), "before");
  EXPECT_EQ(session->server(), HostOf(kFirstController));
  const ldap::ChosenServer chosen = OpenSession(NetworkOptions{})->chosen();
  EXPECT_EQ(chosen.name.Text(), HostOf(kFirstController));
  EXPECT_FALSE(chosen.is_near);
}

TEST_F(Controllers, AReadOnlyOneIsUsedForEverythingAndChangesGoToTheWritableOne) {
  const auto session = OpenSession({.server = HostOf(kReadOnly)});
  ldap::IDirectoryStore& store = session->store();
  EXPECT_EQ(ToText(Replace(store, user_, "description", {"written"})), "0");
  ASSERT_TRUE(session->chosen().writer);
  EXPECT_EQ(session->chosen().writer->Text(), HostOf(kFirstController));
  EXPECT_EQ(DescriptionOn(kFirstController), "written");
  // Reading goes on nearby, where it is not known yet.
  EXPECT_EQ(ReadValue(store, user_, "description"), "before");
  Replicate(kReadOnly, kFirstController);
  EXPECT_EQ(ReadValue(store, user_, "description"), "written");
  EXPECT_EQ(session->server(), HostOf(kReadOnly));

  session::ConnectionStatus status;
  ASSERT_EQ(ToText(session::ReadServerStatus(
                store, [] { return std::time(nullptr); }, status)),
            "0");
  EXPECT_TRUE(status.is_read_only);
  EXPECT_EQ(status.site, kNearSite);
}

TEST_F(Controllers, OnAReadOnlyOneObjectsAreMadeRenamedAndDeleted) {
  const auto session = OpenSession({.server = HostOf(kReadOnly)});
  ldap::IDirectoryStore& store = session->store();
  const std::string unit = "OU=Made beside a read-only one,OU=Contract," + Base();
  const std::string contact = "CN=Änne Groß\\, Dr.," + unit;
  ASSERT_EQ(ToText(store.Add({unit, {{"objectClass", {"organizationalUnit"}}}})), "0");
  ASSERT_EQ(ToText(store.Add({contact, {{"objectClass", {"contact"}}}})), "0");
  const std::string renamed = "CN=Anne," + unit;
  EXPECT_EQ(ToText(store.Rename({contact, {}}, renamed)), "0");
  LabAdministrator administrator;
  EXPECT_THAT(administrator.Stored(renamed)["cn"], ElementsAre("Anne"));
  EXPECT_EQ(ToText(store.Remove({unit, {}}, Extent::kWithAllBelow)), "0");
  EXPECT_THROW(static_cast<void>(administrator.Stored(unit)), std::runtime_error);
}

TEST_F(Controllers, WhereOnlyAReadOnlyOneIsLeftReadingWorksAndAWriteSaysWhy) {
  ToldStore told({HostOf(kNear), HostOf(kReadOnly)});
  ASSERT_EQ(ToText(told.store.Open()), "0");
  // The ticket for it is had while there is somebody to give it.
  static_cast<void>(DescriptionOn(kReadOnly));
  RunningServer first;
  RunningServer near(kNear);
  first.Kill();
  near.Kill();
  EXPECT_EQ(ReadValue(told.store, user_, "description"), "before");
  EXPECT_EQ(told.server(), HostOf(kReadOnly));
  EXPECT_EQ(ToText(Replace(told.store, user_, "description", {"not written"})),
            "-1 the server 'rodc.pelora.test' takes no changes and names 'dc1.pelora.test' for "
            "them: cannot reach the server 'dc1.pelora.test': Connection refused");
  first.Start();
  EXPECT_EQ(ToText(Replace(told.store, user_, "description", {"written"})), "0");
}

}  // namespace
}  // namespace pelora::lab
