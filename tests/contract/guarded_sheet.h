// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "hosts/headless/headless_component_library.h"
#include "hosts/headless/headless_message_box.h"
#include "hosts/headless/headless_modal_dialogs.h"
#include "hosts/headless/headless_property_sheet.h"
#include "hosts/headless/headless_text_service.h"
#include "hosts/ldap/store_directory_service.h"
#include "hosts/session/guarded_tabs.h"
#include "resources/resource.h"
#include "tests/support/fake_choosers.h"

namespace pelora::contract {

/// The property sheet of some objects, guarded, in memory, with the administrator in front of it.
class GuardedSheet {
 public:
  using Lines = std::vector<std::string>;

  GuardedSheet(ldap::IDirectoryStore& store, const Lines& names)
      : directory_(store), tabs_({.store = store, .platform = platform_, .templates = templates_}) {
    std::vector<session::DirectoryObject> objects(names.size());
    const session::DirectoryBrowser browser(store);
    for (std::size_t i = 0; i < names.size(); ++i) {
      EXPECT_TRUE(browser.ReadObject(names[i], objects[i]).Ok()) << names[i];
    }
    const session::TabsOpening opening = tabs_.Open(objects, {}, sheet_.PageTaker());
    EXPECT_EQ(opening.reason + opening.missing, "");
    sheet_.machine().commit = [this] { return tabs_.Commit(); };
    sheet_.Show();
  }

  [[nodiscard]] HeadlessPropertySheet& sheet() { return sheet_; }
  [[nodiscard]] HeadlessDialog& page() { return *sheet_.Dialog(sheet_.CurrentPage()); }

  void Click(ControlId id) { EXPECT_EQ(sheet_.User().Click(id), UserAnswer::kDone) << id; }
  void Type(ControlId id, const std::string& text) {
    EXPECT_EQ(sheet_.User().EraseText(id), UserAnswer::kDone) << id;
    EXPECT_EQ(sheet_.User().TypeText(id, text), UserAnswer::kDone) << id;
  }
  void ChooseRow(ControlId id, RowIndex row) {
    EXPECT_EQ(sheet_.User().SelectComboRow(id, row), UserAnswer::kDone) << id;
  }
  /// Takes a field's value away, whatever the objects have.
  void RemoveValue(std::string_view attribute) {
    session::PageFields& fields = tabs_.Fields(sheet_.CurrentPage());
    for (std::size_t field = 0; field < fields.touched.Count(); ++field) {
      if (fields.touched.Row(field).attributes.front() != attribute) continue;
      fields.touched.RemoveValue(field, page());
      return;
    }
    ADD_FAILURE() << "there is no field " << attribute;
  }
  /// Sets a field back to what was read.
  void SetBack(std::string_view attribute) {
    session::PageFields& fields = tabs_.Fields(sheet_.CurrentPage());
    for (std::size_t field = 0; field < fields.touched.Count(); ++field) {
      if (fields.touched.Row(field).attributes.front() != attribute) continue;
      EXPECT_TRUE(fields.touched.CanSetBack(field));
      session::SetBack(fields, field);
      return;
    }
    ADD_FAILURE() << "there is no field " << attribute;
  }
  [[nodiscard]] Lines Rows(ControlId list) {
    Lines rows;
    const IListBox& box = page().ListBox(list);
    for (RowIndex row = 0; row < box.Count(); ++row) rows.push_back(box.Text(row));
    return rows;
  }
  [[nodiscard]] bool HasChangedFields() {
    return tabs_.Fields(sheet_.CurrentPage()).touched.HasChangedFields();
  }
  void AddAddress(const std::string& address) {
    dialogs_.PlayNext([address](HeadlessUser& user) {
      user.EraseText(IDC_EMAIL_ADDRESS);
      // At once, however long it is.
      user.dialog().SetText(IDC_EMAIL_ADDRESS, address);
      user.Click(static_cast<ControlId>(kDialogOk));
    });
    Click(IDC_EMAIL_ADD);
  }
  void DeleteAddress(const std::string& address) {
    SelectAddress(address);
    Click(IDC_EMAIL_DELETE);
  }
  void MakeDefault(const std::string& address) {
    SelectAddress(address);
    Click(IDC_EMAIL_DEFAULT);
  }

  /// The boxes since the last call, one text each, in which "|" stands for the end of a line.
  [[nodiscard]] Lines TakeBoxes() {
    Lines boxes;
    for (const HeadlessMessageBox::Record& record : messages_.records()) {
      std::string text;
      for (const char letter : record.message.text) {
        if (letter != '\r') text += letter == '\n' ? '|' : letter;
      }
      boxes.push_back(std::move(text));
    }
    messages_.ClearRecords();
    return boxes;
  }

 private:
  void SelectAddress(const std::string& address) {
    const IListBox& list = page().ListBox(IDC_EMAIL_LIST);
    RowIndex row = 0;
    while (row < list.Count() && list.Text(row) != address) ++row;
    EXPECT_EQ(sheet_.User().SelectListRow(IDC_EMAIL_LIST, row), UserAnswer::kDone) << address;
  }

  resources::ResourceFile templates_ =
      resources::ResourceFile::Read(resources::EmbeddedResourceBytes()).value.value();
  ldap::StoreDirectoryService directory_;
  HeadlessMessageBox messages_;
  HeadlessModalDialogs dialogs_{templates_};
  pelora::testing::FakeChoosers choosers_;
  HeadlessTextService text_;
  HeadlessComponentLibrary library_;
  Platform platform_{directory_, messages_, dialogs_, choosers_, text_, library_};
  // The tabs outlive the sheet's pages.
  session::GuardedTabs tabs_;
  HeadlessPropertySheet sheet_{templates_};
};

}  // namespace pelora::contract
