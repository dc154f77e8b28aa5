// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/fields/page_care.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTreeWidget>
#include <algorithm>
#include <iterator>
#include <utility>

#include "hosts/console/dialogs/button_controls.h"
#include "hosts/console/fields/shown_rows.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/session/feature_counts.h"
#include "hosts/session/field_values.h"

namespace pelora::console {
namespace {

using session::FieldJudgement;
using session::Verdict;

Verdict VerdictOf(const FieldJudgement& note) { return note.judgement.verdict; }

MarkKind KindOf(Verdict verdict) {
  switch (verdict) {
    case Verdict::kWrong:
      return MarkKind::kWrong;
    case Verdict::kOdd:
      return MarkKind::kOdd;
    case Verdict::kFine:
      break;
  }
  return MarkKind::kChanged;
}

/// A screen reader is told with the control what others see beside it, and without anything to say
/// what its tooltip lists.
QString DescriptionOf(const FieldJudgement* note, bool is_changed, const QString& values) {
  const QString said = note != nullptr ? ToQString(note->judgement.sentence) : QString();
  if (!is_changed) return said.isEmpty() ? values : said;
  return said.isEmpty() ? QStringLiteral("changed") : QStringLiteral("changed; ") + said;
}

/// What is said of values in a field's place is read in a field that cannot be used as well as in
/// any other; there it would be all but gone.
void KeepPlaceholderReadable(QWidget& widget) {
  const QColor colour = QApplication::palette(&widget).color(QPalette::Active, QPalette::Text);
  QPalette palette = widget.palette();
  const QColor ground = palette.color(QPalette::Disabled, QPalette::Base);
  const auto between = [](int one, int other) { return (2 * one + other) / 3; };
  const QColor mixed(between(colour.red(), ground.red()), between(colour.green(), ground.green()),
                     between(colour.blue(), ground.blue()));
  if (palette.color(QPalette::Disabled, QPalette::PlaceholderText) == mixed) return;
  palette.setColor(QPalette::Disabled, QPalette::PlaceholderText, mixed);
  widget.setPalette(palette);
}

}  // namespace

PageCare::PageCare(session::PageFields& fields, QtDialog& dialog)
    : fields_(fields), dialog_(dialog), marks_(new PageMarks(dialog.widget())), menu_(*this) {
  if (IsOfNewObject()) return;
  for (std::size_t field = 0; field < fields_.touched.Count(); ++field) {
    if (QWidget* const widget = WidgetOf(field)) menu_.Watch(*widget);
  }
}

PageCare::~PageCare() { delete marks_.data(); }

void PageCare::Refresh() {
  notes_.clear();
  for (const auto& [field, known] : looked_up_) {
    if (known.judgement.sentence.empty() || TextOf(field) != known.text) continue;
    notes_.push_back({.field = field, .judgement = known.judgement});
  }
  std::ranges::move(session::JudgePage(fields_), std::back_inserter(notes_));
  if (!IsOfNewObject()) ShowValuesInPlace();
  if (fields_.selection.size() > 1) ShowSwitches();
  ShowRows();
  DrawMarks();
}

void PageCare::ShowRows() {
  if (fields_.selection.size() != 1) return;
  for (std::size_t field = 0; field < fields_.touched.Count(); ++field) {
    const FieldRow& row = fields_.touched.Row(field);
    auto* const list = qobject_cast<QListWidget*>(WidgetOf(field));
    if (list == nullptr) continue;
    if (row.kind == FieldKind::kNameList) ShowOwnNames(*list);
    if (row.kind != FieldKind::kDefaultEntry) continue;
    const auto stored = fields_.seen(fields_.selection.front(), row.attributes.front());
    const int at = MarkDefault(*list, stored.empty() ? QString() : ToQString(stored.front()));
    if (at >= 0) hints_.push_back({.control = list, .text = DefaultWord(), .row = at});
  }
}

void PageCare::ShowValuesInPlace() {
  hints_.clear();
  for (std::size_t field = 0; field < fields_.touched.Count(); ++field) {
    QWidget* const widget = WidgetOf(field);
    if (widget == nullptr) continue;
    if (auto* const box = dynamic_cast<AutoCheckBox*>(widget)) {
      box->SetUndecidedOrder(fields_.touched.WasUndecided(field));
    }
    const std::span<const session::HeldValue> values = session::ValuesOf(fields_, field);
    if (values.size() > 1) {
      SetPlainToolTip(*widget, ToQString(session::ValuesAsLines(values)));
    }
    auto* const edit = qobject_cast<QLineEdit*>(widget);
    if (auto* const list = qobject_cast<QComboBox*>(widget)) {
      KeepPlaceholderReadable(*list);
      list->setPlaceholderText(Readable(ToQString(session::ValuesInPlace(values))));
    }
    if (auto* const lines = qobject_cast<QPlainTextEdit*>(widget)) {
      lines->setPlaceholderText(Readable(fields_.touched.IsChanged(field)
                                             ? QStringLiteral("removed")
                                             : ToQString(session::ValuesInPlace(values))));
    }
    if (edit != nullptr) {
      KeepPlaceholderReadable(*edit);
      ShowValueInPlace(*edit, field, ToQString(session::ValuesInPlace(values)));
    }
  }
}

void PageCare::ShowValueInPlace(QLineEdit& edit, std::size_t field, const QString& values) {
  const bool is_changed = fields_.touched.IsChanged(field);
  edit.setPlaceholderText(is_changed ? QStringLiteral("removed") : Readable(values));
  // Pages show a number that is not set as 0.
  const bool is_zero = !is_changed && edit.text() == QStringLiteral("0");
  if (is_zero && !values.isEmpty()) hints_.push_back({.control = &edit, .text = values});
}

bool PageCare::IsSwitchesOnly(const QTreeWidget& list) const {
  const QList<QTreeWidgetItem*> selected = list.selectedItems();
  return std::all_of(selected.begin(), selected.end(), [this](const QTreeWidgetItem* item) {
    for (std::size_t field = 0; field < fields_.touched.Count(); ++field) {
      const FieldRow& row = fields_.touched.Row(field);
      if (ToQString(row.entry) == item->text(0)) return session::IsSwitch(row);
    }
    return false;
  });
}

void PageCare::ShowSwitches() {
  for (std::size_t field = 0; field < fields_.touched.Count(); ++field) {
    if (session::IsSwitch(fields_.touched.Row(field))) ShowSwitch(field);
  }
}

void PageCare::ShowSwitch(std::size_t field) {
  const FieldRow& row = fields_.touched.Row(field);
  auto* const list = dynamic_cast<QTreeWidget*>(WidgetOf(field));
  if (list == nullptr) return;
  constexpr int kStatus = 1;
  const QList<QTreeWidgetItem*> found = list->findItems(ToQString(row.entry), Qt::MatchExactly, 0);
  if (found.isEmpty()) return;
  QTreeWidgetItem& item = *found.front();
  const session::FeatureCounts counts = session::CountsOf(fields_, field);
  const bool is_changed = fields_.touched.IsChanged(field);
  const QString text = is_changed ? QStringLiteral("for all %1").arg(fields_.selection.size())
                                  : ToQString(session::CountsText(counts));
  item.setToolTip(kStatus, PlainToolTip(text));
  item.setData(kStatus, Qt::AccessibleDescriptionRole, text);
  hints_.push_back({.control = list, .text = text, .row = list->indexOfTopLevelItem(&item)});
  if (!item.isSelected() || is_changed || !IsSwitchesOnly(*list)) return;
  const std::size_t all = fields_.selection.size();
  for (const ControlId button : row.choice_buttons) {
    if (button != 0 && counts.on < all && counts.off < all) dialog_.SetEnabled(button, true);
  }
}

void PageCare::SetBack(std::size_t field) {
  session::SetBack(fields_, field);
  if (on_changed) on_changed();
}

bool PageCare::CanRemove(std::size_t field) const {
  const FieldKind kind = fields_.touched.Row(field).kind;
  const bool is_text = kind == FieldKind::kNumber || kind == FieldKind::kText ||
                       kind == FieldKind::kName || kind == FieldKind::kServer;
  const QWidget* const widget = WidgetOf(field);
  return is_text && fields_.touched.CanRemove(field) && widget != nullptr && widget->isEnabled() &&
         session::ValuesInPlace(session::ValuesOf(fields_, field)) != "not set";
}

void PageCare::RemoveValue(std::size_t field) {
  fields_.touched.RemoveValue(field, *fields_.dialog);
  if (on_changed) on_changed();
}

void PageCare::SetLookedUp(std::size_t field, session::Judgement judgement,
                           std::optional<session::DirectoryObject> owner) {
  looked_up_.insert_or_assign(field, LookedUp{.text = TextOf(field),
                                              .judgement = std::move(judgement),
                                              .owner = std::move(owner)});
  Refresh();
}

const session::DirectoryObject* PageCare::OwnerOf(std::size_t field) const {
  const auto found = looked_up_.find(field);
  const bool is_known = found != looked_up_.end() && found->second.text == TextOf(field);
  return is_known && found->second.owner ? &*found->second.owner : nullptr;
}

bool PageCare::IsWrong() const {
  return std::ranges::find(notes_, Verdict::kWrong, &VerdictOf) != notes_.end();
}

const FieldJudgement* PageCare::NoteOf(std::optional<std::size_t> field) const {
  const FieldJudgement* worst = nullptr;
  for (const FieldJudgement& note : notes_) {
    if (field && note.field != *field) continue;
    // How a text is understood is of interest to him who types it.
    if (!field && VerdictOf(note) == Verdict::kFine) continue;
    if (worst == nullptr || VerdictOf(note) > VerdictOf(*worst)) worst = &note;
  }
  return worst;
}

void PageCare::DrawMarks() {
  std::map<QWidget*, MarkKind> kinds;
  for (std::size_t field = 0; field < fields_.touched.Count(); ++field) {
    QWidget* const widget = WidgetOf(field);
    if (widget == nullptr) continue;
    const FieldJudgement* const note = NoteOf(field);
    const bool is_changed = fields_.touched.IsChanged(field) && !IsOfNewObject();
    const bool is_shared = kinds.contains(widget);
    const QString why = widget->property(kWhyReadOnly).toString();
    const auto values = session::ValuesOf(fields_, field);
    const QString listed =
        values.size() > 1 ? ToQString(session::ValuesAsLines(values)) : QString();
    const QString description = why.isEmpty() ? DescriptionOf(note, is_changed, listed) : why;
    if (!is_shared || !description.isEmpty()) widget->setAccessibleDescription(description);
    const Verdict verdict = note != nullptr ? VerdictOf(*note) : Verdict::kFine;
    if (!is_changed && verdict == Verdict::kFine) continue;
    const MarkKind kind = KindOf(verdict);
    const auto [place, is_new] = kinds.try_emplace(widget, kind);
    if (!is_new) place->second = std::max(place->second, kind);
  }
  if (marks_.isNull()) return;
  std::vector<Mark> marks;
  for (const auto& [widget, kind] : kinds) marks.push_back({.control = widget, .kind = kind});
  marks_->SetMarks(std::move(marks), hints_);
}

std::optional<std::size_t> PageCare::FieldAt(const QWidget* widget) const {
  if (widget == nullptr) return std::nullopt;
  for (std::size_t field = 0; field < fields_.touched.Count(); ++field) {
    const QWidget* const control = WidgetOf(field);
    if (control == nullptr || (control != widget && !control->isAncestorOf(widget))) continue;
    const std::string_view entry = fields_.touched.Row(field).entry;
    const auto* const list = entry.empty() ? nullptr : qobject_cast<const QTreeWidget*>(control);
    if (list == nullptr) return field;
    const QTreeWidgetItem* const row = list->currentItem();
    if (row != nullptr && row->text(0) == ToQString(entry)) return field;
  }
  return std::nullopt;
}

std::optional<std::size_t> PageCare::FindField(std::string_view attribute) const {
  for (std::size_t field = 0; field < fields_.touched.Count(); ++field) {
    if (fields_.touched.Row(field).attributes.front() == attribute) return field;
  }
  return std::nullopt;
}

QWidget* PageCare::WidgetOf(std::size_t field) const {
  const DialogControl* const control = dialog_.Find(fields_.touched.Row(field).control);
  return control != nullptr ? &control->widget() : nullptr;
}

std::string PageCare::TextOf(std::size_t field) const {
  return dialog_.Text(fields_.touched.Row(field).control);
}

}  // namespace pelora::console
