// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QLineEdit>
#include <QMainWindow>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>

namespace pelora::test {

/// What a person works with.
enum class Hand : std::uint8_t { kKeyboard, kMouse };

/// A person in front of the console who uses the keyboard alone, or the mouse and the keyboard for
/// texts only. Nothing is done but by keys and clicks, in the window that has the keyboard.
///
/// It is counted what he does. A step is one thing in one place: a line filled in, a row chosen and
/// what is done with it, a command called, a window finished together with what it asks and tells
/// before it goes. An act is one key, one click, one text typed. What cannot be reached, or is
/// grey, fails the test.
class Person {
 public:
  explicit Person(Hand hand) : hand_(hand) {}

  [[nodiscard]] Hand hand() const { return hand_; }
  [[nodiscard]] bool HasMouse() const { return hand_ == Hand::kMouse; }
  [[nodiscard]] int steps() const { return steps_; }
  [[nodiscard]] int acts() const { return acts_; }

  /// Begins a step. An act outside every step fails the test.
  void Step() { ++steps_; }

  /// Turns to a window, as the desktop does with one that comes up.
  void LookAt(QWidget& window);

  /// Presses a key where the keyboard is.
  void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  /// Types a text where the keyboard is.
  void Type(const QString& text);
  /// Puts the keyboard into a widget: by its letter, else by Tab; or by a click.
  void GoTo(QWidget& widget);
  /// Goes to a line and types over what stands there.
  void Fill(QLineEdit& line, const QString& text);
  /// Presses a button: by its letter, or by Space when the keyboard has reached it.
  void Press(QAbstractButton& button);
  /// Chooses the row that begins with a text: by the arrows, or by a click.
  void Choose(QAbstractItemView& rows, const QString& text);
  /// Chooses a row and does what it has a double click for; by keyboard, what a key does with it.
  void DoubleClick(QAbstractItemView& rows, const QString& text) {
    DoubleClickOr(rows, text, Qt::Key_Return);
  }
  void DoubleClickOr(QAbstractItemView& rows, const QString& text, Qt::Key key);
  /// Calls a command by the texts on the way through the menus, or by its key if it has one.
  void Command(QMainWindow& window, const QStringList& way);

 private:
  void Click(QWidget& widget, QPoint place);
  void Acted();
  /// The letter that leads to a widget with Alt; null when there is none.
  [[nodiscard]] static QChar LetterOf(const QWidget& widget);

  Hand hand_;
  int steps_ = 0;
  int acts_ = 0;
};

}  // namespace pelora::test
