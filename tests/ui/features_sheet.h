// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <QAccessible>
#include <QCoreApplication>
#include <QTreeWidget>
#include <memory>
#include <string>
#include <vector>

#include "resources/resource.h"
#include "tests/support/fault_store.h"
#include "tests/ui/console_test.h"
#include "tests/ui/faults_of_sight.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {

inline constexpr std::size_t kFeaturesPage = 1;
inline constexpr RowIndex kArchiverRow = 0;
inline constexpr RowIndex kImapRow = 1;
inline constexpr RowIndex kPop3Row = 2;

/// The property sheet of users of the sample company, open at the features.
class FeaturesSheet : public ConsoleTest {
 protected:
  [[nodiscard]] OpenSheet& Open(const std::vector<std::string>& names) {
    sheet_ = std::make_unique<OpenSheet>(session(), module(), Objects(names),
                                         SheetFaults{.store = &store_});
    sheet_->sheet().SelectPage(kFeaturesPage);
    QCoreApplication::processEvents();
    return *sheet_;
  }
  [[nodiscard]] console::QtDialog& Dialog() { return *sheet_->sheet().Dialog(kFeaturesPage); }
  [[nodiscard]] QWidget& Widget(ControlId id) { return Dialog().Find(id)->widget(); }
  [[nodiscard]] QTreeWidget& View() { return static_cast<QTreeWidget&>(Widget(IDC_FEATURE_LIST)); }
  [[nodiscard]] std::vector<std::string> Rows() {
    std::vector<std::string> rows;
    const IListView& list = Dialog().ListView(IDC_FEATURE_LIST);
    for (RowIndex row = 0; row < list.RowCount(); ++row) {
      rows.push_back(list.Text(row, 0) + ": " + list.Text(row, 1));
    }
    return rows;
  }
  [[nodiscard]] std::string Buttons() {
    std::string enabled;
    for (const ControlId id : {IDC_FEATURE_PROPERTIES, IDC_FEATURE_ENABLE, IDC_FEATURE_DISABLE}) {
      if (Dialog().IsEnabled(id)) enabled += (enabled.empty() ? "" : " ") + Dialog().Text(id);
    }
    return enabled.empty() ? "none" : enabled;
  }
  void ClickRow(RowIndex row, bool add = false) {
    sheet_->user().ClickListViewCell(IDC_FEATURE_LIST, row, 1, add);
  }
  void DoubleClickRow(RowIndex row) {
    sheet_->user().DoubleClickListViewCell(IDC_FEATURE_LIST, row, 1);
  }
  [[nodiscard]] std::string AccessibleName(ControlId id) {
    return QAccessible::queryAccessibleInterface(&Widget(id))
        ->text(QAccessible::Name)
        .toStdString();
  }
  [[nodiscard]] pelora::testing::FaultStore& store() { return store_; }

 private:
  pelora::testing::FaultStore store_{*session().store};
  std::unique_ptr<OpenSheet> sheet_;
};

}  // namespace pelora::test
