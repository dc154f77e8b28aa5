// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "pages/command.h"
#include "pages/field_group.h"

namespace pelora {

/// Gives the rows of some of a page's fields.
using RowSource = std::function<std::vector<FieldRow>()>;

/// The dialog side of a page: which template it is made from and under which title, the dialog
/// while there is one, the table that routes what its controls report, and the rows of its fields.
class CDialogPage : public IDialogController {
 public:
  CDialogPage(DialogId dialog_template, std::string title);

  [[nodiscard]] DialogId dialog_template() const { return template_; }
  [[nodiscard]] const std::string& title() const { return title_; }
  /// None before the dialog is made and after it is gone.
  [[nodiscard]] IDialog* dialog() const { return dialog_; }
  /// The rows of every source, in the order of registration, but for those whose control the
  /// template lacks.
  [[nodiscard]] std::vector<FieldRow> Rows() const;

  /// Keeps the dialog, then lets the page fill it.
  std::int32_t OnInitDialog(IDialog& dialog) final;
  /// Notifications that the table does not name are nobody's business; the result is 0.
  std::int32_t OnCommand(ControlId id, ControlNotification notification) final;
  void OnListViewItemChanged(ControlId id, const ListViewItemChange& change) final;
  void OnListViewDoubleClick(ControlId id, RowIndex row) final;
  std::int32_t OnPageNotification(PageNotification notification) final;
  void OnDestroy() final;

 protected:
  /// Fills the controls; the result is the message's result.
  virtual std::int32_t InitDialog() = 0;
  /// Answers a notification of the sheet or wizard.
  virtual std::int32_t AnswerPage(PageNotification notification) = 0;
  /// A row of a list view has changed, or was double clicked.
  virtual void ListViewItemChanged(ControlId /*id*/, const ListViewItemChange& /*change*/) {}
  virtual void ListViewDoubleClicked(ControlId /*id*/, RowIndex /*row*/) {}
  /// An exception has been stopped on its way out to the host; `status` says what it was.
  virtual void ReportException(HRESULT status) = 0;

  /// Takes the fields of a group into the page: registers its handlers with `core` in the order
  /// load, collect, skip-validation, validate, routes its commands and asks it for its rows. The
  /// order in which groups are added is the order of loading, validation and writing. The group
  /// lives as long as both.
  template <FieldGroup Group>
  void AddGroup(CADSBase& core, Group& group) {
    core.RegisterLoad([&group](const BoundObjects& objects) { return group.Load(objects); });
    core.RegisterCollect([&group](ChangeList& changes) { return group.Collect(changes); });
    if constexpr (SkipsValidation<Group>) {
      core.RegisterSkipValidation([&group] { return group.SkipValidation(); });
    }
    if constexpr (Validates<Group>) {
      core.RegisterValidate([&group](std::string* message) { return group.Validate(message); });
    }
    Route(group.Commands());
    RegisterRows([&group] { return group.Rows(); });
  }

  /// Appends rows to the command table, but for those of controls that the template lacks.
  void Route(std::vector<Command> commands);
  void RegisterRows(RowSource rows);
  /// Names, before anything is routed, the controls of the page's field groups that its template
  /// does not have: their fields are neither shown nor edited here. The names outlive the page.
  void SetLackingControls(std::span<const ControlId> controls) { lacking_controls_ = controls; }

 private:
  [[nodiscard]] bool Lacks(ControlId control) const;
  /// Runs `action`; an exception is reported and gives `on_exception`.
  std::int32_t Guarded(std::int32_t on_exception, const std::function<std::int32_t()>& action);

  DialogId template_;
  std::string title_;
  IDialog* dialog_ = nullptr;
  std::vector<Command> commands_;
  std::vector<RowSource> row_sources_;
  std::span<const ControlId> lacking_controls_;
};

}  // namespace pelora
