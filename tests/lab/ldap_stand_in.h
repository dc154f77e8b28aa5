// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "tests/lab/ldap_frames.h"

namespace pelora::lab {

/// What the stand-in does with a request.
struct StandInAnswer {
  std::vector<StandInEntry> entries{};
  /// References to other servers that come with the entries.
  std::vector<std::string> references{};
  int code = 0;
  std::string text{};
  /// Closes the connection instead of answering.
  bool hangs_up = false;
  /// Sends bytes that are no message instead of answering.
  bool sends_nonsense = false;
  /// Does not answer at all.
  bool is_silent = false;
  /// Sends the entries again and again, with never a result, until the program hangs up.
  bool is_endless = false;
  /// What is sent behind the entries in place of the result; and whether the connection is closed
  /// behind it.
  std::string raw{};
  bool ends_with_it = false;
  /// Of a search: the mark at which a next page begins.
  std::string page{};
  /// Addresses of servers to ask instead (code 10).
  std::vector<std::string> referral{};
};

using StandInScript = std::function<StandInAnswer(const StandInRequest& request)>;

/// A directory server of a test's own, under the domain controller's name and on a port of its own,
/// for what a domain controller cannot be made to do. It takes one connection at a time; the user
/// signs in with the ticket for the domain controller.
///
/// The script is asked on the stand-in's thread about every request but those that `StandInSchema`
/// answers: a store that opens wants a root entry and a schema.
class LdapStandIn {
 public:
  struct Options {
    /// 0 nothing, 1 signing, more sealing.
    unsigned most_strength = 256;
    /// What a bind is refused with, if at all.
    int bind_code = 0;
    /// Whose key it holds, by its host's name; the domain controller's when it is empty.
    std::string name{};
    /// The realm of which it says to be.
    std::string realm = "PELORA.TEST";
    /// Requests are gathered until no more come, and answered then: so one sees how often a program
    /// waits.
    bool gathers = false;
    /// After so many answers, those of signing in included, it hangs up at each request.
    int most_answers = std::numeric_limits<int>::max();
  };

  LdapStandIn(Options options, StandInScript script);
  ~LdapStandIn();
  LdapStandIn(const LdapStandIn&) = delete;
  LdapStandIn& operator=(const LdapStandIn&) = delete;

  /// `dc1.pelora.test:12345`.
  [[nodiscard]] std::string Address() const;

  /// Requests that have been answered, and how often the program has waited for answers, since the
  /// last call of `Forget`.
  [[nodiscard]] int requests() const;
  [[nodiscard]] int turns() const;
  /// How many connections have been taken.
  [[nodiscard]] int connections() const;
  void Forget();

 private:
  class Worker;
  std::unique_ptr<Worker> worker_;
};

}  // namespace pelora::lab
