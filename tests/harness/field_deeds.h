// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/headless/headless_user.h"
#include "platform/field_rows.h"

namespace pelora::testing {

/// What somebody in front of a page does with a field, for each kind that there is.
template <class Editor, class Answer>
struct FieldDeeds {
  using Deed = Answer (Editor::*)(HeadlessUser& user, const FieldRow& row);

  Deed flag = nullptr;
  /// Typed: numbers and texts.
  Deed text = nullptr;
  /// One object that is chosen.
  Deed object = nullptr;
  Deed default_entry = nullptr;
  Deed texts = nullptr;
  Deed names = nullptr;
  /// By a drop-down list, and by buttons.
  Deed choice = nullptr;
  Deed choice_by_buttons = nullptr;

  [[nodiscard]] Deed Of(const FieldRow& row) const {
    switch (row.kind) {
      case FieldKind::kFlag:
        return flag;
      case FieldKind::kNumber:
      case FieldKind::kText:
        return text;
      case FieldKind::kName:
      case FieldKind::kServer:
        return object;
      case FieldKind::kDefaultEntry:
        return default_entry;
      case FieldKind::kList:
        return texts;
      case FieldKind::kNameList:
        return names;
      case FieldKind::kChoice:
        break;
    }
    return row.choice_buttons.empty() ? choice : choice_by_buttons;
  }
};

}  // namespace pelora::testing
