// SPDX-License-Identifier: Apache-2.0
// Objects made in a domain by the console's wizards, read back by the domain's own tools.
#include <gtest/gtest.h>

#include <QLabel>
#include <fstream>
#include <optional>

#include "hosts/console/text/qt_text.h"
#include "resources/resource.h"
#include "tests/contract/dialog_contract_qt_scripts.h"
#include "tests/lab/lab_test.h"
#include "tests/support/temporary_folder.h"
#include "tests/ui/open_sheet.h"
#include "tests/ui/open_wizard.h"

namespace pelora::lab {
namespace {

using console::ToUtf8;
using test::OpenWizard;
using Lines = std::vector<std::string>;

class LabNewObject : public ::testing::Test {
 protected:
  LabNewObject() { SignIn(); }

  /// Opens the domain anew, as the user whose tickets are in the environment.
  void SignIn() {
    wizard_.reset();
    directory_.reset();
    session_ = OpenSession();
    std::unique_ptr<ldap::IDirectoryStore> store;
    const StoreStatus opened = session_->open_another()(store, {});
    if (!opened.Ok()) throw std::runtime_error(opened.text);
    directory_ = std::make_unique<session::DirectorySession>(
        "lab", std::make_unique<test::RecordingStore>(std::move(store), adds_),
        session_->open_another());
  }
  OpenWizard& Open(const char* kind, const std::string& container = Container()) {
    session::DirectoryObject object;
    const StoreStatus read =
        session::DirectoryBrowser(*directory_->store).ReadObject(container, object);
    if (!read.Ok()) throw std::runtime_error(read.text);
    wizard_.emplace(*directory_, *module_.value, kind, object);
    return *wizard_;
  }
  OpenWizard& wizard() { return *wizard_; }

  static std::string Container() { return "OU=Linden," + Base(); }
  static std::string Below(const std::string& rdn) { return rdn + "," + Container(); }

  /// From the page that shows through to the end, by one request; why not, if not.
  std::string Finish() {
    adds_.clear();
    while (!wizard().wizard().IsSummary()) {
      if (!wizard().wizard().next().isEnabled()) return "Next is disabled";
      wizard().Next();
    }
    wizard().Finish();
    const auto* words = wizard().wizard().findChild<QLabel*>(QStringLiteral("creation_failure"));
    EXPECT_EQ(adds_.size(), 1U);
    return wizard().IsOpen() ? ToUtf8(words->text()) : "";
  }
  void NameUser(const std::string& name, const std::string& logon_name) {
    Open("user");
    wizard().Write("own_name", name);
    wizard().Write("own_logon_name", logon_name);
  }
  /// Whether one can sign in with a password.
  bool CanSignIn(const std::string& user, const std::string& password) {
    const std::string answers = folder_.File("password");
    std::ofstream(answers) << password << "\n";
    const std::string command =
        "kinit -c FILE:" + folder_.File("tickets") + " " + user + " < " + answers;
    try {
      (void)OutputOf(command + " 2>&1");
    } catch (const std::exception&) {
      return false;
    }
    return true;
  }

