// SPDX-License-Identifier: Apache-2.0
// The keyboard stays where its user has left it.
#include <gmock/gmock.h>

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "resources/resource.h"
#include "tests/ui/console_test.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {
namespace {

using console::ToUtf8;

constexpr int kPatience = 20000;

/// What has the keyboard, by its name.
std::string Keyboard() {
  const QWidget* const focus = QApplication::focusWidget();
  return focus == nullptr ? "nobody" : ToUtf8(focus->objectName());
}

std::string NameOf(ControlId id) { return "control_" + std::to_string(id); }

class TheKeyboard : public ConsoleTest {
 protected:
  void Focus(console::QtPropertySheet& sheet, ControlId id, std::size_t page = 0) {
    contract::Activate(sheet);
    QWidget& widget = sheet.Dialog(page)->Find(id)->widget();
    EXPECT_TRUE(QTest::qWaitFor(
        [&widget] {
          widget.setFocus();
          return QApplication::focusWidget() == &widget;
        },
        kPatience));
  }
};

TEST_F(TheKeyboard, StaysInTheFieldAfterApply) {
  OpenSheet open(session(), module(), Objects({kBirgit}));
  for (const bool by_mouse : {true, false}) {
    Focus(open.sheet(), IDC_PELORA_HIDDEN);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_TRUE(open.IsApplyEnabled());
    if (by_mouse) {
      open.ClickApply();
    } else {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Y, Qt::AltModifier);
      EXPECT_TRUE(QTest::qWaitFor([&] { return !open.IsApplyEnabled(); }, kPatience));
    }
    EXPECT_FALSE(open.IsApplyEnabled());
    EXPECT_EQ(Keyboard(), NameOf(IDC_PELORA_HIDDEN));
  }
}

TEST_F(TheKeyboard, GoesFromAGreyApplyToOk) {
  OpenSheet open(session(), module(), Objects({kBirgit}));
  open.user().Click(IDC_PELORA_HIDDEN);
  contract::Activate(open.sheet());
  open.sheet().ApplyButton().setFocus();
  QTest::keyClick(&open.sheet().ApplyButton(), Qt::Key_Space);
  EXPECT_FALSE(open.IsApplyEnabled());
  const auto* const button = qobject_cast<QPushButton*>(QApplication::focusWidget());
  ASSERT_NE(button, nullptr);
  EXPECT_EQ(ToUtf8(console::WithoutMnemonic(button->text())), "OK");
}

TEST_F(TheKeyboard, StaysOnThePageFromTabToTab) {
  OpenSheet open(session(), module(), Objects({kBirgit}));
  Focus(open.sheet(), IDC_EMAIL_LIST);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(open.sheet().CurrentPage(), 1U);
  EXPECT_EQ(Keyboard(), NameOf(IDC_FEATURE_LIST)) << "a page that shows first begins at its top";
  // Past the pages of our own, and round.
  for (std::size_t page = 1; page < open.sheet().PageCount(); ++page) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
  }
  EXPECT_EQ(open.sheet().CurrentPage(), 0U);
  EXPECT_EQ(Keyboard(), NameOf(IDC_EMAIL_LIST));
}

TEST_F(TheKeyboard, ALetterLeadsToAFieldWhoseTemplateHasNone) {
  OpenSheet open(session(), module(), Objects({kBirgit}));
  Focus(open.sheet(), IDC_EMAIL_LIST);
  open.sheet().SetHeld(false);
  const auto* const button =
      qobject_cast<QPushButton*>(&open.dialog().Find(IDC_SENDAS_ADD)->widget());
  EXPECT_EQ(open.dialog().Text(IDC_SENDAS_ADD), "Add") << "for the page its text is what it was";
  EXPECT_TRUE(button->text().contains(QLatin1Char('&')));
  EXPECT_NE(button->shortcut(),
            static_cast<QPushButton&>(open.dialog().Find(IDC_EMAIL_ADD)->widget()).shortcut());
}

/// The window, which has read what it shows.
class WindowKeyboard : public TheKeyboard {
 protected:
  WindowKeyboard() : window_(module()) {
    EXPECT_TRUE(window_.SetSession(TakeSession()));
    window_.show();
    contract::Activate(window_);
    Settle();
  }
  void Settle() {
    QCoreApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window_.IsReading(); }, kPatience));
  }
  [[nodiscard]] QTreeView& View(const char* name) {
    return *window_.findChild<QTreeView*>(QLatin1String(name));
  }

  console::MainWindow window_;
};

TEST_F(WindowKeyboard, StaysInTheListAndOnItsRowAfterRefresh) {
  QTreeView& list = View("object_list");
  list.setFocus();
  list.setCurrentIndex(list.model()->index(3, 0));
  const QString row = list.currentIndex().data().toString();
  QTest::keyClick(&window_, Qt::Key_F5);
  Settle();
  EXPECT_EQ(Keyboard(), "object_list");
  EXPECT_EQ(ToUtf8(list.currentIndex().data().toString()), ToUtf8(row));
}

TEST_F(WindowKeyboard, StaysInTheTreeAfterRefresh) {
  window_.pane().GoTo(kSales);
  Settle();
  QTreeView& tree = View("container_tree");
  tree.setFocus();
  const QString container = tree.currentIndex().data().toString();
  EXPECT_EQ(ToUtf8(container), "Vertrieb");
  QTest::keyClick(&window_, Qt::Key_F5);
  Settle();
  EXPECT_EQ(Keyboard(), "container_tree");
  EXPECT_EQ(ToUtf8(tree.currentIndex().data().toString()), "Vertrieb");
}

TEST_F(WindowKeyboard, GoesOnInTheSheetThatIsOpenedAnew) {
  std::vector<session::DirectoryObject> objects(1);
  EXPECT_TRUE(session::DirectoryBrowser(*window_.store()).ReadObject(kBirgit, objects[0]).Ok());
  window_.ShowProperties(objects);
  console::QtPropertySheet* const sheet = window_.sheets().Open().front();
  Focus(*sheet, IDC_PELORA_HIDDEN);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  ModifyEntry(file(), std::string("dn: ") + kBirgit +
                          "\nchangetype: modify\nreplace: peloraHidden\npeloraHidden: 0\n");
  modal_scripts().Add([](QWidget& asked) {
    EXPECT_EQ(asked.objectName(), QStringLiteral("conflicts"));
    Press("OK")(asked);
  });
  sheet->ApplyButton().click();
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return window_.sheets().Open().size() == 1 && window_.sheets().Open()[0] != sheet; },
      kPatience));
  console::QtPropertySheet* const anew = window_.sheets().Open().front();
  contract::Activate(*anew);
  EXPECT_EQ(Keyboard(), NameOf(IDC_PELORA_HIDDEN));
  Settle();
}

}  // namespace
}  // namespace pelora::test
