// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "hosts/ldap/directory_store.h"

namespace pelora::session {

/// The default that a company gives its users.
struct DefaultQuota {
  /// The company's name.
  std::string company;
  /// Whether it gives one.
  bool is_given = false;
  /// Warning, soft, hard, in megabytes; 0: no limit.
  std::array<std::int64_t, 3> limits{};
};

/// The default quota of the company that an object belongs to: the nearest organizational unit
/// above it that is a company. None when there is none, or when the directory does not answer.
[[nodiscard]] std::optional<DefaultQuota> FindDefaultQuota(ldap::IDirectoryStore& store,
                                                           const std::string& dn);

/// The same as a sentence: which limits hold for a user who has none of his own.
[[nodiscard]] std::string DefaultQuotaSentence(const DefaultQuota& quota);

}  // namespace pelora::session
