// SPDX-License-Identifier: Apache-2.0
// A directory that knows of other domains: where objects can be looked for, and who is found there.
#include <QAbstractButton>
#include <QListWidget>
#include <QTest>
#include <atomic>

#include "hosts/console/text/qt_text.h"
#include "hosts/session/choose_objects.h"
#include "tests/ui/choosers_test.h"
#include "tests/ui/open_wizard.h"
#include "tests/ui/scripted_store.h"

namespace pelora::test {
namespace {

using console::QtChoosers;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A store that has one user below each base, called as the base is.
void OpenUsersOfBases(std::unique_ptr<ldap::IDirectoryStore>& store) {
  store = std::make_unique<ScriptedStore>(
      [](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
        const std::string name = "Ann of " + request.base.substr(3, request.base.find(',') - 3);
        sink({.dn = "CN=" + name + "," + request.base,
              .attributes = {{"objectClass", {"top", "person", "user"}}, {"name", {name}}}});
        return ldap::StoreStatus{};
      });
}

class SeveralDomains : public ChoosersTest {
 protected:
  ldap::StoreStatus FindPlaces(std::vector<ldap::SearchPlace>& places) {
    ++asked_;
    const ldap::StoreOpener users = [](auto& store, const std::stop_token&) {
      OpenUsersOfBases(store);
      return ldap::StoreStatus{};
    };
    places.push_back({"linden-werke.example", {"DC=linden-werke,DC=example"}, {}});
    if (is_alone_) return {};
    places.push_back({"", {"DC=a,DC=example", "DC=b,DC=example"}, users});
    places.push_back({"north.example", {"DC=north,DC=example"}, users});
    return {};
  }
  std::vector<std::string> Choose(std::uint32_t types) {
    return session::ChooseObjects(choosers_of_several_, nullptr, {.types = types});
  }

  std::atomic<int> asked_{0};
  bool is_alone_ = false;
  QtChoosers choosers_of_several_{
      *session().store,
      session().open_another,
      {.typing_pause = std::chrono::minutes(10),
       .find_places = [this](ldap::IDirectoryStore& /*store*/, auto& places) {
         return FindPlaces(places);
       }}};
};

TEST_F(SeveralDomains, ArePlacesToLookInAndWhatWasChosenStays) {
  PlaySearched([](ChooserUser& user) {
    EXPECT_THAT(user.WaitForPlaces(),
                ElementsAre("linden-werke.example", "All domains of the forest", "north.example"));
    // The directory's own domain first.
    EXPECT_THAT(user.Names(), Contains("Helga Önder"));
    user.LookIn(2);
    EXPECT_THAT(user.Names(), ElementsAre("Ann of north"));
    EXPECT_THAT(user.Column(4), ElementsAre("north.example"));
    user.ClickRow("Ann of north");
    user.Click("Add");
    user.LookIn(1);
    EXPECT_THAT(user.Names(), ElementsAre("Ann of a", "Ann of b"));
    user.ClickRow("Ann of b");
    user.Click("Add");
    user.LookIn(0);
    user.ClickRow("Helga Önder");
    user.Click("OK");
  });
  EXPECT_THAT(Choose(session::kUsersAndGroups), ElementsAre("CN=Ann of north,DC=north,DC=example",
                                                            "CN=Ann of b,DC=b,DC=example", kHelga));
  EXPECT_EQ(asked_, 1);
}

TEST_F(SeveralDomains, AreNoneWhereThereIsOne) {
  is_alone_ = true;
  PlaySearched([this](ChooserUser& user) {
    EXPECT_TRUE(QTest::qWaitFor([this] { return asked_ > 0; }, 20000));
    user.Search("Helga");
    EXPECT_THAT(user.Names(), ElementsAre("Helga Önder"));
    EXPECT_FALSE(user.Places().isVisible());
    user.Click("Cancel");
  });
  EXPECT_THAT(Choose(session::kUsersAndGroups), IsEmpty());
}

TEST_F(SeveralDomains, AreNotAskedForWhereOnlyTheOwnOneIsMeant) {
  PlaySearched([](ChooserUser& user) {
    user.Search("mail01");
    EXPECT_FALSE(user.Places().isVisible());
    user.Click("Cancel");
  });
  console::ConsolePlatform platform(session().service, message_box_, choosers_of_several_,
                                    module());
  SelectADObject chooser(platform.platform());
  std::vector<std::string> names;
  EXPECT_EQ(chooser.SelectComputers(nullptr, names, SelectionMode::kSingle), kCancelled);
  EXPECT_EQ(asked_, 0);
}

TEST_F(SeveralDomains, AreLookedInForMembersOfANewGroup) {
  session().find_places = [this](ldap::IDirectoryStore& /*store*/, auto& places) {
    return FindPlaces(places);
  };
  OpenWizard wizard(session(), module(), "group", Objects({kSales}).front());
  PlaySearched([](ChooserUser& user) {
    EXPECT_THAT(user.WaitForPlaces(),
                ElementsAre("linden-werke.example", "All domains of the forest", "north.example"));
    user.LookIn(2);
    user.ClickRow("Ann of north");
    user.Click("Add");
    user.Click("OK");
  });
  wizard.ClickOwn("own_members_add");
  const auto* const members =
      wizard.wizard().findChild<QListWidget*>(QStringLiteral("own_members"));
  ASSERT_NE(members, nullptr);
  ASSERT_EQ(members->count(), 1);
  EXPECT_EQ(console::ToUtf8(members->item(0)->text()), "Ann of north");
  const auto* const remove =
      wizard.wizard().findChild<QAbstractButton*>(QStringLiteral("own_members_remove"));
  EXPECT_FALSE(remove->isEnabled()) << "nobody is selected";
  members->item(0)->setSelected(true);
  EXPECT_TRUE(remove->isEnabled());
  wizard.ClickOwn("own_members_remove");
  EXPECT_EQ(members->count(), 0);
  EXPECT_FALSE(remove->isEnabled());
}

}  // namespace
}  // namespace pelora::test
