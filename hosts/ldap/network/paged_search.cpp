// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/paged_search.h"

#include <string>
#include <utility>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/entry_reader.h"
#include "hosts/ldap/network/ldap_answer.h"
#include "hosts/ldap/network/pending_request.h"

namespace pelora::ldap {
namespace {

/// What servers allow in one page.
constexpr ber_int_t kPageSize = 1000;

LdapControlPtr MakePageControl(LDAP* handle, const std::string& mark) {
  berval cookie = BorrowedValue(mark.data(), mark.size());
  LDAPControl* control = nullptr;
  constexpr char kNotCritical = 0;
  ldap_create_page_control(handle, kPageSize, &cookie, kNotCritical, &control);
  return LdapControlPtr(control);
}

/// One page under way.
class Page {
 public:
  Page(LdapConnection& connection, const EntrySink& sink, std::size_t& count)
      : connection_(connection), sink_(sink), count_(count) {}

  StoreStatus Send(const SearchRequest& request, const std::string& mark) {
    const LdapControlPtr control = MakePageControl(connection_.handle(), mark);
    if (control == nullptr) return {kLdapLocalError, "the LDAP library cannot ask for pages"};
    LdapConnection::RequestId id = 0;
    StoreStatus status = connection_.SendSearch(request, control.get(), id);
    if (status.Ok()) request_ = PendingRequest(connection_, id);
    return status;
  }

  /// Hands over the entries; `mark` says where the next page begins. `goes_on` becomes false when
  /// no more entries are wanted.
  StoreStatus Take(std::string& mark, bool& goes_on) {
    while (true) {
      LdapMessagePtr message;
      StoreStatus status = request_.AwaitNext(message);
      if (!status.Ok()) return status;
      switch (ldap_msgtype(message.get())) {
        case LDAP_RES_SEARCH_RESULT:
          request_.Finish();
          return OutcomeOf(connection_.handle(), message.get(), &mark);
        case LDAP_RES_SEARCH_ENTRY:
          status = HandOver(message.get(), goes_on);
          if (!status.Ok() || !goes_on) return status;
          break;
        default:
          break;
      }
    }
  }

 private:
  StoreStatus HandOver(LDAPMessage* message, bool& goes_on) {
    Entry entry;
    StoreStatus status = EntryOf(connection_.handle(), message, entry);
    if (status.Ok()) status = EntryReader(connection_).Complete(entry);
    if (!status.Ok()) return status;
    ++count_;
    goes_on = sink_(std::move(entry));
    return {};
  }

  LdapConnection& connection_;
  const EntrySink& sink_;
  std::size_t& count_;
  PendingRequest request_;
};

}  // namespace

StoreStatus SearchInPages(LdapConnection& connection, const SearchRequest& request,
                          const EntrySink& sink, std::size_t& count) {
  std::string mark;
  bool goes_on = true;
  do {
    Page page(connection, sink, count);
    StoreStatus status = page.Send(request, mark);
    if (status.Ok()) status = page.Take(mark, goes_on);
    if (!status.Ok()) return status;
  } while (goes_on && !mark.empty());
  return {};
}

}  // namespace pelora::ldap
