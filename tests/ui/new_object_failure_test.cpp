// SPDX-License-Identifier: Apache-2.0
// What becomes of objects that are not made, at once or at all.
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include "hosts/console/text/qt_text.h"
#include "hosts/ldap/ldap_status.h"
#include "resources/resource.h"
#include "tests/ui/new_object_test.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {
namespace {

using console::ToUtf8;

using NewObjectFailure = NewObjectTest;

TEST_F(NewObjectFailure, ANameInUseIsSaidAndEverythingTypedStays) {
  const EntryLines before = SearchEntry(file(), kBirgit);
  Open("user");
  wizard().Write("own_first_name", "Birgit");
  wizard().Write("own_last_name", "Krämer");
  wizard().Write("own_logon_name", "birgit2");
  wizard().Next();
  wizard().user().Click(IDC_CREATE_PELORA);
  wizard().user().Type(IDC_NEW_ADDRESS, "b2@linden-werke.example");
  wizard().Next();
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  wizard().Finish();
  EXPECT_EQ(box.caption, "Pelora Error");
  EXPECT_EQ(box.text,
            "The new object cannot be created because the name is already in use.\n"
            "Please select a different name and try again.");
  EXPECT_EQ(box.icon, QMessageBox::Warning);
  EXPECT_TRUE(wizard().IsOpen());
  EXPECT_EQ(SearchEntry(file(), kBirgit), before);
  const auto* words = wizard().wizard().findChild<QLabel*>(QStringLiteral("creation_failure"));
  EXPECT_TRUE(words->isVisible());
  EXPECT_TRUE(ToUtf8(words->text()).starts_with("The object was not created. The directory says: "))
      << ToUtf8(words->text());
  Picture("new-user-name-in-use");

  wizard().Back();
  EXPECT_EQ(wizard().dialog().Text(IDC_NEW_ADDRESS), "b2@linden-werke.example");
  wizard().Back();
  EXPECT_EQ(wizard().Field("own_logon_name"), "birgit2");
  wizard().Write("own_name", "Birgit Krämer 2");
  wizard().Next();
  wizard().Next();
  EXPECT_FALSE(words->isVisible());
  wizard().Finish();
  EXPECT_FALSE(wizard().IsOpen());
  const Lines stored = Stored(Below("CN=Birgit Krämer 2"));
  EXPECT_NE(std::ranges::find(stored, "mail: b2@linden-werke.example"), stored.end());
  EXPECT_NE(std::ranges::find(stored, "givenName: Birgit"), stored.end());
}

TEST_F(NewObjectFailure, ARequestWithoutAnAnswerLeavesOpenWhetherTheObjectIsThere) {
  OpenNamed(session::NewObjectKinds()[1]);
  wizard().Next();
  wizard().Next();
  store_->FailNextAdd({ldap::kLdapTimeout, "no answer came"});
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  wizard().Finish();
  EXPECT_EQ(box.text,
            "Unknown error occured\n\nError code: 0X800705B4\n\nIt is not known whether the object "
            "was created. The directory says: no answer came");
  const auto* words = wizard().wizard().findChild<QLabel*>(QStringLiteral("creation_failure"));
  EXPECT_TRUE(words->isVisible());
  EXPECT_EQ(ToUtf8(words->text()),
            "It is not known whether the object was created. The directory says: no answer came");
  wizard().Finish();
  EXPECT_FALSE(wizard().IsOpen());
}

TEST_F(NewObjectFailure, WhatIsChangedAfterGoingBackIsWhatIsMade) {
  Open("user");
  wizard().Write("own_name", "Nora");
  wizard().Write("own_logon_name", "nora");
  wizard().Next();
  wizard().Back();
  wizard().Write("own_logon_name", "nora2");
  wizard().Next();
  wizard().Next();
  wizard().Finish();
  const Lines stored = Stored(Below("CN=Nora"));
  EXPECT_NE(std::ranges::find(stored, "sAMAccountName: nora2"), stored.end());
}

TEST_F(NewObjectFailure, AFailureThatNoExtensionShowsIsShownByTheConsole) {
  console::QtMessageBox message_box;
  const session::NewObjectKind& unit = session::NewObjectKinds()[3];
  const auto failure = std::make_shared<ldap::StoreStatus>();
  HRESULT make_status = E_ADS_BAD_PATHNAME;
  sheets::NewObjectSetup setup;
  setup.class_name = "organizationalUnit";
  setup.make_object = [&](const std::string& /*name*/, Ref<IADs>& object) {
    // There is no such container.
    object = Ref<IADs>::Adopt(
        new ldap::NewStoreObject(*recorded_->store, "OU=New,OU=Nowhere,DC=linden-werke,DC=example",
                                 "organizationalUnit", failure));
    return make_status;
  };
  console::QtNewObjectWizard window(
      {.module = module(), .message_box = message_box, .kind = unit, .own_context = {}},
      std::move(setup));
  window.Start();
  window.show();
  window.findChild<QLineEdit*>(QStringLiteral("own_name"))->setText(QStringLiteral("New"));

  ShownBox box;
  modal_scripts().Add(Confirm(box));
  QTest::mouseClick(&window.next(), Qt::LeftButton);
  EXPECT_EQ(box.text, "Unknown error occured\n\nError code: 0X80005000");
  EXPECT_EQ(window.CurrentPage(), 0U);

  make_status = S_OK;
  QTest::mouseClick(&window.next(), Qt::LeftButton);
  EXPECT_TRUE(window.IsSummary());
  modal_scripts().Add(Confirm(box));
  QTest::mouseClick(&window.finish(), Qt::LeftButton);
  EXPECT_EQ(box.caption, "Pelora Error");
  EXPECT_EQ(box.text, "Unknown error occured\n\nError code: 0X80072030");
  EXPECT_EQ(box.icon, QMessageBox::Critical);
  EXPECT_TRUE(window.isVisible());
}

TEST_F(NewObjectFailure, CancelAndEscapeMakeNothingAndLeaveNothingBehind) {
  for (const bool by_key : {false, true}) {
    Open("user");
    wizard().Write("own_name", "Nora");
    wizard().Write("own_logon_name", "nora");
    wizard().Next();
    wizard().user().Click(IDC_CREATE_PELORA);
    EXPECT_EQ(wizard().components(), 1);
    for (const char* const answer : {"&Keep Editing", "&Discard"}) {
      modal_scripts().Add(Press(answer));
      if (by_key) {
        QTest::keyClick(&wizard().wizard(), Qt::Key_Escape);
      } else {
        auto* cancel = wizard().wizard().findChild<QPushButton*>(QStringLiteral("wizard_cancel"));
        QTest::mouseClick(cancel, Qt::LeftButton);
      }
      EXPECT_EQ(wizard().IsOpen(), std::string_view(answer) == "&Keep Editing");
    }
    wizard().Destroy();
    EXPECT_EQ(wizard().components(), 0);
  }
  EXPECT_TRUE(adds_.empty());
}

TEST_F(NewObjectFailure, AWizardInWhichNothingWasEnteredGoesUnasked) {
  Open("user");
  QTest::keyClick(&wizard().wizard(), Qt::Key_Escape);
  EXPECT_FALSE(wizard().IsOpen());
  Open("peloraAddresslist");
  QTest::keyClick(&wizard().wizard(), Qt::Key_Escape);
  EXPECT_FALSE(wizard().IsOpen());
  Open("user");
  wizard().Write("own_name", "Nora");
  wizard().Write("own_name", "");
  QTest::keyClick(&wizard().wizard(), Qt::Key_Escape);
  EXPECT_FALSE(wizard().IsOpen()) << "it is as it was";
}

}  // namespace
}  // namespace pelora::test
