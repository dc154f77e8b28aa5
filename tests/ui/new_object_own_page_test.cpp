// SPDX-License-Identifier: Apache-2.0
// The console's own first page, and the passwords that it asks for.
#include <sys/prctl.h>

#include <QLabel>
#include <QLineEdit>

#include "hosts/console/text/qt_text.h"
#include "tests/ui/new_object_test.h"

namespace pelora::test {
namespace {

using console::ToUtf8;

using NewObjectOwnPage = NewObjectTest;

TEST_F(NewObjectOwnPage, TheFullNameFollowsUntilAnotherIsWritten) {
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

TEST_F(NewObjectOwnPage, TheLogonNameThatFollowsIsOneThatTheDirectoryTakes) {
  const auto follows = [this](const char* kind, const std::string& name) {
    Open(kind);
    wizard().Write("own_name", name);
    EXPECT_EQ(wizard().Hint(), "");
    return wizard().Field("own_logon_name");
  };
  EXPECT_EQ(follows("group", "St. Gallen"), "St. Gallen");
  EXPECT_EQ(follows("group", " Meier & Co., Inc. "), "Meier & Co._ Inc");
  EXPECT_EQ(follows("computer", "abcdefghijklmn.linden"), "ABCDEFGHIJKLMN");
  EXPECT_EQ(follows("computer", "abcdefghijklm .linden"), "ABCDEFGHIJKLM");
}

TEST_F(NewObjectOwnPage, NextWaitsForWhatTheKindNeedsAndSaysForWhat) {
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

TEST_F(NewObjectOwnPage, BlanksAroundWhatIsTypedAreNotPartOfIt) {
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

TEST_F(NewObjectOwnPage, WithoutASealedConnectionNoPasswordIsAskedFor) {
  Open("user");
  EXPECT_EQ(wizard().wizard().findChild<QLineEdit*>(QStringLiteral("own_password")), nullptr);
  const auto* note = wizard().wizard().findChild<QLabel*>(QStringLiteral("own_password_note"));
  ASSERT_NE(note, nullptr);
  EXPECT_EQ(ToUtf8(note->text()),
            "An initial password can only be given over a sealed connection.");
}

TEST_F(NewObjectOwnPage, WithoutASealedConnectionNoPasswordIsSentWhateverTheValuesHold) {
  const auto object = Ref<ldap::NewStoreObject>::Adopt(new ldap::NewStoreObject(
      *recorded_->store, Below("CN=Nora"), "user", std::make_shared<ldap::StoreStatus>()));
  session::OwnValues values;
  values.name = values.logon_name = "Nora";
  values.password = values.confirmation = "Gehe1m!";
  EXPECT_EQ(session::StageOwnValues(session::NewObjectKinds()[0], values, {}, *object), S_OK);
  EXPECT_EQ(object->SetInfo(), S_OK);
  ASSERT_EQ(adds_.size(), 1U);
  EXPECT_TRUE(adds_[0].attributes.contains("sAMAccountName"));
  EXPECT_FALSE(adds_[0].attributes.contains("unicodePwd"));
  EXPECT_FALSE(adds_[0].attributes.contains("pwdLastSet"));
}

class NewObjectPassword : public NewObjectTest {
 protected:
  NewObjectPassword() : NewObjectTest(true) {}

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

TEST_F(NewObjectPassword, ThePasswordsMustMatch) {
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

TEST_F(NewObjectPassword, NobodyCanDumpTheProgramWhileAPasswordIsTyped) {
  ASSERT_EQ(prctl(PR_GET_DUMPABLE), 1);
  NameUser();
  EXPECT_EQ(prctl(PR_GET_DUMPABLE), 1);
  wizard().Write("own_password", "G");
  EXPECT_EQ(prctl(PR_GET_DUMPABLE), 0);
  wizard().Write("own_confirmation", "G");
  wizard().Write("own_password", "");
  EXPECT_EQ(prctl(PR_GET_DUMPABLE), 0) << "the other field holds it still";
  wizard().Write("own_confirmation", "");
  EXPECT_EQ(prctl(PR_GET_DUMPABLE), 1);
  wizard().Write("own_password", "G");
  wizard().Destroy();
  EXPECT_EQ(prctl(PR_GET_DUMPABLE), 1);
}

TEST_F(NewObjectPassword, ThePasswordGoesWithTheOneAddAndTheAccountIsEnabled) {
  NameUser();
  wizard().Write("own_password", "Pä\"s");
  wizard().Write("own_confirmation", "Pä\"s");
  wizard().Next();
  wizard().Next();
  EXPECT_EQ(wizard().Summary(),
            "Full name: Nora\nDisplay name: Nora\nUser logon name: nora\n"
            "User principal name: nora@linden-werke.example\n"
            "The user must change the password at the next logon.\n\nPelora disabled");
  wizard().Finish();
  EXPECT_EQ(Added("unicodePwd"),
            ldap::AttributeValues{std::string("\"\0P\0\xE4\0\"\0s\0\"\0", 12)});
  EXPECT_EQ(Added("pwdLastSet"), ldap::AttributeValues{"0"});
  EXPECT_EQ(Added("userAccountControl"), ldap::AttributeValues{"512"});
}

TEST_F(NewObjectPassword, APasswordMayBeForGood) {
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

TEST_F(NewObjectPassword, WithoutAPasswordTheAccountIsDisabled) {
  NameUser();
  wizard().Next();
  wizard().Next();
  EXPECT_EQ(wizard().Summary(),
            "Full name: Nora\nDisplay name: Nora\nUser logon name: nora\n"
            "User principal name: nora@linden-werke.example\n"
            "The account has no password yet and is disabled.\n\nPelora disabled");
  wizard().Finish();
  EXPECT_EQ(Added("unicodePwd"), ldap::AttributeValues{});
  EXPECT_EQ(Added("userAccountControl"), ldap::AttributeValues{"514"});
}

}  // namespace
}  // namespace pelora::test
