// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "pages/command.h"
#include "wizards/wizard_base.h"

namespace pelora {

/// Base of the first page of a wizard for an object class of the groupware's own: it asks for the
/// new object's name and lets the console create the object under it.
class CWizardCreate : public CWizardBase {
 public:
  CWizardCreate(const Platform& platform, const Guid& object_interface,
                std::vector<ControlId> enabled_controls);

  /// In the pre-commit phase has the wizard make the object under its name; does nothing in the
  /// others. `kDataWritten` or `kDataNotWritten`.
  HRESULT WriteData(IDialog* owner, NewObjectPhase phase) final;
  /// "Fullname: ", the name, and a line end.
  HRESULT GetSummaryInfo(std::string& text) final;

  [[nodiscard]] const std::string& object_name() const { return object_name_; }

 protected:
  ~CWizardCreate() override = default;

  /// The name was edited.
  std::int32_t OnNameChanged();
  /// The name.
  [[nodiscard]] std::vector<Command> OwnCommands();
  [[nodiscard]] static std::vector<FieldRow> OwnRows();

  void Activate() const final;

 private:
  [[nodiscard]] HRESULT Validate(std::string* message) const;

  std::string object_name_;
};

}  // namespace pelora
