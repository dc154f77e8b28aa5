// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/first_day_person.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QTest>
#include <QTreeView>

#include "hosts/console/dialogs/mnemonics.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::test {
namespace {

using console::MnemonicOf;
using console::ToUtf8;

constexpr int kPatience = 60000;
/// More widgets than any window has.
constexpr int kMostTabs = 120;
/// More rows than anybody goes through by arrows.
constexpr int kMostRows = 200;

QAction* ActionOf(const QWidget& menu, const QString& text) {
  for (QAction* action : menu.actions()) {
    if (action->text() == text) return action;
  }
  return nullptr;
}

/// What is named when something is out of reach.
std::string NameOf(const QWidget& widget) {
  const auto* button = qobject_cast<const QAbstractButton*>(&widget);
  return ToUtf8(widget.objectName()) + (button != nullptr ? " " + ToUtf8(button->text()) : "");
}

}  // namespace

void Person::Acted() {
  EXPECT_GT(steps_, 0) << "something is done before the first step";
  ++acts_;
  QCoreApplication::processEvents();
}

void Person::LookAt(QWidget& window) {
  QApplication::setActiveWindow(&window);
  const auto has_keyboard = [&window] {
    const QWidget* const focused = QApplication::focusWidget();
    return focused != nullptr && (focused == &window || window.isAncestorOf(focused));
  };
  EXPECT_TRUE(QTest::qWaitFor(has_keyboard, kPatience)) << NameOf(window);
}

void Person::Key(int key, Qt::KeyboardModifiers modifiers) {
  QWidget* const popup = QApplication::activePopupWidget();
  QWidget* const focused = popup != nullptr ? popup : QApplication::focusWidget();
  ASSERT_NE(focused, nullptr) << "nothing has the keyboard";
  QTest::keyClick(focused, static_cast<Qt::Key>(key), modifiers);
  Acted();
}

void Person::Type(const QString& text) {
  QWidget* const focused = QApplication::focusWidget();
  ASSERT_NE(focused, nullptr) << "nothing has the keyboard";
  // No keyboard has every letter on a key of its own.
  for (const QChar letter : text) {
    QTest::sendKeyEvent(QTest::Click, focused, Qt::Key_unknown, letter, Qt::NoModifier);
  }
  Acted();
}

void Person::Click(QWidget& widget, QPoint place) {
  ASSERT_TRUE(widget.isVisible() && widget.isEnabled()) << NameOf(widget);
  QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, place);
  Acted();
}

QChar Person::LetterOf(const QWidget& widget) {
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
    return MnemonicOf(button->text());
  }
  for (const QLabel* label : widget.window()->findChildren<QLabel*>()) {
    if (label->buddy() == &widget && label->isVisible()) return MnemonicOf(label->text());
  }
  return {};
}

void Person::GoTo(QWidget& widget) {
  ASSERT_TRUE(widget.isVisible() && widget.isEnabled()) << NameOf(widget);
  if (widget.hasFocus()) return;
  if (HasMouse()) {
    const auto* const view = qobject_cast<const QAbstractItemView*>(&widget);
    QWidget& hit = view != nullptr ? *view->viewport() : widget;
    return Click(hit, {hit.width() / 2, hit.height() - 2});
  }
  if (const QChar letter = LetterOf(widget); !letter.isNull()) {
    Key(letter.toUpper().unicode(), Qt::AltModifier);
  }
  for (int tabs = 0; tabs < kMostTabs && !widget.hasFocus(); ++tabs) Key(Qt::Key_Tab);
  EXPECT_TRUE(widget.hasFocus()) << NameOf(widget) << " cannot be reached by keyboard";
}

void Person::Fill(QLineEdit& line, const QString& text) {
  GoTo(line);
  ASSERT_FALSE(line.isReadOnly()) << NameOf(line);
  if (!line.text().isEmpty() && line.selectedText() != line.text())
    Key(Qt::Key_A, Qt::ControlModifier);
  Type(text);
  EXPECT_EQ(line.text(), text);
}

