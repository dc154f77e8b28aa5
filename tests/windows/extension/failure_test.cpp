// SPDX-License-Identifier: Apache-2.0
// What the administrator is told when the directory refuses, and where that leaves the sheet.
#include <gmock/gmock.h>

#include "resources/resource.h"
#include "tests/windows/support/tab_test.h"

namespace pelora::windows::test {
namespace {

using pelora::testing::DirectoryCall;
using pelora::testing::FakeAttributes;
using pelora::testing::FaultPoint;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kFirst = "LDAP://CN=First,DC=fake,DC=example";
constexpr const char* kSecond = "LDAP://CN=Second,DC=fake,DC=example";
constexpr const char* kThird = "LDAP://CN=Third,DC=fake,DC=example";
constexpr const char* kUserPage = "CPropPageUser";
constexpr auto kServerDown = static_cast<HRESULT>(0x8007203AU);

class FailureTest : public TabTest {
 protected:
  FailureTest() {
    const FakeAttributes user = {{"peloraAccount", Variant::Integer(1)},
                                 {"mail", Variant::String("user@example.test")}};
    for (const char* const path : {kFirst, kSecond, kThird}) directory().AddObject(path, user);
  }

  /// Hides the users and applies; the page's one answer has to be to stay.
  void ApplyInVain() {
    User().Click(IDC_PELORA_HIDDEN);
    sheet().ClickApply();
    EXPECT_THAT(sheet().AnswersTo(PSN_APPLY), ElementsAre(PSNRET_INVALID_NOCHANGEPAGE));
    EXPECT_TRUE(sheet().IsOpen());
  }
};

TEST_F(FailureTest, AFailedConnectionKeepsThePagesOut) {
  console_.Select({kFirst});
  console_.plan().Fail(FaultPoint::kOpenObject, 1, kServerDown);
  Ref<::IShellExtInit> init;
  ASSERT_EQ(Activate(ClassId(kUserPage), init), S_OK);
  EXPECT_EQ(init->Initialize(nullptr, &console_.selection(), nullptr), kServerDown);
  EXPECT_THAT(boxes_.TakeBoxes(), IsEmpty());
}

TEST_F(FailureTest, ADamagedSelectionIsRefused) {
  console_.Select({kFirst});
  console_.selection().Replace(std::vector<std::byte>(8));
  Ref<::IShellExtInit> init;
  ASSERT_EQ(Activate(ClassId(kUserPage), init), S_OK);
  EXPECT_EQ(init->Initialize(nullptr, &console_.selection(), nullptr), E_INVALIDARG);
  console_.selection().FailWith(DV_E_FORMATETC);
  EXPECT_EQ(init->Initialize(nullptr, &console_.selection(), nullptr), DV_E_FORMATETC);
  EXPECT_THAT(boxes_.TakeBoxes(), IsEmpty());
}

TEST_F(FailureTest, BindingFailsWhileThePageIsMade) {
  // The first binding is the test of the connection.
  console_.FailBinding(2, kServerDown);
  Open(kUserPage, {kFirst});
  EXPECT_THAT(boxes_.TakeBoxes(),
              ElementsAre(ErrorBox("Unable to get connection with the ldap user.\r\n\r\n"
                                   "Error code: 0X8007203A")));
  EXPECT_EQ(Page().Check(IDC_PELORA_ACCOUNT), CheckState::kUnchecked);
  EXPECT_EQ(Page().ComboBox(IDC_ACCOUNT_TYPE).Count(), 0U);
}

TEST_F(FailureTest, OnceTheDirectoryIsBackTheSameSheetIsAppliedAndClosed) {
  console_.FailBinding(2, kServerDown);
  Open(kUserPage, {kFirst});
  EXPECT_EQ(boxes_.TakeBoxes().size(), 1U);
  User().Click(IDC_PELORA_HIDDEN);
  sheet().ClickOk();
  EXPECT_TRUE(sheet().IsOpen()) << "what was clicked on the blank page is not written";
  EXPECT_EQ(boxes_.TakeBoxes().size(), 1U);
  EXPECT_EQ(directory().CountOf(DirectoryCall::Kind::kSetInfo), 0U);
  EXPECT_EQ(Page().ComboBox(IDC_ACCOUNT_TYPE).Count(), 6U) << "what is stored is shown";
  User().Click(IDC_PELORA_HIDDEN);
  sheet().ClickOk();
  EXPECT_FALSE(sheet().IsOpen());
  EXPECT_EQ(directory().Value(kFirst, "peloraHidden"), Variant::Integer(1));
}

TEST_F(FailureTest, AServerThatGoesAwayRightAfterTheBindingIsAFailedBinding) {
  console_.FailReading(kServerDown);
  Open(kUserPage, {kFirst});
  EXPECT_THAT(boxes_.TakeBoxes(),
              ElementsAre(ErrorBox("Unable to get connection with the ldap user.\r\n\r\n"
                                   "Error code: 0X8007203A")));
  EXPECT_EQ(Page().ComboBox(IDC_ACCOUNT_TYPE).Count(), 0U) << "nothing reads as not set";
  sheet().ClickOk();
  EXPECT_TRUE(sheet().IsOpen());
  EXPECT_EQ(boxes_.TakeBoxes().size(), 1U);
  EXPECT_EQ(directory().CountOf(DirectoryCall::Kind::kPutEx), 0U) << "nor is it written";
  console_.FailReading(S_OK);
  sheet().ClickOk();
  EXPECT_FALSE(sheet().IsOpen());
  EXPECT_EQ(directory().live_objects(), 0U);
}

TEST_F(FailureTest, AnyOtherAnswerToReadingEverythingIsNoFailure) {
  for (const HRESULT status :
       {E_NOTIMPL, E_ACCESSDENIED, E_ADS_PROPERTY_NOT_FOUND, E_ADS_OBJECT_UNBOUND, S_FALSE}) {
    console_.FailReading(status);
    Open(kUserPage, {kFirst});
    EXPECT_EQ(Page().ComboBox(IDC_ACCOUNT_TYPE).Count(), 6U);
    console_.Close();
  }
  EXPECT_THAT(boxes_.TakeBoxes(), IsEmpty());
}

TEST_F(FailureTest, TheSecondOfThreeCannotBeBoundWhileThePageIsMade) {
  directory().RemoveObject(kSecond);
  Open(kUserPage, {kFirst, kSecond, kThird});
  EXPECT_THAT(boxes_.TakeBoxes(),
              ElementsAre(ErrorBox("Unable to get connection with the ldap user.\r\n\r\n"
                                   "Error code: 0X80072030")));
  EXPECT_EQ(directory().live_objects(), 0U);
}

TEST_F(FailureTest, BindingFailsOnApply) {
  Open(kUserPage, {kFirst});
  console_.FailBinding(1, kServerDown);
  ApplyInVain();
  EXPECT_THAT(boxes_.TakeBoxes(),
              ElementsAre(ErrorBox("Unable to get connection with the ldap user\r\n\r\n"
                                   "Error code: 0X8007203A")));
  EXPECT_EQ(directory().CountOf(DirectoryCall::Kind::kSetInfo), 0U);
}

TEST_F(FailureTest, WritingFails) {
  Open(kUserPage, {kFirst});
  console_.plan().FailAttribute(FaultPoint::kPut, "peloraHidden", 1, E_ACCESSDENIED);
  ApplyInVain();
  EXPECT_THAT(boxes_.TakeBoxes(), ElementsAre(ErrorBox("Failed on field 'peloraHidden\r\n\r\n"
                                                       "Error code: 0X80070005")));
  EXPECT_EQ(directory().CountOf(DirectoryCall::Kind::kSetInfo), 0U);
  EXPECT_FALSE(sheet().IsApplyEnabled());
}

TEST_F(FailureTest, CommittingTheSecondOfThreeFails) {
  Open(kUserPage, {kFirst, kSecond, kThird});
  console_.plan().Fail(FaultPoint::kSetInfo, 2, E_ACCESSDENIED);
  ApplyInVain();
  EXPECT_THAT(boxes_.TakeBoxes(),
              ElementsAre(ErrorBox("Unknown error occured\r\n\r\nError code: 0X80070005")));
  EXPECT_EQ(directory().Value(kFirst, "peloraHidden"), Variant::Integer(1));
  EXPECT_TRUE(directory().Value(kSecond, "peloraHidden").IsEmpty());
  EXPECT_TRUE(directory().Value(kThird, "peloraHidden").IsEmpty());
  const std::string third = kThird;
  for (const std::string& call :
       directory().Log({DirectoryCall::Kind::kPut, DirectoryCall::Kind::kPutEx})) {
    EXPECT_EQ(call.find(third), std::string::npos) << call;
  }
}

TEST_F(FailureTest, AfterAFailureTheNextApplyWritesEverything) {
  Open(kUserPage, {kFirst});
  console_.plan().Fail(FaultPoint::kSetInfo, 1, E_ACCESSDENIED);
  ApplyInVain();
  User().Type(IDC_QUOTA_HARD, "5");
  sheet().ClickOk();
  EXPECT_FALSE(sheet().IsOpen());
  EXPECT_EQ(directory().Value(kFirst, "peloraHidden"), Variant::Integer(1));
  EXPECT_EQ(boxes_.TakeBoxes().size(), 1U);
}

TEST_F(FailureTest, ValidationFails) {
  directory().SetValue(kFirst, "mail", Variant());
  Open(kUserPage, {kFirst});
  ApplyInVain();
  EXPECT_THAT(
      boxes_.TakeBoxes(),
      ElementsAre(ErrorBox("Validation of input fields failed: Missing Email Address\r\n\r\n"
                           "Error code: 0X80004005")));
  EXPECT_TRUE(sheet().IsApplyEnabled());
}

TEST_F(FailureTest, OkStaysOnAPageThatFailed) {
  Open(kUserPage, {kFirst});
  console_.plan().Fail(FaultPoint::kSetInfo, 1, E_ACCESSDENIED);
  User().Click(IDC_PELORA_HIDDEN);
  sheet().ClickOk();
  EXPECT_TRUE(sheet().IsOpen());
  EXPECT_EQ(boxes_.TakeBoxes().size(), 1U);
}

}  // namespace
}  // namespace pelora::windows::test
