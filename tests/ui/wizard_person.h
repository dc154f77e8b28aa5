// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractButton>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <string>
#include <vector>

#include "hosts/console/new_object/new_object_wizard.h"
#include "hosts/session/distinguished_name.h"
#include "resources/resource.h"
#include "tests/ui/window_test.h"

namespace pelora::test {

/// A person in front of a wizard.
class Wizard {
 public:
  explicit Wizard(QWidget& window) : wizard_(dynamic_cast<console::QtNewObjectWizard&>(window)) {}

  void Write(const char* field, const char* text) {
    auto& edit = *wizard_.findChild<QLineEdit*>(QLatin1String(field));
    edit.selectAll();
    for (const QChar character : QString::fromUtf8(text)) {
      QTest::sendKeyEvent(QTest::Click, &edit, Qt::Key_unknown, character, Qt::NoModifier);
    }
  }
  [[nodiscard]] std::string Field(const char* field) const {
    return console::ToUtf8(wizard_.findChild<QLineEdit*>(QLatin1String(field))->text());
  }
  void ClickOwn(const char* button) {
    wizard_.findChild<QAbstractButton*>(QLatin1String(button))->click();
  }
  [[nodiscard]] console::QtDialog& page() { return *wizard_.Dialog(wizard_.CurrentPage()); }
  void TypeAddress(const char* text) {
    auto& edit = dynamic_cast<QLineEdit&>(page().Find(IDC_NEW_ADDRESS)->widget());
    edit.selectAll();
    text[0] == '\0' ? QTest::keyClick(&edit, Qt::Key_Delete)
                    : QTest::keyClicks(&edit, QString::fromUtf8(text));
  }
  void Next() {
    EXPECT_TRUE(wizard_.next().isEnabled());
    wizard_.next().click();
  }
  void Back() { wizard_.back().click(); }
  [[nodiscard]] std::string Summary() const {
    return console::ToUtf8(
        wizard_.findChild<QPlainTextEdit*>(QStringLiteral("summary"))->toPlainText());
  }
  void Finish() {
    EXPECT_TRUE(wizard_.IsSummary());
    wizard_.finish().click();
  }
  [[nodiscard]] std::string Title() const { return console::ToUtf8(wizard_.windowTitle()); }
  console::QtNewObjectWizard& wizard() { return wizard_; }

 private:
  console::QtNewObjectWizard& wizard_;
};

/// New objects in the main window.
class NewObjectInWindow : public WindowTest {
 protected:
  void GoTo(const std::string& container) {
    pane().GoTo(container);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return pane().Container() != nullptr && pane().Container()->dn == container; },
        kPatience));
    Settle();
  }
  void Select(const std::vector<std::string>& objects) {
    GoTo(std::string(session::ParentName(objects.front())));
    pane().list().Select(objects);
    list().setFocus();
    QCoreApplication::processEvents();
  }
  static void NameUser(Wizard& wizard) {
    wizard.Write("own_first_name", "Nora");
    wizard.Write("own_last_name", "Neu");
  }
};

}  // namespace pelora::test
