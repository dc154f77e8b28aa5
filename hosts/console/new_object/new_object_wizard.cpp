// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/new_object/new_object_wizard.h"

#include <QApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "directory/creation_failure.h"
#include "directory/error_text.h"
#include "hosts/console/dialogs/discard_question.h"
#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/program/guarded_application.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/object_icons.h"
#include "hosts/session/filled_fields.h"
#include "hosts/session/text.h"

namespace pelora::console {
namespace {

/// Of Back, Next and Finish.
constexpr QLatin1String kOwnKeys("BNF");

QString TitleOf(const QtNewObjectWizard::Parts& parts) {
  const QString title =
      QStringLiteral("New Object - %1").arg(ToQString(session::TextOf(parts.kind)));
  if (!parts.start.model) return title;
  return QStringLiteral("%1 like %2").arg(title, Readable(ToQString(parts.start.model->name())));
}

}  // namespace

QtNewObjectWizard::QtNewObjectWizard(const Parts& parts, sheets::NewObjectSetup setup,
                                     QWidget* parent)
    : QDialog(parent),
      parts_(parts),
      container_(ToQString(setup.display_info.container_name)),
      title_(TitleOf(parts_)),
      machine_(parts_.module, *this, Complete(std::move(setup))) {
  setObjectName(QStringLiteral("new_object_wizard"));
  SetPlainTitle(*this, title_);
  setWindowIcon(IconOf(parts_.kind.icon));
  MakeLayout(container_);
  machine_.own_name = [this] { return session::Trimmed(own_page_->Values().name); };
  machine_.on_failure = [this](const sheets::CreationResult& failure) { ShowFailure(failure); };
  notes_.emplace(*foot_, parts_.open_another);
  notes_->on_answer = [this] { ShowNote(); };
  connect(qApp, &QApplication::focusChanged, this,
          [this](const QWidget* /*old*/, const QWidget* now) {
            DoGuarded([this, now] { OnFocusMoved(now); });
          });
}

QtNewObjectWizard::~QtNewObjectWizard() {
  // The window is hidden, and the keyboard leaves it, when the pages are gone.
  disconnect(qApp, nullptr, this, nullptr);
  notes_.reset();
  dialogs_.clear();
  machine_.Close();
}

sheets::NewObjectSetup QtNewObjectWizard::Complete(sheets::NewObjectSetup setup) {
  if (!parts_.kind.HasOwnPage()) return setup;
  setup.own_pages = 1;
  setup.write_own = [this](IADs& object) {
    // Temporary objects come from this console alone.
    const HRESULT status =
        session::StageOwnValues(parts_.kind, own_page_->Values(), parts_.own_context,
                                static_cast<ldap::NewStoreObject&>(object));
    const auto& model = parts_.start.model;
    return FAILED(status) || !model ? status : model->Stage(TakenOverBeside(), object);
  };
  return setup;
}

QtDialog* QtNewObjectWizard::Dialog(std::size_t page) const {
  return machine_.pages().WasShown(page) ? dialogs_[page - machine_.OwnPages()].get() : nullptr;
}

HRESULT QtNewObjectWizard::AddExtension(Ref<IDsAdminNewObjExt> extension, sheets::WizardRole role) {
  Ref<IFieldRows> fields;
  const bool has_fields =
      extension && SUCCEEDED(extension->QueryInterface(IFieldRows::kIid,
                                                       reinterpret_cast<void**>(fields.Put())));
  const HRESULT status = machine_.AddExtension(std::move(extension), role);
  MakePages();
  // They are those of the page that came last.
  if (has_fields && !watched_.empty()) {
    const std::size_t place = machine_.OwnPages() + watched_.size() - 1;
    watched_.back()->Learn(fields->Fields(), machine_.pages().Template(place));
  }
  return status;
}

WatchedWizardPage* QtNewObjectWizard::ShownPage() const {
  const std::size_t place = machine_.pages().Current();
  const std::size_t own = machine_.OwnPages();
  return place >= own && place - own < watched_.size() ? watched_[place - own].get() : nullptr;
}

bool QtNewObjectWizard::IsWrong() const {
  return std::ranges::any_of(watched_, [](const auto& page) { return page->IsWrong(); });
}

void QtNewObjectWizard::ShowNote() {
  const WatchedWizardPage* const page = ShownPage();
  if (page == nullptr || page->care() == nullptr || !notes_) return foot_->Show({});
  const FootNote note = notes_->NoteOf(*page->care());
  if (note.level == FootNote::Level::kWrong || machine_.IsNextEnabled()) return foot_->Show(note);
  const std::size_t place = machine_.pages().Current();
  const std::string missing =
      session::WhatIsMissing(page->rows(), machine_.pages().Template(place), *Dialog(place));
  if (missing.empty()) return foot_->Show(note);
  foot_->Show({.level = FootNote::Level::kHint, .text = ToQString(missing)});
}

void QtNewObjectWizard::OnFocusMoved(const QWidget* now) {
  const WatchedWizardPage* const page = ShownPage();
  // The line's own button is no reason to say something else.
  if (page == nullptr || page->care() == nullptr || !notes_) return;
  if (now == nullptr || foot_->isAncestorOf(now)) return;
  notes_->OnFocusMoved(*page->care(), now);
  ShowNote();
}

void QtNewObjectWizard::Next() {
  if (WatchedWizardPage* const page = ShownPage()) page->PutWhatIsMeant();
  if (!IsWrong()) machine_.Next();
}

void QtNewObjectWizard::MakePages() {
  const sheets::SheetPages& pages = machine_.pages();
  // The summary is the last.
  for (std::size_t place = machine_.OwnPages() + dialogs_.size(); place + 1 < pages.Count();
       ++place) {
    auto* holder = new QWidget;
    stack_->insertWidget(stack_->count() - 1, holder);
    watched_.push_back(std::make_unique<WatchedWizardPage>(pages.Controller(place)));
    watched_.back()->on_edited = [this, place, page = watched_.back().get()] {
      if (notes_ && page->care() != nullptr) notes_->LookUp(*page->care());
      SuggestAddress(place);
      UpdateButtons();
    };
    dialogs_.push_back(std::make_unique<QtDialog>(
        pages.Template(place), *watched_.back(), *holder,
        DialogHost{.set_modified = {}, .end = {}, .taken_keys = QString(kOwnKeys)}));
    // The window has room for every page from the start, and its buttons stay where they are.
    holder->setMinimumSize(dialogs_.back()->widget().size());
  }
}

void QtNewObjectWizard::Start() {
  if (own_page_ != nullptr) machine_.SetOwnPageComplete(own_page_->WhyIncomplete().isEmpty());
  machine_.Show();
  adjustSize();
}

void QtNewObjectWizard::MakeDialog(std::size_t place) {
  QtDialog& dialog = *dialogs_[place - machine_.OwnPages()];
  dialog.Open();
  TakeOverOn(place);
  dialog.widget().show();
  QWidget* last = dialog.PutInTabOrder(*stack_);
  for (QPushButton* button : {back_, next_, finish_, cancel_}) {
    setTabOrder(last, button);
    last = button;
  }
}

void QtNewObjectWizard::ShowPage(std::size_t place) {
  if (IsSummary()) FillSummary();
  const QString title = ToQString(machine_.pages().Title(place));
  SetPlainTitle(*this, title.isEmpty() ? title_ : title);
  stack_->setCurrentIndex(static_cast<int>(place));
  SuggestAddress(place);
  NoteInputs(place);
  UpdateButtons();
  if (QtDialog* dialog = Dialog(place)) return dialog->FocusFirst();
  IsSummary() ? finish_->setFocus() : own_page_->FirstField().setFocus();
}

void QtNewObjectWizard::UpdateButtons() {
  back_->setEnabled(machine_.IsBackEnabled());
  next_->setVisible(!IsSummary());
  const bool is_wrong = IsWrong();
  next_->setEnabled(machine_.IsNextEnabled() && !is_wrong);
  ShowNote();
  finish_->setVisible(IsSummary());
  finish_->setEnabled(!is_wrong);
  (IsSummary() ? finish_ : next_)->setDefault(true);
}

void QtNewObjectWizard::Finish() {
  failure_->hide();
  if (IsWrong()) return;
  if (machine_.Finish(Dialog(machine_.OwnPages()))) accept();
}

void QtNewObjectWizard::ShowFailure(const sheets::CreationResult& result) {
  failure_->setText(explain_failure ? explain_failure() : QString());
  failure_->setVisible(!failure_->text().isEmpty());
  if (result.is_shown) return;
  const CreationFailure failure = DescribeCreationFailure(result.status);
  parts_.message_box.Show(nullptr, MakeErrorMessage(failure.status, failure.message));
}

void QtNewObjectWizard::NoteInputs(std::size_t place) {
  if (IsSummary()) return;
  inputs_.try_emplace(place, InputsOf(*stack_->widget(static_cast<int>(place))));
}

bool QtNewObjectWizard::HasEntries() const {
  return std::ranges::any_of(inputs_, [this](const auto& noted) {
    return InputsOf(*stack_->widget(static_cast<int>(noted.first))) != noted.second;
  });
}

void QtNewObjectWizard::reject() {
  const bool asks = machine_.IsOpen() && HasEntries();
  if (asks && !MayDiscard(*this, QStringLiteral("Discard what was entered? Nothing is created.")))
    return;
  if (!machine_.IsOpen() || machine_.Cancel()) QDialog::reject();
}

}  // namespace pelora::console
