// SPDX-License-Identifier: Apache-2.0
// Sheets that keep what nobody has touched, hold what is wrong, and lose nothing that was typed: on
// a domain.
#include <gmock/gmock.h>

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "hosts/console/fields/page_foot.h"
#include "hosts/console/text/qt_text.h"
#include "resources/resource.h"
#include "tests/lab/lab.h"
#include "tests/lab/lab_administrator.h"
#include "tests/ui/console_test.h"
#include "tests/ui/open_sheet.h"
#include "tests/ui/open_wizard.h"

namespace pelora::test {
namespace {

using console::FootNote;
using console::ToUtf8;
using lab::Attributes;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using Lines = std::vector<std::string>;

constexpr std::size_t kFeaturesPage = 1;
constexpr RowIndex kPop3Row = 2;
constexpr RowIndex kImapRow = 1;

/// Objects of a domain, made for one test in a unit of its own, and the console's sheets on them.
class TrustedSheet : public ConsoleTest {
 protected:
  TrustedSheet()
      : unit_(std::string("OU=") + ::testing::UnitTest::GetInstance()->current_test_info()->name() +
              ",OU=Contract," + lab::Base()),
        opened_(session::OpenServer(lab::Server())) {
    if (!opened_.session) throw std::runtime_error(opened_.error);
    administrator_.Add(unit_, {{"objectClass", {"organizationalUnit"}}});
  }

  std::string Add(const std::string& name, Attributes attributes) {
    const std::string dn = "CN=" + name + "," + unit_;
    attributes.try_emplace("objectClass", Lines{"user"});
    attributes.try_emplace("peloraAccount", Lines{"1"});
    administrator_.Add(dn, attributes);
    return dn;
  }
  std::string AddUser(const std::string& name, Attributes attributes = {}) {
    attributes.try_emplace("mail", Lines{name + "@trusted.test"});
    return Add(name, std::move(attributes));
  }
  OpenSheet& Open(const Lines& names) {
    std::vector<session::DirectoryObject> objects;
    const session::DirectoryBrowser browser(*domain().store);
    for (const std::string& name : names) {
      EXPECT_TRUE(browser.ReadObject(name, objects.emplace_back()).Ok()) << name;
    }
    return sheet_.emplace(domain(), module(), objects);
  }
  void Retype(ControlId id, std::string_view text) {
    sheet().user().Erase(id);
    sheet().user().Type(id, text);
  }
  void EnterAddress(const std::string& address) {
    modal_scripts().Add([address](QWidget& window) {
      contract::QtPlayer typist(window);
      typist.Type(IDC_EMAIL_ADDRESS, address);
      typist.PressEnter();
    });
    sheet().user().Click(IDC_EMAIL_ADD);
  }
  /// OK, which has to close the sheet.
  void Ok() {
    sheet().ClickOk();
    EXPECT_FALSE(sheet().IsOpen());
  }
  [[nodiscard]] Lines Stored(const std::string& dn, const std::string& attribute) {
    const Attributes all = administrator_.Stored(dn);
    const auto found = all.find(attribute);
    return found == all.end() ? Lines() : found->second;
  }
  [[nodiscard]] std::string Placeholder(ControlId id) {
    auto& edit = static_cast<QLineEdit&>(sheet().dialog().Find(id)->widget());
    return ToUtf8(edit.placeholderText());
  }

  [[nodiscard]] OpenSheet& sheet() { return *sheet_; }
  [[nodiscard]] session::DirectorySession& domain() { return *opened_.session; }
  [[nodiscard]] const std::string& unit() const { return unit_; }

  lab::LabAdministrator administrator_;

