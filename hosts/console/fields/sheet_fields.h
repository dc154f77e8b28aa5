// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "hosts/console/fields/field_notes.h"
#include "hosts/console/fields/page_care.h"
#include "hosts/console/fields/page_foot.h"
#include "hosts/console/sheets/property_sheet.h"
#include "hosts/session/guarded_tabs.h"

namespace pelora::console {

/// Looks after the fields of a property sheet while they are edited: marks what was changed and
/// what is wrong, says so in a line below the pages, holds OK and Apply while something is wrong,
/// and asks the directory, beside the window, what has to be looked up.
///
/// Belongs to the sheet.
class SheetFields final : public QObject {
 public:
  /// `opener` may be none; then nothing is looked up.
  SheetFields(QtPropertySheet& sheet, std::shared_ptr<session::GuardedTabs> tabs,
              ldap::StoreOpener opener);
  ~SheetFields() override;

  /// Shows the page with the field of an attribute and puts the keyboard into it. Nothing happens
  /// where no page has such a field.
  void GoTo(std::string_view attribute);

  [[nodiscard]] const PageFoot& foot() const { return *foot_; }
  /// Whether an answer of the directory is awaited.
  [[nodiscard]] bool IsAsking() const { return notes_.IsAsking(); }
  [[nodiscard]] FieldNotes& notes() { return notes_; }
  [[nodiscard]] session::GuardedTabs& tabs() { return *tabs_; }
  [[nodiscard]] const QtPropertySheet& sheet() const { return sheet_; }

 private:
  void OnEdited(std::size_t page);
  void OnFocusMoved(const QWidget* now);
  [[nodiscard]] bool MayApply();
  /// Says to the machine whether the page has changes, where that is known better than by it.
  void TellMachine(std::size_t page);
  void LookUpDefaultQuota(std::size_t page);
  void ShowHold();
  void ShowNote();
  [[nodiscard]] FootNote NoteToShow();
  [[nodiscard]] std::optional<FootNote> QuotaHint(PageCare& page) const;

  QtPropertySheet& sheet_;
  std::shared_ptr<session::GuardedTabs> tabs_;
  PageFoot* foot_;
  /// By the pages' numbers, from when they are filled.
  std::map<std::size_t, std::unique_ptr<PageCare>> pages_;
  bool has_asked_quota_ = false;
  QString default_quota_;
  // Gone before the pages of which it says something.
  FieldNotes notes_;
};

}  // namespace pelora::console
