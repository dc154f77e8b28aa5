// SPDX-License-Identifier: Apache-2.0
// Reads any bytes as LDIF changes; what was read is printed, and read and printed again, which has
// to give the same text, and is taken back, which has to be readable too.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/changes/ldif_changes.h"

namespace {

using pelora::changes::Change;

pelora::ldap::Schema MakeSchema() {
  using pelora::ldap::Syntax;
  pelora::ldap::Schema schema;
  schema.Add("mail", {.is_single_valued = true});
  schema.Add("mails", {});
  schema.Add("n", {.syntax = Syntax::kInteger, .is_single_valued = true});
  schema.Add("names", {.syntax = Syntax::kDistinguishedName});
  return schema;
}

std::string Print(const pelora::ldap::Schema& schema, const std::vector<Change>& changes) {
  std::string text;
  for (const Change& change : changes) text += ToLdif(schema, change);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const pelora::ldap::Schema kSchema = MakeSchema();
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  std::vector<Change> changes;
  const pelora::ldap::StoreStatus status = ReadChanges(kSchema, text, changes);
  if (!status.Ok()) {
    if (!changes.empty() || !status.text.starts_with("line ")) std::abort();
    return 0;
  }
  const std::string printed = Print(kSchema, changes);
  std::vector<Change> again;
  if (!ReadChanges(kSchema, printed, again).Ok()) std::abort();
  if (Print(kSchema, again) != printed) std::abort();

  std::vector<Change> undo;
  for (const Change& change : changes) undo.push_back(UndoOf(change));
  if (!ReadChanges(kSchema, Print(kSchema, undo), again).Ok()) std::abort();
  return 0;
}
