// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/qt_dialog.h"

#include <QApplication>
#include <QDialog>
#include <QThread>
#include <algorithm>
#include <utility>

#include "hosts/console/dialogs/control_factory.h"
#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"

namespace pelora::console {
namespace {

/// Tells when its contents have to be placed anew.
class PlacedWidget final : public QWidget {
 public:
  explicit PlacedWidget(QWidget& parent) : QWidget(&parent) {}

  std::function<void()> on_placed;

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QWidget::resizeEvent(event);
    if (on_placed) on_placed();
  }
  void changeEvent(QEvent* event) override {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange && on_placed) on_placed();
  }
};

}  // namespace

QtDialog::QtDialog(const resources::DialogTemplate& dialog, IDialogController& controller,
                   QWidget& parent, DialogHost host)
    : controller_(controller),
      host_(std::move(host)),
      widget_(std::make_unique<PlacedWidget>(parent)) {
  controls_.reserve(dialog.items.size());
  for (const resources::DialogItem& item : dialog.items) {
    controls_.push_back(MakeControl(item, *widget_, *this));
  }
  widget_->ensurePolished();
  const DialogUnits units = FittingUnits(dialog, controls_, widget_->font());
  layout_.emplace(dialog, controls_, units);
  ConnectControls(dialog, controls_, host_.taken_keys);
  PutInTabOrder(*widget_);
  const auto place = [this] { layout_->Place(widget_->size(), widget_->layoutDirection()); };
  static_cast<PlacedWidget&>(*widget_).on_placed = place;
  widget_->setMinimumSize(layout_->TemplateSize());
  widget_->resize(layout_->TemplateSize());
  place();
}

QtDialog::~QtDialog() {
  if (std::exchange(is_open_, false)) controller_.OnDestroy();
}

std::int32_t QtDialog::Open() {
  is_open_ = true;
  const std::int32_t answer = controller_.OnInitDialog(*this);
  // It may have given controls other texts.
  GiveKeys(controls_, host_.taken_keys);
  return answer;
}

DialogControl* QtDialog::Find(ControlId id) const {
  const auto found = std::ranges::find(controls_, id, [](const auto& item) { return item->id(); });
  return found == controls_.end() ? nullptr : found->get();
}

void QtDialog::Click(ControlId id) {
  if (DialogControl* control = Find(id)) return control->Click();
  OnControl(id, ControlNotification::kClicked);
}

QWidget* QtDialog::PutInTabOrder(QWidget& before) {
  QWidget* last = &before;
  for (const auto& control : controls_) {
    if (control->widget().focusPolicy() == Qt::NoFocus) continue;
    QWidget::setTabOrder(last, &control->widget());
    last = &control->widget();
  }
  return last;
}

void QtDialog::FocusFirst() {
  for (const auto& control : controls_) {
    QWidget& candidate = control->widget();
    if ((candidate.focusPolicy() & Qt::TabFocus) == 0) continue;
    if (control->IsEnabled() && control->IsShown()) return candidate.setFocus();
  }
}

std::string QtDialog::Text(ControlId id) const {
  const DialogControl* control = Find(id);
  return control != nullptr ? control->Text() : std::string();
}

void QtDialog::SetText(ControlId id, std::string_view text) {
  if (DialogControl* control = Find(id)) control->SetText(text);
}

void QtDialog::SetReadOnly(ControlId id, const QString& why) {
  DialogControl* const control = Find(id);
  if (control == nullptr || !read_only_.try_emplace(id, control->IsEnabled()).second) return;
  control->SetEnabled(false);
  SetPlainToolTip(control->widget(), why);
  control->widget().setProperty(kWhyReadOnly, why);
}

bool QtDialog::IsEnabled(ControlId id) const {
  if (const auto kept = read_only_.find(id); kept != read_only_.end()) return kept->second;
  const DialogControl* control = Find(id);
  return control != nullptr && control->IsEnabled();
}

