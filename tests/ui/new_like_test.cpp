// SPDX-License-Identifier: Apache-2.0
// New objects after others.
#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAction>
#include <QPushButton>

#include "tests/ui/keep_picture.h"
#include "tests/ui/scripted_store.h"
#include "tests/ui/wizard_person.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* kDistribution =
    "CN=Rundschreiben,OU=Gruppen,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
constexpr const char* kFrank =
    "CN=Frank Seidel,OU=Entwicklung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";

class NewLike : public NewObjectInWindow {
 protected:
  [[nodiscard]] QAction& action() {
    return *window().findChild<QAction*>(QStringLiteral("new_like"));
  }
  /// Makes an object after another; `play` is done in the wizard.
  void MakeLike(const std::string& object, const std::function<void(Wizard& wizard)>& play) {
    Select({object});
    ASSERT_TRUE(action().isEnabled());
    modal_scripts().Add([&play](QWidget& window) {
      Wizard wizard(window);
      play(wizard);
    });
    action().trigger();
    Settle();
  }
};

TEST_F(NewLike, AUserTakesOverWhatSeveralMayShareAndTheSummarySaysAllOfIt) {
  MakeLike(kJuergen, [](Wizard& wizard) {
    EXPECT_EQ(wizard.Title(), "New Object - User like Jürgen Weißflog");
    EXPECT_EQ(wizard.Field("own_first_name"), "");
    EXPECT_EQ(wizard.Field("own_name"), "");
    NameUser(wizard);
    wizard.Write("own_logon_name", "nora");
    wizard.Next();
    EXPECT_EQ(wizard.page().Check(IDC_CREATE_PELORA), CheckState::kChecked);
    EXPECT_EQ(wizard.page().Text(IDC_SERVER), "mail01");
    EXPECT_EQ(wizard.page().Text(IDC_NEW_ADDRESS), "");
    wizard.TypeAddress("nora@linden-werke.example");
    wizard.Next();
    EXPECT_THAT(wizard.Summary(),
                AllOf(HasSubstr("\nHome Server: mail01\n"),
                      EndsWith("\n\nAs Jürgen Weißflog has it:\n"
                               "Use user quota: yes\nWarning at: 4000\nSoft limit: 4500\n"
                               "Hard limit: 5000\narchiver: archive01;archive02\nimap: enabled")));
    KeepPicture(wizard.wizard(), "new-like");
    wizard.Finish();
  });
  const EntryLines stored =
      SearchEntry(file(),
                  "CN=Nora Neu,OU=Geschäftsleitung,OU=Linden-Werke Chemnitz,DC=linden-werke,"
                  "DC=example");
  for (const char* line :
       {"peloraAccount: 1", "peloraAdmin: 2", "peloraUserServer: mail01", "peloraQuotaOverride: 1",
        "peloraQuotaWarn: 4000", "peloraQuotaSoft: 4500", "peloraQuotaHard: 5000",
        "peloraEnabledFeatures: imap", "peloraUserArchiveServers: archive01",
        "peloraUserArchiveServers: archive02", "mail: nora@linden-werke.example"}) {
    EXPECT_THAT(stored, Contains(line));
  }
  for (const char* attribute : {"otherMailbox:", "telephoneNumber:", "title:", "logonHours:",
                                "accountExpires:", "peloraEnabledFeatures: archiver"}) {
    EXPECT_THAT(stored, Not(Contains(StartsWith(attribute)))) << attribute;
  }
}

TEST_F(NewLike, WithoutAnAccountNoneOfItsSettingsIsTakenOver) {
  MakeLike(kFrank, [](Wizard& wizard) {
    NameUser(wizard);
    wizard.Write("own_logon_name", "nora");
    wizard.Next();
    dynamic_cast<QAbstractButton&>(wizard.page().Find(IDC_CREATE_PELORA)->widget()).click();
    EXPECT_EQ(wizard.page().Check(IDC_CREATE_PELORA), CheckState::kUnchecked);
    wizard.Next();
    EXPECT_THAT(wizard.Summary(),
                EndsWith("Pelora disabled\n\nAs Frank Seidel has it:\nDepartment: Entwicklung"));
    wizard.Finish();
  });
  const EntryLines stored = SearchEntry(
      file(), "CN=Nora Neu,OU=Entwicklung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example");
  EXPECT_THAT(stored, AllOf(Contains("department: Entwicklung"), Contains("peloraAccount: 0"),
                            Not(Contains(StartsWith("peloraQuota"))),
                            Not(Contains(StartsWith("peloraUserServer")))));
}

TEST_F(NewLike, AGroupIsOfTheSameScopeAndTypeAndHasNoMembers) {
  MakeLike(kDistribution, [](Wizard& wizard) {
    wizard.Write("own_name", "Neuigkeiten");
    wizard.Next();
    wizard.Next();
    EXPECT_THAT(wizard.Summary(), AllOf(HasSubstr("Group scope: Global\nGroup type: Distribution"),
                                        Not(HasSubstr("Members"))));
    wizard.Finish();
  });
  const EntryLines stored = SearchEntry(
      file(), "CN=Neuigkeiten,OU=Gruppen,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example");
  EXPECT_THAT(stored,
              AllOf(Contains("groupType: 2"), Contains("peloraAccount: 1"),
                    Not(Contains(StartsWith("member:"))), Not(Contains(StartsWith("managedBy:"))),
                    Not(Contains(StartsWith("mail:")))));
}

