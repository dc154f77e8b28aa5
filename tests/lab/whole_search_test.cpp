// SPDX-License-Identifier: Apache-2.0
// Searches that find more than some servers give at a time: asked for at once, and page by page
// where a server wants it so.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <optional>
#include <utility>

#include "tests/lab/lab_test.h"
#include "tests/lab/ldap_stand_in.h"
#include "tests/lab/tcp_relay.h"

namespace pelora::lab {
namespace {

constexpr std::size_t kPeople = 1100;

/// A server that has some objects and gives no more than so many of them at a time.
class GivesInPages {
 public:
  GivesInPages(std::size_t count, std::size_t page, int code) : count_(count), page_(page) {
    const auto answer = [this, code](const StandInRequest& request) {
      if (!request.is_page) {
        ++asked_for_all_;
        // Not in the order of the pages.
        return Give(count_ - page_, page_, {.code = code, .text = "that is too much"});
      }
      const bool is_last = next_ + page_ >= count_;
      const std::size_t begin = std::exchange(next_, is_last ? 0 : next_ + page_);
      return Give(begin, page_, {.page = is_last ? "" : "more"});
    };
    server_.emplace(LdapStandIn::Options{}, answer);
    session_ = OpenSession({.server = server_->Address()});
  }

  /// The numbers of what a search finds, in turn.
  [[nodiscard]] std::string Find() {
    std::string found;
    const auto take = [&found](const Entry& entry) {
      found += entry.dn.substr(3, entry.dn.find(',') - 3) + " ";
      return true;
    };
    const StoreStatus status = session_->store().Search({.base = "DC=x"}, take);
    return found + ToText(status);
  }
  /// How often it was asked for everything.
  [[nodiscard]] int asked_for_all() const { return asked_for_all_; }

 private:
  [[nodiscard]] StandInAnswer Give(std::size_t begin, std::size_t count,
                                   StandInAnswer answer) const {
    for (std::size_t at = begin; at < std::min(count_, begin + count); ++at) {
      answer.entries.push_back({"CN=" + std::to_string(at) + ",DC=x", {{"mail", {"m"}}}});
    }
    return answer;
  }

  std::size_t count_;
  std::size_t page_;
  std::size_t next_ = 0;
  std::atomic<int> asked_for_all_ = 0;
  std::optional<LdapStandIn> server_;
  std::unique_ptr<NetworkSession> session_;
};

TEST(ReadingPages, AServerThatGivesSoMuchAtATimeIsAskedPageByPageFromThenOn) {
  for (const int code : {3, 4, 11}) {
    GivesInPages server(12, 3, code);
    // What came before it had enough is not handed over twice.
    EXPECT_EQ(server.Find(), "9 10 11 0 1 2 3 4 5 6 7 8 0") << code;
    EXPECT_EQ(server.Find(), "0 1 2 3 4 5 6 7 8 9 10 11 0") << code;
    EXPECT_EQ(server.asked_for_all(), 1);
  }
}

TEST(ReadingPages, WhatAServerGivesAtOnceIsAskedForInOneRequest) {
  TcpRelay relay(ldap::kDirectoryPort);
  const auto session = OpenSession({.server = Server() + ":" + std::to_string(relay.port())});
  const std::size_t before = relay.traffic().requests;
  std::size_t count = 0;
  EXPECT_EQ(ToText(session->store().Search({.base = "OU=Many," + Base(),
                                            .scope = ldap::SearchScope::kOneLevel,
                                            .attributes = {"mail"}},
                                           [&](const Entry& /*entry*/) { return ++count > 0; })),
            "0");
  EXPECT_EQ(count, kPeople);
  EXPECT_EQ(relay.traffic().requests, before + 1);
}

}  // namespace
}  // namespace pelora::lab
