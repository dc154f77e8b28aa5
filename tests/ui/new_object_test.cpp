// SPDX-License-Identifier: Apache-2.0
// Objects made in the console's wizards, read back from the directory file.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <functional>

#include "hosts/console/qt_text.h"
#include "tests/ui/console_test.h"
#include "tests/ui/open_sheet.h"
#include "tests/ui/open_wizard.h"

namespace pelora::test {
namespace {

using console::ToQString;
using console::ToUtf8;
using Lines = std::vector<std::string>;

class NewObject : public ConsoleTest {
 protected:
  NewObject() { Reopen(false); }

  /// Opens the directory so that what is added is taken down.
  void Reopen(bool is_sealed) {
    std::unique_ptr<console::DirectorySession> session = OpenFile();
    std::unique_ptr<ldap::IDirectoryStore> opened;
    if (!session->open_another(opened, {}).Ok())
      throw std::runtime_error("it cannot be opened twice");
    auto store = std::make_unique<RecordingStore>(std::move(opened), adds_, is_sealed);
    recorded_ = std::make_unique<console::DirectorySession>(session->path, std::move(store),
                                                            session->open_another);
  }
  std::unique_ptr<console::DirectorySession> OpenFile() {
    console::SessionResult opened = console::OpenDirectoryFile(ToQString(file()));
    if (!opened.session) throw std::runtime_error(ToUtf8(opened.error));
    return std::move(opened.session);
  }

  OpenWizard& Open(const char* kind, const char* container = kSales) {
    wizard_.emplace(*recorded_, module(), kind, Objects({container}).front());
    return *wizard_;
  }
  OpenWizard& wizard() { return *wizard_; }
  void Close() { wizard_.reset(); }

  /// What the directory file holds of an object, without what follows from its name alone.
  Lines Stored(const std::string& dn) {
    Lines lines = SearchEntry(file(), dn);
    std::erase_if(lines, [](const std::string& line) {
      return line.starts_with("dn:") || line.starts_with("distinguishedName:") ||
             line.starts_with("name:") || line.starts_with("cn:") || line.starts_with("ou:");
    });
    return lines;
  }
  bool IsThere(const std::string& dn) {
    ldap::Entry entry;
    return OpenFile()->store->Read(dn, {}, entry).Ok();
  }
  std::string Below(const std::string& rdn) { return rdn + "," + kSales; }

  /// Keeps a picture of the window as it stands.
  void Picture(const std::string& name) {
    const QString folder = QStringLiteral(PELORA_SCREENSHOT_FOLDER);
    EXPECT_TRUE(QDir().mkpath(folder));
    QCoreApplication::processEvents();
    EXPECT_TRUE(wizard().wizard().grab().save(folder + QLatin1Char('/') + ToQString(name) +
                                              QStringLiteral(".png")));
  }

