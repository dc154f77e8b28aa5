// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/find/entry_finder.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/check/search_query.h"
#include "hosts/session/object_class.h"
#include "hosts/session/search_filter.h"
#include "hosts/session/utf8_check.h"

namespace pelora::session {
namespace {

constexpr const char* kEverything = "(objectClass=*)";
/// A longer list is cheaper to look for among all objects than by a filter.
constexpr std::size_t kMostInOneFilter = 50;

/// The number, from 1, of the character at a byte of a text.
std::size_t CharacterPlace(std::string_view text, std::size_t byte) {
  const auto begins_character = [](char sign) {
    return (static_cast<unsigned char>(sign) & 0xC0) != 0x80;
  };
  return 1 +
         static_cast<std::size_t>(std::ranges::count_if(text.substr(0, byte), begins_character));
}

ldap::StoreStatus WrongFilter(const std::string& filter, const QueryFault& fault) {
  return {.code = ldap::kLdapFilterError,
          .text = filter + ": at character " + std::to_string(CharacterPlace(filter, fault.place)) +
                  ": " + std::string(fault.reason)};
}

}  // namespace

EntryFinder::EntryFinder(ldap::IDirectoryStore& store, EntryQuery query)
    : store_(store), query_(std::move(query)), text_(query_.text) {
  for (std::size_t at = 0; at < text_.items().size(); ++at) {
    for (const std::string& name : text_.items()[at].names) {
      items_of_name_[ldap::FoldCase(name)].push_back(at);
    }
  }
}

ldap::StoreStatus EntryFinder::Begin() {
  if (!query_.filter.empty()) {
    if (const auto fault = FindQueryFault(query_.filter)) return WrongFilter(query_.filter, *fault);
  }
  // Bytes of no character, and what stands behind a 0, match whatever the library pleases.
  if (FirstInvalidByte(query_.text) || query_.text.find('\0') != std::string::npos) {
    return {.code = ldap::kLdapParamError, .text = "the text to find is no text"};
  }
  ldap::Entry root;
  ldap::StoreStatus status = store_.ReadRoot(root);
  base_ = query_.base.empty() ? ldap::FirstValue(root, "defaultNamingContext") : query_.base;
  machinery_ = "," + ldap::FoldCase(ldap::FirstValue(root, "configurationNamingContext"));
  return status;
}

ldap::StoreStatus EntryFinder::Find(const Take& take) {
  seen_.clear();
  is_found_.assign(text_.items().size(), false);
  is_ended_ = false;
  const Take noted = [&](const ldap::Entry& entry) {
    is_ended_ = !take(entry);
    return !is_ended_;
  };
  if (text_.items().empty()) return SearchBy(FilterOfWords(text_.words()), noted);
  ldap::StoreStatus status = SearchNames(noted);
  if (status.Ok() && !is_ended_) status = ReadNamed(noted);
  return status;
}

ListingEnd EntryFinder::EndBy(const ldap::StoreStatus& status, bool has_more) const {
  ListingEnd end{.end = has_more ? SearchEnd{.reason = SearchEnd::Reason::kOwnLimit, .text = {}}
                                 : EndOf(status),
                 .left_out = text_.left_out()};
  if (end.end.reason == SearchEnd::Reason::kComplete && !is_ended_) end.not_found = NotFound();
  return end;
}

std::string EntryFinder::Narrowed(const std::string& filter) const {
  std::string all = filter;
  if (all.empty()) {
    all = query_.filter.empty() ? kEverything : query_.filter;
  } else if (!query_.filter.empty()) {
    all = "(&" + all + query_.filter + ")";
  }
  return query_.advanced ? all : WithoutHidden(all);
}

ldap::StoreStatus EntryFinder::SearchBy(const std::string& filter, const Take& take) {
  const ldap::SearchRequest request{
      .base = base_,
      .scope = query_.below ? ldap::SearchScope::kSubtree : ldap::SearchScope::kOneLevel,
      .filter = Narrowed(filter),
      .attributes = Attributes()};
  return store_.Search(request, [&](const ldap::Entry& entry) { return Pass(entry, take); });
}

bool EntryFinder::Pass(const ldap::Entry& entry, const Take& take) {
  const bool is_machinery = KindOf(ldap::ValuesOf(entry, "objectClass")).is_internal ||
                            ldap::FoldCase(entry.dn).ends_with(machinery_);
  return is_machinery || take(entry);
}

/// The items of a list that are no distinguished names.
ldap::StoreStatus EntryFinder::SearchNames(const Take& take) {
  if (items_of_name_.empty()) return {};
  std::string names;
  if (text_.items().size() <= kMostInOneFilter) {
    for (const FindText::Item& item : text_.items()) names += FilterOfNames(item);
    names = "(|" + names + ")";
  }
  return SearchBy(names,
                  [&](const ldap::Entry& entry) { return !Marks(entry) || Once(entry, take); });
}

/// Whether an entry is called what an item asks for.
bool EntryFinder::Marks(const ldap::Entry& entry) {
  bool is_wanted = false;
  for (const std::string& name : NamesOf(entry)) {
    const auto items = items_of_name_.find(name);
    if (items == items_of_name_.end()) continue;
    is_wanted = true;
    for (const std::size_t item : items->second) is_found_[item] = true;
  }
  return is_wanted;
}

/// An object that several items name is given once.
bool EntryFinder::Once(const ldap::Entry& entry, const Take& take) {
  return !seen_.insert(ldap::NameKey(entry.dn)).second || take(entry);
}

/// The distinguished names of a list, wherever they lie.
ldap::StoreStatus EntryFinder::ReadNamed(const Take& take) {
  for (std::size_t at = 0; at < text_.items().size() && !is_ended_; ++at) {
    if (!text_.items()[at].is_dn) continue;
    const ldap::SearchRequest request{.base = text_.items()[at].given,
                                      .scope = ldap::SearchScope::kBase,
                                      .filter = Narrowed({}),
                                      .attributes = Attributes()};
    const ldap::StoreStatus status = store_.Search(request, [&](const ldap::Entry& entry) {
      is_found_[at] = true;
      return Pass(entry, [&](const ldap::Entry& named) { return Once(named, take); });
    });
    const bool is_missing =
        status.code == ldap::kLdapNoSuchObject || status.code == ldap::kLdapInvalidDnSyntax;
    if (!status.Ok() && !is_missing) return status;
  }
  return {};
}

std::vector<std::string> EntryFinder::Attributes() const {
  std::vector<std::string> attributes = query_.attributes;
  if (text_.items().empty()) return attributes;
  for (const std::string& name : FindAttributes()) {
    if (std::ranges::find(attributes, name) == attributes.end()) attributes.push_back(name);
  }
  return attributes;
}

std::vector<std::string> EntryFinder::NotFound() const {
  std::vector<std::string> missing;
  for (std::size_t at = 0; at < is_found_.size(); ++at) {
    if (!is_found_[at]) missing.push_back(text_.items()[at].given);
  }
  return missing;
}

}  // namespace pelora::session
