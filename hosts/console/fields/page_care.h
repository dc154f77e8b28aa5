// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/fields/field_menu.h"
#include "hosts/console/fields/page_marks.h"
#include "hosts/session/page_fields.h"
#include "hosts/session/typed/judge_page.h"

class QLineEdit;
class QTreeWidget;

namespace pelora::console {

/// The fields of one page as they stand: what there is to say of each, and its marks. A page
/// without selected objects is one of a new object: nothing was read there, so nothing on it counts
/// as changed or can be set back.
class PageCare final {
 public:
  /// Both outlive the object.
  PageCare(session::PageFields& fields, QtDialog& dialog);
  ~PageCare();
  PageCare(const PageCare&) = delete;
  PageCare& operator=(const PageCare&) = delete;

  /// Judges the page anew and draws its marks.
  void Refresh();
  /// What was found out beside the window of a field as it stands now, and whose it is, if it is
  /// somebody's.
  void SetLookedUp(std::size_t field, session::Judgement judgement,
                   std::optional<session::DirectoryObject> owner = std::nullopt);
  /// Whose what stands in a field is; null when nobody's is known of.
  [[nodiscard]] const session::DirectoryObject* OwnerOf(std::size_t field) const;

  [[nodiscard]] session::PageFields& fields() { return fields_; }
  /// Whether something on the page cannot be written.
  [[nodiscard]] bool IsWrong() const;
  /// What there is to say of a field, the worst first; without one, of the first that is as bad as
  /// any. Null when there is nothing.
  [[nodiscard]] const session::FieldJudgement* NoteOf(std::optional<std::size_t> field) const;

  /// The field whose control has, or lies around, a widget; of several in one list view, the one in
  /// whose row the keyboard is.
  [[nodiscard]] std::optional<std::size_t> FieldAt(const QWidget* widget) const;
  [[nodiscard]] std::optional<std::size_t> FindField(std::string_view attribute) const;
  /// The control that shows a field; null when the page has none.
  [[nodiscard]] QWidget* WidgetOf(std::size_t field) const;
  [[nodiscard]] std::string TextOf(std::size_t field) const;

  /// Sets a field back to what was read.
  void SetBack(std::size_t field);
  /// Whether a field has a value that can be taken away.
  [[nodiscard]] bool CanRemove(std::size_t field) const;
  /// Takes the value of a field from every object.
  void RemoveValue(std::size_t field);
  /// Called when something was changed by one of these. May be none.
  std::function<void()> on_changed;

 private:
  /// Shows in the control itself what of the objects' values it does not show.
  void ShowValuesInPlace();
  void ShowValueInPlace(QLineEdit& edit, std::size_t field, const QString& values);
  /// Of several objects, the rows of switches say how many have them on, and off, and both can be
  /// chosen for all of them.
  void ShowSwitches();
  void ShowSwitch(std::size_t field);
  /// The rows of lists show names for people, and which address is the default one.
  void ShowRows();
  [[nodiscard]] bool IsOfNewObject() const { return fields_.selection.empty(); }
  [[nodiscard]] bool IsSwitchesOnly(const QTreeWidget& list) const;
  void DrawMarks();

  session::PageFields& fields_;
  QtDialog& dialog_;
  QPointer<PageMarks> marks_;
  FieldMenu menu_;
  std::vector<Hint> hints_;
  std::vector<session::FieldJudgement> notes_;
  /// With the text that was looked up.
  struct LookedUp {
    std::string text;
    session::Judgement judgement;
    std::optional<session::DirectoryObject> owner;
  };
  std::map<std::size_t, LookedUp> looked_up_;
};

}  // namespace pelora::console
