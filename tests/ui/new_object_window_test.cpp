// SPDX-License-Identifier: Apache-2.0
// The main window's way to new objects.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <filesystem>

#include "hosts/console/new_object/new_object_wizard.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "tests/ui/console_test.h"

namespace pelora::test {
namespace {

using console::MainWindow;
using console::QtNewObjectWizard;
using console::ToQString;
using console::ToUtf8;

constexpr int kPatience = 20000;

class NewObjectWindow : public ConsoleTest {
 protected:
  NewObjectWindow() : window_(module()) {
    EXPECT_TRUE(window_.SetSession(TakeSession()));
    window_.show();
    contract::Activate(window_);
    Settle();
  }

  void Settle() {
    QCoreApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window_.IsReading(); }, kPatience));
  }
  QMenu& menu() { return *window_.findChild<QMenu*>(QStringLiteral("new_menu")); }
  QTreeView& tree() { return *window_.findChild<QTreeView*>(QStringLiteral("container_tree")); }
  QTreeView& list() { return *window_.findChild<QTreeView*>(QStringLiteral("object_list")); }
  /// Goes from the base to a container right below it.
  void GoTo(const char* name) {
    const QModelIndex base = tree().model()->index(0, 0);
    const auto found = tree().model()->match(tree().model()->index(0, 0, base), Qt::DisplayRole,
                                             QString::fromUtf8(name), 1, Qt::MatchExactly);
    ASSERT_FALSE(found.isEmpty()) << name;
    tree().setCurrentIndex(found.first());
    Settle();
  }
  std::vector<std::string> Selected() {
    std::vector<std::string> names;
    for (const QModelIndex& row : list().selectionModel()->selectedRows()) {
      names.push_back(ToUtf8(row.data().toString()));
    }
    return names;
  }
  bool TreeHolds(const char* name) {
    const QModelIndex base = tree().model()->index(0, 0);
    return !tree()
                .model()
                ->match(tree().model()->index(0, 0, base), Qt::DisplayRole, QString::fromUtf8(name),
                        1, Qt::MatchExactly)
                .isEmpty();
  }
  /// Fills in the name, and goes through to the end.
  static contract::ModalScript Make(const char* name, const char* logon_name) {
    return [=](QWidget& window) {
      auto* wizard = dynamic_cast<QtNewObjectWizard*>(&window);
      ASSERT_NE(wizard, nullptr);
      const auto type = [&window](const QString& field, const char* text) {
        QTest::keyClicks(window.findChild<QLineEdit*>(field), QString::fromUtf8(text));
      };
      type(QStringLiteral("own_name"), name);
      if (logon_name != nullptr) type(QStringLiteral("own_logon_name"), logon_name);
      QTest::mouseClick(&wizard->next(), Qt::LeftButton);
      QTest::mouseClick(&wizard->next(), Qt::LeftButton);
      QTest::mouseClick(&wizard->finish(), Qt::LeftButton);
    };
  }
  void Choose(int action) {
    menu().actions().at(action)->trigger();
    Settle();
  }
  MainWindow& window() { return window_; }

 private:
  const contract::PassedOver errands_{};
  MainWindow window_;
};

TEST_F(NewObjectWindow, OffersEveryKindInTheMenusAndTheToolBar) {
  std::vector<std::string> texts;
  for (const QAction* action : menu().actions()) {
    texts.push_back(ToUtf8(action->text()));
    EXPECT_FALSE(action->icon().isNull());
  }
  EXPECT_EQ(texts,
            (std::vector<std::string>{"&User", "&Contact", "&Group", "&Organizational Unit",
                                      "Co&mputer", "&Address List", "&Dynamic Distribution List"}));
  EXPECT_TRUE(menu().menuAction()->isEnabled());
  EXPECT_TRUE(list().actions().contains(menu().menuAction()));
  EXPECT_TRUE(tree().actions().contains(menu().menuAction()));
  const MainWindow empty(module());
  EXPECT_FALSE(empty.findChild<QMenu*>(QStringLiteral("new_menu"))->menuAction()->isEnabled());
}

