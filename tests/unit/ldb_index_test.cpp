// SPDX-License-Identifier: Apache-2.0
// What a directory file keeps beside its objects so that they are found: what adding an object
// writes of it, however many there are already, and files that keep what earlier versions kept.
#include <gmock/gmock.h>

#include <cstdlib>
#include <map>
#include <memory>

#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/sample_company.h"
#include "hosts/ldap/tdb_file.h"
#include "tests/unit/ldb_bench.h"
#include "tests/unit/malloc_count.h"

namespace pelora::ldap {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Key;
using ::testing::Not;

/// The sizes of a file's records, by their keys.
using RecordSizes = std::map<std::string, std::size_t>;

RecordSizes SizesOf(const std::string& path) {
  const TdbPtr file = OpenTdbFile(path);
  if (!file) throw std::runtime_error("the file cannot be opened");
  RecordSizes sizes;
  const auto note = [](tdb_context* /*file*/, TDB_DATA key, TDB_DATA data, void* noted) {
    const std::string name(reinterpret_cast<const char*>(key.dptr), key.dsize);
    (*static_cast<RecordSizes*>(noted))[name.c_str()] = data.dsize;
    return 0;
  };
  if (tdb_traverse_read(file.get(), note, &sizes) < 0) throw std::runtime_error("no records");
  return sizes;
}

class LdbIndexTest : public LdbBench {
 protected:
  LdbIndexTest() { Add(kContainer, {{"objectClass", {"organizationalUnit"}}}); }

  void Add(const std::string& dn, const AttributeMap& attributes) {
    const StoreStatus status = store_->Add({.dn = dn, .attributes = attributes});
    ASSERT_TRUE(status.Ok()) << status.text;
  }
  /// A user with everything that is searched for.
  void AddUser(int number) {
    const std::string name = "Person " + std::to_string(number);
    const std::string address = "person" + std::to_string(number) + "@many.example";
    Add("CN=" + name + "," + kContainer, {{"objectClass", {"user"}},
                                          {"displayName", {name}},
                                          {"sAMAccountName", {"many-" + std::to_string(number)}},
                                          {"userPrincipalName", {address}},
                                          {"mail", {address}},
                                          {"otherMailbox", {"x" + address, "y" + address}},
                                          {"peloraAccount", {"1"}},
                                          {"peloraUserServer", {"mail01"}}});
  }
  /// Lets the database's own tool change a record of the file.
  void ChangeByTool(const std::string& ldif) const {
    WriteFile(File("change.ldif"), ldif);
    const std::string command = "ldbmodify -H '" + path() + "' '" + File("change.ldif") + "' >'" +
                                File("output") + "' 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0) << ReadFile(File("output"));
  }
  /// Of a copy: no program may open a file twice.
  [[nodiscard]] RecordSizes Sizes() const {
    WriteFile(File("copy.ldb"), ReadFile(path()));
    return SizesOf(File("copy.ldb"));
  }
  [[nodiscard]] std::vector<std::string> Found(const std::string& filter) {
    std::vector<std::string> names;
    const StoreStatus status = store_->Search(
        {.base = kBase, .scope = SearchScope::kSubtree, .filter = filter, .attributes = {"cn"}},
        [&](const Entry& entry) {
          names.push_back(entry.dn);
          return true;
        });
    EXPECT_TRUE(status.Ok()) << status.text;
    return names;
  }

