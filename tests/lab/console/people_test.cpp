// SPDX-License-Identifier: Apache-2.0
// The pages of people and groups on a domain: what only a domain has, passwords and locked accounts
// among it.
#include <gmock/gmock.h>

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <filesystem>

#include "hosts/console/text/qt_text.h"
#include "hosts/ldap/ads_path.h"
#include "hosts/session/change_history.h"
#include "hosts/session/own_pages/own_page_ids.h"
#include "hosts/session/password/password_bytes.h"
#include "tests/lab/lab.h"
#include "tests/lab/lab_administrator.h"
#include "tests/ui/console_test.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {
namespace {

using console::ToQString;
using console::ToUtf8;
using lab::Attributes;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;
using Lines = std::vector<std::string>;

constexpr const char* kFirstPassword = "Lab-Passw0rd";

/// Users and groups of a domain, made for one test in a unit of its own, and the console's sheets
/// on them.
class People : public ConsoleTest {
 protected:
  People()
      : unit_(std::string("OU=People ") +
              ::testing::UnitTest::GetInstance()->current_test_info()->name() + ",OU=Contract," +
              lab::Base()) {
    administrator_.Add(unit_, {{"objectClass", {"organizationalUnit"}}});
    Connect();
  }
  ~People() override { administrator_.Set(lab::Base(), "lockoutThreshold", {"0"}); }

  /// Works as somebody else from now on.
  void Connect() {
    sheet_.reset();
    opened_ = session::OpenServer(lab::Server());
    if (!opened_.session) throw std::runtime_error(opened_.error);
  }
  std::string AddUser(const std::string& name) {
    return Add(name, {{"objectClass", {"user"}},
                      {"sAMAccountName", {name}},
                      {"mail", {name + "@people.test"}},
                      {"userAccountControl", {"512"}},
                      {"unicodePwd", {session::PasswordBytes(kFirstPassword)}}});
  }
  std::string AddGroup(const std::string& name, const Lines& members = {}) {
    Attributes attributes = {{"objectClass", {"group"}}, {"sAMAccountName", {name}}};
    if (!members.empty()) attributes["member"] = members;
    return Add(name, attributes);
  }
  std::string Add(const std::string& name, const Attributes& attributes) {
    const std::string dn = "CN=" + name + "," + unit_;
    administrator_.Add(dn, attributes);
    return dn;
  }

  OpenSheet& Open(const Lines& names, const char* tab, const SheetFaults& faults = {}) {
    std::vector<session::DirectoryObject> objects;
    const session::DirectoryBrowser browser(*opened_.session->store);
    for (const std::string& name : names) {
      EXPECT_TRUE(browser.ReadObject(name, objects.emplace_back()).Ok()) << name;
    }
    sheet_.emplace(*opened_.session, module(), objects, faults);
    const auto* tabs = sheet_->sheet().findChild<QTabWidget*>();
    for (int at = 0; at < tabs->count(); ++at) {
      if (console::WithoutMnemonic(tabs->tabText(at)) == QLatin1String(tab)) {
        sheet_->sheet().SelectPage(static_cast<std::size_t>(at));
        return *sheet_;
      }
    }
    throw std::runtime_error("there is no such tab");
  }
  [[nodiscard]] console::QtDialog& Page() {
    return *sheet_->sheet().Dialog(sheet_->sheet().CurrentPage());
  }
  [[nodiscard]] Lines Listed() {
    Lines names;
    const IListBox& list = Page().ListBox(IDC_OWN_MEMBERS);
    for (RowIndex row = 0; row < list.Count(); ++row) {
      names.push_back(list.Text(row).substr(0, list.Text(row).find('\t')));
    }
    return names;
  }
  void Paste(const std::string& text) {
    auto& pasted = dynamic_cast<QPlainTextEdit&>(Page().Find(IDC_OWN_MEMBERS_PASTED)->widget());
    pasted.setPlainText(ToQString(text));
    sheet_->user().Click(IDC_OWN_MEMBERS_ADD_PASTED);
  }
  void Choose(const Lines& names) {
    Lines paths;
    for (const std::string& name : names) paths.push_back(ldap::AdsPathOf(name));
    sheet_->choosers().Choose(paths);
    sheet_->user().Click(IDC_OWN_MEMBERS_ADD);
  }
  void RemoveRow(const std::string& name) {
    const Lines shown = Listed();
    const auto row = std::ranges::find(shown, name) - shown.begin();
    sheet_->user().ClickListRow(IDC_OWN_MEMBERS, static_cast<RowIndex>(row));
    sheet_->user().Click(IDC_OWN_MEMBERS_REMOVE);
  }
  [[nodiscard]] std::string Note() { return Page().Text(IDC_OWN_MEMBERS_NOTE); }

