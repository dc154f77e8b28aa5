// SPDX-License-Identifier: Apache-2.0
// In which order an apply goes on, and that success codes other than 0 stop none of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "hosts/headless/headless_property_sheet.h"
#include "pages/snap_in_property_page.h"
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
constexpr std::array<ControlId, 1> kHideList = {IDC_EMAIL_LIST};

class NotingPage final : public CSnapInPropertyPage {
 public:
  explicit NotingPage(const Platform& platform)
      : CSnapInPropertyPage(platform, IID_IADsUser, kHideList, IDD_PROPPAGE_USER, "Noting") {
    RegisterSkipValidation([this] { return Note("skip", kValidate); });
    RegisterValidate([this](std::string*) { return Note("validate", validated); });
    RegisterCollect([this](ChangeList& changes) {
      changes.push_back({.value = "d", .name = "description"});
      changes.push_back({.value = "m", .name = "mail"});
      return Note("collect", collected);
    });
    RegisterCollect([this](ChangeList&) { return Note("collect again", S_OK); });
  }

  std::vector<std::string> notes;
  HRESULT validated = S_OK;
  HRESULT collected = S_OK;

 private:
  ~NotingPage() override = default;

  HRESULT Note(const char* note, HRESULT answer) {
    notes.emplace_back(note);
    return answer;
  }
};

class ApplyRulesTest : public ::testing::Test {
 protected:
  ApplyRulesTest() {
    for (const std::string& path : {kAda, kBob}) host_.directory.AddObject(path);
    SelectionDataObject selection({kAda, kBob});
    EXPECT_EQ(page_->Initialize(&selection), S_OK);
    EXPECT_EQ(page_->AddPages(sheet_.PageTaker()), S_OK);
    sheet_.Show();
    page_->SetModified(true);
    host_.directory.ClearCalls();
  }
  bool Apply() { return page_->OnPageNotification(PageNotification::kApply) == kPageApplied; }
  std::vector<std::string> Writes() const {
    using enum DirectoryCall::Kind;
    return host_.directory.Log({kPut, kPutEx, kSetInfo});
  }
  static std::vector<std::string> AllWrites() {
    std::vector<std::string> lines;
    for (const std::string& path : {kAda, kBob}) {
      lines.push_back("Put " + path + " description \"d\"");
      lines.push_back("Put " + path + " mail \"m\"");
      lines.push_back("SetInfo " + path);
    }
    return lines;
  }

  testing::PageBench host_;
  Ref<NotingPage> page_ = Ref<NotingPage>::Adopt(new NotingPage(host_.platform));
  HeadlessPropertySheet sheet_{host_.templates()};
};

TEST_F(ApplyRulesTest, ValidatesBeforeItCollects) {
  page_->validated = E_FAIL;
  EXPECT_FALSE(Apply());
  EXPECT_THAT(page_->notes, ElementsAre("skip", "validate")) << "collecting would forget the edits";
  EXPECT_TRUE(sheet_.IsApplyEnabled());
}

TEST_F(ApplyRulesTest, BindsBeforeItValidates) {
  host_.faults().Fail(FaultPoint::kGetObject, 2, kNoSuchObject);
  EXPECT_FALSE(Apply());
  EXPECT_THAT(page_->notes, IsEmpty());
  EXPECT_TRUE(sheet_.IsApplyEnabled());
}

TEST_F(ApplyRulesTest, ACollectionThatFailsLeavesTheSheetModified) {
  page_->collected = E_OUTOFMEMORY;
  EXPECT_FALSE(Apply());
  EXPECT_THAT(page_->notes, ElementsAre("skip", "validate", "collect"));
  EXPECT_TRUE(sheet_.IsApplyEnabled());
  EXPECT_THAT(Writes(), IsEmpty());
}

TEST_F(ApplyRulesTest, SuccessCodesOfHandlersStopNothing) {
  page_->validated = S_FALSE;
  page_->collected = S_FALSE;
  EXPECT_TRUE(Apply());
  EXPECT_THAT(page_->notes, ElementsAre("skip", "validate", "collect", "collect again"));
  EXPECT_EQ(Writes(), AllWrites());
  EXPECT_THAT(host_.messages.records(), IsEmpty());
}

TEST_F(ApplyRulesTest, SuccessCodesOfTheDirectoryStopNothing) {
  for (const HRESULT status : {S_FALSE, S_ADS_ERRORSOCCURRED}) {
    for (const FaultPoint point : {FaultPoint::kPut, FaultPoint::kSetInfo}) {
      host_.directory.ClearCalls();
      host_.faults().Answer(point, 1, status);
      EXPECT_TRUE(Apply());
      EXPECT_EQ(Writes(), AllWrites());
      EXPECT_THAT(host_.messages.records(), IsEmpty());
    }
  }
}

TEST_F(ApplyRulesTest, ASuccessCodeOfClearingStopsNothing) {
  page_->RegisterCollect([](ChangeList& changes) {
    changes = {{.name = "description"}, {.value = "m", .name = "mail"}};
    return S_OK;
  });
  host_.faults().Answer(FaultPoint::kPutEx, 1, S_ADS_ERRORSOCCURRED);
  EXPECT_TRUE(Apply());
  EXPECT_THAT(host_.directory.Log(DirectoryCall::Kind::kPut),
              ElementsAre("Put " + kAda + " mail \"m\"", "Put " + kBob + " mail \"m\""));
  EXPECT_THAT(host_.messages.records(), IsEmpty());
}

TEST_F(ApplyRulesTest, OneObjectShowsWhatWasHidden) {
  sheet_.Dialog(0)->SetShown(IDC_EMAIL_LIST, false);
  SelectionDataObject selection({kAda});
  EXPECT_EQ(page_->Initialize(&selection), S_OK);
  EXPECT_EQ(page_->InitPage(), S_OK);
  EXPECT_TRUE(sheet_.Dialog(0)->IsShown(IDC_EMAIL_LIST));
}

}  // namespace
}  // namespace pelora
