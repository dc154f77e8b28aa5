// SPDX-License-Identifier: Apache-2.0
// Objects are renamed, moved and deleted from the main window, by keyboard and by mouse.
#include <gmock/gmock.h>

#include <QAction>
#include <QClipboard>
#include <QDropEvent>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QStatusBar>
#include <QTreeView>

#include "hosts/console/life/object_drag.h"
#include "hosts/console/window/main_window.h"
#include "hosts/ldap/object_name.h"
#include "tests/ui/keep_picture.h"
#include "tests/ui/writing_sheet.h"

namespace pelora::test {
namespace {

using console::ToQString;
using console::ToUtf8;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr int kPatience = 20000;
const std::string kCompany = "OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
const std::string kSales = "OU=Vertrieb," + kCompany;
const std::string kRooms = "OU=Räume und Geräte," + kCompany;

class PlacesWindow : public WritingSheet {
 protected:
  PlacesWindow() : window_(module()) {
    if (!window_.SetSession(TakeSession())) throw std::runtime_error("no session");
    window_.show();
    contract::Activate(window_);
    GoTo(kSales);
  }
  ~PlacesWindow() override { Settle(); }

  void Settle() {
    QCoreApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window_.IsReading(); }, kPatience));
    QCoreApplication::processEvents();
  }
  /// Plays to the next window once it has the keyboard, as it has in front of a person.
  void In(const char* name, std::function<void(QWidget& window)> act) {
    WritingSheet::In(name, [act = std::move(act)](QWidget& window) {
      QApplication::setActiveWindow(&window);
      const auto has_keyboard = [&window] {
        const QWidget* const focused = QApplication::focusWidget();
        return focused != nullptr && window.isAncestorOf(focused);
      };
      EXPECT_TRUE(QTest::qWaitFor(has_keyboard, kPatience));
      act(window);
    });
  }
  void GoTo(const std::string& dn) {
    Settle();
    window_.pane().GoTo(dn);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
          const auto* container = window_.pane().Container();
          return container != nullptr && container->dn == dn && !window_.IsReading();
        },
        kPatience));
    list().setFocus();
  }
  void Select(const std::vector<std::string>& dns) {
    Settle();
    window_.pane().list().Select(dns);
    list().setFocus();
    QCoreApplication::processEvents();
  }
  /// A key in the list.
  void Press(Qt::Key key) {
    QTest::keyClick(&list(), key);
    Settle();
  }
  void Trigger(const char* text) {
    for (QAction* action : window_.findChildren<QAction*>()) {
      if (ToUtf8(action->text()) != text) continue;
      action->trigger();
      return Settle();
    }
    FAIL() << "there is no action " << text;
  }
  [[nodiscard]] QAction& Action(const char* text) {
    for (QAction* action : window_.findChildren<QAction*>()) {
      if (ToUtf8(action->text()) == text) return *action;
    }
    throw std::runtime_error(std::string("there is no action ") + text);
  }
  /// Types a new name into the dialog and goes on.
  void TypeName(const char* name) {
    In("rename_dialog", [name](QWidget& window) {
      auto& typed = Part<QLineEdit>(window, "new_name");
      EXPECT_TRUE(typed.hasFocus());
      EXPECT_FALSE(Part<QPushButton>(window, "rename_ok").isEnabled()) << "the same name";
      typed.clear();
      EXPECT_FALSE(Part<QPushButton>(window, "rename_ok").isEnabled()) << "no name";
      QTest::keyClicks(&typed, QString::fromUtf8(name));
      QTest::keyClick(&typed, Qt::Key_Return);
    });
  }
  /// Goes on from a question, after a look at it.
  void GoOn(std::function<void(QWidget& window)> look = {}) {
    In("place_question", [look](QWidget& window) {
      if (look) look(window);
      Part<QPushButton>(window, "place_go_on").click();
    });
  }
  [[nodiscard]] std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (int row = 0; row < list().model()->rowCount(); ++row) {
      names.push_back(ToUtf8(list().model()->index(row, 0).data().toString()));
    }
    return names;
  }
  [[nodiscard]] std::vector<std::string> Selected() {
    std::vector<std::string> dns;
    for (const auto& object : window_.pane().list().Selection()) dns.push_back(object.dn);
    return dns;
  }
  [[nodiscard]] std::string Container() {
    const auto* container = window_.pane().Container();
    return container == nullptr ? "" : container->dn;
  }
  [[nodiscard]] std::string Said() { return ToUtf8(window_.statusBar()->currentMessage()); }
  [[nodiscard]] QTreeView& list() { return window_.pane().list().view(); }
  [[nodiscard]] QTreeView& tree() { return window_.pane().tree(); }
  [[nodiscard]] console::MainWindow& window() { return window_; }

  /// Drops objects on a row of a view; whether the view took them.
  bool Drop(QTreeView& view, const QModelIndex& index, const std::vector<std::string>& dns) {
    const std::unique_ptr<QMimeData> data(console::DraggedObjects(dns));
    const QPoint place = view.visualRect(index).center();
    QDragEnterEvent enter(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &enter);
    QDragMoveEvent move(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &move);
    if (!move.isAccepted()) return false;
    QDropEvent drop(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &drop);
    Settle();
    return true;
  }
  [[nodiscard]] QModelIndex RowOf(QTreeView& view, const char* name) {
    const QModelIndexList rows =
        view.model()->match(view.model()->index(0, 0), Qt::DisplayRole, QString::fromUtf8(name), 1,
                            Qt::MatchExactly | Qt::MatchRecursive);
    if (rows.isEmpty()) throw std::runtime_error(std::string("no row ") + name);
    view.scrollTo(rows.first());
    return rows.first();
  }

 private:
  const contract::PassedOver errands_{};
  console::MainWindow window_;
};

