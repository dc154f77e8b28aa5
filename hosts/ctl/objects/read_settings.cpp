// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/objects/read_settings.h"

#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/objects/object_classes.h"
#include "hosts/ldap/bound_attributes.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::ctl {
namespace {

/// Why an object that was read in this way has no settings to show; empty when it has.
std::string WhyNot(const ldap::StoreStatus& status, const ldap::Entry& entry,
                   Workplace& workplace) {
  if (status.code == ldap::kLdapNoSuchObject || status.code == ldap::kLdapInvalidDnSyntax) {
    return std::string(kNobodyOfThisName);
  }
  if (!status.Ok()) return status.text;
  const bool has_tabs = workplace.finder.HasTabs(session::ObjectOf(entry).kind);
  return has_tabs ? std::string() : "this object has no Pelora settings";
}

}  // namespace

std::vector<std::string> SettingsAttributes() {
  std::vector<std::string> attributes = ldap::BoundAttributes();
  attributes.emplace_back("objectClass");
  return attributes;
}

ShownObject SettingsOf(const ldap::Entry& entry, const ldap::Schema& schema,
                       FieldCatalogue& catalogue) {
  ShownObject shown{.object = session::ObjectOf(entry), .word = {}, .fields = {}};
  shown.word = WordOf(shown.object.kind);
  EntryObject object(entry, schema);
  for (const Field& field : catalogue.FieldsOf(shown.object.kind.class_name)) {
    shown.fields.push_back({&field, ReadField(field, entry, object)});
  }
  return shown;
}

void ReadEntries(Workplace& workplace, std::span<const Target> targets,
                 const std::function<void(const Target& target, const ldap::Entry& entry)>& take,
                 const RefusedTarget& refuse) {
  // Those that are known to be missing, or have been read, are told of in their turn.
  std::vector<const Target*> known;
  std::vector<std::string> names;
  for (const Target& target : targets) {
    if (target.dn.empty() || target.entry) continue;
    known.push_back(&target);
    names.push_back(target.dn);
  }
  const Target* next = targets.data();
  const auto tell_until = [&](const Target* end) {
    for (; next != end; ++next) {
      if (next->entry) {
        take(*next, *next->entry);
      } else {
        refuse(*next, next->problem);
      }
    }
  };
  std::size_t at = 0;
  const auto sink = [&](const ldap::StoreStatus& status, const ldap::Entry& entry) {
    tell_until(known[at]);
    const std::string problem = WhyNot(status, entry, workplace);
    if (problem.empty()) {
      take(*next, entry);
    } else {
      refuse(*next, problem);
    }
    ++next;
    ++at;
    return true;
  };
  const ldap::StoreStatus status = workplace.store().ReadMany(names, SettingsAttributes(), sink);
  if (!status.Ok()) {
    for (; at < known.size(); ++at) {
      tell_until(known[at]);
      refuse(*next++, status.text);
    }
  }
  tell_until(targets.data() + targets.size());
}

}  // namespace pelora::ctl
