// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace pelora::testing {

using Names = std::set<std::string>;

/// One user as the directory has it.
struct OracleUser {
  Names enabled;
  Names disabled;
  Names servers;

  friend bool operator==(const OracleUser&, const OracleUser&) = default;
};

/// A call of the directory that may be made to fail: the `nth` of its kind.
struct OracleFault {
  enum class Kind : std::uint8_t { kBind, kGet, kPut, kPutEx, kSetInfo };
  Kind kind = Kind::kBind;
  std::size_t nth = 0;
};

/// What the features tab is to do, written down as plainly as can be: sets of names, states by
/// their texts, and one step after the other. It knows nothing of the tab's code.
class FeaturesOracle {
 public:
  explicit FeaturesOracle(std::vector<OracleUser> users) : users_(std::move(users)) {}

  [[nodiscard]] const std::vector<OracleUser>& users() const { return users_; }
  [[nodiscard]] std::vector<OracleUser>& users() { return users_; }

  /// Opens the tab on all users.
  void Open();
  /// "feature: status", the status in brackets where it is muted.
  [[nodiscard]] std::vector<std::string> Rows() const;
  [[nodiscard]] bool modified() const { return modified_; }

  void Select(std::set<std::size_t> rows) { selection_ = std::move(rows); }
  /// The buttons that are offered, or "none".
  [[nodiscard]] std::string Buttons() const;

  void Enable() { Choose("Enabled"); }
  void Disable() { Choose("Disabled"); }
  /// A double click on a plain feature.
  void Toggle(std::size_t row);

  [[nodiscard]] bool AsksBeforeEditing() const { return ambiguous_servers_; }
  [[nodiscard]] const Names& servers() const { return servers_; }
  /// The servers' dialog was closed with OK on these.
  void EditServers(Names servers);

  /// Applies; the text of the error box (without its code), nothing when it succeeded.
  std::optional<std::string> Apply(const std::optional<OracleFault>& fault);

 private:
  void Choose(const std::string& status);
  /// Counts a call; whether it is the one that fails.
  bool Fails(OracleFault::Kind kind);
  bool FailsToWrite(const Names& values);
  bool StageLists(OracleUser& user);

  std::vector<OracleUser> users_;
  /// By the row of a plain feature: 1 is imap, 2 is pop3.
  std::map<std::size_t, std::string> status_;
  std::map<std::size_t, bool> chosen_;
  Names servers_;
  bool ambiguous_servers_ = false;
  bool edited_servers_ = false;
  bool modified_ = false;
  std::set<std::size_t> selection_;
  std::optional<OracleFault> fault_;
  std::map<OracleFault::Kind, std::size_t> calls_;
};

}  // namespace pelora::testing
