// SPDX-License-Identifier: Apache-2.0
// The console's wizard, held to the contract.
#include <QCoreApplication>
#include <QPushButton>
#include <QTest>
#include <utility>

#include "hosts/console/new_object/new_object_wizard.h"
#include "hosts/console/text/qt_text.h"
#include "tests/contract/contract_resources.h"
#include "tests/contract/pages_extension.h"
#include "tests/contract/wizard_contract.h"

namespace pelora::contract {
namespace {

class NoBoxes final : public IMessageBox {
 public:
  std::int32_t Show(IDialog* /*owner*/, const Message& /*message*/) override {
    ADD_FAILURE() << "nothing fails here";
    return kDialogOk;
  }
};

class QtWizardDriver final : public WizardDriver {
 public:
  bool AddPage(std::unique_ptr<PropSheetPage> page) override {
    pages_.push_back(std::move(page));
    return true;
  }
  void Show() override {
    auto extension = Ref<IDsAdminNewObjExt>::Adopt(new PagesExtension(std::exchange(pages_, {})));
    EXPECT_EQ(wizard_.AddExtension(std::move(extension), sheets::WizardRole::kPrimary), S_OK);
    wizard_.Start();
    wizard_.show();
    QCoreApplication::processEvents();
  }
  [[nodiscard]] bool IsOpen() const override { return wizard_.isVisible(); }
  [[nodiscard]] std::size_t CurrentPage() const override { return wizard_.CurrentPage(); }
  [[nodiscard]] std::string Title() const override {
    return console::ToUtf8(wizard_.windowTitle());
  }
  void ClickNext() override { QTest::mouseClick(&wizard_.next(), Qt::LeftButton); }
  void ClickBack() override { QTest::mouseClick(&wizard_.back(), Qt::LeftButton); }
  void ClickCancel() override {
    QTest::mouseClick(wizard_.findChild<QPushButton*>(QStringLiteral("wizard_cancel")),
                      Qt::LeftButton);
  }

 private:
  std::vector<std::unique_ptr<PropSheetPage>> pages_;
  resources::ResourceFile templates_ =
      resources::ResourceFile::Read(ContractResourceBytes()).value.value();
  NoBoxes boxes_;
  /// It has no page of its own.
  session::NewObjectKind kind_{
      .class_name = "peloraAddresslist", .word = "addresslist", .menu_text = "A &list"};
  console::QtNewObjectWizard wizard_{
      {.module = templates_, .message_box = boxes_, .kind = kind_, .own_context = {}}, {}};
};

std::unique_ptr<WizardDriver> MakeWizard() { return std::make_unique<QtWizardDriver>(); }

INSTANTIATE_TEST_SUITE_P(Qt, WizardContract, ::testing::Values(&MakeWizard));

}  // namespace
}  // namespace pelora::contract
