// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "platform/hresult.h"

namespace pelora::ldap {

/// What an ADsPath names.
struct AdsPath {
  /// Host, with ":port" when one is given; empty when the path names none.
  std::string server;
  /// Distinguished name as the directory writes it: a "/" stands bare. Empty for the root.
  std::string dn;
  /// The path names the directory's root entry ("rootDSE").
  bool is_root = false;

  friend bool operator==(const AdsPath&, const AdsPath&) = default;
};

/// The path of the object that the directory calls `dn`: `LDAP://[server/]DN`, with every "/" of
/// the name written `\/`.
[[nodiscard]] std::string AdsPathOf(std::string_view dn, std::string_view server = {});

/// Takes apart `LDAP://[server[:port]/]DN` and `LDAP://[server[:port]/]rootDSE`. The scheme is in
/// capitals; "rootDSE" is recognised in any case.
///
/// Anything else is `E_ADS_BAD_PATHNAME`, a name with a bare "/" and one whose parts are not all of
/// the form `attribute=value` too; `parsed` is left empty then. What the name's values hold is not
/// checked.
[[nodiscard]] HRESULT ParseAdsPath(std::string_view path, AdsPath& parsed);

}  // namespace pelora::ldap
