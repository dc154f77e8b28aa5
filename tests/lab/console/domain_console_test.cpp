// SPDX-License-Identifier: Apache-2.0
// What the console's window shows and changes on a domain.
#include "tests/lab/console/domain_console.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

#include "hosts/session/own_pages/account_time.h"
#include "hosts/session/own_pages/own_page_ids.h"
#include "resources/resource.h"
#include "server/class_table.h"
#include "server/guid_text.h"
#include "tests/contract/dialog_contract_qt_player.h"
#include "tests/lab/lab_administrator.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;

std::string AdaDn() { return "CN=Ada Brandt,OU=Linden," + lab::Base(); }

TEST_F(DomainConsole, ShowsWhatADomainHolds) {
  Connect();
  EXPECT_EQ(ToUtf8(window().windowTitle()), lab::Server() + " - Pelora Console");
  EXPECT_THAT(Names(),
              IsSupersetOf({"Builtin", "Computers", "Domain Controllers", "Linden", "Users"}));
  EXPECT_THAT(Names(), Not(Contains("System"))) << "for an advanced view only";
}

TEST_F(DomainConsole, SaysAsWhomOneWorksAndWhere) {
  const lab::EnvironmentVariable tickets("KRB5CCNAME", lab::TicketsOf(lab::kHelper));
  Connect();
  const auto* who = window().findChild<QLabel*>(QStringLiteral("who"));
  EXPECT_THAT(ToUtf8(who->text()), ::testing::StartsWith("helper@"));
  EXPECT_THAT(ToUtf8(who->text()), ::testing::EndsWith(" on " + lab::Server()));
}

TEST_F(DomainConsole, AUserIsChangedAndNothingElse) {
  Connect();
  DoubleClick("Linden");
  EXPECT_THAT(Names(), ElementsAre("Ada Brandt", "Berta Önder", "Carla Weiß, Dr."));
  DoubleClick("Ada Brandt");
  ASSERT_EQ(Sheets().size(), 1);
  const lab::Attributes before = lab::LabAdministrator().Stored(AdaDn());
  contract::QtPlayer user(*Sheets().front());
  user.Click(IDC_PELORA_HIDDEN);
  Sheets().front()->ApplyButton().click();
  lab::Attributes expected = before;
  expected["peloraHidden"] = {"1"};
  EXPECT_EQ(lab::LabAdministrator().Stored(AdaDn()), expected);
  EXPECT_THAT(lab::LdapSearch(AdaDn(), {"peloraHidden"}), ElementsAre("peloraHidden: 1"));
}

/// A user of the test's own, who is gone when it ends.
class OwnUser {
 public:
  explicit OwnUser(const std::string& name) : dn_("CN=" + name + ",OU=Linden," + lab::Base()) {
    administrator_.Add(dn_, {{"objectClass", {"user"}}, {"sAMAccountName", {name}}});
  }
  ~OwnUser() { administrator_.Remove(dn_); }
  OwnUser(const OwnUser&) = delete;
  OwnUser& operator=(const OwnUser&) = delete;

  void Set(const std::string& attribute, const std::string& value) {
    administrator_.Set(dn_, attribute, {value});
  }
  /// The only value of an attribute; empty when it is not set.
  [[nodiscard]] std::string Has(const std::string& attribute) {
    const std::vector<std::string> values = administrator_.Stored(dn_)[attribute];
    return values.empty() ? std::string() : values.front();
  }

 private:
  lab::LabAdministrator administrator_;
  std::string dn_;
};

TEST_F(DomainConsole, AnAccountIsEnabledAndItsPasswordToBeChanged) {
  OwnUser otto("Otto");
  otto.Set("pwdLastSet", "-1");
  otto.Set("userAccountControl", "546");
  Connect();
  DoubleClick("Linden");
  DoubleClick("Otto");
  ASSERT_EQ(Sheets().size(), 1);
  console::QtPropertySheet& sheet = *Sheets().front();
  sheet.SelectPage(3);
  console::QtDialog& page = *sheet.Dialog(3);
  contract::QtPlayer user(page.widget());
  EXPECT_EQ(page.Check(IDC_OWN_ENABLED), CheckState::kUnchecked);
  EXPECT_EQ(page.Check(IDC_OWN_MUST_CHANGE), CheckState::kUnchecked);
  for (const ControlId box : {IDC_OWN_ENABLED, IDC_OWN_MUST_CHANGE}) {
    user.Click(box);
  }
  user.Type(IDC_OWN_LAST_DAY, "2131-12-31");
  sheet.ApplyButton().click();
  EXPECT_EQ(otto.Has("userAccountControl"), "544");
  EXPECT_EQ(otto.Has("pwdLastSet"), "0");
  EXPECT_EQ(otto.Has("accountExpires"),
            std::to_string(session::EndOfLastDay("2131-12-31").value()));
  EXPECT_FALSE(sheet.ApplyButton().isEnabled());
  // The directory puts the time where it is told that the password is good; the page goes on.
  user.Click(IDC_OWN_MUST_CHANGE);
  sheet.ApplyButton().click();
  EXPECT_GT(otto.Has("pwdLastSet").size(), 10U);
  user.Click(IDC_OWN_MUST_CHANGE);
  user.Erase(IDC_OWN_LAST_DAY);
  sheet.ApplyButton().click();
  EXPECT_EQ(otto.Has("pwdLastSet"), "0");
  EXPECT_EQ(otto.Has("accountExpires"), std::to_string(session::kNeverEnds));
  EXPECT_FALSE(sheet.ApplyButton().isEnabled());
}

