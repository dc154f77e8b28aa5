// SPDX-License-Identifier: Apache-2.0
// Waits that are stopped from elsewhere, whatever the server does meanwhile.
#include <gtest/gtest.h>

#include <stop_token>
#include <thread>

#include "hosts/ldap/ldap_status.h"
#include "tests/lab/full_listener.h"
#include "tests/lab/lab_test.h"
#include "tests/lab/ldap_stand_in.h"

namespace pelora::lab {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// Long before anything would end by itself.
constexpr std::chrono::seconds kAtOnce{4};

/// Tells something to stop after a while, and sees to it that it has.
class StopLater {
 public:
  explicit StopLater(milliseconds delay)
      : thread_([this, delay] {
          std::this_thread::sleep_for(delay);
          stop_.request_stop();
        }) {}
  StopLater(const StopLater&) = delete;
  StopLater& operator=(const StopLater&) = delete;
  ~StopLater() {
    EXPECT_LT(Clock::now() - begin_, kAtOnce);
    EXPECT_TRUE(stop_.stop_requested()) << "it ended before it was stopped";
    thread_.join();
  }

  [[nodiscard]] std::stop_token token() const { return stop_.get_token(); }

 private:
  Clock::time_point begin_ = Clock::now();
  std::stop_source stop_;
  std::thread thread_;
};

/// What opening a session says that is stopped.
std::string OpenStopped(const std::string& server) {
  std::unique_ptr<NetworkSession> session;
  const StopLater stop(milliseconds(200));
  const StoreStatus status = NetworkSession::Open({.server = server}, session, stop.token());
  EXPECT_EQ(session, nullptr);
  return ToText(status);
}

StoreStatus SearchAll(ldap::IDirectoryStore& store) {
  return store.Search({.base = "DC=x", .scope = ldap::SearchScope::kOneLevel},
                      [](const Entry& /*entry*/) { return true; });
}

/// A server that does not answer the first of what it is asked.
class SilentOnce {
 public:
  [[nodiscard]] StandInAnswer operator()(const StandInRequest& request) {
    if (std::exchange(is_first_, false)) return {.is_silent = true};
    return {.entries = {{request.dn, {{"mail", {"m"}}}}}};
  }

 private:
  bool is_first_ = true;
};

std::string Stopped(const LdapStandIn& server) {
  return "-8 the request to the server '" + server.Address() + "' was stopped";
}

TEST(Stopping, ARequestThatIsNotAnsweredIsGivenUpAndTheConnectionKept) {
  LdapStandIn server({}, SilentOnce());
  const auto session = OpenSession({.server = server.Address()});
  {
    const StopLater stop(milliseconds(200));
    session->store().StopOn(stop.token());
    EXPECT_EQ(ToText(SearchAll(session->store())), Stopped(server));
    // Nothing more is done until it is told otherwise.
    EXPECT_EQ(ToText(SearchAll(session->store())), Stopped(server));
  }
  session->store().StopOn({});
  EXPECT_EQ(ReadValue(session->store(), "CN=a,DC=x", "mail"), "m");
  EXPECT_EQ(server.connections(), 1);
}

TEST(Stopping, AServerThatHadBeenSilentForLongIsAskedOnAnotherConnection) {
  LdapStandIn server({}, SilentOnce());
  const auto session = OpenSession({.server = server.Address()});
  {
    const StopLater stop(milliseconds(1'200));
    session->store().StopOn(stop.token());
    EXPECT_EQ(ToText(SearchAll(session->store())), Stopped(server));
  }
  session->store().StopOn({});
  EXPECT_EQ(ReadValue(session->store(), "CN=a,DC=x", "mail"), "m");
  EXPECT_EQ(server.connections(), 2);
}

TEST(Stopping, AReadingOfOneAndOfManyIsGivenUpToo) {
  LdapStandIn server({}, [](const StandInRequest&) { return StandInAnswer{.is_silent = true}; });
  const auto session = OpenSession({.server = server.Address()});
  const std::vector<std::string> names(40, "CN=a,DC=x");
  const StopLater stop(milliseconds(200));
  session->store().StopOn(stop.token());
  EXPECT_EQ(ToText(session->store().ReadMany(
                names, {}, [](const StoreStatus&, const Entry&) { return true; })),
            Stopped(server));
  EXPECT_EQ(ReadValue(session->store(), "CN=a,DC=x", "mail"), Stopped(server));
}

TEST(Stopping, WhatWasSentToBeWrittenIsOfUnknownOutcome) {
  LdapStandIn server({}, [](const StandInRequest&) { return StandInAnswer{.is_silent = true}; });
  const auto session = OpenSession({.server = server.Address()});
  const StopLater stop(milliseconds(200));
  session->store().StopOn(stop.token());
  EXPECT_EQ(
      ToText(Replace(session->store(), "CN=a,DC=x", "mail", {"n"})),
      "-5 whether the change of 'CN=a,DC=x' was done is not known: the request to the server '" +
          server.Address() + "' was stopped");
}

TEST(Stopping, SigningInIsGivenUp) {
  RunningServer server;
  server.Pause();
  EXPECT_EQ(OpenStopped(Server()), "-8 cannot sign in to 'dc1.pelora.test': stopped");
}

TEST(Stopping, ConnectingIsGivenUp) {
  const FullListener machine;
  EXPECT_EQ(OpenStopped(machine.Address()),
            "-8 cannot reach the server '" + machine.Address() + "': stopped");
}

TEST(Stopping, ItsStatusIsThatOfSomethingCancelled) {
  EXPECT_EQ(ldap::HresultOfLdap(ldap::kLdapUserCancelled), static_cast<HRESULT>(0x800704C7U));
}

}  // namespace
}  // namespace pelora::lab
