// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/paged_search.h"

#include <string>
#include <utility>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/entries_answer.h"
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

/// A search under way, over all of its pages.
class Pages {
 public:
  Pages(LdapConnection& connection, const EntrySink& sink, std::size_t& count)
      : connection_(connection), sink_(sink), count_(count) {}

  /// Hands over one page; `mark` says where it begins, and then where the next one does. `goes_on`
  /// becomes false when no more entries are wanted.
  StoreStatus Take(const SearchRequest& request, std::string& mark, bool& goes_on) {
    const AnswerLimits& limits = connection_.limits();
    if (++pages_ > limits.most_parts) {
      return TooMuch("after " + std::to_string(limits.most_parts) + " pages");
    }
    PendingRequest page;
    StoreStatus status = Send(request, mark, page);
    if (!status.Ok()) return status;
    const auto take = [&](Entry entry, bool& is_wanted) {
      StoreStatus handed = HandOver(std::move(entry), is_wanted);
      goes_on = is_wanted;
      return handed;
    };
    StoreStatus outcome;
    status = TakeEntries(connection_, page, take, outcome, &mark);
    return status.Ok() ? outcome : status;
  }

 private:
  StoreStatus Send(const SearchRequest& request, const std::string& mark, PendingRequest& page) {
    const LdapControlPtr control = MakePageControl(connection_.handle(), mark);
    if (control == nullptr) return {kLdapLocalError, "the LDAP library cannot ask for pages"};
    LdapConnection::RequestId id = 0;
    StoreStatus status = connection_.SendSearch(request, control.get(), id);
    if (status.Ok()) page = PendingRequest(connection_, id);
    return status;
  }

  StoreStatus HandOver(Entry entry, bool& goes_on) {
    StoreStatus status = EntryReader(connection_).Complete(entry);
    if (!status.Ok()) return status;
    bytes_ += SizeOf(entry);
    const std::size_t most = connection_.limits().most_bytes;
    if (bytes_ > most) return TooMuch("after " + std::to_string(most) + " bytes");
    ++count_;
    goes_on = sink_(std::move(entry));
    return {};
  }

  [[nodiscard]] StoreStatus TooMuch(const std::string& when) const {
    return {kLdapSizeLimitExceeded, "the search on the server '" + connection_.server().Text() +
                                        "' finds no end: given up " + when};
  }

  LdapConnection& connection_;
  const EntrySink& sink_;
  std::size_t& count_;
  std::size_t pages_ = 0;
  std::size_t bytes_ = 0;
};

}  // namespace

StoreStatus SearchInPages(LdapConnection& connection, const SearchRequest& request,
                          const EntrySink& sink, std::size_t& count) {
  Pages pages(connection, sink, count);
  std::string mark;
  bool goes_on = true;
  do {
    StoreStatus status = pages.Take(request, mark, goes_on);
    if (!status.Ok()) return status;
  } while (goes_on && !mark.empty());
  return {};
}

}  // namespace pelora::ldap
