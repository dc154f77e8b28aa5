// SPDX-License-Identifier: Apache-2.0
// What an administrator does on the first day, with the keyboard alone and with the mouse, each in
// a counted number of steps. The same for a directory file and for a domain.
#include "tests/ui/first_day.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>
#include <QTreeWidget>

#include "hosts/console/new_object/new_object_wizard.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "resources/resource.h"
#include "tests/contract/dialog_contract_qt_scripts.h"
#include "tests/support/temporary_folder.h"
#include "tests/ui/chooser_user.h"
#include "tests/ui/console_test.h"
#include "tests/ui/first_day_person.h"

namespace pelora::test {
namespace {

using console::ToQString;
using console::ToUtf8;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

constexpr int kPatience = 60000;
constexpr int kPause = 500;
constexpr int kMostClicks = 60;

const std::string kTomInIt = kTom;
const std::string kKarin = std::string("CN=Karin Vogel,") + kLaboratory;
const std::string kStefan = std::string("CN=Stefan Ebert,") + kSales;
const std::string kHeike = std::string("CN=Heike Naumann,OU=Fertigung,") + kCompany;

class FirstDay : public ::testing::TestWithParam<Hand> {
 protected:
  FirstDay()
      : module_(resources::ResourceFile::Read(resources::EmbeddedResourceBytes())),
        company_(MakeFirstDayCompany()),
        person_(GetParam()) {
    // What is kept for the user is kept for the test alone.
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString(folder_.File("data")));
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder_.File("config")));
    // A click that follows another one is no double click.
    QApplication::setDoubleClickInterval(1);
    window_.emplace(*module_.value);
    if (!window_->SetSession(company_->Open())) throw std::runtime_error("no session");
    window_->show();
    Show(kCompany);
    person_.LookAt(*window_);
  }
  ~FirstDay() override {
    Settle();
    EXPECT_EQ(scripts_.waiting(), 0U) << "a window did not come up";
    RecordProperty("steps", person_.steps());
    RecordProperty("acts", person_.acts());
  }

  [[nodiscard]] Person& person() { return person_; }
  [[nodiscard]] FirstDayCompany& company() { return *company_; }
  [[nodiscard]] console::MainWindow& window() { return *window_; }
  [[nodiscard]] console::DirectoryPane& pane() { return window_->pane(); }
  [[nodiscard]] QTreeView& list() { return pane().list().view(); }
  [[nodiscard]] std::string Here(const std::string& sample) const { return company_->Here(sample); }
  [[nodiscard]] std::vector<std::string> Values(const std::string& sample, const char* attribute) {
    return company_->Values(Here(sample), attribute);
  }
  /// The name of an object made in a test, another one for each hand.
  [[nodiscard]] QString Named(const char* name) const {
    return QString::fromUtf8(name) +
           (person_.HasMouse() ? QStringLiteral("a") : QStringLiteral("b"));
  }

  void Settle() {
    QCoreApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->IsReading(); }, kPatience));
    QCoreApplication::processEvents();
  }
  /// The window shows a container when the day begins.
  void Show(const std::string& sample) {
    Settle();
    const std::string dn = Here(sample);
    pane().GoTo(dn);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
          const auto* container = pane().Container();
          return container != nullptr && container->dn == dn && !window_->IsReading();
        },
        kPatience))
        << dn;
    list().setFocus();
    Settle();
  }
  [[nodiscard]] std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (int row = 0; row < list().model()->rowCount(); ++row) {
      names.push_back(ToUtf8(list().model()->index(row, 0).data().toString()));
    }
    return names;
  }

  /// A step: finds what is called so.
  void Find(const QString& text) {
    person_.Step();
    GoToFind();
    person_.Type(text);
    person_.Key(Qt::Key_Return);
    Settle();
  }
  /// A step: finds what somebody has sent as a list.
  void FindPasted(const QStringList& names) {
    person_.Step();
    QApplication::clipboard()->setText(names.join(QLatin1Char('\n')));
    GoToFind();
    person_.Key(Qt::Key_V, Qt::ControlModifier);
    person_.Key(Qt::Key_Return);
    Settle();
  }
  /// A step: chooses a view.
  void ChooseView(const char* begin, const char* name) {
    person_.Step();
    QComboBox& views = pane().find().views();
    if (person_.HasMouse()) {
      ChooseIn(views, QString::fromUtf8(name));
    } else {
      person_.GoTo(views);
      person_.Type(QString::fromUtf8(begin));
    }
    EXPECT_EQ(ToUtf8(views.currentText()), name);
    Settle();
  }
  /// A step: opens the properties of what is found.
  console::QtPropertySheet& OpenProperties(const char* row) {
    person_.Step();
    if (person_.HasMouse() && row != nullptr) {
      person_.DoubleClick(list(), QString::fromUtf8(row));
    } else {
      person_.Command(*window_, {QStringLiteral("&Object"), QStringLiteral("&Properties")});
    }
    return OpenedSheet();
  }
  console::QtPropertySheet& OpenedSheet() {
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return window_->sheets().Open().size() == 1; }, kPatience));
    Settle();
    if (window_->sheets().Open().empty()) throw std::runtime_error("no sheet came up");
    console::QtPropertySheet& sheet = *window_->sheets().Open().front();
    person_.LookAt(sheet);
    return sheet;
  }
  template <class Widget>
  [[nodiscard]] static Widget& Control(QWidget& window, int id) {
    auto* const found = window.findChild<Widget*>(QStringLiteral("control_%1").arg(id));
    if (found == nullptr) throw std::runtime_error("there is no control " + std::to_string(id));
    return *found;
  }
  template <class Widget>
  [[nodiscard]] static Widget& Part(QWidget& window, const char* name) {
    auto* const found = window.findChild<Widget*>(QLatin1String(name));
    if (found == nullptr) throw std::runtime_error(std::string("there is no ") + name);
    return *found;
  }
  /// Plays to the next modal window, which has this name.
  void In(const char* name, std::function<void(QWidget& window)> act) {
    scripts_.Add([this, name, act = std::move(act)](QWidget& window) {
      EXPECT_EQ(ToUtf8(window.objectName()), name);
      if (window.objectName() != QLatin1String(name)) return window.close(), void();
      person_.LookAt(window);
      act(window);
    });
  }
  /// What is written to several is shown before and told after.
  void ExpectReview() {
    In("review",
       [this](QWidget& review) { person_.Press(Part<QPushButton>(review, "review_write")); });
    In("results", [this](QWidget& results) {
      person_.Press(*results.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Close));
    });
  }
  /// A step: ends the sheet by OK; everything is written.
  void Finish(console::QtPropertySheet& sheet) {
    person_.Step();
    person_.Press(*sheet.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok));
    Ended();
  }
  void Ended() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return window_->sheets().Open().isEmpty(); }, kPatience));
    Settle();
    person_.LookAt(*window_);
  }
  /// Chooses in a list that opens.
  void ChooseIn(QComboBox& box, const QString& text) {
    person_.GoTo(box);
    if (person_.HasMouse()) {
      EXPECT_TRUE(QTest::qWaitFor([&box] { return box.view()->isVisible(); }, kPatience));
      // The click that has opened it must be over, or the next one counts as its end.
      const auto is_chosen = [&] { return box.currentText() == text && !box.view()->isVisible(); };
      person_.Choose(*box.view(), text);
      for (int again = 0; again < kMostClicks && !QTest::qWaitFor(is_chosen, kPause); ++again) {
        if (box.view()->isVisible()) person_.Choose(*box.view(), text);
      }
    } else {
      person_.Key(Qt::Key_Home);
      for (int row = 0; row < box.count() && box.currentText() != text; ++row) {
        person_.Key(Qt::Key_Down);
      }
    }
    EXPECT_EQ(box.currentText(), text);
  }
  /// What the containers on the way to one are called, from below the directory's base.
  [[nodiscard]] static QStringList WayTo(const std::string& dn) {
    QStringList way;
    for (const QString& part : ToQString(dn).split(QLatin1Char(','))) {
      if (part.startsWith(QLatin1String("OU="))) way.prepend(part.mid(3));
    }
    return way;
  }
  [[nodiscard]] static bool Holds(const QTreeView& tree, const QString& name) {
    const QModelIndexList found = tree.model()->match(
        tree.model()->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive);
    return !found.isEmpty();
  }
  /// Fails when a task has taken more steps than it may.
  void ExpectSteps(int most) { EXPECT_LE(person_.steps(), most); }

 private:
  void GoToFind() {
    if (person_.HasMouse()) return person_.GoTo(pane().find().text());
    person_.Key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(pane().find().text().hasFocus());
  }

  const contract::PassedOver errands_{};
  pelora::testing::TemporaryFolder folder_;
  resources::ReadResult<resources::ResourceFile> module_;
  contract::ModalScripts scripts_;
  std::unique_ptr<FirstDayCompany> company_;
  Person person_;
  std::optional<console::MainWindow> window_;
};

