// SPDX-License-Identifier: Apache-2.0
// Another password for a user, from his Account page. That a directory takes it is tried on a
// domain.
#include <gmock/gmock.h>

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "hosts/session/own_pages/own_page_ids.h"
#include "tests/ui/own_pages.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

/// The dialog that asks for the password, with the person in front of it.
class PasswordDialog {
 public:
  explicit PasswordDialog(QWidget& window) : window_(window) {
    EXPECT_EQ(window.objectName(), QStringLiteral("reset_password"));
  }

  void Type(const char* field, const char* text) {
    auto* const edit = window_.findChild<QLineEdit*>(QLatin1String(field));
    EXPECT_EQ(edit->echoMode(), QLineEdit::Password);
    edit->clear();
    QTest::keyClicks(edit, QString::fromUtf8(text));
  }
  void TypeTwice(const char* text) {
    Type("new_password", text);
    Type("new_password_again", text);
  }
  [[nodiscard]] std::string Hint() const {
    return ToUtf8(window_.findChild<QLabel*>(QStringLiteral("password_hint"))->text());
  }
  [[nodiscard]] QPushButton& Ok() const {
    return *window_.findChild<QPushButton*>(QStringLiteral("reset_password_ok"));
  }
  void Cancel() { QTest::keyClick(&window_, Qt::Key_Escape); }

 private:
  QWidget& window_;
};

class ResetPassword : public OwnPages {
 protected:
  [[nodiscard]] bool CanReset() { return Control<QWidget>(IDC_OWN_RESET_PASSWORD).isEnabled(); }
  [[nodiscard]] std::string Note() { return Page().Text(IDC_OWN_RESET_NOTE); }
};

TEST_F(ResetPassword, NeedsASealedConnectionAndSaysSo) {
  (void)Open({kBirgit}, "Account");
  EXPECT_FALSE(CanReset());
  EXPECT_THAT(Note(), HasSubstr("sealed connection"));
}

TEST_F(ResetPassword, IsForOneUserAtATime) {
  store().is_sealed = true;
  (void)Open({kBirgit, kJuergen}, "Account");
  EXPECT_FALSE(CanReset());
  EXPECT_THAT(Note(), HasSubstr("one user at a time"));
  (void)Open({kBirgit}, "Account");
  EXPECT_TRUE(CanReset());
  EXPECT_EQ(Note(), "");
}

TEST_F(ResetPassword, WaitsForTwoThatMatchAndStaysWithTheDirectorysReason) {
  store().is_sealed = true;
  OpenSheet& open = Open({kBirgit}, "Account");
  modal_scripts().Add([](QWidget& window) {
    PasswordDialog dialog(window);
    EXPECT_THAT(dialog.Hint(), HasSubstr("twice"));
    EXPECT_FALSE(dialog.Ok().isEnabled());
    dialog.Type("new_password", "Linden-2031");
    EXPECT_THAT(dialog.Hint(), HasSubstr("must match"));
    dialog.Type("new_password_again", "Linden-203");
    EXPECT_FALSE(dialog.Ok().isEnabled());
    KeepPicture(window, "reset-password");
    dialog.TypeTwice("Linden-2031");
    EXPECT_EQ(dialog.Hint(), "");
    EXPECT_TRUE(dialog.Ok().isEnabled());
    dialog.Ok().click();
    // A file has no passwords.
    EXPECT_THAT(dialog.Hint(), HasSubstr("does not take this password"));
    EXPECT_TRUE(window.isVisible());
    dialog.Cancel();
  });
  open.user().Click(IDC_OWN_RESET_PASSWORD);
  EXPECT_EQ(store().log.back(), std::string("modify ") + kBirgit + ": unicodePwd pwdLastSet");
  EXPECT_FALSE(open.IsApplyEnabled());
  EXPECT_EQ(Note(), "");
}

TEST_F(ResetPassword, WhatWasCancelledIsSentNowhere) {
  store().is_sealed = true;
  OpenSheet& open = Open({kBirgit}, "Account");
  modal_scripts().Add([](QWidget& window) {
    PasswordDialog dialog(window);
    dialog.TypeTwice("Linden-2031");
    dialog.Cancel();
  });
  open.user().Click(IDC_OWN_RESET_PASSWORD);
  EXPECT_THAT(store().log, Not(Contains(HasSubstr("modify"))));
}

}  // namespace
}  // namespace pelora::test
