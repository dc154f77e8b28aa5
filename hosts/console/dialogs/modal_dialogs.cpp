// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/modal_dialogs.h"

#include <QDialog>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>
#include <optional>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

constexpr std::int32_t kNotMade = -1;

/// The window around a modal dialog. It closes only when the controller ends it.
class ModalWindow final : public QDialog {
 public:
  ModalWindow(const resources::DialogTemplate& dialog, IDialogController& controller,
              QWidget* parent)
      : QDialog(parent),
        dialog_(dialog, controller, *this,
                {.set_modified = {}, .end = [this](std::int32_t result) { End(result); }}) {
    setWindowTitle(ToQString(dialog.title));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(&dialog_.widget(), 1);
    if (!dialog_.GrowsDown()) dialog_.widget().setMaximumHeight(dialog_.widget().height());
  }

  std::int32_t Run() {
    dialog_.Open();
    if (!result_) {
      dialog_.FocusFirst();
      RunModal(*this);
    }
    return result_.value_or(kDialogCancel);
  }

  void reject() override {
    if (!result_) dialog_.Click(kDialogCancel);
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const bool is_enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (is_enter && !HasDefaultButton()) return dialog_.Click(kDialogOk);
    QDialog::keyPressEvent(event);
  }

 private:
  void End(std::int32_t result) {
    // The first answer stands.
    if (result_) return;
    result_ = result;
    done(result);
  }

  [[nodiscard]] bool HasDefaultButton() const {
    const QList<QPushButton*> buttons = findChildren<QPushButton*>();
    return std::any_of(buttons.begin(), buttons.end(),
                       [](const QPushButton* button) { return button->isDefault(); });
  }

  std::optional<std::int32_t> result_;
  QtDialog dialog_;
};

}  // namespace

std::int32_t QtModalDialogs::Run(DialogId dialog, IDialog* owner, IDialogController& controller) {
  const resources::ReadResult<resources::DialogTemplate> read = module_.Dialog(dialog);
  if (!read.value) return kNotMade;
  ModalWindow window(*read.value, controller, WindowOf(owner));
  return window.Run();
}

}  // namespace pelora::console
