// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/sheets/property_sheet.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "hosts/console/dialogs/discard_question.h"
#include "hosts/console/dialogs/mnemonics.h"
#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {

QtPropertySheet::QtPropertySheet(const resources::ResourceFile& module, const QString& title,
                                 QWidget* parent)
    : QDialog(parent), machine_(module, *this), tabs_(new QTabWidget(this)) {
  SetPlainTitle(*this, title);
  setObjectName(QStringLiteral("property_sheet"));
  tabs_->setObjectName(QStringLiteral("property_sheet_tabs"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tabs_);
  MakeButtons(*layout);
  connect(tabs_, &QTabWidget::currentChanged, this, &QtPropertySheet::OnTabChanged);
  machine_.may_discard = [this] { return discards_ || MayDiscard(); };
}

QtPropertySheet::~QtPropertySheet() {
  if (on_end) on_end();
  tabs_of_.clear();
  machine_.Close();
}

void QtPropertySheet::MakeButtons(QLayout& layout) {
  buttons_ = new QDialogButtonBox(
      QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply, this);
  layout.addWidget(buttons_);
  connect(buttons_, &QDialogButtonBox::accepted, this, &QtPropertySheet::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &QtPropertySheet::reject);
  buttons_->button(QDialogButtonBox::Ok)->setDefault(true);
  ApplyButton().setEnabled(false);
  // Pages add by Alt+A.
  ApplyButton().setText(QStringLiteral("Appl&y"));
  // Whoever clicks it goes on where he is.
  ApplyButton().setFocusPolicy(Qt::TabFocus);
  connect(&ApplyButton(), &QPushButton::clicked, this, [this] {
    const bool has_keyboard = ApplyButton().hasFocus();
    if (MayApply()) machine_.Apply();
    // A grey button passes the keyboard on to wherever.
    if (has_keyboard && !ApplyButton().isEnabled()) {
      buttons_->button(QDialogButtonBox::Ok)->setFocus();
    }
  });
}

QPushButton& QtPropertySheet::ApplyButton() const {
  return *buttons_->button(QDialogButtonBox::Apply);
}

bool QtPropertySheet::AddPage(std::unique_ptr<PropSheetPage> page) {
  if (!machine_.AddPage(std::move(page))) return false;
  auto* view = new PageView;
  {
    // The first tab added becomes the current one; it is brought up in Start.
    const QSignalBlocker blocker(tabs_);
    tabs_->addTab(view, AsPlainLabel(ToQString(machine_.pages().Title(tabs_of_.size()))));
  }
  tabs_of_.push_back({.view = view, .dialog = nullptr});
  return true;
}

void QtPropertySheet::Start() {
  machine_.Show();
  resize(0, 0);
  MakeRoom();
  Dialog(CurrentPage())->FocusFirst();
}

void QtPropertySheet::MakeDialog(std::size_t page) {
  Tab& tab = tabs_of_[page];
  const sheets::SheetPages& pages = machine_.pages();
  const DialogHost host{
      .set_modified = [this, page](bool modified) { machine_.SetModified(page, modified); },
      .end = {},
      .taken_keys = MnemonicOf(ApplyButton().text())};
  const bool was_whole = IsWhole();
  tab.dialog = std::make_unique<QtDialog>(pages.Template(page), pages.Controller(page),
                                          tab.view->holder(), host);
  tab.view->Hold(tab.dialog->widget());
  tab.dialog->Open();
  // Enter means the sheet's default button, whatever button a page calls its own.
  buttons_->button(QDialogButtonBox::Ok)->setDefault(true);
  tab.dialog->widget().show();
  OrderTabs();
  if (focusWidget() == &tab.view->holder()) tab.dialog->FocusFirst();
  // Who has made the window smaller than a page wants it so.
  if (was_whole) MakeRoom();
}

bool QtPropertySheet::IsWhole() const { return size().expandedTo(sizeHint()) == size(); }

void QtPropertySheet::MakeRoom() {
  // The layout hears of a new page only later.
  tabs_->updateGeometry();
  const QSize room = RoomOnScreen(*this);
  QSize wanted = size().expandedTo(sizeHint());
  // What has to be scrolled down has its bar beside it, not over it.
  if (wanted.height() > room.height()) {
    wanted.rwidth() += style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  }
  resize(wanted.boundedTo(room));
}

void QtPropertySheet::OrderTabs() {
  // The pages' controls were made after the buttons and would come behind them.
  QWidget* last = tabs_->tabBar();
  for (const Tab& tab : tabs_of_) {
    if (tab.dialog) last = tab.dialog->PutInTabOrder(*last);
  }
}

void QtPropertySheet::ShowPage(std::size_t page) {
  const QSignalBlocker blocker(tabs_);
  tabs_->setCurrentIndex(static_cast<int>(page));
}

void QtPropertySheet::UpdateButtons() {
  ApplyButton().setEnabled(machine_.IsApplyEnabled() && !is_held_);
  buttons_->button(QDialogButtonBox::Ok)->setEnabled(!is_held_);
}

void QtPropertySheet::SetFoot(QWidget& foot) {
  constexpr int kBelowPages = 1;
  static_cast<QVBoxLayout*>(layout())->insertWidget(kBelowPages, &foot);
}

void QtPropertySheet::SetHeld(bool held) {
  is_held_ = held;
  UpdateButtons();
}

void QtPropertySheet::SelectPage(std::size_t page) {
  tabs_->setCurrentIndex(static_cast<int>(page));
}

void QtPropertySheet::OnTabChanged(int tab) {
  // The tab bar is ahead of the machine, which may have gone elsewhere or nowhere.
  if (tab >= 0) (void)machine_.SelectPage(static_cast<std::size_t>(tab));
  ShowPage(CurrentPage());
}

void QtPropertySheet::accept() {
  if (MayApply() && machine_.Ok()) QDialog::accept();
}

bool QtPropertySheet::MayDiscard() {
  return console::MayDiscard(*this, QStringLiteral("Discard the changes that were not applied?"));
}

void QtPropertySheet::reject() {
  if (!machine_.IsOpen() || machine_.Cancel()) QDialog::reject();
}

bool QtPropertySheet::Discard() {
  const QScopedValueRollback discards(discards_, true);
  reject();
  return !isVisible();
}

}  // namespace pelora::console
