// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/own_pages/account_fields.h"

#include <array>
#include <cstdint>

#include "hosts/ldap/attribute_value.h"
#include "hosts/session/own_pages/account_time.h"
#include "hosts/session/own_pages/own_page_ids.h"

namespace pelora::session {
namespace {

using ldap::AttributeValues;

constexpr std::string_view kControl = "userAccountControl";
constexpr std::string_view kEnd = "accountExpires";
constexpr std::string_view kLockedSince = "lockoutTime";
constexpr std::string_view kPasswordSet = "pwdLastSet";
/// What a server works out of the account's state when it is asked.
constexpr std::string_view kComputed = "msDS-User-Account-Control-Computed";

/// Bits of `userAccountControl`.
constexpr std::uint32_t kDisabled = 0x2;
constexpr std::uint32_t kNeverExpires = 0x10000;
/// A bit of the computed state: wrong passwords have locked the account, and still do.
constexpr std::uint32_t kLocked = 0x10;

constexpr std::string_view kSet = "1";
constexpr std::string_view kClear = "0";
/// Of `pwdLastSet`: it is to be changed; and, when it is written, that it was set just now.
constexpr const char* kToBeChanged = "0";
constexpr const char* kSetNow = "-1";

std::string Flag(bool is_set) { return std::string(is_set ? kSet : kClear); }

std::int64_t NumberIn(const AttributeValues& values) {
  return values.empty() ? 0 : ldap::ParseLargeInteger(values.front()).value_or(0);
}

std::uint32_t BitsIn(const AttributeValues& values) {
  return static_cast<std::uint32_t>(NumberIn(values));
}

AttributeValues Numbers(std::uint32_t bits) {
  return {std::to_string(static_cast<std::int32_t>(bits))};
}

enum class Means : std::uint8_t { kBitIsSet, kBitIsClear };

template <std::uint32_t kBit, Means kMeans>
std::string ShownBit(std::string_view attribute, const StoredValues& stored) {
  const bool is_set = (BitsIn(stored(attribute)) & kBit) != 0;
  return Flag(is_set == (kMeans == Means::kBitIsSet));
}

template <std::uint32_t kBit, Means kMeans>
std::optional<AttributeValues> StoredBit(const std::string& shown, const AttributeValues& now) {
  // Without the number there is no account whose bit it could be.
  if (now.empty()) return std::nullopt;
  const bool sets = (shown == kSet) == (kMeans == Means::kBitIsSet);
  return Numbers(sets ? BitsIn(now) | kBit : BitsIn(now) & ~kBit);
}

constexpr FieldForm kEnabledForm = {.shown = &ShownBit<kDisabled, Means::kBitIsClear>,
                                    .stored = &StoredBit<kDisabled, Means::kBitIsClear>};
constexpr FieldForm kNeverExpiresForm = {.shown = &ShownBit<kNeverExpires, Means::kBitIsSet>,
                                         .stored = &StoredBit<kNeverExpires, Means::kBitIsSet>};

std::string ShownLocked(std::string_view attribute, const StoredValues& stored) {
  // The time of the locking stays when the locking is over.
  const AttributeValues computed = stored(kComputed);
  if (!computed.empty()) return Flag((BitsIn(computed) & kLocked) != 0);
  return Flag(NumberIn(stored(attribute)) != 0);
}

std::optional<AttributeValues> StoredLocked(const std::string& shown, const AttributeValues& now) {
  if (shown == kSet || NumberIn(now) == 0) return std::nullopt;
  return AttributeValues{std::string(kClear)};
}

std::string WhyNotLocked(const std::string& shown) {
  if (shown != kSet) return {};
  return "Accounts are locked by wrong passwords, and not here. Clear the box to unlock them.";
}

constexpr FieldForm kLockedForm = {.shown = &ShownLocked,
                                   .stored = &StoredLocked,
                                   .why_not = &WhyNotLocked,
                                   .is_only_cleared = true};

std::string ShownMustChange(std::string_view attribute, const StoredValues& stored) {
  const AttributeValues values = stored(attribute);
  return Flag(!values.empty() && NumberIn(values) == 0);
}

std::optional<AttributeValues> StoredMustChange(const std::string& shown,
                                                const AttributeValues& now) {
  const bool is_to_be_changed = !now.empty() && NumberIn(now) == 0;
  if (is_to_be_changed == (shown == kSet)) return std::nullopt;
  return AttributeValues{shown == kSet ? kToBeChanged : kSetNow};
}

constexpr FieldForm kMustChangeForm = {.shown = &ShownMustChange, .stored = &StoredMustChange};

std::string ShownEnd(std::string_view attribute, const StoredValues& stored) {
  return LastDayText(NumberIn(stored(attribute)));
}

std::optional<AttributeValues> StoredEnd(const std::string& shown, const AttributeValues& now) {
  const std::optional<std::int64_t> end = EndOfLastDay(shown);
  // There are two numbers for never.
  if (!end || (!Ends(*end) && !Ends(NumberIn(now)))) return std::nullopt;
  return AttributeValues{std::to_string(*end)};
}

std::string WhyNoEnd(const std::string& shown) {
  if (EndOfLastDay(shown)) return {};
  return "The last day is no day: type year-month-day, such as 2026-12-31.";
}

constexpr FieldForm kEndForm = {.shown = &ShownEnd, .stored = &StoredEnd, .why_not = &WhyNoEnd};

constexpr std::array kFields = {
    OwnField{.control = IDC_OWN_ENABLED,
             .kind = FieldKind::kFlag,
             .attribute = kControl,
             .form = &kEnabledForm,
             .name = "account.enabled"},
    OwnField{.control = IDC_OWN_LOCKED,
             .kind = FieldKind::kFlag,
             .attribute = kLockedSince,
             .form = &kLockedForm,
             .name = "account.locked"},
    OwnField{.control = IDC_OWN_LAST_DAY, .attribute = kEnd, .form = &kEndForm},
    OwnField{.control = IDC_OWN_MUST_CHANGE,
             .kind = FieldKind::kFlag,
             .attribute = kPasswordSet,
             .form = &kMustChangeForm,
             .name = "password.must-change"},
    OwnField{.control = IDC_OWN_NEVER_EXPIRES,
             .kind = FieldKind::kFlag,
             .attribute = kControl,
             .form = &kNeverExpiresForm,
             .name = "password.never-expires"},
};

constexpr std::array<std::string_view, 1> kAlsoRead = {kComputed};

std::string ControlInWords(const AttributeValues& values) {
  const std::uint32_t bits = BitsIn(values);
  std::string text = (bits & kDisabled) != 0 ? "disabled" : "enabled";
  if ((bits & kNeverExpires) != 0) text += ", password never expires";
  const std::uint32_t others = bits & ~(kDisabled | kNeverExpires);
  return text + " (" + std::to_string(others) + ")";
}

std::string EndInWords(const AttributeValues& values) {
  const std::string day = LastDayText(NumberIn(values));
  return day.empty() ? "no end" : day;
}

std::string LockInWords(const AttributeValues& values) {
  return NumberIn(values) == 0 ? "not locked" : "locked";
}

std::string PasswordSetInWords(const AttributeValues& values) {
  return NumberIn(values) == 0 ? "to be changed" : "set";
}

constexpr std::array kWords = {
    AttributeWords{kControl, "Account", &ControlInWords},
    AttributeWords{kEnd, "Last day", &EndInWords},
    AttributeWords{kLockedSince, "Locking", &LockInWords},
    AttributeWords{kPasswordSet, "Password", &PasswordSetInWords},
};

}  // namespace

std::span<const OwnField> AccountFields() { return kFields; }

std::span<const std::string_view> AccountAlsoRead() { return kAlsoRead; }

std::span<const AttributeWords> AccountWords() { return kWords; }

}  // namespace pelora::session
