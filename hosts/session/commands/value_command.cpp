// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/commands/value_command.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "directory/attribute_catalogue.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/typed/typed_address.h"

namespace pelora::session {
namespace {

using Kind = ValueCommand::Kind;

constexpr std::string_view kDefault = CatalogueEntry("mail").name;
constexpr std::string_view kOthers = CatalogueEntry("otherMailbox").name;

bool IsSame(std::string_view left, std::string_view right) {
  return ldap::FoldCase(left) == ldap::FoldCase(right);
}

/// The addresses of an object, the default one first.
struct Addresses {
  std::string standard;
  std::vector<std::string> others;

  explicit Addresses(const ldap::Entry& entry)
      : standard(ldap::FirstValue(entry, std::string(kDefault))),
        others(ldap::ValuesOf(entry, kOthers)) {}

  [[nodiscard]] bool Has(const std::string& address) const {
    return IsSame(standard, address) || std::ranges::any_of(others, [&](const std::string& other) {
             return IsSame(other, address);
           });
  }
  void RemoveOther(const std::string& address) {
    std::erase_if(others, [&](const std::string& other) { return IsSame(other, address); });
  }
  [[nodiscard]] std::string Text() const {
    std::string text = standard.empty() ? std::string() : standard + " (default)";
    for (const std::string& other : others) text += (text.empty() ? "" : "; ") + other;
    return text.empty() ? "none" : text;
  }
};

PlannedValues Nothing(const std::string& sentence) {
  return {.judgement = {.verdict = Verdict::kFine, .sentence = sentence}};
}

PlannedValues LeftOut(const std::string& sentence) {
  return {.judgement = {.verdict = Verdict::kWrong, .sentence = sentence}};
}

PlannedValues Changed(const Addresses& before, const Addresses& after, std::string new_address,
                      Judgement judgement) {
  PlannedValues plan{.before = before.Text(),
                     .after = after.Text(),
                     .new_address = std::move(new_address),
                     .judgement = std::move(judgement)};
  if (after.standard != before.standard) {
    plan.modifications.push_back({.attribute = std::string(kDefault), .values = {after.standard}});
  }
  if (after.others != before.others) {
    plan.modifications.push_back({.attribute = std::string(kOthers), .values = after.others});
  }
  return plan;
}

/// The address that a pattern makes, or why there is none.
struct NewAddress {
  std::string address;
  Judgement judgement;
};

NewAddress MakeAddress(const AddressPattern& pattern, const ldap::Entry& entry,
                       std::string_view star) {
  AddressPattern::Made made = pattern.For(entry, star);
  if (!made.missing.empty()) {
    return {.address = {}, .judgement = {.verdict = Verdict::kWrong, .sentence = made.missing}};
  }
  Judgement judgement = JudgeAddress(made.text);
  if (judgement.verdict != Verdict::kFine) {
    judgement.sentence = made.text + ": " + judgement.sentence;
  }
  return {.address = std::move(made.text), .judgement = std::move(judgement)};
}

PlannedValues PlanAdding(const ValueCommand& command, const ldap::Entry& entry) {
  const NewAddress made = MakeAddress(command.address, entry, "*");
  if (made.judgement.verdict == Verdict::kWrong) return LeftOut(made.judgement.sentence);
  const Addresses before(entry);
  Addresses after = before;
  const bool is_default = command.as_default || before.standard.empty();
  if (is_default ? IsSame(before.standard, made.address) : before.Has(made.address)) {
    return Nothing("It has this address already.");
  }
  if (!is_default) {
    after.others.push_back(made.address);
    return Changed(before, after, made.address, made.judgement);
  }
  after.RemoveOther(made.address);
  if (!before.standard.empty()) after.others.push_back(before.standard);
  after.standard = made.address;
  const std::string own = before.Has(made.address) ? std::string() : made.address;
  return Changed(before, after, own, made.judgement);
}

PlannedValues PlanReplacing(const ValueCommand& command, const ldap::Entry& entry) {
  const Addresses before(entry);
  Addresses after = before;
  Judgement judgement;
  std::string last;
  std::vector<std::string*> all = {&after.standard};
  for (std::string& other : after.others) all.push_back(&other);
  for (std::string* const address : all) {
    const auto star = address->empty() ? std::nullopt : command.gone.Match(entry, *address);
    if (!star) continue;
    NewAddress made = MakeAddress(command.address, entry, *star);
    if (made.judgement.verdict == Verdict::kWrong) return LeftOut(made.judgement.sentence);
    if (made.judgement.verdict > judgement.verdict) judgement = std::move(made.judgement);
    if (!before.Has(made.address)) last = made.address;
    *address = std::move(made.address);
  }
  // What comes twice by that stands there once.
  for (std::string& other : std::exchange(after.others, {})) {
    if (!after.Has(other)) after.others.push_back(std::move(other));
  }
  if (after.standard == before.standard && after.others == before.others) {
    return Nothing("It has no such address, or is so already.");
  }
  return Changed(before, after, last, judgement);
}

PlannedValues PlanRemoving(const ValueCommand& command, const ldap::Entry& entry) {
  const Addresses before(entry);
  Addresses after = before;
  std::erase_if(after.others, [&](const std::string& other) {
    return command.gone.Match(entry, other).has_value();
  });
  const bool goes_default =
      !before.standard.empty() && command.gone.Match(entry, before.standard).has_value();
  if (!goes_default) {
    if (after.others == before.others) return Nothing("It has no such address.");
    return Changed(before, after, {}, {});
  }
  if (after.others.empty()) {
    return LeftOut("The last address cannot be removed, only replaced.");
  }
  after.standard = after.others.front();
  after.others.erase(after.others.begin());
  return Changed(
      before, after, {},
      {.verdict = Verdict::kFine, .sentence = after.standard + " becomes the default address."});
}

std::string TextOf(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : "; ") + name;
  return text.empty() ? "none" : text;
}

PlannedValues PlanNames(const ValueCommand& command, const ldap::Entry& entry) {
  const std::vector<std::string> before = ldap::ValuesOf(entry, command.attribute);
  std::vector<std::string> after = before;
  for (const std::string& name : command.names) {
    const auto is_this = [key = ldap::NameKey(name)](const std::string& other) {
      return ldap::NameKey(other) == key;
    };
    const bool is_there = std::ranges::any_of(after, is_this);
    if (command.kind == Kind::kRemoveNames) std::erase_if(after, is_this);
    if (command.kind == Kind::kAddNames && !is_there) after.push_back(name);
  }
  if (after == before) {
    return Nothing(command.kind == Kind::kAddNames ? "They are in the list already."
                                                   : "None of them is in the list.");
  }
  return {.modifications = {{.attribute = command.attribute, .values = after}},
          .before = TextOf(before),
          .after = TextOf(after)};
}

}  // namespace

