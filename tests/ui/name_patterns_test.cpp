// SPDX-License-Identifier: Apache-2.0
// Names of new users that follow a company's patterns.
#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

#include "tests/ui/keep_picture.h"
#include "tests/ui/wizard_person.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::StartsWith;

constexpr const char* kServers = "OU=Groupware Servers,DC=linden-werke,DC=example";
/// A company that is none: its box is not checked.
constexpr const char* kNoCompany = "OU=Linden Servis Beograd,DC=linden-werke,DC=example";

class NamePatterns : public NewObjectInWindow {
 protected:
  void MakeUserIn(const std::string& container, const std::function<void(Wizard& wizard)>& play) {
    GoTo(container);
    modal_scripts().Add([&play](QWidget& window) {
      Wizard wizard(window);
      play(wizard);
    });
    window().findChild<QMenu*>(QStringLiteral("new_menu"))->actions().front()->trigger();
    Settle();
  }
  /// What is typed into the dialog of patterns, which is kept or not.
  void AnswerPatterns(const char* logon_name, const char* address) {
    modal_scripts().Add([=](QWidget& dialog) {
      ASSERT_EQ(ToUtf8(dialog.objectName()), "pattern_dialog");
      dialog.findChild<QLineEdit*>(QStringLiteral("pattern_logon_name"))
          ->setText(QString::fromUtf8(logon_name));
      dialog.findChild<QLineEdit*>(QStringLiteral("pattern_address"))
          ->setText(QString::fromUtf8(address));
      dialog.findChild<QPushButton*>(QStringLiteral("pattern_keep"))->click();
    });
  }
};

TEST_F(NamePatterns, NamesFollowThePatternsOfTheCompanyAndStayEditable) {
  MakeUserIn(kSales, [this](Wizard& wizard) {
    wizard.Write("own_first_name", "Jörg");
    EXPECT_EQ(wizard.Field("own_logon_name"), "") << "there is no pattern yet";
    AnswerPatterns("{first}.{last}", "{logon}@linden-werke.example");
    wizard.ClickOwn("own_patterns");
    EXPECT_EQ(wizard.Field("own_logon_name"), "") << "there is no last name yet";
    wizard.Write("own_last_name", "Neu");
    EXPECT_EQ(wizard.Field("own_logon_name"), "joerg.neu");
    wizard.Write("own_last_name", "Neuer-Langenfeldmann");
    EXPECT_EQ(wizard.Field("own_logon_name"), "joerg.neuer-langenfe");
    wizard.Write("own_last_name", "Neu");
    wizard.Next();
    EXPECT_EQ(wizard.page().Text(IDC_NEW_ADDRESS), "") << "no account is made yet";
    dynamic_cast<QAbstractButton&>(wizard.page().Find(IDC_CREATE_PELORA)->widget()).click();
    EXPECT_EQ(wizard.page().Text(IDC_NEW_ADDRESS), "joerg.neu@linden-werke.example");
    // Another name gives another address, as long as nobody has written one.
    wizard.Back();
    wizard.Write("own_last_name", "Alt");
    wizard.Next();
    EXPECT_EQ(wizard.page().Text(IDC_NEW_ADDRESS), "joerg.alt@linden-werke.example");
    wizard.TypeAddress("");
    EXPECT_EQ(wizard.page().Text(IDC_NEW_ADDRESS), "") << "whoever erases it types another";
    wizard.TypeAddress("info@linden-werke.example");
    wizard.Back();
    wizard.Write("own_logon_name", "joerg");
    wizard.Write("own_last_name", "Neu");
    EXPECT_EQ(wizard.Field("own_logon_name"), "joerg") << "it was written";
    wizard.Next();
    EXPECT_EQ(wizard.page().Text(IDC_NEW_ADDRESS), "info@linden-werke.example");
    wizard.Next();
    wizard.Finish();
  });
  const EntryLines stored =
      SearchEntry(file(),
                  "CN=Jörg Neu,OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,"
                  "DC=example");
  EXPECT_THAT(stored, AllOf(Contains("sAMAccountName: joerg"),
                            Contains("mail: info@linden-werke.example")));
}

TEST_F(NamePatterns, PatternsAreKeptForTheCompanyAndNotForOthers) {
  const auto follows = [this](const std::string& container) {
    std::string logon_name;
    MakeUserIn(container, [&logon_name](Wizard& wizard) {
      NameUser(wizard);
      logon_name = wizard.Field("own_logon_name");
      wizard.wizard().done(QDialog::Rejected);
    });
    return logon_name;
  };
  EXPECT_EQ(follows(kSales), "");
  MakeUserIn(kSales, [this](Wizard& wizard) {
    AnswerPatterns("{last}-{first}", "");
    wizard.ClickOwn("own_patterns");
    wizard.wizard().done(QDialog::Rejected);
  });
  EXPECT_EQ(follows(kSales), "neu-nora");
  EXPECT_EQ(follows(kLaboratory), "neu-nora") << "of the same company, two units below";
  EXPECT_EQ(follows(kNoCompany), "");
  EXPECT_EQ(follows(kServers), "");
  OpenWindow();
  EXPECT_EQ(follows(kSales), "neu-nora") << "another window";
}

TEST_F(NamePatterns, WhatIsNoPatternIsNotKept) {
  MakeUserIn(kSales, [this](Wizard& wizard) {
    modal_scripts().Add([](QWidget& dialog) {
      auto& logon_name = *dialog.findChild<QLineEdit*>(QStringLiteral("pattern_logon_name"));
      auto& address = *dialog.findChild<QLineEdit*>(QStringLiteral("pattern_address"));
      const auto& said = *dialog.findChild<QLabel*>(QStringLiteral("pattern_said"));
      auto& keep = *dialog.findChild<QPushButton*>(QStringLiteral("pattern_keep"));
      EXPECT_TRUE(keep.isEnabled());
      EXPECT_EQ(ToUtf8(said.text()), "Nothing follows.");
      logon_name.setText(QStringLiteral("{first}@"));
      EXPECT_FALSE(keep.isEnabled());
      EXPECT_THAT(ToUtf8(said.text()), StartsWith("User logon name: none of "));
      logon_name.setText(QStringLiteral("{first}.{last}"));
      address.setText(QStringLiteral("{nobody}@linden-werke.example"));
      EXPECT_FALSE(keep.isEnabled());
      EXPECT_THAT(ToUtf8(said.text()), StartsWith("{nobody} is not known"));
      address.setText(QStringLiteral("{logon}@linden-werke.example"));
      EXPECT_TRUE(keep.isEnabled());
      EXPECT_EQ(ToUtf8(said.text()), "Ada Meyer gets: ada.meyer  ada.meyer@linden-werke.example");
      KeepPicture(dialog, "patterns");
      dynamic_cast<QDialog&>(dialog).reject();
    });
    wizard.ClickOwn("own_patterns");
    NameUser(wizard);
    EXPECT_EQ(wizard.Field("own_logon_name"), "");
    wizard.wizard().done(QDialog::Rejected);
  });
}

}  // namespace
}  // namespace pelora::test