TEST_F(NewObjectWindow, ANewUserIsListedAndSelected) {
  GoTo("Users");
  modal_scripts().Add(Make("Nora Neu", "nora"));
  Choose(0);
  EXPECT_EQ(Selected(), std::vector<std::string>{"Nora Neu"});
  EXPECT_FALSE(SearchEntry(file(), "CN=Nora Neu,CN=Users,DC=linden-werke,DC=example").empty());
}

TEST_F(NewObjectWindow, AnObjectIsSelectedWhateverSignsItsNameHolds) {
  GoTo("Users");
  const std::string signs = R"(#1 <A+B=C>; "x", y/z\w?#2 )";
  modal_scripts().Add(Make(signs.c_str(), "signs"));
  Choose(0);
  EXPECT_EQ(Selected(), std::vector<std::string>{signs.substr(0, signs.size() - 1)});
}

TEST_F(NewObjectWindow, ANewUnitStandsInTheTreeToo) {
  EXPECT_FALSE(TreeHolds("Neue Abteilung"));
  modal_scripts().Add(Make("Neue Abteilung", nullptr));
  Choose(3);
  EXPECT_TRUE(TreeHolds("Neue Abteilung"));
  EXPECT_EQ(Selected(), std::vector<std::string>{"Neue Abteilung"});
}

TEST_F(NewObjectWindow, ANewObjectGoesIntoTheUnitThatIsSelected) {
  window().pane().list().Select({"OU=Linden Servis Beograd,DC=linden-werke,DC=example"});
  list().setFocus();
  QCoreApplication::processEvents();
  EXPECT_EQ(ToUtf8(menu().menuAction()->statusTip()), "Create an object in Linden Servis Beograd");
  modal_scripts().Add(Make("Nora Neu", "nora"));
  Choose(0);
  EXPECT_FALSE(
      SearchEntry(file(), "CN=Nora Neu,OU=Linden Servis Beograd,DC=linden-werke,DC=example")
          .empty());
  ASSERT_TRUE(
      QTest::qWaitFor([this] { return window().pane().Container() != nullptr; }, kPatience));
  Settle();
  EXPECT_EQ(window().pane().Container()->name, "Linden Servis Beograd");
  EXPECT_EQ(Selected(), std::vector<std::string>{"Nora Neu"});
}

TEST_F(NewObjectWindow, AWizardThatIsCancelledLeavesTheListAlone) {
  GoTo("Users");
  const int count = list().model()->rowCount();
  modal_scripts().Add([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  Choose(0);
  EXPECT_EQ(list().model()->rowCount(), count);
}

TEST_F(NewObjectWindow, ADirectoryThatIsOpenedMeanwhileIsShownAfterwards) {
  const std::string other = folder().File("other.ldb");
  std::filesystem::copy_file(file(), other);
  bool shown = false;
  modal_scripts().Add([&](QWidget& wizard) {
    window().OpenBesides(
        QStringLiteral("other"),
        [other](const auto& /*stop*/) { return session::OpenDirectoryFile(other); },
        [&shown] { shown = true; });
    QTest::qWait(500);
    EXPECT_FALSE(shown);
    EXPECT_EQ(ToUtf8(window().windowTitle()), "company.ldb - Pelora Console");
    Make("Neue Abteilung", nullptr)(wizard);
  });
  Choose(3);
  EXPECT_TRUE(shown);
  EXPECT_EQ(ToUtf8(window().windowTitle()), "other.ldb - Pelora Console");
  EXPECT_FALSE(TreeHolds("Neue Abteilung"));
  EXPECT_FALSE(SearchEntry(file(), "OU=Neue Abteilung,DC=linden-werke,DC=example").empty());
}

TEST_F(NewObjectWindow, AContainerThatIsGoneIsReported) {
  GoTo("Groupware Servers");
  std::filesystem::remove(file());
  modal_scripts().Add([](QWidget& box) {
    EXPECT_EQ(ToUtf8(box.objectName()), "failure_box");
    QTest::keyClick(&box, Qt::Key_Return);
  });
  Choose(3);
  EXPECT_TRUE(QTest::qWaitFor([this] { return modal_scripts().waiting() == 0; }, kPatience));
}

}  // namespace
}  // namespace pelora::test
