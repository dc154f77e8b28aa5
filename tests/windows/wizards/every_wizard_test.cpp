// SPDX-License-Identifier: Apache-2.0
// Every wizard page driven by the person in front of a wizard of the system's, with everything that
// passes between it, the console and the new object.
#include "hosts/windows/values/wide_text.h"
#include "resources/resource.h"
#include "tests/contract/same_edits.h"
#include "tests/windows/support/picked_objects.h"
#include "tests/windows/support/stand_in_picker.h"
#include "tests/windows/wizards/wizard_test.h"

namespace pelora::windows::test {
namespace {

using pelora::testing::FakeAttributes;

constexpr const char* kServer = "LDAP://dc1/CN=node-2,OU=Servers,DC=fake,DC=example";
constexpr const char* kBob = "LDAP://dc1/CN=Bob,DC=fake,DC=example";

class EveryWizardTest : public WizardTest {
 protected:
  EveryWizardTest() {
    console_.directory().AddObject(kServer, {{"cn", Variant::String("nöde-2")}});
    console_.directory().AddObject(
        kBob, {{"distinguishedName", Variant::String("CN=Bob,DC=fake,DC=example")}});
  }
  ~EveryWizardTest() override { EXPECT_EQ(picker_.references(), 0U); }

  void Pick(ControlId button, const std::string& path) {
    PickedObjects picked({path});
    picker_.Choose(picked);
    console_.User().Click(button);
    (void)console_.TakeLog();
  }
  /// Checks the box, which may disable Next, and forgets what was logged.
  void Check(bool next_stays) {
    console_.User().Click(254);
    EXPECT_EQ(console_.TakeLog(), Lines{next_stays ? "SetButtons 0 on" : "SetButtons 0 off"});
    EXPECT_EQ(console_.IsNextEnabled(), next_stays);
  }

