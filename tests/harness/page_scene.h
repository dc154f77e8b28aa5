// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/headless/headless_property_sheet.h"
#include "server/class_table.h"
#include "tests/harness/field_editor.h"
#include "tests/unit/page_bench.h"

namespace pelora::testing {

/// A tab of the class table in a sheet in memory, over objects that have a value for each of its
/// fields, with somebody in front of it who edits every one of them.
class PageScene {
 public:
  enum class Phase : std::uint8_t { kOpening, kLoading, kEditing, kApplying };
  /// What each object holds.
  using States = std::vector<FakeAttributes>;

  PageScene(const ComponentClass& component, std::size_t objects);
  PageScene(const PageScene&) = delete;
  PageScene& operator=(const PageScene&) = delete;
  ~PageScene() { Close(); }

  /// Makes the tab and a sheet of it, and shows it unless the tab refuses the selection; what it
  /// answered to that.
  HRESULT Open();
  /// Edits every field; the names of those that could be.
  std::vector<std::string> Edit();
  /// Clicks OK; whether the sheet has closed.
  bool Ok();
  /// Lets go of sheet and tab.
  void Close();

  [[nodiscard]] bool IsOpen() const { return sheet_ && sheet_->IsOpen(); }
  [[nodiscard]] const std::vector<FieldRow>& rows() const { return rows_; }
  /// The dialog of the open tab.
  [[nodiscard]] HeadlessDialog& page() { return *sheet_->Dialog(0); }
  [[nodiscard]] FaultPlan& faults() { return bench_.faulty.plan(); }
  [[nodiscard]] PageBench& bench() { return bench_; }
  [[nodiscard]] States Stored() const;
  /// In which phase the fault was met; none: it was not yet.
  [[nodiscard]] std::optional<Phase> met_in() const { return met_in_; }
  /// Texts of the boxes since the last call, but for questions.
  [[nodiscard]] std::vector<std::string> TakeBoxes();
  /// Commits that came as far as the directory since the tab was opened or applied last.
  [[nodiscard]] std::size_t commits() const { return commits_; }
  /// What is still held of what everything that was opened held, in words; empty: nothing.
  [[nodiscard]] std::string LeftBehind() const;

 private:
  void Enter(Phase phase) { phase_ = phase; }
  /// Notes a fault that was met in the phase.
  void Leave();

  const ComponentClass& component_;
  std::vector<std::string> paths_;
  PageBench bench_;
  std::vector<FieldRow> rows_;
  std::unique_ptr<FieldEditor> editor_;
  std::optional<HeadlessPropertySheet> sheet_;
  Phase phase_ = Phase::kOpening;
  std::optional<Phase> met_in_;
  std::size_t commits_ = 0;
};

}  // namespace pelora::testing
