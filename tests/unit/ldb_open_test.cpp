// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <tdb.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_connection.h"
#include "tests/unit/ldb_bench.h"

namespace pelora::ldap {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class LdbOpenTest : public LdbBench {
 protected:
  /// Opens a path that is no directory: a line that names it and says `reason`.
  static void ExpectRefused(const std::string& path, const std::string& reason) {
    std::unique_ptr<IDirectoryStore> store;
    const StoreStatus status = OpenLdbStore(path, {}, store);
    EXPECT_EQ(status.code, kLdapServerDown);
    EXPECT_FALSE(store);
    EXPECT_THAT(status.text,
                AllOf(HasSubstr("'" + path + "'"), HasSubstr(reason), Not(HasSubstr("\n"))));
  }
};

/// Acts as a user without rights while it lives; as root one may do anything.
class WithoutRights {
 public:
  WithoutRights() {
    if (user_ == 0 && seteuid(65534) != 0) throw std::runtime_error("cannot change the user");
  }
  WithoutRights(const WithoutRights&) = delete;
  WithoutRights& operator=(const WithoutRights&) = delete;
  ~WithoutRights() {
    if (user_ == 0 && seteuid(0) != 0) std::abort();
  }

 private:
  uid_t user_ = geteuid();
};

TEST_F(LdbOpenTest, LoadsTheModuleForFilesAndNoneOfTheOthers) {
  ASSERT_TRUE(std::filesystem::exists(PELORA_LDB_MODULES "/acl.so"));
  std::unique_ptr<IDirectoryStore> store;
  ASSERT_TRUE(OpenLdbStore(path(), {}, store).Ok());
  std::ifstream mapped("/proc/self/maps");
  std::set<std::string> modules;
  for (std::string line; std::getline(mapped, line);) {
    const std::size_t place = line.find(PELORA_LDB_MODULES "/");
    if (place != std::string::npos) modules.insert(line.substr(line.rfind('/') + 1));
  }
  EXPECT_THAT(modules, ::testing::ElementsAre("tdb.so"));
}

TEST_F(LdbOpenTest, AMissingFileIsNotMade) {
  ExpectRefused(File("missing.ldb"), "No such file or directory");
  ExpectRefused(File("no/such/folder.ldb"), "No such file or directory");
  ExpectRefused("", "No such file or directory");
  EXPECT_THAT(FilesInFolder(), ::testing::ElementsAre("company.ldb"));
}

TEST_F(LdbOpenTest, AFileThatMayNotBeReadAndWrittenIsRefused) {
  std::filesystem::permissions(std::filesystem::path(path()).parent_path(),
                               std::filesystem::perms(0755));
  for (const unsigned mode : {0000U, 0444U, 0222U}) {
    std::filesystem::permissions(path(), std::filesystem::perms(mode));
    const WithoutRights nobody;
    ExpectRefused(path(), "Permission denied");
  }
}

TEST_F(LdbOpenTest, WhatIsNoFileIsRefused) {
  ExpectRefused(std::filesystem::path(path()).parent_path().string(), "Is a directory");
  const std::string pipe = File("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  ExpectRefused(pipe, "not a regular file");
  ExpectRefused("/dev/null", "not a regular file");
}

TEST_F(LdbOpenTest, AFileOfAnotherKindIsRefused) {
  for (const std::string& bytes :
       {std::string(), std::string("T"), std::string("dn: DC=x\n"), std::string(5000, '\0'),
        std::string("TDB file"), std::string("SQLite format 3")}) {
    WriteFile(path(), bytes);
    ExpectRefused(path(), "the file is no directory");
    EXPECT_EQ(ReadFile(path()), bytes);
  }
}

TEST_F(LdbOpenTest, ADatabaseOfAnotherProgramIsRefusedAndLeftAlone) {
  const std::string other = File("other.tdb");
  tdb_context* const database = tdb_open(other.c_str(), 0, 0, O_RDWR | O_CREAT, 0600);
  ASSERT_NE(database, nullptr);
  std::string text = "value";
  const TDB_DATA data{reinterpret_cast<unsigned char*>(text.data()), text.size()};
  ASSERT_EQ(tdb_store(database, data, data, TDB_INSERT), 0);
  tdb_close(database);
  const std::string before = ReadFile(other);
  ExpectRefused(other, "a database of another program");
  EXPECT_TRUE(ReadFile(other) == before);
}

TEST_F(LdbOpenTest, AnLdbFileThatIsNoDirectoryOfOursIsRefusedAndLeftAlone) {
  const std::string other = File("other.ldb");
  {
    std::unique_ptr<LdbConnection> connection;
    ASSERT_TRUE(LdbConnection::Open(other, LdbConnection::Mode::kNew, connection).Ok());
    ASSERT_TRUE(connection->Add({.dn = "DC=x", .attributes = {{"dc", {"x"}}}}).Ok());
  }
  std::string before = ReadFile(other);
  ExpectRefused(other, "a database of another program");
  EXPECT_TRUE(ReadFile(other) == before);

  // Nor is it one when it has a root record that names no schema.
  {
    std::unique_ptr<LdbConnection> connection;
    ASSERT_TRUE(LdbConnection::Open(other, LdbConnection::Mode::kExisting, connection).Ok());
    ASSERT_TRUE(
        connection->Add({.dn = "@ROOTDSE", .attributes = {{"defaultNamingContext", {"DC=x"}}}})
            .Ok());
  }
  before = ReadFile(other);
  ExpectRefused(other, "a database of another program");
  EXPECT_TRUE(ReadFile(other) == before);
}

TEST_F(LdbOpenTest, AFileThatNamesModulesIsRefusedAndNoneIsLoaded) {
  const Entry modules{.dn = "@MODULES", .attributes = {{"@LIST", {"asq,paged_results,samldb"}}}};
  const std::string reason =
      "the file asks for modules to be loaded into the program (@MODULES), and no file may do that";
  {
    std::unique_ptr<LdbConnection> connection;
    ASSERT_TRUE(LdbConnection::Open(path(), LdbConnection::Mode::kExisting, connection).Ok());
    ASSERT_TRUE(connection->Add(modules).Ok());
  }
  ExpectRefused(path(), reason);
  // The library is not given the list even when nobody looks.
  std::unique_ptr<LdbConnection> connection;
  EXPECT_TRUE(LdbConnection::Open(path(), LdbConnection::Mode::kExisting, connection).Ok());
}

TEST_F(LdbOpenTest, AFileThatNamesModulesOnceItIsOpenIsNotOpenedAgain) {
  const std::unique_ptr<IDirectoryStore> store = Open();
  {
    std::unique_ptr<LdbConnection> connection;
    ASSERT_TRUE(LdbConnection::Open(path(), LdbConnection::Mode::kExisting, connection).Ok());
    ASSERT_TRUE(connection->Add({.dn = "@MODULES", .attributes = {{"@LIST", {"samldb"}}}}).Ok());
  }
  // What is open already is not looked through again, and all the same it is seen.
  ExpectRefused(path(), "(@MODULES)");
}

TEST_F(LdbOpenTest, ASchemaThatIsNotUnderstoodIsNamed) {
  const std::string definition =
      "CN=peloraHidden,CN=Schema,CN=Configuration,DC=linden-werke,DC=example";
  {
    std::unique_ptr<LdbConnection> connection;
    ASSERT_TRUE(LdbConnection::Open(path(), LdbConnection::Mode::kExisting, connection).Ok());
    ASSERT_TRUE(connection->Replace(definition, {{"attributeSyntax", {"2.5.5.99"}}}).Ok());
  }
  std::unique_ptr<IDirectoryStore> store;
  const StoreStatus status = TryOpen(store);
  EXPECT_EQ(status.code, kLdapOther);
  EXPECT_FALSE(store);
  EXPECT_THAT(status.text, AllOf(HasSubstr(path()), HasSubstr(definition)));
}

TEST_F(LdbOpenTest, AFileBehindALinkIsOpened) {
  const std::string link = File("link.ldb");
  std::filesystem::create_symlink(path(), link);
  std::unique_ptr<IDirectoryStore> store;
  EXPECT_TRUE(OpenLdbStore(link, {}, store).Ok());
  ASSERT_TRUE(store);
  EXPECT_TRUE(Replace(*store, kUser, "peloraQuotaHard", {"3"}).Ok());
  EXPECT_THAT(OnUser("peloraQuotaHard"), ::testing::ElementsAre("3"));
}

TEST_F(LdbOpenTest, OpeningAndReadingChangesNothing) {
  const std::string before = ReadFile(path());
  {
    const std::unique_ptr<IDirectoryStore> store = Open();
    Entry entry;
    EXPECT_TRUE(store->Read(kUser, {}, entry).Ok());
    EXPECT_TRUE(store
                    ->Search({.base = kBase, .scope = SearchScope::kSubtree, .attributes = {}},
                             [](const Entry&) { return true; })
                    .Ok());
  }
  EXPECT_TRUE(ReadFile(path()) == before);
}

}  // namespace
}  // namespace pelora::ldap
