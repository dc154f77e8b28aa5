// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/objects/object_finder.h"

#include <algorithm>
#include <array>
#include <set>

#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/objects/object_classes.h"
#include "hosts/ctl/text/assignment.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/search_filter.h"
#include "hosts/session/utf8_check.h"

namespace pelora::ctl {
namespace {

/// What objects are called.
constexpr std::array<std::string_view, 6> kNamingAttributes = {
    "sAMAccountName", "userPrincipalName", "mail", "otherMailbox", "cn", "ou"};

/// More names are cheaper to look for among all objects than one by one.
constexpr std::size_t kMostInOneFilter = 16;

std::string NamedFilter(std::string_view name) {
  const std::string value = "=" + session::EscapeFilterValue(name) + ")";
  std::string filter;
  for (const std::string_view attribute : kNamingAttributes) {
    filter += "(" + std::string(attribute) + value;
  }
  return filter;
}

std::string Join(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : "; ") + name;
  return text;
}

Target TargetOf(const std::string& given, const std::vector<std::string>& found) {
  if (found.empty()) return {.given = given, .dn = {}, .problem = std::string(kNobodyOfThisName)};
  if (found.size() == 1) return {.given = given, .dn = found.front(), .problem = {}};
  return {.given = given, .dn = {}, .problem = "several objects are called so: " + Join(found)};
}

/// A filter as it can stand within another: exactly one, whatever it is.
std::string WholeFilter(const std::string& given) {
  const std::string filter = given.starts_with('(') ? given : "(" + given + ")";
  int depth = 0;
  for (std::size_t place = 0; place < filter.size(); ++place) {
    if (filter[place] == '(') ++depth;
    if (filter[place] == ')') --depth;
    const bool is_last = place + 1 == filter.size();
    if (depth < 0 || (depth == 0) != is_last) {
      throw WrongUsage(given + ": this is no LDAP filter");
    }
  }
  return filter;
}

/// Whether a text can be what an object is called.
bool IsSearchedFor(const std::string& name) {
  return !name.empty() && !IsDistinguishedName(name) && !session::FirstInvalidByte(name);
}

}  // namespace

std::vector<Target> ObjectFinder::Resolve(std::span<const std::string> given) {
  Matches matches;
  for (const std::string& name : given) {
    if (IsSearchedFor(name)) matches.try_emplace(ldap::FoldCase(name));
  }
  if (!matches.empty()) LookFor(matches);
  std::vector<Target> targets;
  targets.reserve(given.size());
  for (const std::string& name : given) {
    if (IsDistinguishedName(name)) {
      targets.push_back({.given = name, .dn = name, .problem = {}});
    } else {
      const auto found = matches.find(ldap::FoldCase(name));
      targets.push_back(
          TargetOf(name, found == matches.end() ? std::vector<std::string>() : found->second));
    }
  }
  return targets;
}

Target ObjectFinder::ResolveOne(const std::string& given) {
  return Resolve(std::span(&given, 1)).front();
}

void ObjectFinder::LookFor(Matches& matches) {
  if (matches.size() > kMostInOneFilter) {
    LookAmong(matches, FilterOfEveryKind());
    return;
  }
  std::string names;
  for (const auto& [name, found] : matches) names += NamedFilter(name);
  LookAmong(matches, "(&" + FilterOfEveryKind() + "(|" + names + "))");
}

void ObjectFinder::LookAmong(Matches& matches, const std::string& filter) {
  ldap::SearchRequest request{.base = Base(),
                              .scope = ldap::SearchScope::kSubtree,
                              .filter = filter,
                              .attributes = {"objectClass"}};
  request.attributes.insert(request.attributes.end(), kNamingAttributes.begin(),
                            kNamingAttributes.end());
  const ldap::StoreStatus status = session_.store->Search(request, [&](const ldap::Entry& entry) {
    std::set<std::string> names;
    for (const std::string_view attribute : kNamingAttributes) {
      for (const std::string& value : ldap::ValuesOf(entry, attribute)) {
        names.insert(ldap::FoldCase(value));
      }
    }
    for (const std::string& name : names) {
      const auto wanted = matches.find(name);
      if (wanted != matches.end() && HasTabs(session::ObjectOf(entry).kind)) {
        wanted->second.push_back(entry.dn);
      }
    }
    return true;
  });
  if (!status.Ok()) throw DirectoryFailure(status);
}