void Person::Press(QAbstractButton& button) {
  ASSERT_TRUE(button.isVisible() && button.isEnabled()) << NameOf(button);
  if (HasMouse()) {
    // A box reacts where its mark and its text are.
    constexpr int kInsideMark = 8;
    const bool is_box = qobject_cast<QCheckBox*>(&button) != nullptr;
    return Click(button, {is_box ? kInsideMark : button.width() / 2, button.height() / 2});
  }
  if (const QChar letter = LetterOf(button); !letter.isNull()) {
    Key(letter.toUpper().unicode(), Qt::AltModifier);
    // It stays down for a moment, and does what it is for when it comes up.
    const QPointer<QAbstractButton> pressed(&button);
    EXPECT_TRUE(QTest::qWaitFor([&pressed] { return !pressed || !pressed->isDown(); }, kPatience));
    return;
  }
  GoTo(button);
  Key(Qt::Key_Space);
}

void Person::Choose(QAbstractItemView& rows, const QString& text) {
  const QModelIndexList found =
      rows.model()->match(rows.model()->index(0, 0, rows.rootIndex()), Qt::DisplayRole, text, 1,
                          Qt::MatchStartsWith | Qt::MatchRecursive);
  ASSERT_FALSE(found.isEmpty()) << "no row begins with " << ToUtf8(text);
  if (HasMouse()) {
    rows.scrollTo(found.first());
    Click(*rows.viewport(), rows.visualRect(found.first()).center());
  } else {
    GoTo(rows);
    const auto is_there = [&] { return rows.currentIndex().siblingAtColumn(0) == found.first(); };
    if (!is_there()) Key(Qt::Key_Home);
    for (int row = 0; row < kMostRows && !is_there(); ++row) Key(Qt::Key_Down);
    if (!rows.selectionModel()->isSelected(rows.currentIndex())) Key(Qt::Key_Space);
  }
  EXPECT_EQ(rows.currentIndex().siblingAtColumn(0), found.first()) << ToUtf8(text);
}

void Person::DoubleClickOr(QAbstractItemView& rows, const QString& text, Qt::Key key) {
  Choose(rows, text);
  if (!HasMouse()) return Key(key);
  const QPoint place = rows.visualRect(rows.currentIndex()).center();
  QTest::mouseDClick(rows.viewport(), Qt::LeftButton, Qt::NoModifier, place);
  QCoreApplication::processEvents();
}

void Person::Command(QMainWindow& window, const QStringList& way) {
  QAction* opener = ActionOf(*window.menuBar(), way.first());
  ASSERT_NE(opener, nullptr) << ToUtf8(way.first());
  QAction* command = opener;
  for (const QString& text : way.mid(1)) {
    command = ActionOf(*command->menu(), text);
    ASSERT_NE(command, nullptr) << ToUtf8(text);
  }
  ASSERT_TRUE(command->isEnabled()) << ToUtf8(way.last());
  if (!HasMouse() && !command->shortcut().isEmpty()) {
    const QKeyCombination keys = command->shortcut()[0];
    return Key(keys.key(), keys.keyboardModifiers());
  }
  if (HasMouse()) {
    Click(*window.menuBar(), window.menuBar()->actionGeometry(opener).center());
  } else {
    Key(MnemonicOf(way.first()).unicode(), Qt::AltModifier);
  }
  QMenu* menu = opener->menu();
  for (const QString& text : way.mid(1)) {
    EXPECT_TRUE(QTest::qWaitFor([menu] { return menu->isVisible(); }, kPatience)) << ToUtf8(text);
    QAction* const next = ActionOf(*menu, text);
    if (HasMouse()) {
      Click(*menu, menu->actionGeometry(next).center());
    } else {
      Key(MnemonicOf(text).unicode());
    }
    menu = next->menu();
  }
}

}  // namespace pelora::test
