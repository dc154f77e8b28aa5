// SPDX-License-Identifier: Apache-2.0
// The window on a domain of several servers, which are several ways to the lab's own.
#include <gmock/gmock.h>

#include <QAction>
#include <QLabel>
#include <QSettings>
#include <QTest>
#include <memory>

#include "hosts/console/errands/qt_errands.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "hosts/console/window/shown_directory.h"
#include "tests/lab/lab.h"
#include "tests/lab/tcp_relay.h"
#include "tests/ui/console_test.h"

namespace pelora::test {
namespace {

using console::MainWindow;
using console::ToUtf8;
using ::testing::EndsWith;

constexpr int kPatience = 60000;

std::string Through(const lab::TcpRelay& relay) {
  return lab::Server() + ":" + std::to_string(relay.port());
}

class SeveralServers : public ConsoleTest {
 protected:
  SeveralServers() {
    QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("pelora-console"),
              QStringLiteral("console"))
        .clear();
    OpenWindow();
  }
  void OpenWindow() {
    window_ = std::make_unique<MainWindow>(module());
    window_->show();
  }
  void CloseWindow() {
    EXPECT_TRUE(window_->close());
    window_.reset();
  }
  /// Shows a domain whose name servers know these.
  void Show(const std::vector<std::string>& servers) {
    const ldap::ServerFinder find = [servers](const std::stop_token& /*stop*/,
                                              ldap::DomainServers& found) {
      for (const std::string& name : servers) {
        found.servers.push_back({.name = *ldap::ParseServerName(name)});
      }
      return ldap::StoreStatus{};
    };
    std::unique_ptr<ldap::NetworkSession> network;
    ASSERT_TRUE(ldap::NetworkSession::Open({}, find, network).Ok());
    auto session = std::make_unique<session::DirectorySession>(std::move(network));
    session->user = "administrator@PELORA.TEST";
    ASSERT_TRUE(window_->SetSession(std::move(session)));
    Settle();
  }
  void Settle() {
    QCoreApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->IsReading(); }, kPatience));
  }
  [[nodiscard]] QAction& Action(const char* begin) {
    for (QAction* action : window_->findChildren<QAction*>()) {
      if (action->text().startsWith(QLatin1String(begin))) return *action;
    }
    throw std::runtime_error("there is no such action");
  }
  [[nodiscard]] std::string Title() const { return ToUtf8(window_->windowTitle()); }
  [[nodiscard]] std::string Who() const {
    return ToUtf8(window_->findChild<QLabel*>(QStringLiteral("who"))->text());
  }
  [[nodiscard]] MainWindow& window() { return *window_; }

 private:
  std::unique_ptr<MainWindow> window_;
};

TEST_F(SeveralServers, TheWindowNamesTheOneThatHasTakenOver) {
  auto first = std::make_unique<lab::TcpRelay>(ldap::kDirectoryPort);
  const lab::TcpRelay second(ldap::kDirectoryPort);
  const std::string gone = Through(*first);
  Show({gone, Through(second)});
  EXPECT_EQ(Title(), gone + " - Pelora Console");
  EXPECT_EQ(Who(), "administrator@PELORA.TEST on " + gone);
  first.reset();
  Action("&Refresh").trigger();
  Settle();
  EXPECT_EQ(Title(), Through(second) + " - Pelora Console");
  EXPECT_EQ(Who(), "administrator@PELORA.TEST on " + Through(second));
}

TEST_F(SeveralServers, OneThatWasFoundIsFoundAgainAndNotAskedForByName) {
  const lab::TcpRelay relay(ldap::kDirectoryPort);
  Show({Through(relay)});
  CloseWindow();
  OpenWindow();
  QAction& again = Action("Open &Again");
  EXPECT_TRUE(again.isVisible());
  EXPECT_THAT(ToUtf8(again.text()), EndsWith(": PELORA.TEST"));
  again.trigger();
  EXPECT_TRUE(QTest::qWaitFor([this] { return window().session() != nullptr; }, kPatience));
  Settle();
  EXPECT_FALSE(window().session()->Server().is_named);
  EXPECT_EQ(Title(), lab::Server() + " - Pelora Console") << "as the name servers have it";
}

TEST_F(SeveralServers, WhatIsKeptOfADomainIsTheSameWithEach) {
  const lab::TcpRelay relay(ldap::kDirectoryPort);
  console::QtErrands errands;
  console::QtMessageBox box;
  const auto folder_of = [&](const std::string& server) {
    session::SessionResult opened = session::OpenServer(server);
    if (!opened.session) throw std::runtime_error(opened.error);
    const console::ShownDirectory shown(std::move(opened.session), errands, box, module());
    EXPECT_EQ(shown.name, lab::Base());
    return shown.history.folder();
  };
  EXPECT_EQ(folder_of(lab::Server()), folder_of(Through(relay)));
}

}  // namespace
}  // namespace pelora::test
