// SPDX-License-Identifier: Apache-2.0
// What is typed on an extension's page of a wizard is judged as on a tab: marked, said below the
// page, and held where it is wrong.
#include <gmock/gmock.h>

#include <QApplication>
#include <QScreen>

#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/fields/page_marks.h"
#include "resources/resource.h"
#include "tests/ui/faults_of_sight.h"
#include "tests/ui/new_object_test.h"

namespace pelora::test {
namespace {

using console::FootNote;
using console::MarkKind;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kServers = "OU=Groupware Servers,DC=linden-werke,DC=example";

class TypedInWizards : public NewObjectTest {
 protected:
  /// The page with the Pelora settings of a kind, its box checked.
  void OpenPage(const char* kind, const char* container = kSales) {
    Open(kind, container);
    if (wizard().wizard().own_page() == nullptr) {
      wizard().user().Type(IDC_OBJECT_NAME, "Neu");
    } else {
      wizard().Write("own_name", "Neu");
    }
    if (std::string_view(kind) == "user") wizard().Write("own_logon_name", "neu");
    wizard().Next();
    wizard().user().Click(IDC_CREATE_PELORA);
  }
  void Retype(ControlId id, std::string_view text) {
    wizard().user().Erase(id);
    wizard().user().Type(id, text);
  }
  [[nodiscard]] bool MayGoOn() { return wizard().wizard().next().isEnabled(); }
  [[nodiscard]] FootNote::Level Level() { return wizard().wizard().foot().note().level; }
  /// How the controls of the pages are marked.
  [[nodiscard]] std::vector<MarkKind> Marks() {
    std::vector<MarkKind> kinds;
    for (const auto* const marks : wizard().wizard().findChildren<console::PageMarks*>()) {
      for (const console::Mark& mark : marks->marks()) kinds.push_back(mark.kind);
    }
    return kinds;
  }
};

TEST_F(TypedInWizards, APortThatIsNoneHoldsNext) {
  OpenPage("computer", kServers);
  wizard().user().Type(IDC_HOST_ADDRESS, "10.1.2.3");
  EXPECT_TRUE(MayGoOn());
  EXPECT_THAT(Marks(), IsEmpty()) << "nothing was read here, and nothing counts as changed";
  Retype(IDC_HTTP_PORT, "70000");
  EXPECT_FALSE(MayGoOn());
  EXPECT_EQ(Level(), FootNote::Level::kWrong);
  EXPECT_THAT(wizard().Said(), HasSubstr("HTTP port: This is no port from 1 to 65535"));
  EXPECT_THAT(Marks(), ::testing::ElementsAre(MarkKind::kWrong));
  Picture("new-computer-typed");
  wizard().user().PressEnter();
  EXPECT_FALSE(wizard().wizard().IsSummary()) << "nor does Enter go on";
  Retype(IDC_HTTP_PORT, "8080");
  EXPECT_TRUE(MayGoOn());
  EXPECT_EQ(wizard().Said(), "");
  wizard().Next();
  EXPECT_TRUE(wizard().wizard().IsSummary());
}

TEST_F(TypedInWizards, AnAddressThatIsNoneHoldsNextAndAnOddOneWarns) {
  for (const char* const kind : {"user", "contact", "group", "peloraDynamicDistlist"}) {
    SCOPED_TRACE(kind);
    OpenPage(kind);
    for (const char* const text : {"anna", "a@b@c", "a b@x.test"}) {
      Retype(IDC_NEW_ADDRESS, text);
      EXPECT_FALSE(MayGoOn()) << text;
      EXPECT_EQ(Level(), FootNote::Level::kWrong) << text;
    }
    Retype(IDC_NEW_ADDRESS, "anna@firma");
    EXPECT_THAT(Marks(), ::testing::ElementsAre(MarkKind::kOdd));
    if (wizard().dialog().IsEnabled(IDC_SEARCH_QUERY)) {
      EXPECT_EQ(wizard().Said(), "Missing Search Query.") << "which is what Next waits for";
      Retype(IDC_SEARCH_QUERY, "(sn=a)");
      wizard().dialog().Find(IDC_NEW_ADDRESS)->widget().setFocus();
    }
    EXPECT_EQ(Level(), FootNote::Level::kOdd);
    EXPECT_TRUE(MayGoOn());
  }
}

TEST_F(TypedInWizards, AnAddressOfSomebodyElseSaysWhoseItIs) {
  OpenPage("contact");
  Retype(IDC_NEW_ADDRESS, "B.Kraemer@linden-werke.example");
  wizard().AwaitAnswers();
  EXPECT_EQ(wizard().Said(), "E-mail Address: This is an address of Birgit Krämer.");
  EXPECT_EQ(wizard().Offered(), "O&pen");
  wizard().TakeOffer();
  EXPECT_THAT(wizard().asked_for(), ::testing::ElementsAre("Birgit Krämer"));
  EXPECT_TRUE(MayGoOn()) << "it may be meant";
  Retype(IDC_NEW_ADDRESS, "nobody.has.it@linden-werke.example");
  wizard().AwaitAnswers();
  EXPECT_EQ(wizard().Said(), "");
}

TEST_F(TypedInWizards, AHomeServerThatIsNoneIsWarnedOfAndCanBeCleared) {
  OpenPage("user");
  Retype(IDC_NEW_ADDRESS, "neu@linden-werke.example");
  wizard().choosers().Choose(
      {"LDAP://CN=Birgit Krämer,OU=Vertrieb,OU=Linden-Werke "
       "Chemnitz,DC=linden-werke,DC=example"});
  wizard().user().Click(IDC_SERVER_SELECT);
  wizard().AwaitAnswers();
  ASSERT_EQ(wizard().dialog().Text(IDC_SERVER), "Birgit Krämer");
  EXPECT_THAT(wizard().Said(), HasSubstr("There is no server of the name Birgit Krämer."));
  EXPECT_TRUE(MayGoOn());
  EXPECT_EQ(wizard().Offered(), "Remo&ve");
  wizard().TakeOffer();
  EXPECT_EQ(wizard().dialog().Text(IDC_SERVER), "");
  EXPECT_EQ(wizard().Said(), "");
}

TEST_F(TypedInWizards, AQuerySaysWhereItIsWrongAndItsObjectsCanBeFound) {
  OpenPage("peloraAddresslist");
  Retype(IDC_SEARCH_QUERY, "(&(mail=*)(sn=*)");
  EXPECT_FALSE(MayGoOn());
  EXPECT_EQ(wizard().Said(), "Search query: Character 17: a closing parenthesis is missing.");
  wizard().user().Type(IDC_SEARCH_QUERY, ")");
  EXPECT_TRUE(MayGoOn());
  EXPECT_EQ(wizard().Offered(), "&Find them");
}

TEST_F(TypedInWizards, ACapacityThatIsTooLargeHoldsARoom) {
  OpenPage("user");
  Retype(IDC_NEW_ADDRESS, "raum@linden-werke.example");
  constexpr RowIndex kRoom = 2;
  wizard().user().ChooseComboRow(IDC_ACCOUNT_TYPE, kRoom);
  Retype(IDC_CAPACITY, "99999999999");
  EXPECT_FALSE(MayGoOn());
  EXPECT_THAT(wizard().Said(), HasSubstr("Capacity: This is no number"));
  wizard().user().Click(IDC_CREATE_PELORA);
  EXPECT_TRUE(MayGoOn()) << "it is not written then";
}

TEST_F(TypedInWizards, AContainersLongNameWidensNoPage) {
  // As long as a name in a directory may be, three times over.
  std::string dn = "DC=linden-werke,DC=example";
  for (const char letter : {'a', 'b', 'c'}) {
    const std::string name = std::string("Abteilung ") + std::string(54, letter);
    dn = "OU=" + name + "," + dn;
    ASSERT_TRUE(
        store()
            .Add({.dn = dn,
                  .attributes = {{"objectClass", {"top", "organizationalUnit"}}, {"ou", {name}}}})
            .Ok());
  }
  for (const char* const kind : {"user", "peloraAddresslist"}) {
    SCOPED_TRACE(kind);
    Open(kind);
    const int width = wizard().wizard().width();
    Open(kind, dn.c_str());
    const console::QtNewObjectWizard& window = wizard().wizard();
    EXPECT_EQ(window.width(), width);
    if (window.own_page() != nullptr) {
      EXPECT_THAT(FaultsOfSight(*window.own_page()->parentWidget()), IsEmpty());
      wizard().Write("own_name", "Neu");
      wizard().Write("own_logon_name", "neu");
      wizard().Next();
    }
    EXPECT_THAT(FaultsOfSight(wizard().dialog().widget()),
                ::testing::ElementsAre(HasSubstr("Abteilung")));
    const auto& place = dynamic_cast<const console::NameLabel&>(
        wizard().dialog().Find(IDC_CONTAINER_NAME)->widget());
    EXPECT_TRUE(place.ShownText().endsWith(QChar(0x2026))) << "there is more than it shows";
    EXPECT_THAT(wizard().dialog().Text(IDC_CONTAINER_NAME), HasSubstr("bbbbb/Abteilung ccc"))
        << "whole";
    EXPECT_EQ(window.width(), width);
  }
}

}  // namespace
}  // namespace pelora::test