TEST_F(PlacesWindow, ATypingErrorInANameIsMendedByKeyboardAndTakenBack) {
  Select({kBirgit});
  TypeName("Birgit Kraemer");
  Press(Qt::Key_F2);
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_EQ(Said(), "Birgit Krämer was renamed.");
  EXPECT_THAT(Names(), Contains("Birgit Kraemer"));
  EXPECT_THAT(Selected(), ElementsAre("CN=Birgit Kraemer," + kSales));
  Trigger("&Undo Last Change");
  EXPECT_EQ(Said(), "Taken back: Birgit Krämer (Name)");
  EXPECT_THAT(Names(), Contains("Birgit Krämer"));
  Trigger("&Redo");
  EXPECT_THAT(Names(), Contains("Birgit Kraemer"));
}

TEST_F(PlacesWindow, ANameThatIsTakenIsSaidInWords) {
  Select({kBirgit});
  TypeName("Stefan Ebert");
  In("write_failure", [](QWidget& window) {
    const auto& box = dynamic_cast<QMessageBox&>(window);
    EXPECT_EQ(ToUtf8(box.text()), "Birgit Krämer was not renamed.");
    EXPECT_THAT(ToUtf8(box.informativeText()),
                HasSubstr("There is an object of this name already."));
  });
  Press(Qt::Key_F2);
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_THAT(Names(), Contains("Birgit Krämer"));
}

TEST_F(PlacesWindow, AServersNewNameSaysWhoseHomeServerItWas) {
  GoTo("OU=Groupware Servers,DC=linden-werke,DC=example");
  Select({"CN=mail-thess,OU=Groupware Servers,DC=linden-werke,DC=example"});
  TypeName("mail-gr");
  In("place_question", [](QWidget& window) {
    EXPECT_THAT(RowsOf(Part<QTableView>(window, "place_references")),
                Contains(HasSubstr("Home Server|mail-thess")).Times(6));
  });
  Press(Qt::Key_F2);
  EXPECT_THAT(Names(), Contains("mail-thess")) << "closed without an answer, nothing is done";
}

