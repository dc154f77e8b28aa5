// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/find/listing.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_set>
#include <utility>

#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/check/run_check.h"
#include "hosts/session/check/search_query.h"
#include "hosts/session/find/find_text.h"
#include "hosts/session/search_filter.h"
#include "hosts/session/utf8_check.h"

namespace pelora::session {
namespace {

constexpr const char* kEverything = "(objectClass=*)";
/// A longer list is cheaper to look for among all objects than by a filter.
constexpr std::size_t kMostInOneFilter = 50;
/// How many objects of a rule's findings are read by one call.
constexpr std::size_t kObjectsAtATime = 500;

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

/// The attribute that a finding is about: messages begin with it where a rule looks at several.
std::string AttributeOf(const Finding& finding, const CheckRule& rule, const CheckFields& fields) {
  constexpr std::string_view kAccount = "peloraAccount";
  std::string first;
  for (const std::string& attribute : AttributesOf(rule, fields)) {
    if (finding.message.starts_with(attribute + ":")) return attribute;
    if (first.empty() && attribute != kAccount) first = attribute;
  }
  return first;
}

/// One listing under way.
class Run {
 public:
  Run(ldap::IDirectoryStore& store, const Listing& listing, const ListColumns& columns,
      const ListedSink& sink)
      : store_(store), listing_(listing), text_(listing.text), columns_(columns), sink_(sink) {
    for (std::size_t at = 0; at < text_.items().size(); ++at) {
      for (const std::string& name : text_.items()[at].names) {
        items_of_name_[ldap::FoldCase(name)].push_back(at);
      }
    }
    is_found_.resize(text_.items().size());
  }

  [[nodiscard]] ListingEnd List(const CheckFields& check_fields) {
    const std::optional<QueryFault> fault =
        listing_.filter.empty() ? std::nullopt : FindQueryFault(listing_.filter);
    ldap::StoreStatus status = fault ? WrongFilter(listing_.filter, *fault) : FindBase();
    // Bytes of no character, and what stands behind a 0, match whatever the library pleases.
    if (FirstInvalidByte(listing_.text) || listing_.text.find('\0') != std::string::npos) {
      status = {.code = ldap::kLdapParamError, .text = "the text to find is no text"};
    }
    if (status.Ok()) status = listing_.rule.empty() ? Search(Give()) : Check(check_fields);
    ListingEnd end{.end = has_more_ ? SearchEnd{.reason = SearchEnd::Reason::kOwnLimit, .text = {}}
                                    : EndOf(status),
                   .left_out = text_.left_out()};
    if (end.end.reason == SearchEnd::Reason::kComplete && !is_ended_) end.not_found = NotFound();
    return end;
  }

 private:
  /// Takes an entry that is listed; false ends the listing.
  using Take = std::function<bool(const ldap::Entry& entry)>;

  ldap::StoreStatus FindBase() {
    ldap::Entry root;
    ldap::StoreStatus status = store_.ReadRoot(root);
    const std::string whole = ldap::FirstValue(root, "defaultNamingContext");
    base_ = listing_.base.empty() ? whole : listing_.base;
    machinery_ = "," + ldap::FoldCase(ldap::FirstValue(root, "configurationNamingContext"));
    return status;
  }

  [[nodiscard]] Take Give() {
    return [this](const ldap::Entry& entry) {
      return Hand(columns_.ObjectOf(entry, store_.schema()));
    };
  }

  bool Hand(ListedObject listed) {
    has_more_ = count_ == listing_.limit;
    if (has_more_) return false;
    ++count_;
    is_ended_ = !sink_(std::move(listed));
    return !is_ended_;
  }

  /// The filter of what is listed whatever the text.
  [[nodiscard]] std::string Narrowed(const std::string& filter) const {
    std::string all = filter;
    if (!listing_.filter.empty()) all = "(&" + all + listing_.filter + ")";
    return listing_.advanced ? all : WithoutHidden(all);
  }

  ldap::StoreStatus Search(const Take& take) {
    if (text_.items().empty()) {
      const std::string words = FilterOfWords(text_.words());
      return SearchBy(words.empty() ? kEverything : words, take);
    }
    ldap::StoreStatus status = SearchNames(take);
    if (status.Ok() && !IsOver()) status = ReadNamed(take);
    return status;
  }

  ldap::StoreStatus SearchBy(const std::string& filter, const Take& take) {
    const ldap::SearchRequest request{
        .base = base_,
        .scope = listing_.below ? ldap::SearchScope::kSubtree : ldap::SearchScope::kOneLevel,
        .filter = Narrowed(filter),
        .attributes = Attributes()};
    return store_.Search(request, [&](const ldap::Entry& entry) { return Pass(entry, take); });
  }

  bool Pass(const ldap::Entry& entry, const Take& take) {
    const bool is_machinery = KindOf(ldap::ValuesOf(entry, "objectClass")).is_internal ||
                              ldap::FoldCase(entry.dn).ends_with(machinery_);
    return is_machinery || take(entry);
  }

