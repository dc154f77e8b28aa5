// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/find/find_pasted_names.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <utility>

#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/find/find_text.h"
#include "hosts/session/text.h"

namespace pelora::session {
namespace {

using Item = FindText::Item;

/// So many names go into one question.
constexpr std::size_t kAtOnce = 50;

std::vector<Item> ItemsOf(const FindText& find, const std::string& text) {
  if (find.words().empty()) return find.items();
  // One line that is no list: the address in angle brackets, or the whole of it.
  Item item{.given = Trimmed(text)};
  item.names = {find.words().size() == 1 ? find.words().front() : item.given};
  return {std::move(item)};
}

/// The objects that each item names, by the items' places.
class Matches {
 public:
  explicit Matches(std::span<const Item> items) : items_(items) {
    for (std::size_t at = 0; at < items.size(); ++at) {
      for (const std::string& name : items[at].names) places_[ldap::FoldCase(name)].insert(at);
    }
  }

  void Take(const ldap::Entry& entry) {
    for (const std::string& name : NamesOf(entry)) {
      const auto found = places_.find(name);
      if (found == places_.end()) continue;
      for (const std::size_t at : found->second) Take(at, entry.dn);
    }
  }
  void Take(std::size_t at, const std::string& dn) {
    if (!settled_.contains(at)) objects_[at].emplace(ldap::NameKey(dn), dn);
  }
  /// What is somebody by now stays that, whoever else is found. The names that are nobody yet.
  [[nodiscard]] std::vector<Item> Settle() {
    for (const auto& [at, objects] : objects_) settled_.insert(at);
    std::vector<Item> left;
    for (std::size_t at = 0; at < items_.size(); ++at) {
      if (!settled_.contains(at) && !items_[at].is_dn) left.push_back(items_[at]);
    }
    return left;
  }

  void GiveTo(FoundNames& found) const {
    std::set<std::string> known;
    for (std::size_t at = 0; at < items_.size(); ++at) {
      const auto objects = objects_.find(at);
      const std::size_t count = objects == objects_.end() ? 0 : objects->second.size();
      if (count == 0) found.not_found.push_back(items_[at].given);
      if (count > 1) found.ambiguous.push_back(items_[at].given);
      if (count != 1) continue;
      const auto& [key, dn] = *objects->second.begin();
      if (known.insert(key).second) found.names.push_back(dn);
    }
  }

 private:
  std::span<const Item> items_;
  std::map<std::string, std::set<std::size_t>> places_;
  std::map<std::size_t, std::map<std::string, std::string>> objects_;
  std::set<std::size_t> settled_;
};

ldap::StoreStatus FindNamed(ldap::IDirectoryStore& store, std::span<const Item> items,
                            const std::string& base, const std::string& filter, Matches& matches) {
  for (std::size_t begin = 0; begin < items.size(); begin += kAtOnce) {
    std::string names;
    for (const Item& item : items.subspan(begin, std::min(kAtOnce, items.size() - begin))) {
      if (!item.is_dn) names += FilterOfNames(item);
    }
    if (names.empty()) continue;
    const ldap::SearchRequest request{.base = base,
                                      .scope = ldap::SearchScope::kSubtree,
                                      .filter = "(&" + filter + "(|" + names + "))",
                                      .attributes = FindAttributes()};
    ldap::StoreStatus status = store.Search(request, [&matches](const ldap::Entry& entry) {
      matches.Take(entry);
      return true;
    });
    if (!status.Ok()) return status;
  }
  return {};
}

/// Whether each of some names is one of others, or lies below one.
bool AreBelow(const std::vector<std::string>& names, const std::vector<std::string>& others) {
  return std::ranges::all_of(names, [&others](const std::string& name) {
    return std::ranges::any_of(others, [key = ldap::NameKey(name)](const std::string& other) {
      const std::string above = ldap::NameKey(other);
      return key == above || ldap::LiesBelow(key, above);
    });
  });
}

ldap::StoreStatus FindByDn(ldap::IDirectoryStore& store, std::span<const Item> items,
                           const std::string& filter, Matches& matches) {
  for (std::size_t at = 0; at < items.size(); ++at) {
    if (!items[at].is_dn) continue;
    const ldap::SearchRequest request{
        .base = items[at].given, .filter = filter, .attributes = {"cn"}};
    ldap::StoreStatus status = store.Search(request, [&matches, at](const ldap::Entry& entry) {
      matches.Take(at, entry.dn);
      return true;
    });
    const bool is_nobody =
        status.code == ldap::kLdapNoSuchObject || status.code == ldap::kLdapInvalidDnSyntax;
    if (!status.Ok() && !is_nobody) return status;
  }
  return {};
}

/// The same in the domains around the directory's own; those that cannot be asked are told.
/// Distinguished names find their domain by themselves.
ldap::StoreStatus FindAround(ldap::IDirectoryStore& store, const ldap::PlaceFinder& find_places,
                             const std::string& filter, const std::stop_token& stop,
                             Matches& matches, FoundNames& found) {
  std::vector<Item> left = matches.Settle();
  if (left.empty() || !find_places) return {};
  std::vector<ldap::SearchPlace> places;
  ldap::StoreStatus status = find_places(store, places);
  // A directory that does not say has one domain.
  if (!status.Ok()) return status.code < 0 ? status : ldap::StoreStatus{};
  std::vector<std::string> looked_in;
  for (std::size_t at = 1; at < places.size() && !left.empty(); ++at) {
    const ldap::SearchPlace& place = places[at];
    if (AreBelow(place.bases, looked_in)) continue;
    std::unique_ptr<ldap::IDirectoryStore> opened;
    status = place.open(opened, stop);
    for (const std::string& base : place.bases) {
      if (status.Ok()) status = FindNamed(*opened, left, base, filter, matches);
    }
    if (status.code == ldap::kLdapUserCancelled) return status;
    if (status.Ok()) {
      looked_in.insert(looked_in.end(), place.bases.begin(), place.bases.end());
    } else {
      found.unreached.push_back(place.domain.empty() ? "the whole forest" : place.domain);
    }
    left = matches.Settle();
  }
  return {};
}

}  // namespace

FoundNames FindPastedNames(ldap::IDirectoryStore& store, const std::string& text,
                           const std::string& filter, const ldap::PlaceFinder& find_places,
                           const std::stop_token& stop) {
  FoundNames found;
  const FindText find(text);
  const std::vector<Item> items = ItemsOf(find, text);
  found.left_out = find.left_out();
  ldap::Entry root;
  found.status = store.ReadRoot(root);
  if (!found.status.Ok()) return found;
  Matches matches(items);
  found.status =
      FindNamed(store, items, ldap::FirstValue(root, "defaultNamingContext"), filter, matches);
  if (found.status.Ok()) found.status = FindByDn(store, items, filter, matches);
  if (found.status.Ok()) {
    found.status = FindAround(store, find_places, filter, stop, matches, found);
  }
  if (found.status.Ok()) matches.GiveTo(found);
  return found;
}

}  // namespace pelora::session
