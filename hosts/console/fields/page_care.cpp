// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/fields/page_care.h"

#include <algorithm>
#include <utility>

#include "hosts/console/text/qt_text.h"

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

/// A screen reader is told with the control what others see beside it.
QString DescriptionOf(const FieldJudgement* note, bool is_changed) {
  const QString said = note != nullptr ? ToQString(note->judgement.sentence) : QString();
  if (!is_changed) return said;
  return said.isEmpty() ? QStringLiteral("changed") : QStringLiteral("changed; ") + said;
}

}  // namespace

PageCare::PageCare(session::PageFields& fields, QtDialog& dialog)
    : fields_(fields), dialog_(dialog), marks_(new PageMarks(dialog.widget())) {}

PageCare::~PageCare() { delete marks_.data(); }

void PageCare::Refresh() {
  notes_ = session::JudgePage(fields_);
  for (const auto& [field, known] : looked_up_) {
    if (known.judgement.sentence.empty() || TextOf(field) != known.text) continue;
    notes_.push_back({.field = field, .judgement = known.judgement});
  }
  DrawMarks();
}

void PageCare::SetLookedUp(std::size_t field, session::Judgement judgement) {
  looked_up_.insert_or_assign(field,
                              LookedUp{.text = TextOf(field), .judgement = std::move(judgement)});
  Refresh();
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
    const bool is_changed = fields_.touched.IsChanged(field);
    const bool is_shared = kinds.contains(widget);
    const QString description = DescriptionOf(note, is_changed);
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
  marks_->SetMarks(std::move(marks));
}

std::optional<std::size_t> PageCare::FieldAt(const QWidget* widget) const {
  if (widget == nullptr) return std::nullopt;
  for (std::size_t field = 0; field < fields_.touched.Count(); ++field) {
    const QWidget* const control = WidgetOf(field);
    if (control != nullptr && (control == widget || control->isAncestorOf(widget))) return field;
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
