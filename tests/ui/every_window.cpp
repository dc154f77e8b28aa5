// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/every_window.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>
#include <QTextEdit>
#include <QTreeView>
#include <set>

#include "hosts/console/attributes/attributes_window.h"
#include "hosts/console/choosers/container_browser.h"
#include "hosts/console/choosers/search_dialog.h"
#include "hosts/console/errands/errand_dialog.h"
#include "hosts/console/fields/query_preview.h"
#include "hosts/console/fields/value_list.h"
#include "hosts/console/finding/column_dialog.h"
#include "hosts/console/finding/view_editor.h"
#include "hosts/console/life/place_dialog.h"
#include "hosts/console/life/rename_dialog.h"
#include "hosts/console/new_object/pattern_dialog.h"
#include "hosts/console/password/reset_password_dialog.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/connect_dialog.h"
#include "hosts/console/window/main_window.h"
#include "hosts/console/writing/conflict_dialog.h"
#include "hosts/console/writing/history_dialog.h"
#include "hosts/console/writing/qt_writing_desk.h"
#include "hosts/console/writing/result_dialog.h"
#include "hosts/console/writing/review_dialog.h"
#include "hosts/session/find/ready_views.h"
#include "hosts/session/new_object_kind.h"
#include "resources/resource.h"
#include "tests/ui/long_names.h"
#include "tests/ui/open_sheet.h"
#include "tests/ui/open_wizard.h"

namespace pelora::test {
namespace {

constexpr int kPatience = 20000;
constexpr RowIndex kArchiverRow = 0;

class Tour {
 public:
  Tour(OpenCompany& company, session::DirectorySession& session, contract::ModalScripts& scripts,
       const LookAtWindow& look)
      : company_(company), session_(session), scripts_(scripts), look_(look) {}

  void LookAtSheets() {
    LookAtSheet({kBirgit}, "user");
    LookAtSheet({kBirgit, kRolf}, "users");
    LookAtSheet({kContact}, "contact");
    LookAtSheet({kGroup}, "group");
    LookAtSheet({kAddressList}, "address-list");
    LookAtSheet({kDynamicList}, "dynamic-list");
    LookAtSheet({kCompany}, "company");
    LookAtSheet({kServer}, "server");
  }

  void LookAtWizards() {
    session::DirectoryObject container = company_.Objects({kSales}).front();
    container.name = kLongWord;
    for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
      const std::string name = "new-" + std::string(kind.class_name);
      OpenWizard open(session_, company_.module(), std::string(kind.class_name).c_str(), container);
      Look(open.wizard(), name);
      if (open.wizard().own_page() != nullptr) {
        open.Write("own_name", "Name");
        if (kind.account != session::AccountForm::kNone) open.Write("own_logon_name", "name");
      } else {
        open.user().Type(IDC_OBJECT_NAME, "Name");
      }
      while (!open.wizard().IsSummary() && open.wizard().next().isEnabled()) {
        open.Next();
        Look(open.wizard(), name + "-" + std::to_string(open.wizard().CurrentPage()));
      }
      EXPECT_TRUE(open.wizard().IsSummary()) << name;
    }
    console::PatternDialog patterns({.logon_name = kLongWord, .address = kLongWord}, Long(), {},
                                    nullptr);
    Look(patterns, "patterns");
    patterns.findChild<QLineEdit*>(QStringLiteral("pattern_address"))
        ->setText(QStringLiteral("{nobody}@example.org"));
    Look(patterns, "patterns-wrong");
  }

  void LookAtDialogsOfTabs() {
    OpenSheet open(session_, company_.module(), company_.Objects({kBirgit}));
    PlayTo("address");
    open.user().Click(IDC_EMAIL_ADD);
    open.sheet().SelectPage(1);
    contract::QtPlayer page(open.sheet().Dialog(1)->widget());
    PlayTo("archive-servers");
    open.sheet().Dialog(1)->ListView(IDC_FEATURE_LIST).SetSelected(kArchiverRow, true);
    page.Click(IDC_FEATURE_PROPERTIES);
    open.sheet().SelectPage(0);
    // The player's hand knows boxes from left to right only.
    open.dialog().Click(IDC_PELORA_HIDDEN);
    PlayTo("discard-question");
    open.ClickCancel();
  }