  std::vector<ldap::Entry> adds_;
  std::unique_ptr<console::DirectorySession> recorded_;
  std::optional<OpenWizard> wizard_;
};

// Every kind of object.

TEST_F(NewObject, AUserWithAnAccount) {
  Open("user");
  EXPECT_EQ(ToUtf8(wizard().wizard().windowTitle()), "New Object - User");
  EXPECT_EQ(wizard().wizard().PageCount(), 3U);
  wizard().Write("own_first_name", "Jörg");
  wizard().Write("own_last_name", "Neu");
  EXPECT_EQ(wizard().Field("own_name"), "Jörg Neu");
  wizard().Write("own_logon_name", "jneu");
  Picture("new-user-1");
  wizard().Next();
  EXPECT_EQ(wizard().dialog().Text(291), "linden-werke.example/Linden-Werke Chemnitz/Vertrieb");
  wizard().user().Click(254);
  EXPECT_FALSE(wizard().wizard().next().isEnabled());
  wizard().user().Type(268, "j.neu@linden-werke.example");
  wizard().choosers().Choose({"LDAP://CN=mail02,OU=Groupware Servers,DC=linden-werke,DC=example"});
  wizard().user().Click(271);
  EXPECT_EQ(wizard().dialog().Text(242), "mail02");
  Picture("new-user-2");
  wizard().Next();
  EXPECT_TRUE(wizard().wizard().IsSummary());
  EXPECT_EQ(wizard().Summary(), "Full name: Jörg Neu\nUser logon name: jneu\n\nPelora enabled");
  Picture("new-user-3");
  EXPECT_FALSE(IsThere(Below("CN=Jörg Neu")));
  wizard().Finish();
  EXPECT_FALSE(wizard().IsOpen());
  EXPECT_EQ(adds_.size(), 1U);
  EXPECT_EQ(wizard().wizard().created_name(), Below("CN=Jörg Neu"));
  EXPECT_EQ(Stored(Below("CN=Jörg Neu")),
            (Lines{"displayName: Jörg Neu", "givenName: Jörg", "mail: j.neu@linden-werke.example",
                   "objectClass: organizationalPerson", "objectClass: person", "objectClass: top",
                   "objectClass: user", "peloraAccount: 1", "peloraAdmin: 0", "peloraHidden: 0",
                   "peloraSharedStoreOnly: 0", "peloraUserServer: mail02", "sAMAccountName: jneu",
                   "sn: Neu", "userAccountControl: 512",
                   "userPrincipalName: jneu@linden-werke.example"}));
}

TEST_F(NewObject, ARoom) {
  Open("user");
  wizard().Write("own_name", "Saal 3, groß");
  wizard().Write("own_logon_name", "saal3");
  wizard().Next();
  wizard().user().Click(254);
  wizard().user().ChooseComboRow(284, 2);
  EXPECT_TRUE(wizard().wizard().next().isEnabled());
  wizard().user().Type(298, "12");
  wizard().user().Click(243);
  Picture("new-user-room");
  wizard().Next();
  wizard().Finish();
  EXPECT_EQ(
      Stored(Below("CN=Saal 3\\, groß")),
      (Lines{"displayName: Saal 3, groß", "objectClass: organizationalPerson",
             "objectClass: person", "objectClass: top", "objectClass: user", "peloraAccount: 1",
             "peloraAdmin: 0", "peloraHidden: 1", "peloraResourceCapacity: 12",
             "peloraResourceType: room", "peloraSharedStoreOnly: 1", "sAMAccountName: saal3",
             "userAccountControl: 512", "userPrincipalName: saal3@linden-werke.example"}));
}

TEST_F(NewObject, AContactWithoutPelora) {
  Open("contact");
  wizard().Write("own_first_name", "Ole");
  wizard().Write("own_last_name", "Fern");
  Picture("new-contact-1");
  wizard().Next();
  Picture("new-contact-2");
  EXPECT_TRUE(wizard().wizard().next().isEnabled());
  wizard().Next();
  EXPECT_EQ(wizard().Summary(), "Full name: Ole Fern\n\nPelora disabled");
  wizard().Finish();
  EXPECT_EQ(Stored(Below("CN=Ole Fern")),
            (Lines{"displayName: Ole Fern", "givenName: Ole", "objectClass: contact",
                   "objectClass: organizationalPerson", "objectClass: person", "objectClass: top",
                   "peloraAccount: 0", "sn: Fern"}));
}

TEST_F(NewObject, AContactWithAnAddress) {
  Open("contact");
  wizard().Write("own_name", "Firma Fern");
  wizard().Next();
  wizard().user().Click(254);
  EXPECT_FALSE(wizard().wizard().next().isEnabled());
  wizard().user().Type(268, "info@fern.example");
  wizard().Next();
  wizard().Finish();
  EXPECT_EQ(Stored(Below("CN=Firma Fern")),
            (Lines{"displayName: Firma Fern", "mail: info@fern.example", "objectClass: contact",
                   "objectClass: organizationalPerson", "objectClass: person", "objectClass: top",
                   "peloraAccount: 1", "peloraHidden: 0"}));
}

TEST_F(NewObject, AGroup) {
  Open("group");
  wizard().Write("own_name", "Team A/B");
  EXPECT_EQ(wizard().Field("own_logon_name"), "Team A_B");
  Picture("new-group-1");
  wizard().Next();
  wizard().user().Click(254);
  EXPECT_TRUE(wizard().wizard().next().isEnabled());
  wizard().user().Type(268, "team@linden-werke.example");
  Picture("new-group-2");
  wizard().Next();
  EXPECT_EQ(wizard().Summary(),
            "Group name: Team A/B\nGroup name (pre-Windows 2000): Team A_B\nGroup scope: Global\n"
            "Group type: Security\n\nPelora enabled");
  wizard().Finish();
  EXPECT_EQ(Stored(Below("CN=Team A/B")),
            (Lines{"groupType: -2147483646", "mail: team@linden-werke.example",
                   "objectClass: group", "objectClass: top", "peloraAccount: 1", "peloraHidden: 0",
                   "sAMAccountName: Team A_B"}));
}

TEST_F(NewObject, GroupsOfOtherScopesAndTypes) {
  struct Row {
    const char* scope;
    const char* type;
    const char* stored;
  };
  int number = 0;
  for (const Row& row : {Row{"own_scope_0", "own_type_0", "groupType: -2147483644"},
                         Row{"own_scope_2", "own_type_0", "groupType: -2147483640"},
                         Row{"own_scope_0", "own_type_1", "groupType: 4"},
                         Row{"own_scope_1", "own_type_1", "groupType: 2"},
                         Row{"own_scope_2", "own_type_1", "groupType: 8"}}) {
    const std::string name = "Group " + std::to_string(++number);
    Open("group");
    wizard().Write("own_name", name);
    wizard().ClickOwn(row.scope);
    wizard().ClickOwn(row.type);
    wizard().Next();
    wizard().Next();
    wizard().Finish();
    EXPECT_EQ(Stored(Below("CN=" + name)).front(), row.stored);
  }
}

TEST_F(NewObject, AnOrganizationalUnitThatIsACompany) {
  Open("organizationalUnit", "DC=linden-werke,DC=example");
  wizard().Write("own_name", "Tochter GmbH");
  Picture("new-organizational-unit-1");
  wizard().Next();
  EXPECT_EQ(wizard().dialog().Text(291), "linden-werke.example");
  wizard().user().Click(254);
  wizard().choosers().Choose({std::string("LDAP://") + kBirgit});
  wizard().user().Click(227);
  wizard().choosers().Choose({"LDAP://CN=mail01,OU=Groupware Servers,DC=linden-werke,DC=example"});
  wizard().user().Click(271);
  Picture("new-organizational-unit-2");
  wizard().Next();
  wizard().Finish();
  EXPECT_EQ(Stored("OU=Tochter GmbH,DC=linden-werke,DC=example"),
            (Lines{"objectClass: organizationalUnit", "objectClass: top", "peloraAccount: 1",
                   "peloraCompanyServer: mail01", "peloraHidden: 0",
                   std::string("peloraSystemAdmin: ") + kBirgit}));
}

TEST_F(NewObject, AComputerThatIsAServer) {
  Open("computer", "OU=Groupware Servers,DC=linden-werke,DC=example");
  wizard().Write("own_name", "mail-zagreb-reserve");
  EXPECT_EQ(wizard().Field("own_logon_name"), "MAIL-ZAGREB-RES");
  wizard().Write("own_logon_name", "MAIL-ZAG");
  wizard().Write("own_name", "mail-zagreb");
  EXPECT_EQ(wizard().Field("own_logon_name"), "MAIL-ZAG");
  Picture("new-computer-1");
  wizard().Next();
  wizard().user().Click(254);
  EXPECT_FALSE(wizard().wizard().next().isEnabled());
  EXPECT_EQ(wizard().dialog().Text(246), "236");
  wizard().user().Type(245, "192.0.2.44");
  wizard().user().Erase(246);
  wizard().user().Click(243);
  Picture("new-computer-2");
  wizard().Next();
  wizard().Finish();
  EXPECT_EQ(
      Stored("CN=mail-zagreb,OU=Groupware Servers,DC=linden-werke,DC=example"),
      (Lines{"objectClass: computer", "objectClass: organizationalPerson", "objectClass: person",
             "objectClass: top", "objectClass: user", "peloraAccount: 1", "peloraContainsPublic: 1",
             "peloraFilePath: /var/run/pelora", "peloraHostAddress: 192.0.2.44",
             "peloraSslPort: 237", "sAMAccountName: MAIL-ZAG$", "userAccountControl: 4096"}));
}

TEST_F(NewObject, AnAddressList) {
  Open("peloraAddresslist");
  EXPECT_EQ(wizard().wizard().own_page(), nullptr);
  EXPECT_FALSE(wizard().wizard().next().isEnabled());
  wizard().user().Type(292, "Alle Köche");
  Picture("new-address-list-1");
  wizard().Next();
  wizard().user().Click(254);
  EXPECT_FALSE(wizard().wizard().next().isEnabled());
  wizard().choosers().Browse(1, std::string("LDAP://") + kSales);
  wizard().user().Click(293);
  wizard().user().Type(287, "(title=Koch)");
  Picture("new-address-list-2");
  wizard().Next();
  EXPECT_EQ(wizard().Summary(), "Fullname: Alle Köche\n\nPelora enabled");
  Picture("new-address-list-3");
  wizard().Finish();
  EXPECT_EQ(adds_.size(), 1U);
  EXPECT_EQ(Stored(Below("CN=Alle Köche")),
            (Lines{"objectClass: peloraAddresslist", "objectClass: top", "peloraAccount: 1",
                   std::string("peloraBase: ") + kSales, "peloraFilter: (title=Koch)",
                   "peloraHidden: 0"}));
}

TEST_F(NewObject, ADynamicDistributionList) {
  Open("peloraDynamicDistlist");
  wizard().user().Type(292, "Neue");
  Picture("new-dynamic-list-1");
  wizard().Next();
  wizard().user().Click(254);
  wizard().user().Type(268, "neue@linden-werke.example");
  wizard().user().Type(287, "(cn=n*)");
  Picture("new-dynamic-list-2");
  wizard().Next();
  wizard().Finish();
  EXPECT_EQ(
      Stored(Below("CN=Neue")),
      (Lines{"mail: neue@linden-werke.example", "objectClass: peloraDynamicDistlist",
             "objectClass: top", "peloraAccount: 1", "peloraFilter: (cn=n*)", "peloraHidden: 0"}));
}

// The console's own page.

TEST_F(NewObject, TheFullNameFollowsUntilAnotherIsWritten) {
  Open("user");
  wizard().Write("own_first_name", "Ada");
  EXPECT_EQ(wizard().Field("own_name"), "Ada");
  wizard().Write("own_name", "Ada die Erste");
  wizard().Write("own_last_name", "Neu");
  EXPECT_EQ(wizard().Field("own_name"), "Ada die Erste");
  // One that is erased follows again.
  wizard().Write("own_name", "");
  wizard().Write("own_last_name", "Alt");
  EXPECT_EQ(wizard().Field("own_name"), "Ada Alt");
}

TEST_F(NewObject, NextWaitsForWhatTheKindNeedsAndSaysForWhat) {
  const auto expect = [this](const std::string& hint) {
    EXPECT_EQ(wizard().Hint(), hint);
    EXPECT_EQ(wizard().wizard().next().isEnabled(), hint.empty()) << hint;
  };
  Open("user");
  expect("Enter a name.");
  wizard().Write("own_name", "   ");
  expect("Enter a name.");
  wizard().Write("own_name", std::string(65, 'x'));
  expect("The name has more than 64 characters.");
  wizard().Write("own_name", std::string(64, 'x'));
  expect("Enter the user logon name.");
  wizard().Write("own_logon_name", std::string(21, 'x'));
  expect("User logon name: 20 characters at most.");
  for (const char sign : std::string("\"/\\[]:;|=,+*?<>@")) {
    wizard().Write("own_logon_name", std::string("a") + sign);
    expect("User logon name: none of \" / \\ [ ] : ; | = , + * ? < > @.");
  }
  wizard().Write("own_logon_name", "a.");
  expect("User logon name: no full stop at the end.");
  wizard().Write("own_logon_name", "a.b-c_d");
  expect("");
  Open("organizationalUnit");
  expect("Enter a name.");
  wizard().Write("own_name", "x");
  expect("");
  Open("computer");
  wizard().Write("own_name", "pc");
  expect("");
  wizard().Write("own_logon_name", "0123456789ABCDEF");
  expect("Computer name (pre-Windows 2000): 15 characters at most.");
}

TEST_F(NewObject, BlanksAroundWhatIsTypedAreNotPartOfIt) {
  Open("user");
  wizard().Write("own_name", " Nora ");
  wizard().Write("own_logon_name", " nora ");
  wizard().Next();
  wizard().Next();
  wizard().Finish();
  const Lines stored = Stored(Below("CN=Nora"));
  EXPECT_NE(std::ranges::find(stored, "displayName: Nora"), stored.end());
  EXPECT_NE(std::ranges::find(stored, "sAMAccountName: nora"), stored.end());
}

// Passwords.

TEST_F(NewObject, WithoutASealedConnectionNoPasswordIsAskedFor) {
  Open("user");
  EXPECT_EQ(wizard().wizard().findChild<QLineEdit*>(QStringLiteral("own_password")), nullptr);
  const auto* note = wizard().wizard().findChild<QLabel*>(QStringLiteral("own_password_note"));
  ASSERT_NE(note, nullptr);
  EXPECT_EQ(ToUtf8(note->text()),
            "An initial password can only be given over a sealed connection.");
}

class SealedNewObject : public NewObject {
 protected:
  SealedNewObject() { Reopen(true); }

