// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/whole_search.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/entries_answer.h"
#include "hosts/ldap/network/entry_reader.h"
#include "hosts/ldap/network/ldap_answer.h"
#include "hosts/ldap/network/pending_request.h"

namespace pelora::ldap {
namespace {

/// What servers allow in one page.
constexpr ber_int_t kPageSize = 1000;

/// What a server says when a search is too much for it at one go.
constexpr auto kTooMuchAtOnce = std::to_array<int>({
    kLdapTimeLimitExceeded,
    kLdapSizeLimitExceeded,
    kLdapAdminLimitExceeded,
});

bool IsTooMuchAtOnce(const StoreStatus& outcome) {
  return std::ranges::find(kTooMuchAtOnce, outcome.code) != kTooMuchAtOnce.end();
}

LdapControlPtr MakePageControl(LDAP* handle, const std::string& mark) {
  berval cookie = BorrowedValue(mark.data(), mark.size());
  LDAPControl* control = nullptr;
  constexpr char kNotCritical = 0;
  ldap_create_page_control(handle, kPageSize, &cookie, kNotCritical, &control);
  return LdapControlPtr(control);
}

/// Names of which hardly ever anybody asks whether one is among them: they take no more room than
/// their letters until then.
class NotedNames {
 public:
  void Add(std::string_view name) {
    letters_ += name;
    ends_.push_back(letters_.size());
  }
  /// No more is added after the first question.
  [[nodiscard]] bool Contains(const std::string& name) {
    if (sorted_.size() != ends_.size()) Sort();
    return std::ranges::binary_search(sorted_, std::string_view(name));
  }

 private:
  void Sort() {
    sorted_.clear();
    std::size_t begin = 0;
    for (const std::size_t end : ends_) {
      sorted_.push_back(std::string_view(letters_).substr(begin, end - begin));
      begin = end;
    }
    std::ranges::sort(sorted_);
  }

  std::string letters_;
  std::vector<std::size_t> ends_;
  std::vector<std::string_view> sorted_;
};

/// A search under way.
class WholeSearch {
 public:
  WholeSearch(LdapConnection& connection, const SearchRequest& request, const EntrySink& sink,
              std::size_t& count)
      : connection_(connection), request_(request), sink_(sink), count_(count) {}

  StoreStatus InOneGo() {
    is_in_one_go_ = true;
    StoreStatus outcome;
    StoreStatus status = Take(nullptr, outcome, nullptr);
    is_in_one_go_ = false;
    if (!status.Ok() || !IsTooMuchAtOnce(outcome)) return status.Ok() ? outcome : status;
    connection_.NoteThatItGivesPages();
    return InPages();
  }

  StoreStatus InPages() {
    const std::size_t most = connection_.limits().most_parts;
    std::string mark;
    std::size_t pages = 0;
    do {
      if (++pages > most) return TooMuch("after " + std::to_string(most) + " pages");
      const LdapControlPtr page = MakePageControl(connection_.handle(), mark);
      if (page == nullptr) return {kLdapLocalError, "the LDAP library cannot ask for pages"};
      StoreStatus outcome;
      StoreStatus status = Take(page.get(), outcome, &mark);
      if (!status.Ok() || !outcome.Ok()) return status.Ok() ? outcome : status;
    } while (goes_on_ && !mark.empty());
    return {};
  }

 private:
  /// Takes the answer to one request; `mark` gets where the next page begins.
  StoreStatus Take(LDAPControl* page, StoreStatus& outcome, std::string* mark) {
    LdapConnection::RequestId id = 0;
    StoreStatus status = connection_.SendSearch(request_, page, id);
    if (!status.Ok()) return status;
    PendingRequest pending(connection_, id);
    const auto take = [this](Entry entry, bool& is_wanted) {
      StoreStatus handed = HandOver(std::move(entry));
      is_wanted = goes_on_;
      return handed;
    };
    return TakeEntries(connection_, pending, take, outcome, mark);
  }

  StoreStatus HandOver(Entry entry) {
    // In pages, what came before the server had enough comes once more.
    if (!is_in_one_go_ && handed_over_.Contains(entry.dn)) return {};
    StoreStatus status = EntryReader(connection_).Complete(entry);
    if (!status.Ok()) return status;
    bytes_ += SizeOf(entry);
    const std::size_t most = connection_.limits().most_bytes;
    if (bytes_ > most) return TooMuch("after " + std::to_string(most) + " bytes");
    if (is_in_one_go_) handed_over_.Add(entry.dn);
    ++count_;
    goes_on_ = sink_(std::move(entry));
    return {};
  }

  [[nodiscard]] StoreStatus TooMuch(const std::string& when) const {
    return {kLdapSizeLimitExceeded, "the search on the server '" + connection_.server().Text() +
                                        "' finds no end: given up " + when};
  }

  LdapConnection& connection_;
  const SearchRequest& request_;
  const EntrySink& sink_;
  std::size_t& count_;
  std::size_t bytes_ = 0;
  bool goes_on_ = true;
  bool is_in_one_go_ = false;
  /// The names of what came in one go.
  NotedNames handed_over_;
};

}  // namespace

StoreStatus SearchWhole(LdapConnection& connection, const SearchRequest& request,
                        const EntrySink& sink, std::size_t& count) {
  WholeSearch search(connection, request, sink, count);
  return connection.gives_pages() ? search.InPages() : search.InOneGo();
}

}  // namespace pelora::ldap
