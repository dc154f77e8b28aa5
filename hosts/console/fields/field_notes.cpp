// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/fields/field_notes.h"

#include <QApplication>
#include <chrono>

#include "hosts/console/fields/query_preview.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/session/field_values.h"
#include "hosts/session/typed/address_owner.h"
#include "hosts/session/typed/field_roles.h"
#include "hosts/session/typed/known_server.h"
#include "hosts/session/typed/typed_address.h"

namespace pelora::console {
namespace {

using session::Verdict;

/// After so long without a key the directory is asked.
constexpr std::chrono::milliseconds kTypingPause{250};

FootNote::Level LevelOf(Verdict verdict) {
  switch (verdict) {
    case Verdict::kWrong:
      return FootNote::Level::kWrong;
    case Verdict::kOdd:
      return FootNote::Level::kOdd;
    case Verdict::kFine:
      break;
  }
  return FootNote::Level::kHint;
}

bool IsServer(const FieldRow& row) { return row.kind == FieldKind::kServer && row.entry.empty(); }

/// Whether an address is typed right on the page.
bool IsAddress(const FieldRow& row) {
  return row.kind == FieldKind::kText && session::HoldsAddresses(row);
}

QString Labelled(PageCare& page, std::size_t field, const QString& text) {
  const QString label = ToQString(page.fields().labels.at(field));
  return label.isEmpty() ? text : QStringLiteral("%1: %2").arg(label, text);
}

}  // namespace

FieldNotes::FieldNotes(const PageFoot& foot, ldap::StoreOpener opener)
    : foot_(foot), opener_(std::move(opener)) {
  if (opener_) questions_.emplace(opener_);
  pause_.setSingleShot(true);
  pause_.setInterval(kTypingPause);
  QObject::connect(&pause_, &QTimer::timeout, &pause_, [this] { AskForOwners(); });
}

bool FieldNotes::IsAsking() const {
  return pause_.isActive() || (questions_ && questions_->IsAsking());
}

FootNote FieldNotes::NoteOf(PageCare& page) {
  std::optional<std::size_t> field = page.FieldAt(QApplication::focusWidget());
  if (!field && QApplication::focusWidget() != nullptr &&
      foot_.isAncestorOf(QApplication::focusWidget())) {
    field = focused_;
  }
  const session::FieldJudgement* note = field ? page.NoteOf(field) : nullptr;
  if (note == nullptr) note = page.NoteOf(std::nullopt);
  FootNote shown;
  if (note != nullptr) {
    shown.level = LevelOf(note->judgement.verdict);
    shown.text = Labelled(page, note->field, ToQString(note->judgement.sentence));
    AddOffer(shown, page, note->field);
  } else if (field) {
    // There is not always room for it in the field itself.
    const QString values =
        ToQString(session::ValuesInPlace(session::ValuesOf(page.fields(), *field)));
    const bool is_several = page.fields().selection.size() > 1;
    if (is_several && !values.isEmpty() && !page.fields().touched.IsChanged(*field)) {
      shown.level = FootNote::Level::kHint;
      shown.text = Labelled(page, *field, values);
    }
    AddOffer(shown, page, *field);
  }
  return shown;
}

void FieldNotes::OnFocusMoved(PageCare& page, const QWidget* now) {
  const std::optional<std::size_t> field = page.FieldAt(now);
  if (focused_ && focused_ != field && page.fields().IsShown()) {
    session::PutWhatIsMeant(page.fields());
    page.Refresh();
  }
  focused_ = field;
}

void FieldNotes::AddOffer(FootNote& note, PageCare& page, std::size_t field) {
  const FieldRow& row = page.fields().touched.Row(field);
  if (row.kind == FieldKind::kServer && note.level == FootNote::Level::kOdd) {
    note.action = QStringLiteral("Remo&ve");
    note.act = [&page, field] { page.RemoveValue(field); };
  }
  if (const session::DirectoryObject* const owner = page.OwnerOf(field); owner && show_object) {
    note.action = QStringLiteral("O&pen");
    note.act = [this, owner = *owner] { show_object(owner, *foot_.window()); };
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

void FieldNotes::LookUp(PageCare& page) {
  if (!questions_ || !page.fields().IsShown()) return;
  const session::TouchedFields& touched = page.fields().touched;
  for (std::size_t field = 0; field < touched.Count(); ++field) {
    const Place place(&page, field);
    if (IsServer(touched.Row(field))) AskForServer(place);
    if (!IsAddress(touched.Row(field)) || !touched.IsChanged(field)) continue;
    const auto asked = asked_.find(place);
    if (asked != asked_.end() && asked->second == page.TextOf(field)) continue;
    typed_.insert(place);
    pause_.start();
  }
}

bool FieldNotes::IsAnother(const Place& place, const std::string& text) {
  std::string& asked = asked_[place];
  if (asked == text) return false;
  asked = text;
  return true;
}

void FieldNotes::AskForServer(const Place& place) {
  const auto& [page, field] = place;
  const std::string name = page->TextOf(field);
  if (!IsAnother(place, name)) return;
  questions_->Ask([this, place, name](ldap::IDirectoryStore& store) {
    return [this, place, name, judgement = session::JudgeServer(store, name)] {
      const auto& [asking, at] = place;
      if (!asking->fields().IsShown() || asking->TextOf(at) != name) return;
      asking->SetLookedUp(at, judgement);
      if (on_answer) on_answer();
    };
  });
}

void FieldNotes::AskForOwners() {
  for (const Place& place : std::exchange(typed_, {})) {
    const auto& [page, field] = place;
    if (!page->fields().IsShown()) continue;
    const std::string address = page->TextOf(field);
    if (!IsAnother(place, address) || address.empty()) continue;
    if (session::JudgeAddress(address).verdict == Verdict::kWrong) continue;
    questions_->Ask([this, place, address, except = own](ldap::IDirectoryStore& store) {
      return [this, place, address, owner = session::FindAddressOwner(store, address, except)] {
        const auto& [asking, at] = place;
        if (!owner || !asking->fields().IsShown() || asking->TextOf(at) != address) return;
        asking->SetLookedUp(at, session::JudgeOwner(*owner), *owner);
        if (on_answer) on_answer();
      };
    });
  }
}

void FieldNotes::FindObjects(PageCare& page, std::size_t field) {
  const std::optional<std::size_t> base = page.FindField(session::kQueryBaseField);
  auto* const preview = new QueryPreview(
      {.filter = page.TextOf(field), .base = base ? page.TextOf(*base) : std::string()}, opener_,
      foot_.window());
  preview->setAttribute(Qt::WA_DeleteOnClose);
  preview->show();
}

}  // namespace pelora::console
