// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"

namespace pelora::session {

/// An address as a pattern that stands for another text with each object:
///
/// | in the pattern | stands for |
/// |--|--|
/// | `{logon}` | the logon name (`sAMAccountName`) |
/// | `{first}`, `{last}` | first name (`givenName`) and last name (`sn`) |
/// | `{name}` | the object's name (`cn`) |
/// | `*` | any text, once; only where addresses are looked for, and in what replaces them |
///
/// Names are put into letters of ASCII (`InAsciiLetters`); the rest stands as it is.
class AddressPattern {
 public:
  /// What the names of objects are read from.
  [[nodiscard]] static std::vector<std::string> Attributes();

  explicit AddressPattern(std::string text) : text_(std::move(text)) {}

  [[nodiscard]] bool IsEmpty() const { return text_.empty(); }
  /// Why it is no pattern, as a sentence; empty when it is one. `*` is asked for where it is taken.
  [[nodiscard]] std::string WhyWrong(bool takes_star) const;

  /// What the pattern stands for with an object.
  struct Made {
    std::string text;
    /// Why it stands for nothing, as a sentence: "It has no first name." Empty when it does.
    std::string missing;
  };
  /// `star` is what `*` stands for.
  [[nodiscard]] Made For(const ldap::Entry& entry, std::string_view star = "*") const;

  /// What the `*` stands for in an address that the pattern fits with an object, in whatever case;
  /// empty without `*`. None when it does not fit.
  [[nodiscard]] std::optional<std::string> Match(const ldap::Entry& entry,
                                                 std::string_view address) const;

 private:
  std::string text_;
};

}  // namespace pelora::session
