// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractItemModel>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QTest>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/qt_writing_desk.h"
#include "resources/resource.h"
#include "tests/support/fault_store.h"
#include "tests/ui/console_test.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {

/// The widget of that name in a window; a failure without it.
template <class Widget>
Widget& Part(const QWidget& window, const char* name) {
  auto* part = window.findChild<Widget*>(QLatin1String(name));
  if (part == nullptr) throw std::runtime_error(std::string("there is no ") + name);
  return *part;
}

/// The rows of a table, its columns between bars.
inline std::vector<std::string> RowsOf(const QTableView& table) {
  std::vector<std::string> rows;
  const QAbstractItemModel& model = *table.model();
  for (int row = 0; row < model.rowCount(); ++row) {
    std::string text;
    for (int column = 0; column < model.columnCount(); ++column) {
      text +=
          (column == 0 ? "" : "|") + console::ToUtf8(model.index(row, column).data().toString());
    }
    rows.push_back(std::move(text));
  }
  return rows;
}

/// Sheets whose writing is talked about at the console's desk.
class WritingSheet : public ConsoleTest {
 protected:
  [[nodiscard]] OpenSheet& Open(const std::vector<std::string>& names) {
    sheet_ = std::make_unique<OpenSheet>(session(), module(), Objects(names),
                                         SheetFaults{.store = &store_, .desk = &desk_});
    return *sheet_;
  }
  [[nodiscard]] pelora::testing::FaultStore& store() { return store_; }
  [[nodiscard]] console::QtWritingDesk& desk() { return desk_; }
  [[nodiscard]] bool IsHidden(const char* dn) const {
    const EntryLines lines = SearchEntry(file(), dn);
    return std::ranges::find(lines, "peloraHidden: 1") != lines.end();
  }

  /// Plays to the next window, which has this name.
  void In(const char* name, std::function<void(QWidget& window)> act) {
    modal_scripts().Add([name, act = std::move(act)](QWidget& window) {
      EXPECT_EQ(window.objectName(), QLatin1String(name));
      if (window.objectName() == QLatin1String(name)) act(window);
      window.close();
    });
  }
  void Write() {
    In("review", [](QWidget& window) { Part<QPushButton>(window, "review_write").click(); });
  }

 private:
  pelora::testing::FaultStore store_{*session().store};
  console::QtWritingDesk desk_;
  std::unique_ptr<OpenSheet> sheet_;
};

}  // namespace pelora::test
