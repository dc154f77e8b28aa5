// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLineEdit>
#include <QTabWidget>
#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "hosts/console/text/qt_text.h"
#include "tests/support/observed_store.h"
#include "tests/ui/console_test.h"
#include "tests/ui/keep_picture.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {

/// A sheet over the sample company, at one of the pages of our own.
class OwnPages : public ConsoleTest {
 protected:
  using Lines = std::vector<std::string>;

  [[nodiscard]] OpenSheet& Open(const Lines& names, const char* tab) {
    sheet_ = std::make_unique<OpenSheet>(session(), module(), Objects(names), faults_);
    const Lines tabs = Tabs();
    const auto found = std::ranges::find(tabs, tab);
    if (found == tabs.end()) throw std::runtime_error("there is no such tab");
    page_ = static_cast<std::size_t>(found - tabs.begin());
    sheet_->sheet().SelectPage(page_);
    QCoreApplication::processEvents();
    return *sheet_;
  }
  void Close() { sheet_.reset(); }
  [[nodiscard]] Lines Tabs() const {
    Lines titles;
    const auto* tabs = sheet_->sheet().findChild<QTabWidget*>();
    for (int tab = 0; tab < tabs->count(); ++tab) {
      titles.push_back(console::ToUtf8(console::WithoutMnemonic(tabs->tabText(tab))));
    }
    return titles;
  }
  [[nodiscard]] console::QtDialog& Page() { return *sheet_->sheet().Dialog(page_); }
  template <class Widget>
  [[nodiscard]] Widget& Control(ControlId id) {
    return dynamic_cast<Widget&>(Page().Find(id)->widget());
  }
  [[nodiscard]] std::string Hint(ControlId id) {
    return console::ToUtf8(Control<QLineEdit>(id).placeholderText());
  }
  void Keep(const char* name) { KeepPicture(sheet_->sheet(), name); }
  [[nodiscard]] EntryLines Entry(const char* dn) const { return SearchEntry(file(), dn); }
  [[nodiscard]] pelora::testing::ObservedStore& store() { return store_; }
  /// What the next sheets are opened with.
  [[nodiscard]] SheetFaults& faults() { return faults_; }

 private:
  pelora::testing::ObservedStore store_{*session().store};
  SheetFaults faults_{.store = &store_};
  std::unique_ptr<OpenSheet> sheet_;
  std::size_t page_ = 0;
};

}  // namespace pelora::test