  void NameUser() {
    Open("user");
    wizard().Write("own_name", "Nora");
    wizard().Write("own_logon_name", "nora");
  }
  ldap::AttributeValues Added(const std::string& attribute) {
    EXPECT_EQ(adds_.size(), 1U);
    const auto found = adds_.back().attributes.find(attribute);
    return found == adds_.back().attributes.end() ? ldap::AttributeValues{} : found->second;
  }
};

TEST_F(SealedNewObject, ThePasswordsMustMatch) {
  NameUser();
  EXPECT_TRUE(wizard().wizard().next().isEnabled());
  wizard().Write("own_password", "Gehe1m!");
  EXPECT_EQ(wizard().Hint(), "The passwords must match.");
  EXPECT_FALSE(wizard().wizard().next().isEnabled());
  wizard().Write("own_confirmation", "Gehe1m?");
  EXPECT_FALSE(wizard().wizard().next().isEnabled());
  wizard().Write("own_confirmation", "Gehe1m!");
  EXPECT_EQ(wizard().Hint(), "");
  EXPECT_TRUE(wizard().wizard().next().isEnabled());
  Picture("new-user-password");
  for (const char* field : {"own_password", "own_confirmation"}) {
    const auto* edit = wizard().wizard().findChild<QLineEdit*>(QLatin1String(field));
    EXPECT_EQ(edit->echoMode(), QLineEdit::Password);
  }
}

TEST_F(SealedNewObject, ThePasswordGoesWithTheOneAddAndTheAccountIsEnabled) {
  NameUser();
  wizard().Write("own_password", "Pä\"s");
  wizard().Write("own_confirmation", "Pä\"s");
  wizard().Next();
  wizard().Next();
  EXPECT_EQ(wizard().Summary(),
            "Full name: Nora\nUser logon name: nora\n"
            "The user must change the password at the next logon.\n\nPelora disabled");
  wizard().Finish();
  EXPECT_EQ(Added("unicodePwd"),
            ldap::AttributeValues{std::string("\"\0P\0\xE4\0\"\0s\0\"\0", 12)});
  EXPECT_EQ(Added("pwdLastSet"), ldap::AttributeValues{"0"});
  EXPECT_EQ(Added("userAccountControl"), ldap::AttributeValues{"512"});
}

TEST_F(SealedNewObject, APasswordMayBeForGood) {
  NameUser();
  wizard().Write("own_password", "Gehe1m!");
  wizard().Write("own_confirmation", "Gehe1m!");
  wizard().ClickOwn("own_must_change");
  wizard().Next();
  wizard().Next();
  wizard().Finish();
  EXPECT_EQ(Added("pwdLastSet"), ldap::AttributeValues{});
  EXPECT_EQ(Added("unicodePwd").size(), 1U);
}

TEST_F(SealedNewObject, WithoutAPasswordTheAccountIsDisabled) {
  NameUser();
  wizard().Next();
  wizard().Next();
  EXPECT_EQ(wizard().Summary(),
            "Full name: Nora\nUser logon name: nora\n"
            "The account has no password yet and is disabled.\n\nPelora disabled");
  wizard().Finish();
  EXPECT_EQ(Added("unicodePwd"), ldap::AttributeValues{});
  EXPECT_EQ(Added("userAccountControl"), ldap::AttributeValues{"514"});
}

// Failures, and ways out.

TEST_F(NewObject, ANameInUseIsSaidAndEverythingTypedStays) {
  const EntryLines before = SearchEntry(file(), kBirgit);
  Open("user");
  wizard().Write("own_first_name", "Birgit");
  wizard().Write("own_last_name", "Krämer");
  wizard().Write("own_logon_name", "birgit2");
  wizard().Next();
  wizard().user().Click(254);
  wizard().user().Type(268, "b2@linden-werke.example");
  wizard().Next();
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  wizard().Finish();
  EXPECT_EQ(box.caption, "Pelora Error");
  EXPECT_EQ(box.text,
            "The new object cannot be created because the name is already in use.\n"
            "Please select a different name and try again.");
  EXPECT_EQ(box.icon, QMessageBox::Warning);
  EXPECT_TRUE(wizard().IsOpen());
  EXPECT_EQ(SearchEntry(file(), kBirgit), before);
  const auto* words = wizard().wizard().findChild<QLabel*>(QStringLiteral("creation_failure"));
  EXPECT_TRUE(words->isVisible());
  EXPECT_TRUE(ToUtf8(words->text()).starts_with("The object was not created. The directory says: "))
      << ToUtf8(words->text());
  Picture("new-user-name-in-use");

  wizard().Back();
  EXPECT_EQ(wizard().dialog().Text(268), "b2@linden-werke.example");
  wizard().Back();
  EXPECT_EQ(wizard().Field("own_logon_name"), "birgit2");
  wizard().Write("own_name", "Birgit Krämer 2");
  wizard().Next();
  wizard().Next();
  EXPECT_FALSE(words->isVisible());
  wizard().Finish();
  EXPECT_FALSE(wizard().IsOpen());
  const Lines stored = Stored(Below("CN=Birgit Krämer 2"));
  EXPECT_NE(std::ranges::find(stored, "mail: b2@linden-werke.example"), stored.end());
  EXPECT_NE(std::ranges::find(stored, "givenName: Birgit"), stored.end());
}

TEST_F(NewObject, WhatIsChangedAfterGoingBackIsWhatIsMade) {
  Open("user");
  wizard().Write("own_name", "Nora");
  wizard().Write("own_logon_name", "nora");
  wizard().Next();
  wizard().Back();
  wizard().Write("own_logon_name", "nora2");
  wizard().Next();
  wizard().Next();
  wizard().Finish();
  const Lines stored = Stored(Below("CN=Nora"));
  EXPECT_NE(std::ranges::find(stored, "sAMAccountName: nora2"), stored.end());
}

TEST_F(NewObject, AFailureThatNoExtensionShowsIsShownByTheConsole) {
  console::QtMessageBox message_box;
  const console::NewObjectKind& unit = console::NewObjectKinds()[3];
  const auto failure = std::make_shared<ldap::StoreStatus>();
  HRESULT make_status = E_ADS_BAD_PATHNAME;
  NewObjectSetup setup;
  setup.class_name = "organizationalUnit";
  setup.make_object = [&](const std::string& /*name*/, Ref<IADs>& object) {
    // There is no such container.
    object = Ref<IADs>::Adopt(
        new ldap::NewStoreObject(*recorded_->store, "OU=New,OU=Nowhere,DC=linden-werke,DC=example",
                                 "organizationalUnit", failure));
    return make_status;
  };
  console::QtNewObjectWizard window(
      {.module = module(), .message_box = message_box, .kind = unit, .own_context = {}},
      std::move(setup));
  window.Start();
  window.show();
  window.findChild<QLineEdit*>(QStringLiteral("own_name"))->setText(QStringLiteral("New"));

  ShownBox box;
  modal_scripts().Add(Confirm(box));
  QTest::mouseClick(&window.next(), Qt::LeftButton);
  EXPECT_EQ(box.text, "Unknown error occured\n\nError code: 0X80005000");
  EXPECT_EQ(window.CurrentPage(), 0U);

  make_status = S_OK;
  QTest::mouseClick(&window.next(), Qt::LeftButton);
  EXPECT_TRUE(window.IsSummary());
  modal_scripts().Add(Confirm(box));
  QTest::mouseClick(&window.finish(), Qt::LeftButton);
  EXPECT_EQ(box.caption, "Pelora Error");
  EXPECT_EQ(box.text, "Unknown error occured\n\nError code: 0X80072030");
  EXPECT_EQ(box.icon, QMessageBox::Critical);
  EXPECT_TRUE(window.isVisible());
}

TEST_F(NewObject, CancelAndEscapeMakeNothingAndLeaveNothingBehind) {
  for (const bool by_key : {false, true}) {
    Open("user");
    wizard().Write("own_name", "Nora");
    wizard().Write("own_logon_name", "nora");
    wizard().Next();
    wizard().user().Click(254);
    EXPECT_EQ(wizard().components(), 1);
    if (by_key) {
      QTest::keyClick(&wizard().wizard(), Qt::Key_Escape);
    } else {
      auto* cancel = wizard().wizard().findChild<QPushButton*>(QStringLiteral("wizard_cancel"));
      QTest::mouseClick(cancel, Qt::LeftButton);
    }
    EXPECT_FALSE(wizard().IsOpen());
    wizard().Destroy();
    EXPECT_EQ(wizard().components(), 0);
  }
  EXPECT_TRUE(adds_.empty());
}

TEST_F(NewObject, TheKeyboardLeadsThrough) {
  Open("user");
  QWidget* focus = QApplication::focusWidget();
  ASSERT_NE(focus, nullptr);
  EXPECT_EQ(ToUtf8(focus->objectName()), "own_first_name");
  QTest::keyClicks(focus, QStringLiteral("Nora"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(ToUtf8(QApplication::focusWidget()->objectName()), "own_last_name");
  // A disabled Next button does not react.
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_EQ(wizard().wizard().CurrentPage(), 0U);
  wizard().Write("own_logon_name", "nora");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_EQ(wizard().wizard().CurrentPage(), 1U);
  EXPECT_EQ(ToUtf8(QApplication::focusWidget()->objectName()), "control_254");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  EXPECT_EQ(wizard().dialog().Check(254), CheckState::kChecked);
  wizard().user().Type(268, "n@x");
  // Behind the page's controls come the buttons.
  wizard().wizard().Dialog(1)->Find(271)->widget().setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(ToUtf8(QApplication::focusWidget()->objectName()), "wizard_back");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(ToUtf8(QApplication::focusWidget()->objectName()), "wizard_next");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_TRUE(wizard().wizard().IsSummary());
  EXPECT_EQ(ToUtf8(QApplication::focusWidget()->objectName()), "wizard_finish");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_FALSE(wizard().IsOpen());
  EXPECT_TRUE(IsThere(Below("CN=Nora")));
}

TEST_F(NewObject, EveryPageHasItsPicture) {
  Open("user");
  wizard().Write("own_name", "Nora");
  wizard().Write("own_logon_name", "nora");
  wizard().Next();
  const auto* icon = wizard().wizard().Dialog(1)->widget().findChild<QLabel*>();
  ASSERT_NE(icon, nullptr);
  EXPECT_FALSE(icon->pixmap().isNull());
  EXPECT_GE(icon->pixmap().height(), 16);
}

}  // namespace
}  // namespace pelora::test