TEST_F(DomainConsole, NamesWithSpecialCharactersAreOpened) {
  Connect();
  DoubleClick("Linden");
  DoubleClick("Carla Weiß, Dr.");
  ASSERT_EQ(Sheets().size(), 1);
  EXPECT_EQ(ToUtf8(Sheets().front()->windowTitle()), "Carla Weiß, Dr. Properties");
}

TEST_F(DomainConsole, TabsAreThoseOfTheDisplaySpecifiers) {
  lab::LabAdministrator administrator;
  const std::string specifier =
      "CN=user-Display,CN=409,CN=DisplaySpecifiers,CN=Configuration," + lab::Base();
  const lab::Attributes before = administrator.Stored(specifier);
  administrator.Set(specifier, "adminPropertyPages",
                    {"22," + GuidText(FindClass("CPropPageUser")->class_id),
                     "21," + GuidText(FindClass("CPropPageFeatures")->class_id)});
  Connect();
  DoubleClick("Linden");
  DoubleClick("Ada Brandt");
  ASSERT_EQ(Sheets().size(), 1);
  std::vector<std::string> titles;
  const auto* tabs = Sheets().front()->findChild<QTabWidget*>();
  for (int tab = 0; tab < tabs->count(); ++tab) titles.push_back(ToUtf8(tabs->tabText(tab)));
  EXPECT_THAT(titles, ElementsAre("Pelora Features", "Pelora", "General", "Account", "Member Of"));
  administrator.Set(specifier, "adminPropertyPages", before.at("adminPropertyPages"));
}

TEST_F(DomainConsole, ADelegatedUserMayUseWhatHeMayChangeAndIsToldOfTheRest) {
  // Whoever is signed in may change this one attribute of this one user.
  constexpr const char* kHiddenOfTheSchema = "d4c40c79-ea86-4f53-86ab-ee5c3e0085bf";
  (void)lab::OutputOf("samba-tool dsacl set --use-kerberos=required -H ldap://" + lab::Server() +
                      " --action=allow --objectdn='" + AdaDn() + "' --sddl='(OA;;WP;" +
                      kHiddenOfTheSchema + ";;AU)' 2>&1");
  const lab::EnvironmentVariable tickets("KRB5CCNAME", lab::TicketsOf(lab::kHelper));
  Connect();
  DoubleClick("Linden");
  DoubleClick("Ada Brandt");
  ASSERT_EQ(Sheets().size(), 1);
  const auto widget = [this](ControlId id) -> QWidget& {
    return Sheets().front()->Dialog(0)->Find(id)->widget();
  };
  EXPECT_TRUE(widget(IDC_PELORA_HIDDEN).isEnabled());
  EXPECT_FALSE(widget(IDC_PELORA_ACCOUNT).isEnabled());
  EXPECT_THAT(ToUtf8(widget(IDC_PELORA_ACCOUNT).toolTip()),
              HasSubstr("You have no right to change this."));
  const bool was_hidden =
      Sheets().front()->Dialog(0)->Check(IDC_PELORA_HIDDEN) == CheckState::kChecked;
  contract::QtPlayer user(*Sheets().front());
  user.Click(IDC_PELORA_HIDDEN);
  Sheets().front()->accept();
  EXPECT_THAT(Sheets(), IsEmpty());
  EXPECT_THAT(lab::LdapSearch(AdaDn(), {"peloraHidden"}),
              ElementsAre(was_hidden ? "peloraHidden: 0" : "peloraHidden: 1"));
}

}  // namespace
}  // namespace pelora::test
