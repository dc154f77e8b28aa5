// SPDX-License-Identifier: Apache-2.0
// Samba's own tools on the embedded directory. They are part of what the tests need.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>

#include "tests/unit/ldb_bench.h"

namespace pelora::ldap {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

class LdbToolsTest : public LdbBench {
 protected:
  /// Runs a tool on the file with this input; what it prints.
  std::string Run(const std::string& tool, const std::string& arguments,
                  const std::string& input = {}) {
    WriteFile(File("input"), input);
    const std::string command =
        tool + " -H '" + path() + "' " + arguments + " < '" + File("input") + "' 2>&1";
    std::string output;
    FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return "no pipe";
    std::array<char, 4096> block{};
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), pipe)) {
      output.append(block.data(), count);
    }
    const int status = pclose(pipe);
    EXPECT_EQ(status, 0) << command << "\n" << output;
    return output;
  }
};

TEST_F(LdbToolsTest, FindWhatWasWritten) {
  ASSERT_TRUE(Replace(*Open(), kUser, "peloraQuotaHard", {"4711"}).Ok());
  const std::string output =
      Run("ldbsearch", "'(sAMAccountName=H.NAUMANN)' peloraQuotaHard peloraAccount");
  EXPECT_THAT(output, HasSubstr(std::string("dn: ") + kUser));
  EXPECT_THAT(output, HasSubstr("peloraQuotaHard: 4711\n"));
  EXPECT_THAT(output, HasSubstr("peloraAccount: 1\n"));
  EXPECT_THAT(output, HasSubstr("# returned 1 records"));
}

TEST_F(LdbToolsTest, FindObjectsByTheirNamesInEveryScript) {
  for (const char* const dn : {
           "CN=jürgen weißflog,OU=GESCHÄFTSLEITUNG,OU=Linden-Werke Chemnitz,DC=linden-werke,"
           "DC=example",
           "CN=Meyer\\, Anna,OU=Geschäftsleitung,OU=Linden-Werke Chemnitz,DC=linden-werke,"
           "DC=example",
           "CN=Messplatz A/B,OU=Labor I/O,OU=Entwicklung,OU=Linden-Werke Chemnitz,"
           "DC=linden-werke,DC=example",
           "CN=νίκος ξένος,OU=Παραγωγή,OU=Linden Optiki Thessaloniki,DC=linden-werke,DC=example",
           "CN=Милош Ђорђевић,OU=Сервис,OU=Linden Servis Beograd,DC=linden-werke,DC=example",
           "CN=Viktor Țepeș,OU=Склад,OU=Linden Servis Beograd,DC=linden-werke,DC=example",
           "CN=mehmet yıldız,OU=Fertigung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example",
           "CN=林田 美咲,OU=Entwicklung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example",
       }) {
    const std::string output = Run("ldbsearch", std::string("-s base -b '") + dn + "' cn");
    EXPECT_THAT(output, HasSubstr("# returned 1 records")) << dn;
  }
}

TEST_F(LdbToolsTest, ReadEveryEntry) {
  std::size_t entries = 0;
  ASSERT_TRUE(Open()
                  ->Search({.base = kBase, .scope = SearchScope::kSubtree, .attributes = {}},
                           [&](const Entry&) { return ++entries, true; })
                  .Ok());
  EXPECT_THAT(Run("ldbsearch", "-b DC=linden-werke,DC=example '(objectClass=*)' dn"),
              HasSubstr("# returned " + std::to_string(entries) + " records"));
}

TEST_F(LdbToolsTest, WhatTheyWriteIsSeenByAnOpenStore) {
  const std::unique_ptr<IDirectoryStore> store = Open();
  EXPECT_THAT(Read(*store, kUser, "peloraQuotaHard"), ::testing::IsEmpty());
  Run("ldbmodify", "",
      std::string("dn: ") + kUser +
          "\nchangetype: modify\nreplace: peloraQuotaHard\npeloraQuotaHard: 12\n");
  EXPECT_THAT(Read(*store, kUser, "peloraQuotaHard"), ElementsAre("12"));
  ASSERT_TRUE(Replace(*store, kUser, "peloraQuotaHard", {"13"}).Ok());
  EXPECT_THAT(Run("ldbsearch", "'(peloraQuotaHard=13)' dn"), HasSubstr(kUser));
}

TEST_F(LdbToolsTest, NothingTheStoreDoesIsPrinted) {
  ::testing::internal::CaptureStderr();
  ::testing::internal::CaptureStdout();
  {
    const std::unique_ptr<IDirectoryStore> store = Open();
    EXPECT_FALSE(Replace(*store, kUser, "mail", {"a", "b"}).Ok());
    // What an open database makes of a file that is overwritten is the library's to tell.
    std::string bytes = ReadFile(path());
    bytes.replace(168, bytes.size() - 168, bytes.size() - 168, 'x');
    WriteFile(path(), bytes);
    const StoreStatus status = Replace(*store, kUser, "peloraQuotaHard", {"1"});
    EXPECT_FALSE(status.Ok());
    EXPECT_THAT(status.text, AllOf(HasSubstr("'" + path() + "'"), Not(HasSubstr("\n"))));
    std::unique_ptr<IDirectoryStore> none;
    EXPECT_FALSE(OpenLdbStore(File("missing.ldb"), {}, none).Ok());
  }
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace pelora::ldap
