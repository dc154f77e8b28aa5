// SPDX-License-Identifier: Apache-2.0
// The features tab in a property sheet of the system's: what its list tells the page and is told by
// it, how it is drawn, and every call that an apply makes.
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

using pelora::testing::FaultPoint;
using Lines = std::vector<std::string>;
using Boxes = std::vector<ShownBox>;

constexpr const char* kFeaturesTab = "CPropPageFeatures";
constexpr const char* kAda = "LDAP://dc1/CN=Ada,OU=Größe,DC=fake,DC=example";
constexpr const char* kBob = "LDAP://dc1/CN=Bob,OU=Größe,DC=fake,DC=example";
constexpr const char* kCyd = "LDAP://dc1/CN=Cyd,OU=Größe,DC=fake,DC=example";
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
  std::string Status(RowIndex row) { return Page().ListView(IDC_FEATURE_LIST).Text(row, 1); }
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

TEST_F(FeaturesTabTest, AnUnsetStatusIsDrawnGrey) {
  OpenOne();
  EXPECT_EQ(Controls().front(),
            "311 list view Feature|Status archiver|Disabled imap|Unset pop3|Unset");
  EXPECT_EQ(TextColor(kArchiverRow, 1), GetSysColor(COLOR_WINDOWTEXT));
  EXPECT_EQ(TextColor(kImapRow, 1), kGrey);
  DoubleClickRow(kImapRow);
  EXPECT_EQ(TextColor(kImapRow, 1), GetSysColor(COLOR_WINDOWTEXT));
}

// The selection.

TEST_F(FeaturesTabTest, TheButtonsFollowMouseKeysAndPrograms) {
  OpenTwo();
  ClickRow(kImapRow);
  EXPECT_EQ(Buttons(), "Disable");
  ClickRow(kPop3Row, true);
  EXPECT_EQ(Buttons(), "Enable Disable");
  ClickRow(kArchiverRow);
  EXPECT_EQ(Buttons(), "Properties");
  ClickRow(kImapRow, true);
  EXPECT_EQ(Buttons(), "none");
  ClickRow(3);
  EXPECT_EQ(Buttons(), "none");
  PressKey(VK_HOME);
  EXPECT_EQ(Buttons(), "Properties");
  PressKey(VK_DOWN);
  EXPECT_EQ(Buttons(), "Disable");
  Win32Dialog page = Page();
  IListView& list = page.ListView(IDC_FEATURE_LIST);
  list.SetSelected(kPop3Row, true);
  EXPECT_EQ(Buttons(), "Enable Disable");
  list.SetSelected(kImapRow, false);
  list.SetSelected(kPop3Row, false);
  EXPECT_EQ(Buttons(), "none");
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

TEST_F(FeaturesTabTest, ADoubleClickTogglesAndOkWritesItThoughThePageIsNotModified) {
  OpenTwo();
  DoubleClickRow(kImapRow);
  EXPECT_EQ(Status(kImapRow), "Disabled");
  EXPECT_EQ(Buttons(), "Enable");
  DoubleClickRow(3);
  User().RightDoubleClickListViewCell(IDC_FEATURE_LIST, kPop3Row, 0);
  EXPECT_EQ(Status(kPop3Row), "Ambiguous");
  EXPECT_FALSE(sheet().IsApplyEnabled());
  sheet().ClickOk();
  EXPECT_FALSE(sheet().IsOpen());
  EXPECT_EQ(directory().Value(kAda, "peloraEnabledFeatures"), Variant::String("pop3"));
  EXPECT_EQ(directory().Value(kAda, "peloraDisabledFeatures"), Variant::String("imap"));
  EXPECT_EQ(directory().Value(kBob, "peloraDisabledFeatures"),
            Variant::StringArray({"imap", "pop3"}));
}

TEST_F(FeaturesTabTest, ArchiveServersAreEditedInTheirDialog) {
  OpenTwo();
  ClickRow(kArchiverRow);
  boxes_.PlayNext([this](HWND dialog) {
    WindowPlayer user(dialog);
    Win32Dialog controls(dialog, DialogRole::kModal);
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), sheet().window());
    EXPECT_EQ(ControlLines(dialog),
              (Lines{R"(1043 frame "Archive Servers")", R"(105 button "Search")", R"(1002 edit "")",
                     R"(1008 button "Add" disabled)", R"(1007 list box "arc1")",
                     R"(1009 button "Remove" disabled)", R"(1 default button "OK")",
                     R"(2 button "Cancel")"}));
    user.ClickListRow(IDC_ARCHIVER_LIST, 0);
    EXPECT_TRUE(controls.IsEnabled(IDC_ARCHIVER_REMOVE));
    user.Click(IDC_ARCHIVER_REMOVE);
    EXPECT_EQ(controls.Text(IDC_ARCHIVER_NAME), "arc1");
    EXPECT_FALSE(controls.IsEnabled(IDC_ARCHIVER_REMOVE));
    EXPECT_TRUE(controls.IsEnabled(IDC_ARCHIVER_ADD));
    user.Type(IDC_ARCHIVER_NAME, "-größe");
    user.Click(IDC_ARCHIVER_ADD);
    EXPECT_FALSE(controls.IsEnabled(IDC_ARCHIVER_ADD));
    // The character beyond the ground plane counts twice.
    user.Type(IDC_ARCHIVER_NAME, std::string(60, 'x') + "ä🖥y");
    user.Click(IDC_ARCHIVER_ADD);
    SavePicture(dialog, "archive_servers");
    EXPECT_EQ(ClippedControls(dialog), Lines{});
    user.Click(kOkButton);
  });
  User().Click(IDC_FEATURE_PROPERTIES);
  const std::string longest = std::string(60, 'x') + "ä🖥";
  EXPECT_EQ(Status(kArchiverRow), "Enabled on servers 'arc1-größe', '" + longest + "'");
  EXPECT_FALSE(sheet().IsApplyEnabled());
  sheet().ClickOk();
  EXPECT_EQ(directory().Value(kBob, "peloraUserArchiveServers"),
            Variant::StringArray({"arc1-größe", longest}));
}

