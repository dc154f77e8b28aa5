// SPDX-License-Identifier: Apache-2.0
// A tab in a sheet that its console waits for, over a window of the console's.
#include "tests/windows/support/modal_sheet.h"

#include <gtest/gtest.h>

#include <vector>

#include "resources/resource.h"
#include "tests/windows/support/tab_test.h"

namespace pelora::windows::test {
namespace {

using pelora::testing::FaultPoint;

constexpr const char* kPath = "LDAP://CN=Ada,DC=fake,DC=example";

class ModalSheetTest : public TabTest {
 protected:
  ModalSheetTest() {
    directory().AddObject(kPath, {{"peloraAccount", Variant::Integer(1)},
                                  {"mail", Variant::String("ada@example.test")}});
    console_.Select({kPath});
    owner_ = CreateWindowExW(0, L"STATIC", L"Console", WS_OVERLAPPED | WS_VISIBLE, 0, 0, 200, 100,
                             nullptr, nullptr, nullptr, nullptr);
  }
  ~ModalSheetTest() override { DestroyWindow(owner_); }

  /// Runs a sheet with the user tab.
  INT_PTR Run(const std::function<void(HWND sheet)>& play) {
    PageCollector collector;
    {
      Ref<::IShellExtInit> tab;
      EXPECT_EQ(Activate(ClassId("CPropPageUser"), tab), S_OK);
      EXPECT_EQ(tab->Initialize(nullptr, &console_.selection(), nullptr), S_OK);
      EXPECT_EQ(QueryFor<::IShellPropSheetExt>(*tab)->AddPages(collector.function(),
                                                               collector.parameter()),
                S_OK);
    }
    std::vector<HPROPSHEETPAGE> pages = collector.Take();
    PROPSHEETHEADERW header = {};
    header.dwSize = sizeof(header);
    header.hwndParent = owner_;
    header.pszCaption = L"Properties";
    header.nPages = static_cast<UINT>(pages.size());
    header.phpage = pages.data();
    return RunModalSheet(header, play);
  }
  static WindowPlayer UserOf(HWND sheet) {
    return WindowPlayer(reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETCURRENTPAGEHWND, 0, 0)));
  }
  static void Press(HWND sheet, int button) {
    SendMessageW(sheet, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(sheet, button)));
  }

  HWND owner_ = nullptr;
};

TEST_F(ModalSheetTest, AnEditIsWrittenByItsOk) {
  bool was_owner_enabled = true;
  EXPECT_GT(Run([&](HWND sheet) {
              was_owner_enabled = IsWindowEnabled(owner_) != FALSE;
              UserOf(sheet).Click(IDC_PELORA_HIDDEN);
              Press(sheet, IDOK);
            }),
            0);
  EXPECT_FALSE(was_owner_enabled) << "the console waits";
  EXPECT_TRUE(IsWindowEnabled(owner_) != FALSE);
  EXPECT_EQ(directory().Value(kPath, "peloraHidden"), Variant::Integer(1));
}

TEST_F(ModalSheetTest, ItsCancelWritesNothing) {
  EXPECT_EQ(Run([&](HWND sheet) {
              UserOf(sheet).Click(IDC_PELORA_HIDDEN);
              Press(sheet, IDCANCEL);
            }),
            0);
  EXPECT_TRUE(directory().Value(kPath, "peloraHidden").IsEmpty());
}

TEST_F(ModalSheetTest, AFailureIsToldOverItAndItStays) {
  console_.plan().Fail(FaultPoint::kSetInfo, 1, E_ACCESSDENIED);
  EXPECT_GT(Run([&](HWND sheet) {
              UserOf(sheet).Click(IDC_PELORA_HIDDEN);
              Press(sheet, IDOK);
              EXPECT_TRUE(IsWindowVisible(sheet) != FALSE);
              EXPECT_EQ(boxes_.TakeBoxes(),
                        std::vector<ShownBox>{ErrorBox("Unknown error occured\r\n\r\n"
                                                       "Error code: 0X80070005")});
              Press(sheet, IDOK);
            }),
            0);
  EXPECT_EQ(directory().Value(kPath, "peloraHidden"), Variant::Integer(1));
}

}  // namespace
}  // namespace pelora::windows::test
