// SPDX-License-Identifier: Apache-2.0
#include "tests/unit/features/features_oracle.h"

#include <algorithm>

namespace pelora::testing {
namespace {

const std::map<std::size_t, std::string> kPlainNames = {{1, "imap"}, {2, "pop3"}};

std::string Muted(const std::string& status) {
  const bool is_muted = status == "Unset" || status == "Ambiguous";
  return is_muted ? "(" + status + ")" : status;
}

}  // namespace

void FeaturesOracle::Open() {
  chosen_.clear();
  selection_.clear();
  edited_servers_ = false;
  modified_ = false;
  for (const auto& [row, name] : kPlainNames) {
    const bool enabled = std::ranges::any_of(users_, [&feature = name](const OracleUser& user) {
      return user.enabled.contains(feature);
    });
    const bool disabled = std::ranges::any_of(users_, [&feature = name](const OracleUser& user) {
      return user.disabled.contains(feature);
    });
    status_[row] = enabled && disabled ? "Ambiguous"
                   : enabled           ? "Enabled"
                   : disabled          ? "Disabled"
                                       : "Unset";
  }
  ambiguous_servers_ = std::ranges::any_of(
      users_, [this](const OracleUser& user) { return user.servers != users_.front().servers; });
  servers_ = ambiguous_servers_ ? Names() : users_.front().servers;
}

std::vector<std::string> FeaturesOracle::Rows() const {
  std::string servers = "Disabled";
  if (ambiguous_servers_) {
    servers = "(Ambiguous)";
  } else if (!servers_.empty()) {
    servers = servers_.size() == 1 ? "Enabled on server " : "Enabled on servers ";
    for (const std::string& server : servers_) servers += "'" + server + "', ";
    servers.resize(servers.size() - 2);
  }
  return {"archiver: " + servers, "imap: " + Muted(status_.at(1)), "pop3: " + Muted(status_.at(2))};
}

std::string FeaturesOracle::Buttons() const {
  if (selection_.empty()) return "none";
  if (selection_.contains(0)) return selection_.size() == 1 ? "Properties" : "none";
  const auto some = [this](const std::string& status) {
    return std::ranges::any_of(selection_,
                               [&](std::size_t row) { return status_.at(row) == status; });
  };
  const bool can_enable = some("Disabled") || some("Ambiguous");
  const bool can_disable = some("Enabled") || some("Ambiguous");
  if (can_enable == can_disable) return "Enable Disable";
  return can_enable ? "Enable" : "Disable";
}

void FeaturesOracle::Choose(const std::string& status) {
  modified_ = true;
  for (const std::size_t row : selection_) {
    if (row == 0 || status_.at(row) == status) continue;
    status_[row] = status;
    chosen_[row] = true;
  }
}

void FeaturesOracle::Toggle(std::size_t row) {
  const bool was_on = status_.at(row) == "Enabled" || status_.at(row) == "Ambiguous";
  status_[row] = was_on ? "Disabled" : "Enabled";
  chosen_[row] = true;
}

void FeaturesOracle::EditServers(Names servers) {
  if (servers == servers_) return;
  servers_ = std::move(servers);
  ambiguous_servers_ = false;
  edited_servers_ = true;
}

bool FeaturesOracle::Fails(OracleFault::Kind kind) {
  return ++calls_[kind] == (fault_ && fault_->kind == kind ? fault_->nth : 0);
}

bool FeaturesOracle::FailsToWrite(const Names& values) {
  return Fails(values.empty() ? OracleFault::Kind::kPutEx : OracleFault::Kind::kPut);
}

bool FeaturesOracle::StageLists(OracleUser& user) {
  using enum OracleFault::Kind;
  if (Fails(kGet) || Fails(kGet)) return false;
  OracleUser changed = user;
  for (const auto& [row, is_chosen] : chosen_) {
    if (!is_chosen) continue;
    const bool enables = status_.at(row) == "Enabled";
    const std::string& name = kPlainNames.at(row);
    Names& target = enables ? changed.enabled : changed.disabled;
    Names& other = enables ? changed.disabled : changed.enabled;
    if (target.contains(name)) continue;
    target.insert(name);
    other.erase(name);
  }
  if (changed == user) return true;
  user = changed;
  return !FailsToWrite(user.enabled) && !FailsToWrite(user.disabled);
}

std::optional<std::string> FeaturesOracle::Apply(const std::optional<OracleFault>& fault) {
  using enum OracleFault::Kind;
  fault_ = fault;
  calls_.clear();
  for (std::size_t user = 0; user < users_.size(); ++user) {
    if (Fails(kBind)) return "Unable to get connection with the ldap user";
  }
  std::vector<OracleUser> staged = users_;
  for (OracleUser& user : staged) {
    if (!StageLists(user)) return "Failed to update object: ";
  }
  if (edited_servers_) {
    for (OracleUser& user : staged) {
      if (FailsToWrite(servers_)) return "Unknown error occured";
      user.servers = servers_;
    }
  }
  for (std::size_t user = 0; user < users_.size(); ++user) {
    if (Fails(kSetInfo)) return "Unknown error occured";
    users_[user] = staged[user];
  }
  chosen_.clear();
  modified_ = false;
  return std::nullopt;
}

}  // namespace pelora::testing
