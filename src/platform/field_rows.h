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

/// The dialog of its own in which the texts of a list are typed. Its buttons end it with OK and
/// Cancel as every dialog's do.
struct TextDialog {
  /// 0: there is none.
  DialogId dialog = 0;
  /// Where a text is typed.
  ControlId text = 0;
  /// Where the dialog holds the whole list: its list box, the button that adds the typed text and
  /// the one that takes the selected row out. 0 where it takes one text and OK adds that.
  ControlId list = 0;
  ControlId add = 0;
  ControlId remove = 0;
};

/// One field of a page: what a person sees as one thing with a label and a value.
struct FieldRow {
  /// How scripts name it: the attribute that it edits, or a word of its own where it edits several.
  std::string name;
  FieldKind kind = FieldKind::kText;
  /// The control that shows the value.
  ControlId control = 0;
  /// The static text or group box that names the field. 0: a check box has its own text, a row of a
  /// list view its entry, and another control the static text that stands right before it in the
  /// template, unless there is a `title`.
  ControlId label = 0;
  /// What the field is called where its page says it nowhere; empty elsewhere.
  std::string_view title{};
  /// LDAP display names of every attribute that an edit of the field writes, the one that gives the
  /// field its value first.
  std::vector<std::string_view> attributes{};
  /// What is said of an object that lacks it; empty where it may be empty.
  std::string_view missing{};
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
  /// For lists whose texts are typed: where that is done.
  TextDialog typed_in{};
  /// For lists with `make_default`, whose rules may leave several values marked as the default one:
  /// leaves the mark to a row that has it alone, while there is a dialog.
  std::function<void(RowIndex row)> keep_default{};
  /// `kChoice`: every text, in the order of the control.
  std::vector<std::string_view> choices{};
  /// `kChoice` by buttons: the button of each choice, 0 for one that cannot be chosen; empty where
  /// the control itself is chosen from.
  std::vector<ControlId> choice_buttons{};
  /// `kChoice`: the choice that an object stands for, or none, as the page itself works it out.
  std::function<std::optional<std::size_t>(IADs& object)> choice_of{};
  /// For what its control does not hold whole, lists and rows of a list view: takes down what the
  /// field holds now, edited or not, while there is a dialog. What it gives puts that back, for the
  /// page and to be seen, as long as the dialog stands. None elsewhere.
  std::function<std::function<void()>()> take_down{};
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