std::vector<Target> ObjectFinder::Select(const Selection& selection,
                                         const std::vector<std::string>& attributes) {
  // In the order of their keys; no two objects have the same.
  std::map<std::string, Target> by_key;
  const auto as_it_is = [](const std::string& filter) { return filter; };
  bool are_many = false;
  SearchWhile(selection, attributes, as_it_is, [&](ldap::Entry entry) {
    std::string key = ldap::FoldCase(entry.dn);
    Target target{.given = entry.dn, .dn = entry.dn, .problem = {}};
    target.entry = std::make_shared<const ldap::Entry>(std::move(entry));
    by_key.emplace(std::move(key), std::move(target));
    are_many = by_key.size() > kMostKept;
    return !are_many;
  });
  if (are_many) {
    by_key.clear();
    Search(selection, {"objectClass"}, as_it_is, [&by_key](const ldap::Entry& entry) {
      by_key.emplace(ldap::FoldCase(entry.dn),
                     Target{.given = entry.dn, .dn = entry.dn, .problem = {}});
    });
  }
  std::vector<Target> found;
  found.reserve(by_key.size());
  for (auto& [key, target] : by_key) found.push_back(std::move(target));
  return found;
}

void ObjectFinder::SearchWhile(const Selection& selection, std::vector<std::string> attributes,
                               const std::function<std::string(const std::string& filter)>& narrow,
                               const std::function<bool(ldap::Entry entry)>& take) {
  const std::string classes =
      selection.class_word ? FilterOf(KindOfWord(*selection.class_word)) : FilterOfEveryKind();
  std::string filter = narrow(classes);
  if (selection.filter) filter = "(&" + filter + WholeFilter(*selection.filter) + ")";
  const ldap::SearchRequest request{.base = selection.base ? *selection.base : Base(),
                                    .scope = ldap::SearchScope::kSubtree,
                                    .filter = filter,
                                    .attributes = std::move(attributes)};
  const ldap::StoreStatus status = session_.store->Search(request, [&](ldap::Entry entry) {
    return !HasTabs(session::ObjectOf(entry).kind) || take(std::move(entry));
  });
  if (status.code == ldap::kLdapNoSuchObject || status.code == ldap::kLdapInvalidDnSyntax) {
    throw WrongUsage(request.base + ": there is no such object to search below");
  }
  if (status.code == ldap::kLdapFilterError) {
    throw WrongUsage(selection.filter.value_or(filter) +
                     ": this is no LDAP filter that the directory understands");
  }
  if (!status.Ok()) throw DirectoryFailure(status);
}

std::string ObjectFinder::Read(const std::string& given, session::DirectoryObject& object) {
  const std::string key = ldap::FoldCase(given);
  const auto known = read_.find(key);
  if (known != read_.end()) {
    object = known->second;
    return {};
  }
  const Target target = ResolveOne(given);
  if (target.dn.empty()) return target.problem;
  const session::DirectoryBrowser browser(*session_.store);
  const ldap::StoreStatus status = browser.ReadObject(target.dn, object);
  if (status.code == ldap::kLdapNoSuchObject || status.code == ldap::kLdapInvalidDnSyntax) {
    return std::string(kNobodyOfThisName);
  }
  if (!status.Ok()) throw DirectoryFailure(status);
  read_.emplace(key, object);
  return {};
}

std::string ObjectFinder::ReadComputer(const std::string& name, session::DirectoryObject& object) {
  const std::string key = ldap::FoldCase(name);
  const auto known = computers_.find(key);
  if (known != computers_.end()) {
    object = known->second;
    return {};
  }
  std::vector<session::DirectoryObject> found;
  const ldap::SearchRequest request{
      .base = Base(),
      .scope = ldap::SearchScope::kSubtree,
      .filter = "(&(objectClass=computer)(cn=" + session::EscapeFilterValue(name) + "))",
      .attributes = {"objectClass", "name", "description"}};
  const ldap::StoreStatus status = session_.store->Search(request, [&](const ldap::Entry& entry) {
    found.push_back(session::ObjectOf(entry));
    return true;
  });
  if (!status.Ok()) throw DirectoryFailure(status);
  if (found.empty()) return "there is no computer of this name";
  if (found.size() > 1) return "several computers have this name";
  object = found.front();
  computers_.emplace(key, object);
  return {};
}

bool ObjectFinder::HasTabs(const session::ObjectKind& kind) {
  const auto known = has_tabs_.find(kind.class_name);
  if (known != has_tabs_.end()) return known->second;
  const bool has =
      !WordOf(kind).empty() &&
      !session_.specifiers.ComponentsOf(kind.class_name, ConsoleRole::kPropertyPage).empty();
  return has_tabs_.emplace(kind.class_name, has).first->second;
}

std::string ObjectFinder::Base() {
  if (!base_.empty()) return base_;
  session::DirectoryObject base;
  const ldap::StoreStatus status = session::DirectoryBrowser(*session_.store).ReadBase(base);
  if (!status.Ok()) throw DirectoryFailure(status);
  base_ = base.dn;
  return base_;
}

std::vector<Target> EachOnce(std::vector<Target> targets) {
  std::set<std::string> seen;
  std::erase_if(targets, [&seen](const Target& target) {
    const std::string key =
        target.dn.empty() ? "=" + ldap::FoldCase(target.given) : ldap::NameKey(target.dn);
    return !seen.insert(key).second;
  });
  return targets;
}

}  // namespace pelora::ctl
