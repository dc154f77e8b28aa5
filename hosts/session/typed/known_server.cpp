// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/typed/known_server.h"

#include <string>

#include "hosts/ldap/entry_values.h"
#include "hosts/session/search_filter.h"
#include "hosts/session/typed/typed_number.h"

namespace pelora::session {

Judgement JudgeServer(ldap::IDirectoryStore& store, std::string_view name) {
  ldap::Entry root;
  if (name.empty() || !store.ReadRoot(root).Ok()) return {};
  bool is_there = false;
  bool is_server = false;
  const ldap::StoreStatus status = store.Search(
      {.base = ldap::FirstValue(root, "defaultNamingContext"),
       .scope = ldap::SearchScope::kSubtree,
       .filter = "(&(objectClass=computer)(cn=" + EscapeFilterValue(name) + "))",
       .attributes = {"peloraAccount"}},
      [&](const ldap::Entry& entry) {
        is_there = true;
        is_server = NumberOfDigits(ldap::FirstValue(entry, "peloraAccount")).value_or(0) != 0;
        return !is_server;
      });
  if (!status.Ok() || is_server) return {};
  const std::string server(name);
  return {.verdict = Verdict::kOdd,
          .sentence = is_there ? server + " is a computer, but no Pelora server."
                               : "There is no server of the name " + server + "."};
}

}  // namespace pelora::session
