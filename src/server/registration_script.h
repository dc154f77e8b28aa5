// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pelora {

/// A value that a script sets on a key: a string, under a name or (none) as the default value.
struct ScriptValue {
  std::optional<std::string> name;
  std::string text;

  friend bool operator==(const ScriptValue&, const ScriptValue&) = default;
};

/// One key of a script, replacements done.
struct ScriptKey {
  std::string name;
  /// The key is shared with others: unregistering leaves it, and what others put below it.
  bool no_remove = false;
  /// Registering begins with an empty key.
  bool force_remove = false;
  /// In the order of the script, the default value first.
  std::vector<ScriptValue> values{};
  std::vector<ScriptKey> keys{};

  friend bool operator==(const ScriptKey&, const ScriptKey&) = default;
};

/// What `%NAME%` stands for, by name. Names compare without case.
using ScriptReplacements = std::map<std::string, std::string>;

/// What was read, or why nothing was.
struct ReadScriptResult {
  /// The keys below the classes root.
  std::optional<std::vector<ScriptKey>> keys;
  /// One line for a person, with the line number; empty on success.
  std::string error;
};

/// Reads a registration script: which keys and values a component leaves in the registry.
///
///     HKCR
///     {
///         NoRemove CLSID
///         {
///             ForceRemove %CLSID% = s 'The friendly name'
///             {
///                 InprocServer32 = s '%MODULE%'
///                 {
///                     val ThreadingModel = s 'apartment'
///                 }
///             }
///         }
///     }
///
/// A name or text is a word without blanks, or stands between single quotes; a quote inside is
/// written twice. `%NAME%` is replaced, `%%` is a percent sign. A replacement is put in after the
/// script has been taken apart, so that no path or name can change its structure. The one root is
/// the classes root
/// (`HKCR`, `HKEY_CLASSES_ROOT`), the one value type is the string (`s`).
///
/// Refused are: text that does not follow the form, nesting deeper than 16, an unknown replacement,
/// a key name that is empty, longer than 255 bytes or contains `\` or a control character, and a
/// key directly below the root that belongs to the system (`CLSID`, `AppID`, ...) without
/// `NoRemove`.
[[nodiscard]] ReadScriptResult ReadRegistrationScript(std::string_view script,
                                                      const ScriptReplacements& replacements);

}  // namespace pelora
