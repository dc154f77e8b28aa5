// SPDX-License-Identifier: Apache-2.0
// Every kind of object made in the console's wizards: its own page and the whole entry. What the
// extensions write is held on every console at once.
#include "hosts/console/text/qt_text.h"
#include "resources/resource.h"
#include "tests/ui/new_object_test.h"

namespace pelora::test {
namespace {

using console::ToUtf8;

using NewObjectKinds = NewObjectTest;

TEST_F(NewObjectKinds, AUserWithAnAccount) {
  Open("user");
  EXPECT_EQ(ToUtf8(wizard().wizard().windowTitle()), "New Object - User");
  EXPECT_EQ(wizard().wizard().PageCount(), 3U);
  wizard().Write("own_first_name", "Jörg");
  wizard().Write("own_last_name", "Neu");
  EXPECT_EQ(wizard().Field("own_name"), "Jörg Neu");
  wizard().Write("own_logon_name", "jneu");
  Picture("new-user-1");
  wizard().Next();
  EXPECT_EQ(wizard().dialog().Text(IDC_CONTAINER_NAME),
            "linden-werke.example/Linden-Werke Chemnitz/Vertrieb");
  wizard().user().Click(IDC_CREATE_PELORA);
  wizard().user().Type(IDC_NEW_ADDRESS, "j.neu@linden-werke.example");
  wizard().choosers().Choose({"LDAP://CN=mail02,OU=Groupware Servers,DC=linden-werke,DC=example"});
  wizard().user().Click(IDC_SERVER_SELECT);
  Picture("new-user-2");
  wizard().Next();
  EXPECT_TRUE(wizard().wizard().IsSummary());
  EXPECT_EQ(wizard().Summary(),
            "First name: Jörg\nLast name: Neu\nFull name: Jörg Neu\nDisplay name: Jörg Neu\n"
            "User logon name: jneu\nUser principal name: jneu@linden-werke.example\n\n"
            "Pelora enabled\n\n"
            "Create Pelora Account: yes\nAccount type: active user\nHome Server: mail02\n"
            "E-mail Address: j.neu@linden-werke.example");
  Picture("new-user-3");
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

TEST_F(NewObjectKinds, AContactWithoutPelora) {
  Open("contact");
  wizard().Write("own_first_name", "Ole");
  wizard().Write("own_last_name", "Fern");
  Picture("new-contact-1");
  wizard().Next();
  Picture("new-contact-2");
  wizard().Next();
  EXPECT_EQ(wizard().Summary(),
            "First name: Ole\nLast name: Fern\nFull name: Ole Fern\nDisplay name: Ole Fern\n\n"
            "Pelora disabled");
  wizard().Finish();
  EXPECT_EQ(Stored(Below("CN=Ole Fern")),
            (Lines{"displayName: Ole Fern", "givenName: Ole", "objectClass: contact",
                   "objectClass: organizationalPerson", "objectClass: person", "objectClass: top",
                   "peloraAccount: 0", "sn: Fern"}));
}

TEST_F(NewObjectKinds, AGroup) {
  Open("group");
  wizard().Write("own_name", "Team A/B");
  EXPECT_EQ(wizard().Field("own_logon_name"), "Team A_B");
  Picture("new-group-1");
  wizard().Next();
  wizard().user().Click(IDC_CREATE_PELORA);
  wizard().user().Type(IDC_NEW_ADDRESS, "team@linden-werke.example");
  Picture("new-group-2");
  wizard().Next();
  EXPECT_EQ(wizard().Summary(),
            "Group name: Team A/B\nGroup name (pre-Windows 2000): Team A_B\nGroup scope: Global\n"
            "Group type: Security\n\nPelora enabled\n\nCreate Pelora group: yes\n"
            "E-mail Address: team@linden-werke.example");
  wizard().Finish();
  EXPECT_EQ(Stored(Below("CN=Team A/B")),
            (Lines{"groupType: -2147483646", "mail: team@linden-werke.example",
                   "objectClass: group", "objectClass: top", "peloraAccount: 1", "peloraHidden: 0",
                   "sAMAccountName: Team A_B"}));
}

TEST_F(NewObjectKinds, GroupsOfOtherScopesAndTypes) {
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

TEST_F(NewObjectKinds, AnOrganizationalUnit) {
  Open("organizationalUnit", "DC=linden-werke,DC=example");
  wizard().Write("own_name", "Tochter GmbH");
  Picture("new-organizational-unit-1");
  wizard().Next();
  EXPECT_EQ(wizard().dialog().Text(IDC_CONTAINER_NAME), "linden-werke.example");
  Picture("new-organizational-unit-2");
  wizard().Next();
  wizard().Finish();
  EXPECT_EQ(Stored("OU=Tochter GmbH,DC=linden-werke,DC=example"),
            (Lines{"objectClass: organizationalUnit", "objectClass: top", "peloraAccount: 0"}));
}

TEST_F(NewObjectKinds, AComputer) {
  Open("computer", "OU=Groupware Servers,DC=linden-werke,DC=example");
  wizard().Write("own_name", "mail-zagreb-reserve");
  EXPECT_EQ(wizard().Field("own_logon_name"), "MAIL-ZAGREB-RES");
  wizard().Write("own_logon_name", "MAIL-ZAG");
  wizard().Write("own_name", "mail-zagreb");
  EXPECT_EQ(wizard().Field("own_logon_name"), "MAIL-ZAG");
  Picture("new-computer-1");
  wizard().Next();
  Picture("new-computer-2");
  wizard().Next();
  wizard().Finish();
  EXPECT_EQ(Stored("CN=mail-zagreb,OU=Groupware Servers,DC=linden-werke,DC=example"),
            (Lines{"objectClass: computer", "objectClass: organizationalPerson",
                   "objectClass: person", "objectClass: top", "objectClass: user",
                   "peloraAccount: 0", "sAMAccountName: MAIL-ZAG$", "userAccountControl: 4096"}));
}

TEST_F(NewObjectKinds, ListsThatTheirExtensionNames) {
  for (const char* const kind : {"peloraAddresslist", "peloraDynamicDistlist"}) {
    Open(kind);
    EXPECT_EQ(wizard().wizard().own_page(), nullptr);
    wizard().user().Type(IDC_OBJECT_NAME, std::string("Neue ") + kind);
    Picture(std::string(kind) + "-1");
    wizard().Next();
    Picture(std::string(kind) + "-2");
    wizard().Next();
    Picture(std::string(kind) + "-3");
    wizard().Finish();
    EXPECT_EQ(Stored(Below(std::string("CN=Neue ") + kind)),
              (Lines{std::string("objectClass: ") + kind, "objectClass: top", "peloraAccount: 0"}));
  }
}

TEST_F(NewObjectKinds, ContainersMayHaveSlashesAndCommasInTheirNames) {
  const std::string slash =
      "OU=Labor I/O,OU=Entwicklung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
  Open("organizationalUnit", slash.c_str());
  wizard().Write("own_name", "Prüfstand, links");
  wizard().Next();
  EXPECT_EQ(wizard().dialog().Text(IDC_CONTAINER_NAME),
            "linden-werke.example/Linden-Werke Chemnitz/Entwicklung/Labor I/O");
  wizard().Next();
  wizard().Finish();
  const std::string comma = "OU=Prüfstand\\, links," + slash;
  EXPECT_EQ(wizard().wizard().created_name(), comma);

  Open("peloraAddresslist", comma.c_str());
  wizard().user().Type(IDC_OBJECT_NAME, "A/B, C");
  wizard().Next();
  wizard().Next();
  wizard().Finish();
  EXPECT_FALSE(wizard().IsOpen());
  EXPECT_EQ(wizard().wizard().created_name(), "CN=A/B\\, C," + comma);
  EXPECT_TRUE(IsThere("CN=A/B\\, C," + comma));
}

TEST_F(NewObjectKinds, EveryKindIsMadeWithOneAdd) {
  for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
    SCOPED_TRACE(kind.class_name);
    adds_.clear();
    OpenNamed(kind);
    while (!wizard().wizard().IsSummary()) wizard().Next();
    wizard().Finish();
    EXPECT_EQ(adds_.size(), 1U);
    EXPECT_TRUE(IsThere(wizard().wizard().created_name()));
  }
}

}  // namespace
}  // namespace pelora::test
