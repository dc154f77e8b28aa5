// SPDX-License-Identifier: Apache-2.0
// Who shares an address with whom, and the order in which everything is told.
#include <algorithm>
#include <map>
#include <numeric>
#include <tuple>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/check/check_notes.h"
#include "hosts/session/check/check_rules.h"

namespace pelora::session {
namespace {

/// How many other objects a message names; `others` names them all.
constexpr std::size_t kNamesInMessage = 3;

std::string Joined(const std::vector<std::string>& texts, std::size_t count,
                   std::string_view between) {
  std::string joined;
  for (std::size_t at = 0; at < count; ++at) {
    if (at > 0) joined += between;
    joined += texts[at];
  }
  return joined;
}

}  // namespace

void CheckNotes::SettleAddresses() {
  // By the object: each has one finding, whatever it shares with whomever.
  std::map<ObjectIndex, std::vector<std::string>> shared;
  for (const auto& [address, objects] : addresses_) {
    if (objects.size() < 2) continue;
    for (const ObjectIndex object : objects) shared[object].push_back(address);
  }
  for (auto& [object, addresses] : shared) {
    std::ranges::sort(addresses);
    notes_.push_back({.rule = address_rule_, .object = object, .addresses = std::move(addresses)});
  }
}

std::vector<CheckNotes::ObjectIndex> CheckNotes::Ranks() const {
  std::vector<std::string> keys;
  keys.reserve(objects_.size());
  for (const std::string& dn : objects_) keys.push_back(ldap::NameKey(dn));
  std::vector<ObjectIndex> order(objects_.size());
  std::iota(order.begin(), order.end(), 0);
  std::ranges::sort(order, {},
                    [&keys](ObjectIndex object) -> const std::string& { return keys[object]; });
  std::vector<ObjectIndex> ranks(objects_.size());
  for (ObjectIndex rank = 0; rank < order.size(); ++rank) ranks[order[rank]] = rank;
  return ranks;
}

void CheckNotes::NameOthers(const Note& note, const std::vector<ObjectIndex>& ranks,
                            Finding& finding) const {
  std::vector<std::pair<ObjectIndex, ObjectIndex>> others;
  for (const std::string& address : note.addresses) {
    for (const ObjectIndex object : addresses_.at(address)) {
      if (object != note.object) others.emplace_back(ranks[object], object);
    }
  }
  std::ranges::sort(others);
  others.erase(std::unique(others.begin(), others.end()), others.end());
  for (const auto& [rank, object] : others) finding.others.push_back(objects_[object]);

  std::string addresses = Joined(note.addresses, note.addresses.size(), ", ");
  std::ranges::transform(addresses, addresses.begin(), AsciiLowerCase);
  const std::size_t named = std::min(kNamesInMessage, finding.others.size());
  finding.message = addresses + " also belongs to " + Joined(finding.others, named, "; ");
  if (named < finding.others.size()) {
    finding.message += " and " + std::to_string(finding.others.size() - named) + " more";
  }
}

void CheckNotes::Report(const FindingSink& sink) {
  SettleNames();
  SettleAddresses();
  const std::vector<ObjectIndex> ranks = Ranks();
  // The rules stand in one table, so that their places are their order.
  std::ranges::sort(notes_, [&ranks](const Note& left, const Note& right) {
    return std::make_tuple(left.rule, ranks[left.object], std::string_view(left.message)) <
           std::make_tuple(right.rule, ranks[right.object], std::string_view(right.message));
  });
  for (Note& note : notes_) {
    Finding finding = {.rule = note.rule->name,
                       .dn = objects_[note.object],
                       .message = std::move(note.message),
                       .mend = std::move(note.mend)};
    if (!note.addresses.empty()) NameOthers(note, ranks, finding);
    sink(std::move(finding));
  }
  notes_.clear();
}

}  // namespace pelora::session
