// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QApplication>
#include <QLabel>
#include <QSettings>
#include <QStatusBar>
#include <QTest>
#include <QTreeView>
#include <optional>
#include <string>
#include <vector>

#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "tests/ui/console_test.h"

namespace pelora::test {

/// After so many milliseconds it is given up to wait for something that is to happen.
inline constexpr int kPatience = 20000;

/// The main window, which shows the sample company.
class WindowTest : public ConsoleTest {
 protected:
  WindowTest() {
    // What other tests have left of columns and places says nothing here.
    QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("pelora-console"),
              QStringLiteral("console"))
        .clear();
    OpenWindow();
  }

  /// Shows a new window in place of the one before.
  void OpenWindow() {
    window_.reset();
    window_.emplace(module());
    EXPECT_TRUE(window_->SetSession(session::OpenDirectoryFile(file()).session));
    window_->show();
    contract::Activate(*window_);
    Settle();
  }
  /// Waits until the window has read what it is to show.
  void Settle() {
    QCoreApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->IsReading(); }, kPatience));
  }

  [[nodiscard]] console::MainWindow& window() { return *window_; }
  [[nodiscard]] console::DirectoryPane& pane() { return window_->pane(); }
  [[nodiscard]] QTreeView& list() { return pane().list().view(); }
  /// Texts of a column of the list, as shown.
  [[nodiscard]] std::vector<std::string> Column(int column) {
    std::vector<std::string> texts;
    for (int row = 0; row < list().model()->rowCount(); ++row) {
      texts.push_back(console::ToUtf8(list().model()->index(row, column).data().toString()));
    }
    return texts;
  }
  [[nodiscard]] std::vector<std::string> Names() { return Column(0); }
  [[nodiscard]] std::string StatusTexts() {
    std::string texts;
    for (const QLabel* label : window_->statusBar()->findChildren<QLabel*>()) {
      texts += console::ToUtf8(label->text()) + "|";
    }
    return texts;
  }

 private:
  const contract::PassedOver errands_{};
  std::optional<console::MainWindow> window_;
};

}  // namespace pelora::test
