// SPDX-License-Identifier: Apache-2.0
// Two administrators of a directory file, and what may become of the file meanwhile.
#include <gmock/gmock.h>

#include <filesystem>

#include "hosts/session/directory_session.h"
#include "tests/contract/guarded_sheet.h"
#include "tests/contract/guarded_sheet_contract.h"
#include "tests/harness/unwritable_disk.h"
#include "tests/support/full_disk.h"
#include "tests/support/sample_file.h"

namespace pelora::contract {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

class LdbCompany final : public GuardedCompany {
 public:
  LdbCompany() {
    first_ = session::OpenDirectoryFile(file_.path()).session;
    second_ = session::OpenDirectoryFile(file_.path()).session;
  }

  [[nodiscard]] ldap::IDirectoryStore& First() override { return *first_->store; }
  [[nodiscard]] ldap::IDirectoryStore& Second() override { return *second_->store; }
  [[nodiscard]] const std::string& path() const { return file_.path(); }
  /// The first user's further addresses.
  [[nodiscard]] std::vector<std::string> Others() {
    const std::string wanted = "otherMailbox";
    ldap::Entry entry;
    EXPECT_TRUE(Second().Read(Users().front(), {&wanted, 1}, entry).Ok());
    return entry.attributes[wanted];
  }
  [[nodiscard]] std::vector<std::string> Users() override {
    const std::string company = ",OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
    return {"CN=Birgit Krämer,OU=Vertrieb" + company, "CN=Stefan Ebert,OU=Vertrieb" + company,
            "CN=Ursula Fischer,OU=Fertigung" + company};
  }

 private:
  pelora::testing::SampleFile file_;
  std::unique_ptr<session::DirectorySession> first_;
  std::unique_ptr<session::DirectorySession> second_;
};

std::unique_ptr<GuardedCompany> MakeCompany() { return std::make_unique<LdbCompany>(); }

/// What may become of the file below an open sheet.
class SheetOnAFile : public ::testing::Test {
 protected:
  [[nodiscard]] const std::string& path() const { return company_.path(); }

  LdbCompany company_;
  GuardedSheet sheet_{company_.First(), {company_.Users().front()}};
};

TEST_F(SheetOnAFile, AFullDiskIsToldAndOkOnceThereIsRoomWritesIt) {
  const std::string long_address = std::string(300'000, 'x') + "@pelora.test";
  sheet_.AddAddress(long_address);
  {
    const pelora::testing::FullDisk full(pelora::testing::ReadFile(path()).size());
    EXPECT_FALSE(sheet_.sheet().Ok());
    EXPECT_THAT(sheet_.TakeBoxes(),
                ElementsAre(AllOf(HasSubstr("The directory says: "), HasSubstr(path()),
                                  HasSubstr("What you typed is kept here"))));
    EXPECT_THAT(company_.Others(), Not(Contains(long_address)));
  }
  EXPECT_TRUE(sheet_.sheet().Ok());
  EXPECT_THAT(company_.Others(), Contains(long_address));
}

TEST_F(SheetOnAFile, ADiskThatBecameReadOnlyIsToldAndOkOnceItIsWritableWritesIt) {
  const std::string before = pelora::testing::ReadFile(path());
  sheet_.AddAddress("new@pelora.test");
  {
    const pelora::testing::UnwritableDisk read_only;
    for (int time = 0; time < 2; ++time) {
      EXPECT_FALSE(sheet_.sheet().Ok());
      EXPECT_TRUE(sheet_.sheet().IsOpen());
      EXPECT_THAT(sheet_.TakeBoxes(),
                  ElementsAre(AllOf(HasSubstr("The directory says: "), HasSubstr(path()),
                                    HasSubstr("Read-only file system"),
                                    HasSubstr("What you typed is kept here"))));
    }
    // What is there can be looked at.
    EXPECT_THAT(company_.Others(), Not(Contains("new@pelora.test")));
  }
  EXPECT_TRUE(pelora::testing::ReadFile(path()) == before);
  EXPECT_TRUE(sheet_.sheet().Ok());
  EXPECT_THAT(company_.Others(), Contains("new@pelora.test"));
}

TEST_F(SheetOnAFile, AFileThatWasReplacedIsToldAndLeftAlone) {
  sheet_.AddAddress("new@pelora.test");
  const std::string bytes = pelora::testing::ReadFile(path());
  std::filesystem::rename(path(), path() + ".old");
  pelora::testing::WriteFile(path(), bytes);
  for (int time = 0; time < 2; ++time) {
    EXPECT_FALSE(sheet_.sheet().Ok());
    EXPECT_TRUE(sheet_.sheet().IsOpen());
    EXPECT_THAT(sheet_.TakeBoxes(),
                ElementsAre(AllOf(HasSubstr(path()), HasSubstr("start the program anew"),
                                  Not(HasSubstr("server")))));
  }
  EXPECT_TRUE(pelora::testing::ReadFile(path()) == bytes);
  EXPECT_TRUE(pelora::testing::ReadFile(path() + ".old") == bytes);
}

INSTANTIATE_TEST_SUITE_P(Ldb, GuardedSheetContract, ::testing::Values(&MakeCompany));

}  // namespace
}  // namespace pelora::contract
