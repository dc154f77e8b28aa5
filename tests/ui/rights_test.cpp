// SPDX-License-Identifier: Apache-2.0
// Fields that the user has no right to change, as the directory says with the objects.
#include <gmock/gmock.h>

#include "tests/ui/rights_store.h"
#include "tests/ui/writing_sheet.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using ::testing::HasSubstr;

TEST_F(WritingSheet, FieldsWithoutARightCannotBeUsedAndSayWhy) {
  RightsStore store(*session().store, {"peloraHidden", "PELORAQUOTAHARD"});
  OpenSheet open(session(), module(), Objects({kBirgit}), SheetFaults{.store = &store});
  const auto widget = [&](ControlId id) -> QWidget& { return open.dialog().Find(id)->widget(); };
  EXPECT_TRUE(widget(IDC_PELORA_HIDDEN).isEnabled());
  EXPECT_THAT(ToUtf8(widget(IDC_PELORA_HIDDEN).toolTip()), ::testing::Not(HasSubstr("right")));
  for (const ControlId id : {IDC_PELORA_ACCOUNT, IDC_EMAIL_ADD, IDC_SERVER_SELECT}) {
    EXPECT_FALSE(widget(id).isEnabled()) << id;
    EXPECT_THAT(ToUtf8(widget(id).toolTip()), HasSubstr("You have no right to change this.")) << id;
    EXPECT_EQ(widget(id).accessibleDescription(),
              QStringLiteral("You have no right to change this."));
  }
  // What a page says later does not count, and the page is told what it has said itself.
  open.dialog().SetEnabled(IDC_PELORA_ACCOUNT, true);
  EXPECT_FALSE(widget(IDC_PELORA_ACCOUNT).isEnabled());
  EXPECT_TRUE(open.dialog().IsEnabled(IDC_PELORA_ACCOUNT));
  open.user().Click(IDC_PELORA_HIDDEN);
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_TRUE(IsHidden(kBirgit));
}

TEST_F(WritingSheet, WithoutAWordAboutRightsEverythingMayBeEdited) {
  OpenSheet& open = Open({kBirgit});
  EXPECT_TRUE(open.dialog().Find(IDC_PELORA_ACCOUNT)->widget().isEnabled());
}

}  // namespace
}  // namespace pelora::test
