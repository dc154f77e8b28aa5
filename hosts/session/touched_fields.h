// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/dialog.h"
#include "platform/field_rows.h"

namespace pelora::session {

/// Which fields of a page a person has touched: those whose controls have reported something, or
/// show something else than they did. Pages stage some attributes on every apply, touched or not;
/// by this a host leaves out what nobody touched.
///
/// Looked at are fields whose control shows their whole value: boxes, numbers, texts, names of
/// servers and drop-down lists. Of all others every staging counts as wanted.
class TouchedFields {
 public:
  /// The page's fields, before the first is looked at.
  void Watch(std::vector<FieldRow> fields);

  /// The dialog has been filled: from now on what it shows is what nobody touched.
  void Settle(IDialog& dialog);
  /// A control has reported something.
  void Touch(ControlId control);
  /// Looks which fields show something else.
  ///
  /// Once touched, a field stays so, though it be set back: what it was set to may be written
  /// already, or pending, and an empty field may stand for several objects' differing values.
  void Look(IDialog& dialog);

  /// Whether what a page stages of an attribute is wanted.
  [[nodiscard]] bool IsWanted(std::string_view attribute) const;

 private:
  struct Field {
    FieldRow row;
    std::string shown;
    bool is_touched = false;
  };

  /// Fields that are looked at.
  std::vector<Field> fields_;
  /// Attributes of fields that are not.
  std::vector<std::string> always_;
};

}  // namespace pelora::session
