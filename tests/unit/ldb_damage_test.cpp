// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <random>

#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_api.h"
#include "hosts/ldap/ldb_connection.h"
#include "hosts/ldap/ldb_message.h"
#include "hosts/ldap/sample_company.h"
#include "hosts/ldap/talloc_ptr.h"
#include "tests/harness/unwritable_disk.h"
#include "tests/support/full_disk.h"
#include "tests/unit/ldb_bench.h"

namespace pelora::ldap {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class LdbDamageTest : public LdbBench {
 protected:
  /// Opens the file as it is now and, if it opens, reads everything: no crash, no hang, and a line
  /// that names the file when something is found to be wrong. Whether it opened.
  bool Survive(const std::string& what) {
    const std::string before = ReadFile(path());
    std::unique_ptr<IDirectoryStore> store;
    const StoreStatus opened = TryOpen(store);
    EXPECT_TRUE(ReadFile(path()) == before) << what;
    if (!opened.Ok()) {
      EXPECT_FALSE(store) << what;
      EXPECT_THAT(opened.text, AllOf(HasSubstr("'" + path() + "'"), Not(HasSubstr("\n")))) << what;
      return false;
    }
    const StoreStatus found =
        store->Search({.base = kBase, .scope = SearchScope::kSubtree, .attributes = {}},
                      [](const Entry&) { return true; });
    EXPECT_EQ(found.Ok(), found.text.empty()) << what;
    static_cast<void>(Replace(*store, kUser, "description", {"written to a damaged file"}));
    return true;
  }

