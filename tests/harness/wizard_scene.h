// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "hosts/headless/headless_new_object_wizard.h"
#include "server/class_table.h"
#include "tests/harness/field_editor.h"
#include "tests/unit/page_bench.h"

namespace pelora::testing {

/// Those of the class table.
[[nodiscard]] std::vector<const ComponentClass*> WizardPages();

/// A wizard of one page of the module's, from the name to the summary, and what it makes.
class WizardScene {
 public:
  explicit WizardScene(const ComponentClass& component);
  WizardScene(const WizardScene&) = delete;
  WizardScene& operator=(const WizardScene&) = delete;

  /// Shows a wizard up to its page; whether that came off. One that was open is left.
  bool Open();
  /// Fills every field in and goes on to the summary; the names of the fields.
  std::vector<std::string> FillIn();
  bool Finish();
  /// Whether the fault was met before the object was to be made.
  [[nodiscard]] bool was_met_early() const { return was_filled_in_; }

  [[nodiscard]] bool IsOpen() const { return wizard_ && wizard_->IsOpen(); }
  void Close() { wizard_.reset(); }
  [[nodiscard]] const std::vector<FieldRow>& rows() const { return rows_; }
  [[nodiscard]] FaultPlan& faults() { return bench_.faulty.plan(); }
  /// What there is of the object; nothing while it is not there.
  [[nodiscard]] std::optional<FakeAttributes> Stored() const;
  /// How many attributes were staged in the last Finish.
  [[nodiscard]] std::size_t Staged() const;
  [[nodiscard]] std::vector<std::string> TakeBoxes();
  [[nodiscard]] std::string LeftBehind() const;

 private:
  const ComponentClass& component_;
  PageBench bench_;
  std::vector<FieldRow> rows_;
  std::optional<HeadlessNewObjectWizard> wizard_;
  bool was_filled_in_ = false;
};

}  // namespace pelora::testing