INSTANTIATE_TEST_SUITE_P(By, FirstDay, ::testing::Values(Hand::kKeyboard, Hand::kMouse),
                         [](const ::testing::TestParamInfo<Hand>& hand) {
                           return hand.param == Hand::kKeyboard ? "Keyboard" : "Mouse";
                         });

TEST_P(FirstDay, AUserIsFoundByHisAddressAndGetsAQuota) {
  company().Remember(Here(kBirgit));
  Find(QStringLiteral("vertrieb@linden-werke.example"));
  EXPECT_THAT(Names(), ElementsAre("Birgit Krämer"));
  auto& sheet = OpenProperties("Birgit Krämer");
  person().Step();
  person().Press(Control<QAbstractButton>(sheet, IDC_QUOTA_OVERRIDE));
  person().Fill(Control<QLineEdit>(sheet, IDC_QUOTA_HARD), QStringLiteral("4000"));
  Finish(sheet);
  EXPECT_THAT(Values(kBirgit, "peloraQuotaOverride"), ElementsAre("1"));
  EXPECT_THAT(Values(kBirgit, "peloraQuotaHard"), ElementsAre("4000"));
  ExpectSteps(4);
}

TEST_P(FirstDay, FiveUsersOfDifferentUnitsGetAServerAndAreHidden) {
  const std::vector<std::string> five = {kAnna, kTom, kKarin, kStefan, kHeike};
  for (const std::string& user : five) company().Remember(Here(user));
  FindPasted({QStringLiteral("a.meyer@linden-werke.example"),
              QStringLiteral("t.richter@linden-werke.example"),
              QStringLiteral("k.vogel@linden-werke.example"),
              QStringLiteral("s.ebert@linden-werke.example"),
              QStringLiteral("h.naumann@linden-werke.example")});
  EXPECT_EQ(window().Selection().size(), 5U) << "what was asked for by name is selected";
  auto& sheet = OpenProperties(nullptr);
  person().Step();
  In("search_dialog", [this](QWidget& chooser) {
    ChooserUser servers(chooser);
    person().Fill(servers.Text(), QStringLiteral("mail02"));
    person().Key(Qt::Key_Return);
    servers.WaitForSearch();
    EXPECT_THAT(servers.Names(), ElementsAre("mail02"));
    person().DoubleClick(servers.Results(), QStringLiteral("mail02"));
  });
  person().Press(Control<QPushButton>(sheet, IDC_SERVER_SELECT));
  person().Step();
  person().Press(Control<QAbstractButton>(sheet, IDC_PELORA_HIDDEN));
  ExpectReview();
  Finish(sheet);
  for (const std::string& user : five) {
    EXPECT_THAT(Values(user, "peloraUserServer"), ElementsAre("mail02")) << user;
    EXPECT_THAT(Values(user, "peloraHidden"), ElementsAre("1")) << user;
  }
  ExpectSteps(6);
}

