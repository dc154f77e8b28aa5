// SPDX-License-Identifier: Apache-2.0
#include "server/registration_script.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "directory/ascii_case.h"
#include "server/script_tokens.h"

namespace pelora {
namespace {

using Kind = ScriptToken::Kind;

constexpr std::size_t kDeepestNesting = 16;
constexpr std::size_t kLongestKeyName = 255;
constexpr auto kRoots = std::to_array<std::string_view>({"HKCR", "HKEY_CLASSES_ROOT"});
/// What stands directly below the classes root and is not one component's to remove.
constexpr auto kSharedKeys = std::to_array<std::string_view>(
    {"*", "AppID", "CLSID", "Component Categories", "Directory", "Interface", "Local Settings",
     "Mime", "Protocols", "TypeLib"});

template <class Names>
bool Holds(const Names& names, std::string_view name) {
  return std::ranges::any_of(
      names, [&](std::string_view known) { return EqualsWithoutCase(known, name); });
}

bool IsForbiddenInKeyName(char letter) {
  return letter == '\\' || static_cast<unsigned char>(letter) < 0x20;
}

/// Goes down the script's form. After a failure the tokens say that the script has ended, which
/// ends every loop here.
class Reader {
 public:
  Reader(std::string_view script, const ScriptReplacements& replacements)
      : tokens_(script), replacements_(replacements) {}

  ReadScriptResult Read() {
    if (!tokens_.NextIs(Kind::kWord) || !Holds(kRoots, tokens_.Next().text)) {
      tokens_.Fail("the root is not HKCR");
    }
    tokens_.Take();
    Expect(Kind::kOpen, "'{' is missing");
    ScriptKey root;
    ReadBody(root, 0);
    if (!tokens_.NextIs(Kind::kEnd)) tokens_.Fail("something follows the last '}'");
    CheckTopLevel(root.keys);
    if (tokens_.HasFailed()) return {std::nullopt, tokens_.error()};
    return {std::move(root.keys), {}};
  }

 private:
  void Expect(Kind kind, std::string_view otherwise) {
    if (!tokens_.NextIs(kind)) tokens_.Fail(otherwise);
    tokens_.Take();
  }

  /// Up to the closing brace and over it.
  void ReadBody(ScriptKey& key, std::size_t depth) {
    while (!tokens_.NextIs(Kind::kClose) && !tokens_.NextIs(Kind::kEnd)) {
      if (tokens_.NextIsWord("val")) {
        tokens_.Take();
        std::string name = ReadText("a value has no name");
        key.values.push_back({std::move(name), ReadValue()});
      } else {
        key.keys.push_back(ReadKey(depth + 1));
      }
    }
    Expect(Kind::kClose, "'}' is missing");
  }

  ScriptKey ReadKey(std::size_t depth) {
    if (depth > kDeepestNesting) tokens_.Fail("keys are nested too deep");
    ScriptKey key;
    key.no_remove = tokens_.NextIsWord("NoRemove");
    key.force_remove = tokens_.NextIsWord("ForceRemove");
    if (key.no_remove || key.force_remove) tokens_.Take();
    key.name = ReadText("a key has no name");
    CheckKeyName(key.name);
    if (tokens_.NextIs(Kind::kEquals)) key.values.push_back({std::nullopt, ReadValue()});
    if (tokens_.NextIs(Kind::kOpen)) {
      tokens_.Take();
      ReadBody(key, depth);
    }
    return key;
  }

  std::string ReadValue() {
    Expect(Kind::kEquals, "'=' is missing");
    if (!tokens_.NextIsWord("s")) tokens_.Fail("a value is not a string");
    tokens_.Take();
    return ReadText("a value has no text");
  }

  std::string ReadText(std::string_view otherwise) {
    if (!tokens_.NextIs(Kind::kWord) && !tokens_.NextIs(Kind::kQuoted)) tokens_.Fail(otherwise);
    return Replace(tokens_.Take().text);
  }

  std::string Replace(std::string_view text) {
    std::string replaced;
    while (true) {
      const std::size_t begin = text.find('%');
      replaced += text.substr(0, begin);
      if (begin == std::string_view::npos) return replaced;
      const std::size_t end = text.find('%', begin + 1);
      if (end == std::string_view::npos) {
        tokens_.Fail("a '%' stands alone");
        return replaced;
      }
      replaced += Replacement(text.substr(begin + 1, end - begin - 1));
      text.remove_prefix(end + 1);
    }
  }

  std::string Replacement(std::string_view name) {
    if (name.empty()) return "%";
    const auto found = std::ranges::find_if(
        replacements_, [&](const auto& known) { return EqualsWithoutCase(known.first, name); });
    if (found != replacements_.end()) return found->second;
    tokens_.Fail("nothing is known to stand for %" + std::string(name) + "%");
    return {};
  }

  void CheckKeyName(std::string_view name) {
    if (name.empty()) tokens_.Fail("a key name is empty");
    if (name.size() > kLongestKeyName) tokens_.Fail("a key name is too long");
    if (std::ranges::any_of(name, IsForbiddenInKeyName)) {
      tokens_.Fail("a key name contains a character that it must not");
    }
  }

  void CheckTopLevel(const std::vector<ScriptKey>& keys) {
    for (const ScriptKey& key : keys) {
      if (key.no_remove || !Holds(kSharedKeys, key.name)) continue;
      tokens_.Fail("the shared key " + key.name + " would be removed");
    }
  }

  ScriptTokens tokens_;
  const ScriptReplacements& replacements_;
};

}  // namespace

ReadScriptResult ReadRegistrationScript(std::string_view script,
                                        const ScriptReplacements& replacements) {
  return Reader(script, replacements).Read();
}

}  // namespace pelora