  testing::TemporaryFolder folder_;
  contract::ModalScripts modal_scripts_;
  resources::ReadResult<resources::ResourceFile> module_ =
      resources::ResourceFile::Read(resources::EmbeddedResourceBytes());
  std::vector<Entry> adds_;
  std::unique_ptr<NetworkSession> session_;
  std::unique_ptr<session::DirectorySession> directory_;
  std::optional<OpenWizard> wizard_;
};

TEST_F(LabNewObject, AUserWithAPasswordCanSignInAtOnce) {
  NameUser("Nora Jörg", "nora");
  wizard().Write("own_first_name", "Nora");
  wizard().Write("own_password", "Gehe1m!s-Wort");
  wizard().Write("own_confirmation", "Gehe1m!s-Wort");
  wizard().ClickOwn("own_must_change");
  wizard().Next();
  wizard().user().Click(IDC_CREATE_PELORA);
  wizard().user().Type(IDC_NEW_ADDRESS, "nora@pelora.test");
  EXPECT_EQ(Finish(), "");
  EXPECT_EQ(
      LdapSearch(Below("CN=Nora J\xC3\xB6rg"),
                 {"sAMAccountName", "userPrincipalName", "userAccountControl", "givenName", "mail",
                  "peloraAccount", "peloraAdmin", "peloraSharedStoreOnly", "peloraHidden",
                  "peloraUserServer", "peloraResourceType"}),
      (Lines{"givenName: Nora", "mail: nora@pelora.test", "peloraAccount: 1", "peloraAdmin: 0",
             "peloraHidden: 0", "peloraSharedStoreOnly: 0", "sAMAccountName: nora",
             "userAccountControl: 512", "userPrincipalName: nora@pelora.test"}));
  EXPECT_TRUE(CanSignIn("nora", "Gehe1m!s-Wort"));
  EXPECT_FALSE(CanSignIn("nora", "Anderes!s-W0rt"));
}

TEST_F(LabNewObject, AUserWhoMustChangeThePasswordHasNoneThatHolds) {
  NameUser("Olaf", "olaf");
  wizard().Write("own_password", "Gehe1m!s-Wort");
  wizard().Write("own_confirmation", "Gehe1m!s-Wort");
  EXPECT_EQ(Finish(), "");
  EXPECT_EQ(LdapSearch(Below("CN=Olaf"), {"pwdLastSet", "userAccountControl", "peloraAccount"}),
            (Lines{"peloraAccount: 0", "pwdLastSet: 0", "userAccountControl: 512"}));
  EXPECT_FALSE(CanSignIn("olaf", "Gehe1m!s-Wort"));
}

TEST_F(LabNewObject, AUserWithoutAPasswordIsDisabled) {
  NameUser("Pia, Dr.", "pia");
  EXPECT_EQ(Finish(), "");
  EXPECT_EQ(LdapSearch(Below("CN=Pia\\, Dr."), {"userAccountControl", "peloraAccount"}),
            (Lines{"peloraAccount: 0", "userAccountControl: 514"}));
}

TEST_F(LabNewObject, APasswordThatThePolicyRefusesMakesNoUser) {
  NameUser("Quentin", "quentin");
  wizard().Write("own_password", "x");
  wizard().Write("own_confirmation", "x");
  test::ShownBox box;
  modal_scripts_.Add(test::Confirm(box));
  const std::string words = Finish();
  EXPECT_TRUE(box.text.starts_with("Unknown error occured\n\nError code: 0X8007")) << box.text;
  EXPECT_TRUE(words.starts_with("The object was not created. The directory says: ")) << words;
  EXPECT_EQ(ReadValue(*directory_->store, Below("CN=Quentin"), "cn").substr(0, 2), "32");
  wizard().Back();
  wizard().Back();
  wizard().Write("own_password", "Gehe1m!s-Wort");
  wizard().Write("own_confirmation", "Gehe1m!s-Wort");
  EXPECT_EQ(Finish(), "");
}

TEST_F(LabNewObject, EveryOtherClass) {
  Open("contact");
  wizard().Write("own_name", "Rita Fern");
  wizard().Next();
  wizard().user().Click(IDC_CREATE_PELORA);
  wizard().user().Type(IDC_NEW_ADDRESS, "rita@fern.test");
  EXPECT_EQ(Finish(), "");
  EXPECT_EQ(LdapSearch(Below("CN=Rita Fern"),
                       {"objectClass", "displayName", "mail", "peloraAccount", "peloraHidden"}),
            (Lines{"displayName: Rita Fern", "mail: rita@fern.test", "objectClass: contact",
                   "objectClass: organizationalPerson", "objectClass: person", "objectClass: top",
                   "peloraAccount: 1", "peloraHidden: 0"}));

  Open("group");
  wizard().Write("own_name", "Team A/B");
  wizard().ClickOwn("own_scope_2");
  wizard().Next();
  wizard().user().Click(IDC_CREATE_PELORA);
  EXPECT_EQ(Finish(), "");
  EXPECT_EQ(LdapSearch(Below("CN=Team A/B"),
                       {"sAMAccountName", "groupType", "peloraAccount", "peloraHidden", "mail"}),
            (Lines{"groupType: -2147483640", "peloraAccount: 1", "peloraHidden: 0",
                   "sAMAccountName: Team A_B"}));

  Open("organizationalUnit");
  wizard().Write("own_name", "Tochter, GmbH");
  wizard().Next();
  wizard().user().Click(IDC_CREATE_PELORA);
  EXPECT_EQ(Finish(), "");
  EXPECT_EQ(LdapSearch(Below("OU=Tochter\\, GmbH"), {"ou", "peloraAccount", "peloraHidden"}),
            (Lines{"ou: Tochter, GmbH", "peloraAccount: 1", "peloraHidden: 0"}));

  Open("computer");
  wizard().Write("own_name", "mail-9");
  wizard().Next();
  wizard().user().Click(IDC_CREATE_PELORA);
  wizard().user().Type(IDC_HOST_ADDRESS, "192.0.2.9");
  EXPECT_EQ(Finish(), "");
  EXPECT_EQ(LdapSearch(Below("CN=mail-9"), {"sAMAccountName", "userAccountControl", "peloraAccount",
                                            "peloraHostAddress", "peloraHttpPort", "peloraSslPort",
                                            "peloraFilePath", "peloraContainsPublic"}),
            (Lines{"peloraAccount: 1", "peloraContainsPublic: 0", "peloraFilePath: /var/run/pelora",
                   "peloraHostAddress: 192.0.2.9", "peloraHttpPort: 236", "peloraSslPort: 237",
                   "sAMAccountName: MAIL-9$", "userAccountControl: 4096"}));

  Open("peloraAddresslist");
  wizard().user().Type(IDC_OBJECT_NAME, "Everyone");
  wizard().Next();
  wizard().user().Click(IDC_CREATE_PELORA);
  wizard().choosers().Browse(1, "LDAP://" + Container());
  wizard().user().Click(IDC_SEARCH_BASE_SELECT);
  wizard().user().Type(IDC_SEARCH_QUERY, "(mail=*)");
  EXPECT_EQ(Finish(), "");
  EXPECT_EQ(LdapSearch(Below("CN=Everyone"),
                       {"peloraAccount", "peloraHidden", "peloraBase", "peloraFilter"}),
            (Lines{"peloraAccount: 1", "peloraBase: " + Container(), "peloraFilter: (mail=*)",
                   "peloraHidden: 0"}));

  Open("peloraDynamicDistlist");
  wizard().user().Type(IDC_OBJECT_NAME, "Dynamic");
  wizard().Next();
  wizard().user().Click(IDC_CREATE_PELORA);
  wizard().user().Type(IDC_NEW_ADDRESS, "dynamic@pelora.test");
  wizard().user().Type(IDC_SEARCH_QUERY, "(mail=*)");
  EXPECT_EQ(Finish(), "");
  EXPECT_EQ(
      LdapSearch(Below("CN=Dynamic"), {"peloraAccount", "peloraHidden", "mail", "peloraFilter"}),
      (Lines{"mail: dynamic@pelora.test", "peloraAccount: 1", "peloraFilter: (mail=*)",
             "peloraHidden: 0"}));
}

TEST_F(LabNewObject, WhateverSignsItsNameHoldsTheObjectIsListedUnderTheNameItWasMadeWith) {
  Open("contact");
  const std::string name = R"(#1 <A+B=C>; "x", y/z\w?#2)";
  wizard().Write("own_name", name);
  EXPECT_EQ(Finish(), "");
  std::string listed;
  EXPECT_TRUE(session::DirectoryBrowser(*directory_->store)
                  .ListChildren({.container = Container()},
                                [&](const session::DirectoryObject& object) {
                                  if (object.name == name) listed = object.dn;
                                  return true;
                                })
                  .Ok());
  EXPECT_EQ(listed, wizard().wizard().created_name());
}

TEST_F(LabNewObject, NamesInUseAreSaidAndNothingIsMade) {
  const Lines before = LdapSearch(Below("CN=Ada Brandt"), {"mail", "sAMAccountName"});
  const std::string in_use =
      "The new object cannot be created because the name is already in use.\n"
      "Please select a different name and try again.";
  test::ShownBox box;
  NameUser("Ada Brandt", "ada9");
  modal_scripts_.Add(test::Confirm(box));
  EXPECT_NE(Finish(), "");
  EXPECT_EQ(box.text, in_use);
  EXPECT_EQ(LdapSearch(Below("CN=Ada Brandt"), {"mail", "sAMAccountName"}), before);

  // The name of the account is another's.
  NameUser("Ada Neu", "ADA");
  modal_scripts_.Add(test::Confirm(box));
  EXPECT_NE(Finish(), "");
  EXPECT_EQ(box.text, in_use);
  EXPECT_EQ(ReadValue(*directory_->store, Below("CN=Ada Neu"), "cn").substr(0, 2), "32");
}

TEST_F(LabNewObject, WhoMayNotWriteMakesNothingAndKeepsWhatWasTyped) {
  const EnvironmentVariable tickets("KRB5CCNAME", TicketsOf(kHelper));
  SignIn();
  NameUser("Not Allowed", "notallowed");
  test::ShownBox box;
  modal_scripts_.Add(test::Confirm(box));
  EXPECT_NE(Finish(), "");
  EXPECT_TRUE(
      box.text.starts_with("Unknown error occured\n\nError code: 0X80070005\n\nThe object was not "
                           "created. The directory "
                           "says: "))
      << box.text;
  EXPECT_EQ(ReadValue(*directory_->store, Below("CN=Not Allowed"), "cn").substr(0, 2), "32");
  wizard().Back();
  wizard().Back();
  EXPECT_EQ(wizard().Field("own_name"), "Not Allowed");
}

}  // namespace
}  // namespace pelora::lab
