// SPDX-License-Identifier: Apache-2.0
// The wizards' windows in front of the person who uses them.
#include <QAbstractButton>
#include <QApplication>
#include <QKeySequence>
#include <QLabel>
#include <QTest>
#include <map>

#include "hosts/console/text/qt_text.h"
#include "resources/resource.h"
#include "tests/ui/faults_of_sight.h"
#include "tests/ui/new_object_test.h"

namespace pelora::test {
namespace {

using console::ToUtf8;

class NewObjectLooks : public NewObjectTest {
 protected:
  using NewObjectTest::NewObjectTest;

  /// What the person in front of the page that shows would complain of: controls that do not show
  /// whole, and keys that belong to two controls.
  Lines Faults() {
    const console::QtNewObjectWizard& window = wizard().wizard();
    const console::QtDialog* dialog = window.Dialog(window.CurrentPage());
    Lines faults;
    if (dialog != nullptr) faults = FaultsOfSight(dialog->widget());
    if (window.CurrentPage() == 0 && dialog == nullptr) faults = FaultsOfSight(*window.own_page());
    std::map<QKeySequence, int> keys;
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
      if (button->isVisible()) ++keys[QKeySequence::mnemonic(button->text())];
    }
    for (const auto* label : window.findChildren<QLabel*>()) {
      if (label->isVisible() && label->buddy() != nullptr) {
        ++keys[QKeySequence::mnemonic(label->text())];
      }
    }
    keys.erase(QKeySequence());
    for (const auto& [key, count] : keys) {
      if (count > 1) faults.push_back(ToUtf8(key.toString()) + " is taken twice");
    }
    EXPECT_GE(keys.size(), 2U);
    return faults;
  }
  /// Looks at every page of every kind of object.
  void LookAtEveryPage() {
    for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
      SCOPED_TRACE(kind.class_name);
      OpenNamed(kind);
      EXPECT_EQ(Faults(), Lines{});
      while (!wizard().wizard().IsSummary()) {
        wizard().Next();
        EXPECT_EQ(Faults(), Lines{});
      }
    }
  }
};

/// The same over a sealed connection.
class SealedNewObjectLooks : public NewObjectLooks {
 protected:
  SealedNewObjectLooks() : NewObjectLooks(true) {}
};

TEST_F(NewObjectLooks, TheKeyboardLeadsThrough) {
  Open("user");
  QWidget* focus = QApplication::focusWidget();
  ASSERT_NE(focus, nullptr);
  EXPECT_EQ(ToUtf8(focus->objectName()), "own_first_name");
  QTest::keyClicks(focus, QStringLiteral("Nora"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(ToUtf8(QApplication::focusWidget()->objectName()), "own_last_name");
  // A disabled Next button does not react.
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_EQ(wizard().wizard().CurrentPage(), 0U);
  wizard().Write("own_logon_name", "nora");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_EQ(wizard().wizard().CurrentPage(), 1U);
  EXPECT_EQ(ToUtf8(QApplication::focusWidget()->objectName()), "control_254");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  EXPECT_EQ(wizard().dialog().Check(IDC_CREATE_PELORA), CheckState::kChecked);
  wizard().user().Type(IDC_NEW_ADDRESS, "n@x");
  // Behind the page's controls come the buttons.
  wizard().wizard().Dialog(1)->Find(IDC_SERVER_SELECT)->widget().setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(ToUtf8(QApplication::focusWidget()->objectName()), "wizard_back");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(ToUtf8(QApplication::focusWidget()->objectName()), "wizard_next");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_TRUE(wizard().wizard().IsSummary());
  EXPECT_EQ(ToUtf8(QApplication::focusWidget()->objectName()), "wizard_finish");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_FALSE(wizard().IsOpen());
  EXPECT_TRUE(IsThere(Below("CN=Nora")));
}

TEST_F(NewObjectLooks, EveryPageShowsWholeAndNoKeyBelongsToTwoControls) { LookAtEveryPage(); }

TEST_F(SealedNewObjectLooks, EveryPageShowsWholeAndNoKeyBelongsToTwoControls) { LookAtEveryPage(); }

TEST_F(NewObjectLooks, TheButtonsStayWhereTheyAre) {
  for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
    SCOPED_TRACE(kind.class_name);
    OpenNamed(kind);
    const QRect back = wizard().wizard().back().geometry();
    const QRect next = wizard().wizard().next().geometry();
    while (!wizard().wizard().IsSummary()) {
      EXPECT_EQ(wizard().wizard().next().geometry(), next);
      wizard().Next();
    }
    EXPECT_EQ(wizard().wizard().finish().geometry(), next);
    EXPECT_EQ(wizard().wizard().back().geometry(), back);
  }
}

TEST_F(NewObjectLooks, EveryPageHasItsPicture) {
  Open("user");
  wizard().Write("own_name", "Nora");
  wizard().Write("own_logon_name", "nora");
  wizard().Next();
  const auto* icon = wizard().wizard().Dialog(1)->widget().findChild<QLabel*>();
  ASSERT_NE(icon, nullptr);
  EXPECT_FALSE(icon->pixmap().isNull());
  EXPECT_GE(icon->pixmap().height(), 16);
}

}  // namespace
}  // namespace pelora::test
