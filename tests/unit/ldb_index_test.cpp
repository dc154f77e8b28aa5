// SPDX-License-Identifier: Apache-2.0
// What adding an object to a directory file writes, however many there are already.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <tdb.h>

#include <map>
#include <memory>

#include "tests/unit/ldb_bench.h"

namespace pelora::ldap {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct TdbClose {
  void operator()(tdb_context* file) const { tdb_close(file); }
};

/// The sizes of a file's records, by their keys.
using RecordSizes = std::map<std::string, std::size_t>;

RecordSizes SizesOf(const std::string& path) {
  const std::unique_ptr<tdb_context, TdbClose> file(
      tdb_open(path.c_str(), 0, TDB_DEFAULT, O_RDONLY, 0));
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

}  // namespace
}  // namespace pelora::ldap
