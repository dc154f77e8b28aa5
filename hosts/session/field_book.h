// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/changes/change.h"
#include "hosts/resources/dialog_template.h"
#include "hosts/session/own_pages/own_field.h"
#include "hosts/session/write_failure.h"
#include "platform/field_rows.h"

namespace pelora::session {

/// One field of a change as a person reads it.
struct ShownField {
  std::string attribute;
  std::string field;
  std::string before;
  std::string after;
};

/// What the fields of a sheet are called and hold, by the attributes that they edit.
class FieldBook {
 public:
  /// Takes down the fields of a page; what is known of an attribute stays.
  void Add(const std::vector<FieldRow>& rows, const resources::DialogTemplate& page);
  /// The same for one field that is called so.
  void Add(const FieldRow& row, const std::string& label);

  /// The same for an attribute that its fields show in parts: it is told as a whole.
  void Add(const AttributeWords& words);

  [[nodiscard]] const FieldLabels& labels() const { return labels_; }
  /// The attribute's own name where no field edits it.
  [[nodiscard]] std::string LabelOf(std::string_view attribute) const;
  /// Values as the field shows them, one after the other: "yes" and "no" for a box, "not set" for
  /// none. What is no text is told as its length.
  [[nodiscard]] std::string TextOf(std::string_view attribute,
                                   const changes::AttributeValues& values) const;
  /// The fields of a change, in its order. Where several attributes belong to one field, each has
  /// its name behind the field's.
  [[nodiscard]] std::vector<ShownField> FieldsOf(const changes::Change& change) const;

 private:
  [[nodiscard]] std::string TextIn(const changes::ValueChange& change, bool is_after) const;

  FieldLabels labels_;
  std::map<std::string, FieldKind, ldap::AttributeNameLess> kinds_;
  std::map<std::string, AttributeWords, ldap::AttributeNameLess> words_;
};

}  // namespace pelora::session
