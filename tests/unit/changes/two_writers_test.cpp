// SPDX-License-Identifier: Apache-2.0
// Two programs that change the same attribute of the same object, as fast as they can.
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "hosts/changes/change_writer.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_store.h"
#include "tests/unit/changes/changes_bench.h"

namespace pelora::changes {
namespace {

constexpr int kRounds = 1000;

class TwoWritersTest : public ChangesBench {
 protected:
  static std::unique_ptr<IDirectoryStore> OpenPatiently(const std::string& path) {
    std::unique_ptr<IDirectoryStore> store;
    const StoreStatus status = OpenLdbStore(path, {.lock_wait = std::chrono::seconds(20)}, store);
    if (!status.Ok()) throw std::runtime_error(status.text);
    return store;
  }
  /// Nothing of this has to outlive a crash: in memory a round waits for no disk.
  static std::filesystem::path MemoryFolder() {
    const std::filesystem::path memory = "/dev/shm";
    return std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
  }
  static int Number(const AttributeValues& values) {
    return values.empty() ? 0 : std::stoi(values.front());
  }
};

/// What one writer did.
struct Deeds {
  int accepted = 0;
  int refused = 0;
  int other = 0;
};

/// Reads the counter and counts on, `kRounds` times, from what it read.
Deeds CountOn(IDirectoryStore& store, const std::string& dn) {
  ChangeWriter writer(store);
  Deeds deeds;
  for (int round = 0; round < kRounds; ++round) {
    Entry entry;
    const std::vector<std::string> attributes = {"peloraQuotaHard"};
    if (!store.Read(dn, attributes, entry).Ok()) return {.other = 1};
    const AttributeValues& seen = entry.attributes["peloraQuotaHard"];
    const int number = seen.empty() ? 0 : std::stoi(seen.front());
    const Result result = writer.Write(
        MakeChange(dn, {"peloraQuotaHard", false, seen, {std::to_string(number + 1)}}));
    const bool is_accepted = result.outcome == Outcome::kChanged;
    const bool is_refused = result.outcome == Outcome::kRefused ||
                            // The other one wrote the very same number.
                            result.outcome == Outcome::kUnchanged;
    ++(is_accepted ? deeds.accepted : is_refused ? deeds.refused : deeds.other);
  }
  return deeds;
}

TEST_F(TwoWritersTest, NoAcceptedChangeIsLost) {
  store_.reset();
  const pelora::testing::TemporaryFolder folder(MemoryFolder());
  const std::string file = folder.File("company.ldb");
  std::filesystem::copy_file(path(), file);
  int pipe_ends[2] = {};
  ASSERT_EQ(pipe(pipe_ends), 0);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    Deeds deeds = CountOn(*OpenPatiently(file), kUser);
    const ssize_t written = write(pipe_ends[1], &deeds, sizeof deeds);
    _exit(written == sizeof deeds ? 0 : 1);
  }
  const Deeds mine = CountOn(*OpenPatiently(file), kUser);
  Deeds theirs;
  ASSERT_EQ(read(pipe_ends[0], &theirs, sizeof theirs), static_cast<ssize_t>(sizeof theirs));
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  close(pipe_ends[0]);
  close(pipe_ends[1]);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(mine.other + theirs.other, 0);
  EXPECT_EQ(Number(Read(*OpenPatiently(file), kUser, "peloraQuotaHard")),
            mine.accepted + theirs.accepted);
  // They did meet.
  EXPECT_GT(mine.refused + theirs.refused, 0);
  RecordProperty("refused", mine.refused + theirs.refused);
}

}  // namespace
}  // namespace pelora::changes
