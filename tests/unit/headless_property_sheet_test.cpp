// SPDX-License-Identifier: Apache-2.0
// The parts of the sheet in memory that the property sheet contract leaves open.
#include "hosts/headless/headless_property_sheet.h"

#include <gtest/gtest.h>

#include <memory>

#include "resources/resource.h"

namespace pelora {
namespace {

class PageController final : public IDialogController {
 public:
  std::int32_t OnInitDialog(IDialog& /*dialog*/) override { return 0; }
  std::int32_t OnCommand(ControlId /*id*/, ControlNotification /*told*/) override { return 0; }
  void OnDestroy() override {}
};

class Page final : public PropSheetPage {
 public:
  Page(PageController& controller, DialogId dialog, int& destroyed)
      : controller_(controller), dialog_(dialog), destroyed_(destroyed) {}
  ~Page() override { ++destroyed_; }
  [[nodiscard]] DialogId Template() const override { return dialog_; }
  [[nodiscard]] std::string Title() const override { return {}; }
  [[nodiscard]] IDialogController& Controller() override { return controller_; }

 private:
  PageController& controller_;
  DialogId dialog_;
  int& destroyed_;
};

class HeadlessPropertySheetTest : public testing::Test {
 protected:
  std::unique_ptr<PropSheetPage> MakePage(PageController& controller,
                                          DialogId dialog = IDD_PROPPAGE_USER) {
    return std::make_unique<Page>(controller, dialog, destroyed);
  }

  int destroyed = 0;
  PageController first;
  PageController second;
  resources::ResourceFile templates =
      resources::ResourceFile::Read(resources::EmbeddedResourceBytes()).value.value();
  HeadlessPropertySheet sheet{templates};
};

TEST_F(HeadlessPropertySheetTest, DestroysThePagesThatItRefuses) {
  EXPECT_FALSE(sheet.AddPage(MakePage(first, 9999)));
  EXPECT_EQ(destroyed, 1);
  EXPECT_TRUE(sheet.PageTaker()(MakePage(first)));
  sheet.Show();
  EXPECT_FALSE(sheet.AddPage(MakePage(second)));
  EXPECT_EQ(destroyed, 2);
  EXPECT_EQ(sheet.PageCount(), 1U);
}

TEST_F(HeadlessPropertySheetTest, StaysClosedWithoutPages) {
  sheet.Show();
  EXPECT_FALSE(sheet.IsOpen());
  EXPECT_FALSE(sheet.SelectPage(0));
  EXPECT_FALSE(sheet.Apply());
  EXPECT_FALSE(sheet.Ok());
  EXPECT_FALSE(sheet.Cancel());
  EXPECT_EQ(sheet.Title(0), "");
  EXPECT_EQ(sheet.Dialog(0), nullptr);
}

TEST_F(HeadlessPropertySheetTest, HasADialogForEachPageThatWasShown) {
  EXPECT_TRUE(sheet.AddPage(MakePage(first)));
  EXPECT_TRUE(sheet.AddPage(MakePage(second)));
  sheet.Show();
  EXPECT_NE(sheet.Dialog(0), nullptr);
  EXPECT_EQ(sheet.Dialog(1), nullptr);
  EXPECT_TRUE(sheet.SelectPage(1));
  EXPECT_NE(sheet.Dialog(1), nullptr);
  EXPECT_FALSE(sheet.SelectPage(2));
  EXPECT_EQ(&sheet.User().dialog(), sheet.Dialog(1));
}

}  // namespace
}  // namespace pelora
