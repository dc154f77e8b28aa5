// SPDX-License-Identifier: Apache-2.0
// What every property tab owes its console, whichever fields it has. A tab that gets a page is
// tested here from then on; its own fields are tested in a suite of its own.
#include <gmock/gmock.h>

#include <string>
#include <string_view>
#include <vector>

#include "hosts/windows/values/system_guid.h"
#include "server/class_table.h"
#include "tests/windows/support/malloc_counter.h"
#include "tests/windows/support/resource_counts.h"
#include "tests/windows/support/tab_test.h"

namespace pelora::windows::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kFirst = "LDAP://dc1/CN=First\\, the,DC=fake,DC=example";
constexpr const char* kSecond = "LDAP://dc1/CN=Second,DC=fake,DC=example";
constexpr const char* kThird = "LDAP://dc1/CN=Third,DC=fake,DC=example";
constexpr auto kServerDown = static_cast<HRESULT>(0x8007203AU);
constexpr std::string_view kTabPrefix = "CPropPage";

bool BindsUsers(std::string_view name) {
  return name == "CPropPageUser" || name == "CPropPageFeatures";
}

/// The property tabs of the class table.
std::vector<std::string> Tabs() {
  std::vector<std::string> tabs;
  for (const ComponentClass& row : ClassTable()) {
    if (row.name.starts_with(kTabPrefix)) tabs.emplace_back(row.name);
  }
  return tabs;
}

class EveryTabTest : public TabTest, public ::testing::WithParamInterface<std::string> {
 protected:
  EveryTabTest() {
    for (const char* const path : {kFirst, kSecond, kThird}) {
      directory().AddObject(path, {},
                            {pelora::IID_IADsUser, pelora::IID_IADsOU, pelora::IID_IADsContainer});
    }
  }

  void OpenOn(const std::vector<std::string>& paths) { Open(GetParam(), paths); }
  LRESULT Notify(UINT code) {
    NMHDR from_sheet = {sheet().window(), 0, code};
    SendMessageW(sheet().Page(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&from_sheet));
    return GetWindowLongPtrW(sheet().Page(), DWLP_MSGRESULT);
  }
};

INSTANTIATE_TEST_SUITE_P(EveryClass, EveryTabTest, ::testing::ValuesIn(Tabs()),
                         [](const auto& tab) { return tab.param; });

TEST_P(EveryTabTest, ShowsOneObject) {
  OpenOn({kFirst});
  EXPECT_FALSE(sheet().IsApplyEnabled());
  SavePage(GetParam() + "_one");
}

TEST_P(EveryTabTest, ShowsThreeObjects) {
  OpenOn({kFirst, kSecond, kThird});
  EXPECT_FALSE(sheet().IsApplyEnabled());
  SavePage(GetParam() + "_three");
}

TEST_P(EveryTabTest, BindsInTheOrderOfTheSelection) {
  console_.Select({kThird, kFirst});
  ASSERT_EQ(console_.AddTab(ClassId(GetParam())), S_OK);
  EXPECT_THAT(console_.TakeCalls(), ElementsAre("ADsOpenObject LDAP://rootDSE 1"));
  ASSERT_TRUE(console_.Show());
  std::vector<std::string> calls = console_.TakeCalls();
  ASSERT_GE(calls.size(), 2U);
  calls.resize(2);
  EXPECT_THAT(calls, ElementsAre("ADsOpenObject <1> 1", "ADsOpenObject <2> 1"));
}

TEST_P(EveryTabTest, AsksForItsInterface) {
  directory().AddObject(kFirst, {}, {});
  OpenOn({kFirst});
  const std::vector<ShownBox> boxes = boxes_.TakeBoxes();
  if (BindsUsers(GetParam())) {
    EXPECT_THAT(boxes, ElementsAre(ErrorBox("Unable to get connection with the ldap user.\r\n\r\n"
                                            "Error code: 0X80004002")));
  } else {
    EXPECT_THAT(boxes, IsEmpty());
  }
}

TEST_P(EveryTabTest, IsNotShownWithoutAConnection) {
  console_.Select({kFirst});
  console_.plan().Fail(pelora::testing::FaultPoint::kOpenObject, 1, kServerDown);
  EXPECT_EQ(console_.AddTab(ClassId(GetParam())), kServerDown);
}

