// SPDX-License-Identifier: Apache-2.0
// Servers that do not keep to the rules: whatever they send, there is an answer or an error, in
// time and within bounds, and the session is of use afterwards.
#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "hosts/ldap/ldap_status.h"
#include "tests/lab/lab_test.h"
#include "tests/lab/ldap_stand_in.h"
#include "tests/support/uncounted_leaks.h"

namespace pelora::lab {
namespace {

using Kind = StandInRequest::Kind;
using Clock = std::chrono::steady_clock;

const std::string kObject = "CN=a,DC=x";
const std::string kUnreadable = "-4 the server sent something that cannot be read";

/// A session with a server that answers every request in the same way.
struct Misbehaving {
  explicit Misbehaving(StandInAnswer answer, const NetworkOptions& options = {})
      : Misbehaving(
            StandInScript([answer = std::move(answer)](const StandInRequest&) { return answer; }),
            options) {}
  explicit Misbehaving(StandInScript script, NetworkOptions options = {})
      : server({}, std::move(script)) {
    options.server = server.Address();
    session = OpenSession(options);
  }

  [[nodiscard]] ldap::IDirectoryStore& store() const { return session->store(); }

  LdapStandIn server;
  std::unique_ptr<NetworkSession> session;
};

/// What a search of everything says, and how much it found.
std::string Search(ldap::IDirectoryStore& store) {
  int count = 0;
  const StoreStatus status =
      store.Search({.base = "DC=x", .scope = ldap::SearchScope::kSubtree, .attributes = {"mail"}},
                   [&](const Entry&) { return ++count > 0; });
  return std::to_string(count) + " found, " + ToText(status);
}

TEST(Misbehaving, AStallAtAnyByteEndsInTime) {
  // From the first byte of signing in to the last of the schema.
  int stalled = 0;
  std::size_t bytes = 0;
  for (std::size_t step = 1;; bytes += step, step += step / 2 + 40) {
    TcpRelay relay(ldap::kDirectoryPort);
    relay.HoldAnswersAfter(bytes);
    std::unique_ptr<NetworkSession> session;
    const Clock::time_point begin = Clock::now();
    const StoreStatus status =
        NetworkSession::Open({.server = Server() + ":" + std::to_string(relay.port()),
                              .request_timeout = std::chrono::milliseconds(200)},
                             session);
    ASSERT_LT(Clock::now() - begin, std::chrono::seconds(5)) << bytes;
    ASSERT_EQ(session != nullptr, status.Ok());
    if (status.Ok()) break;
    ASSERT_EQ(status.code, ldap::kLdapTimeout) << bytes << ": " << status.text;
    ++stalled;
  }
  EXPECT_GE(stalled, 5);
}

/// A request of a session that has been open for a while.
struct LaterRequest {
  const char* name;
  std::function<StoreStatus(ldap::IDirectoryStore& store)> ask;
};

class LaterRequests : public ::testing::TestWithParam<LaterRequest> {
 protected:
  [[nodiscard]] static std::string User() { return "CN=Berta Önder,OU=Linden," + Base(); }

