// SPDX-License-Identifier: Apache-2.0
// The features tab in a property sheet of the system's, besides what every console has in common:
// how it is drawn, what messages its list understands, whose its windows are, and every call that
// an apply makes.
#include <array>

#include "platform/dialog_controller.h"
#include "resources/resource.h"
#include "tests/windows/support/control_lines.h"
#include "tests/windows/support/drawn_cells.h"
#include "tests/windows/support/page_layout.h"
#include "tests/windows/support/screenshot.h"
#include "tests/windows/support/stand_in_picker.h"
#include "tests/windows/support/tab_test.h"

namespace pelora::windows::test {
namespace {

using Lines = std::vector<std::string>;
using Boxes = std::vector<ShownBox>;

constexpr const char* kFeaturesTab = "CPropPageFeatures";
constexpr const char* kAda = "LDAP://dc1/CN=Ada,OU=Größe,DC=fake,DC=example";
constexpr const char* kBob = "LDAP://dc1/CN=Bob,OU=Größe,DC=fake,DC=example";
constexpr RowIndex kArchiverRow = 0;
constexpr RowIndex kImapRow = 1;
constexpr RowIndex kPop3Row = 2;
constexpr COLORREF kGrey = RGB(192, 192, 192);
constexpr auto kOkButton = static_cast<ControlId>(kDialogOk);

class FeaturesTabTest : public TabTest {
 protected:
  /// Opens the tab on two users: imap is enabled, pop3 is ambiguous, the archive servers are those.
  void OpenTwo(const char* server_of_ada = "arc1", const char* server_of_bob = "arc1") {
    directory().AddObject(kAda, {{"peloraEnabledFeatures", Variant::StringArray({"imap", "pop3"})},
                                 {"peloraUserArchiveServers", Variant::String(server_of_ada)}});
    directory().AddObject(kBob, {{"peloraDisabledFeatures", Variant::String("pop3")},
                                 {"peloraUserArchiveServers", Variant::String(server_of_bob)}});
    Open(kFeaturesTab, {kAda, kBob});
  }
  /// Opens the tab on one user of whom nothing is stored.
  void OpenOne() {
    directory().AddObject(kAda);
    Open(kFeaturesTab, {kAda});
  }

