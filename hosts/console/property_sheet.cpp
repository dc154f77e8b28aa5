// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/property_sheet.h"

#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "hosts/console/qt_text.h"

namespace pelora::console {
namespace {

/// What a page answers that may be left, or may be cancelled.
constexpr std::int32_t kMayGo = 0;

}  // namespace

QtPropertySheet::QtPropertySheet(const resources::ResourceFile& module, const QString& title,
                                 QWidget* parent)
    : QDialog(parent), module_(module), tabs_(new QTabWidget(this)) {
  setWindowTitle(title);
  setObjectName(QStringLiteral("property_sheet"));
  tabs_->setObjectName(QStringLiteral("property_sheet_tabs"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tabs_);
  MakeButtons(*layout);
  connect(tabs_, &QTabWidget::currentChanged, this, &QtPropertySheet::OnTabChanged);
}

QtPropertySheet::~QtPropertySheet() {
  for (Page& page : pages_) page.dialog.reset();
}

void QtPropertySheet::MakeButtons(QLayout& layout) {
  buttons_ = new QDialogButtonBox(
      QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply, this);
  layout.addWidget(buttons_);
  connect(buttons_, &QDialogButtonBox::accepted, this, &QtPropertySheet::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &QtPropertySheet::reject);
  buttons_->button(QDialogButtonBox::Ok)->setDefault(true);
  ApplyButton().setEnabled(false);
  connect(&ApplyButton(), &QPushButton::clicked, this, &QtPropertySheet::Apply);
}

QPushButton& QtPropertySheet::ApplyButton() const {
  return *buttons_->button(QDialogButtonBox::Apply);
}

bool QtPropertySheet::AddPage(std::unique_ptr<PropSheetPage> page) {
  if (is_started_) return false;
  resources::ReadResult<resources::DialogTemplate> read = module_.Dialog(page->Template());
  if (!read.value) return false;
  const QString title = ToQString(page->Title().empty() ? read.value->title : page->Title());
  auto* holder = new QWidget;
  {
    // The first tab added becomes the current one; it is brought up in Start.
    const QSignalBlocker blocker(tabs_);
    tabs_->addTab(holder, AsPlainLabel(title));
  }
  pages_.push_back({.page = std::move(page),
                    .dialog_template = *std::move(read.value),
                    .holder = holder,
                    .dialog = nullptr});
  return true;
}

void QtPropertySheet::Start() {
  is_started_ = true;
  Activate(0);
  adjustSize();
  pages_.front().dialog->FocusFirst();
}

void QtPropertySheet::CreateDialog(std::size_t page) {
  Page& created = pages_[page];
  const DialogHost host{
      .set_modified = [this, page](bool modified) { OnPageModified(page, modified); }, .end = {}};
  created.dialog = std::make_unique<QtDialog>(created.dialog_template, created.page->Controller(),
                                              *created.holder, host);
  created.holder->setMinimumSize(created.dialog->widget().size());
  created.dialog->Open();
  // Enter means the sheet's default button, whatever button a page calls its own.
  buttons_->button(QDialogButtonBox::Ok)->setDefault(true);
  created.dialog->widget().show();
  OrderTabs();
}

void QtPropertySheet::OrderTabs() {
  // The pages' controls were made after the buttons and would come behind them.
  QWidget* last = tabs_->tabBar();
  for (const Page& page : pages_) {
    if (page.dialog) last = page.dialog->PutInTabOrder(*last);
  }
}

void QtPropertySheet::Activate(std::size_t page) {
  const QScopedValueRollback busy(is_busy_, true);
  current_ = page;
  if (!pages_[page].dialog) CreateDialog(page);
  (void)NotifyCurrent(PageNotification::kSetActive);
}

std::int32_t QtPropertySheet::NotifyCurrent(PageNotification notification) {
  return pages_[current_].page->Controller().OnPageNotification(notification);
}

void QtPropertySheet::SelectPage(std::size_t page) {
  tabs_->setCurrentIndex(static_cast<int>(page));
}

void QtPropertySheet::OnTabChanged(int tab) {
  const auto page = static_cast<std::size_t>(tab);
  if (tab < 0 || page == current_) return;
  const QScopedValueRollback busy(is_busy_, true);
  if (NotifyCurrent(PageNotification::kKillActive) != kMayGo) return ShowTab(current_);
  Activate(page);
}

void QtPropertySheet::ShowTab(std::size_t page) {
  const QSignalBlocker blocker(tabs_);
  tabs_->setCurrentIndex(static_cast<int>(page));
}

void QtPropertySheet::OnPageModified(std::size_t page, bool modified) {
  pages_[page].is_modified = modified;
  // A page takes its mark back before it writes; whether the edits got through is not known yet.
  if (modified || !is_applying_) pages_[page].has_unsaved_edits = modified;
  UpdateApplyButton();
}

void QtPropertySheet::UpdateApplyButton() {
  ApplyButton().setEnabled(std::ranges::any_of(pages_, &Page::is_modified));
}

bool QtPropertySheet::HasUnsavedEdits() const {
  return std::ranges::any_of(pages_, &Page::has_unsaved_edits);
}

bool QtPropertySheet::ApplyAll() {
  const QScopedValueRollback busy(is_busy_, true);
  if (NotifyCurrent(PageNotification::kKillActive) != kMayGo) return false;
  const bool applied = ApplyCreatedPages();
  UpdateApplyButton();
  if (on_applied) on_applied();
  return applied;
}

bool QtPropertySheet::ApplyCreatedPages() {
  const QScopedValueRollback applying(is_applying_, true);
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    if (!pages_[i].dialog) continue;
    IDialogController& controller = pages_[i].page->Controller();
    if (controller.OnPageNotification(PageNotification::kApply) != kPageApplied) {
      ShowTab(i);
      if (current_ != i) Activate(i);
      return false;
    }
    pages_[i].is_modified = false;
    pages_[i].has_unsaved_edits = false;
  }
  return true;
}

void QtPropertySheet::Apply() {
  if (is_busy_ || !ApplyAll()) return;
  const QScopedValueRollback busy(is_busy_, true);
  (void)NotifyCurrent(PageNotification::kSetActive);
}

void QtPropertySheet::accept() {
  if (!is_busy_ && ApplyAll()) QDialog::accept();
}

bool QtPropertySheet::MayDiscard() {
  if (!HasUnsavedEdits()) return true;
  QMessageBox question(QMessageBox::Question, windowTitle(),
                       QStringLiteral("Discard the changes that were not applied?"),
                       QMessageBox::NoButton, this);
  question.setObjectName(QStringLiteral("discard_question"));
  QAbstractButton* discard =
      question.addButton(QStringLiteral("&Discard"), QMessageBox::DestructiveRole);
  QPushButton* keep = question.addButton(QStringLiteral("&Keep Editing"), QMessageBox::RejectRole);
  question.setDefaultButton(keep);
  question.setEscapeButton(keep);
  question.exec();
  return question.clickedButton() == discard;
}

void QtPropertySheet::reject() {
  if (is_busy_) return;
  {
    const QScopedValueRollback busy(is_busy_, true);
    if (!pages_.empty() && NotifyCurrent(PageNotification::kQueryCancel) != kMayGo) return;
    if (!MayDiscard()) return;
    ResetPages();
  }
  QDialog::reject();
}

void QtPropertySheet::ResetPages() {
  for (const Page& page : pages_) {
    if (page.dialog) page.page->Controller().OnPageNotification(PageNotification::kReset);
  }
}

}  // namespace pelora::console