  StandInPicker picker_;
};

TEST_F(EveryWizardTest, User) {
  Open("CWizardExtUser");
  console_.SetName("Ada");
  console_.Next();
  EXPECT_EQ(console_.TakeLog(),
            (Lines{"SetObject new = 0", "SetButtons 0 off", "SetButtons 0 on"}));
  EXPECT_EQ(Controls(),
            (Lines{"- icon", "- label \"Create in:\"", "291 label \"fake.example/Größe & 月\"",
                   "- rule", "254 check box \"Create Pelora Account\" unchecked",
                   "284 drop-down list *\"active user\" \"shared store only\" \"room\" "
                   "\"equipment\" \"administrator\" \"system administrator\" disabled",
                   "243 check box \"Hide from addressbook\" unchecked disabled",
                   "297 label \"Capacity\" disabled", "298 edit \"\" disabled",
                   "265 label \"E-mail Address\" disabled", "268 edit \"\" disabled",
                   "266 label \"Home Server\" disabled", "242 edit \"\" read-only disabled",
                   "271 button \"Select\" disabled"}));
  SavePage("wizard_user_unchecked");
  Check(false);
  console_.User().Type(268, "ö@x.test");
  EXPECT_EQ(console_.TakeLog().back(), "SetButtons 0 on");
  EXPECT_TRUE(console_.IsNextEnabled());
  Pick(271, kServer);
  EXPECT_EQ(Text(242), "nöde-2");
  console_.User().ChooseComboRow(284, 2);
  EXPECT_EQ(console_.TakeLog(), Lines{"SetButtons 0 on"});
  console_.User().Type(298, "1x2");
  console_.User().Click(243);
  EXPECT_EQ(console_.TakeLog(), Lines());
  SavePage("wizard_user_room");
  EXPECT_EQ(Finish(),
            (Lines{"Put <new> peloraAccount 1", "Put <new> peloraAdmin 0",
                   "Put <new> peloraSharedStoreOnly 1", "Put <new> peloraResourceType \"room\"",
                   "Put <new> peloraResourceCapacity 12", "Put <new> peloraHidden 1",
                   "Put <new> peloraUserServer \"nöde-2\"", "Put <new> mail \"ö@x.test\"",
                   "WriteData 1 = 1", "SetInfo <new>", "WriteData 3 = 1"}));
  EXPECT_EQ(console_.summaries(), Lines{"Pelora enabled"});
}

TEST_F(EveryWizardTest, TheUserThatEveryFaceMakes) {
  using contract::SameNewUser;
  const std::string server = std::string("LDAP://") + SameNewUser::kServer;
  console_.directory().AddObject(server, {{"cn", Variant::String("mail02")}});
  Open("CWizardExtUser");
  GoToPage(SameNewUser::kName);
  console_.User().Click(IDC_CREATE_PELORA);
  console_.User().ChooseComboRow(IDC_ACCOUNT_TYPE, 2);
  console_.User().Type(IDC_CAPACITY, SameNewUser::kCapacity);
  console_.User().Click(IDC_PELORA_HIDDEN);
  console_.User().Type(IDC_NEW_ADDRESS, SameNewUser::kAddress);
  Pick(IDC_SERVER_SELECT, server);
  (void)Finish();
  const std::string made = WizardConsole::PathOf(SameNewUser::kName);
  EXPECT_EQ(contract::NewUserDump([&](std::string_view attribute) -> Lines {
              const Variant value = console_.directory().Value(made, attribute);
              if (value.IsEmpty()) return {};
              return {value.type() == VT_I4 ? std::to_string(value.integer()) : value.string()};
            }),
            contract::kSameNewUserDump);
}

TEST_F(EveryWizardTest, EveryTypeOfAccount) {
  struct Row {
    RowIndex row;
    Lines writes;
  };
  const std::vector<Row> rows = {
      {1, {"peloraAdmin 0", "peloraSharedStoreOnly 1"}},
      {3, {"peloraAdmin 0", "peloraSharedStoreOnly 1", "peloraResourceType \"equipment\""}},
      {4, {"peloraAdmin 1", "peloraSharedStoreOnly 0"}},
      {5, {"peloraAdmin 2", "peloraSharedStoreOnly 0"}}};
  for (const Row& row : rows) {
    Open("CWizardExtUser");
    GoToPage("Ada" + std::to_string(row.row));
    console_.User().Click(254);
    console_.User().ChooseComboRow(284, row.row);
    EXPECT_TRUE(console_.IsNextEnabled());
    EXPECT_EQ(Control(298).window() != nullptr, true);
    EXPECT_EQ(IsWindowEnabled(Control(298).window()) != FALSE, row.row == 3);
    Lines expected = {"Put <new> peloraAccount 1"};
    for (const std::string& write : row.writes) expected.push_back("Put <new> " + write);
    for (const char* last :
         {"Put <new> peloraHidden 0", "WriteData 1 = 1", "SetInfo <new>", "WriteData 3 = 1"}) {
      expected.emplace_back(last);
    }
    EXPECT_EQ(Finish(), expected);
    console_.Close();
  }
}

TEST_F(EveryWizardTest, Contact) {
  Open("CWizardExtContact");
  GoToPage("Carl");
  SavePage("wizard_contact");
  Check(false);
  console_.User().Type(268, "carl@x.test");
  EXPECT_TRUE(console_.IsNextEnabled());
  EXPECT_EQ(Finish(), (Lines{"Put <new> peloraAccount 1", "Put <new> peloraHidden 0",
                             "Put <new> mail \"carl@x.test\"", "WriteData 1 = 1", "SetInfo <new>",
                             "WriteData 3 = 1"}));
}

TEST_F(EveryWizardTest, Group) {
  Open("CWizardExtDistlist");
  GoToPage("All");
  SavePage("wizard_group");
  Check(true);
  EXPECT_EQ(Finish(), (Lines{"Put <new> peloraAccount 1", "Put <new> peloraHidden 0",
                             "WriteData 1 = 1", "SetInfo <new>", "WriteData 3 = 1"}));
}

TEST_F(EveryWizardTest, Company) {
  console_.Offer({pelora::IID_IADsOU, pelora::IID_IADsContainer});
  Open("CWizardExtCompany");
  GoToPage("Works");
  Check(true);
  Pick(227, kBob);
  Pick(271, kServer);
  SavePage("wizard_company");
  EXPECT_EQ(Finish(), (Lines{"Put <new> peloraAccount 1", "Put <new> peloraHidden 0",
                             "Put <new> peloraSystemAdmin \"CN=Bob,DC=fake,DC=example\"",
                             "Put <new> peloraCompanyServer \"nöde-2\"", "WriteData 1 = 1",
                             "SetInfo <new>", "WriteData 3 = 1"}));
}

TEST_F(EveryWizardTest, Server) {
  Open("CWizardExtServer");
  GoToPage("mail");
  EXPECT_EQ(Text(246), "236");
  EXPECT_EQ(Text(247), "237");
  EXPECT_EQ(Text(249), "/var/run/pelora");
  Check(false);
  console_.User().Type(245, "192.0.2.1");
  EXPECT_TRUE(console_.IsNextEnabled());
  console_.User().Erase(246);
  EXPECT_TRUE(console_.IsNextEnabled());
  console_.User().Erase(247);
  EXPECT_FALSE(console_.IsNextEnabled());
  console_.User().Type(247, "2a37");
  EXPECT_TRUE(console_.IsNextEnabled());
  console_.User().Click(243);
  SavePage("wizard_server");
  EXPECT_EQ(Finish(),
            (Lines{"Put <new> peloraAccount 1", "Put <new> peloraHostAddress \"192.0.2.1\"",
                   "Put <new> peloraSslPort 237", "Put <new> peloraFilePath \"/var/run/pelora\"",
                   "Put <new> peloraContainsPublic 1", "WriteData 1 = 1", "SetInfo <new>",
                   "WriteData 3 = 1"}));
}

TEST_F(EveryWizardTest, AddressList) {
  OpenPrimary("CWizardAddresslist", "CWizardExtAddresslist");
  EXPECT_FALSE(console_.IsNextEnabled());
  EXPECT_EQ(Controls(),
            (Lines{"- icon", "- label \"Create in:\"", "291 label \"fake.example/Größe & 月\"",
                   "- rule", "- label \"Pelora Addresslist name:\"", "292 edit \"\""}));
  (void)console_.TakeLog();
  console_.User().Type(292, "Äl");
  EXPECT_EQ(console_.TakeLog(), (Lines{"SetButtons 0 on", "SetButtons 0 on"}));
  EXPECT_TRUE(console_.IsNextEnabled());
  SavePage("wizard_address_list_name");
  console_.Next();
  EXPECT_EQ(console_.TakeLog(), (Lines{"SetButtons 0 off", "SetButtons 0 on"}));
  Check(false);
  console_.User().Type(287, "(cn=*)");
  EXPECT_TRUE(console_.IsNextEnabled());
  console_.Back();
  EXPECT_EQ(console_.TakeLog().back(), "SetButtons 0 on");
  EXPECT_EQ(Text(292), "Äl");
  console_.Next();
  (void)console_.TakeLog();
  console_.User().Type(258, "typed");
  EXPECT_EQ(Text(258), "");
  SavePage("wizard_address_list");
  EXPECT_EQ(Finish(),
            (Lines{"CreateNew Äl", "SetObject new = 0", "SetObject new = 0", "WriteData 1 = 1",
                   "Put <new> peloraAccount 1", "Put <new> peloraHidden 0",
                   "Put <new> peloraFilter \"(cn=*)\"", "WriteData 1 = 1", "SetInfo <new>",
                   "WriteData 3 = 1", "WriteData 3 = 1"}));
  EXPECT_EQ(console_.summaries(), (Lines{"Fullname: Äl\r\n", "Pelora enabled"}));
}

TEST_F(EveryWizardTest, DynamicDistributionList) {
  OpenPrimary("CWizardDynamicDistlist", "CWizardExtDynamicDistlist");
  console_.User().Type(292, "Dyn");
  SavePage("wizard_dynamic_list_name");
  console_.Next();
  (void)console_.TakeLog();
  Check(false);
  console_.User().Type(268, "dyn@x.test");
  EXPECT_FALSE(console_.IsNextEnabled());
  console_.User().Type(287, "(cn=d*)");
  console_.User().Click(243);
  SavePage("wizard_dynamic_list");
  EXPECT_EQ(Finish(),
            (Lines{"CreateNew Dyn", "SetObject new = 0", "SetObject new = 0", "WriteData 1 = 1",
                   "Put <new> peloraAccount 1", "Put <new> peloraHidden 1",
                   "Put <new> mail \"dyn@x.test\"", "Put <new> peloraFilter \"(cn=d*)\"",
                   "WriteData 1 = 1", "SetInfo <new>", "WriteData 3 = 1", "WriteData 3 = 1"}));
}

/// The wizards that have no page of the console's own.
class ListWizardTest : public WizardTest,
                       public ::testing::WithParamInterface<std::pair<const char*, const char*>> {
 protected:
  /// From the first page to the last.
  void NameList(const std::string& name) {
    console_.User().Erase(292);
    console_.User().Type(292, name);
    console_.Next();
    console_.Next();
    (void)console_.TakeLog();
  }
};

INSTANTIATE_TEST_SUITE_P(EveryClass, ListWizardTest,
                         ::testing::Values(std::pair("CWizardAddresslist", "CWizardExtAddresslist"),
                                           std::pair("CWizardDynamicDistlist",
                                                     "CWizardExtDynamicDistlist")),
                         [](const auto& row) { return row.param.first; });

TEST_P(ListWizardTest, AConsoleThatLooksForTheObjectBeforeItCommitsMakesNone) {
  // The first page makes the object in the first phase of the commit, and not before.
  console_.LookBeforeCommitting();
  OpenPrimary(GetParam().first, GetParam().second);
  NameList("Early");
  console_.Finish();
  EXPECT_TRUE(console_.IsOpen());
  EXPECT_EQ(console_.TakeLog(),
            (Lines{"WriteData 4 = 1", "WriteData 4 = 1", "OnError 0x80004005 1 = 0"}));
  EXPECT_EQ(TakeBoxes(), Lines{"error: Unknown error occured\r\n\r\nError code: 0X80004005"});
  EXPECT_EQ(console_.directory().Values(WizardConsole::PathOf("Early")), std::nullopt);
  console_.Cancel();
  EXPECT_FALSE(console_.IsOpen());
}

TEST_P(ListWizardTest, ANameInUseIsSaidByTheFirstPageAndTheWizardGoesOn) {
  console_.directory().AddObject(WizardConsole::PathOf("Taken"), {}, {});
  OpenPrimary(GetParam().first, GetParam().second);
  NameList("Taken");
  console_.Finish();
  EXPECT_TRUE(console_.IsOpen());
  EXPECT_EQ(TakeBoxes(),
            Lines{"warning: The new object cannot be created because the name is already in use."
                  "\r\nPlease select a different name and try again."});
  EXPECT_EQ(console_.TakeLog(),
            (Lines{"CreateNew Taken", "SetObject new = 0", "SetObject new = 0", "WriteData 1 = 1",
                   "Put <new> peloraAccount 0", "WriteData 1 = 1", "SetInfo <new>",
                   "SetObject new = 0", "SetObject new = 0", "WriteData 4 = 1", "WriteData 4 = 1",
                   "OnError 0x80071392 2 = 0"}));
  console_.Back();
  console_.Back();
  EXPECT_EQ(Text(292), "Taken");
  NameList("Free");
  console_.Finish();
  EXPECT_FALSE(console_.IsOpen());
  EXPECT_EQ(console_.directory().Values(WizardConsole::PathOf("Free")),
            (FakeAttributes{{"peloraAccount", Variant::Integer(0)}}));
}

TEST_P(ListWizardTest, AnyOtherFailureOfTheCreationShowsItsCodeAndMayBeTriedAgain) {
  OpenPrimary(GetParam().first, GetParam().second);
  NameList("List");
  console_.plan().Fail(pelora::testing::FaultPoint::kSetInfo, 1, E_ACCESSDENIED);
  console_.Finish();
  EXPECT_TRUE(console_.IsOpen());
  EXPECT_EQ(TakeBoxes(), Lines{"error: Unknown error occured\r\n\r\nError code: 0X80070005"});
  EXPECT_EQ(console_.TakeLog().back(), "OnError 0x80070005 2 = 0");
  console_.Finish();
  EXPECT_FALSE(console_.IsOpen());
  EXPECT_EQ(console_.directory().Values(WizardConsole::PathOf("List")),
            (FakeAttributes{{"peloraAccount", Variant::Integer(0)}}));
}

/// The extensions of wizards that the console owns.
class ExtensionPageTest : public WizardTest, public ::testing::WithParamInterface<const char*> {
 protected:
  ExtensionPageTest() {
    console_.Offer({pelora::IID_IADsUser, pelora::IID_IADsOU, pelora::IID_IADsContainer});
  }
};

INSTANTIATE_TEST_SUITE_P(EveryClass, ExtensionPageTest,
                         ::testing::Values("CWizardExtUser", "CWizardExtContact",
                                           "CWizardExtDistlist", "CWizardExtCompany",
                                           "CWizardExtServer", "CWizardExtAddresslist",
                                           "CWizardExtDynamicDistlist"),
                         [](const auto& row) { return row.param; });

TEST_P(ExtensionPageTest, LeftAloneWritesThatThereIsNoAccountAndNothingElse) {
  Open(GetParam());
  GoToPage("Plain");
  EXPECT_TRUE(console_.IsNextEnabled());
  EXPECT_EQ(Finish(), (Lines{"Put <new> peloraAccount 0", "WriteData 1 = 1", "SetInfo <new>",
                             "WriteData 3 = 1"}));
  EXPECT_EQ(console_.summaries(), Lines{"Pelora disabled"});
  EXPECT_EQ(console_.directory().Values(WizardConsole::PathOf("Plain")),
            (FakeAttributes{{"peloraAccount", Variant::Integer(0)}}));
  EXPECT_FALSE(console_.IsOpen());
}

TEST_P(ExtensionPageTest, AFailedWriteIsShownAndTheObjectIsMadeAllTheSame) {
  Open(GetParam());
  GoToPage("Plain");
  console_.Next();
  console_.plan().Fail(pelora::testing::FaultPoint::kPut, 1, E_ACCESSDENIED);
  console_.Finish();
  EXPECT_EQ(console_.TakeLog(), (Lines{"WriteData 1 = 0", "SetInfo <new>", "WriteData 3 = 1"}));
  EXPECT_EQ(TakeBoxes(),
            Lines{"error: Failed on field 'peloraAccount\r\n\r\nError code: 0X80070005"});
  EXPECT_EQ(console_.directory().Values(WizardConsole::PathOf("Plain")), FakeAttributes{});
}

TEST_P(ExtensionPageTest, AnObjectThatDoesNotTakeItIsMadeWithoutIt) {
  Open(GetParam());
  console_.plan().Fail(pelora::testing::FaultPoint::kQueryInterface, 1, E_NOINTERFACE);
  GoToPage("Plain");
  // The fault is met when the wizard asks for its interface, be it when the object is handed over.
  console_.Next();
  console_.Finish();
  EXPECT_FALSE(console_.IsOpen());
  const Lines boxes = TakeBoxes();
  EXPECT_EQ(boxes, Lines{"error: Unable to get connection with the ldap user\r\n\r\n"
                         "Error code: 0X80004002"});
  EXPECT_EQ(console_.directory().Values(WizardConsole::PathOf("Plain")), FakeAttributes{});
}

TEST_P(ExtensionPageTest, ANameInUseIsSaidAndTheWizardGoesOn) {
  console_.directory().AddObject(WizardConsole::PathOf("Taken"), {}, {});
  Open(GetParam());
  GoToPage("Taken");
  console_.Next();
  (void)console_.TakeLog();
  console_.Finish();
  EXPECT_TRUE(console_.IsOpen());
  EXPECT_EQ(TakeBoxes(),
            Lines{"warning: The new object cannot be created because the name is already in use."
                  "\r\nPlease select a different name and try again."});
  EXPECT_EQ(console_.TakeLog(),
            (Lines{"Put <new> peloraAccount 0", "WriteData 1 = 1", "SetInfo <new>",
                   "SetObject new = 0", "WriteData 4 = 1", "OnError 0x80071392 2 = 0"}));
  console_.Back();
  console_.Back();
  console_.SetName("Free");
  console_.Next();
  EXPECT_EQ(Finish(), (Lines{"Put <new> peloraAccount 0", "WriteData 1 = 1", "SetInfo <new>",
                             "WriteData 3 = 1"}));
  EXPECT_FALSE(console_.IsOpen());
}

TEST_P(ExtensionPageTest, GoingBackEnablesTheButtonAndKeepsWhatWasClicked) {
  Open(GetParam());
  GoToPage("Plain");
  console_.User().Click(254);
  (void)console_.TakeLog();
  console_.Back();
  EXPECT_EQ(console_.TakeLog(), Lines{"SetButtons 0 on"});
  EXPECT_TRUE(console_.IsNextEnabled());
  console_.Next();
  EXPECT_EQ(Control(254).Send(BM_GETCHECK), BST_CHECKED);
  const bool is_group_or_company = GetParam() == std::string_view("CWizardExtDistlist") ||
                                   GetParam() == std::string_view("CWizardExtCompany");
  EXPECT_EQ(console_.TakeLog(),
            Lines{is_group_or_company ? "SetButtons 0 on" : "SetButtons 0 off"});
  console_.User().Click(254);
  EXPECT_EQ(console_.TakeLog(), Lines{"SetButtons 0 on"});
}

}  // namespace
}  // namespace pelora::windows::test
