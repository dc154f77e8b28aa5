// SPDX-License-Identifier: Apache-2.0
// A wizard that its console waits for.
#include "resources/resource.h"
#include "tests/windows/wizards/wizard_test.h"

namespace pelora::windows::test {
namespace {

using pelora::testing::FakeAttributes;

using ModalWizardTest = WizardTest;

TEST_F(ModalWizardTest, AnObjectIsMadeWithItsSettings) {
  ASSERT_EQ(console_.Add("CWizardExtContact"), S_OK);
  console_.Run([this] {
    GoToPage("Mia");
    console_.User().Click(IDC_CREATE_PELORA);
    console_.User().Type(IDC_NEW_ADDRESS, "mia@x.test");
    EXPECT_TRUE(console_.IsNextEnabled());
    console_.Next();
    console_.Finish();
  });
  EXPECT_EQ(console_.directory().Values(WizardConsole::PathOf("Mia")),
            (FakeAttributes{{"peloraAccount", Variant::Integer(1)},
                            {"peloraHidden", Variant::Integer(0)},
                            {"mail", Variant::String("mia@x.test")}}));
}

TEST_F(ModalWizardTest, CancelledItMakesNothing) {
  ASSERT_EQ(console_.Add("CWizardExtUser"), S_OK);
  console_.Run([this] {
    GoToPage("Mia");
    console_.Cancel();
  });
  EXPECT_EQ(console_.directory().Values(WizardConsole::PathOf("Mia")), std::nullopt);
  EXPECT_EQ(console_.site().references(), 0U) << "the page's release has ended the extension";
}

}  // namespace
}  // namespace pelora::windows::test
