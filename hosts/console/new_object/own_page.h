// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "hosts/session/commands/name_patterns.h"
#include "hosts/session/own_values.h"
#include "hosts/session/secret.h"

class QButtonGroup;
class QCheckBox;
class QFormLayout;
class QLineEdit;
class QListWidget;

namespace pelora::console {

class HintLabel;

/// The console's own first page of a new-object wizard: the name, and what the kind needs beside
/// it. The full name of a person follows the first and the last name, a group's or computer's logon
/// name follows the name, and a user's the pattern that his company has for it, until the
/// administrator writes another.
class OwnPage final : public QWidget {
 public:
  /// `kind` outlives the page.
  OwnPage(const session::NewObjectKind& kind, session::OwnContext context, QWidget* parent);
  ~OwnPage() override;

  [[nodiscard]] session::OwnValues Values() const;
  /// The values but for the passwords.
  [[nodiscard]] session::OwnValues OpenValues() const;
  /// Why the page may not be left forwards, as a sentence; empty when it may.
  [[nodiscard]] QString WhyIncomplete() const;
  [[nodiscard]] const session::NewObjectKind& kind() const { return kind_; }
  [[nodiscard]] const session::OwnContext& context() const { return context_; }
  /// The first field.
  [[nodiscard]] QWidget& FirstField() const;

  /// Lets the administrator choose members of a group. May be none: then the group has none yet.
  std::function<std::vector<session::DirectoryObject>(QWidget& parent)> choose_members;

  /// Shows what an object is of which others are made as well: a group's scope and type.
  void TakeOver(const session::OwnValues& values);

  /// What names of users follow.
  void SetPatterns(session::NamePatterns patterns);
  [[nodiscard]] const session::NamePatterns& patterns() const { return patterns_; }
  /// Lets the administrator change the patterns of users' names. May be none: then they stay.
  std::function<void()> change_patterns;

  /// Called after every change.
  std::function<void()> on_changed;

 private:
  QLineEdit* AddEdit(QFormLayout& form, std::string_view label, const char* name);
  void AddNames(QFormLayout& form);
  void AddGroupChoices(QFormLayout& form);
  void AddMembers(QFormLayout& form);
  void ChooseMembers();
  void RemoveMembers();
  void AddPatterns(QFormLayout& form);
  void AddPasswords(QFormLayout& form);
  void Follow();
  void Changed();

  /// As long as a password stands in a field nobody can have the program's memory written out.
  void GuardPasswords();

  /// The logon name that follows from what is written.
  [[nodiscard]] std::string FollowingLogonName() const;

  std::optional<session::DumpGuard> guard_;
  const session::NewObjectKind& kind_;
  session::OwnContext context_;
  session::NamePatterns patterns_;
  // Null where the kind has none.
  QLineEdit* first_name_ = nullptr;
  QLineEdit* last_name_ = nullptr;
  QLineEdit* name_ = nullptr;
  QLineEdit* logon_name_ = nullptr;
  QButtonGroup* scope_ = nullptr;
  QButtonGroup* type_ = nullptr;
  QListWidget* members_list_ = nullptr;
  std::vector<session::DirectoryObject> members_;
  QLineEdit* password_ = nullptr;
  QLineEdit* confirmation_ = nullptr;
  QCheckBox* must_change_ = nullptr;
  HintLabel* hint_ = nullptr;
  /// The administrator has written something else than what followed.
  bool name_is_own_ = false;
  bool logon_name_is_own_ = false;
};

}  // namespace pelora::console
