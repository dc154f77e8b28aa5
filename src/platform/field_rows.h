// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ads.h"
#include "platform/dialog.h"
#include "platform/unknown.h"

namespace pelora {

/// What a field holds and how its control is operated.
enum class FieldKind : std::uint8_t {
  /// A check box; 1 or 0.
  kFlag,
  /// An edit control for an unsigned 32-bit number.
  kNumber,
  /// An edit control for a text.
  kText,
  /// The distinguished name of one object, which is chosen with `FieldRow::choose`.
  kName,
  /// The `cn` of one computer, which is chosen with `FieldRow::choose`.
  kServer,
  /// The default entry of a list of texts: the attribute of its own beside that of the others.
  kDefaultEntry,
  /// A list of texts that are typed in a dialog of their own.
  kList,
  /// A list of distinguished names, which are chosen with `FieldRow::choose`.
  kNameList,
  /// One of the texts in `FieldRow::choices`, selected in a drop-down list or by buttons.
  kChoice,
};

/// One field of a page: what a person sees as one thing with a label and a value.
struct FieldRow {
  /// How scripts name it: the attribute that it edits, or a word of its own where it edits several.
  std::string name;
  FieldKind kind = FieldKind::kText;
  /// The control that shows the value.
  ControlId control = 0;
  /// The static text that names the field; 0: the control's own text.
  ControlId label = 0;
  /// LDAP display names of every attribute that an edit of the field writes, the one that gives the
  /// field its value first.
  std::vector<std::string_view> attributes{};
  /// It is shown and never written.
  bool is_read_only = false;
  /// The button that opens a chooser or, for a list, adds to it; 0 where there is none.
  ControlId choose = 0;
  /// Where the control is a list view with a row for each of several fields: the text of this
  /// field's row; empty elsewhere. The buttons act on the selected row then.
  std::string_view entry{};
  /// For lists: the buttons for the selected value; 0 where there is none.
  ControlId remove = 0;
  ControlId make_default = 0;
  /// `kChoice`: every text, in the order of the control.
  std::vector<std::string_view> choices{};
  /// `kChoice` by buttons: the button of each choice, 0 for one that cannot be chosen; empty where
  /// the control itself is chosen from.
  std::vector<ControlId> choice_buttons{};
  /// `kChoice`: the choice that an object stands for, or none, as the page itself works it out.
  std::function<std::optional<std::size_t>(IADs& object)> choice_of{};
};

/// Offered by components that have fields: what their pages show and edit, in the order of loading.
/// The rows live as long as the component and need no dialog.
class IFieldRows : public IUnknown {
 public:
  static constexpr Guid kIid = IID_IFieldRows;

  [[nodiscard]] virtual std::vector<FieldRow> Fields() const = 0;

 protected:
  ~IFieldRows() = default;
};

}  // namespace pelora
