// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldif_reader.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_api.h"
#include "hosts/ldap/ldb_message.h"
#include "hosts/ldap/ldif_lines.h"

namespace pelora::ldap {
namespace {

StoreStatus Refuse(std::size_t line, std::string_view reason) {
  return {kLdapOther, "line " + std::to_string(line) + ": " + std::string(reason)};
}

struct LdifFree {
  ldb_context* context;
  void operator()(ldb_ldif* entry) const { ldb_ldif_read_free(context, entry); }
};
using LdifPtr = std::unique_ptr<ldb_ldif, LdifFree>;

/// What the reader gets to see: no comments, no folding, nothing it would pass over in silence.
StoreStatus MakeText(const LdifBlock& block, std::string& text) {
  for (const std::string& line : block.lines) {
    if (!IsLdifValue(line)) return Refuse(block.line, "the entry that begins here is no LDIF");
    text += line + '\n';
  }
  text += '\n';
  return {};
}

}  // namespace

StoreStatus ReadLdif(const LdbConnection& connection, std::string_view text,
                     std::vector<LdifEntry>& entries) {
  entries.clear();
  std::vector<LdifEntry> read;
  for (const LdifBlock& block : SplitLdif(text)) {
    std::string lines;
    StoreStatus status = MakeText(block, lines);
    if (!status.Ok()) return status;
    const char* next = lines.c_str();
    const LdifPtr entry(ldb_ldif_read_string(connection.handle(), &next),
                        LdifFree{connection.handle()});
    if (entry == nullptr) return Refuse(block.line, "the entry that begins here is no LDIF");
    if (entry->changetype != LDB_CHANGETYPE_NONE && entry->changetype != LDB_CHANGETYPE_ADD) {
      return Refuse(block.line, "a change, where entries are wanted");
    }
    if (!ldb_dn_validate(entry->msg->dn) || ldb_dn_is_special(entry->msg->dn) ||
        ldb_dn_is_null(entry->msg->dn)) {
      return Refuse(block.line, "the entry's name is no distinguished name");
    }
    read.push_back({ToEntry(*entry->msg), block.line});
  }
  entries = std::move(read);
  return {};
}

}  // namespace pelora::ldap
