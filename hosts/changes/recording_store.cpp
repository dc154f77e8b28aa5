// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/recording_store.h"

#include <algorithm>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::changes {
namespace {

/// The attributes that are asked for; all when none is named.
ldap::Entry PartOf(const ldap::Entry& entry, std::span<const std::string> attributes) {
  if (attributes.empty()) return entry;
  ldap::Entry part{.dn = entry.dn, .attributes = {}};
  // An object has few of the attributes that are asked for; they are in order already.
  for (const auto& attribute : entry.attributes) {
    const bool is_asked = std::ranges::any_of(attributes, [&attribute](const std::string& name) {
      return EqualsWithoutCase(name, attribute.first);
    });
    if (is_asked) part.attributes.insert(part.attributes.end(), attribute);
  }
  return part;
}

ldap::StoreStatus NotRecorded() {
  return {ldap::kLdapUnwillingToPerform, "what pages stage is recorded, and nothing else"};
}

}  // namespace

RecordingStore::RecordingStore(ldap::IDirectoryStore& target, RecordingMemory& memory,
                               std::function<void()> breathe)
    : ForwardingStore(target), memory_(memory), breathe_(std::move(breathe)) {}

void RecordingStore::Give(std::shared_ptr<const ldap::Entry> entry) {
  std::string key = ldap::FoldCase(entry->dn);
  given_.insert_or_assign(std::move(key), std::move(entry));
}

void RecordingStore::TakeBack(const std::string& dn) { given_.erase(ldap::FoldCase(dn)); }

std::shared_ptr<void> RecordingStore::TakeAllBack() {
  return std::make_shared<decltype(given_)>(std::exchange(given_, {}));
}

RecordingStore::Asked RecordingStore::AskedOf(std::span<const std::string> attributes) const {
  // Mostly they are the very ones.
  if (memory_.AreThoseOfBindings(attributes)) {
    return {.attributes = attributes, .are_bound = true, .include_bound = true};
  }
  return {.attributes = attributes,
          .are_bound = memory_.AreBound(attributes),
          .include_bound = memory_.IncludesBound(attributes)};
}

std::shared_ptr<const ldap::Entry> RecordingStore::AtHand(const std::string& dn,
                                                          const Asked& asked) const {
  if (const ldap::Entry* const added = memory_.Added(dn)) {
    return std::make_shared<const ldap::Entry>(*added);
  }
  if (!asked.are_bound) return nullptr;
  const auto found = given_.find(ldap::FoldCase(dn));
  return found != given_.end() ? found->second : nullptr;
}

void RecordingStore::Note(const std::string& dn, const Asked& asked,
                          std::shared_ptr<const ldap::Entry> entry) {
  if (asked.include_bound) {
    memory_.NoteBound(dn, std::move(entry), asked.attributes.empty());
  } else {
    memory_.NoteRead(dn, asked.attributes, entry->attributes);
  }
}

ldap::StoreStatus RecordingStore::Read(const std::string& dn,
                                       std::span<const std::string> attributes,
                                       ldap::Entry& entry) {
  const Asked asked = AskedOf(attributes);
  std::shared_ptr<const ldap::Entry> at_hand = AtHand(dn, asked);
  if (at_hand) {
    entry = PartOf(*at_hand, attributes);
  } else if (ldap::StoreStatus status = target().Read(dn, attributes, entry); !status.Ok()) {
    return status;
  } else {
    at_hand = std::make_shared<const ldap::Entry>(entry);
  }
  Note(dn, asked, std::move(at_hand));
  return {};
}

ldap::StoreStatus RecordingStore::ReadMany(std::span<const std::string> dns,
                                           std::span<const std::string> attributes,
                                           const ldap::ReadSink& sink) {
  const Asked asked = AskedOf(attributes);
  while (!dns.empty()) {
    if (std::shared_ptr<const ldap::Entry> at_hand = AtHand(dns.front(), asked)) {
      ldap::Entry entry = PartOf(*at_hand, attributes);
      Note(dns.front(), asked, std::move(at_hand));
      if (!sink({}, std::move(entry))) break;
      if (breathe_) breathe_();
      dns = dns.subspan(1);
      continue;
    }
    // As many as follow each other and are not at hand are asked for together.
    std::size_t count = 1;
    while (count < dns.size() && !AtHand(dns[count], asked)) ++count;
    bool goes_on = true;
    std::size_t at = 0;
    ldap::StoreStatus status = target().ReadMany(
        dns.first(count), attributes, [&](ldap::StoreStatus read, ldap::Entry entry) {
          if (read.Ok()) Note(dns[at], asked, std::make_shared<const ldap::Entry>(entry));
          ++at;
          goes_on = sink(std::move(read), std::move(entry));
          return goes_on;
        });
    if (!status.Ok() || !goes_on) return status;
    dns = dns.subspan(count);
  }
  return {};
}

void RecordingStore::OnReleased() noexcept {
  try {
    if (breathe_) breathe_();
  } catch (...) {
    // The window answers a moment later, then.
  }
}

ldap::StoreStatus RecordingStore::Modify(const std::string& dn,
                                         std::span<const ldap::Modification> modifications) {
  const std::vector<std::string> unknown = memory_.Unknown(dn, modifications);
  if (!unknown.empty()) {
    ldap::Entry entry;
    ldap::StoreStatus status = Read(dn, unknown, entry);
    if (!status.Ok()) return status;
  }
  memory_.Record(dn, modifications);
  if (breathe_) breathe_();
  return {};
}

ldap::StoreStatus RecordingStore::ModifyStrictly(
    const std::string& /*dn*/, std::span<const ldap::Modification> /*modifications*/) {
  return NotRecorded();
}

ldap::StoreStatus RecordingStore::Add(const ldap::Entry& entry) {
  memory_.RecordAdd(entry);
  return {};
}

ldap::StoreStatus RecordingStore::Delete(const ldap::Entry& /*made*/) { return NotRecorded(); }

ldap::StoreStatus RecordingStore::Rename(const ldap::Entry& /*seen*/, const std::string& /*dn*/) {
  return NotRecorded();
}

ldap::StoreStatus RecordingStore::Remove(const ldap::Entry& /*seen*/, Extent /*extent*/) {
  return NotRecorded();
}

ldap::StoreStatus RecordingStore::Restore(const ldap::Entry& /*removed*/) { return NotRecorded(); }

}  // namespace pelora::changes
