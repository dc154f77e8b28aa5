// SPDX-License-Identifier: Apache-2.0
// The native dialogs, sheets and texts of the console, held to the contracts.
#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <optional>
#include <utility>

#include "hosts/console/dialogs/modal_dialogs.h"
#include "hosts/console/sheets/property_sheet.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/text/text_service.h"
#include "tests/contract/contract_resources.h"
#include "tests/contract/dialog_contract.h"
#include "tests/contract/dialog_contract_qt_player.h"
#include "tests/contract/dialog_contract_qt_scripts.h"
#include "tests/contract/property_sheet_contract.h"
#include "tests/contract/text_service_contract.h"

namespace pelora::contract {
namespace {

using console::QtDialog;
using console::QtModalDialogs;
using console::QtPropertySheet;
using console::QtTextService;

resources::ResourceFile Templates() {
  return resources::ResourceFile::Read(ContractResourceBytes()).value.value();
}

class QtOpenDialog final : public OpenDialog {
 public:
  QtOpenDialog(const resources::DialogTemplate& described, IDialogController& controller)
      : dialog_(described, controller, window_, {}), player_(window_) {
    dialog_.Open();
    dialog_.widget().show();
    window_.resize(dialog_.widget().size());
    window_.show();
    window_.activateWindow();
    QCoreApplication::processEvents();
  }
  [[nodiscard]] DialogPlayer& User() override { return player_; }

 private:
  QWidget window_;
  QtDialog dialog_;
  QtPlayer player_;
};

class QtDriver final : public DialogDriver {
 public:
  std::unique_ptr<OpenDialog> Open(DialogId dialog, IDialogController& controller) override {
    const auto described = templates_.Dialog(dialog);
    if (!described.value) return nullptr;
    return std::make_unique<QtOpenDialog>(*described.value, controller);
  }
  IModalDialogs& ModalDialogs() override { return modal_dialogs_; }
  void PlayNext(DialogScript script) override {
    scripts_.Add([script = std::move(script)](QWidget& window) {
      QtPlayer player(window);
      script(player);
    });
  }

 private:
  resources::ResourceFile templates_ = Templates();
  QtModalDialogs modal_dialogs_{templates_};
  ModalScripts scripts_;
};

class QtSheetDriver final : public PropertySheetDriver {
 public:
  bool AddPage(std::unique_ptr<PropSheetPage> page) override {
    return sheet_.AddPage(std::move(page));
  }
  void Show() override {
    sheet_.Start();
    sheet_.show();
    QCoreApplication::processEvents();
  }
  [[nodiscard]] bool IsOpen() const override { return sheet_.isVisible(); }
  void SelectPage(std::size_t page) override {
    QTabBar* bar = Tabs().tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier,
                      bar->tabRect(static_cast<int>(page)).center());
  }
  [[nodiscard]] std::size_t CurrentPage() const override {
    EXPECT_EQ(Tabs().currentIndex(), static_cast<int>(sheet_.CurrentPage()));
    return sheet_.CurrentPage();
  }
  [[nodiscard]] std::string TabText(std::size_t page) const override {
    return console::ToUtf8(Tabs().tabText(static_cast<int>(page)));
  }
  [[nodiscard]] DialogPlayer& User() override { return player_.emplace(*Tabs().currentWidget()); }
  [[nodiscard]] bool IsApplyEnabled() const override { return sheet_.ApplyButton().isEnabled(); }
  void ClickApply() override { Click(QDialogButtonBox::Apply); }
  void ClickOk() override { Click(QDialogButtonBox::Ok); }
  void ClickCancel() override {
    QTimer::singleShot(0, &sheet_, &QtSheetDriver::AnswerDiscard);
    Click(QDialogButtonBox::Cancel);
  }

 private:
  [[nodiscard]] QTabWidget& Tabs() const { return *sheet_.findChild<QTabWidget*>(); }

  void Click(QDialogButtonBox::StandardButton button) {
    auto* buttons = sheet_.findChild<QDialogButtonBox*>();
    QTest::mouseClick(buttons->button(button), Qt::LeftButton);
  }

  static void AnswerDiscard() {
    const QWidget* question = QApplication::activeModalWidget();
    if (question == nullptr) return;
    for (QPushButton* button : question->findChildren<QPushButton*>()) {
      if (button->text() == QStringLiteral("&Discard")) return button->click();
    }
  }

  resources::ResourceFile templates_ = Templates();
  QtPropertySheet sheet_{templates_, QStringLiteral("Properties")};
  std::optional<QtPlayer> player_;
};

std::unique_ptr<DialogDriver> MakeDriver() { return std::make_unique<QtDriver>(); }

std::unique_ptr<PropertySheetDriver> MakeSheet() { return std::make_unique<QtSheetDriver>(); }

std::unique_ptr<ITextService> MakeTextService() { return std::make_unique<QtTextService>(); }

INSTANTIATE_TEST_SUITE_P(Qt, TextServiceContract, ::testing::Values(&MakeTextService));
INSTANTIATE_TEST_SUITE_P(Qt, DialogContract, ::testing::Values(&MakeDriver));
INSTANTIATE_TEST_SUITE_P(Qt, PropertySheetContract, ::testing::Values(&MakeSheet));

}  // namespace
}  // namespace pelora::contract
