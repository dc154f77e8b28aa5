// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/open_wizard.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <algorithm>

#include "hosts/console/text/qt_text.h"

namespace pelora::test {
namespace {

using console::ToQString;
using console::ToUtf8;

const session::NewObjectKind& KindOf(std::string_view class_name) {
  return *std::ranges::find(session::NewObjectKinds(), class_name,
                            &session::NewObjectKind::class_name);
}

template <class Widget>
Widget& FieldOf(const QWidget& window, const char* name) {
  auto* found = window.findChild<Widget*>(QLatin1String(name));
  if (found == nullptr) throw std::runtime_error(std::string("there is no field ") + name);
  return *found;
}

}  // namespace

OpenWizard::OpenWizard(session::DirectorySession& session, const resources::ResourceFile& module,
                       const char* kind, const session::DirectoryObject& container)
    : platform_(session.service, message_box_, choosers_, module),
      result_(console::MakeNewObjectWizard(KindOf(kind), container,
                                           {.store = *session.store,
                                            .specifiers = session.specifiers,
                                            .open_another = session.open_another,
                                            .find_places = session.find_places},
                                           platform_.platform(), module, nullptr)) {
  if (!result_.wizard) throw std::runtime_error(ToUtf8(result_.error));
  wizard().notes().show_object = [this](const session::DirectoryObject& object, QWidget&) {
    asked_for_.push_back(object.name);
  };
  wizard().show();
  wizard().activateWindow();
  QCoreApplication::processEvents();
  player_ = std::make_unique<contract::QtPlayer>(wizard());
}

void OpenWizard::Write(const char* field, const std::string& text) {
  auto& edit = FieldOf<QLineEdit>(wizard(), field);
  edit.setFocus();
  edit.selectAll();
  if (text.empty()) QTest::keyClick(&edit, Qt::Key_Delete);
  for (const QChar character : ToQString(text)) {
    QTest::sendKeyEvent(QTest::Click, &edit, Qt::Key_unknown, character, Qt::NoModifier);
  }
}

std::string OpenWizard::Field(const char* field) const {
  return ToUtf8(FieldOf<QLineEdit>(wizard(), field).text());
}

void OpenWizard::ClickOwn(const char* button) {
  auto& clicked = FieldOf<QAbstractButton>(wizard(), button);
  constexpr int kInsideMark = 8;
  QTest::mouseClick(&clicked, Qt::LeftButton, Qt::NoModifier, {kInsideMark, clicked.height() / 2});
}

std::string OpenWizard::Hint() const {
  return ToUtf8(FieldOf<QLabel>(wizard(), "own_hint").text());
}

std::string OpenWizard::Summary() const {
  return ToUtf8(FieldOf<QPlainTextEdit>(wizard(), "summary").toPlainText());
}

std::string OpenWizard::Said() const { return ToUtf8(wizard().foot().note().text); }

std::string OpenWizard::Offered() const { return ToUtf8(wizard().foot().note().action); }

void OpenWizard::AwaitAnswers() const {
  EXPECT_TRUE(QTest::qWaitFor([this] { return !wizard().notes().IsAsking(); }));
}

void OpenWizard::Click(QPushButton& button) {
  QTest::mouseClick(&button, Qt::LeftButton);
  QCoreApplication::processEvents();
}

}  // namespace pelora::test
