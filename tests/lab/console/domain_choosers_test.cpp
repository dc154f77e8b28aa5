// SPDX-License-Identifier: Apache-2.0
// The console's choosers on a domain: what each search finds there, and what becomes of a choice.
#include <gmock/gmock.h>

#include <QTest>

#include "directory/select_ad_object.h"
#include "hosts/console/choosers/qt_choosers.h"
#include "hosts/console/dialogs/message_box.h"
#include "hosts/console/program/console_platform.h"
#include "hosts/console/text/qt_text.h"
#include "tests/lab/lab.h"
#include "tests/ui/chooser_user.h"
#include "tests/ui/console_test.h"

namespace pelora::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsSupersetOf;
using ::testing::Not;
using Names = std::vector<std::string>;

class DomainChoosers : public ConsoleTest {
 protected:
  DomainChoosers() : opened_(session::OpenServer(lab::Server())) {
    EXPECT_EQ(opened_.error, "");
    // The lab holds more than a thousand users.
    choosers_.emplace(
        *opened_.session->store, opened_.session->open_another,
        console::ChooserOptions{.limit = 100'000, .typing_pause = std::chrono::minutes(10)});
    platform_.emplace(opened_.session->service, message_box_, *choosers_, module());
  }

  /// What is to be done in the next chooser, once everything there is has been found.
  void Play(std::function<void(ChooserUser&)> script) {
    modal_scripts().Add([script = std::move(script)](QWidget& window) {
      contract::Activate(window);
      ChooserUser user(window);
      user.WaitForSearch();
      script(user);
    });
  }
  /// Looks at what there is, and chooses nothing.
  void Expect(const Names& among, const Names& missing) {
    Play([=](ChooserUser& user) {
      const Names found = user.Names();
      EXPECT_THAT(found, IsSupersetOf(among));
      for (const std::string& name : missing) EXPECT_THAT(found, Not(Contains(name)));
      EXPECT_EQ(user.Status(), std::to_string(found.size()) +
                                   (found.size() == 1 ? " object found." : " objects found."));
      user.Click("Cancel");
    });
  }
  [[nodiscard]] SelectADObject Chooser() { return SelectADObject(platform_->platform()); }

  Names names_;

 private:
  session::SessionResult opened_;
  console::QtMessageBox message_box_;
  std::optional<console::QtChoosers> choosers_;
  std::optional<console::ConsolePlatform> platform_;
};

TEST_F(DomainChoosers, EachSearchFindsItsObjectsAndNoHiddenOnes) {
  const auto mode = SelectionMode::kMultiple;
  const Names users = {"Ada Brandt", "Berta Önder", "Carla Weiß, Dr.", "Administrator"};
  const Names groups = {"Domain Admins", "DnsAdmins", "Enterprise Admins"};
  const Names hidden = {"krbtgt", "System", "Program Data"};
  // One of the built-in groups has the name of a container, "Users".
  Expect(users, {"DC1", "Domain Admins", "krbtgt"});
  EXPECT_EQ(Chooser().SelectUsers(nullptr, names_, mode), E_INVALIDARG);
  Expect(groups, {"Ada Brandt", "Administrators", "Users"});
  EXPECT_EQ(Chooser().SelectGroups(nullptr, names_, mode), E_INVALIDARG);
  Expect({"Ada Brandt", "Domain Admins"}, {"DC1", "Administrators", "krbtgt"});
  EXPECT_EQ(Chooser().SelectUsersAndGroups(nullptr, names_, mode), E_INVALIDARG);
  Expect({"DC1"}, {"Ada Brandt", "Domain Computers"});
  EXPECT_EQ(Chooser().SelectComputers(nullptr, names_, mode), E_INVALIDARG);
  Expect({"Linden", "Users", "Builtin", "Domain Controllers", "pelora.test"}, hidden);
  EXPECT_EQ(Chooser().SelectContainers(nullptr, names_, mode), E_INVALIDARG);
}

TEST_F(DomainChoosers, WhatIsTypedIsFoundInEveryNameAndTakenLiterally) {
  Play([](ChooserUser& user) {
    const std::vector<std::pair<const char*, Names>> searches = {{"nder", {"Berta Önder"}},
                                                                 {"ADA@pelora", {"Ada Brandt"}},
                                                                 {"carla", {"Carla Weiß, Dr."}},
                                                                 {"helper@", {"helper"}},
                                                                 {"*", {}},
                                                                 {"a)(name=*", {}},
                                                                 {"\\2a", {}},
                                                                 {", Dr.", {"Carla Weiß, Dr."}}};
    for (const auto& [typed, found] : searches) {
      user.Search(typed);
      EXPECT_EQ(user.Names(), found) << typed;
    }
    user.Click("Cancel");
  });
  EXPECT_EQ(Chooser().SelectUsers(nullptr, names_, SelectionMode::kMultiple), E_INVALIDARG);
}

TEST_F(DomainChoosers, AChoiceGivesNamesAsTheDomainWritesThem) {
  Play([](ChooserUser& user) {
    user.Search("carla");
    user.ClickRow("Carla Weiß, Dr.");
    user.Click("Add");
    user.Search("domain adm");
    user.ClickRow("Domain Admins");
    user.Click("OK");
  });
  EXPECT_EQ(Chooser().SelectUsersAndGroups(nullptr, names_, SelectionMode::kMultiple), S_OK);
  EXPECT_THAT(names_, ElementsAre("CN=Carla Weiß\\, Dr.,OU=Linden," + lab::Base(),
                                  "CN=Domain Admins,CN=Users," + lab::Base()));
  Play([](ChooserUser& user) { user.DoubleClickRow("DC1"); });
  EXPECT_EQ(Chooser().SelectComputers(nullptr, names_, SelectionMode::kSingle), S_OK);
  EXPECT_THAT(names_, ElementsAre("DC1"));
  Play([](ChooserUser& user) { user.DoubleClickRow("Linden"); });
  EXPECT_EQ(Chooser().SelectContainers(nullptr, names_, SelectionMode::kSingle), S_OK);
  EXPECT_THAT(names_, ElementsAre("OU=Linden," + lab::Base()));
}

TEST_F(DomainChoosers, AContainerIsChosenFromTheTree) {
  modal_scripts().Add([](QWidget& window) {
    ChooserUser user(window);
    user.GoToContainer({"Linden"});
    user.Click("OK");
  });
  std::string name;
  EXPECT_EQ(Chooser().BrowseContainer(name), S_OK);
  EXPECT_EQ(name, "OU=Linden," + lab::Base());
}

}  // namespace
}  // namespace pelora::test
