// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <new>
#include <string>
#include <vector>

#include "hosts/headless/headless_property_sheet.h"
#include "pages/snap_in_property_page.h"
#include "platform/new_object_wizard.h"
#include "resources/resource.h"
#include "tests/support/selection_data_object.h"
#include "tests/unit/page_bench.h"

namespace pelora {
namespace {

using testing::DirectoryCall;
using ::testing::ElementsAre;
using testing::FaultPoint;
using ::testing::IsEmpty;
using testing::SelectionDataObject;

const std::string kAda = "LDAP://dc1/CN=Ada,DC=x";
const std::string kBob = "LDAP://dc1/CN=Bob,DC=x";
const std::string kCara = "LDAP://dc1/CN=Cara,DC=x";

constexpr std::array<ControlId, 2> kHideList = {IDC_EMAIL_LIST, IDC_SENDAS_ADD};

/// A tab over the user template whose handlers are the test's.
class TestPage final : public CSnapInPropertyPage {
 public:
  TestPage(const Platform& platform, bool& destroyed)
      : CSnapInPropertyPage(platform, IID_IADsUser, kHideList, IDD_PROPPAGE_USER, "Test"),
        destroyed_(destroyed) {
    Route({{IDC_PELORA_ACCOUNT, ControlNotification::kClicked, [this] {
              if (on_click) on_click();
              SetModified(true);
              return 7;
            }}});
  }

  std::function<void()> on_click;

 private:
  ~TestPage() override { destroyed_ = true; }

  bool& destroyed_;
};

class PropPageTest : public ::testing::Test {
 protected:
  PropPageTest() {
    for (const std::string& path : {kAda, kBob, kCara}) host_.directory.AddObject(path);
  }

  /// Opens a sheet on the selection.
  void Open(const std::vector<std::string>& paths) {
    SelectionDataObject selection(paths);
    ASSERT_EQ(page_->Initialize(&selection), S_OK);
    ASSERT_EQ(page_->AddPages(sheet_.PageTaker()), S_OK);
    host_.directory.ClearCalls();
    sheet_.Show();
  }
  void Write(const std::string& attribute, const std::string& value) {
    page_->RegisterCollect([=](ChangeList& changes) {
      changes.push_back({.value = value, .name = attribute});
      return S_OK;
    });
  }
  /// Applies as the sheet's button does, and gives the page's answer.
  std::int32_t Apply() { return page_->OnPageNotification(PageNotification::kApply); }
  std::vector<std::string> Boxes() const {
    std::vector<std::string> texts;
    for (const auto& record : host_.messages.records()) texts.push_back(record.message.text);
    return texts;
  }

