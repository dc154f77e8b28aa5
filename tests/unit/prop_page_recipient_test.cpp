// SPDX-License-Identifier: Apache-2.0
// The tabs of contacts and of groups.
#include "resources/resource.h"
#include "tests/unit/tab_bench.h"

namespace pelora {
namespace {

using testing::FakeAttributes;
using testing::Lines;

class RecipientTabTest : public testing::TabTest,
                         public ::testing::WithParamInterface<const char*> {
 protected:
  void OpenOn(const FakeAttributes& attributes) { Open(GetParam(), {attributes}); }
  void TypeNext(const std::string& address) {
    bench_.dialogs.PlayNext([address](HeadlessUser& user) {
      user.EraseText(IDC_QUOTA_WARN);
      user.TypeText(IDC_QUOTA_WARN, address);
      user.Click(kDialogOk);
    });
  }
};

INSTANTIATE_TEST_SUITE_P(Both, RecipientTabTest,
                         ::testing::Values("CPropPageContact", "CPropPageDistlist"),
                         [](const auto& row) { return std::string(row.param); });

const FakeAttributes kAddressed = {
    {"peloraAccount", Variant::Integer(1)},
    {"mail", Variant::String("one@x")},
    {"otherMailbox", Variant::StringArray({"one@y", "one@z"})},
    {"peloraSendAsPrivilege", Variant::StringArray({"CN=Bob,DC=x", "CN=Eve,DC=x"})}};

TEST_P(RecipientTabTest, WithoutAnAccountAndAddressesItIsShownSoAndAccepted) {
  OpenOn({});
  EXPECT_EQ(dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kUnchecked);
  EXPECT_EQ(page().Rows(IDC_EMAIL_LIST), Lines{});
  EXPECT_EQ(Applied(), Lines{});
}

TEST_P(RecipientTabTest, NeedsNoAddressWithAnAccountEither) {
  OpenOn({{"peloraAccount", Variant::Integer(1)}});
  EXPECT_EQ(dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kChecked);
  EXPECT_EQ(Applied(), Lines{});
}

TEST_P(RecipientTabTest, ShowsWhatIsStored) {
  OpenOn(kAddressed);
  EXPECT_EQ(page().Rows(IDC_EMAIL_LIST), (Lines{"ONE@X", "one@y", "one@z"}));
  EXPECT_EQ(page().Rows(IDC_SENDAS_LIST), (Lines{"CN=Bob,DC=x", "CN=Eve,DC=x"}));
}

TEST_P(RecipientTabTest, ALoadingAddsToTheRowsThatAreThere) {
  OpenOn(kAddressed);
  EXPECT_EQ(page().page().InitPage(), S_OK);
  EXPECT_EQ(page().Rows(IDC_EMAIL_LIST),
            (Lines{"ONE@X", "ONE@X", "one@y", "one@y", "one@z", "one@z"}));
  EXPECT_EQ(page().Rows(IDC_SENDAS_LIST),
            (Lines{"CN=Bob,DC=x", "CN=Bob,DC=x", "CN=Eve,DC=x", "CN=Eve,DC=x"}));
}

TEST_P(RecipientTabTest, TheLastAddressCanBeDeletedAndMailStays) {
  OpenOn({{"mail", Variant::String("one@x")}});
  page().SelectRow(IDC_EMAIL_LIST, "ONE@X");
  EXPECT_TRUE(dialog().IsEnabled(IDC_EMAIL_DELETE));
  page().Click(IDC_EMAIL_DELETE);
  EXPECT_TRUE(bench_.messages.records().empty()) << "no address is required";
  EXPECT_EQ(Applied(), Lines{"otherMailbox []"});
  EXPECT_EQ(bench_.directory.Value(testing::kTabPaths[0], "mail"), Variant::String("one@x"));
}

TEST_P(RecipientTabTest, EditsAreWrittenInTheOrderPersonAndAccount) {
  OpenOn(kAddressed);
  page().Click(IDC_PELORA_ACCOUNT);
  page().Click(IDC_PELORA_HIDDEN);
  page().SelectRow(IDC_SENDAS_LIST, "CN=Eve,DC=x");
  page().Click(IDC_SENDAS_DELETE);
  Choose({"CN=Ada,DC=x", "CN=Carl,DC=x"});
  page().Click(IDC_SENDAS_ADD);
  TypeNext("new@x");
  page().Click(IDC_EMAIL_ADD);
  page().SelectRow(IDC_EMAIL_LIST, "one@y");
  TypeNext("changed@y");
  page().Click(IDC_EMAIL_MODIFY);
  page().SelectRow(IDC_EMAIL_LIST, "one@z");
  page().Click(IDC_EMAIL_DEFAULT);
  EXPECT_EQ(Applied(),
            (Lines{R"(mail "one@z")", R"(otherMailbox ["one@x", "changed@y", "new@x"])",
                   R"(peloraSendAsPrivilege ["CN=Bob,DC=x", "CN=Ada,DC=x", "CN=Carl,DC=x"])",
                   "peloraAccount 0", "peloraHidden 1"}));
}

TEST_P(RecipientTabTest, DelegatesAreUsersAndGroups) {
  OpenOn({});
  page().Click(IDC_SENDAS_ADD);
  ASSERT_EQ(bench_.choosers.pickers().size(), 1U);
  EXPECT_EQ(bench_.choosers.pickers()[0].init.scope.flags, 0xC5U);
  EXPECT_EQ(bench_.choosers.pickers()[0].init.options, 0x3U) << "several";
  EXPECT_FALSE(page().IsModified());
}

TEST_P(RecipientTabTest, AnAddressCanBeAddedToSeveralAndIsNotWritten) {
  Open(GetParam(), {kAddressed, {}, {}});
  EXPECT_EQ(dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kIndeterminate);
  TypeNext("new@x");
  // No hand can reach the hidden button; a program can.
  (void)Command(IDC_EMAIL_ADD, ControlNotification::kClicked);
  page().Click(IDC_PELORA_ACCOUNT);
  page().Click(IDC_PELORA_ACCOUNT);
  EXPECT_EQ(Applied(), Lines{"peloraAccount 1"});
  EXPECT_EQ(Staged(1), Lines{"peloraAccount 1"});
  EXPECT_EQ(Staged(2), Lines{"peloraAccount 1"});
}

}  // namespace
}  // namespace pelora