  /// The items of a list that are no distinguished names.
  ldap::StoreStatus SearchNames(const Take& take) {
    if (items_of_name_.empty()) return {};
    std::string names;
    const bool is_short = text_.items().size() <= kMostInOneFilter;
    for (const FindText::Item& item : text_.items()) {
      if (is_short) names += FilterOfNames(item);
    }
    return SearchBy(is_short ? "(|" + names + ")" : kEverything,
                    [&](const ldap::Entry& entry) { return !Marks(entry) || Once(entry, take); });
  }

  /// Whether an entry is called what an item asks for.
  bool Marks(const ldap::Entry& entry) {
    bool is_wanted = false;
    for (const std::string& name : NamesOf(entry)) {
      const auto items = items_of_name_.find(name);
      if (items == items_of_name_.end()) continue;
      is_wanted = true;
      for (const std::size_t item : items->second) is_found_[item] = true;
    }
    return is_wanted;
  }

  /// An object that several items name is listed once.
  bool Once(const ldap::Entry& entry, const Take& take) {
    return !seen_.insert(ldap::NameKey(entry.dn)).second || take(entry);
  }

  /// The distinguished names of a list, wherever they lie.
  ldap::StoreStatus ReadNamed(const Take& take) {
    for (std::size_t at = 0; at < text_.items().size() && !IsOver(); ++at) {
      if (!text_.items()[at].is_dn) continue;
      const ldap::SearchRequest request{.base = text_.items()[at].given,
                                        .scope = ldap::SearchScope::kBase,
                                        .filter = Narrowed(kEverything),
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

  /// What a rule finds, as far as text and filter admit the objects.
  ldap::StoreStatus Check(const CheckFields& check_fields) {
    const CheckRule* const rule = FindCheckRule(listing_.rule);
    if (rule == nullptr) {
      return {.code = ldap::kLdapParamError, .text = "there is no rule \"" + listing_.rule + "\""};
    }
    std::unordered_set<std::string> admitted;
    const bool is_narrowed = !text_.IsEmpty() || !listing_.filter.empty();
    if (is_narrowed) {
      ldap::StoreStatus status = Search([&](const ldap::Entry& entry) {
        admitted.insert(ldap::NameKey(entry.dn));
        return true;
      });
      if (!status.Ok()) return status;
      seen_.clear();
    }
    std::vector<Finding> findings;
    ldap::StoreStatus status =
        RunCheck(store_, {.base = base_, .rules = {rule}}, check_fields, [&](Finding finding) {
          if (is_narrowed && !admitted.contains(ldap::NameKey(finding.dn))) return;
          findings.push_back(std::move(finding));
        });
    for (std::size_t first = 0; status.Ok() && !IsOver() && first < findings.size();
         first += kObjectsAtATime) {
      const std::size_t count = std::min(kObjectsAtATime, findings.size() - first);
      status = GiveFindings(std::span(findings).subspan(first, count), *rule, check_fields);
    }
    return status;
  }

  ldap::StoreStatus GiveFindings(std::span<const Finding> findings, const CheckRule& rule,
                                 const CheckFields& check_fields) {
    std::vector<std::string> names;
    for (const Finding& finding : findings) names.push_back(finding.dn);
    std::size_t at = 0;
    return store_.ReadMany(names, Attributes(),
                           [&](const ldap::StoreStatus& status, const ldap::Entry& entry) {
                             const Finding& finding = findings[at++];
                             // What has gone meanwhile has nothing wrong any more.
                             if (!status.Ok()) return true;
                             ListedObject listed = columns_.ObjectOf(entry, store_.schema());
                             listed.attribute = AttributeOf(finding, rule, check_fields);
                             columns_.SetCell(listed, "field", columns_.TitleOf(listed.attribute));
                             columns_.SetCell(listed, "problem", finding.message);
                             return Hand(std::move(listed));
                           });
  }

  [[nodiscard]] std::vector<std::string> Attributes() const {
    std::vector<std::string> attributes = columns_.Attributes();
    if (text_.items().empty()) return attributes;
    for (const std::string& name : FindAttributes()) {
      if (std::ranges::find(attributes, name) == attributes.end()) attributes.push_back(name);
    }
    return attributes;
  }

  [[nodiscard]] bool IsOver() const { return has_more_ || is_ended_; }

  [[nodiscard]] std::vector<std::string> NotFound() const {
    std::vector<std::string> missing;
    for (std::size_t at = 0; at < is_found_.size(); ++at) {
      if (!is_found_[at]) missing.push_back(text_.items()[at].given);
    }
    return missing;
  }

  ldap::IDirectoryStore& store_;
  const Listing& listing_;
  const FindText text_;
  const ListColumns& columns_;
  const ListedSink& sink_;
  std::string base_;
  /// How names of the directory's own machinery end, folded.
  std::string machinery_;
  /// The items that a folded name is asked for by.
  std::map<std::string, std::vector<std::size_t>, std::less<>> items_of_name_;
  std::vector<bool> is_found_;
  std::set<std::string> seen_;
  std::size_t count_ = 0;
  bool has_more_ = false;
  /// The sink wants no more.
  bool is_ended_ = false;
};

}  // namespace

ListingEnd ListObjects(ldap::IDirectoryStore& store, const Listing& listing,
                       const ListColumns& columns, const CheckFields& check_fields,
                       const ListedSink& sink) {
  return Run(store, listing, columns, sink).List(check_fields);
}

}  // namespace pelora::session