void QtDialog::SetEnabled(ControlId id, bool enabled) {
  if (const auto kept = read_only_.find(id); kept != read_only_.end()) {
    kept->second = enabled;
    return;
  }
  if (DialogControl* control = Find(id)) control->SetEnabled(enabled);
}

bool QtDialog::IsShown(ControlId id) const {
  const DialogControl* control = Find(id);
  return control != nullptr && control->IsShown();
}

void QtDialog::SetShown(ControlId id, bool shown) {
  if (DialogControl* control = Find(id)) control->SetShown(shown);
}

CheckState QtDialog::Check(ControlId id) const {
  const DialogControl* control = Find(id);
  return control != nullptr ? control->Check() : CheckState::kUnchecked;
}

void QtDialog::SetCheck(ControlId id, CheckState state) {
  if (DialogControl* control = Find(id)) control->SetCheck(state);
}

ButtonStyle QtDialog::Style(ControlId id) const {
  const DialogControl* control = Find(id);
  return control != nullptr ? control->Style() : ButtonStyle::kAutoCheckBox;
}

void QtDialog::SetStyle(ControlId id, ButtonStyle style) {
  if (DialogControl* control = Find(id)) control->SetStyle(style);
}

IListBox& QtDialog::ListBox(ControlId id) {
  DialogControl* control = Find(id);
  IListBox* list = control != nullptr ? control->ListBox() : nullptr;
  return list != nullptr ? *list : missing_list_box_;
}

IComboBox& QtDialog::ComboBox(ControlId id) {
  DialogControl* control = Find(id);
  IComboBox* list = control != nullptr ? control->ComboBox() : nullptr;
  return list != nullptr ? *list : missing_combo_box_;
}

IListView& QtDialog::ListView(ControlId id) {
  DialogControl* control = Find(id);
  IListView* list = control != nullptr ? control->ListView() : nullptr;
  return list != nullptr ? *list : missing_list_view_;
}

int QtDialog::ClientWidth(ControlId id) const {
  const DialogControl* control = Find(id);
  return control != nullptr ? control->ClientWidth() : 0;
}

void QtDialog::SetPageModified(bool modified) {
  if (host_.set_modified) host_.set_modified(modified);
}

void QtDialog::End(std::int32_t result) {
  if (host_.end) host_.end(result);
}

void QtDialog::OnControl(ControlId id, ControlNotification notification) {
  if (is_open_) controller_.OnCommand(id, notification);
}

void QtDialog::OnListViewItemChanged(ControlId id, const ListViewItemChange& change) {
  if (is_open_) controller_.OnListViewItemChanged(id, change);
}

void QtDialog::OnListViewDoubleClick(ControlId id, RowIndex row) {
  if (is_open_) controller_.OnListViewDoubleClick(id, row);
}

TextRole QtDialog::ListViewTextRole(ControlId id, RowIndex row, std::size_t column) const {
  return is_open_ ? controller_.ListViewTextRole(id, row, column) : TextRole::kNormal;
}

QWidget* WindowOf(IDialog* owner) {
  const auto* dialog = dynamic_cast<QtDialog*>(owner);
  return dialog != nullptr ? dialog->widget().window() : QApplication::activeWindow();
}

bool IsModalRunning() {
  constexpr int kMainLoop = 1;
  return QApplication::activeModalWidget() != nullptr ||
         QThread::currentThread()->loopLevel() > kMainLoop;
}

int RunModal(QDialog& window) {
  KeepOnScreenWhenShown(window);
  const int result = window.exec();
  // The window system hands the focus back only later; until then no window would be active.
  QWidget* owner = window.parentWidget();
  const QWidget* active = QApplication::activeWindow();
  const bool is_left_over = active == nullptr || active == &window;
  if (owner != nullptr && is_left_over) QApplication::setActiveWindow(owner->window());
  return result;
}

}  // namespace pelora::console
