// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "hosts/ldap/directory_store.h"
#include "platform/field_rows.h"

namespace pelora::session {

/// What an object has of an attribute; none: not set.
using StoredValues = std::function<ldap::AttributeValues(std::string_view attribute)>;

/// What a field shows of an object, and what is stored for what it shows. A box shows "1" or "0".
struct FieldForm {
  std::string (*shown)(std::string_view attribute, const StoredValues& stored) = nullptr;
  /// The attribute's new values, where it has `now`; nothing: it stays as it is.
  std::optional<ldap::AttributeValues> (*stored)(const std::string& shown,
                                                 const ldap::AttributeValues& now) = nullptr;
  /// Why what is shown cannot be stored, as a sentence; empty when it can. May be none.
  std::string (*why_not)(const std::string& shown) = nullptr;
  /// A box that can be cleared and never set: one that no object has set cannot be used.
  bool is_only_cleared = false;
};

/// One field of a page of our own: a control for one attribute.
struct OwnField {
  ControlId control = 0;
  FieldKind kind = FieldKind::kText;
  /// LDAP display name.
  std::string_view attribute;
  const FieldForm* form = nullptr;
  /// How it is named where one attribute has several fields; empty: by the attribute.
  std::string_view name{};
  /// The buttons that choose an object for it and empty it; 0: none.
  ControlId choose = 0;
  ControlId clear = 0;

  [[nodiscard]] FieldRow Row() const;
};

/// How an attribute is told that no field shows whole: what it is called, and its values in words.
struct AttributeWords {
  std::string_view attribute;
  std::string_view label;
  std::string (*text)(const ldap::AttributeValues& values) = nullptr;
  /// A change holds what is taken out and what is put in alone, and is told so.
  bool is_told_in_part = false;
};

/// Which objects a page lists instead of showing fields.
enum class ListedObjects : std::uint8_t {
  kNone,
  /// Those that are in a group.
  kMembers,
  /// The groups that an object is in.
  kGroups,
};

/// A page of our own, which stands behind the extension's.
struct OwnPageKind {
  /// Its template for one object, and for several.
  DialogId of_one = 0;
  DialogId of_several = 0;
  /// The classes (LDAP display names) whose objects have it.
  std::span<const std::string_view> classes;
  /// Those that a template lacks are not on it.
  std::span<const OwnField> fields;
  /// What is read beside the fields' attributes.
  std::span<const std::string_view> also_read{};
  std::span<const AttributeWords> words{};
  /// The button by which a user is given another password, and where it says why he cannot be; 0:
  /// none.
  ControlId reset_password = 0;
  ControlId reset_note = 0;
  ListedObjects lists = ListedObjects::kNone;

  [[nodiscard]] std::vector<std::string> Attributes() const;
};

/// The pages, in the order of their tabs.
[[nodiscard]] std::span<const OwnPageKind> OwnPageKinds();

}  // namespace pelora::session
