// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/changes/change.h"
#include "hosts/ldap/directory_store.h"
#include "platform/hresult.h"

namespace pelora::changes {

/// How the work on one object ended.
enum class Outcome : std::uint8_t {
  /// Written; in a rehearsal: would be written.
  kChanged,
  /// Is as wanted; nothing was sent, or somebody else had done the same.
  kUnchanged,
  /// A page, a rule or a conflict said no; nothing of the object was written.
  kRefused,
  /// The directory said no; nothing of the object was written.
  kFailed,
  /// Sent, and no answer came: it may have been done or not.
  kUnknown,
  /// Not begun.
  kSkipped,
};

inline constexpr std::size_t kOutcomeCount = 6;

/// The one word for an outcome that every face shows: "changed", "unchanged", "refused", "failed",
/// "unknown", "skipped".
[[nodiscard]] std::string_view WordOf(Outcome outcome);
/// The outcome of a word; nothing for another word.
[[nodiscard]] std::optional<Outcome> OutcomeOfWord(std::string_view word);

/// An attribute that is neither as it was seen nor as it is wanted: somebody else changed it.
struct Conflict {
  std::string attribute;
  AttributeValues seen;
  AttributeValues wanted;
  /// What the directory holds now.
  AttributeValues there;
};

/// One sentence about a conflict: "peloraQuotaHard was 100 when it was read, is 200 now, and was to
/// become 300". Values that are no text are told as their length. What the directory says may hold
/// control characters: a face shows them as it shows all of the directory's texts.
[[nodiscard]] std::string TextOf(const Conflict& conflict);

/// How the work on one object ended, and why.
struct Result {
  std::string dn;
  Outcome outcome = Outcome::kSkipped;
  /// Empty when there is nothing to say.
  std::string message{};
  /// The status that the error box shows; none when the directory was not the one that said no.
  std::optional<HRESULT> code{};
  /// What keeps a refused change from being written.
  std::vector<Conflict> conflicts{};

  /// Whether the object is as wanted now.
  [[nodiscard]] bool IsDone() const {
    return outcome == Outcome::kChanged || outcome == Outcome::kUnchanged;
  }
};

/// Refused since others changed the object: the conflicts' sentences are the message.
[[nodiscard]] Result Refused(std::string dn, std::vector<Conflict> conflicts);
/// What a request that did not succeed means for the object: unknown when it was sent and not
/// answered (-5), otherwise failed; with the directory's words and its status.
[[nodiscard]] Result NotDone(std::string dn, const ldap::StoreStatus& status);
/// What it means that an object could not be read: failed, whether an answer came or not, since
/// nothing was sent that changes it.
[[nodiscard]] Result NotRead(std::string dn, const ldap::StoreStatus& status);

}  // namespace pelora::changes
