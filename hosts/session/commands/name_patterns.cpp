// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/commands/name_patterns.h"

#include <utility>

#include "directory/utf.h"
#include "hosts/session/commands/address_pattern.h"
#include "hosts/session/text.h"
#include "hosts/session/typed/typed_address.h"

namespace pelora::session {
namespace {

/// Nobody's: with it the rest of a pattern can be judged.
OwnValues SomeValues() {
  OwnValues values;
  values.first_name = values.last_name = values.name = values.logon_name = "a";
  return values;
}

const NewObjectKind& UserKind() { return NewObjectKinds().front(); }

ldap::Entry EntryOf(const OwnValues& values) {
  ldap::Entry entry;
  const auto add = [&entry](const char* attribute, const std::string& value) {
    if (std::string text = Trimmed(value); !text.empty()) {
      entry.attributes[attribute] = {std::move(text)};
    }
  };
  add("givenName", values.first_name);
  add("sn", values.last_name);
  add("cn", values.name);
  add("sAMAccountName", values.logon_name);
  return entry;
}

std::string MadeOf(const std::string& pattern, const OwnValues& values) {
  return AddressPattern(pattern).For(EntryOf(values)).text;
}

std::string WhyNoLogonName(const std::string& pattern) {
  if (pattern.empty()) return {};
  if (pattern.find("{logon}") != std::string::npos) {
    return "The logon name cannot be made of itself.";
  }
  if (std::string reason = AddressPattern(pattern).WhyWrong(false); !reason.empty()) return reason;
  OwnValues values = SomeValues();
  values.logon_name = MadeOf(pattern, values);
  return WhyIncomplete(UserKind(), values, {});
}

std::string WhyNoAddress(const std::string& pattern) {
  if (pattern.empty()) return {};
  if (std::string reason = AddressPattern(pattern).WhyWrong(false); !reason.empty()) return reason;
  const Judgement judged = JudgeAddress(MadeOf(pattern, SomeValues()));
  return judged.verdict == Verdict::kWrong ? judged.sentence : std::string();
}

}  // namespace

std::string WhyWrong(const NamePatterns& patterns) {
  std::string reason = WhyNoLogonName(patterns.logon_name);
  return reason.empty() ? WhyNoAddress(patterns.address) : reason;
}

std::string LogonNameOf(const NamePatterns& patterns, const NewObjectKind& kind,
                        const OwnValues& values) {
  std::string name = FirstCharacters(MadeOf(patterns.logon_name, values), kind.longest_logon_name);
  while (name.ends_with('.') || name.ends_with(' ')) name.pop_back();
  return name;
}

std::string AddressOf(const NamePatterns& patterns, const OwnValues& values) {
  return MadeOf(patterns.address, values);
}

}  // namespace pelora::session
