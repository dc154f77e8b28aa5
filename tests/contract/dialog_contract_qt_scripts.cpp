// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/dialog_contract_qt_scripts.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include "hosts/console/text/qt_text.h"

namespace pelora::contract {
namespace {

constexpr int kPatience = 20000;
constexpr const char* kPassedOver = "passed_over";

std::string Describe(const QWidget& window) {
  const auto* box = qobject_cast<const QMessageBox*>(&window);
  const QString text = box != nullptr ? box->text() + QStringLiteral(" ") + box->informativeText()
                                      : QStringLiteral("no message");
  return console::ToUtf8(window.windowTitle() + QStringLiteral(": ") + text);
}

}  // namespace

ModalScripts::ModalScripts() { qApp->installEventFilter(this); }

ModalScripts::~ModalScripts() {
  EXPECT_TRUE(scripts_.empty()) << scripts_.size() << " modal windows did not come up";
}

bool ModalScripts::eventFilter(QObject* object, QEvent* event) {
  const auto* window = qobject_cast<QDialog*>(object);
  if (event->type() == QEvent::Show && window != nullptr && window->isModal()) {
    QTimer::singleShot(0, this, &ModalScripts::Play);
  }
  return false;
}

void ModalScripts::Play() {
  const QPointer<QWidget> window = QApplication::activeModalWidget();
  if (!window) return;
  // A window that comes up on a slow machine only is no script's, where a test says so.
  if (qApp->property(kPassedOver) == window->objectName()) return;
  if (scripts_.empty()) {
    // It says that something takes its time, which on a slow machine anything may.
    if (window->objectName() == QStringLiteral("errand")) return;
    ADD_FAILURE() << "nobody awaits this window: " << Describe(*window);
  } else {
    const ModalScript script = std::move(scripts_.front());
    scripts_.pop_front();
    script(*window);
    if (!window || !window->isVisible()) return;
    ADD_FAILURE() << "the script leaves its window standing: " << Describe(*window);
  }
  static_cast<QDialog*>(window.data())->done(0);
}

PassedOver::PassedOver(const char* name) {
  qApp->setProperty(kPassedOver, QString::fromLatin1(name));
}

PassedOver::~PassedOver() { qApp->setProperty(kPassedOver, QVariant()); }

void Activate(QWidget& window) {
  window.activateWindow();
  EXPECT_TRUE(
      QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; }, kPatience))
      << Describe(window);
}

}  // namespace pelora::contract