  void LookAtChoosers() {
    const ldap::StoreOpener opener = OpenLongNames();
    console::SearchDialog search({.title = Long(), .type_filter = "(a=b)", .multiple = true},
                                 opener, nullptr);
    search.show();
    AwaitRows(search, "search_results", 2);
    search.findChild<QTreeView*>(QStringLiteral("search_results"))->selectAll();
    search.findChild<QPushButton*>(QStringLiteral("add_chosen"))->click();
    Look(search, "search");
    session::DirectoryObject base;
    base.dn = "DC=x";
    base.name = kLongWord;
    console::ContainerBrowser browser(
        opener, base, [](const auto& /*dn*/) { return Long(); }, nullptr);
    browser.show();
    browser.accept();
    Look(browser, "containers");
    console::QueryPreview preview({.filter = "(a=b)"}, opener, nullptr);
    preview.show();
    AwaitRows(preview, "query_results", 2);
    Look(preview, "query");
    const std::vector<session::HeldValue> held = {
        {.text = kLongText, .objects = {kLongWord, "Birgit"}}};
    console::ValueList values(Long(), held, nullptr);
    Look(values, "values");
  }

  void LookAtWindowsOfLists() {
    console::ColumnDialog columns({{.name = "one", .title = kLongText, .place = kLongWord}},
                                  {{.name = "one", .width = 9}}, nullptr);
    Look(columns, "columns");
    session::View view{.name = kLongText, .filter = "(" + kLongWord};
    PlayTo("view");
    EXPECT_FALSE(console::EditView(view, nullptr));
    console::ConnectDialog connect(Long(), nullptr);
    Look(connect, "connect");
  }

  void LookAtWriting() {
    session::Review review;
    review.changes = {{.dn = "CN=x",
                       .name = kLongWord,
                       .fields = {{"peloraHidden", kLongText, kLongWord, kLongText}}}};
    review.ldif_of = [](std::size_t /*at*/) { return "dn: " + kLongWord + "\n"; };
    console::ReviewDialog reviewed(review, nullptr);
    Look(reviewed, "review");
    const std::vector<session::WrittenChange> results = {
        {.name = kLongWord,
         .result = changes::NotDone("CN=x", {50, kLongWord}),
         .reason = kLongText}};
    console::ResultDialog result(results, nullptr);
    Look(result, "results");
    std::vector<session::ShownConflict> conflicts = {{.dn = "CN=x",
                                                      .name = kLongWord,
                                                      .attribute = "otherMailbox",
                                                      .field = kLongText,
                                                      .seen = kLongWord,
                                                      .there = kLongText,
                                                      .wanted = kLongWord,
                                                      .is_list = true}};
    console::ConflictDialog conflict(conflicts, nullptr);
    Look(conflict, "conflicts");
    console::HistoryDialog history(
        [] {
          return std::vector<session::PastChange>{
              {.id = "1", .when = {}, .objects = {kLongWord}, .fields = {kLongText}}};
        },
        nullptr);
    Look(history, "history");
    session::PlacePlan plan{
        .names = {kLongWord},
        .below = {{.type = kLongText, .count = 40}},
        .references = {
            {.holder_dn = "CN=x", .holder = kLongWord, .field = kLongText, .target = kLongWord}}};
    console::PlaceDialog deletion(session::AskOfRemoval(plan), nullptr);
    Look(deletion, "delete");
    plan.references.clear();
    console::PlaceDialog move(session::AskOfMoving(plan, kLongWord), nullptr);
    Look(move, "move");
    console::RenameDialog rename(Long(), nullptr);
    Look(rename, "rename");
    console::ErrandDialog errand(Long(), nullptr);
    // Nobody waits for this one.
    errand.setWindowModality(Qt::NonModal);
    errand.ShowProgress(1200, 5000);
    Look(errand, "errand");
  }

