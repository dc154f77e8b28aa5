// SPDX-License-Identifier: Apache-2.0
// Many users of a domain changed at once, by somebody whom the server refuses some of them, over a
// connection that falls silent and is lost: the window lives on, what is told is right, trying
// again finishes it, and it can be taken back.
#include <gmock/gmock.h>

#include <iostream>
#include <optional>

#include "hosts/console/errands/qt_errands.h"
#include "hosts/console/writing/history_desk.h"
#include "hosts/ldap/base64.h"
#include "hosts/ldap/network/server_name.h"
#include "tests/lab/lab.h"
#include "tests/lab/lab_administrator.h"
#include "tests/lab/tcp_relay.h"
#include "tests/support/long_form.h"
#include "tests/ui/turn_meter.h"
#include "tests/ui/writing_sheet.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using lab::Attributes;
using ::testing::AllOf;
using ::testing::Each;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr int kEvery = 7;
constexpr int kPatience = 600'000;
constexpr const char* kDescriptor = "nTSecurityDescriptor";

/// Users of a test's own, each seventh of them in a unit in which the right to change them can be
/// taken away; and the sheets of somebody who has it there alone, over a relay.
class DomainBulk : public WritingSheet {
 protected:
  DomainBulk()
      : unit_(std::string("OU=") + ::testing::UnitTest::GetInstance()->current_test_info()->name() +
              ",OU=Contract," + lab::Base()) {
    for (const std::string& unit : {unit_, Unit(0), Unit(1)}) {
      administrator_.Add(unit, {{"objectClass", {"organizationalUnit"}}});
    }
    refusing_ = Descriptor();
    (void)lab::OutputOf("KRB5CCNAME='" + lab::TicketsOf(lab::kAdministrator) +
                        "' samba-tool dsacl set --use-kerberos=required -H ldap://" +
                        lab::Server() + " --action=allow --objectdn='" + Unit(0) +
                        "' --sddl='(A;CI;WP;;;AU)' 2>&1");
    granting_ = Descriptor();
    administrator_.Set(Unit(1), kDescriptor, {granting_});
    opened_ = session::OpenServer(lab::Server() + ":" + std::to_string(relay_.port()));
    if (!opened_.session) throw std::runtime_error(opened_.error);
  }

  void AddUsers(int count) {
    for (int number = 0; number < count; ++number) {
      const std::string name = "User " + std::to_string(number);
      const std::string dn = "CN=" + name + "," + Unit(number % kEvery);
      administrator_.Add(dn, {{"objectClass", {"user"}},
                              {"peloraAccount", {"1"}},
                              {"mail", {"user" + std::to_string(number) + "@bulk.test"}}});
      users_.push_back(session::ObjectOf(
          {.dn = dn,
           .attributes = {{"objectClass", {"top", "person", "organizationalPerson", "user"}},
                          {"cn", {name}},
                          {"name", {name}}}}));
    }
  }
  void Refuse() { administrator_.Set(Unit(0), kDescriptor, {refusing_}); }
  void Grant() { administrator_.Set(Unit(0), kDescriptor, {granting_}); }
  /// Everything that is stored on the users, but for who may do what.
  [[nodiscard]] std::vector<Attributes> Dump() {
    std::vector<Attributes> dump;
    for (const session::DirectoryObject& user : users_) {
      dump.push_back(administrator_.Stored(user.dn));
      dump.back().erase(kDescriptor);
      dump.back().erase("dSCorePropagationData");
    }
    return dump;
  }
  [[nodiscard]] session::DirectorySession& domain() { return *opened_.session; }
  [[nodiscard]] lab::TcpRelay& relay() { return relay_; }
  [[nodiscard]] std::vector<session::DirectoryObject>& users() { return users_; }

 private:
  /// Of the users whose number has this remainder.
  [[nodiscard]] std::string Unit(int remainder) const {
    return std::string(remainder == 0 ? "OU=Sevenths," : "OU=Others,") + unit_;
  }
  [[nodiscard]] std::string Descriptor() const {
    const std::string begin = std::string(kDescriptor) + ":: ";
    for (const std::string& line : lab::LdapSearch(Unit(0), {kDescriptor})) {
      if (line.starts_with(begin)) return ldap::DecodeBase64(line.substr(begin.size())).value();
    }
    throw std::runtime_error("nobody says who may change " + Unit(0));
  }

  const std::string unit_;
  lab::LabAdministrator administrator_;
  std::string granting_;
  std::string refusing_;
  /// May read everything, and change what a unit's descriptor says.
  lab::EnvironmentVariable tickets_{"KRB5CCNAME", lab::TicketsOf(lab::kHelper)};
  lab::TcpRelay relay_{ldap::kDirectoryPort};
  session::SessionResult opened_;
  std::vector<session::DirectoryObject> users_;
};

