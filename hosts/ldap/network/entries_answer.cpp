// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/entries_answer.h"

#include <utility>

#include "hosts/ldap/network/ldap_answer.h"

namespace pelora::ldap {
namespace {

/// A search gives as many as it meets parts of the directory that lie elsewhere: a few.
constexpr std::size_t kMostReferences = 1000;

}  // namespace

StoreStatus TakeEntries(LdapConnection& connection, PendingRequest& request, const AnswerSink& take,
                        StoreStatus& outcome, std::string* page) {
  std::size_t references = 0;
  bool goes_on = true;
  while (goes_on) {
    LdapMessagePtr message;
    StoreStatus status = request.AwaitNext(message);
    if (!status.Ok()) return status;
    Entry entry;
    switch (ldap_msgtype(message.get())) {
      case LDAP_RES_SEARCH_ENTRY:
        status = EntryOf(connection.handle(), message.get(), entry);
        if (status.Ok()) status = take(std::move(entry), goes_on);
        break;
      case LDAP_RES_SEARCH_RESULT:
        request.Finish();
        outcome = OutcomeOf(connection.handle(), message.get(), LDAP_RES_SEARCH_RESULT, page);
        return {};
      case LDAP_RES_SEARCH_REFERENCE:
        if (++references > kMostReferences) status = Unreadable();
        break;
      default:
        status = Unreadable();
        break;
    }
    if (!status.Ok()) return status;
  }
  return {};
}

StoreStatus TakeEntries(LdapConnection& connection, PendingRequest& request, std::size_t most,
                        std::vector<Entry>& entries, StoreStatus& outcome) {
  entries.clear();
  const auto keep = [&](Entry entry, bool& /*goes_on*/) -> StoreStatus {
    if (entries.size() == most) return Unreadable();
    entries.push_back(std::move(entry));
    return {};
  };
  return TakeEntries(connection, request, keep, outcome);
}

}  // namespace pelora::ldap