  [[nodiscard]] Lines Stored(const std::string& dn, const std::string& attribute) {
    const Attributes all = administrator_.Stored(dn);
    const auto found = all.find(attribute);
    return found == all.end() ? Lines() : found->second;
  }
  [[nodiscard]] OpenSheet& sheet() { return *sheet_; }
  [[nodiscard]] session::DirectorySession& domain() { return *opened_.session; }

  lab::LabAdministrator administrator_;

 private:
  std::string unit_;
  session::SessionResult opened_;
  std::optional<OpenSheet> sheet_;
};

bool CanLogOn(const std::string& name, const std::string& password) {
  const std::string output =
      lab::OutputOf("printf '%s\\n' '" + password + "' | kinit -c MEMORY: " + name +
                    " >/dev/null 2>&1 && echo yes || echo no");
  return output.starts_with("yes");
}

/// Types a password twice into the dialog that asks for it.
void TypeTwice(QWidget& window, const char* password) {
  for (const char* const field : {"new_password", "new_password_again"}) {
    auto* const edit = window.findChild<QLineEdit*>(QLatin1String(field));
    edit->clear();
    QTest::keyClicks(edit, QLatin1String(password));
  }
}

std::string TextIn(const QWidget& window, const char* label) {
  const auto* const found = window.findChild<QLabel*>(QLatin1String(label));
  return found == nullptr ? std::string() : ToUtf8(found->text());
}

QPushButton& OkOf(QWidget& window) {
  return *window.findChild<QPushButton*>(QStringLiteral("reset_password_ok"));
}

TEST_F(People, APasswordIsResetAtOnceAndKeptNowhere) {
  const std::string paul = AddUser("resetpaul");
  session::ChangeHistory history(file() + ".history", "lab", domain().store->schema());
  OpenSheet& open = Open({paul}, "Account", {.history = &history});
  EXPECT_EQ(Page().Text(IDC_OWN_RESET_NOTE), "");
  modal_scripts().Add([](QWidget& window) {
    EXPECT_THAT(TextIn(window, "password_rules"), HasSubstr("characters at least"));
    TypeTwice(window, "Ab1");
    EXPECT_THAT(TextIn(window, "password_hint"), HasSubstr("too short"));
    TypeTwice(window, "lindenbaum");
    EXPECT_THAT(TextIn(window, "password_hint"), HasSubstr("too plain"));
    EXPECT_FALSE(OkOf(window).isEnabled());
    TypeTwice(window, "Neuer-Baum-77");
    window.findChild<QAbstractButton*>(QStringLiteral("new_password_must_change"))
        ->setChecked(false);
    OkOf(window).click();
    EXPECT_FALSE(window.isVisible()) << TextIn(window, "password_hint");
  });
  open.user().Click(IDC_OWN_RESET_PASSWORD);
  EXPECT_TRUE(CanLogOn("resetpaul", "Neuer-Baum-77"));
  EXPECT_FALSE(CanLogOn("resetpaul", kFirstPassword));
  EXPECT_THAT(Page().Text(IDC_OWN_RESET_NOTE), HasSubstr("was reset"));
  EXPECT_EQ(Page().Check(IDC_OWN_MUST_CHANGE), CheckState::kUnchecked);
  EXPECT_FALSE(open.IsApplyEnabled());
  EXPECT_THAT(history.List(), IsEmpty());
  EXPECT_FALSE(std::filesystem::exists(history.folder()) &&
               !std::filesystem::is_empty(history.folder()));
}

TEST_F(People, APasswordThatIsToBeChangedIsShownAsThatAndGoesOnFromThere) {
  const std::string rosa = AddUser("resetrosa");
  OpenSheet& open = Open({rosa}, "Account");
  EXPECT_EQ(Page().Check(IDC_OWN_MUST_CHANGE), CheckState::kUnchecked);
  modal_scripts().Add([](QWidget& window) {
    TypeTwice(window, "Neuer-Baum-77");
    OkOf(window).click();
  });
  open.user().Click(IDC_OWN_RESET_PASSWORD);
  EXPECT_THAT(Stored(rosa, "pwdLastSet"), ElementsAre("0"));
  EXPECT_EQ(Page().Check(IDC_OWN_MUST_CHANGE), CheckState::kChecked);
  EXPECT_FALSE(open.IsApplyEnabled()) << "nobody's edit";
  // What was read before the reset is no conflict.
  open.user().Click(IDC_OWN_MUST_CHANGE);
  open.ClickApply();
  EXPECT_GT(Stored(rosa, "pwdLastSet").at(0).size(), 10U);
}

TEST_F(People, WhatTheDirectoryRefusesIsToldInWords) {
  const std::string rules =
      "CN=Long passwords,CN=Password Settings Container,CN=System," + lab::Base();
  const std::string nora = AddUser("resetnora");
  administrator_.Add(rules, {{"objectClass", {"msDS-PasswordSettings"}},
                             {"msDS-PasswordSettingsPrecedence", {"1"}},
                             {"msDS-PasswordReversibleEncryptionEnabled", {"FALSE"}},
                             {"msDS-PasswordHistoryLength", {"0"}},
                             {"msDS-PasswordComplexityEnabled", {"FALSE"}},
                             {"msDS-MinimumPasswordLength", {"20"}},
                             {"msDS-MinimumPasswordAge", {"0"}},
                             {"msDS-MaximumPasswordAge", {"-9223372036854775808"}},
                             {"msDS-LockoutThreshold", {"0"}},
                             {"msDS-LockoutObservationWindow", {"-18000000000"}},
                             {"msDS-LockoutDuration", {"-18000000000"}},
                             {"msDS-PSOAppliesTo", {nora}}});
  OpenSheet& open = Open({nora}, "Account");
  modal_scripts().Add([](QWidget& window) {
    EXPECT_THAT(TextIn(window, "password_rules"), HasSubstr("Rules of his own"));
    TypeTwice(window, "Neuer-Baum-77");
    OkOf(window).click();
    EXPECT_TRUE(window.isVisible());
    EXPECT_THAT(TextIn(window, "password_hint"),
                AllOf(HasSubstr("does not take this password"), HasSubstr("too short"),
                      Not(HasSubstr("Neuer-Baum"))));
    TypeTwice(window, "einganzlangesbaumhaus");
    OkOf(window).click();
    EXPECT_FALSE(window.isVisible()) << TextIn(window, "password_hint");
  });
  open.user().Click(IDC_OWN_RESET_PASSWORD);
  administrator_.Remove(rules);
  EXPECT_THAT(Stored(nora, "pwdLastSet"), ElementsAre("0"));
}

TEST_F(People, WhoMayNotResetAPasswordIsToldSo) {
  const std::string vera = AddUser("resetvera");
  const lab::EnvironmentVariable tickets("KRB5CCNAME", lab::TicketsOf(lab::kHelper));
  Connect();
  OpenSheet& open = Open({vera}, "Account");
  modal_scripts().Add([](QWidget& window) {
    TypeTwice(window, "Neuer-Baum-77");
    OkOf(window).click();
    EXPECT_THAT(TextIn(window, "password_hint"), HasSubstr("no right"));
    QTest::keyClick(&window, Qt::Key_Escape);
  });
  open.user().Click(IDC_OWN_RESET_PASSWORD);
  EXPECT_TRUE(CanLogOn("resetvera", kFirstPassword));
}

TEST_F(People, AnAccountThatWrongPasswordsHaveLockedIsUnlocked) {
  const std::string otto = AddUser("lockedotto");
  administrator_.Set(lab::Base(), "lockoutThreshold", {"1"});
  EXPECT_FALSE(CanLogOn("lockedotto", "wrong"));
  administrator_.Set(lab::Base(), "lockoutThreshold", {"0"});
  ASSERT_THAT(Stored(otto, "lockoutTime"), ElementsAre(Not("0"))) << "it was not locked";
  EXPECT_FALSE(CanLogOn("lockedotto", kFirstPassword));
  OpenSheet& open = Open({otto}, "Account");
  EXPECT_EQ(Page().Check(IDC_OWN_LOCKED), CheckState::kChecked);
  open.user().Click(IDC_OWN_LOCKED);
  open.ClickApply();
  EXPECT_THAT(Stored(otto, "lockoutTime"), ElementsAre("0"));
  EXPECT_TRUE(CanLogOn("lockedotto", kFirstPassword));
  (void)Open({otto}, "Account");
  EXPECT_EQ(Page().Check(IDC_OWN_LOCKED), CheckState::kUnchecked);
}

TEST_F(People, TwoAdministratorsMembersBothStayAndUndoTakesBackItsOwn) {
  const std::string mine = AddUser("mine");
  const std::string theirs = AddUser("theirs");
  const std::string left = AddUser("left");
  const std::string group = AddGroup("people", {left});
  session::ChangeHistory history(file() + ".history", "lab", domain().store->schema());
  OpenSheet& open = Open({group}, "Members", {.history = &history});
  EXPECT_THAT(Listed(), ElementsAre("left"));
  Paste("mine@people.test");
  RemoveRow("left");
  administrator_.Set(group, "member", {left, theirs});
  open.ClickApply();
  EXPECT_THAT(Stored(group, "member"), UnorderedElementsAre(mine, theirs));
  ASSERT_THAT(history.List(), SizeIs(1));
  session::ErrandsAtOnce errands;
  const auto undone = history.Undo(history.List().front().id, *domain().store, errands);
  ASSERT_THAT(undone, SizeIs(1));
  EXPECT_TRUE(undone.front().IsDone()) << undone.front().message;
  EXPECT_THAT(Stored(group, "member"), UnorderedElementsAre(left, theirs));
}

TEST_F(People, MoreMembersThanADirectoryGivesAtOnceAreListedAndOnlyWhatChangesIsSent) {
  // Active Directory gives 1,500 of them at a time, Samba all that there are.
  constexpr int kUsers = 1100;
  constexpr int kContacts = 402;
  Lines members;
  for (int number = 0; number < kUsers; ++number) {
    members.push_back("CN=Person " + std::to_string(number) + ",OU=Many," + lab::Base());
  }
  for (int number = 0; number < kContacts; ++number) {
    members.push_back(Add("Friend " + std::to_string(number), {{"objectClass", {"contact"}}}));
  }
  const std::string late = AddUser("late");
  const std::string group = AddGroup("long", members);
  OpenSheet& open = Open({group}, "Members");
  EXPECT_EQ(Page().ListBox(IDC_OWN_MEMBERS).Count(), members.size());
  Choose({late});
  RemoveRow("Person 1017");
  open.ClickApply();
  std::erase(members, "CN=Person 1017,OU=Many," + lab::Base());
  members.push_back(late);
  Lines stored = Stored(group, "member");
  std::ranges::sort(stored);
  std::ranges::sort(members);
  EXPECT_EQ(stored, members);
}

TEST_F(People, MemberOfIsWrittenIntoTheGroupsAndSaysThePrimaryOne) {
  const std::string eva = AddUser("eva");
  const std::string before = AddGroup("before", {eva});
  const std::string first = AddGroup("first");
  const std::string second = AddGroup("second");
  OpenSheet& open = Open({eva}, "Member Of");
  EXPECT_THAT(Listed(), ElementsAre("before"));
  EXPECT_THAT(Note(), HasSubstr("The primary group is Domain Users. It cannot be left"));
  Paste("first; second");
  RemoveRow("before");
  open.ClickApply();
  EXPECT_THAT(Stored(eva, "memberOf"), UnorderedElementsAre(first, second));
  EXPECT_THAT(Stored(before, "member"), IsEmpty());
  EXPECT_FALSE(open.IsApplyEnabled());
  (void)Open({"CN=Domain Users,CN=Users," + lab::Base()}, "Members");
  EXPECT_THAT(Note(), HasSubstr("primary group"));
}

TEST_F(People, WhoMayNotChangeAGroupIsToldBefore) {
  const std::string ida = AddUser("ida");
  const std::string group = AddGroup("closed", {ida});
  const lab::EnvironmentVariable tickets("KRB5CCNAME", lab::TicketsOf(lab::kHelper));
  Connect();
  (void)Open({group}, "Members");
  EXPECT_THAT(Listed(), ElementsAre("ida"));
  EXPECT_THAT(Note(), HasSubstr("no right"));
  EXPECT_FALSE(Page().IsEnabled(IDC_OWN_MEMBERS_ADD));
  OpenSheet& open = Open({ida}, "Member Of");
  RemoveRow("closed");
  EXPECT_THAT(Note(), HasSubstr("no right to change the members of closed"));
  EXPECT_THAT(Listed(), ElementsAre("closed"));
  EXPECT_FALSE(open.IsApplyEnabled());
}

}  // namespace
}  // namespace pelora::test