TEST_P(FirstDay, WhoHasNoMailboxIsSeen) {
  ChooseView("N", "No mailbox");
  EXPECT_THAT(Names(), Contains("Ursula Fischer"));
  EXPECT_THAT(Names(), Not(Contains("Birgit Krämer")));
  ExpectSteps(2);
}

TEST_P(FirstDay, WhoMayHaveMoreThan500MegabytesIsSeen) {
  ChooseView("O", "Own quota above");
  person().Step();
  person().Fill(pane().find().answer(), QStringLiteral("500"));
  person().Key(Qt::Key_Return);
  Settle();
  EXPECT_THAT(Names(), Contains("Frank Seidel"));
  EXPECT_THAT(Names(), Not(Contains("Cornelia Reuß"))) << "he has 300";
  ExpectSteps(2);
}

TEST_P(FirstDay, WhoHasPop3OnIsSeen) {
  ChooseView("F", "Feature on");
  person().Step();
  person().Fill(pane().find().answer(), QStringLiteral("pop3"));
  person().Key(Qt::Key_Return);
  Settle();
  EXPECT_THAT(Names(), Contains("Helga Önder"));
  EXPECT_THAT(Names(), Not(Contains("Tom Richter"))) << "his is off";
  ExpectSteps(2);
}

TEST_P(FirstDay, AnAddressIsAddedMadeDefaultAndAnotherOneRemoved) {
  company().Remember(Here(kBirgit));
  Show(kSales);
  person().Step();
  if (person().HasMouse()) {
    person().DoubleClick(list(), QStringLiteral("Birgit Krämer"));
  } else {
    person().Choose(list(), QStringLiteral("Birgit Krämer"));
    person().Key(Qt::Key_Return);
  }
  auto& sheet = OpenedSheet();
  auto& addresses = Control<QListWidget>(sheet, IDC_EMAIL_LIST);
  person().Step();
  In("", [this](QWidget& window) {
    person().Fill(Control<QLineEdit>(window, IDC_EMAIL_ADDRESS),
                  QStringLiteral("birgit@linden-werke.example"));
    person().Key(Qt::Key_Return);
  });
  person().Press(Control<QPushButton>(sheet, IDC_EMAIL_ADD));
  person().Step();
  person().Choose(addresses, QStringLiteral("birgit@"));
  person().Press(Control<QPushButton>(sheet, IDC_EMAIL_DEFAULT));
  person().Step();
  person().Choose(addresses, QStringLiteral("vertrieb@"));
  person().Press(Control<QPushButton>(sheet, IDC_EMAIL_DELETE));
  Finish(sheet);
  EXPECT_THAT(Values(kBirgit, "mail"), ElementsAre("birgit@linden-werke.example"));
  EXPECT_THAT(Values(kBirgit, "otherMailbox"), ElementsAre("b.kraemer@linden-werke.example"));
  ExpectSteps(5);
}