std::string ValueCommand::WhyWrong() const {
  if (!IsAboutAddresses()) {
    return names.empty() || attribute.empty() ? "No objects are chosen." : "";
  }
  const bool puts_in = kind != Kind::kRemoveAddress;
  const bool takes_out = kind != Kind::kAddAddress;
  if ((puts_in && address.IsEmpty()) || (takes_out && gone.IsEmpty())) {
    return "There is no address yet.";
  }
  if (std::string why = takes_out ? gone.WhyWrong(true) : ""; !why.empty()) return why;
  return puts_in ? address.WhyWrong(takes_out) : "";
}

std::vector<std::string> ValueCommand::Attributes() const {
  if (!IsAboutAddresses()) return {attribute};
  std::vector<std::string> attributes = AddressPattern::Attributes();
  attributes.emplace_back(kDefault);
  attributes.emplace_back(kOthers);
  return attributes;
}

PlannedValues Plan(const ValueCommand& command, const ldap::Entry& entry) {
  switch (command.kind) {
    case Kind::kAddAddress:
      return PlanAdding(command, entry);
    case Kind::kReplaceAddress:
      return PlanReplacing(command, entry);
    case Kind::kRemoveAddress:
      return PlanRemoving(command, entry);
    case Kind::kAddNames:
    case Kind::kRemoveNames:
      break;
  }
  return PlanNames(command, entry);
}

}  // namespace pelora::session
