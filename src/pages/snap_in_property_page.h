// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "pages/dialog_page.h"
#include "pages/prop_page.h"

namespace pelora {

/// A property tab with its dialog: joins the page's steps to what the dialog and the sheet report.
/// A concrete tab adds its field groups, its hide list and its command table.
class CSnapInPropertyPage : public CPropPage, public CDialogPage {
 public:
  CSnapInPropertyPage(const Platform& platform, const Guid& bind_interface,
                      std::span<const ControlId> multi_select_hide_list, DialogId dialog_template,
                      std::string title);

  /// Not while the page loads: filling a control is no edit.
  void SetModified(bool modified) final;
  [[nodiscard]] IDialog* OwnerWindow() const final { return dialog(); }

  /// Hands the host one page, which holds a reference to this component until it is destroyed.
  /// `S_OK` whatever the host answers.
  HRESULT AddPages(const AddPropSheetPage& add_page) final;
  [[nodiscard]] std::vector<FieldRow> Fields() const final { return Rows(); }

 protected:
  ~CSnapInPropertyPage() override = default;

  /// Takes the fields of a group, a member of the page, into it (see `AddGroup`).
  template <FieldGroup Group>
  void Add(Group& group) {
    AddGroup(*this, group);
  }

  std::int32_t InitDialog() final;
  /// Applies when asked to; nothing else keeps the administrator on the page.
  std::int32_t AnswerPage(PageNotification notification) final;
  void ReportException(HRESULT status) final;
};

}  // namespace pelora