TEST_P(FirstDay, Pop3IsOffForAUnitWithAllBelow) {
  const std::string unit = std::string("OU=Entwicklung,") + kCompany;
  const std::string frank = "CN=Frank Seidel," + unit;
  for (const std::string& user : {frank, kKarin}) company().Remember(Here(user));
  person().Step();
  person().GoTo(pane().tree());
  if (!person().HasMouse()) person().Key(Qt::Key_Right);
  person().Choose(pane().tree(), QStringLiteral("Entwicklung"));
  Settle();
  person().Step();
  person().Command(window(),
                   {QStringLiteral("&Object"), QStringLiteral("Properties of &Users Below")});
  auto& sheet = OpenedSheet();
  person().Step();
  auto& tabs = Part<QTabWidget>(sheet, "property_sheet_tabs");
  if (person().HasMouse()) {
    QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, Qt::NoModifier,
                      tabs.tabBar()->tabRect(1).center());
    QCoreApplication::processEvents();
  } else {
    person().Key(Qt::Key_Tab, Qt::ControlModifier);
  }
  EXPECT_EQ(sheet.CurrentPage(), 1U);
  person().Choose(Control<QTreeWidget>(sheet, IDC_FEATURE_LIST), QStringLiteral("pop3"));
  person().Press(Control<QPushButton>(sheet, IDC_FEATURE_DISABLE));
  ExpectReview();
  Finish(sheet);
  for (const std::string& user : {frank, kKarin}) {
    EXPECT_THAT(Values(user, "peloraDisabledFeatures"), Contains("pop3")) << user;
  }
  EXPECT_THAT(Values(kStefan, "peloraDisabledFeatures"), Not(Contains("pop3")))
      << "of another unit";
  ExpectSteps(5);
}

