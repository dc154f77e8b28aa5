// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/result.h"

#include <algorithm>
#include <array>
#include <utility>

#include "directory/utf.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::changes {
namespace {

constexpr std::array<std::string_view, kOutcomeCount> kWords = {"changed", "unchanged", "refused",
                                                                "failed",  "unknown",   "skipped"};

std::string TextOf(const std::string& value) {
  const bool is_text = ToUtf8(ToUtf16(value)) == value && value.find('\0') == std::string::npos;
  return is_text ? value : std::to_string(value.size()) + " bytes";
}

/// Values one after the other, or what to say of none.
std::string TextOf(const AttributeValues& values) {
  if (values.empty()) return "not set";
  std::string text;
  for (const std::string& value : values) {
    if (!text.empty()) text += "; ";
    text += TextOf(value);
  }
  return text;
}

}  // namespace

std::string_view WordOf(Outcome outcome) { return kWords.at(static_cast<std::size_t>(outcome)); }

std::optional<Outcome> OutcomeOfWord(std::string_view word) {
  const auto* const found = std::ranges::find(kWords, word);
  if (found == kWords.end()) return std::nullopt;
  return static_cast<Outcome>(found - kWords.begin());
}

std::string TextOf(const Conflict& conflict) {
  return conflict.attribute + " was " + TextOf(conflict.seen) + " when it was read, is " +
         TextOf(conflict.there) + " now, and was to become " + TextOf(conflict.wanted);
}

Result Refused(std::string dn, std::vector<Conflict> conflicts) {
  std::string message;
  for (const Conflict& conflict : conflicts) {
    if (!message.empty()) message += "; ";
    message += TextOf(conflict);
  }
  return {.dn = std::move(dn),
          .outcome = Outcome::kRefused,
          .message = std::move(message),
          .conflicts = std::move(conflicts)};
}

Result NotDone(std::string dn, const ldap::StoreStatus& status) {
  const bool is_open = status.code == ldap::kLdapTimeout;
  return {.dn = std::move(dn),
          .outcome = is_open ? Outcome::kUnknown : Outcome::kFailed,
          .message = status.text,
          .code = ldap::HresultOfLdap(status.code)};
}

Result NotRead(std::string dn, const ldap::StoreStatus& status) {
  Result result = NotDone(std::move(dn), status);
  result.outcome = Outcome::kFailed;
  return result;
}

}  // namespace pelora::changes
