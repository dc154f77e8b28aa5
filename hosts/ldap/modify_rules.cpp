// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/modify_rules.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "directory/ascii_case.h"
#include "directory/utf.h"
#include "hosts/ldap/attribute_value.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/value_equality.h"

namespace pelora::ldap {
namespace {

using Operation = Modification::Operation;

struct ProtectedAttribute {
  std::string_view name;
  int code;
};

/// Set when an object is made, moved or renamed, never by a modify.
constexpr auto kProtectedAttributes = std::to_array<ProtectedAttribute>({
    {"distinguishedName", kLdapConstraintViolation},
    {"name", kLdapNotAllowedOnRdn},
    {"objectClass", kLdapObjectClassViolation},
});

StoreStatus CheckWritable(std::string_view attribute, std::string_view dn) {
  const std::string_view naming = dn.substr(0, dn.find('='));
  if (EqualsWithoutCase(attribute, naming)) {
    return {kLdapNotAllowedOnRdn, "the naming attribute cannot be changed"};
  }
  for (const ProtectedAttribute& row : kProtectedAttributes) {
    if (EqualsWithoutCase(attribute, row.name))
      return {row.code, "the attribute cannot be changed"};
  }
  return {};
}

using KeyOf = std::string (*)(Syntax syntax, const std::string& value);

/// Sets of values as something compares them.
class Keys {
 public:
  Keys(KeyOf key_of, Syntax syntax, const AttributeValues& values)
      : key_of_(key_of), syntax_(syntax) {
    for (const std::string& value : values) Add(value);
  }

  /// Whether the value was not there before.
  bool Add(const std::string& value) { return keys_.insert(key_of_(syntax_, value)).second; }
  [[nodiscard]] bool Contains(const std::string& value) const {
    return keys_.contains(key_of_(syntax_, value));
  }