TEST_P(FirstDay, ObjectsOfEveryKindAreMadeRenamedMovedAndDeleted) {
  Show(kSales);
  const auto make = [this](const char* kind, const std::function<void(QWidget & wizard)>& fill) {
    person().Step();
    In("new_object_wizard", [this, fill](QWidget& window) {
      fill(window);
      auto& wizard = dynamic_cast<console::QtNewObjectWizard&>(window);
      while (!wizard.IsSummary() && wizard.next().isEnabled()) person().Press(wizard.next());
      ASSERT_TRUE(wizard.IsSummary()) << "the wizard stands still";
      person().Press(wizard.finish());
    });
    person().Command(
        window(), {QStringLiteral("&Object"), QStringLiteral("&New"), QString::fromLatin1(kind)});
    Settle();
    person().LookAt(window());
  };
  const auto fill = [this](QWidget& wizard, const char* field, const QString& text) {
    person().Fill(Part<QLineEdit>(wizard, field), text);
  };
  const auto next_with_address = [this](QWidget& window, const QString& address) {
    person().Press(dynamic_cast<console::QtNewObjectWizard&>(window).next());
    person().Press(Control<QAbstractButton>(window, IDC_CREATE_PELORA));
    person().Fill(Control<QLineEdit>(window, IDC_NEW_ADDRESS), address);
  };
  const QString logon = Named("first.day.");
  make("&User", [&](QWidget& wizard) {
    fill(wizard, "own_first_name", QStringLiteral("Nora"));
    fill(wizard, "own_last_name", Named("Neu"));
    fill(wizard, "own_logon_name", logon + QLatin1Char('1'));
    next_with_address(wizard, logon + QStringLiteral("1@linden-werke.example"));
  });
  const QString room = Named("Raum");
  make("&User", [&](QWidget& wizard) {
    fill(wizard, "own_name", room);
    fill(wizard, "own_logon_name", logon + QLatin1Char('2'));
    next_with_address(wizard, logon + QStringLiteral("2@linden-werke.example"));
    ChooseIn(Control<QComboBox>(wizard, IDC_ACCOUNT_TYPE), QStringLiteral("room"));
  });
  make("&Group", [&](QWidget& wizard) {
    fill(wizard, "own_name", Named("Gruppe"));
    In("search_dialog", [this](QWidget& chooser) {
      ChooserUser members(chooser);
      person().Fill(members.Text(), QStringLiteral("Krämer"));
      person().Key(Qt::Key_Return);
      members.WaitForSearch();
      person().DoubleClick(members.Results(), QStringLiteral("Birgit Krämer"));
      person().Press(members.Button("OK"));
    });
    person().Press(Part<QPushButton>(wizard, "own_members_add"));
    next_with_address(wizard, logon + QStringLiteral("3@linden-werke.example"));
  });
  make("&Contact", [&](QWidget& wizard) {
    fill(wizard, "own_first_name", QStringLiteral("Konrad"));
    fill(wizard, "own_last_name", Named("Extern"));
    next_with_address(wizard, logon + QStringLiteral("4@example.org"));
  });
  make("&Address List", [&](QWidget& wizard) {
    person().Fill(Control<QLineEdit>(wizard, IDC_OBJECT_NAME), Named("Liste"));
  });
  EXPECT_EQ(person().steps(), 5);
  const auto dn = [](const QString& name, const std::string& unit) {
    return "CN=" + ToUtf8(name) + "," + unit;
  };
  EXPECT_THAT(Values(dn(QStringLiteral("Nora ") + Named("Neu"), kSales), "mail"),
              ElementsAre(ToUtf8(logon) + "1@linden-werke.example"));
  EXPECT_THAT(Values(dn(room, kSales), "peloraResourceType"), ElementsAre("room"));
  EXPECT_THAT(Values(dn(Named("Gruppe"), kSales), "sAMAccountName"),
              ElementsAre(ToUtf8(Named("Gruppe"))));
  EXPECT_THAT(Values(dn(Named("Gruppe"), kSales), "member"), ElementsAre(Here(kBirgit)));
  EXPECT_TRUE(company().IsThere(Here(dn(QStringLiteral("Konrad ") + Named("Extern"), kSales))));
  EXPECT_TRUE(company().IsThere(Here(dn(Named("Liste"), kSales))));

  person().Step();
  person().Choose(list(), room);
  In("rename_dialog", [&](QWidget& dialog) {
    person().Fill(Part<QLineEdit>(dialog, "new_name"), Named("Saal"));
    person().Key(Qt::Key_Return);
  });
  person().Command(window(), {QStringLiteral("&Object"), QStringLiteral("R&ename...")});
  Settle();
  EXPECT_TRUE(company().IsThere(Here(dn(Named("Saal"), kSales))));

  const std::string unit = std::string("OU=IT,") + kCompany;
  person().Step();
  person().Choose(list(), Named("Gruppe"));
  In("container_browser", [&](QWidget& browser) {
    auto& tree = Part<QTreeView>(browser, "container_tree");
    for (const QString& name : WayTo(Here(unit))) {
      EXPECT_TRUE(QTest::qWaitFor([&] { return Holds(tree, name); }, kPatience)) << ToUtf8(name);
      person().DoubleClickOr(tree, name, Qt::Key_Right);
    }
    In("place_question",
       [this](QWidget& question) { person().Press(Part<QPushButton>(question, "place_go_on")); });
    person().Press(*browser.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok));
  });
  person().Command(window(), {QStringLiteral("&Object"), QStringLiteral("&Move...")});
  Settle();
  EXPECT_TRUE(company().IsThere(Here(dn(Named("Gruppe"), unit))));

  person().Step();
  person().Choose(list(), QStringLiteral("Konrad ") + Named("Extern"));
  In("place_question",
     [this](QWidget& question) { person().Press(Part<QPushButton>(question, "place_go_on")); });
  person().Command(window(), {QStringLiteral("&Object"), QStringLiteral("&Delete...")});
  Settle();
  EXPECT_FALSE(company().IsThere(Here(dn(QStringLiteral("Konrad ") + Named("Extern"), kSales))));
  ExpectSteps(8);
}

}  // namespace
}  // namespace pelora::test
