// SPDX-License-Identifier: Apache-2.0
// How long a wizard page lives, and what it answers when.
#include "hosts/windows/values/bstr.h"
#include "hosts/windows/values/system_guid.h"
#include "resources/resource.h"
#include "server/class_table.h"
#include "tests/windows/support/console.h"
#include "tests/windows/support/malloc_counter.h"
#include "tests/windows/support/resource_counts.h"
#include "tests/windows/wizards/wizard_test.h"

namespace pelora::windows::test {
namespace {

class WizardLifetimeTest : public WizardTest {
 protected:
  /// A wizard page that has been initialised, and its page.
  void Make(std::string_view class_name = "CWizardExtUser") {
    ASSERT_EQ(Activate(ClassId(class_name), extension_), S_OK);
    ASSERT_EQ(extension_->Initialize(nullptr, nullptr, nullptr, &console_.site(), nullptr), S_OK);
  }
  void AddPages() { ASSERT_EQ(extension_->AddPages(pages_.function(), pages_.parameter()), S_OK); }
  void ReleasePages() {
    for (const HPROPSHEETPAGE page : pages_.Take()) DestroyPropertySheetPage(page);
  }

  Ref<::IDsAdminNewObjExt> extension_;
  PageCollector pages_;
};

TEST_F(WizardLifetimeTest, ThePagesReleaseEndsTheWizardWhateverReferencesAreHeld) {
  Make();
  AddPages();
  EXPECT_EQ(console_.site().references(), 1U);
  const Ref<::IUnknown> another = QueryFor<::IUnknown>(*extension_);
  EXPECT_EQ(CanUnloadNow(), S_FALSE);
  ReleasePages();
  EXPECT_EQ(console_.site().references(), 0U);
  EXPECT_EQ(CanUnloadNow(), S_OK);
  // What is left answers that there is nothing left.
  BSTR text = nullptr;
  EXPECT_EQ(extension_->Initialize(nullptr, nullptr, nullptr, &console_.site(), nullptr),
            E_UNEXPECTED);
  EXPECT_EQ(extension_->AddPages(pages_.function(), pages_.parameter()), E_UNEXPECTED);
  EXPECT_EQ(extension_->SetObject(nullptr), E_UNEXPECTED);
  EXPECT_EQ(extension_->WriteData(nullptr, 1), E_UNEXPECTED);
  EXPECT_EQ(extension_->OnError(nullptr, E_FAIL, 1), E_UNEXPECTED);
  EXPECT_EQ(extension_->GetSummaryInfo(&text), E_UNEXPECTED);
  EXPECT_EQ(text, nullptr);
}

TEST_F(WizardLifetimeTest, TheCodeStandsUntilTheConsolesLastReferenceIsGivenBack) {
  Make();
  AddPages();
  ReleasePages();
  EXPECT_EQ(CanUnloadNow(), S_OK);
  UnloadUnused();
  ASSERT_TRUE(IsLoaded());
  EXPECT_EQ(extension_->SetObject(nullptr), E_UNEXPECTED);
  EXPECT_EQ(extension_.Detach()->Release(), 0U);
  // It goes soon after, when nobody can be on the way out of it any more.
  EXPECT_TRUE(IsLoaded());
  for (int wait = 0; wait < 100 && IsLoaded(); ++wait) Sleep(50);
  EXPECT_FALSE(IsLoaded());
}

TEST_F(WizardLifetimeTest, AWizardThatNobodyHoldsAfterItsPageIsUnloadedAtOnce) {
  Make();
  AddPages();
  extension_.Reset();
  ReleasePages();
  UnloadUnused();
  EXPECT_FALSE(IsLoaded());
}

TEST_F(WizardLifetimeTest, ThePageKeepsTheWizardWithoutTheConsolesReference) {
  Make();
  AddPages();
  extension_.Reset();
  EXPECT_EQ(CanUnloadNow(), S_FALSE);
  EXPECT_EQ(console_.site().references(), 1U);
  ReleasePages();
  EXPECT_EQ(CanUnloadNow(), S_OK);
}

TEST_F(WizardLifetimeTest, WithoutAPageItLivesByItsReferences) {
  Make();
  EXPECT_EQ(CanUnloadNow(), S_FALSE);
  extension_.Reset();
  EXPECT_EQ(console_.site().references(), 0U);
  EXPECT_EQ(CanUnloadNow(), S_OK);
}

TEST_F(WizardLifetimeTest, APageIsTheConsolesWhateverItAnswers) {
  Make();
  pages_.Refuse();
  AddPages();
  EXPECT_EQ(pages_.pages().size(), 1U);
  EXPECT_EQ(console_.site().references(), 1U);
  EXPECT_EQ(CanUnloadNow(), S_FALSE);
  ReleasePages();
  EXPECT_EQ(console_.site().references(), 0U) << "it was the wizard's page, and its release";
  EXPECT_EQ(CanUnloadNow(), S_OK);
}

/// Destroys the page while it is offered.
BOOL CALLBACK DestroyAtOnce(HPROPSHEETPAGE page, LPARAM answer) {
  DestroyPropertySheetPage(page);
  return static_cast<BOOL>(answer);
}

TEST_F(WizardLifetimeTest, APageThatIsDestroyedWhileItIsOfferedIsNoEnd) {
  Make();
  for (const BOOL answer : {FALSE, TRUE}) {
    EXPECT_EQ(extension_->AddPages(&DestroyAtOnce, answer), S_OK);
    EXPECT_EQ(console_.site().references(), 1U);
  }
  AddPages();
  EXPECT_EQ(extension_->AddPages(nullptr, 0), E_INVALIDARG);
}

TEST_F(WizardLifetimeTest, AskedTwiceItHandsOverTwoPagesAndEndsWithTheFirst) {
  Make();
  AddPages();
  AddPages();
  std::vector<HPROPSHEETPAGE> pages = pages_.Take();
  ASSERT_EQ(pages.size(), 2U);
  DestroyPropertySheetPage(pages[0]);
  EXPECT_EQ(console_.site().references(), 0U);
  EXPECT_EQ(CanUnloadNow(), S_OK);
  BSTR text = nullptr;
  EXPECT_EQ(extension_->GetSummaryInfo(&text), E_UNEXPECTED);
  DestroyPropertySheetPage(pages[1]);
}

TEST_F(WizardLifetimeTest, ASecondInitializeLetsTheFirstWizardGo) {
  Make();
  WizardSite other;
  EXPECT_EQ(extension_->Initialize(nullptr, nullptr, nullptr, &other, nullptr), S_OK);
  EXPECT_EQ(console_.site().references(), 0U);
  EXPECT_EQ(other.references(), 1U);
  EXPECT_EQ(extension_->Initialize(nullptr, nullptr, nullptr, nullptr, nullptr), S_OK);
  EXPECT_EQ(other.references(), 0U);
}

TEST_F(WizardLifetimeTest, ObjectsAreLetGoWhenAnotherOrNoneComes) {
  ASSERT_EQ(console_.Add("CWizardExtUser"), S_OK);
  console_.HandOut("One");
  EXPECT_EQ(console_.directory().live_objects(), 1U);
  console_.HandOut("Two");
  EXPECT_EQ(console_.directory().live_objects(), 1U);
  console_.HandOut(std::nullopt);
  EXPECT_EQ(console_.directory().live_objects(), 0U);
  EXPECT_EQ(console_.TakeLog(),
            (Lines{"SetObject new = 0", "SetObject new = 0", "SetObject none = 0"}));
  EXPECT_EQ(console_.extension(0).WriteData(nullptr, 1), 0);
  EXPECT_EQ(TakeBoxes(), Lines{"error: Unable to get connection with the ldap user\r\n\r\n"
                               "Error code: 0X80005009"});
}

TEST_F(WizardLifetimeTest, EveryPhaseButTheFirstIsAnsweredWithOne) {
  Make();
  for (const ULONG phase : {0UL, 2UL, 3UL, 4UL, 99UL}) {
    EXPECT_EQ(extension_->WriteData(nullptr, phase), 1) << phase;
  }
}

TEST_F(WizardLifetimeTest, TheSummaryIsTheCallersToFree) {
  Make();
  MallocCounter counter;
  UniqueBstr text;
  EXPECT_EQ(extension_->GetSummaryInfo(text.Put()), S_OK);
  EXPECT_EQ(TextOf(text.Get()), "Pelora disabled");
  EXPECT_EQ(counter.live(), 1);
  text.Reset();
  EXPECT_EQ(counter.live(), 0);
  EXPECT_EQ(extension_->GetSummaryInfo(nullptr), E_POINTER);
}

TEST_F(WizardLifetimeTest, AnyOtherFailureShowsItsCode) {
  Make();
  EXPECT_EQ(extension_->OnError(nullptr, E_ACCESSDENIED, 2), S_OK);
  EXPECT_EQ(TakeBoxes(), Lines{"error: Unknown error occured\r\n\r\nError code: 0X80070005"});
}

TEST_F(WizardLifetimeTest, APrimaryPageNeedsThePrimarySite) {
  Make("CWizardAddresslist");
  EXPECT_EQ(extension_->WriteData(nullptr, 1), 0);
  console_.site().offers_nothing = true;
  EXPECT_EQ(extension_->WriteData(nullptr, 1), 0);
  console_.site().offers_nothing = false;
  console_.site().is_primary = true;
  console_.site().on_create = [](const std::wstring& name) {
    EXPECT_TRUE(name.empty());
    return S_OK;
  };
  EXPECT_EQ(extension_->WriteData(nullptr, 1), 1);
  EXPECT_EQ(console_.site().references(), 1U);
  console_.site().on_create = [](const std::wstring& /*name*/) { return E_ACCESSDENIED; };
  EXPECT_EQ(extension_->WriteData(nullptr, 1), 0);
  EXPECT_EQ(console_.site().references(), 1U);
}

TEST_F(WizardLifetimeTest, CancelMakesNothing) {
  Open("CWizardExtUser");
  GoToPage("Ada");
  console_.User().Click(IDC_CREATE_PELORA);
  (void)console_.TakeLog();
  console_.Cancel();
  EXPECT_FALSE(console_.IsOpen());
  EXPECT_EQ(console_.TakeLog(), Lines());
  EXPECT_EQ(console_.directory().Values(WizardConsole::PathOf("Ada")), std::nullopt);
}

TEST_F(WizardLifetimeTest, ListensToTheWizardAndToItselfAloneAndRefusesNothing) {
  Open("CWizardExtContact");
  GoToPage("Carl");
  console_.User().Click(IDC_CREATE_PELORA);
  (void)console_.TakeLog();
  const auto tell = [this](HWND sender, UINT code) {
    NMHDR notification = {sender, 0, code};
    EXPECT_EQ(SendMessageW(console_.Page(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification)),
              0);
    return console_.TakeLog();
  };
  for (const HWND sender : {console_.Page(), console_.window()}) {
    EXPECT_EQ(tell(sender, PSN_SETACTIVE), Lines{"SetButtons 0 off"});
    EXPECT_EQ(tell(sender, PSN_WIZBACK), Lines{"SetButtons 0 on"});
    for (const UINT code :
         {PSN_WIZNEXT, PSN_WIZFINISH, PSN_QUERYCANCEL, PSN_KILLACTIVE, PSN_APPLY}) {
      EXPECT_EQ(tell(sender, code), Lines()) << code;
    }
  }
  for (const UINT code : {PSN_SETACTIVE, PSN_WIZBACK}) {
    EXPECT_EQ(tell(GetDesktopWindow(), code), Lines()) << code;
  }
}

TEST_F(WizardLifetimeTest, OffersItsInterfacesAndNoOthers) {
  Make();
  EXPECT_TRUE(QueryFor<::IProvideClassInfo>(*extension_));
  EXPECT_FALSE(QueryFor<::IShellExtInit>(*extension_));
  EXPECT_FALSE(QueryFor<::IShellPropSheetExt>(*extension_));
  EXPECT_EQ(QueryFor<::IUnknown>(*extension_),
            QueryFor<::IUnknown>(*QueryFor<::IProvideClassInfo>(*extension_)));
}

TEST_F(WizardLifetimeTest, AThousandWizardsLeaveNothingBehind) {
  const auto run = [this] {
    Make();
    AddPages();
    extension_.Reset();
    ReleasePages();
  };
  run();
  const std::size_t heap_blocks = CountHeapBlocks();
  for (int round = 0; round < 1000; ++round) run();
  EXPECT_EQ(CountHeapBlocks(), heap_blocks);
  MallocCounter counter;
  for (int round = 0; round < 1000; ++round) run();
  EXPECT_EQ(counter.live(), 0);
  EXPECT_EQ(CanUnloadNow(), S_OK);
}

}  // namespace
}  // namespace pelora::windows::test
