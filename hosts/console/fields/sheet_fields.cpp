// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/fields/sheet_fields.h"

#include <QApplication>
#include <algorithm>
#include <utility>

#include "hosts/console/fields/query_preview.h"
#include "hosts/console/program/guarded_application.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/session/field_values.h"
#include "hosts/session/typed/default_quota.h"
#include "hosts/session/typed/field_roles.h"
#include "hosts/session/typed/known_server.h"

namespace pelora::console {
namespace {

FootNote::Level LevelOf(session::Verdict verdict) {
  switch (verdict) {
    case session::Verdict::kWrong:
      return FootNote::Level::kWrong;
    case session::Verdict::kOdd:
      return FootNote::Level::kOdd;
    case session::Verdict::kFine:
      break;
  }
  return FootNote::Level::kHint;
}

}  // namespace

SheetFields::SheetFields(QtPropertySheet& sheet, std::shared_ptr<session::GuardedTabs> tabs,
                         ldap::StoreOpener opener)
    : QObject(&sheet),
      sheet_(sheet),
      tabs_(std::move(tabs)),
      opener_(std::move(opener)),
      foot_(new PageFoot(&sheet)) {
  if (opener_) questions_.emplace(opener_);
  sheet_.SetFoot(*foot_);
  sheet_.may_apply = [this] { return MayApply(); };
  sheet_.go_to = [this](std::string_view attribute) { GoTo(attribute); };
  tabs_->on_edited = [this](std::size_t page) { OnEdited(page); };
  connect(qApp, &QApplication::focusChanged, this,
          [this](const QWidget* /*old*/, const QWidget* now) {
            DoGuarded([this, now] { OnFocusMoved(now); });
          });
}

SheetFields::~SheetFields() { tabs_->on_edited = nullptr; }

void SheetFields::GoTo(std::string_view attribute) {
  for (std::size_t page = 0; page < sheet_.PageCount(); ++page) {
    const session::TouchedFields& touched = tabs_->Fields(page).touched;
    for (std::size_t field = 0; field < touched.Count(); ++field) {
      const std::vector<std::string_view>& attributes = touched.Row(field).attributes;
      if (std::ranges::find(attributes, attribute) == attributes.end()) continue;
      sheet_.SelectPage(page);
      const auto care = pages_.find(page);
      QWidget* const widget = care == pages_.end() ? nullptr : care->second->WidgetOf(field);
      if (widget != nullptr) widget->setFocus(Qt::OtherFocusReason);
      return;
    }
  }
}

void SheetFields::OnEdited(std::size_t page) {
  QtDialog* const dialog = sheet_.Dialog(page);
  if (dialog == nullptr) return;
  auto& care = pages_[page];
  if (!care) {
    care = std::make_unique<PageCare>(tabs_->Fields(page), *dialog);
    care->on_changed = [this, page] {
      // The page does not say so of a value that was not shown.
      sheet_.machine().SetModified(page, true);
      OnEdited(page);
    };
  }
  care->Refresh();
  TellMachine(page);
  LookUp(page);
  ShowHold();
  ShowNote();
}

void SheetFields::TellMachine(std::size_t page) {
  const session::TouchedFields& touched = tabs_->Fields(page).touched;
  // A page does not say of everything that can be done on it that it changes something.
  if (touched.HasChangedFields()) return sheet_.machine().SetModified(page, true);
  if (!touched.HasOtherEdits()) sheet_.machine().SetModified(page, false);
}

void SheetFields::ShowHold() {
  sheet_.SetHeld(
      std::ranges::any_of(pages_, [](const auto& page) { return page.second->IsWrong(); }));
}

bool SheetFields::MayApply() {
  for (const auto& [number, page] : pages_) {
    session::PutWhatIsMeant(page->fields());
    page->Refresh();
  }
  ShowHold();
  ShowNote();
  return std::ranges::none_of(pages_, [](const auto& page) { return page.second->IsWrong(); });
}

void SheetFields::OnFocusMoved(const QWidget* now) {
  const auto current = pages_.find(sheet_.PageCount() > 0 ? sheet_.CurrentPage() : 0);
  // The line's own button is no reason to say something else.
  if (current == pages_.end() || now == nullptr || foot_->isAncestorOf(now)) return;
  PageCare& page = *current->second;
  const std::optional<std::size_t> field = page.FieldAt(now);
  if (focused_ && focused_ != field && page.fields().IsShown()) {
    session::PutWhatIsMeant(page.fields());
    page.Refresh();
  }
  focused_ = field;
  ShowNote();
}

void SheetFields::ShowNote() { foot_->Show(NoteToShow()); }

FootNote SheetFields::NoteToShow() {
  const auto current = pages_.find(sheet_.CurrentPage());
  if (current == pages_.end()) return {};
  PageCare& page = *current->second;
  if (!page.fields().IsShown()) return {};
  std::optional<std::size_t> field = page.FieldAt(QApplication::focusWidget());
  if (!field && QApplication::focusWidget() != nullptr &&
      foot_->isAncestorOf(QApplication::focusWidget())) {
    field = focused_;
  }
  const session::FieldJudgement* note = field ? page.NoteOf(field) : nullptr;
  if (note == nullptr) note = page.NoteOf(std::nullopt);
  FootNote shown;
  if (note != nullptr) {
    const QString label = ToQString(page.fields().labels.at(note->field));
    const QString said = ToQString(note->judgement.sentence);
    shown.level = LevelOf(note->judgement.verdict);
    shown.text = label.isEmpty() ? said : QStringLiteral("%1: %2").arg(label, said);
    AddOffer(shown, page, note->field);
  } else if (field) {
    // There is not always room for it in the field itself.
    const QString values =
        ToQString(session::ValuesInPlace(session::ValuesOf(page.fields(), *field)));
    const bool is_several = page.fields().selection.size() > 1;
    if (is_several && !values.isEmpty() && !page.fields().touched.IsChanged(*field)) {
      shown.level = FootNote::Level::kHint;
      shown.text = QStringLiteral("%1: %2").arg(ToQString(page.fields().labels.at(*field)), values);
    }
    AddOffer(shown, page, *field);
  }
  if (shown.level == FootNote::Level::kNothing) return QuotaHint(page).value_or(FootNote{});
  return shown;
}

void SheetFields::AddOffer(FootNote& note, PageCare& page, std::size_t field) {
  const FieldRow& row = page.fields().touched.Row(field);
  if (row.kind == FieldKind::kServer && note.level == FootNote::Level::kOdd) {
    note.action = QStringLiteral("C&lear");
    note.act = [&page, field] { page.RemoveValue(field); };
  }
  if (note.level == FootNote::Level::kWrong && page.TextOf(field).empty() &&
      page.CanRemove(field)) {
    note.action = QStringLiteral("&Remove from %1").arg(page.fields().selection.size());
    note.act = [&page, field] { page.RemoveValue(field); };
  }
  const bool is_query =
      row.attributes.front() == session::kQueryField && !page.TextOf(field).empty();
  if (!is_query || note.level == FootNote::Level::kWrong || !opener_) return;
  if (note.level == FootNote::Level::kNothing) {
    note.level = FootNote::Level::kHint;
    note.text = QStringLiteral("The objects that the query finds can be looked at beforehand.");
  }
  note.action = QStringLiteral("&Find them");
  note.act = [this, &page, field] { FindObjects(page, field); };
}

std::optional<FootNote> SheetFields::QuotaHint(PageCare& page) const {
  const std::optional<std::size_t> box = page.FindField(session::kOwnQuotaField);
  if (default_quota_.isEmpty() || !box || !page.FindField(session::kUsersServerField))
    return std::nullopt;
  const ControlId control = page.fields().touched.Row(*box).control;
  if (page.fields().dialog->Check(control) == CheckState::kChecked) return std::nullopt;
  return FootNote{.level = FootNote::Level::kHint, .text = default_quota_};
}

void SheetFields::LookUp(std::size_t page) {
  if (!questions_) return;
  const session::TouchedFields& touched = tabs_->Fields(page).touched;
  for (std::size_t field = 0; field < touched.Count(); ++field) {
    const FieldRow& row = touched.Row(field);
    if (row.kind == FieldKind::kServer && row.entry.empty()) LookUpServer(page, field);
  }
  LookUpDefaultQuota(page);
}

void SheetFields::LookUpServer(std::size_t page, std::size_t field) {
  const std::string name = pages_.at(page)->TextOf(field);
  std::string& asked = asked_servers_[{page, field}];
  if (asked == name) return;
  asked = name;
  questions_->Ask([this, page, field, name](ldap::IDirectoryStore& store) {
    return [this, page, field, name, judgement = session::JudgeServer(store, name)] {
      PageCare& care = *pages_.at(page);
      if (!care.fields().IsShown() || care.TextOf(field) != name) return;
      care.SetLookedUp(field, judgement);
      ShowNote();
    };
  });
}

void SheetFields::LookUpDefaultQuota(std::size_t page) {
  PageCare& care = *pages_.at(page);
  if (has_asked_quota_ || !care.FindField(session::kOwnQuotaField) ||
      !care.FindField(session::kUsersServerField))
    return;
  has_asked_quota_ = true;
  // Several users may be of several companies.
  if (care.fields().selection.size() != 1) return;
  questions_->Ask([this, dn = care.fields().selection.front().dn](ldap::IDirectoryStore& store) {
    const std::optional<session::DefaultQuota> quota = session::FindDefaultQuota(store, dn);
    const std::string sentence = quota ? session::DefaultQuotaSentence(*quota) : std::string();
    return [this, sentence] {
      default_quota_ = ToQString(sentence);
      ShowNote();
    };
  });
}

void SheetFields::FindObjects(PageCare& page, std::size_t field) {
  const std::optional<std::size_t> base = page.FindField(session::kQueryBaseField);
  auto* const preview = new QueryPreview(
      {.filter = page.TextOf(field), .base = base ? page.TextOf(*base) : std::string()}, opener_,
      &sheet_);
  preview->setAttribute(Qt::WA_DeleteOnClose);
  preview->show();
}

}  // namespace pelora::console
