// SPDX-License-Identifier: Apache-2.0
// Wizard pages in front of a person in wizards of the system's, besides what every console has in
// common: how they are drawn, and everything that passes between page, console and new object.
#include "hosts/windows/values/wide_text.h"
#include "resources/resource.h"
#include "tests/windows/support/picked_objects.h"
#include "tests/windows/support/stand_in_picker.h"
#include "tests/windows/wizards/wizard_test.h"

namespace pelora::windows::test {
namespace {

using pelora::testing::FakeAttributes;

constexpr const char* kServer = "LDAP://dc1/CN=node-2,OU=Servers,DC=fake,DC=example";

class EveryWizardTest : public WizardTest {
 protected:
  EveryWizardTest() {
    console_.directory().AddObject(kServer, {{"cn", Variant::String("nöde-2")}});
  }
  ~EveryWizardTest() override { EXPECT_EQ(picker_.references(), 0U); }

  void Pick(ControlId button, const std::string& path) {
    PickedObjects picked({path});
    picker_.Choose(picked);
    console_.User().Click(button);
    (void)console_.TakeLog();
  }
  /// Checks the box, which disables Next, and forgets what was logged.
  void Check() {
    console_.User().Click(IDC_CREATE_PELORA);
    EXPECT_EQ(console_.TakeLog(), Lines{"SetButtons 0 off"});
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
  Check();
  console_.User().Type(IDC_NEW_ADDRESS, "ö@x.test");
  EXPECT_EQ(console_.TakeLog().back(), "SetButtons 0 on");
  Pick(IDC_SERVER_SELECT, kServer);
  console_.User().ChooseComboRow(IDC_ACCOUNT_TYPE, 2);
  EXPECT_EQ(console_.TakeLog(), Lines{"SetButtons 0 on"});
  console_.User().Type(IDC_CAPACITY, "1x2");
  console_.User().Click(IDC_PELORA_HIDDEN);
  EXPECT_EQ(console_.TakeLog(), Lines());
  SavePage("wizard_user_room");
  EXPECT_EQ(Finish(),
            (Lines{"Put <new> peloraAccount 1", "Put <new> peloraAdmin 0",
                   "Put <new> peloraSharedStoreOnly 1", "Put <new> peloraResourceType \"room\"",
                   "Put <new> peloraResourceCapacity 12", "Put <new> peloraHidden 1",
                   "Put <new> peloraUserServer \"nöde-2\"", "Put <new> mail \"ö@x.test\"",
                   "WriteData 1 = 1", "SetInfo <new>", "WriteData 3 = 1"}));
}

TEST_F(EveryWizardTest, AddressList) {
  OpenPrimary("CWizardAddresslist", "CWizardExtAddresslist");
  EXPECT_EQ(Controls(),
            (Lines{"- icon", "- label \"Create in:\"", "291 label \"fake.example/Größe & 月\"",
                   "- rule", "- label \"Pelora Addresslist name:\"", "292 edit \"\""}));
  (void)console_.TakeLog();
  console_.User().Type(IDC_OBJECT_NAME, "Äl");
  EXPECT_EQ(console_.TakeLog(), (Lines{"SetButtons 0 on", "SetButtons 0 on"}));
  SavePage("wizard_address_list_name");
  console_.Next();
  EXPECT_EQ(console_.TakeLog(), (Lines{"SetButtons 0 off", "SetButtons 0 on"}));
  Check();
  console_.User().Type(IDC_SEARCH_QUERY, "(cn=*)");
  console_.Back();
  EXPECT_EQ(console_.TakeLog().back(), "SetButtons 0 on");
  console_.Next();
  (void)console_.TakeLog();
  SavePage("wizard_address_list");
  EXPECT_EQ(Finish(),
            (Lines{"CreateNew Äl", "SetObject new = 0", "SetObject new = 0", "WriteData 1 = 1",
                   "Put <new> peloraAccount 1", "Put <new> peloraHidden 0",
                   "Put <new> peloraFilter \"(cn=*)\"", "WriteData 1 = 1", "SetInfo <new>",
                   "WriteData 3 = 1", "WriteData 3 = 1"}));
}

TEST_F(EveryWizardTest, EveryPageShowsWhole) {
  struct Row {
    const char* primary;
    const char* component;
    const char* picture;
  };
  console_.Offer({pelora::IID_IADsUser, pelora::IID_IADsOU, pelora::IID_IADsContainer});
  for (const Row& row :
       {Row{nullptr, "CWizardExtContact", "wizard_contact"},
        Row{nullptr, "CWizardExtDistlist", "wizard_group"},
        Row{nullptr, "CWizardExtCompany", "wizard_company"},
        Row{nullptr, "CWizardExtServer", "wizard_server"},
        Row{"CWizardDynamicDistlist", "CWizardExtDynamicDistlist", "wizard_dynamic_list"}}) {
    if (row.primary == nullptr) {
      Open(row.component);
      GoToPage("Drawn");
    } else {
      OpenPrimary(row.primary, row.component);
      console_.User().Type(IDC_OBJECT_NAME, "Drawn");
      SavePage(std::string(row.picture) + "_name");
      console_.Next();
    }
    console_.User().Click(IDC_CREATE_PELORA);
    SavePage(row.picture);
    console_.Close();
  }
}

/// The wizards that have no page of the console's own.
class ListWizardTest : public WizardTest,
                       public ::testing::WithParamInterface<std::pair<const char*, const char*>> {
 protected:
  /// From the first page to the last.
  void NameList(const std::string& name) {
    console_.User().Erase(IDC_OBJECT_NAME);
    console_.User().Type(IDC_OBJECT_NAME, name);
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
  EXPECT_EQ(Text(IDC_OBJECT_NAME), "Taken");
  NameList("Free");
  console_.Finish();
  EXPECT_FALSE(console_.IsOpen());
  EXPECT_EQ(console_.directory().Values(WizardConsole::PathOf("Free")),
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

}  // namespace
}  // namespace pelora::windows::test