TEST_F(PlacesWindow, SeveralUsersMoveByTheDialogAndGoBack) {
  const std::string stefan = "CN=Stefan Ebert," + kSales;
  Select({kBirgit, stefan});
  In("container_browser", [this](QWidget& window) {
    auto& containers = Part<QTreeView>(window, "container_tree");
    auto& status = Part<QLabel>(window, "browser_status");
    const auto choose = [&](const char* name) {
      EXPECT_TRUE(QTest::qWaitFor(
          [&] {
            const QModelIndexList found = containers.model()->match(
                containers.model()->index(0, 0), Qt::DisplayRole, QString::fromUtf8(name), 1,
                Qt::MatchExactly | Qt::MatchRecursive);
            if (found.isEmpty()) return false;
            containers.setCurrentIndex(found.first());
            return true;
          },
          kPatience))
          << name;
    };
    choose("Linden-Werke Chemnitz");
    containers.expand(containers.currentIndex());
    choose("Vertrieb");
    QTest::keyClick(&containers, Qt::Key_Return);
    EXPECT_EQ(ToUtf8(status.text()), "The selected objects lie there already.");
    choose("IT");
    GoOn([](QWidget& question) {
      EXPECT_EQ(ToUtf8(Part<QLabel>(question, "place_text").text()), "Move 2 objects to IT?");
      KeepPicture(question, "life-move");
    });
    QTest::keyClick(&containers, Qt::Key_Return);
  });
  Trigger("&Move...");
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_EQ(Said(), "2 objects were moved.");
  EXPECT_THAT(Names(), Not(Contains("Birgit Krämer")));
  GoTo("OU=IT," + kCompany);
  EXPECT_THAT(Names(), Contains("Stefan Ebert"));
  Trigger("&Undo Last Change");
  EXPECT_THAT(Names(), Not(Contains("Stefan Ebert")));
  GoTo(kSales);
  EXPECT_THAT(Names(), Contains("Birgit Krämer"));
}

TEST_F(PlacesWindow, WhatIsDroppedOnAContainerIsMovedAfterAQuestion) {
  GoOn();
  EXPECT_TRUE(Drop(tree(), RowOf(tree(), "IT"), {kBirgit}));
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_EQ(Said(), "Birgit Krämer was moved.");
  EXPECT_THAT(Names(), Not(Contains("Birgit Krämer")));
  EXPECT_FALSE(Drop(tree(), RowOf(tree(), "IT"), {kCompany})) << "it would lie below itself";
  GoTo(kCompany);
  EXPECT_FALSE(Drop(list(), RowOf(list(), "IT"), {"OU=IT," + kCompany})) << "or in itself";
  In("place_question", [](QWidget& /*window*/) {});
  EXPECT_TRUE(Drop(list(), RowOf(list(), "IT"), {kRooms}));
  EXPECT_THAT(Names(), Contains("Räume und Geräte")) << "no, thank you";
  GoTo(kSales);
  EXPECT_FALSE(Drop(list(), RowOf(list(), "Stefan Ebert"), {kRooms})) << "no container";
}

TEST_F(PlacesWindow, ADeletionSaysWhatRefersToTheObjectAndThatItIsForGood) {
  Select({kBirgit});
  GoOn([](QWidget& window) {
    EXPECT_EQ(ToUtf8(Part<QLabel>(window, "place_text").text()), "Delete Birgit Krämer?");
    EXPECT_THAT(ToUtf8(Part<QLabel>(window, "place_note").text()),
                HasSubstr("cannot be taken back"));
    EXPECT_THAT(RowsOf(Part<QTableView>(window, "place_references")),
                Contains(HasSubstr("Vertrieb Alle|Members|")));
    EXPECT_FALSE(Part<QPushButton>(window, "place_go_on").isDefault()) << "Enter deletes nothing";
    KeepPicture(window, "life-delete");
  });
  Press(Qt::Key_Delete);
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_EQ(Said(), "Birgit Krämer was deleted.");
  EXPECT_THAT(Names(), Not(Contains("Birgit Krämer")));
  Trigger("&Undo Last Change");
  EXPECT_EQ(Said(), "What was written last cannot be taken back: Birgit Krämer (Deletion)");
  In("history", [](QWidget& window) {
    EXPECT_THAT(RowsOf(Part<QTableWidget>(window, "history_table")),
                ElementsAre(HasSubstr("|Birgit Krämer|Deletion|written for good")));
    EXPECT_FALSE(Part<QPushButton>(window, "history_undo").isEnabled());
  });
  Trigger("&Changes...");
}