  ControlWindow View() { return {sheet().Page(), IDC_FEATURE_LIST}; }
  std::string Buttons() {
    Win32Dialog page = Page();
    std::string enabled;
    for (const ControlId id : {IDC_FEATURE_PROPERTIES, IDC_FEATURE_ENABLE, IDC_FEATURE_DISABLE}) {
      if (page.IsEnabled(id)) enabled += (enabled.empty() ? "" : " ") + page.Text(id);
    }
    return enabled.empty() ? "none" : enabled;
  }
  void ClickRow(RowIndex row, bool add = false) {
    User().ClickListViewCell(IDC_FEATURE_LIST, row, 1, add);
  }
  void DoubleClickRow(RowIndex row) { User().DoubleClickListViewCell(IDC_FEATURE_LIST, row, 1); }
  void PressKey(WPARAM key) {
    View().Send(WM_KEYDOWN, key, 1);
    View().Send(WM_KEYUP, key, 1);
  }
  std::optional<COLORREF> TextColor(RowIndex row, std::size_t column) {
    return DrawnTextColor(sheet().Page(), View().window(), row, column);
  }
  /// Whether the screen shows a status muted, and not only was asked to.
  bool LooksMuted(RowIndex row) {
    constexpr int kMutedFrom = 185;
    constexpr int kPlainBelow = 100;
    const int brightness = DrawnTextBrightness(View().window(), row, 1);
    EXPECT_LT(brightness, 240) << "nothing is written in row " << row;
    EXPECT_TRUE(brightness >= kMutedFrom || brightness < kPlainBelow) << brightness;
    return brightness >= kMutedFrom;
  }
};

// What it shows.

TEST_F(FeaturesTabTest, ListsTheFeaturesInTwoColumnsOfHalfTheWidth) {
  OpenTwo();
  EXPECT_EQ(sheet().TabText(0), "Pelora Features");
  EXPECT_EQ(Controls(),
            (Lines{"311 list view Feature|Status archiver|Enabled on server 'arc1' "
                   "imap|Enabled pop3|Ambiguous",
                   R"(312 default button "Properties" disabled)", R"(308 button "Enable" disabled)",
                   R"(309 button "Disable" disabled)"}));
  EXPECT_FALSE(sheet().IsApplyEnabled());
  const int width = Page().ClientWidth(IDC_FEATURE_LIST);
  EXPECT_EQ(User().ColumnWidth(IDC_FEATURE_LIST, 0), width / 2);
  EXPECT_EQ(User().ColumnWidth(IDC_FEATURE_LIST, 1), width / 2);
  EXPECT_EQ(View().Style() & (WS_HSCROLL | WS_VSCROLL), 0U);
  constexpr DWORD kWanted = LVS_REPORT | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER;
  EXPECT_EQ(View().Style() & kWanted, kWanted);
  EXPECT_NE(View().Send(LVM_GETEXTENDEDLISTVIEWSTYLE).value_or(0) & LVS_EX_FULLROWSELECT, 0);
}

TEST_F(FeaturesTabTest, ItsTitleStandsInTheStringTable) {
  OpenOne();
  std::array<wchar_t, 64> text{};
  EXPECT_GT(LoadStringW(GetModuleHandleW(L"PeloraADS.DLL"), IDS_PROPPAGE_FEATURES, text.data(),
                        static_cast<int>(text.size())),
            0);
  EXPECT_EQ(std::wstring(text.data()), L"Pelora Features");
}

TEST_F(FeaturesTabTest, AnOpenStatusIsDrawnGreyUntilItIsChosen) {
  OpenTwo("arc1", "arc2");
  SavePage("features_tab");
  const COLORREF text = GetSysColor(COLOR_WINDOWTEXT);
  for (const RowIndex row : {kArchiverRow, kImapRow, kPop3Row}) {
    EXPECT_EQ(TextColor(row, 0), text) << "the name of row " << row;
  }
  EXPECT_EQ(TextColor(kArchiverRow, 1), kGrey);
  EXPECT_EQ(TextColor(kImapRow, 1), text);
  EXPECT_EQ(TextColor(kPop3Row, 1), kGrey);
  EXPECT_TRUE(LooksMuted(kArchiverRow));
  EXPECT_FALSE(LooksMuted(kImapRow));
  EXPECT_TRUE(LooksMuted(kPop3Row));
  ClickRow(kPop3Row);
  User().Click(IDC_FEATURE_ENABLE);
  EXPECT_EQ(TextColor(kPop3Row, 1), text);
  SavePage("features_tab_chosen");
  ClickRow(kImapRow);
  EXPECT_FALSE(LooksMuted(kPop3Row));
}

// The selection.

TEST_F(FeaturesTabTest, TheButtonsFollowTheKeys) {
  OpenTwo();
  ClickRow(kPop3Row);
  PressKey(VK_HOME);
  EXPECT_EQ(Buttons(), "Properties");
  PressKey(VK_DOWN);
  EXPECT_EQ(Buttons(), "Disable");
}

TEST_F(FeaturesTabTest, AllRowsMayBeSelectedInOneMessage) {
  OpenTwo();
  LVITEMW every = {};
  every.stateMask = LVIS_SELECTED;
  every.state = LVIS_SELECTED;
  constexpr auto kEveryRow = static_cast<WPARAM>(-1);
  View().Send(LVM_SETITEMSTATE, kEveryRow, reinterpret_cast<LPARAM>(&every));
  EXPECT_EQ(Buttons(), "none") << "the archiver is among them";
  Page().ListView(IDC_FEATURE_LIST).SetSelected(kArchiverRow, false);
  EXPECT_EQ(Buttons(), "Enable Disable");
  every.state = 0;
  View().Send(LVM_SETITEMSTATE, kEveryRow, reinterpret_cast<LPARAM>(&every));
  EXPECT_EQ(Buttons(), "none");
}

TEST_F(FeaturesTabTest, TheKeyboardIsNotLostOnAButtonThatGoesOff) {
  OpenTwo();
  ClickRow(kImapRow);
  const ControlWindow disable(sheet().Page(), IDC_FEATURE_DISABLE);
  SetFocus(disable.window());
  ASSERT_EQ(GetFocus(), disable.window());
  User().Click(IDC_FEATURE_DISABLE);
  EXPECT_EQ(Buttons(), "Enable");
  const HWND focus = GetFocus();
  EXPECT_NE(focus, disable.window());
  EXPECT_NE(IsChild(sheet().Page(), focus), FALSE);
  EXPECT_NE(IsWindowEnabled(focus), FALSE);
}

// Choices and what they write.

TEST_F(FeaturesTabTest, AnApplyMakesExactlyTheseCalls) {
  OpenTwo();
  ClickRow(kPop3Row);
  User().Click(IDC_FEATURE_ENABLE);
  EXPECT_TRUE(sheet().IsApplyEnabled());
  sheet().ClickApply();
  EXPECT_EQ(
      console_.TakeCalls(),
      (Lines{"ADsOpenObject <1> 1", "ADsOpenObject <2> 1", "Get <1> peloraEnabledFeatures",
             "Get <1> peloraDisabledFeatures", "Get <2> peloraEnabledFeatures",
             "Get <2> peloraDisabledFeatures", "Put <2> peloraEnabledFeatures \"pop3\"",
             "PutEx CLEAR <2> peloraDisabledFeatures nothing", "SetInfo <1>", "SetInfo <2>"}));
  EXPECT_EQ(sheet().AnswersTo(PSN_APPLY), std::vector<LRESULT>{PSNRET_NOERROR});
  EXPECT_FALSE(sheet().IsApplyEnabled());
  EXPECT_EQ(directory().Value(kBob, "peloraEnabledFeatures"), Variant::String("pop3"));
  EXPECT_TRUE(directory().Value(kBob, "peloraDisabledFeatures").IsEmpty());
}

TEST_F(FeaturesTabTest, TheDialogOfTheArchiveServersStandsOverTheSheet) {
  OpenTwo();
  ClickRow(kArchiverRow);
  boxes_.PlayNext([this](HWND dialog) {
    WindowPlayer user(dialog);
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), sheet().window());
    EXPECT_EQ(ControlLines(dialog),
              (Lines{R"(1043 frame "Archive Servers")", R"(105 button "Search")", R"(1002 edit "")",
                     R"(1008 button "Add" disabled)", R"(1007 list box "arc1")",
                     R"(1009 button "Remove" disabled)", R"(1 default button "OK")",
                     R"(2 button "Cancel")"}));
    user.Type(IDC_ARCHIVER_NAME, "arc2");
    user.Click(IDC_ARCHIVER_ADD);
    SavePicture(dialog, "archive_servers");
    EXPECT_EQ(ClippedControls(dialog), Lines{});
    user.Click(kOkButton);
  });
  User().Click(IDC_FEATURE_PROPERTIES);
}

TEST_F(FeaturesTabTest, AServerIsSearchedForOverTheDialog) {
  OpenOne();
  StandInPicker picker;
  HWND owner = nullptr;
  boxes_.PlayNext([&owner](HWND dialog) {
    owner = dialog;
    WindowPlayer user(dialog);
    user.Click(IDC_ARCHIVER_SEARCH);
    user.Click(kOkButton);
  });
  DoubleClickRow(kArchiverRow);
  EXPECT_EQ(picker.owner(), owner);
  EXPECT_EQ(picker.references(), 0U);
}

TEST_F(FeaturesTabTest, TheQuestionBelongsToTheSheet) {
  OpenTwo("arc1", "arc2");
  boxes_.AnswerNext(IDNO);
  DoubleClickRow(kArchiverRow);
  const ShownBox question = {.caption = "Warning",
                             .text =
                                 "This will clear the settings for all selected objects. Do "
                                 "you wish to continue?",
                             .icon = MessageIcon::kNone,
                             .buttons = {"Yes", "No"},
                             .owner = "Properties"};
  EXPECT_EQ(boxes_.TakeBoxes(), Boxes{question});
}

}  // namespace
}  // namespace pelora::windows::test
