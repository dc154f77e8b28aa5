// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "hosts/ctl/interruption.h"

namespace pelora::ctl {

/// A text in a file of its own that a person edits with the editor of the environment: `$VISUAL`,
/// else `$EDITOR`, else `vi`, run by the shell, so that it may have arguments.
///
/// The file goes when the object does, unless it is kept. A signal that ends the program before
/// that leaves it, and tells where it is.
class TextEditor {
 public:
  /// What the editor reads its keys from.
  enum class Keys : std::uint8_t {
    kStandardInput,
    /// The terminal of the program, if it has one: standard input was used up for something else.
    kTerminal,
  };

  /// Makes the file, for its owner alone. Throws `WrongUsage` when it cannot be made. What takes
  /// the signals outlives the object.
  explicit TextEditor(Interruption& interruption, Keys keys = Keys::kStandardInput);
  TextEditor(const TextEditor&) = delete;
  TextEditor& operator=(const TextEditor&) = delete;
  ~TextEditor();

  /// Lets the text be edited: what there is afterwards. Throws `WrongUsage` when the file cannot be
  /// written or read, and when the editor fails; the file is kept then.
  [[nodiscard]] std::string Edit(const std::string& text);

  /// Whether the editor reads a terminal's keys, so that a person may sit there.
  [[nodiscard]] bool HasTerminal() const;

  void Keep() { is_kept_ = true; }
  [[nodiscard]] bool IsKept() const { return is_kept_; }
  /// Whether somebody has changed a text.
  [[nodiscard]] bool HasTyped() const { return has_typed_; }
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  void Run();

  Interruption& interruption_;
  Keys keys_;
  std::string path_;
  bool is_kept_ = false;
  bool has_typed_ = false;
};

}  // namespace pelora::ctl
