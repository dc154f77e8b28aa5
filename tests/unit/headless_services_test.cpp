// SPDX-License-Identifier: Apache-2.0
// Texts, messages, modal dialogs and the component library in memory.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "hosts/headless/headless_component_library.h"
#include "hosts/headless/headless_message_box.h"
#include "hosts/headless/headless_modal_dialogs.h"
#include "hosts/headless/headless_text_service.h"
#include "resources/resource.h"

namespace pelora {
namespace {

TEST(HeadlessTextService, PutsEveryScriptIntoUpperCase) {
  const HeadlessTextService text;
  EXPECT_EQ(text.UpperCase(""), "");
  EXPECT_EQ(text.UpperCase("karl.mueller-01@example.org"), "KARL.MUELLER-01@EXAMPLE.ORG");
  EXPECT_EQ(text.UpperCase("jörg éàø ÿ"), "JÖRG ÉÀØ Ÿ");
  EXPECT_EQ(text.UpperCase("дмитрий αβγ ἀ"), "ДМИТРИЙ ΑΒΓ Ἀ");
  // Beyond the basic plane.
  EXPECT_EQ(text.UpperCase("\U00010428!"), "\U00010400!");
}

TEST(HeadlessTextService, LeavesWhatHasNoCapital) {
  const HeadlessTextService text;
  EXPECT_EQ(text.UpperCase("1 @ 漢字 straße \U0001F4EE"), "1 @ 漢字 STRAßE \U0001F4EE");
  EXPECT_EQ(text.UpperCase("ALREADY"), "ALREADY");
}

TEST(HeadlessTextService, DependsOnNoLocaleOfTheProcess) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  ASSERT_NE(std::setlocale(LC_ALL, "C"), nullptr);
  EXPECT_EQ(HeadlessTextService().UpperCase("ü"), "Ü");
  std::setlocale(LC_ALL, before.c_str());
}

TEST(HeadlessMessageBox, KeepsMessagesAndGivesQueuedAnswers) {
  HeadlessMessageBox box;
  box.AnswerNext(kDialogYes);
  EXPECT_EQ(box.Show(nullptr, {"Sure?", "Warning", MessageIcon::kWarning, MessageButtons::kYesNo}),
            kDialogYes);
  EXPECT_EQ(box.AnswersLeft(), 0U);
  ASSERT_EQ(box.records().size(), 1U);
  EXPECT_EQ(box.records()[0].message.text, "Sure?");
  EXPECT_EQ(box.records()[0].message.caption, "Warning");
  EXPECT_EQ(box.records()[0].message.icon, MessageIcon::kWarning);
  EXPECT_EQ(box.records()[0].owner, nullptr);
  EXPECT_EQ(box.records()[0].answer, kDialogYes);
  box.ClearRecords();
  EXPECT_TRUE(box.records().empty());
}

TEST(HeadlessMessageBox, KnowsAnErrorFromAWarning) {
  HeadlessMessageBox box;
  box.Show(nullptr, {.text = "careful", .caption = {}, .icon = MessageIcon::kWarning});
  EXPECT_FALSE(box.HasToldOfError());
  box.Show(nullptr, {.text = "broken", .caption = {}, .icon = MessageIcon::kError});
  box.Show(nullptr, {.text = "careful", .caption = {}, .icon = MessageIcon::kWarning});
  EXPECT_TRUE(box.HasToldOfError());
  box.ClearRecords();
  EXPECT_FALSE(box.HasToldOfError());
}

TEST(HeadlessMessageBox, AnswersWithTheLeastOfItself) {
  HeadlessMessageBox box;
  EXPECT_EQ(box.Show(nullptr, {"Wrong emailaddress", {}, {}, MessageButtons::kOk}), kDialogOk);
  EXPECT_EQ(box.Show(nullptr, {"Sure?", {}, {}, MessageButtons::kYesNo}), kDialogNo);
}

TEST(HeadlessComponentLibrary, CountsItsCalls) {
  HeadlessComponentLibrary library;
  const LibraryThread thread = library.CoInitialize();
  EXPECT_EQ(library.CoInitialize(), thread);
  library.CoUninitialize(thread);
  EXPECT_EQ(library.initialized(), 2);
  EXPECT_EQ(library.uninitialized(), 1);
}

/// Ends its dialog on Cancel, if it is to end at all.
class CancelController final : public IDialogController {
 public:
  explicit CancelController(bool ends) : ends_(ends) {}
  std::int32_t OnInitDialog(IDialog& dialog) override {
    dialog_ = &dialog;
    return 0;
  }
  std::int32_t OnCommand(ControlId id, ControlNotification /*notification*/) override {
    if (ends_ && id == static_cast<ControlId>(kDialogCancel)) dialog_->End(99);
    return 0;
  }
  void OnDestroy() override { destroyed = true; }

