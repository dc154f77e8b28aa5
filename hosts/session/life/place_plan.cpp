// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/life/place_plan.h"

#include <algorithm>
#include <map>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/name_key.h"
#include "hosts/ldap/object_name.h"
#include "hosts/session/life/place_change.h"
#include "hosts/session/life/recycle_bin.h"
#include "hosts/session/object_class.h"

namespace pelora::session {
namespace {

using By = ReferringAttribute::By;

std::vector<std::string> ReadAttributes() {
  std::vector<std::string> attributes = IdentityAttributes();
  attributes.insert(attributes.end(), {"name", "cn"});
  return attributes;
}

/// An object of a plan, and what lies below it.
struct Subject {
  ldap::Entry entry;
  std::vector<ldap::Entry> below;
};

/// Objects that lie below others of them go along with those.
std::vector<std::string> WithoutLower(const std::vector<std::string>& dns) {
  std::vector<std::string> tops;
  for (const std::string& dn : dns) {
    const std::string key = ldap::NameKey(dn);
    const bool goes_along = std::ranges::any_of(dns, [&key](const std::string& other) {
      return ldap::LiesBelow(key, ldap::NameKey(other));
    });
    if (!goes_along) tops.push_back(dn);
  }
  return tops;
}

ldap::StoreStatus ReadSubjects(ldap::IDirectoryStore& store, const std::vector<std::string>& dns,
                               std::vector<Subject>& subjects) {
  for (const std::string& dn : WithoutLower(dns)) {
    Subject& subject = subjects.emplace_back();
    ldap::StoreStatus status = store.Read(dn, ReadAttributes(), subject.entry);
    const std::string top = ldap::NameKey(dn);
    if (status.Ok()) {
      status = store.Search(
          {.base = dn, .scope = ldap::SearchScope::kSubtree, .attributes = ReadAttributes()},
          [&](ldap::Entry entry) {
            if (ldap::NameKey(entry.dn) != top) subject.below.push_back(std::move(entry));
            return true;
          });
    }
    if (!status.Ok()) return status;
  }
  return {};
}

bool IsComputer(const ldap::Entry& entry) {
  return std::ranges::any_of(ldap::ValuesOf(entry, "objectClass"), [](const std::string& name) {
    return EqualsWithoutCase(name, "computer");
  });
}

ReferenceTargets TargetsOf(const std::vector<Subject>& subjects) {
  ReferenceTargets targets;
  const auto add_server = [&targets](const ldap::Entry& entry) {
    if (IsComputer(entry)) targets.servers.push_back(ldap::FirstValue(entry, "cn"));
  };
  for (const Subject& subject : subjects) {
    targets.objects.push_back(subject.entry.dn);
    targets.with_all_below = targets.with_all_below || !subject.below.empty();
    add_server(subject.entry);
    std::ranges::for_each(subject.below, add_server);
  }
  return targets;
}

void CountBelow(const std::vector<Subject>& subjects, PlacePlan& plan) {
  std::map<std::string, std::size_t> counts;
  for (const Subject& subject : subjects) {
    for (const ldap::Entry& entry : subject.below) {
      ++counts[KindOf(ldap::ValuesOf(entry, "objectClass")).type_text];
    }
  }
  for (const auto& [type, count] : counts) plan.below.push_back({.type = type, .count = count});
}

/// Finds what refers to the subjects, but for what `is_left_out`.
ldap::StoreStatus ReadReferences(ldap::IDirectoryStore& store,
                                 const std::vector<ReferringAttribute>& attributes,
                                 const ReferenceTargets& targets,
                                 const std::function<bool(const Reference&)>& is_left_out,
                                 PlacePlan& plan) {
  return FindReferences(store, attributes, targets, [&](Reference reference) {
    if (is_left_out(reference)) return true;
    plan.has_more_references = plan.references.size() == kMostReferences;
    if (!plan.has_more_references) plan.references.push_back(std::move(reference));
    return !plan.has_more_references;
  });
}

std::vector<ReferringAttribute> WhichBreak(const std::vector<ReferringAttribute>& attributes,
                                           std::vector<By> kinds) {
  std::vector<ReferringAttribute> some;
  std::ranges::copy_if(attributes, std::back_inserter(some), [&](const ReferringAttribute& row) {
    return std::ranges::find(kinds, row.by) != kinds.end();
  });
  return some;
}

bool KeepsEverything(const Reference& /*reference*/) { return false; }

}  // namespace

std::size_t PlacePlan::BelowCount() const {
  std::size_t count = 0;
  for (const TypeCount& type : below) count += type.count;
  return count;
}

ldap::StoreStatus PlanRenaming(ldap::IDirectoryStore& store, const std::string& dn,
                               const std::string& name,
                               const std::vector<ReferringAttribute>& attributes, PlacePlan& plan) {
  plan = {};
  std::vector<Subject> subjects;
  if (ldap::StoreStatus status = ReadSubjects(store, {dn}, subjects); !status.Ok()) return status;
  const ldap::Entry& entry = subjects.front().entry;
  plan.changes.push_back(RenamingOf(entry, name));
  plan.names.push_back(ldap::FirstValue(entry, "name"));
  CountBelow(subjects, plan);
  ReferenceTargets targets = TargetsOf(subjects);
  // Of computers only the renamed one is called otherwise.
  targets.servers.clear();
  if (IsComputer(entry)) targets.servers.push_back(ldap::FirstValue(entry, "cn"));
  return ReadReferences(store, WhichBreak(attributes, {By::kTextOfName, By::kServer}), targets,
                        KeepsEverything, plan);
}

ldap::StoreStatus PlanMoving(ldap::IDirectoryStore& store, const std::vector<std::string>& dns,
                             const std::string& container,
                             const std::vector<ReferringAttribute>& attributes, PlacePlan& plan) {
  plan = {};
  std::vector<std::string> moved;
  std::ranges::copy_if(dns, std::back_inserter(moved), [&container](const std::string& dn) {
    return ldap::NameKey(ldap::ContainerOf(dn)) != ldap::NameKey(container);
  });
  std::vector<Subject> subjects;
  if (ldap::StoreStatus status = ReadSubjects(store, moved, subjects); !status.Ok()) return status;
  for (const Subject& subject : subjects) {
    plan.changes.push_back(MovingOf(subject.entry, container));
    plan.names.push_back(ldap::FirstValue(subject.entry, "name"));
  }
  CountBelow(subjects, plan);
  return ReadReferences(store, WhichBreak(attributes, {By::kTextOfName}), TargetsOf(subjects),
                        KeepsEverything, plan);
}

ldap::StoreStatus PlanRemoval(ldap::IDirectoryStore& store, const std::vector<std::string>& dns,
                              const std::vector<ReferringAttribute>& attributes, PlacePlan& plan) {
  plan = {};
  ldap::StoreStatus status = ReadKeepsDeleted(store, plan.is_kept);
  std::vector<Subject> subjects;
  if (status.Ok()) status = ReadSubjects(store, dns, subjects);
  if (!status.Ok()) return status;
  for (const Subject& subject : subjects) {
    plan.changes.push_back(RemovalOf(subject.entry, subject.below, plan.is_kept));
    plan.names.push_back(ldap::FirstValue(subject.entry, "name"));
  }
  CountBelow(subjects, plan);
  const auto goes_itself = [&subjects](const Reference& reference) {
    const std::string key = ldap::NameKey(reference.holder_dn);
    return std::ranges::any_of(subjects, [&key](const Subject& subject) {
      const std::string top = ldap::NameKey(subject.entry.dn);
      return key == top || ldap::LiesBelow(key, top);
    });
  };
  return ReadReferences(store, attributes, TargetsOf(subjects), goes_itself, plan);
}

}  // namespace pelora::session