  void LookAtAttributes() {
    const console::AttributeEditor editor{
        .why_read_only = [](const std::string& /*attribute*/) { return kLongText; },
        .edited = [](const std::string& /*attribute*/) { return session::EditableAttribute{}; },
        .settable = [] { return std::vector<std::string>{std::string(64, 'W')}; },
        .why_not_taken = [](const std::string& /*attribute*/,
                            const ldap::AttributeValues& /*values*/) { return kLongText; },
        .write = [](const session::EditableAttribute& /*seen*/,
                    const ldap::AttributeValues& /*wanted*/) { return false; }};
    auto* const attributes = new console::AttributesWindow(
        Long(),
        [] { return std::vector<session::AttributeRow>{{.attribute = "cn", .value = kLongWord}}; },
        nullptr, editor);
    attributes->findChild<QTableWidget*>()->setCurrentCell(0, 0);
    Look(*attributes, "attributes");
    PlayTo("set-another");
    attributes->findChild<QPushButton*>(QStringLiteral("attributes_set"))->click();
    attributes->close();
    for (const auto& [form, name] :
         {std::pair(session::ValueForm::kLines, "attribute-lines"),
          std::pair(session::ValueForm::kNumber, "attribute-number"),
          std::pair(session::ValueForm::kBoolean, "attribute-boolean")}) {
      console::AttributeDialog dialog({.attribute = kLongWord, .form = form, .values = {kLongWord}},
                                      editor, nullptr);
      Look(dialog, name);
    }
  }

  void LookAtPasswords() {
    const auto refuse = [](const session::Secret& /*password*/, bool /*must_change*/) {
      return kLongText + kLongText;
    };
    console::ResetPasswordDialog dialog(Long(), {.least = 12, .is_mixed = true}, refuse, nullptr);
    Look(dialog, "reset-password");
    for (const char* field : {"new_password", "new_password_again"}) {
      dialog.findChild<QLineEdit*>(QLatin1String(field))->insert(QStringLiteral("Linden-2031-x"));
    }
    dialog.accept();
    Look(dialog, "reset-password-refused");
  }

