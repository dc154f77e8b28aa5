// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/dialog_controller.h"

namespace pelora::sheets {

/// Hands everything on to another controller, which outlives it: the base of those that look on.
class ForwardingController : public IDialogController {
 public:
  explicit ForwardingController(IDialogController& inner) : inner_(inner) {}

  std::int32_t OnInitDialog(IDialog& dialog) override { return inner_.OnInitDialog(dialog); }
  std::int32_t OnCommand(ControlId id, ControlNotification notification) override {
    return inner_.OnCommand(id, notification);
  }
  void OnListViewItemChanged(ControlId id, const ListViewItemChange& change) override {
    inner_.OnListViewItemChanged(id, change);
  }
  void OnListViewDoubleClick(ControlId id, RowIndex row) override {
    inner_.OnListViewDoubleClick(id, row);
  }
  [[nodiscard]] TextRole ListViewTextRole(ControlId id, RowIndex row,
                                          std::size_t column) const override {
    return inner_.ListViewTextRole(id, row, column);
  }
  std::int32_t OnPageNotification(PageNotification notification) override {
    return inner_.OnPageNotification(notification);
  }
  void OnDestroy() override { inner_.OnDestroy(); }

 protected:
  [[nodiscard]] IDialogController& inner() const { return inner_; }

 private:
  IDialogController& inner_;
};

}  // namespace pelora::sheets