TEST_F(DomainBulk, ARefusalIsToldInWordsAndWhatWasTypedIsWrittenOnceItIsAllowed) {
  AddUsers(1);
  OpenSheet open(domain(), module(), users(), {.desk = &desk()});
  open.user().Click(IDC_PELORA_HIDDEN);
  Refuse();
  In("write_failure", [&](QWidget& window) {
    const auto& box = dynamic_cast<QMessageBox&>(window);
    EXPECT_EQ(ToUtf8(box.text()), "The changes of User 0 were not written.");
    EXPECT_EQ(ToUtf8(box.informativeText()),
              "You may not change this. What you typed is kept here: get the right to change it "
              "and apply again.");
    EXPECT_THAT(
        ToUtf8(box.detailedText()),
        AllOf(HasSubstr("Code: 0X80070005\n"), HasSubstr("Object: " + users()[0].dn),
              HasSubstr("Fields: Hide from addressbook\n"), HasSubstr("The directory says: ")));
  });
  open.ClickApply();
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_TRUE(open.IsApplyEnabled());
  Grant();
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_EQ(Dump()[0]["peloraHidden"], std::vector<std::string>{"1"});
}

TEST_F(DomainBulk, AllOfItIsDoneInTheEndAndCanBeTakenBack) {
  const int count = static_cast<int>(pelora::testing::RoundsOr(40));
  const int sevenths = (count + kEvery - 1) / kEvery;
  AddUsers(count);
  const std::vector<Attributes> before = Dump();
  console::QtErrands errands;
  session::ChangeHistory history(folder().File("changes"), "x", domain().store->schema());
  TurnMeter meter;
  // What takes its time on a slow machine only is waited for without a word.
  std::optional<contract::PassedOver> errands_unseen(std::in_place);

  meter.Enter("opening");
  OpenSheet open(domain(), module(), users(),
                 {.desk = &desk(), .errands = &errands, .history = &history});
  open.user().Click(IDC_PELORA_HIDDEN);
  meter.Enter("");
  Refuse();
  lab::RunningServer server;
  int connections = 0;
  In("review", [&](QWidget& window) {
    EXPECT_EQ(Part<QTableView>(window, "review_table").model()->rowCount(), count);
    server.Pause();
    errands_unseen.reset();
    meter.Enter("writing");
    Part<QPushButton>(window, "review_write").click();
  });
  In("errand", [&](QWidget& window) {
    errands_unseen.emplace();
    // Silent it is waited for, and the window lives on; then the connection is lost.
    const int begin = meter.turns();
    EXPECT_TRUE(QTest::qWaitFor([&] { return meter.turns() > begin + 50; }, kPatience));
    EXPECT_TRUE(window.isVisible());
    connections = relay().connections();
    relay().CutAtNextAnswer();
    server.Resume();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isVisible(); }, kPatience));
  });
  In("results", [&](QWidget& window) {
    EXPECT_THAT(ToUtf8(Part<QLabel>(window, "results_summary").text()),
                StartsWith("Not everything was done: "));
    meter.Enter("writing once more");
    Part<QPushButton>(window, "results_retry").click();
  });
  In("results", [&](QWidget& window) {
    meter.Enter("");
    EXPECT_GT(relay().connections(), connections) << "one was lost";
    // All that is left is what the server refuses.
    const std::string summary = ToUtf8(Part<QLabel>(window, "results_summary").text());
    EXPECT_THAT(summary, EndsWith(", " + std::to_string(sevenths) + " failed."));
    const std::vector<std::string> left = RowsOf(Part<QTableView>(window, "results_table"));
    EXPECT_EQ(left.size(), static_cast<std::size_t>(sevenths)) << summary;
    EXPECT_THAT(left, Each(AllOf(StartsWith("failed|User "), HasSubstr("|You may not change"))));
    Grant();
    meter.Enter("writing what is left");
    Part<QPushButton>(window, "results_retry").click();
  });
  In("results", [&](QWidget& window) {
    EXPECT_THAT(ToUtf8(Part<QLabel>(window, "results_summary").text()),
                AllOf(StartsWith("Everything was done: "), Not(HasSubstr("failed"))));
    meter.Enter("closing");
  });
  open.ClickOk();
  meter.Enter("");
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_FALSE(open.IsOpen());
  std::vector<Attributes> wanted = before;
  for (Attributes& user : wanted) user["peloraHidden"] = {"1"};
  EXPECT_EQ(Dump(), wanted);

  meter.Enter("taking back");
  QWidget window;
  console::HistoryDesk history_desk(window, errands);
  history_desk.SetDirectory(&history, domain().store);
  std::string told;
  history_desk.on_told = [&told](const QString& text) { told = ToUtf8(text); };
  history_desk.on_written = [] {};
  history_desk.UndoLast();
  meter.Enter("");
  EXPECT_THAT(told, StartsWith("Taken back: User 0, User 1, User 2 and "));
  EXPECT_EQ(Dump(), before);
  // On a machine that has nothing else to do, and for which the long form is meant.
  constexpr qint64 kLimit = 50;
  const bool is_long_form = pelora::testing::RoundsOr(0) != 0;
  if (is_long_form) {
    EXPECT_LE(meter.longest_at_work(), kLimit) << meter.Text();
  }
  std::cout << "bulk on a domain: " << count << " users, the window answered within "
            << meter.longest() << " ms (" << meter.Text() << ")\n";
}

}  // namespace
}  // namespace pelora::test