TEST_F(NewLike, ACompanyTakesOverItsServerAndQuotasWhichAreToldApart) {
  MakeLike(kCompany, [](Wizard& wizard) {
    wizard.Write("own_name", "Neue Werke");
    wizard.Next();
    wizard.Next();
    EXPECT_THAT(wizard.Summary(), AllOf(HasSubstr("Warning at (Company quota): 40000"),
                                        HasSubstr("Warning at (Userdefault quota): 800")));
    wizard.Finish();
  });
  const EntryLines stored = SearchEntry(file(), "OU=Neue Werke,DC=linden-werke,DC=example");
  EXPECT_THAT(
      stored,
      AllOf(Contains("peloraQuotaWarn: 40000"), Contains("peloraUserDefaultQuotaHard: 1000"),
            Contains("peloraAccount: 1"), Not(Contains(StartsWith("peloraAdminPrivilege"))),
            Not(Contains(HasSubstr("WarningRecipients")))));
}

TEST_F(NewLike, ADynamicListIsFilledInOnItsPage) {
  MakeLike(kDynamicList, [](Wizard& wizard) {
    EXPECT_EQ(wizard.page().Text(IDC_OBJECT_NAME), "");
    wizard.page().SetText(IDC_OBJECT_NAME, "Alle");
    wizard.Next();
    EXPECT_EQ(wizard.page().Check(IDC_CREATE_PELORA), CheckState::kChecked);
    EXPECT_EQ(wizard.page().Text(IDC_SEARCH_QUERY),
              "(&(objectClass=user)(!(objectClass=computer)))");
    EXPECT_EQ(wizard.page().Text(IDC_NEW_ADDRESS), "");
    wizard.Next();
    EXPECT_THAT(wizard.Summary(), Not(HasSubstr("has it:"))) << "all of it stands on the page";
    wizard.Finish();
  });
}

TEST_F(NewLike, TheNameOfADeletedObjectIsNotTakenOver) {
  ModifyEntry(file(), std::string("dn: ") + kDynamicList +
                          "\nchangetype: modify\nreplace: peloraBase\npeloraBase: "
                          "OU=Weg\\0ADEL:8e1bf9a0-0f5c-4c55-9f10-4a1b6f6c2d11,"
                          "CN=Deleted Objects,DC=linden-werke,DC=example\n");
  MakeLike(kDynamicList, [](Wizard& wizard) {
    wizard.page().SetText(IDC_OBJECT_NAME, "Alle");
    wizard.Next();
    EXPECT_EQ(wizard.page().Text(IDC_SEARCH_QUERY),
              "(&(objectClass=user)(!(objectClass=computer)))");
    EXPECT_EQ(wizard.page().Text(IDC_SEARCH_BASE), "");
    wizard.wizard().done(QDialog::Rejected);
  });
}

TEST_F(NewLike, IsOfferedForOneObjectOfAKindThatCanBeMade) {
  Select({kBirgit});
  EXPECT_TRUE(action().isEnabled());
  EXPECT_TRUE(list().actions().contains(&action()));
  EXPECT_TRUE(pane().tree().actions().contains(&action()));
  Select({kBirgit,
          "CN=Stefan Ebert,OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,"
          "DC=example"});
  ASSERT_EQ(window().Selection().size(), 2U);
  EXPECT_FALSE(action().isEnabled());
  Select({kPlotter});
  ASSERT_EQ(window().Selection().size(), 1U);
  EXPECT_FALSE(action().isEnabled()) << "no such objects are made";
  GoTo("DC=linden-werke,DC=example");
  pane().tree().setFocus();
  pane().list().view().clearSelection();
  QCoreApplication::processEvents();
  EXPECT_FALSE(action().isEnabled()) << "the domain";
}

TEST_F(NewLike, IsNotOfferedForABaseThatLiesInNothing) {
  const ldap::StoreOpener open = [](auto& store, const std::stop_token& /*stop*/) {
    auto scripted = std::make_unique<ScriptedStore>(
        [](const ldap::SearchRequest& /*request*/, const ldap::EntrySink& sink) {
          sink(ContainerEntry("Unit"));
          return ldap::StoreStatus{};
        },
        true);
    scripted->SetBaseClasses({"top", "organizationalUnit"});
    store = std::move(scripted);
    return ldap::StoreStatus{};
  };
  std::unique_ptr<ldap::IDirectoryStore> store;
  ASSERT_TRUE(open(store, {}).Ok());
  ASSERT_TRUE(window().SetSession(
      std::make_unique<session::DirectorySession>("unit.ldb", std::move(store), open)));
  Settle();
  pane().tree().setFocus();
  QCoreApplication::processEvents();
  ASSERT_EQ(window().Selection().size(), 1U);
  ASSERT_EQ(window().Selection().front().dn, "DC=x");
  ASSERT_EQ(window().Selection().front().kind.class_name, "organizationalUnit");
  EXPECT_FALSE(action().isEnabled());
  pane().list().Select({"OU=Unit,DC=x"});
  list().setFocus();
  QCoreApplication::processEvents();
  EXPECT_TRUE(action().isEnabled()) << "what lies in the base";
}

TEST_F(NewLike, AnObjectThatIsGoneIsReported) {
  Select({kBirgit});
  ModifyEntry(file(), std::string("dn: ") + kBirgit + "\nchangetype: delete\n");
  modal_scripts().Add([](QWidget& box) {
    EXPECT_EQ(ToUtf8(box.objectName()), "failure_box");
    box.findChild<QPushButton*>()->click();
  });
  action().trigger();
  EXPECT_TRUE(QTest::qWaitFor([this] { return modal_scripts().waiting() == 0; }, kPatience));
}

}  // namespace
}  // namespace pelora::test
