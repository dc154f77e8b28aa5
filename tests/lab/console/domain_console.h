// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QMessageBox>
#include <QTest>
#include <QTreeView>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "tests/lab/lab.h"
#include "tests/ui/console_test.h"

namespace pelora::test {

/// The console's window, and the person in front of it who connects to the lab's domain.
class DomainConsole : public ConsoleTest {
 protected:
  /// In milliseconds, for what has to come.
  static constexpr int kPatience = 60000;

  DomainConsole() : window_(std::make_unique<console::MainWindow>(module())) { window_->show(); }

  /// Connects and waits until the domain is shown.
  void Connect(const std::string& server = lab::Server()) {
    bool shown = false;
    window_->OpenServerBesides(console::ToQString(server), [&shown] { shown = true; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown; }, kPatience));
    Settle();
  }
  void Settle() {
    QCoreApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->IsReading(); }, kPatience));
  }
  [[nodiscard]] QTreeView& list() {
    return *window_->findChild<QTreeView*>(QStringLiteral("object_list"));
  }
  [[nodiscard]] std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (int row = 0; row < list().model()->rowCount(); ++row) {
      names.push_back(console::ToUtf8(list().model()->index(row, 0).data().toString()));
    }
    return names;
  }
  void DoubleClick(const char* name) {
    BeginDoubleClick(name);
    Settle();
  }
  /// Waits for nothing that follows.
  void BeginDoubleClick(const char* name) {
    const auto rows = list().model()->match(list().model()->index(0, 0), Qt::DisplayRole,
                                            QString::fromUtf8(name), 1, Qt::MatchExactly);
    ASSERT_FALSE(rows.isEmpty()) << name;
    list().scrollTo(rows.first());
    const QPoint place = list().visualRect(rows.first()).center();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, place);
  }
  [[nodiscard]] QList<console::QtPropertySheet*> Sheets() { return window_->sheets().Open(); }
  void Trigger(const char* text) {
    for (QAction* action : window_->findChildren<QAction*>()) {
      if (action->text() == QString::fromLatin1(text)) action->trigger();
    }
  }
  void Refresh() { Trigger("&Refresh"); }
  /// Waits for the next message, closes it and gives its text.
  [[nodiscard]] std::string NextMessage() {
    QCoreApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !told_.empty(); }, kPatience));
    return std::exchange(told_, {});
  }
  void ExpectMessage() {
    modal_scripts().Add([this](QWidget& box) {
      told_ = console::ToUtf8(qobject_cast<QMessageBox*>(&box)->text()) + " " +
              console::ToUtf8(qobject_cast<QMessageBox*>(&box)->informativeText());
      box.close();
    });
  }
  [[nodiscard]] console::MainWindow& window() { return *window_; }
  /// Closes the window and ends it, as the program does at its end.
  void EndWindow() {
    EXPECT_TRUE(window_->close());
    window_.reset();
  }

 private:
  std::string told_;
  std::unique_ptr<console::MainWindow> window_;
};

}  // namespace pelora::test
