// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/change_history.h"
#include "hosts/session/errands.h"
#include "hosts/session/writing_desk.h"
#include "platform/message_box.h"

namespace pelora::session {

/// What is known of which attributes of an object may be written.
struct WritableAttributes {
  /// Those that the directory says this user may write; nothing: it does not say.
  std::optional<std::set<std::string, ldap::AttributeNameLess>> allowed{};
};

/// Asks the directory. What cannot be read is not said: the directory has the last word in any
/// case.
[[nodiscard]] WritableAttributes ReadWritable(ldap::IDirectoryStore& store, const std::string& dn);

/// How the values of an attribute are edited.
enum class ValueForm : std::uint8_t {
  /// One text, of several lines perhaps.
  kText,
  /// A text in each line.
  kLines,
  kNumber,
  /// `TRUE` or `FALSE`.
  kBoolean,
};

/// An attribute of an object for editing.
struct EditableAttribute {
  std::string attribute;
  ValueForm form = ValueForm::kText;
  bool is_list = false;
  ldap::AttributeValues values{};
};

/// Why the values of an attribute cannot be edited as text here, as a sentence; empty when they
/// can: they are texts, numbers or Booleans that the directory lets somebody write.
[[nodiscard]] std::string WhyNotEditable(const ldap::Schema& schema,
                                         const WritableAttributes& writable,
                                         const ldap::Entry& entry, std::string_view attribute);

/// One that can be edited, as it is.
[[nodiscard]] EditableAttribute Editable(const ldap::Schema& schema, const ldap::Entry& entry,
                                         std::string_view attribute);

/// Attributes that the object does not have and that can be set, in the order of the alphabet.
[[nodiscard]] std::vector<std::string> Settable(const ldap::Schema& schema,
                                                const WritableAttributes& writable,
                                                const ldap::Entry& entry);

/// What is shown of the values for editing, and the values of what was typed. Line breaks are
/// "\n" in what is shown; empty: the attribute is not set.
[[nodiscard]] std::string TextOf(const EditableAttribute& edited);
[[nodiscard]] ldap::AttributeValues ValuesOf(const EditableAttribute& edited,
                                             const std::string& typed);

/// Why the directory would not take the values, as a sentence; empty when it may.
[[nodiscard]] std::string WhyNotTaken(const ldap::Schema& schema, const std::string& attribute,
                                      const ldap::AttributeValues& values);

/// What an attribute is written with. All of it outlives the writing; see `CommitSurroundings`.
struct AttributeWriting {
  ldap::IDirectoryStore& store;
  IErrands& errands;
  IMessageBox& message_box;
  IWritingDesk* desk = nullptr;
  ChangeHistory* history = nullptr;
};

/// Writes other values of an attribute, guarded by those that were seen, as the fields of a sheet
/// are: looked at first if the user wants that, conflicts asked about, failures told, kept to be
/// taken back. Whether nothing is left to be written.
[[nodiscard]] bool WriteAttribute(const AttributeWriting& with, const std::string& dn,
                                  const EditableAttribute& seen, ldap::AttributeValues wanted);

}  // namespace pelora::session
