// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/attribute_name.h"
#include "hosts/session/fields/field_catalogue.h"
#include "platform/field_rows.h"

namespace pelora::session {

/// The fields that the tabs of each directory class show. What is a name of an object or of a
/// server, and what an account's type is, the check knows from here.
class CheckFields {
 public:
  /// By the class's LDAP display name.
  using RowsByClass = std::map<std::string, std::vector<FieldRow>, ldap::AttributeNameLess>;

  /// Classes that are not in `rows` have no tabs, and their objects are not checked. The components
  /// that the rows come from outlive it.
  explicit CheckFields(RowsByClass rows);

  [[nodiscard]] bool HasTabs(std::string_view class_name) const {
    return rows_.find(class_name) != rows_.end();
  }
  [[nodiscard]] std::vector<std::string> Classes() const;
  /// The attributes that hold distinguished names, one or several, of all classes, each once.
  [[nodiscard]] const std::vector<std::string>& name_attributes() const { return name_attributes_; }
  /// The attributes that hold the `cn` of one computer.
  [[nodiscard]] const std::vector<std::string>& server_attributes() const {
    return server_attributes_;
  }

  /// The field of one class that gets its value from an attribute; null when there is none.
  [[nodiscard]] const FieldRow* Find(std::string_view class_name, std::string_view attribute) const;
  /// The choice of one class that writes an attribute, among others; null when there is none.
  [[nodiscard]] const FieldRow* FindChoice(std::string_view class_name,
                                           std::string_view attribute) const;

 private:
  RowsByClass rows_;
  std::vector<std::string> name_attributes_;
  std::vector<std::string> server_attributes_;
};

/// The fields of every class that the extension has tabs for. The catalogue outlives them.
[[nodiscard]] CheckFields CheckFieldsOf(FieldCatalogue& catalogue);

}  // namespace pelora::session