  testing::PageBench host_;
  bool destroyed_ = false;
  Ref<TestPage> page_ = Ref<TestPage>::Adopt(new TestPage(host_.platform, destroyed_));
  HeadlessPropertySheet sheet_{host_.templates()};
};

TEST_F(PropPageTest, OffersTheTwoInterfacesOfAnExtension) {
  EXPECT_TRUE(Query<IShellExtInit>(static_cast<IShellExtInit&>(*page_)));
  EXPECT_TRUE(Query<IShellPropSheetExt>(static_cast<IShellExtInit&>(*page_)));
  EXPECT_TRUE(Query<IUnknown>(static_cast<IShellExtInit&>(*page_)));
  EXPECT_FALSE(Query<IDsAdminNewObjExt>(static_cast<IShellExtInit&>(*page_)));
  void* object = this;
  EXPECT_EQ(page_->QueryInterface(IID_IADs, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(page_->QueryInterface(IID_IShellExtInit, nullptr), E_POINTER);
}

TEST_F(PropPageTest, InitializeReturnsTheConnectionTest) {
  host_.faults().Fail(FaultPoint::kOpenObject, 1, kNoSuchObject);
  SelectionDataObject selection({kAda});
  EXPECT_EQ(page_->Initialize(&selection), kNoSuchObject);
}

TEST_F(PropPageTest, ThePageKeepsTheComponentUntilItIsDestroyed) {
  Open({kAda});
  page_.Reset();
  EXPECT_FALSE(destroyed_);
  EXPECT_TRUE(sheet_.Cancel());
  EXPECT_TRUE(destroyed_);
}

TEST_F(PropPageTest, APageNeverShownGivesItsReferenceBack) {
  std::unique_ptr<PropSheetPage> kept;
  EXPECT_EQ(page_->AddPages([&](std::unique_ptr<PropSheetPage> page) {
    kept = std::move(page);
    return true;
  }),
            S_OK);
  EXPECT_EQ(kept->Template(), IDD_PROPPAGE_USER);
  EXPECT_EQ(kept->Title(), "Test");
  page_.Reset();
  EXPECT_FALSE(destroyed_);
  kept.reset();
  EXPECT_TRUE(destroyed_);
}

TEST_F(PropPageTest, ARefusedPageIsNoFailureAndKeepsNothing) {
  EXPECT_EQ(page_->AddPages([](std::unique_ptr<PropSheetPage> page) {
    page.reset();
    return false;
  }),
            S_OK);
  page_.Reset();
  EXPECT_TRUE(destroyed_);
}

TEST_F(PropPageTest, LoadsWithTheObjectsBoundAndReleasesThem) {
  std::vector<std::size_t> seen;
  page_->RegisterLoad([&](const BoundObjects& objects) {
    seen.push_back(objects.size());
    EXPECT_EQ(host_.directory.live_objects(), objects.size());
    return S_OK;
  });
  Open({kAda, kBob});
  EXPECT_THAT(seen, ElementsAre(2U));
  EXPECT_EQ(host_.directory.live_objects(), 0U);
  EXPECT_THAT(host_.directory.Log(), ElementsAre("ADsGetObject " + kAda, "ADsGetObject " + kBob));
}

TEST_F(PropPageTest, AsksItsObjectsForThePagesInterface) {
  host_.directory.AddObject(kAda, {}, {});
  bool loaded = false;
  page_->RegisterLoad([&](const BoundObjects&) {
    loaded = true;
    return S_OK;
  });
  Open({kAda});
  EXPECT_FALSE(loaded);
  EXPECT_THAT(
      Boxes(),
      ElementsAre("Unable to get connection with the ldap user.\r\n\r\nError code: 0X80004002"));
}

TEST_F(PropPageTest, OneObjectShowsTheHideListSeveralHideIt) {
  Open({kAda});
  for (const ControlId id : kHideList) EXPECT_TRUE(sheet_.Dialog(0)->IsShown(id));
  EXPECT_TRUE(sheet_.Dialog(0)->IsShown(IDC_EMAIL_ADD));
}

TEST_F(PropPageTest, SeveralObjectsHideTheHideListAndNothingElse) {
  Open({kAda, kBob});
  for (const ControlId id : kHideList) EXPECT_FALSE(sheet_.Dialog(0)->IsShown(id));
  EXPECT_TRUE(sheet_.Dialog(0)->IsShown(IDC_EMAIL_ADD));
}

TEST_F(PropPageTest, ControlsAreHiddenBeforeAnythingLoads) {
  page_->RegisterLoad([&](const BoundObjects&) {
    EXPECT_FALSE(page_->Dialog().IsShown(IDC_EMAIL_LIST));
    return S_OK;
  });
  Open({kAda, kBob});
}

TEST_F(PropPageTest, AFailedBindingIsShownOnceAndNothingIsLoaded) {
  bool loaded = false;
  page_->RegisterLoad([&](const BoundObjects&) {
    loaded = true;
    return S_OK;
  });
  host_.directory.RemoveObject(kBob);
  Open({kAda, kBob});
  EXPECT_THAT(
      Boxes(),
      ElementsAre("Unable to get connection with the ldap user.\r\n\r\nError code: 0X80072030"));
  EXPECT_EQ(host_.messages.records().front().owner, sheet_.Dialog(0));
  EXPECT_FALSE(loaded);
  EXPECT_TRUE(sheet_.Dialog(0)->IsShown(IDC_EMAIL_LIST)) << "nothing is hidden either";
  EXPECT_EQ(host_.directory.live_objects(), 0U);
}

TEST_F(PropPageTest, TheResultOfLoadingIsTheMessagesResult) {
  page_->RegisterLoad([](const BoundObjects&) { return E_ACCESSDENIED; });
  SelectionDataObject selection({kAda});
  ASSERT_EQ(page_->Initialize(&selection), S_OK);
  HeadlessDialog dialog(host_.templates().Dialog(IDD_PROPPAGE_USER).value.value(), *page_);
  EXPECT_EQ(dialog.Open(), E_ACCESSDENIED);
  EXPECT_THAT(Boxes(), IsEmpty());
  EXPECT_EQ(host_.directory.live_objects(), 0U);
}

TEST_F(PropPageTest, FillingControlsWhileLoadingIsNoEdit) {
  page_->RegisterLoad([&](const BoundObjects&) {
    page_->SetModified(true);
    return S_OK;
  });
  Open({kAda});
  EXPECT_FALSE(sheet_.IsApplyEnabled());
  page_->SetModified(true);
  EXPECT_TRUE(sheet_.IsApplyEnabled());
  page_->SetModified(false);
  EXPECT_FALSE(sheet_.IsApplyEnabled());
}

TEST_F(PropPageTest, SetModifiedWithoutADialogDoesNothing) { page_->SetModified(true); }

TEST_F(PropPageTest, CommandsGoToTheirHandlerByControlAndNotification) {
  Open({kAda});
  EXPECT_EQ(page_->OnCommand(IDC_PELORA_ACCOUNT, ControlNotification::kClicked), 7);
  EXPECT_TRUE(sheet_.IsApplyEnabled());
  EXPECT_EQ(page_->OnCommand(IDC_PELORA_ACCOUNT, ControlNotification::kEditChange), 0);
  EXPECT_EQ(page_->OnCommand(IDC_PELORA_HIDDEN, ControlNotification::kClicked), 0);
}

TEST_F(PropPageTest, NothingButApplyKeepsAnybodyOnThePage) {
  Open({kAda});
  page_->RegisterValidate([](std::string*) { return E_FAIL; });
  host_.directory.ClearCalls();
  using enum PageNotification;
  for (const PageNotification notification :
       {kSetActive, kKillActive, kReset, kWizardBack, kWizardNext, kWizardFinish, kQueryCancel}) {
    EXPECT_EQ(page_->OnPageNotification(notification), 0);
  }
  EXPECT_THAT(host_.directory.Log(), IsEmpty()) << "switching tabs never validates nor binds";
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(PropPageTest, ApplyWritesAndCommitsEachObjectInTurn) {
  Open({kBob, kAda});
  Write("description", "d");
  host_.directory.ClearCalls();
  EXPECT_EQ(Apply(), kPageApplied);
  EXPECT_THAT(host_.directory.Log(),
              ElementsAre("ADsGetObject " + kBob, "ADsGetObject " + kAda,
                          "Put " + kBob + " description \"d\"", "SetInfo " + kBob,
                          "Put " + kAda + " description \"d\"", "SetInfo " + kAda));
  EXPECT_EQ(host_.directory.live_objects(), 0U);
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(PropPageTest, ApplyBindsForTheGeneralInterface) {
  Open({kAda});
  host_.directory.AddObject(kAda, {}, {});
  EXPECT_EQ(Apply(), kPageApplied);
}

TEST_F(PropPageTest, AnEmptiedTextClearsItsAttributeOnEveryObject) {
  for (const std::string& path : {kAda, kBob}) {
    host_.directory.SetValue(path, "description", Variant::String("old"));
  }
  Open({kAda, kBob});
  Write("description", "");
  EXPECT_EQ(Apply(), kPageApplied);
  EXPECT_TRUE(host_.directory.Value(kAda, "description").IsEmpty());
  EXPECT_TRUE(host_.directory.Value(kBob, "description").IsEmpty());
}

TEST_F(PropPageTest, ApplyTellsTheSheetBeforeItWrites) {
  Open({kAda});
  Write("description", "d");
  sheet_.User().Click(IDC_PELORA_ACCOUNT);
  ASSERT_TRUE(sheet_.IsApplyEnabled());
  host_.faults().Fail(FaultPoint::kPut, 1, E_ACCESSDENIED);
  EXPECT_EQ(Apply(), kPageInvalidStay);
  EXPECT_FALSE(sheet_.IsApplyEnabled()) << "also when the writing then fails";
}

TEST_F(PropPageTest, AnApplyThatGetsNowhereLeavesTheSheetModified) {
  Open({kAda});
  sheet_.User().Click(IDC_PELORA_ACCOUNT);
  host_.faults().Fail(FaultPoint::kGetObject, 1, E_FAIL);
  EXPECT_EQ(Apply(), kPageInvalidStay);
  EXPECT_TRUE(sheet_.IsApplyEnabled());
}

TEST_F(PropPageTest, AFailedBindingOnApplyIsShownWithoutFullStop) {
  Open({kAda, kBob});
  Write("description", "d");
  host_.directory.RemoveObject(kBob);
  EXPECT_EQ(Apply(), kPageInvalidStay);
  EXPECT_THAT(
      Boxes(),
      ElementsAre("Unable to get connection with the ldap user\r\n\r\nError code: 0X80072030"));
  EXPECT_TRUE(host_.directory.Value(kAda, "description").IsEmpty()) << "nothing is half-written";
  EXPECT_EQ(host_.directory.live_objects(), 0U);
}

TEST_F(PropPageTest, ABindingThatIsNeitherOkNorFailureLosesNothing) {
  Open({kAda});
  Write("description", "d");
  host_.faults().Fail(FaultPoint::kGetObject, 1, S_FALSE);
  EXPECT_EQ(Apply(), kPageInvalidStay);
  EXPECT_THAT(Boxes(),
              ElementsAre("Unable to get connection with the ldap user\r\n\r\nError code: 0X1"));
}

TEST_F(PropPageTest, AFailedValidationNamesItsReason) {
  Open({kAda});
  Write("description", "d");
  page_->RegisterValidate([](std::string* message) {
    EXPECT_EQ(*message, "");
    *message = "Missing Search Query";
    return E_FAIL;
  });
  EXPECT_EQ(Apply(), kPageInvalidStay);
  EXPECT_THAT(Boxes(), ElementsAre("Validation of input fields failed: Missing Search Query"
                                   "\r\n\r\nError code: 0X80004005"));
  EXPECT_EQ(host_.directory.CountOf(DirectoryCall::Kind::kPut), 0U);
  EXPECT_EQ(host_.directory.live_objects(), 0U);
}

TEST_F(PropPageTest, ASkippedValidationLetsTheApplyGoOn) {
  Open({kAda});
  Write("description", "d");
  page_->RegisterSkipValidation([] { return kSkipValidation; });
  page_->RegisterValidate([](std::string*) { return E_FAIL; });
  EXPECT_EQ(Apply(), kPageApplied);
  EXPECT_EQ(host_.directory.Value(kAda, "description"), Variant::String("d"));
}

TEST_F(PropPageTest, AFailedCollectionIsShown) {
  Open({kAda});
  page_->RegisterCollect([](ChangeList&) { return E_OUTOFMEMORY; });
  EXPECT_EQ(Apply(), kPageInvalidStay);
  EXPECT_THAT(Boxes(),
              ElementsAre("Unable to collect pelora attributes\r\n\r\nError code: 0X8007000E"));
}

TEST_F(PropPageTest, AFailedWriteOnTheSecondObjectLeavesTheThirdAlone) {
  Open({kAda, kBob, kCara});
  Write("description", "d");
  host_.faults().Fail(FaultPoint::kPut, 2, E_ACCESSDENIED);
  EXPECT_EQ(Apply(), kPageInvalidStay);
  EXPECT_THAT(Boxes(), ElementsAre("Failed on field 'description\r\n\r\nError code: 0X80070005"));
  EXPECT_EQ(host_.directory.Value(kAda, "description"), Variant::String("d"));
  EXPECT_TRUE(host_.directory.Value(kBob, "description").IsEmpty());
  EXPECT_THAT(host_.directory.Log(DirectoryCall::Kind::kSetInfo), ElementsAre("SetInfo " + kAda));
  EXPECT_EQ(host_.directory.live_objects(), 0U);
}

TEST_F(PropPageTest, AFailedCommitOnTheSecondObjectLeavesTheThirdAlone) {
  Open({kAda, kBob, kCara});
  Write("description", "d");
  host_.faults().Fail(FaultPoint::kSetInfo, 2, kObjectAlreadyExists);
  EXPECT_EQ(Apply(), kPageInvalidStay);
  EXPECT_THAT(Boxes(), ElementsAre("Unknown error occured\r\n\r\nError code: 0X80071392"));
  EXPECT_EQ(host_.directory.Value(kAda, "description"), Variant::String("d"));
  EXPECT_TRUE(host_.directory.Value(kBob, "description").IsEmpty());
  EXPECT_TRUE(host_.directory.Value(kCara, "description").IsEmpty());
}

TEST_F(PropPageTest, TheNextApplyRepeatsTheWholeSequence) {
  Open({kAda, kBob});
  Write("description", "d");
  host_.faults().Fail(FaultPoint::kSetInfo, 2, E_FAIL);
  EXPECT_EQ(Apply(), kPageInvalidStay);
  host_.directory.ClearCalls();
  EXPECT_EQ(Apply(), kPageApplied);
  EXPECT_EQ(host_.directory.CountOf(DirectoryCall::Kind::kGetObject), 2U);
  EXPECT_EQ(host_.directory.CountOf(DirectoryCall::Kind::kSetInfo), 2U);
  EXPECT_EQ(host_.directory.Value(kBob, "description"), Variant::String("d"));
}

TEST_F(PropPageTest, AWarningWhileWritingStillCommits) {
  Open({kAda});
  Write("description", "d");
  page_->RegisterCollect([](ChangeList& changes) {
    changes.push_back({.name = "otherMailbox", .type = ChangeType::kMultiValued});
    return S_OK;
  });
  EXPECT_EQ(Apply(), kPageApplied);
  EXPECT_THAT(Boxes(), ElementsAre("Failed on field 'otherMailbox\r\n\r\nError code: 0X5011"));
  EXPECT_EQ(host_.directory.Value(kAda, "description"), Variant::String("d"));
}

TEST_F(PropPageTest, ExceptionsEndInTheErrorBox) {
  Open({kAda});
  page_->on_click = [] { throw std::bad_alloc(); };
  EXPECT_EQ(page_->OnCommand(IDC_PELORA_ACCOUNT, ControlNotification::kClicked), 0);
  page_->RegisterCollect([](ChangeList&) -> HRESULT { throw std::runtime_error("x"); });
  EXPECT_EQ(Apply(), kPageInvalidStay);
  EXPECT_THAT(Boxes(), ElementsAre("Unknown error occured\r\n\r\nError code: 0X8007000E",
                                   "Unknown error occured\r\n\r\nError code: 0X8000FFFF"));
  EXPECT_EQ(host_.directory.live_objects(), 0U);
}

TEST_F(PropPageTest, AnExceptionWhileLoadingEndsInTheErrorBox) {
  page_->RegisterLoad([](const BoundObjects&) -> HRESULT { throw std::bad_alloc(); });
  Open({kAda});
  EXPECT_THAT(Boxes(), ElementsAre("Unknown error occured\r\n\r\nError code: 0X8007000E"));
  EXPECT_EQ(host_.directory.live_objects(), 0U);
  page_->SetModified(true);
  EXPECT_TRUE(sheet_.IsApplyEnabled()) << "loading is over all the same";
}

}  // namespace
}  // namespace pelora
