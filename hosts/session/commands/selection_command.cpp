// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/commands/selection_command.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/name_key.h"

namespace pelora::session {
namespace {

void MakeOdd(PlannedValues& values, const std::string& sentence) {
  if (values.judgement.verdict == Verdict::kWrong) return;
  std::string& said = values.judgement.sentence;
  values.judgement.verdict = Verdict::kOdd;
  said += (said.empty() ? "" : " ") + sentence;
}

}  // namespace

SelectionCommand::SelectionCommand(CommitSurroundings surroundings,
                                   std::vector<DirectoryObject> selection,
                                   std::vector<std::string> attributes)
    : surroundings_(std::move(surroundings)),
      selection_(std::move(selection)),
      attributes_(std::move(attributes)) {}

ldap::StoreStatus SelectionCommand::Read() {
  entries_.clear();
  std::vector<std::string> names;
  for (const DirectoryObject& object : selection_) names.push_back(object.dn);
  std::vector<ldap::Entry> entries;
  ldap::StoreStatus status;
  surroundings_.errands.Run(
      "Reading " + std::to_string(names.size()) + " objects...", [&](IErrand& errand) {
        ldap::IDirectoryStore& store = surroundings_.store;
        store.StopOn(errand.stop());
        ldap::StoreStatus refused;
        status = store.ReadMany(names, attributes_, [&](ldap::StoreStatus one, ldap::Entry entry) {
          refused = std::move(one);
          if (!refused.Ok()) return false;
          entry.dn = names[entries.size()];
          entries.push_back(std::move(entry));
          errand.Advance(entries.size(), names.size() > 1 ? names.size() : 0);
          return true;
        });
        store.StopOn({});
        if (status.Ok()) status = std::move(refused);
      });
  if (status.Ok()) entries_ = std::move(entries);
  return status;
}

std::vector<PlannedObject> SelectionCommand::PlanAll(const ValueCommand& command) const {
  std::vector<PlannedObject> planned;
  // Who gets an address first.
  std::map<std::string, std::size_t> taken;
  for (std::size_t at = 0; at < entries_.size(); ++at) {
    surroundings_.errands.Breathe();
    PlannedObject object{.at = at, .values = Plan(command, entries_[at])};
    const std::string& address = object.values.new_address;
    if (!address.empty()) {
      const auto [first, is_first] = taken.emplace(ldap::FoldCase(address), at);
      if (!is_first) {
        MakeOdd(object.values,
                address + " will be an address of " + selection_[first->second].name + ", too.");
      }
    }
    planned.push_back(std::move(object));
  }
  return planned;
}

std::vector<std::string> SelectionCommand::NewAddressesOf(std::span<const PlannedObject> planned) {
  std::map<std::string, std::string> addresses;
  for (const PlannedObject& object : planned) {
    const std::string& address = object.values.new_address;
    if (!address.empty()) addresses.emplace(ldap::FoldCase(address), address);
  }
  std::vector<std::string> each;
  for (auto& [key, address] : addresses) each.push_back(std::move(address));
  return each;
}

void SelectionCommand::TakeOwners(const AddressOwners& owners,
                                  std::vector<PlannedObject>& planned) const {
  for (PlannedObject& object : planned) {
    const std::string& address = object.values.new_address;
    const auto known = owners.find(ldap::FoldCase(address));
    if (address.empty() || known == owners.end()) continue;
    const std::string key = ldap::NameKey(selection_[object.at].dn);
    for (const DirectoryObject& owner : known->second) {
      if (ldap::NameKey(owner.dn) == key) continue;
      MakeOdd(object.values, address + " is an address of " + owner.name + ".");
      break;
    }
  }
}

bool SelectionCommand::Write(std::span<const PlannedObject> planned, bool with_odd) {
  changes::RecordingDirectory recording(
      surroundings_.store,
      {.attributes = attributes_, .breathe = [this] { surroundings_.errands.Breathe(); }});
  for (const PlannedObject& object : planned) {
    if (!object.IsWritten(with_odd)) continue;
    const ldap::Entry& entry = entries_[object.at];
    recording.Give(std::make_shared<const ldap::Entry>(entry));
    // So the recording knows what was seen.
    ldap::Entry seen;
    if (!recording.store().Read(entry.dn, attributes_, seen).Ok()) return false;
    if (!recording.store().Modify(entry.dn, object.values.modifications).Ok()) return false;
  }
  SheetCommit commit(surroundings_, {{.recording = &recording, .page = 0, .dialog = nullptr}});
  const bool is_all_written = !commit.Run().has_value();
  commit.LetGo();
  return is_all_written;
}

std::string PlanText(std::span<const PlannedObject> planned, bool with_odd) {
  std::size_t written = 0;
  std::size_t left_out = 0;
  for (const PlannedObject& object : planned) {
    if (object.IsWritten(with_odd)) ++written;
    const bool is_left_out = object.values.judgement.verdict == Verdict::kWrong ||
                             (object.values.IsChange() && !object.IsWritten(with_odd));
    if (is_left_out) ++left_out;
  }
  const std::size_t as_wanted = planned.size() - written - left_out;
  const auto part = [](std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
  };
  std::string text = std::to_string(written) + " will be changed";
  if (as_wanted > 0) text += ", " + part(as_wanted, "stays as it is", "stay as they are");
  if (left_out > 0) text += ", " + part(left_out, "is left out", "are left out");
  return text + ".";
}

}  // namespace pelora::session
