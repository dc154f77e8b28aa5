// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace pelora::ctl {

// Settings as a text that a person edits: objects, each a line with its distinguished name, and
// under it a line for each value, `FIELD: VALUE`, with the field's label in a comment before it. A
// list has a line for each value, and one without a value when it is empty. A value that is no
// plain line of text stands behind `FIELD::`, as a string of JSON. Lines that begin with `#`, and
// empty ones, say nothing.

/// One field of the text.
struct EditField {
  std::string name;
  /// For the comment.
  std::string label{};
  /// None: empty. More than one in a list.
  std::vector<std::string> values{};
  /// Where it was read (from 1).
  std::size_t line = 0;
};

/// One object of the text.
struct EditObject {
  std::string dn;
  std::vector<EditField> fields{};
  std::size_t line = 0;
};

/// What is wrong, and on which line of the text.
struct EditFault {
  std::size_t line = 0;
  std::string text;
};

/// The text of objects; its first lines say how it is used.
[[nodiscard]] std::string WriteEditText(std::span<const EditObject> objects);

/// Reads a text. The values of a field that stands on several lines of an object are put together.
/// A fault for a line that is none of the above, and for bytes that are no UTF-8.
[[nodiscard]] std::optional<EditFault> ReadEditText(std::string_view text,
                                                    std::vector<EditObject>& objects);

/// What a text says: its lines that say something.
[[nodiscard]] std::string WithoutComments(std::string_view text);

/// The text with each fault in a comment above its line; those of an earlier time are taken out.
[[nodiscard]] std::string WithFaults(std::string_view text, std::span<const EditFault> faults);

}  // namespace pelora::ctl
