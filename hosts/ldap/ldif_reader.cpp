// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldif_reader.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_api.h"
#include "hosts/ldap/ldb_message.h"

namespace pelora::ldap {
namespace {

/// The first line at or behind `from` that is neither empty nor a comment.
std::size_t SkipToEntry(std::string_view text, std::size_t from) {
  while (from < text.size()) {
    const bool is_passed_over = text[from] == '\n' || text[from] == '\r' || text[from] == '#';
    if (!is_passed_over) return from;
    const std::size_t end = text.find('\n', from);
    if (end == std::string_view::npos) return text.size();
    from = end + 1;
  }
  return text.size();
}

StoreStatus Refuse(std::size_t line, std::string_view reason) {
  return {kLdapOther, "line " + std::to_string(line) + ": " + std::string(reason)};
}

struct LdifFree {
  ldb_context* context;
  void operator()(ldb_ldif* entry) const { ldb_ldif_read_free(context, entry); }
};
using LdifPtr = std::unique_ptr<ldb_ldif, LdifFree>;

}  // namespace

StoreStatus ReadLdif(const LdbConnection& connection, std::string_view text,
                     std::vector<LdifEntry>& entries) {
  entries.clear();
  // The reader stops at a zero; what stands behind one must not be lost without a word.
  if (text.find('\0') != std::string_view::npos) return {kLdapOther, "the text is no LDIF"};
  const std::string copy(text);
  std::vector<LdifEntry> read;
  std::size_t line = 1;
  std::size_t counted = 0;
  const char* next = copy.c_str();
  while (true) {
    const auto position = static_cast<std::size_t>(next - copy.c_str());
    const std::size_t start = SkipToEntry(copy, std::min(position, copy.size()));
    line += static_cast<std::size_t>(std::count(copy.begin() + static_cast<std::ptrdiff_t>(counted),
                                                copy.begin() + static_cast<std::ptrdiff_t>(start),
                                                '\n'));
    counted = start;
    if (start == copy.size()) break;
    next = copy.c_str() + start;

    const LdifPtr entry(ldb_ldif_read_string(connection.handle(), &next),
                        LdifFree{connection.handle()});
    if (entry == nullptr) return Refuse(line, "the entry that begins here is no LDIF");
    if (entry->changetype != LDB_CHANGETYPE_NONE && entry->changetype != LDB_CHANGETYPE_ADD) {
      return Refuse(line, "a change, where entries are wanted");
    }
    if (!ldb_dn_validate(entry->msg->dn) || ldb_dn_is_special(entry->msg->dn) ||
        ldb_dn_is_null(entry->msg->dn)) {
      return Refuse(line, "the entry's name is no distinguished name");
    }
    read.push_back({ToEntry(*entry->msg), line});
  }
  entries = std::move(read);
  return {};
}

}  // namespace pelora::ldap