  static inline const std::string kContainer = std::string("OU=Many,") + kBase;
  std::unique_ptr<IDirectoryStore> store_ = Open();
};

TEST_F(LdbIndexTest, NoListGrowsWithTheUsersButThatOfTheirContainer) {
  constexpr int kSome = 20;
  for (int number = 0; number < kSome; ++number) AddUser(number);
  const RecordSizes before = Sizes();
  for (int number = kSome; number < 2 * kSome; ++number) AddUser(number);
  std::vector<std::string> grown;
  for (const auto& [key, size] : Sizes()) {
    const auto known = before.find(key);
    if (known != before.end() && size > known->second) grown.push_back(key);
  }
  EXPECT_THAT(grown, ElementsAre("DN=@INDEX:@IDXONE:OU=MANY,DC=LINDEN-WERKE,DC=EXAMPLE"));
}

TEST_F(LdbIndexTest, WhatIsIndexedIsFoundAndWhatIsNotIsFoundToo) {
  for (int number = 0; number < 3; ++number) AddUser(number);
  const auto user = ElementsAre("CN=Person 1," + kContainer);
  for (const char* const filter :
       {"(cn=person 1)", "(displayName=Person 1)", "(sAMAccountName=MANY-1)",
        "(mail=person1@many.example)", "(otherMailbox=yperson1@many.example)",
        "(&(objectClass=user)(otherMailbox=xperson1@many.example))",
        "(|(mail=nobody@many.example)(otherMailbox=xperson1@many.example))",
        "(&(peloraAccount=1)(peloraUserServer=mail01)(cn=Person 1))"}) {
    EXPECT_THAT(Found(filter), user) << filter;
  }
  EXPECT_THAT(Found("(&(objectClass=user)(ou=Many))"), IsEmpty());
  EXPECT_EQ(Found("(&(objectClass=user)(peloraAccount=1)(cn=Person*))").size(), 3U);
}

TEST_F(LdbIndexTest, AFileThatIsMadeWithMoreUsersCostsAsMuchForEach) {
  const auto cost_of = [&](int users) {
    std::string ldif(SampleCompanyLdif());
    for (int number = 0; number < users; ++number) {
      const std::string name = "Person " + std::to_string(number);
      ldif += "\ndn: CN=" + name + ",OU=Vertrieb," + sample::kCompany +
              "\nobjectClass: user\nsAMAccountName: many-" + std::to_string(number) + "\n";
    }
    const std::string made = File("made-" + std::to_string(users) + ".ldb");
    return pelora::testing::MallocsOf([&] {
      const StoreStatus status = CreateLdbDirectory(made, ldif);
      EXPECT_TRUE(status.Ok()) << status.text;
    });
  };
  constexpr int kSome = 300;
  const std::size_t few = cost_of(kSome);
  const std::size_t more = cost_of(2 * kSome);
  const std::size_t most = cost_of(3 * kSome);
  // Copying a container's list for each of its users would make it a third.
  EXPECT_LT(static_cast<double>(most - more), 1.1 * static_cast<double>(more - few))
      << few << " " << more << " " << most;
}

TEST_F(LdbIndexTest, ATableHasRoomForWhatTheFileIsMadeOf) {
  constexpr std::size_t kEntries = 20'000;
  for (const std::size_t entries : {std::size_t{1}, kEntries}) {
    const std::string made = File("table-" + std::to_string(entries) + ".tdb");
    WriteFile(made, "");
    const TdbPtr file = MakeTdbFile(made, entries);
    ASSERT_TRUE(file);
    EXPECT_EQ(tdb_hash_size(file.get()), entries == kEntries ? 40'000 : 10'000);
  }
}

TEST_F(LdbIndexTest, AFileOfAnEarlierVersionWorksAndCanBeIndexedAnew) {
  // What earlier versions kept, and how the handbook has it changed.
  ChangeByTool(
      "dn: @INDEXLIST\nchangetype: modify\nreplace: @IDXATTR\n@IDXATTR: objectClass\n"
      "@IDXATTR: cn\n@IDXATTR: ou\n@IDXATTR: name\n@IDXATTR: displayName\n"
      "@IDXATTR: sAMAccountName\n@IDXATTR: userPrincipalName\n@IDXATTR: mail\n"
      "@IDXATTR: lDAPDisplayName\n@IDXATTR: peloraAccount\n-\n");
  constexpr const char* kClassList = "DN=@INDEX:OBJECTCLASS:USER";
  ASSERT_THAT(Sizes(), Contains(Key(kClassList)));
  store_ = Open();
  AddUser(0);
  const std::string handbook = ReadFile(PELORA_UPGRADING);
  const std::size_t begin = handbook.find("dn: @INDEXLIST");
  const std::size_t end = handbook.find("\nLDIF", begin);
  ASSERT_NE(end, std::string::npos);
  ChangeByTool(handbook.substr(begin, end - begin) + "\n");
  AddUser(1);
  EXPECT_THAT(Sizes(), Not(Contains(Key(kClassList))));
  EXPECT_THAT(Sizes(), Contains(Key("DN=@INDEX:OTHERMAILBOX:YPERSON0@MANY.EXAMPLE")));
  for (const char* const name : {"0", "1"}) {
    const std::string who = std::string("CN=Person ") + name + "," + kContainer;
    for (const char* const attribute : {"otherMailbox=x", "mail="}) {
      EXPECT_THAT(Found(std::string("(") + attribute + "person" + name + "@many.example)"),
                  ElementsAre(who));
    }
  }
}

}  // namespace
}  // namespace pelora::ldap
