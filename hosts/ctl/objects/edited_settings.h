// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "hosts/ctl/objects/read_settings.h"
#include "hosts/ctl/pages/settings_changer.h"
#include "hosts/ctl/text/edit_text.h"

namespace pelora::ctl {

/// The settings of objects while a person edits them as text: what they were when the text was
/// made, and what was changed in it.
class EditedSettings {
 public:
  /// Reads the objects; those that cannot be shown have no part in the text. The workplace and the
  /// targets outlive the settings.
  EditedSettings(Workplace& workplace, std::span<const Target> targets);

  /// Whether there is nothing to edit.
  [[nodiscard]] bool IsEmpty() const;
  /// The settings as they were read.
  [[nodiscard]] std::string Text() const;

  /// Takes an edited text: what was changed in it, and whether the tabs would take that. What is
  /// wrong comes back, and nothing is kept then.
  [[nodiscard]] std::vector<EditFault> Take(const std::string& text, SettingsChanger& changer);

  /// What was changed of the object at a place among the targets.
  [[nodiscard]] std::span<const Assignment> AssignmentsAt(std::size_t at) const {
    return objects_[at].assignments;
  }
  /// What somebody else has changed since the text was made, of what was changed in it: a sentence,
  /// or nothing.
  [[nodiscard]] std::string WhatElseChanged(std::size_t at, const ldap::Entry& entry) const;

 private:
  struct Object {
    /// Without a name when it cannot be shown.
    ldap::Entry entry;
    ShownObject shown;
    std::vector<Assignment> assignments;
  };

  [[nodiscard]] std::vector<EditFault> Compare(const EditObject& edited, SettingsChanger& changer);

  Workplace& workplace_;
  std::vector<Object> objects_;
};

}  // namespace pelora::ctl
