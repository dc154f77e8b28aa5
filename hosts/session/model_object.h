// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/fields/field_catalogue.h"
#include "hosts/session/own_values.h"
#include "platform/ads.h"
#include "platform/dialog.h"
#include "platform/dialog_controller.h"

namespace pelora::session {

/// An object after which a new one of its kind is made. What belongs to one object alone is not
/// taken over: its names, addresses, delegates, recipients and members, and its password. What
/// several objects may share is: quotas, features, the home server and the like, and of a person
/// where he works.
class ModelObject final {
 public:
  /// What has to be read of it. `fields` are those of its class.
  [[nodiscard]] static std::vector<std::string> Attributes(std::span<const Field> fields);

  /// `fields` and `schema` outlive the object.
  ModelObject(std::string name, ldap::Entry entry, std::span<const Field> fields,
              const ldap::Schema& schema)
      : name_(std::move(name)), entry_(std::move(entry)), fields_(fields), schema_(schema) {}

  [[nodiscard]] const std::string& name() const { return name_; }

  /// Of a group: its scope and type.
  void TakeOver(OwnValues& values) const;

  /// Fills in a page of the new object as a person would, who hears of it. What the page is told
  /// stays what it says before it is activated.
  void FillIn(const std::vector<FieldRow>& rows, IDialog& dialog, IDialogController& page) const;

  /// What is taken over beside what pages show.
  struct Rest {
    std::vector<ldap::Modification> values{};
    /// Everything that stands in `values`, as a person reads it, a line each.
    std::vector<std::string> lines{};
  };
  /// Of the fields, those whose attributes are none of `shown`; none of them without
  /// `with_settings`.
  [[nodiscard]] Rest RestBeside(std::span<const std::string_view> shown, bool with_settings) const;

  /// Stages it on a new object. The first failure ends it and is returned.
  [[nodiscard]] HRESULT Stage(const Rest& rest, IADs& object) const;

 private:
  void AddSettings(std::span<const std::string_view> shown, Rest& rest) const;
  /// Takes over what a field says; false when it says nothing.
  bool AddValues(const FieldRow& row, Rest& rest) const;
  [[nodiscard]] ldap::AttributeValues ValuesToTake(const FieldRow& row,
                                                   std::string_view attribute) const;

  std::string name_;
  ldap::Entry entry_;
  std::span<const Field> fields_;
  const ldap::Schema& schema_;
};

}  // namespace pelora::session