TEST_P(EveryTabTest, TellsOnceThatItCannotBind) {
  // The first binding is the test of the connection.
  console_.FailBinding(2, kServerDown);
  OpenOn({kFirst});
  EXPECT_THAT(boxes_.TakeBoxes(),
              ElementsAre(ErrorBox("Unable to get connection with the ldap user.\r\n\r\n"
                                   "Error code: 0X8007203A")));
  EXPECT_NE(sheet().Page(), nullptr);
  EXPECT_EQ(directory().CountOf(pelora::testing::DirectoryCall::Kind::kGet), 0U);
}

TEST_P(EveryTabTest, BindsAllOrNone) {
  directory().RemoveObject(kSecond);
  OpenOn({kFirst, kSecond, kThird});
  EXPECT_THAT(boxes_.TakeBoxes(),
              ElementsAre(ErrorBox("Unable to get connection with the ldap user.\r\n\r\n"
                                   "Error code: 0X80072030")));
  EXPECT_EQ(directory().live_objects(), 0U);
}

TEST_P(EveryTabTest, StaysWhenItCannotBindToApply) {
  OpenOn({kFirst});
  console_.FailBinding(1, kServerDown);
  sheet().ClickOk();
  EXPECT_THAT(boxes_.TakeBoxes(),
              ElementsAre(ErrorBox("Unable to get connection with the ldap user\r\n\r\n"
                                   "Error code: 0X8007203A")));
  EXPECT_THAT(sheet().AnswersTo(PSN_APPLY), ElementsAre(PSNRET_INVALID_NOCHANGEPAGE));
  EXPECT_TRUE(sheet().IsOpen());
  EXPECT_THAT(console_.TakeWrites(), IsEmpty());
}

TEST_P(EveryTabTest, MayAlwaysBeLeft) {
  console_.Select({kFirst});
  ASSERT_EQ(console_.AddTab(ClassId(GetParam())), S_OK);
  console_.AddBlankPage();
  ASSERT_TRUE(console_.Show());
  directory().ClearCalls();
  for (const UINT code : {PSN_KILLACTIVE, PSN_QUERYCANCEL, PSN_WIZBACK, PSN_WIZNEXT, PSN_WIZFINISH,
                          PSN_SETACTIVE, PSN_RESET}) {
    // What stood there before is not the answer.
    SetWindowLongPtrW(sheet().Page(), DWLP_MSGRESULT, 5);
    EXPECT_EQ(Notify(code), 0) << static_cast<int>(code);
  }
  sheet().SelectPage(1);
  EXPECT_EQ(sheet().CurrentPage(), 1U);
  sheet().SelectPage(0);
  EXPECT_EQ(sheet().CurrentPage(), 0U);
  sheet().ClickCancel();
  EXPECT_THAT(console_.TakeCalls(), IsEmpty());
}

TEST_P(EveryTabTest, GoesWithASheetThatNeverShowedIt) {
  console_.Select({kFirst});
  console_.AddBlankPage();
  ASSERT_EQ(console_.AddTab(ClassId(GetParam())), S_OK);
  ASSERT_TRUE(console_.Show());
  EXPECT_EQ(CanUnloadNow(), S_FALSE);
  EXPECT_EQ(sheet().CurrentPage(), 0U);
  console_.Close();
  EXPECT_EQ(CanUnloadNow(), S_OK);
  EXPECT_EQ(directory().CountOf(pelora::testing::DirectoryCall::Kind::kOpenObject), 1U);
}

TEST_P(EveryTabTest, LeavesNothingBehind) {
  console_.Select({kFirst});
  const auto open_and_close = [&](int rounds) {
    for (int round = 0; round < rounds; ++round) {
      ASSERT_TRUE(console_.Open(GetParam()));
      console_.Close();
      directory().ClearCalls();
    }
  };
  // Until caches of the system are filled.
  open_and_close(5);
  const std::size_t heap_blocks = CountHeapBlocks();
  open_and_close(5);
  EXPECT_EQ(CountHeapBlocks(), heap_blocks);
  const MallocCounter memory;
  open_and_close(5);
  const long blocks = memory.live();
  const std::size_t windows = CountWindowsOfThread();
  open_and_close(10);
  EXPECT_LE(memory.live(), blocks);
  EXPECT_EQ(memory.freed_twice(), 0);
  EXPECT_EQ(CountWindowsOfThread(), windows);
}

TEST(EveryTab, StandsInTheTable) { EXPECT_EQ(Tabs().size(), 12U); }

}  // namespace
}  // namespace pelora::windows::test