  /// Whether a session that had to wait is of use, once the server is itself again.
  [[nodiscard]] static bool IsOfUse(RelayedSession& relayed) {
    relayed.relay.HoldAnswersAfter(std::numeric_limits<std::size_t>::max());
    relayed.relay.Cut();
    for (int time = 0; time < kTries; ++time) {
      // On a machine that does other things it may take longer than is waited for here.
      if (ReadValue(relayed.store(), User(), "mail") == "berta@pelora.test") return true;
    }
    return false;
  }
};

TEST_P(LaterRequests, AStallAtAnyByteEndsInTimeAndTheSessionGoesOn) {
  RelayedSession relayed(std::chrono::milliseconds(200));
  int stalled = 0;
  std::size_t bytes = 0;
  for (std::size_t step = 25;; bytes += step, step *= 2) {
    ASSERT_TRUE(IsOfUse(relayed)) << bytes;
    relayed.relay.HoldAnswersAfter(bytes);
    const Clock::time_point begin = Clock::now();
    const StoreStatus status = GetParam().ask(relayed.store());
    ASSERT_LT(Clock::now() - begin, std::chrono::seconds(5)) << bytes;
    if (status.Ok()) break;
    ASSERT_EQ(status.code, ldap::kLdapTimeout) << bytes << ": " << status.text;
    ++stalled;
  }
  EXPECT_GE(stalled, 2);
  EXPECT_TRUE(IsOfUse(relayed));
}

INSTANTIATE_TEST_SUITE_P(
    EachKind, LaterRequests,
    ::testing::Values(LaterRequest{"Reading",
                                   [](ldap::IDirectoryStore& store) {
                                     Entry entry;
                                     return store.Read("OU=Linden," + Base(), {}, entry);
                                   }},
                      LaterRequest{"Search",
                                   [](ldap::IDirectoryStore& store) {
                                     return store.Search({.base = "OU=Linden," + Base(),
                                                          .scope = ldap::SearchScope::kSubtree,
                                                          .attributes = {"mail"}},
                                                         [](const Entry&) { return true; });
                                   }},
                      LaterRequest{"Change",
                                   [](ldap::IDirectoryStore& store) {
                                     return Replace(store, "CN=Berta Önder,OU=Linden," + Base(),
                                                    "physicalDeliveryOfficeName", {"7"});
                                   }}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Misbehaving, AnAnswerOfAnotherTypeIsNone) {
  const auto turn = [](const StandInRequest& request) {
    StandInRequest other = request;
    other.kind = request.kind == Kind::kSearch ? Kind::kModify : Kind::kSearch;
    return StandInAnswer{.raw = ResultMessage(other, 0, "")};
  };
  const Misbehaving server(turn);
  EXPECT_EQ(ReadValue(server.store(), kObject, "mail"), kUnreadable);
  EXPECT_EQ(Search(server.store()), "0 found, " + kUnreadable);
  // It may have been done.
  const StoreStatus status = Replace(server.store(), kObject, "mail", {"m"});
  EXPECT_EQ(ToText(status),
            "-5 whether the change of 'CN=a,DC=x' was done is not known: the server "
            "sent something that cannot be read");
}

TEST(Misbehaving, APageMarkWithoutAValueIsAnError) {
  const auto bare = [](const StandInRequest& request) {
    if (!request.is_page) return StandInAnswer{.code = ldap::kLdapSizeLimitExceeded};
    const std::string name = "1.2.840.113556.1.4.319";
    std::string control = std::string("\x30\x18\x04\x16") + name;
    control = "\xa0\x1a" + control;
    std::string result("\x65\x07\x0a\x01\0\x04\0\x04\0", 9);
    std::string body = std::string("\x02\x01") + static_cast<char>(request.id) + result + control;
    return StandInAnswer{.raw = "\x30" + std::string(1, static_cast<char>(body.size())) + body};
  };
  const Misbehaving server(bare);
  EXPECT_EQ(Search(server.store()), "0 found, " + kUnreadable);
}

TEST(Misbehaving, AnAnswerWhoseTypeIsZeroIsNoSilence) {
  const auto zero = [](const StandInRequest& request) {
    return StandInAnswer{.raw = std::string("\x30\x05\x02\x01", 4) + static_cast<char>(request.id) +
                                std::string(2, '\0')};
  };
  const Misbehaving server(zero);
  EXPECT_EQ(ReadValue(server.store(), kObject, "mail"),
            "-4 the answer cannot be read: Decoding error");
}

TEST(Misbehaving, AnAnswerToAWriteThatIsHalfOneIsUnknown) {
  const auto cut = [](const StandInRequest& request) {
    // The message is whole, and what it says is not: no code, no text.
    const char id = static_cast<char>(request.id);
    const char tag = request.kind == Kind::kModify ? '\x67' : '\x69';
    return StandInAnswer{.raw = std::string("\x30\x05\x02\x01", 4) + id + tag + '\0'};
  };
  const Misbehaving server(cut);
  EXPECT_EQ(Replace(server.store(), kObject, "mail", {"m"}).code, -5);
  EXPECT_EQ(server.store().Add({.dn = kObject, .attributes = {{"mail", {"m"}}}}).code, -5);
}

TEST(Misbehaving, ANegativeCodeIsNoResult) {
  const Misbehaving server({.code = -8});
  EXPECT_EQ(Replace(server.store(), kObject, "mail", {"m"}).code, -5);
  EXPECT_EQ(ReadValue(server.store(), kObject, "mail"), kUnreadable);
}

TEST(Misbehaving, MoreEntriesThanWereAskedForAreNotTaken) {
  const StandInEntry entry{kObject, {{"mail", {"m"}}}};
  const Misbehaving server({.entries = {entry, entry}});
  EXPECT_EQ(ReadValue(server.store(), kObject, "mail"), kUnreadable);
  const std::vector<std::string> one = {kObject};
  EXPECT_EQ(ToText(server.store().ReadMany(one, {},
                                           [](const StoreStatus& status, const Entry&) {
                                             EXPECT_EQ(ToText(status), kUnreadable);
                                             return true;
                                           })),
            "0");
}

TEST(Misbehaving, AResultThatNeverComesEndsAtTheLimit) {
  const StandInAnswer endless{.entries = {{kObject, {{"mail", {std::string(10'000, 'm')}}}}},
                              .is_endless = true};
  {
    const Misbehaving server(endless, {.limits = {.most_bytes = 1'000'000}});
    const std::string said = Search(server.store());
    EXPECT_NE(said.find(" found, 4 the search on the server '"), std::string::npos) << said;
    EXPECT_NE(said.find("' finds no end: given up after 1000000 bytes"), std::string::npos) << said;
  }
  const Misbehaving server(endless);
  EXPECT_EQ(ReadValue(server.store(), kObject, "mail"), kUnreadable);
}

TEST(Misbehaving, PagesWithoutAnEndEndAtTheLimit) {
  const auto one_more = [](const StandInRequest& request) {
    return request.is_page ? StandInAnswer{.page = "and so on"}
                           : StandInAnswer{.code = ldap::kLdapSizeLimitExceeded};
  };
  Misbehaving server(one_more, {.limits = {.most_parts = 50}});
  server.server.Forget();
  EXPECT_EQ(Search(server.store()), "0 found, 4 the search on the server '" +
                                        server.server.Address() +
                                        "' finds no end: given up after 50 pages");
  EXPECT_EQ(server.server.requests(), 51);
}

TEST(Misbehaving, PartsWithoutAnEndEndAtTheLimit) {
  int parts = 0;
  const auto one_more = [&](const StandInRequest& request) {
    const std::string range = std::to_string(parts) + "-" + std::to_string(parts);
    ++parts;
    return StandInAnswer{.entries = {{request.dn, {{"member;range=" + range, {"CN=m"}}}}}};
  };
  const LdapStandIn server({}, one_more);
  const auto session = OpenSession({.server = server.Address(), .limits = {.most_parts = 50}});
  EXPECT_EQ(ReadValue(session->store(), kObject, "member"),
            "4 the values of 'member' find no end: given up");
  EXPECT_EQ(parts, 51);
}

TEST(Misbehaving, ARangeThatLiesIsAnErrorAndNoShorterList) {
  for (const char* const name : {"member;range=0-1499", "member;range=5-*", "member;range=0-"}) {
    const Misbehaving server({.entries = {{kObject, {{name, {"CN=m"}}}}}});
    EXPECT_EQ(ReadValue(server.store(), kObject, "member"), kUnreadable) << name;
  }
}

TEST(Misbehaving, AMessageThatWouldTakeAllMemoryEndsTheConnection) {
  // It says that two gigabytes follow.
  const Misbehaving server({.raw = std::string("\x30\x84\x7f\xff\xff\xff\x02\x01\x05", 9)});
  // Nobody waits for them.
  const StoreStatus status = Replace(server.store(), kObject, "mail", {"m"});
  EXPECT_NE(status.text.find("' was lost"), std::string::npos) << status.text;
}

/// What a server says that ends the connections of a ticket that has ended: "unavailable", to
/// nobody's request.
StandInAnswer GoodBye() {
  return {.raw = GoodByeMessage(ldap::kLdapUnavailable, "the ticket has ended")};
}

TEST(Misbehaving, AServersGoodByeIsALostConnectionAndWhatIsReadIsReadOverTheNext) {
  const pelora::testing::UncountedLeaks of_the_library;
  int asked = 0;
  const LdapStandIn server({}, [&asked](const StandInRequest&) {
    StandInAnswer answer{.entries = {{kObject, {{"mail", {"m"}}}}}};
    if (++asked != 2) return answer;
    // It takes one connection at a time.
    answer = GoodBye();
    answer.ends_with_it = true;
    return answer;
  });
  const auto session = OpenSession({.server = server.Address()});
  EXPECT_EQ(ReadValue(session->store(), kObject, "mail"), "m");
  EXPECT_EQ(ReadValue(session->store(), kObject, "mail"), "m");
  EXPECT_EQ(asked, 3);
  EXPECT_EQ(server.connections(), 2);
}

TEST(Misbehaving, AServersGoodByeIsNoAnswerToAChange) {
  const pelora::testing::UncountedLeaks of_the_library;
  const Misbehaving server(GoodBye());
  EXPECT_EQ(ToText(Replace(server.store(), kObject, "mail", {"m"})),
            "-5 whether the change of 'CN=a,DC=x' was done is not known: the connection to the "
            "server '" +
                server.server.Address() + "' was lost");
}

TEST(Misbehaving, AServersGoodByeInTheMiddleOfManyChangesIsNoAnswerToAnyOfThem) {
  const pelora::testing::UncountedLeaks of_the_library;
  constexpr int kObjects = 20;
  constexpr int kAnswered = 5;
  int asked = 0;
  Misbehaving server([&asked](const StandInRequest&) {
    if (++asked <= kAnswered) return StandInAnswer{};
    return asked == kAnswered + 1 ? GoodBye() : StandInAnswer{.is_silent = true};
  });
  const std::vector<ldap::Modification> change = {{.attribute = "mail", .values = {"m"}}};
  int sent = 0;
  std::vector<int> codes;
  server.store().ModifyManyStrictly(
      [&]() -> std::optional<ldap::ModifyRequest> {
        if (sent == kObjects) return std::nullopt;
        return ldap::ModifyRequest{.dn = "CN=" + std::to_string(sent++) + ",DC=x",
                                   .modifications = change};
      },
      [&codes](const StoreStatus& status) { codes.push_back(status.code); });
  ASSERT_EQ(codes.size(), static_cast<std::size_t>(kObjects));
  for (std::size_t at = 0; at < codes.size(); ++at) {
    EXPECT_EQ(codes[at], at < kAnswered ? 0 : ldap::kLdapTimeout) << at;
  }
}

TEST(Misbehaving, AHundredThousandValuesAreRead) {
  std::vector<std::string> values;
  for (int number = 0; number < 100'000; ++number) values.push_back("CN=" + std::to_string(number));
  const Misbehaving server({.entries = {{kObject, {{"member", values}}}}});
  Entry entry;
  ASSERT_EQ(ToText(server.store().Read(kObject, {}, entry)), "0");
  EXPECT_EQ(entry.attributes.at("member"), values);
}

TEST(Misbehaving, BytesThatAreNoTextAreValuesAllTheSame) {
  const std::string bytes("\xff\xfe\x80 \0 end", 9);
  const Misbehaving server({.entries = {{kObject, {{"mail", {bytes}}}}}});
  EXPECT_EQ(ReadValue(server.store(), kObject, "mail"), bytes);
  // A name of an object may be anything but cut off.
  const std::string name = "CN=\xff\xfe,DC=x";
  const Misbehaving named({.entries = {{name, {{"mail", {"m"}}}}}});
  EXPECT_EQ(Search(named.store()), "1 found, 0");
}

TEST(Misbehaving, AZeroInANameIsRefusedBothWays) {
  const std::string cut_off("CN=a\0,DC=x", 10);
  const Misbehaving object({.entries = {{cut_off, {{"mail", {"m"}}}}}});
  EXPECT_EQ(Search(object.store()), "0 found, " + kUnreadable);
  const Misbehaving attribute({.entries = {{kObject, {{std::string("mail\0x", 6), {"m"}}}}}});
  EXPECT_EQ(Search(attribute.store()), "0 found, " + kUnreadable);

  Misbehaving server(StandInAnswer{});
  server.server.Forget();
  Entry entry;
  EXPECT_EQ(server.store().Read(cut_off, {}, entry).code, ldap::kLdapInvalidDnSyntax);
  EXPECT_EQ(Replace(server.store(), cut_off, "mail", {"m"}).code, ldap::kLdapInvalidDnSyntax);
  EXPECT_EQ(server.store().Add({.dn = cut_off, .attributes = {{"mail", {"m"}}}}).code,
            ldap::kLdapInvalidDnSyntax);
  EXPECT_EQ(server.server.requests(), 0);
}

TEST(Misbehaving, ReferralsAreNotFollowed) {
  const Misbehaving server(
      {.references = std::vector<std::string>(5, "ldap://elsewhere.test/DC=y"), .code = 10});
  EXPECT_EQ(ReadValue(server.store(), kObject, "mail"), "10 Referral");
  const Misbehaving flood(
      {.references = std::vector<std::string>(2'000, "ldap://elsewhere.test/DC=y")});
  EXPECT_EQ(Search(flood.store()), "0 found, " + kUnreadable);
}

}  // namespace
}  // namespace pelora::lab