  bool destroyed = false;

 private:
  bool ends_;
  IDialog* dialog_ = nullptr;
};

class HeadlessModalDialogsTest : public testing::Test {
 protected:
  resources::ResourceFile templates =
      resources::ResourceFile::Read(resources::EmbeddedResourceBytes()).value.value();
  HeadlessModalDialogs dialogs{templates};
};

TEST_F(HeadlessModalDialogsTest, CloseADialogThatNobodyPlays) {
  CancelController controller(true);
  EXPECT_EQ(dialogs.Run(IDD_EMAIL_ADDRESS, nullptr, controller), 99);
  EXPECT_TRUE(controller.destroyed);
  ASSERT_EQ(dialogs.records().size(), 1U);
  EXPECT_EQ(dialogs.records()[0].dialog, IDD_EMAIL_ADDRESS);
  EXPECT_EQ(dialogs.records()[0].result, 99);
  EXPECT_FALSE(dialogs.records()[0].played);
}

TEST_F(HeadlessModalDialogsTest, CloseADialogThatItsScriptLeavesOpen) {
  CancelController controller(true);
  bool played = false;
  dialogs.PlayNext([&](HeadlessUser&) { played = true; });
  EXPECT_EQ(dialogs.ScriptsLeft(), 1U);
  EXPECT_EQ(dialogs.Run(IDD_EMAIL_ADDRESS, nullptr, controller), 99);
  EXPECT_TRUE(played);
  EXPECT_EQ(dialogs.ScriptsLeft(), 0U);
  EXPECT_TRUE(dialogs.records()[0].played);
}

TEST_F(HeadlessModalDialogsTest, PlayNoScriptThatWasTakenBack) {
  dialogs.PlayNext([](HeadlessUser&) { FAIL() << "its dialog did not open"; });
  dialogs.ForgetScripts();
  EXPECT_EQ(dialogs.ScriptsLeft(), 0U);
  CancelController controller(true);
  EXPECT_EQ(dialogs.Run(IDD_EMAIL_ADDRESS, nullptr, controller), 99);
  EXPECT_FALSE(dialogs.records()[0].played);
}

TEST_F(HeadlessModalDialogsTest, EndADialogThatNothingEnds) {
  CancelController controller(false);
  EXPECT_EQ(dialogs.Run(IDD_EMAIL_ADDRESS, nullptr, controller), kDialogCancel);
  EXPECT_TRUE(controller.destroyed);
}

TEST_F(HeadlessModalDialogsTest, PlayNoDialogThatEndsWhileItIsSetUp) {
  class EndsAtOnce final : public IDialogController {
   public:
    std::int32_t OnInitDialog(IDialog& dialog) override {
      dialog.End(7);
      return 0;
    }
    std::int32_t OnCommand(ControlId /*id*/, ControlNotification /*told*/) override { return 0; }
    void OnDestroy() override {}
  } controller;
  dialogs.PlayNext([](HeadlessUser&) { FAIL() << "the dialog is over"; });
  EXPECT_EQ(dialogs.Run(IDD_EMAIL_ADDRESS, nullptr, controller), 7);
  EXPECT_EQ(dialogs.ScriptsLeft(), 1U);
  EXPECT_FALSE(dialogs.records()[0].played);
}

TEST_F(HeadlessModalDialogsTest, KeepTheOwnerAndTheDialogsThatCouldNotBeMade) {
  CancelController page(true);
  HeadlessDialog owner(templates.Dialog(IDD_PROPPAGE_USER).value.value(), page);
  EXPECT_EQ(dialogs.Run(9999, &owner, page), -1);
  ASSERT_EQ(dialogs.records().size(), 1U);
  EXPECT_EQ(dialogs.records()[0].owner, &owner);
  EXPECT_EQ(dialogs.records()[0].result, -1);
}

TEST_F(HeadlessModalDialogsTest, RefuseToBeClosedWhileCancelIsDisabled) {
  CancelController controller(true);
  dialogs.PlayNext([](HeadlessUser& user) {
    user.dialog().SetEnabled(static_cast<ControlId>(kDialogCancel), false);
    EXPECT_EQ(user.CloseWindow(), UserAnswer::kDisabled);
    EXPECT_EQ(user.dialog().Result(), std::nullopt);
    user.dialog().End(5);
    EXPECT_EQ(user.Click(IDC_EMAIL_ADDRESS), UserAnswer::kDialogClosed);
    user.dialog().End(6);
  });
  EXPECT_EQ(dialogs.Run(IDD_EMAIL_ADDRESS, nullptr, controller), 5);
}

}  // namespace
}  // namespace pelora
