// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/fields/sheet_fields.h"

#include <QApplication>
#include <algorithm>
#include <utility>

#include "hosts/console/program/guarded_application.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/session/typed/default_quota.h"
#include "hosts/session/typed/field_roles.h"

namespace pelora::console {
SheetFields::SheetFields(QtPropertySheet& sheet, std::shared_ptr<session::GuardedTabs> tabs,
                         ldap::StoreOpener opener)
    : QObject(&sheet),
      sheet_(sheet),
      tabs_(std::move(tabs)),
      foot_(new PageFoot(&sheet)),
      notes_(*foot_, std::move(opener)) {
  notes_.on_answer = [this] { ShowNote(); };
  sheet_.SetFoot(*foot_);
  sheet_.may_apply = [this] { return MayApply(); };
  sheet_.go_to = [this](std::string_view attribute) { GoTo(attribute); };
  sheet_.on_end = [this] { disconnect(qApp, nullptr, this, nullptr); };
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
  notes_.LookUp(*care);
  LookUpDefaultQuota(page);
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
  notes_.OnFocusMoved(*current->second, now);
  ShowNote();
}

void SheetFields::ShowNote() { foot_->Show(NoteToShow()); }

FootNote SheetFields::NoteToShow() {
  const auto current = pages_.find(sheet_.CurrentPage());
  if (current == pages_.end()) return {};
  PageCare& page = *current->second;
  if (!page.fields().IsShown()) return {};
  const FootNote note = notes_.NoteOf(page);
  return note.level == FootNote::Level::kNothing ? QuotaHint(page).value_or(note) : note;
}

std::optional<FootNote> SheetFields::QuotaHint(PageCare& page) const {
  const std::optional<std::size_t> box = page.FindField(session::kOwnQuotaField);
  if (default_quota_.isEmpty() || !box || !page.FindField(session::kUsersServerField))
    return std::nullopt;
  const ControlId control = page.fields().touched.Row(*box).control;
  if (page.fields().dialog->Check(control) == CheckState::kChecked) return std::nullopt;
  return FootNote{.level = FootNote::Level::kHint, .text = default_quota_};
}

void SheetFields::LookUpDefaultQuota(std::size_t page) {
  PageCare& care = *pages_.at(page);
  if (notes_.questions() == nullptr || has_asked_quota_ ||
      !care.FindField(session::kOwnQuotaField) || !care.FindField(session::kUsersServerField))
    return;
  has_asked_quota_ = true;
  // Several users may be of several companies.
  if (care.fields().selection.size() != 1) return;
  notes_.questions()->Ask(
      [this, dn = care.fields().selection.front().dn](ldap::IDirectoryStore& store) {
        const std::optional<session::DefaultQuota> quota = session::FindDefaultQuota(store, dn);
        const std::string sentence = quota ? session::DefaultQuotaSentence(*quota) : std::string();
        return [this, sentence] {
          default_quota_ = ToQString(sentence);
          ShowNote();
        };
      });
}

}  // namespace pelora::console