 private:
  std::string unit_;
  session::SessionResult opened_;
  std::optional<OpenSheet> sheet_;
};

TEST_F(TrustedSheet, OkWithoutAnEditChangesNothing) {
  const Lines names = {
      AddUser("room", {{"peloraResourceType", {"room"}}, {"peloraResourceCapacity", {"12"}}}),
      AddUser("beamer", {{"peloraResourceType", {"equipment"}}, {"peloraResourceCapacity", {"1"}}}),
      AddUser("ordinary")};
  std::vector<Attributes> before;
  for (const std::string& name : names) before.push_back(administrator_.Stored(name));
  for (const Lines& selection : {Lines{names[0], names[1]}, Lines{names[2]}, names}) {
    Open(selection);
    Ok();
  }
  for (std::size_t at = 0; at < names.size(); ++at) {
    EXPECT_EQ(administrator_.Stored(names[at]), before[at]);
  }
  EXPECT_THAT(Stored(names[2], "peloraResourceCapacity"), IsEmpty());
}

TEST_F(TrustedSheet, WhatIsNoNumberIsHeldAndStoredNowhere) {
  const std::string user = AddUser("quota", {{"peloraQuotaOverride", {"1"}}});
  Open({user});
  for (const char* const text : {"99999999999", "500abc", "abc"}) {
    Retype(IDC_QUOTA_HARD, text);
    EXPECT_FALSE(sheet().IsOkEnabled()) << text;
    EXPECT_FALSE(sheet().IsApplyEnabled()) << text;
  }
  Retype(IDC_QUOTA_HARD, "1 000");
  Retype(IDC_QUOTA_WARN, "2000");
  EXPECT_FALSE(sheet().IsOkEnabled()) << "a warning above the limit";
  Retype(IDC_QUOTA_WARN, "900");
  Ok();
  EXPECT_THAT(Stored(user, "peloraQuotaHard"), ElementsAre("1000"));
  EXPECT_THAT(Stored(user, "peloraQuotaWarn"), ElementsAre("900"));

  const std::string server = Add(
      "server",
      {{"objectClass", {"computer"}}, {"peloraHttpPort", {"236"}}, {"peloraFilePath", {"/srv"}}});
  Open({server});
  Retype(IDC_HTTP_PORT, "70000");
  EXPECT_FALSE(sheet().IsOkEnabled());
}

TEST_F(TrustedSheet, WhatAFailedApplyLeftIsWrittenByOk) {
  const std::string user = AddUser("failed");
  const std::string delegate = AddUser("delegate");
  Open({user});
  sheet().choosers().Choose({"LDAP://" + delegate});
  sheet().user().Click(IDC_SENDAS_ADD);
  sheet().user().Click(IDC_PELORA_HIDDEN);
  administrator_.Remove(delegate);
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  sheet().ClickApply();
  ASSERT_EQ(modal_scripts().waiting(), 0U) << "nothing was refused";
  EXPECT_THAT(box.text, HasSubstr(user)) << "the object is named";
  EXPECT_THAT(box.text, HasSubstr("Send as")) << "and the field";
  EXPECT_TRUE(sheet().IsOpen());
  EXPECT_TRUE(sheet().IsApplyEnabled());
  EXPECT_THAT(Stored(user, "peloraHidden"), IsEmpty());
  // The cause is mended.
  (void)AddUser("delegate");
  Ok();
  EXPECT_THAT(Stored(user, "peloraHidden"), ElementsAre("1"));
  EXPECT_THAT(Stored(user, "peloraSendAsPrivilege"), ElementsAre(delegate));
}

TEST_F(TrustedSheet, UsersWhoDifferKeepWhatEachHas) {
  const Lines names = {
      AddUser("one", {{"peloraQuotaOverride", {"1"}}, {"peloraQuotaHard", {"100"}}}),
      AddUser("two", {{"peloraQuotaOverride", {"1"}}, {"peloraQuotaHard", {"200"}}}),
      AddUser("three", {{"peloraQuotaOverride", {"1"}}, {"peloraHidden", {"1"}}})};
  Open(names);
  EXPECT_EQ(Placeholder(IDC_QUOTA_HARD), "different: not set (1), 100 (1), 200 (1)");
  EXPECT_EQ(Placeholder(IDC_SERVER), "not set") << "which looks like something else";
  sheet().user().Type(IDC_QUOTA_HARD, "7");
  sheet().user().Erase(IDC_QUOTA_HARD);
  sheet().user().Click(IDC_PELORA_HIDDEN);
  EXPECT_EQ(sheet().dialog().Check(IDC_PELORA_HIDDEN), CheckState::kChecked)
      << "the first click sets it";
  sheet().user().Click(IDC_PELORA_HIDDEN);
  sheet().user().Click(IDC_PELORA_HIDDEN);
  EXPECT_EQ(sheet().dialog().Check(IDC_PELORA_HIDDEN), CheckState::kIndeterminate);
  Ok();
  EXPECT_THAT(Stored(names[0], "peloraQuotaHard"), ElementsAre("100"));
  EXPECT_THAT(Stored(names[1], "peloraQuotaHard"), ElementsAre("200"));
  EXPECT_THAT(Stored(names[2], "peloraQuotaHard"), IsEmpty());
  EXPECT_THAT(Stored(names[0], "peloraHidden"), IsEmpty());
}

TEST_F(TrustedSheet, ASecondAdministratorsAliasStays) {
  const std::string user = AddUser("alias", {{"otherMailbox", {"old@trusted.test"}}});
  Open({user});
  EnterAddress("mine@trusted.test");
  administrator_.Set(user, "otherMailbox", {"old@trusted.test", "theirs@trusted.test"});
  Ok();
  EXPECT_THAT(Stored(user, "otherMailbox"),
              UnorderedElementsAre("old@trusted.test", "theirs@trusted.test", "mine@trusted.test"));
}

TEST_F(TrustedSheet, AnAddressThatIsNoneIsHeldAndSomebodyElsesIsToldOf) {
  const std::string user = AddUser("addresses");
  (void)AddUser("owner");
  Open({user});
  for (const char* const text : {"anna", " ", "a@b@c"}) {
    modal_scripts().Add([text](QWidget& window) {
      contract::QtPlayer typist(window);
      typist.Type(IDC_EMAIL_ADDRESS, text);
      typist.PressEnter();
      EXPECT_TRUE(window.isVisible()) << text;
      typist.Click(static_cast<ControlId>(kDialogCancel));
    });
    sheet().user().Click(IDC_EMAIL_ADD);
  }
  modal_scripts().Add([](QWidget& window) {
    contract::QtPlayer typist(window);
    const auto* const foot = window.findChild<console::PageFoot*>();
    typist.Type(IDC_EMAIL_ADDRESS, "x@y");
    EXPECT_EQ(foot->note().level, FootNote::Level::kOdd);
    typist.Erase(IDC_EMAIL_ADDRESS);
    typist.Type(IDC_EMAIL_ADDRESS, "Owner@trusted.test");
    EXPECT_TRUE(QTest::qWaitFor([foot] { return !foot->note().action.isEmpty(); }, 60000));
    EXPECT_EQ(foot->note().text, QStringLiteral("This is an address of owner."));
    typist.Click(static_cast<ControlId>(kDialogCancel));
  });
  sheet().user().Click(IDC_EMAIL_ADD);
  Ok();
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_THAT(Stored(user, "otherMailbox"), IsEmpty());
}

TEST_F(TrustedSheet, AGroupsLastAddressIsOnlyReplaced) {
  const std::string group =
      Add("group", {{"objectClass", {"group"}}, {"mail", {"group@trusted.test"}}});
  Open({group});
  sheet().user().ClickListRow(IDC_EMAIL_LIST, 0);
  sheet().user().Click(IDC_EMAIL_DELETE);
  EXPECT_FALSE(sheet().IsOkEnabled());
  EXPECT_THAT(sheet().Said(), HasSubstr("The last address cannot be removed, only replaced"));
  EnterAddress("new@trusted.test");
  Ok();
  EXPECT_THAT(Stored(group, "mail"), ElementsAre("new@trusted.test"));
}

TEST_F(TrustedSheet, AQueryWithAMissingBracketIsHeld) {
  const std::string list =
      Add("list", {{"objectClass", {"peloraAddresslist"}}, {"peloraFilter", {"(sn=a)"}}});
  Open({list});
  sheet().sheet().SelectPage(1);
  QCoreApplication::processEvents();
  Retype(IDC_SEARCH_QUERY, "(&(sn=a)(mail=*)");
  EXPECT_FALSE(sheet().IsOkEnabled());
  sheet().user().Type(IDC_SEARCH_QUERY, ")");
  Ok();
  EXPECT_THAT(Stored(list, "peloraFilter"), ElementsAre("(&(sn=a)(mail=*))"));
}

TEST_F(TrustedSheet, ADoubleClickOnAFeatureIsAnEdit) {
  const std::string user = AddUser("feature");
  Open({user});
  sheet().sheet().SelectPage(kFeaturesPage);
  QCoreApplication::processEvents();
  sheet().user().DoubleClickListViewCell(IDC_FEATURE_LIST, kImapRow, 1);
  EXPECT_TRUE(sheet().IsApplyEnabled());
  modal_scripts().Add(Press("&Keep Editing"));
  QTest::keyClick(&sheet().sheet(), Qt::Key_Escape);
  EXPECT_EQ(modal_scripts().waiting(), 0U) << "Escape asks";
  EXPECT_TRUE(sheet().IsOpen());
  Ok();
  EXPECT_THAT(Stored(user, "peloraEnabledFeatures"), ElementsAre("imap"));
}

TEST_F(TrustedSheet, AFilledWizardAsksBeforeItIsLost) {
  session::DirectoryObject container;
  const session::DirectoryBrowser browser(*domain().store);
  ASSERT_TRUE(browser.ReadObject(unit(), container).Ok());
  const OpenWizard wizard(domain(), module(), "contact", container);
  auto* const name = wizard.wizard().findChild<QLineEdit*>(QStringLiteral("own_name"));
  ASSERT_NE(name, nullptr);
  QTest::keyClicks(name, QStringLiteral("Neu"));
  modal_scripts().Add(Press("&Keep Editing"));
  QTest::keyClick(&wizard.wizard(), Qt::Key_Escape);
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_TRUE(wizard.IsOpen());
}

TEST_F(TrustedSheet, AFeatureIsSwitchedOffForAllThoughOneHasItOffAlready) {
  Lines names;
  for (const char* const name : {"a", "b", "c", "d", "e"}) names.push_back(AddUser(name));
  names.push_back(AddUser("off", {{"peloraDisabledFeatures", {"pop3"}}}));
  Open(names);
  sheet().sheet().SelectPage(kFeaturesPage);
  QCoreApplication::processEvents();
  sheet().user().ClickListViewCell(IDC_FEATURE_LIST, kPop3Row, 1, false);
  console::QtDialog& page = *sheet().sheet().Dialog(kFeaturesPage);
  ASSERT_TRUE(page.IsEnabled(IDC_FEATURE_DISABLE));
  EXPECT_TRUE(page.IsEnabled(IDC_FEATURE_ENABLE));
  sheet().user().Click(IDC_FEATURE_DISABLE);
  Ok();
  for (const std::string& name : names) {
    EXPECT_THAT(Stored(name, "peloraDisabledFeatures"), ElementsAre("pop3")) << name;
  }
}

}  // namespace
}  // namespace pelora::test
