// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/open_sheet.h"

#include <gtest/gtest.h>

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "hosts/console/text/qt_text.h"
#include "hosts/session/own_pages/own_pages.h"

namespace pelora::test {
namespace {

void Click(const console::QtPropertySheet& sheet, QDialogButtonBox::StandardButton button) {
  QTest::mouseClick(sheet.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
}

std::function<std::unique_ptr<IDirectoryService>(IDirectoryService&)> Between(
    const std::shared_ptr<pelora::testing::FaultPlan>& plan) {
  if (!plan) return {};
  return [plan](IDirectoryService& directory) {
    return std::make_unique<pelora::testing::FaultDirectory>(directory, plan);
  };
}

}  // namespace

OpenSheet::OpenSheet(session::DirectorySession& session, const resources::ResourceFile& module,
                     const std::vector<session::DirectoryObject>& selection,
                     const SheetFaults& faults)
    : platform_(session.service, message_box_, choosers_, module),
      templates_(session::WithOwnPages(module).value.value()),
      result_(console::MakePropertySheet(
          selection, {},
          {.store = faults.store != nullptr ? *faults.store : *session.store,
           .platform = platform_.platform(),
           .templates = templates_,
           .between = Between(faults.plan),
           .errands = faults.errands,
           .desk = faults.desk,
           .history = faults.history,
           .open_another = session.open_another,
           .find_places = session.find_places},
          nullptr, [this](const session::DirectoryObject& object, QWidget& /*from*/) {
            asked_for_.push_back(object.name);
          })) {
  if (!result_.sheet) throw std::runtime_error(console::ToUtf8(result_.error));
  sheet().show();
  sheet().activateWindow();
  QCoreApplication::processEvents();
  player_.emplace(sheet());
}

bool OpenSheet::IsApplyEnabled() const { return sheet().ApplyButton().isEnabled(); }

bool OpenSheet::IsOkEnabled() const {
  return sheet().findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled();
}

std::string OpenSheet::Said() const { return console::ToUtf8(fields().foot().note().text); }

void OpenSheet::AwaitAnswers() {
  EXPECT_TRUE(QTest::qWaitFor([this] { return !fields().IsAsking(); }));
}

void OpenSheet::ClickOk() { Click(sheet(), QDialogButtonBox::Ok); }

void OpenSheet::ClickCancel() { Click(sheet(), QDialogButtonBox::Cancel); }

void OpenSheet::ClickApply() { Click(sheet(), QDialogButtonBox::Apply); }

void OpenSheet::Destroy() { result_.sheet.reset(); }

contract::ModalScript Confirm(ShownBox& shown) {
  return [&shown](QWidget& window) {
    const auto* box = qobject_cast<QMessageBox*>(&window);
    ASSERT_NE(box, nullptr);
    shown = {.caption = console::ToUtf8(box->windowTitle()),
             .text = console::ToUtf8(box->text()),
             .icon = box->icon()};
    EXPECT_EQ(Copied(*box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))), shown.text);
    ASSERT_EQ(box->buttons().size(), 1);
    QTest::mouseClick(box->buttons().front(), Qt::LeftButton);
  };
}

contract::ModalScript Press(const char* button) {
  return [text = QString::fromLatin1(button)](QWidget& window) {
    for (auto* candidate : window.findChildren<QPushButton*>()) {
      if (candidate->text() != text) continue;
      QTest::mouseClick(candidate, Qt::LeftButton);
      return;
    }
    ADD_FAILURE() << "there is no button " << text.toStdString();
  };
}

}  // namespace pelora::test
