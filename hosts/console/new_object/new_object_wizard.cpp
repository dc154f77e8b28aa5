// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/new_object/new_object_wizard.h"

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
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/object_icons.h"
#include "hosts/session/filled_fields.h"
#include "hosts/session/text.h"

namespace pelora::console {
namespace {

/// Of Back, Next and Finish.
constexpr QLatin1String kOwnKeys("BNF");

}  // namespace

QtNewObjectWizard::QtNewObjectWizard(const Parts& parts, sheets::NewObjectSetup setup,
                                     QWidget* parent)
    : QDialog(parent),
      parts_(parts),
      container_(ToQString(setup.display_info.container_name)),
      title_(QStringLiteral("New Object - %1").arg(ToQString(session::TextOf(parts_.kind)))),
      machine_(parts_.module, *this, Complete(std::move(setup))) {
  setObjectName(QStringLiteral("new_object_wizard"));
  setWindowTitle(title_);
  setWindowIcon(IconOf(parts_.kind.icon));
  MakeLayout(container_);
  machine_.own_name = [this] { return session::Trimmed(own_page_->Values().name); };
  machine_.on_failure = [this](const sheets::CreationResult& failure) { ShowFailure(failure); };
}

QtNewObjectWizard::~QtNewObjectWizard() {
  dialogs_.clear();
  machine_.Close();
}

sheets::NewObjectSetup QtNewObjectWizard::Complete(sheets::NewObjectSetup setup) {
  if (!parts_.kind.HasOwnPage()) return setup;
  setup.own_pages = 1;
  setup.write_own = [this](IADs& object) {
    // Temporary objects come from this console alone.
    return session::StageOwnValues(parts_.kind, own_page_->Values(), parts_.own_context,
                                   static_cast<ldap::NewStoreObject&>(object));
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
  rows_.resize(dialogs_.size());
  // They are those of the page that came last.
  if (has_fields && !rows_.empty()) rows_.back() = fields->Fields();
  return status;
}

const std::vector<FieldRow>* QtNewObjectWizard::RowsAt(std::size_t place) const {
  const std::size_t own = machine_.OwnPages();
  return place >= own && place - own < rows_.size() ? &rows_[place - own] : nullptr;
}

void QtNewObjectWizard::ShowHint() {
  const std::size_t place = machine_.pages().Current();
  QtDialog* const dialog = IsSummary() ? nullptr : Dialog(place);
  const std::vector<FieldRow>* const rows = RowsAt(place);
  const bool waits = dialog != nullptr && rows != nullptr && !machine_.IsNextEnabled();
  const resources::DialogTemplate* const page = waits ? &machine_.pages().Template(place) : nullptr;
  hint_->setText(waits ? ToQString(session::WhatIsMissing(*rows, *page, *dialog)) : QString());
}

void QtNewObjectWizard::MakePages() {
  const sheets::SheetPages& pages = machine_.pages();
  // The summary is the last.
  for (std::size_t place = machine_.OwnPages() + dialogs_.size(); place + 1 < pages.Count();
       ++place) {
    auto* holder = new QWidget;
    stack_->insertWidget(stack_->count() - 1, holder);
    dialogs_.push_back(std::make_unique<QtDialog>(
        pages.Template(place), pages.Controller(place), *holder,
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
  setWindowTitle(title.isEmpty() ? title_ : title);
  stack_->setCurrentIndex(static_cast<int>(place));
  NoteInputs(place);
  UpdateButtons();
  if (QtDialog* dialog = Dialog(place)) return dialog->FocusFirst();
  IsSummary() ? finish_->setFocus() : own_page_->FirstField().setFocus();
}

void QtNewObjectWizard::UpdateButtons() {
  back_->setEnabled(machine_.IsBackEnabled());
  next_->setVisible(!IsSummary());
  next_->setEnabled(machine_.IsNextEnabled());
  ShowHint();
  finish_->setVisible(IsSummary());
  (IsSummary() ? finish_ : next_)->setDefault(true);
}

void QtNewObjectWizard::Finish() {
  failure_->hide();
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
