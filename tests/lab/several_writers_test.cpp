// SPDX-License-Identifier: Apache-2.0
// Several writers on a domain, and a checker that looks whether what came of it can be explained.
#include "tests/harness/several_writers.h"

#include <iostream>
#include <random>

#include "tests/lab/lab_test.h"
#include "tests/support/long_form.h"

namespace pelora::lab {
namespace {

using pelora::testing::Answer;
using pelora::testing::RoundsOr;

TEST(SeveralWritersOnADomain, EverythingThatCameOfItCanBeExplained) {
  LabAdministrator administrator;
  const std::string unit = "OU=Writers,OU=Contract," + Base();
  administrator.Add(unit, {{"objectClass", {"organizationalUnit"}}});
  const std::vector<std::string> users = {"CN=Jürgen Weiß\\, Dr.," + unit, "CN=Änne Groß," + unit};
  for (const std::string& user : users) {
    administrator.Add(
        user, {{"objectClass", {"user"}}, {"peloraAccount", {"1"}}, {"mail", {"first@x.example"}}});
  }
  const auto session = OpenSession();
  const auto open = [&session] {
    std::unique_ptr<ldap::IDirectoryStore> store;
    const StoreStatus status = session->open_another()(store, {});
    if (!status.Ok()) throw std::runtime_error(status.text);
    return store;
  };
  // The same in every run of the short form, as far as threads let it be.
  constexpr unsigned kSeed = 1;
  const unsigned seed = RoundsOr(0) == 0 ? kSeed : std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  const std::size_t rounds = RoundsOr(40);
  pelora::testing::WritersDeeds deeds =
      pelora::testing::PlayWriters({.open = open, .users = users}, rounds, seed);
  EXPECT_EQ(pelora::testing::FaultsOf(deeds.history), std::vector<std::string>());
  EXPECT_GT(deeds.answers[Answer::kAccepted], 0U);
  EXPECT_GT(deeds.answers[Answer::kRefused], 0U);
  EXPECT_GT(deeds.answers[Answer::kUnknown], 0U);
  if (HasFailure()) return;
  std::cout << "rounds of three writers on a domain: " << TextOf(deeds, rounds) << "\n";
}

}  // namespace
}  // namespace pelora::lab
