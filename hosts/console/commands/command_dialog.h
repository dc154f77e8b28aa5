// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QTimer>
#include <vector>

#include "hosts/console/commands/plan_model.h"
#include "hosts/console/reading/directory_questions.h"
#include "hosts/session/commands/command_fields.h"
#include "hosts/session/commands/selection_command.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTableView;

namespace pelora::console {

class PageFoot;

/// Adds, replaces and removes addresses of the selected objects, and puts names into their lists or
/// takes them out. Shows what would become of each object while it is typed; who has an address
/// already is asked beside the window, and once more before anything is written.
class CommandDialog final : public QDialog {
 public:
  /// All outlive the dialog. The objects have been read.
  CommandDialog(session::SelectionCommand& command, const session::CommandFields& fields,
                session::IErrands& errands, ldap::IDirectoryStore& store, ldap::StoreOpener opener,
                QWidget* parent);
  ~CommandDialog() override;

  /// Whether an answer of the directory is awaited, or what was typed is not looked at yet.
  [[nodiscard]] bool IsBusy() const { return pause_.isActive() || questions_.IsAsking(); }
  /// Puts a name among those that are put in or taken out.
  void AddName(const session::DirectoryObject& object);

  /// Writes; closes when everything was done.
  void accept() override;

 private:
  using Kind = session::ValueCommand::Kind;

  void MakeInputs(QFormLayout& form);
  void MakeButtons(QLayout& layout);
  [[nodiscard]] session::ValueCommand Command() const;
  [[nodiscard]] Kind KindChosen() const;
  void ShowInputs();
  void ChooseNames();
  /// Something was typed or chosen.
  void Changed();
  void ShowPlan();
  void TakeOwners(int plan, const session::AddressOwners& owners);
  void ShowSums();

  session::SelectionCommand& command_;
  const session::CommandFields& fields_;
  session::IErrands& errands_;
  ldap::IDirectoryStore& store_;
  ldap::StoreOpener opener_;
  PlanModel* model_;
  QFormLayout* form_ = nullptr;
  QComboBox* what_ = nullptr;
  QLineEdit* gone_ = nullptr;
  QLineEdit* address_ = nullptr;
  QCheckBox* default_ = nullptr;
  QListWidget* names_ = nullptr;
  QWidget* names_line_ = nullptr;
  QCheckBox* leaves_odd_out_ = nullptr;
  QLabel* sums_ = nullptr;
  PageFoot* foot_ = nullptr;
  QPushButton* write_ = nullptr;
  QTimer pause_;
  /// Counts what was shown: answers to an earlier plan come too late.
  int plan_ = 0;
  // Last: nothing arrives any more when the rest goes.
  DirectoryQuestions questions_;
};

}  // namespace pelora::console