  /// A change of several values, by which they all become one number.
  static std::vector<Modification> Numbered(int number) {
    const std::string text = std::to_string(number);
    return {{Modification::Operation::kReplace, "peloraQuotaHard", {text}},
            {Modification::Operation::kReplace, "otherMailbox", {text + std::string(3000, 'x')}},
            {Modification::Operation::kReplace, "description", {text}}};
  }
  /// The number that all of them are; 0: they are several.
  static int NumberOf(const AttributeMap& attributes) {
    const int number = std::stoi(attributes.at("peloraQuotaHard").front());
    const bool is_whole = std::ranges::all_of(Numbered(number), [&](const Modification& one) {
      return attributes.at(one.attribute) == one.values;
    });
    return is_whole ? number : 0;
  }
  static int NumberIn(IDirectoryStore& store) {
    Entry entry;
    const StoreStatus read = store.Read(kUser, {}, entry);
    EXPECT_TRUE(read.Ok()) << read.text;
    return read.Ok() ? NumberOf(entry.attributes) : 0;
  }
};

TEST_F(LdbDamageTest, ATruncatedFileIsRefused) {
  const std::string whole = ReadFile(path());
  for (const std::size_t size :
       {std::size_t{9}, std::size_t{32}, std::size_t{100}, std::size_t{167}, std::size_t{168},
        std::size_t{4096}, std::size_t{40167}, std::size_t{40192}, std::size_t{100000},
        whole.size() / 2, whole.size() - 4096, whole.size() - 1}) {
    WriteFile(path(), whole.substr(0, size));
    EXPECT_FALSE(Survive("cut to " + std::to_string(size)));
    std::unique_ptr<IDirectoryStore> store;
    EXPECT_THAT(TryOpen(store).text, HasSubstr("the file is damaged"));
  }
}

TEST_F(LdbDamageTest, AFileThatIsOverwrittenIsRefused) {
  const std::string whole = ReadFile(path());
  for (const char filler : {'\0', '\xFF', 'x', 'B'}) {
    std::string bytes = whole;
    bytes.replace(168, bytes.size() - 168, bytes.size() - 168, filler);
    WriteFile(path(), bytes);
    Survive(std::string("filled with ") + filler);
  }
}

TEST_F(LdbDamageTest, NoFlippedByteEndsTheProgram) {
  const std::string whole = ReadFile(path());
  // The records that are in use lie in the front part; random, but the same in every run.
  std::mt19937 random(20240607);
  std::size_t refused = 0;
  constexpr int kRounds = 80;
  for (int round = 0; round < kRounds; ++round) {
    std::string bytes = whole;
    for (int flip = 0; flip < 1 + round % 40; ++flip) {
      char& byte = bytes[9 + random() % (bytes.size() / 2)];
      byte = static_cast<char>(byte ^ static_cast<char>(1 + random() % 255));
    }
    WriteFile(path(), bytes);
    if (!Survive("round " + std::to_string(round))) ++refused;
  }
  EXPECT_GT(refused, 20U);
}

TEST_F(LdbDamageTest, ARecordThatCannotBeReadIsNoMissingObject) {
  const std::unique_ptr<IDirectoryStore> store = Open();
  std::string bytes = ReadFile(path());
  bytes.replace(168, bytes.size() - 168, bytes.size() - 168, 'x');
  WriteFile(path(), bytes);
  Entry entry;
  const StoreStatus status = store->Read(kUser, {}, entry);
  EXPECT_EQ(status.code, kLdapOther);
  EXPECT_THAT(status.text, AllOf(HasSubstr("'" + path() + "'"), HasSubstr("damaged")));
  const StoreStatus added = store->Add(
      {.dn = "CN=A,CN=Users," + std::string(kBase), .attributes = {{"objectClass", {"top"}}}});
  EXPECT_EQ(added.code, kLdapOther);
  EXPECT_TRUE(ReadFile(path()) == bytes);
}

TEST_F(LdbDamageTest, ACommitThatWasCutShortIsUndone) {
  ASSERT_TRUE(Replace(*Open(), kUser, "peloraQuotaHard", {"1"}).Ok());
  const pid_t child = fork();
  if (child == 0) {
    std::unique_ptr<LdbConnection> connection;
    const bool ready =
        LdbConnection::Open(path(), LdbConnection::Mode::kExisting, connection).Ok() &&
        connection->BeginTransaction().Ok() &&
        connection->Replace(kUser, {{"peloraQuotaHard", {"2"}}}).Ok() &&
        ldb_transaction_prepare_commit(connection->handle()) == LDB_SUCCESS;
    if (ready) raise(SIGKILL);
    _exit(1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  EXPECT_THAT(OnUser("peloraQuotaHard"), ElementsAre("1"));
  ASSERT_TRUE(Replace(*Open(), kUser, "peloraQuotaHard", {"3"}).Ok());
  EXPECT_THAT(OnUser("peloraQuotaHard"), ElementsAre("3"));
}

TEST_F(LdbDamageTest, ADiskThatBecomesReadOnlyInTheMiddleLeavesAllOrNothing) {
  const std::unique_ptr<IDirectoryStore> store = Open();
  int now = 1000;
  ASSERT_TRUE(store->Modify(kUser, Numbered(now)).Ok());
  bool was_refused = true;
  std::size_t writes = 0;
  for (; was_refused; ++writes) {
    SCOPED_TRACE("after " + std::to_string(writes) + " writes");
    StoreStatus status;
    {
      const testing::UnwritableDisk read_only(writes);
      status = store->Modify(kUser, Numbered(now + 1));
      was_refused = testing::UnwritableDisk::count() > writes;
      EXPECT_EQ(status.Ok(), !was_refused);
      if (was_refused) {
        EXPECT_THAT(status.text, AllOf(HasSubstr("'" + path() + "'"),
                                       HasSubstr("Read-only file system"), Not(HasSubstr("\n"))));
      }
      // What is read meanwhile is whole, or it is not read.
      Entry entry;
      const StoreStatus read = store->Read(kUser, {}, entry);
      EXPECT_EQ(read.Ok(), read.text.empty());
      if (read.Ok()) {
        EXPECT_THAT(NumberOf(entry.attributes), ::testing::AnyOf(now, now + 1));
      }
    }
    const int found = NumberIn(*Open());
    if (status.code == kLdapTimeout) {
      EXPECT_THAT(found, ::testing::AnyOf(now, now + 1));
    } else {
      EXPECT_EQ(found, status.Ok() ? now + 1 : now);
    }
    // The same store goes on.
    EXPECT_EQ(NumberIn(*store), found);
    now = found + 2;
    EXPECT_TRUE(store->Modify(kUser, Numbered(now)).Ok());
    EXPECT_EQ(NumberIn(*Open()), now);
    if (HasFailure()) return;
  }
  EXPECT_GT(writes, 4U);
}

TEST_F(LdbDamageTest, AChangeThatTheDiskDoesNotConfirmIsNotToldAsFailed) {
  int now = 1000;
  std::size_t stuck = 0;
  ASSERT_TRUE(Open()->Modify(kUser, Numbered(now)).Ok());
  for (std::size_t asked = 1;; ++asked) {
    SCOPED_TRACE("question " + std::to_string(asked));
    std::unique_ptr<IDirectoryStore> store = Open();
    std::unique_ptr<IDirectoryStore> another = Open();
    StoreStatus status;
    bool was_met = false;
    {
      const testing::UnsafeDisk unsafe(asked);
      status = store->Modify(kUser, Numbered(now + 1));
      was_met = testing::UnsafeDisk::count() >= asked;
    }
    EXPECT_EQ(status.Ok(), !was_met);
    if (!was_met) break;
    EXPECT_THAT(status.text, AllOf(HasSubstr("'" + path() + "'"), Not(HasSubstr("\n"))));
    Entry entry;
    const StoreStatus read = store->Read(kUser, {}, entry);
    if (read.Ok()) {
      // The same store goes on, and says what is so.
      EXPECT_EQ(NumberOf(entry.attributes), NumberIn(*another));
      EXPECT_TRUE(store->Modify(kUser, Numbered(NumberOf(entry.attributes))).Ok());
    } else {
      // What the library takes the file for may not be so: nobody is told of it.
      ++stuck;
      EXPECT_EQ(status.code, kLdapTimeout);
      std::unique_ptr<IDirectoryStore> third;
      for (const StoreStatus& told :
           {read, another->Read(kUser, {}, entry), another->Modify(kUser, Numbered(now + 2)),
            OpenLdbStore(path(), {}, third)}) {
        EXPECT_EQ(told.code, kLdapUnavailable);
        EXPECT_THAT(told.text, AllOf(HasSubstr("'" + path() + "'"),
                                     HasSubstr("has to be closed and opened anew")));
      }
      store.reset();
      EXPECT_EQ(another->Read(kUser, {}, entry).code, kLdapUnavailable);
    }
    another.reset();
    store.reset();
    const int found = NumberIn(*Open());
    EXPECT_THAT(found, ::testing::AnyOf(now, now + 1));
    if (status.code != kLdapTimeout) {
      EXPECT_EQ(found, now);
    }
    now = found;
    if (HasFailure()) return;
  }
  EXPECT_EQ(stuck, 1U);
}

TEST_F(LdbDamageTest, AFullDiskChangesNothing) {
  const std::unique_ptr<IDirectoryStore> store = Open();
  ASSERT_TRUE(Replace(*store, kUser, "peloraQuotaHard", {"1"}).Ok());
  AttributeValues many;
  for (int number = 0; number < 20; ++number) {
    many.push_back(std::to_string(10000 + number) + std::string(20'000, 'x'));
  }
  {
    const testing::FullDisk full(ReadFile(path()).size());
    const std::vector<Modification> changes = {
        {Modification::Operation::kReplace, "peloraQuotaHard", {"2"}},
        {Modification::Operation::kReplace, "otherMailbox", many}};
    const StoreStatus status = store->Modify(kUser, changes);
    EXPECT_FALSE(status.Ok());
    EXPECT_THAT(status.text, AllOf(HasSubstr("'" + path() + "'"), Not(HasSubstr("\n"))));
    EXPECT_THAT(Read(*store, kUser, "peloraQuotaHard"), ElementsAre("1"));
    EXPECT_THAT(Read(*store, kUser, "otherMailbox"), IsEmpty());
  }
  EXPECT_THAT(OnUser("peloraQuotaHard"), ElementsAre("1"));
  // With room on the disk the same store goes on.
  EXPECT_TRUE(Replace(*store, kUser, "otherMailbox", many).Ok());
  EXPECT_EQ(OnUser("otherMailbox").size(), many.size());
}

TEST_F(LdbDamageTest, NothingIsLeftOfADirectoryThatTheDiskHadNoRoomFor) {
  for (const rlim_t size : {rlim_t{0}, rlim_t{1000}, rlim_t{50000}, rlim_t{200000}}) {
    const testing::FullDisk full(size);
    const StoreStatus status = CreateLdbDirectory(File("new.ldb"), SampleCompanyLdif());
    EXPECT_FALSE(status.Ok());
    EXPECT_THAT(status.text, AllOf(HasSubstr("'" + File("new.ldb") + "'"), Not(HasSubstr("\n"))));
    EXPECT_THAT(FilesInFolder(), ElementsAre("company.ldb"));
  }
}

}  // namespace
}  // namespace pelora::ldap
