// SPDX-License-Identifier: Apache-2.0
// How the console's choosers look; pictures of them are kept.
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <map>

#include "directory/select_ad_object.h"
#include "hosts/console/choosers/qt_choosers.h"
#include "hosts/console/dialogs/message_box.h"
#include "hosts/console/program/console_platform.h"
#include "hosts/console/text/qt_text.h"
#include "pages/email_address_dlg.h"
#include "tests/ui/chooser_user.h"
#include "tests/ui/console_test.h"
#include "tests/ui/faults_of_sight.h"
#include "tests/ui/keep_picture.h"

namespace pelora::test {
namespace {

using console::QtChoosers;
using Lines = std::vector<std::string>;

/// Letters of a window that are pressed with Alt, each with the texts that have it. The system may
/// give OK and Cancel their first letters.
Lines SharedMnemonics(const QWidget& window) {
  std::map<QString, QStringList> texts = {{QStringLiteral("O"), {QStringLiteral("OK")}},
                                          {QStringLiteral("C"), {QStringLiteral("Cancel")}}};
  const auto add = [&texts](const QString& text) {
    const qsizetype mark = text.indexOf(QLatin1Char('&'));
    const bool is_system =
        text.endsWith(QLatin1String("OK")) || text.endsWith(QLatin1String("Cancel"));
    if (mark >= 0 && !is_system) texts[text.mid(mark + 1, 1).toUpper()].append(text);
  };
  for (const auto* label : window.findChildren<QLabel*>()) {
    if (label->buddy() != nullptr) add(label->text());
  }
  for (const auto* button : window.findChildren<QPushButton*>()) add(button->text());
  Lines shared;
  for (const auto& [letter, bearers] : texts) {
    if (bearers.size() > 1) shared.push_back(console::ToUtf8(bearers.join(QLatin1String(", "))));
  }
  return shared;
}

class ChooserLooks : public ConsoleTest {
 protected:
  /// Looks at the next chooser, which stands open, keeps a picture of it and cancels it.
  void Look(const char* name, std::function<void(ChooserUser&)> prepare) {
    modal_scripts().Add([name, prepare = std::move(prepare)](QWidget& window) {
      contract::Activate(window);
      ChooserUser user(window);
      prepare(user);
      EXPECT_EQ(FaultsOfSight(window), Lines());
      EXPECT_EQ(SharedMnemonics(window), Lines());
      KeepPicture(window, name);
      user.Click("Cancel");
    });
  }

  QtChoosers choosers_{*session().store, session().open_another};
  console::QtMessageBox message_box_;
  console::ConsolePlatform platform_{session().service, message_box_, choosers_, module()};
  SelectADObject chooser_{platform_.platform()};
  Lines names_;
};

TEST_F(ChooserLooks, ObjectPicker) {
  Look("chooser_users_and_groups", [](ChooserUser& user) {
    user.Search("e");
    user.ClickRow("Birgit Krämer");
    user.Click("Add");
    user.ClickRow("Rolf Uhlig");
  });
  (void)chooser_.SelectUsersAndGroups(nullptr, names_, SelectionMode::kMultiple);
}

TEST_F(ChooserLooks, ObjectPickerForOneObject) {
  Look("chooser_computer", [](ChooserUser& user) {
    user.WaitForSearch();
    user.ClickRow("mail01");
  });
  (void)chooser_.SelectComputers(nullptr, names_, SelectionMode::kSingle);
}

TEST_F(ChooserLooks, ContainerSearch) {
  Look("chooser_containers", [](ChooserUser& user) {
    user.Search("e");
    user.ClickRow("Vertrieb");
  });
  (void)chooser_.SelectContainers(nullptr, names_, SelectionMode::kMultiple);
}

TEST_F(ChooserLooks, ContainerBrowser) {
  Look("chooser_container_tree", [](ChooserUser& user) {
    user.GoToContainer({"Linden-Werke Chemnitz", "Entwicklung", "Labor I/O"});
  });
  std::string name;
  (void)chooser_.BrowseContainer(name);
}

TEST_F(ChooserLooks, DialogOfAnAddress) {
  Look("email_address", [](ChooserUser&) {});
  EXPECT_EQ(
      CEmailAddressDlg(platform_.platform(), "Birgit.Kraemer@linden-werke.example").Show(nullptr),
      2);
}

}  // namespace
}  // namespace pelora::test