 private:
  KeyOf key_of_;
  Syntax syntax_;
  std::set<std::string> keys_;
};

KeyOf KeyOfDeletion(ModifyWay way) {
  return way == ModifyWay::kStrict ? EditingKey : ComparisonKey;
}

AttributeValues Merge(const Modification& change, Syntax syntax, ModifyWay way,
                      AttributeValues values) {
  switch (change.operation) {
    case Operation::kReplace:
      return change.values;
    case Operation::kAdd: {
      Keys held(ComparisonKey, syntax, values);
      for (const std::string& value : change.values) {
        if (held.Add(value)) values.push_back(value);
      }
      return values;
    }
    case Operation::kDelete: {
      if (change.values.empty()) return {};
      const Keys deleted(KeyOfDeletion(way), syntax, change.values);
      std::erase_if(values, [&](const std::string& value) { return deleted.Contains(value); });
      return values;
    }
  }
  return values;
}

/// What a strict request takes to be there, and not to be there.
StoreStatus CheckExpectations(const Modification& change, const AttributeType& type,
                              const AttributeValues& values) {
  if (change.operation == Operation::kDelete) {
    const Keys held(KeyOfDeletion(ModifyWay::kStrict), type.syntax, values);
    const bool is_there = change.values.empty()
                              ? !values.empty()
                              : std::ranges::all_of(change.values, [&](const std::string& value) {
                                  return held.Contains(value);
                                });
    if (!is_there) return {kLdapNoSuchAttribute, "a value that is to be deleted is not there"};
  }
  if (change.operation == Operation::kAdd) {
    if (type.is_single_valued && !values.empty()) {
      return {kLdapValueExists, "takes one value only, and has one"};
    }
    Keys held(ComparisonKey, type.syntax, values);
    const bool is_new = std::ranges::all_of(
        change.values, [&](const std::string& value) { return held.Add(value); });
    if (!is_new) return {kLdapValueExists, "a value that is to be added is there"};
  }
  return {};
}

bool HasTwice(Syntax syntax, const AttributeValues& values) {
  Keys keys(ComparisonKey, syntax, {});
  return !std::ranges::all_of(values, [&](const std::string& value) { return keys.Add(value); });
}

bool IsTime(std::string_view value) {
  constexpr std::size_t kShortest = std::string_view("YYMMDDhhmmssZ").size();
  if (value.size() < kShortest || value.back() != 'Z') return false;
  value.remove_suffix(1);
  return value.find_first_not_of("0123456789.") == std::string_view::npos;
}

bool FitsSyntax(Syntax syntax, const std::string& value) {
  switch (syntax) {
    case Syntax::kString:
      return ToUtf8(ToUtf16(value)) == value;
    case Syntax::kInteger:
      return ParseInteger(value).has_value();
    case Syntax::kLargeInteger:
      return ParseLargeInteger(value).has_value();
    case Syntax::kBoolean:
      return value == "TRUE" || value == "FALSE";
    case Syntax::kTime:
      return IsTime(value);
    case Syntax::kDistinguishedName:
    case Syntax::kOctets:
    case Syntax::kSecurityDescriptor:
    case Syntax::kStructuredName:
      return true;
  }
  return false;
}

/// What an attribute's bounds are about: an integer's value, otherwise the length.
std::int64_t Extent(Syntax syntax, const std::string& value) {
  switch (syntax) {
    case Syntax::kInteger:
    case Syntax::kLargeInteger:
      return ParseLargeInteger(value).value_or(0);
    case Syntax::kString:
      return static_cast<std::int64_t>(ToUtf16(value).size());
    default:
      return static_cast<std::int64_t>(value.size());
  }
}

StoreStatus UnknownAttribute() { return {kLdapNoSuchAttribute, "no such attribute"}; }

/// Whether an attribute may have so many values; that it has too many does not keep one from taking
/// some away.
StoreStatus CheckCount(Operation operation, const AttributeType& type,
                       const AttributeValues& values) {
  if (operation == Operation::kDelete || !type.is_single_valued || values.size() < 2) return {};
  return {kLdapConstraintViolation, "takes one value only"};
}

StoreStatus Named(StoreStatus status, std::string_view attribute) {
  if (!status.Ok()) status.text = "attribute '" + std::string(attribute) + "': " + status.text;
  return status;
}

}  // namespace

ModifyRules::ModifyRules(const Schema& schema, NameCheck is_name)
    : schema_(schema), is_name_(std::move(is_name)) {}

StoreStatus ModifyRules::Apply(const Entry& before, std::span<const Modification> modifications,
                               AttributeMap& changed, ModifyWay way) const {
  changed.clear();
  AttributeMap after;
  for (const Modification& change : modifications) {
    const auto held = before.attributes.find(change.attribute);
    const auto [values, is_new] = after.try_emplace(
        change.attribute, held == before.attributes.end() ? AttributeValues() : held->second);
    StoreStatus status = CheckWritable(change.attribute, before.dn);
    if (status.Ok()) status = ApplyOne(change, way, values->second);
    if (!status.Ok()) return Named(std::move(status), change.attribute);
  }
  for (auto& [name, values] : after) {
    const auto held = before.attributes.find(name);
    const bool was_there = held != before.attributes.end();
    if (was_there ? held->second != values : !values.empty()) {
      changed.emplace(schema_.SpellingOf(name), std::move(values));
    }
  }
  return {};
}

StoreStatus ModifyRules::CheckValues(std::span<const Modification> modifications) const {
  for (const Modification& change : modifications) {
    const std::optional<AttributeType> type = schema_.Find(change.attribute);
    StoreStatus status =
        type ? CheckGiven(change.operation, change.values, *type) : UnknownAttribute();
    if (!status.Ok()) return Named(std::move(status), change.attribute);
  }
  return {};
}

StoreStatus ModifyRules::CheckNew(const Entry& entry) const {
  for (const auto& [name, values] : entry.attributes) {
    // Where they are: a password among them is not copied.
    const std::optional<AttributeType> type = schema_.Find(name);
    StoreStatus status = type ? CheckGiven(Operation::kReplace, values, *type) : UnknownAttribute();
    if (!status.Ok()) return Named(std::move(status), name);
  }
  return {};
}

StoreStatus ModifyRules::CheckGiven(Operation operation, const AttributeValues& values,
                                    const AttributeType& type) const {
  // What is deleted need not be well-formed: it was let in once, or it is not there.
  if (operation == Operation::kDelete) return {};
  for (const std::string& value : values) {
    StoreStatus status = CheckValue(type, value);
    if (!status.Ok()) return status;
  }
  if (operation != Operation::kReplace || values.size() < 2) return {};
  if (HasTwice(type.syntax, values)) return {kLdapValueExists, "the same value is given twice"};
  return CheckCount(operation, type, values);
}

StoreStatus ModifyRules::ApplyOne(const Modification& change, ModifyWay way,
                                  AttributeValues& values) const {
  const std::optional<AttributeType> type = schema_.Find(change.attribute);
  if (!type) return UnknownAttribute();
  StoreStatus status = CheckGiven(change.operation, change.values, *type);
  if (status.Ok() && way == ModifyWay::kStrict) status = CheckExpectations(change, *type, values);
  if (!status.Ok()) return status;
  values = Merge(change, type->syntax, way, std::move(values));
  return CheckCount(change.operation, *type, values);
}

StoreStatus ModifyRules::CheckValue(const AttributeType& type, const std::string& value) const {
  if (value.empty()) return {kLdapInvalidSyntax, "empty value"};
  if (!FitsSyntax(type.syntax, value)) {
    return {kLdapInvalidSyntax, "the value does not fit the attribute's syntax"};
  }
  if (type.syntax == Syntax::kDistinguishedName && !is_name_(value)) {
    return {kLdapInvalidDnSyntax, "the value is no distinguished name"};
  }
  const std::int64_t extent = Extent(type.syntax, value);
  if (type.range_lower && extent < *type.range_lower) {
    return {kLdapConstraintViolation, "the value is below the lower bound"};
  }
  if (type.range_upper && extent > *type.range_upper) {
    return {kLdapConstraintViolation, "the value is above the upper bound"};
  }
  return {};
}

}  // namespace pelora::ldap
