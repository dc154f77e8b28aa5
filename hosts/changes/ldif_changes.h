// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hosts/changes/change.h"
#include "hosts/changes/guarded_request.h"
#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/schema.h"

namespace pelora::changes {

/// A change as LDIF change records (RFC 2849), each with an empty line behind it; nothing for a
/// change of nothing. Lines are folded at 76 bytes; what is no plain printable text, names
/// included, stands in base 64.
///
/// A modification removes what was seen and adds what is wanted, one after the other within one
/// record, so that `ldapmodify` (and for a file `ldbmodify`) applies it with the same effect and
/// refuses it when a value is not what was seen. A deletion stands behind a record that changes
/// nothing but fails where a value is not as seen; both tools stop there. (That an attribute of a
/// file was not set, `ldbmodify` cannot ask for.)
///
/// For an object that gets another name or goes whatever it has become, the tools go by its name;
/// what says which object is meant stands in comments, "# only if objectGUID:: ...", that
/// `ReadChanges` reads. What the directory keeps comes back by its `objectGUID`.
///
/// With `Lists::kUntouched` such comments also say what a list holds of which all is known, a line
/// for each value and one without a value for an empty list: the tools cannot ask whether it holds
/// anything else.
[[nodiscard]] std::string ToLdif(const ldap::Schema& schema, const Change& change,
                                 Lists lists = Lists::kMerged);

/// Reads changes back, in the text's order. `schema` says which attributes are lists.
///
/// Every record has to carry its own guard as `ToLdif` writes it: a replacement, the removal of an
/// attribute whatever it holds, a renaming without the comments, and anything that is no LDIF are
/// refused (80) with the line; `changes` is empty then. `first_line` is the number of the text's
/// first line.
[[nodiscard]] ldap::StoreStatus ReadChanges(const ldap::Schema& schema, std::string_view text,
                                            std::vector<Change>& changes,
                                            std::size_t first_line = 1);

}  // namespace pelora::changes