TEST_F(FeaturesTabTest, AServerIsSearchedForFromTheDialog) {
  OpenOne();
  constexpr const char* kNode = "LDAP://CN=node7,DC=fake,DC=example";
  directory().AddObject(kNode, {{"cn", Variant::String("node7")}});
  PickedObjects picked({kNode});
  StandInPicker picker;
  picker.Choose(picked);
  HWND owner = nullptr;
  boxes_.PlayNext([&owner](HWND dialog) {
    owner = dialog;
    WindowPlayer user(dialog);
    user.Click(IDC_ARCHIVER_SEARCH);
    user.Click(IDC_ARCHIVER_ADD);
    user.Click(kOkButton);
  });
  DoubleClickRow(kArchiverRow);
  EXPECT_EQ(picker.owner(), owner);
  EXPECT_EQ(picker.references(), 0U);
  EXPECT_EQ(Status(kArchiverRow), "Enabled on server 'node7'");
}

TEST_F(FeaturesTabTest, UsersThatDisagreeAreReplacedAfterAQuestion) {
  OpenTwo("arc1", "arc2");
  boxes_.PlayNext([](HWND dialog) {
    WindowPlayer user(dialog);
    EXPECT_EQ(Win32Dialog(dialog, DialogRole::kModal).ListBox(IDC_ARCHIVER_LIST).Count(), 0U);
    user.Type(IDC_ARCHIVER_NAME, "arc3");
    user.Click(IDC_ARCHIVER_ADD);
    user.Click(kOkButton);
  });
  DoubleClickRow(kArchiverRow);
  const ShownBox question = {.caption = "Warning",
                             .text =
                                 "This will clear the settings for all selected objects. Do "
                                 "you wish to continue?",
                             .icon = MessageIcon::kNone,
                             .buttons = {"Yes", "No"},
                             .owner = "Properties"};
  EXPECT_EQ(boxes_.TakeBoxes(), Boxes{question});
  EXPECT_EQ(Status(kArchiverRow), "Enabled on server 'arc3'");
}

TEST_F(FeaturesTabTest, AFailureOnTheSecondOfThreeUsersIsShownAndTheRetrySucceeds) {
  for (const char* const path : {kAda, kBob, kCyd}) {
    directory().AddObject(path, {{"peloraEnabledFeatures", Variant::String("imap")}});
  }
  Open(kFeaturesTab, {kAda, kBob, kCyd});
  const auto disabled = [this](const char* path) {
    return ToText(directory().Value(path, "peloraDisabledFeatures"));
  };
  ClickRow(kImapRow);
  User().Click(IDC_FEATURE_DISABLE);
  console_.plan().FailAttribute(FaultPoint::kPut, "peloraDisabledFeatures", 2, E_ACCESSDENIED);
  sheet().ClickApply();
  EXPECT_EQ(boxes_.TakeBoxes(), Boxes{ErrorBox("Failed to update object: \r\n\r\n"
                                               "Error code: 0X80070005")});
  EXPECT_TRUE(sheet().IsApplyEnabled());
  EXPECT_EQ(disabled(kAda), "nothing") << "nobody is committed";

  console_.plan().Fail(FaultPoint::kSetInfo, 2, E_ACCESSDENIED);
  sheet().ClickApply();
  EXPECT_EQ(boxes_.TakeBoxes(), Boxes{ErrorBox("Unknown error occured\r\n\r\n"
                                               "Error code: 0X80070005")});
  EXPECT_TRUE(sheet().IsApplyEnabled());
  EXPECT_EQ(disabled(kAda), "\"imap\"");
  EXPECT_EQ(disabled(kBob), "nothing");
  EXPECT_EQ(disabled(kCyd), "nothing");

  EXPECT_EQ(Apply(), (Lines{"PutEx CLEAR <2> peloraEnabledFeatures nothing",
                            "Put <2> peloraDisabledFeatures \"imap\"",
                            "PutEx CLEAR <3> peloraEnabledFeatures nothing",
                            "Put <3> peloraDisabledFeatures \"imap\"", "SetInfo <1>", "SetInfo <2>",
                            "SetInfo <3>"}));
  EXPECT_EQ(disabled(kCyd), "\"imap\"");
  EXPECT_EQ(sheet().AnswersTo(PSN_APPLY),
            (std::vector<LRESULT>{PSNRET_INVALID_NOCHANGEPAGE, PSNRET_INVALID_NOCHANGEPAGE,
                                  PSNRET_NOERROR}));
  EXPECT_FALSE(sheet().IsApplyEnabled());
}

}  // namespace
}  // namespace pelora::windows::test