  void LookAtBoxes() {
    console::QtMessageBox box;
    PlayTo("box");
    box.Show(nullptr, {.text = kLongText + "\n" + kLongWord, .caption = kLongText});
    PlayTo("question");
    box.Show(nullptr, {.text = "Remove " + std::string(300, 'W') + "?",
                       .caption = kLongWord,
                       .buttons = MessageButtons::kYesNo});
    console::QtWritingDesk desk;
    scripts_.Add([this](QWidget& window) {
      Look(window, "failure");
      const auto* const details = window.findChild<QTextEdit*>(QStringLiteral("box_details"));
      ASSERT_NE(details, nullptr);
      for (const bool is_shown : {true, false}) {
        QTest::keyClick(&window, Qt::Key_D, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return details->isVisible() == is_shown; }, kPatience));
        Look(window, is_shown ? "failure-details" : "failure-without-details");
      }
      window.close();
    });
    desk.ShowFailure(nullptr, {.summary = kLongWord, .advice = kLongText, .details = kLongWord});
  }

  void LookAtMainWindow() {
    console::MainWindow window(company_.module());
    const ldap::StoreOpener opener = OpenLongNames();
    std::unique_ptr<ldap::IDirectoryStore> store;
    EXPECT_TRUE(opener(store, {}).Ok());
    EXPECT_TRUE(window.SetSession(
        std::make_unique<session::DirectorySession>(kLongWord + ".ldb", std::move(store), opener)));
    window.show();
    AwaitRows(window, "object_list", 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.IsReading(); }, kPatience));
    window.findChild<QTreeView*>(QStringLiteral("object_list"))->selectAll();
    Look(window, "main");
    LookAtQuestions(window);
  }

  /// Those that the main window opens over what it shows.
  void LookAtWindowsOfMain() {
    const contract::PassedOver errands;
    console::MainWindow window(company_.module());
    EXPECT_TRUE(window.SetSession(session::OpenDirectoryFile(company_.file()).session));
    window.show();
    const auto is_shown = [&window] {
      const auto* const container = window.pane().Container();
      return !window.IsReading() && container != nullptr && container->dn == kSales;
    };
    window.pane().GoTo(kSales);
    EXPECT_TRUE(QTest::qWaitFor(is_shown, kPatience));
    window.pane().list().Select({kBirgit});
    contract::Activate(window);
    window.pane().list().view().setFocus();
    scripts_.Add([this](QWidget& commands) { LookAtCommands(commands); });
    Trigger(window, "change_selection");
    for (const char* name : {"show_connection", "show_about"}) {
      PlayTo(name);
      Trigger(window, name);
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.IsReading(); }, kPatience));
  }

 private:
  /// Some views have one.
  void LookAtQuestions(console::MainWindow& window) {
    auto* const views = window.findChild<QComboBox*>(QStringLiteral("find_view"));
    std::set<session::ViewQuestion> seen;
    for (std::size_t row = 0; row < session::ReadyViews().size(); ++row) {
      if (!seen.insert(session::ReadyViews()[row].question).second) continue;
      views->setCurrentIndex(static_cast<int>(row));
      Q_EMIT views->activated(static_cast<int>(row));
      EXPECT_TRUE(QTest::qWaitFor([&] { return !window.IsReading(); }, kPatience));
      Look(window, "main-view-" + std::to_string(row));
    }
  }
  void Trigger(QWidget& window, const char* name) {
    QAction* const action = window.findChild<QAction*>(QLatin1String(name));
    EXPECT_TRUE(action->isEnabled()) << name;
    action->trigger();
    EXPECT_EQ(scripts_.waiting(), 0U) << name;
  }
  void LookAtCommands(QWidget& window) {
    auto* const what = window.findChild<QComboBox*>(QStringLiteral("commands_what"));
    for (int row = 0; row < what->count(); ++row) {
      what->setCurrentIndex(row);
      Look(window, "commands-" + std::to_string(row));
    }
    window.close();
  }
  static QString Long() { return console::ToQString(kLongText); }

  static void AwaitRows(const QWidget& window, const char* list, int rows) {
    const auto* view = window.findChild<QTreeView*>(QLatin1String(list));
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->model()->rowCount() == rows; }, kPatience));
  }

  void Look(QWidget& window, const std::string& name) {
    SCOPED_TRACE(name);
    window.show();
    contract::Activate(window);
    QCoreApplication::processEvents();
    look_(window, name);
  }
  /// The next modal window is looked at.
  void PlayTo(const std::string& name) {
    scripts_.Add([this, name](QWidget& window) {
      Look(window, name);
      // A question is answered so that nothing is lost, or there is nothing to lose.
      window.close();
    });
  }
  void LookAtSheet(const std::vector<std::string>& names, const std::string& name) {
    std::vector<session::DirectoryObject> objects = company_.Objects(names);
    for (session::DirectoryObject& object : objects) object.name = kLongWord;
    OpenSheet open(session_, company_.module(), objects);
    open.AwaitAnswers();
    for (std::size_t page = 0; page < open.sheet().PageCount(); ++page) {
      open.sheet().SelectPage(page);
      Look(open.sheet(), name + "-" + std::to_string(page + 1));
    }
  }

  OpenCompany& company_;
  session::DirectorySession& session_;
  contract::ModalScripts& scripts_;
  const LookAtWindow& look_;
};

}  // namespace

void ForEveryWindow(OpenCompany& company, contract::ModalScripts& scripts,
                    const LookAtWindow& look) {
  Tour tour(company, company.session(), scripts, look);
  tour.LookAtMainWindow();
  tour.LookAtWindowsOfMain();
  tour.LookAtSheets();
  tour.LookAtDialogsOfTabs();
  tour.LookAtWizards();
  tour.LookAtChoosers();
  tour.LookAtWindowsOfLists();
  tour.LookAtWriting();
  tour.LookAtAttributes();
  tour.LookAtPasswords();
  tour.LookAtBoxes();
}

}  // namespace pelora::test
