// SPDX-License-Identifier: Apache-2.0
// Several writers on a directory file, and a checker that looks whether what came of it can be
// explained.
#include "tests/harness/several_writers.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <iostream>
#include <random>
#include <stdexcept>

#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/ldb_store.h"
#include "hosts/ldap/sample_company.h"
#include "tests/support/long_form.h"
#include "tests/support/temporary_folder.h"

namespace pelora::testing {
namespace {

class SeveralWriters : public ::testing::Test {
 protected:
  SeveralWriters() {
    const ldap::StoreStatus made = ldap::CreateLdbDirectory(file_, ldap::SampleCompanyLdif());
    EXPECT_TRUE(made.Ok()) << made.text;
  }

  [[nodiscard]] std::unique_ptr<ldap::IDirectoryStore> Open() const {
    std::unique_ptr<ldap::IDirectoryStore> store;
    // Whoever holds the file is waited for.
    const ldap::StoreStatus opened =
        ldap::OpenLdbStore(file_, {.lock_wait = std::chrono::seconds(30)}, store);
    if (!opened.Ok()) throw std::runtime_error(opened.text);
    return store;
  }

 private:
  /// Nothing of this has to outlive a crash: in memory nobody waits for a disk.
  static std::filesystem::path MemoryFolder() {
    const std::filesystem::path memory = "/dev/shm";
    return std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
  }

  TemporaryFolder folder_{MemoryFolder()};
  std::string file_ = folder_.File("company.ldb");
};

TEST_F(SeveralWriters, EverythingThatCameOfItCanBeExplained) {
  const std::string company = ",OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
  // The same in every run of the short form, as far as threads let it be.
  constexpr unsigned kSeed = 1;
  const unsigned seed = RoundsOr(0) == 0 ? kSeed : std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  const std::size_t rounds = RoundsOr(60);
  WritersDeeds deeds = PlayWriters({.open = [this] { return Open(); },
                                    .users = {"CN=Birgit Krämer,OU=Vertrieb" + company,
                                              "CN=Stefan Ebert,OU=Vertrieb" + company}},
                                   rounds, seed);
  EXPECT_EQ(FaultsOf(deeds.history), std::vector<std::string>());
  // They did meet, and did fail.
  EXPECT_GT(deeds.answers[Answer::kAccepted], 0U);
  EXPECT_GT(deeds.answers[Answer::kRefused], 0U);
  EXPECT_GT(deeds.answers[Answer::kUnknown], 0U);
  if (HasFailure()) return;
  std::cout << "rounds of three writers: " << TextOf(deeds, rounds) << "\n";
}

}  // namespace
}  // namespace pelora::testing
