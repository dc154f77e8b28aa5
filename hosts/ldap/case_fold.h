// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pelora::ldap {

/// `text` (UTF-8) with every letter in upper case, one character for one, whatever the process's
/// locale: how the embedded directory compares names and values.
///
/// The pairs of letters are those that Samba's ldb tools fold. They are part of the file format: an
/// object is filed under its folded name, and the tools find it only under the same.
[[nodiscard]] std::string FoldCase(std::string_view text);

}  // namespace pelora::ldap