TEST_F(PlacesWindow, AUnitThatIsNotEmptyWantsItsNameTyped) {
  GoTo(kRooms);
  tree().setFocus();
  QCoreApplication::processEvents();
  In("place_question", [](QWidget& window) {
    EXPECT_THAT(ToUtf8(Part<QLabel>(window, "place_note").text()),
                HasSubstr("With it goes what lies below, "));
    auto& typed = Part<QLineEdit>(window, "place_typed");
    auto& go_on = Part<QPushButton>(window, "place_go_on");
    EXPECT_TRUE(typed.hasFocus());
    EXPECT_FALSE(go_on.isEnabled());
    KeepPicture(window, "life-delete-unit");
    QTest::keyClick(&typed, Qt::Key_Return);
    EXPECT_TRUE(window.isVisible());
    typed.insert(QStringLiteral("Räume und"));
    EXPECT_FALSE(go_on.isEnabled());
    typed.insert(QStringLiteral(" Geräte"));
    EXPECT_TRUE(go_on.isEnabled());
    QTest::keyClick(&typed, Qt::Key_Return);
  });
  QTest::keyClick(&tree(), Qt::Key_Delete);
  Settle();
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_EQ(Container(), kCompany) << "what lies above is shown";
  EXPECT_THAT(Names(), Not(Contains("Räume und Geräte")));
}

TEST_F(PlacesWindow, AContainerThatIsShownIsShownUnderItsNewName) {
  tree().setFocus();
  QCoreApplication::processEvents();
  TypeName("Verkauf");
  QTest::keyClick(&tree(), Qt::Key_F2);
  Settle();
  EXPECT_EQ(Container(), "OU=Verkauf," + kCompany);
  EXPECT_THAT(Names(), Contains("Birgit Krämer"));
}

TEST_F(PlacesWindow, TheBaseStaysAndKeysBelongToTheTextThatIsTyped) {
  GoTo("DC=linden-werke,DC=example");
  tree().setFocus();
  QCoreApplication::processEvents();
  for (const char* text : {"R&ename...", "&Move...", "&Delete..."}) {
    EXPECT_FALSE(Action(text).isEnabled()) << text;
  }
  GoTo(kSales);
  Select({kBirgit});
  auto& filter = window().pane().list().filter();
  filter.setFocus();
  QTest::keyClicks(&filter, QStringLiteral("B"));
  QTest::keyClick(&filter, Qt::Key_Delete);
  QTest::keyClick(&filter, Qt::Key_F2);
  EXPECT_THAT(Names(), Contains("Birgit Krämer")) << "no window came up";
}

TEST_F(PlacesWindow, DistinguishedNamesAreCopiedFromBothMenus) {
  Select({kBirgit});
  for (QTreeView* view : {&list(), &tree()}) {
    const auto actions = view->actions();
    const auto copy = std::ranges::find_if(actions, [](const QAction* action) {
      return ToUtf8(action->text()) == "Copy D&istinguished Names";
    });
    ASSERT_NE(copy, actions.end());
  }
  QTest::keyClick(&list(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(ToUtf8(QGuiApplication::clipboard()->text()), kBirgit);
  tree().setFocus();
  QCoreApplication::processEvents();
  QTest::keyClick(&tree(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(ToUtf8(QGuiApplication::clipboard()->text()), kSales);
}

TEST_F(PlacesWindow, EveryAttributeIsShownNarrowedAndCopied) {
  Select({kBirgit});
  QTest::keyClick(&window(), Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
  auto& shown = Part<QDialog>(window(), "attributes");
  EXPECT_EQ(ToUtf8(shown.windowTitle()), "Birgit Krämer Attributes");
  const auto& table = Part<QTableWidget>(shown, "attributes_table");
  EXPECT_THAT(RowsOf(table), Contains("cn|Birgit Krämer"));
  EXPECT_THAT(RowsOf(table), Contains("objectClass|top"));
  EXPECT_THAT(RowsOf(table), Contains("objectClass|user"));
  Part<QLineEdit>(shown, "attributes_filter").setText(QStringLiteral("USERSERVER"));
  Part<QPushButton>(shown, "attributes_copy").click();
  EXPECT_EQ(ToUtf8(QGuiApplication::clipboard()->text()), "peloraUserServer\tmail02\n");
  // What somebody has written meanwhile is read.
  ModifyEntry(file(), std::string("dn: ") + kBirgit +
                          "\nchangetype: modify\nreplace: peloraUserServer\n"
                          "peloraUserServer: mail01\n");
  Part<QPushButton>(shown, "attributes_refresh").click();
  EXPECT_THAT(RowsOf(table), Contains("peloraUserServer|mail01"));
  shown.close();
}

TEST_F(PlacesWindow, AnOpenSheetIsAskedBeforeItsObjectIsChanged) {
  const auto open = [this] {
    Select({kBirgit});
    Press(Qt::Key_Return);
    EXPECT_EQ(window().sheets().Open().size(), 1);
    return window().sheets().Open().front();
  };
  console::QtPropertySheet* const sheet = open();
  contract::QtPlayer(*sheet).Click(IDC_PELORA_HIDDEN);
  EXPECT_TRUE(sheet->HasUnsavedEdits());
  // Back to the window behind it.
  QApplication::setActiveWindow(&window());
  Select({kBirgit});
  GoOn();
  In("discard_question", [](QWidget& question) { QTest::keyClick(&question, Qt::Key_Escape); });
  Press(Qt::Key_Delete);
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_THAT(Names(), Contains("Birgit Krämer"))
      << "the edits were kept, and the object with them";
  EXPECT_TRUE(sheet->HasUnsavedEdits());
  EXPECT_EQ(Said(), "Nothing was done: there are changes that were not applied.");
  // A container above takes the object along.
  QApplication::setActiveWindow(&window());
  GoTo(kCompany);
  Select({kSales});
  TypeName("Verkauf");
  In("discard_question", [](QWidget& question) {
    for (auto* button : question.findChildren<QPushButton*>()) {
      if (dynamic_cast<QMessageBox&>(question).buttonRole(button) == QMessageBox::DestructiveRole)
        return button->click();
    }
  });
  Press(Qt::Key_F2);
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_TRUE(window().sheets().Open().isEmpty()) << "its object is called otherwise now";
  EXPECT_THAT(Names(), Contains("Verkauf"));
}

TEST_F(PlacesWindow, SeveralAreDeletedAtOnceAndEachIsTold) {
  const std::string stefan = "CN=Stefan Ebert," + kSales;
  Select({kBirgit, stefan});
  GoOn([](QWidget& question) {
    EXPECT_EQ(ToUtf8(Part<QLabel>(question, "place_text").text()), "Delete 2 objects?");
    EXPECT_THAT(RowsOf(Part<QTableView>(question, "place_references")),
                Contains(HasSubstr("Vertrieb Alle|Members|")));
  });
  Press(Qt::Key_Delete);
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_EQ(Said(), "2 objects were deleted.");
  EXPECT_THAT(Names(), Not(Contains("Birgit Krämer")));
  EXPECT_THAT(Names(), Not(Contains("Stefan Ebert")));
}

TEST_F(PlacesWindow, AHistoryThatCannotBeKeptIsSaid) {
  // A file stands where the folder would be made.
  QFile blocker(ToQString(folder().File("data")));
  ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
  blocker.close();
  Select({kBirgit});
  TypeName("Birgit Kraemer");
  Press(Qt::Key_F2);
  EXPECT_THAT(Names(), Contains("Birgit Kraemer"));
  EXPECT_THAT(Said(), ::testing::StartsWith("This change cannot be taken back: "));
}

}  // namespace
}  // namespace pelora::test
