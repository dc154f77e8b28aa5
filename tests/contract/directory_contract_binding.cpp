// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <optional>

#include "tests/contract/directory_contract.h"
#include "tests/support/variant_text.h"

namespace pelora::contract {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST_P(DirectoryContract, BindsAnObjectByItsPath) {
  AddUser(kUser, {{"mail", {"ada@example.test"}}});
  const Ref<IADs> object = Bind(kUser);
  ASSERT_TRUE(object);
  EXPECT_EQ(ValueOf(*object, "mail"), Variant::String("ada@example.test"));
}

TEST_P(DirectoryContract, PathsCompareWithoutCase) {
  AddUser(kUser, {{"mail", {"ada@example.test"}}});
  const Ref<IADs> object = Bind("cn=ADA brandt");
  ASSERT_TRUE(object);
  EXPECT_EQ(ValueOf(*object, "mail"), Variant::String("ada@example.test"));
}

TEST_P(DirectoryContract, BindsNamesWithACommaASlashAndLettersOfAnyScript) {
  struct Name {
    const char* rdn;
    const char* in_path;
  };
  constexpr Name kNames[] = {
      {"CN=Brandt\\, Ada", "CN=Brandt\\, Ada"}, {"CN=Lab A/B", "CN=Lab A\\/B"},
      {"CN=Jörg Größel", "CN=Jörg Größel"},     {"CN=Ελένη Άννα", "CN=Ελένη Άννα"},
      {"CN=Ольга Щука", "CN=Ольга Щука"},       {"CN=林 美咲", "CN=林 美咲"}};
  for (const Name& name : kNames) {
    AddUser(name.rdn, {{"mail", {name.rdn}}});
    const Ref<IADs> object = Bind(name.in_path);
    ASSERT_TRUE(object) << name.rdn;
    EXPECT_EQ(ValueOf(*object, "mail"), Variant::String(name.rdn));
  }
}

TEST_P(DirectoryContract, ServesTheRootEntry) {
  Ref<IADs> root;
  const std::string path = Directory().PathPrefix() + "rootDSE";
  ASSERT_EQ(Service().ADsOpenObject(path, std::nullopt, std::nullopt, ADS_SECURE_AUTHENTICATION,
                                    IID_IADs, root),
            S_OK);
  ASSERT_TRUE(root);
  const Variant base = ValueOf(*root, "defaultNamingContext");
  ASSERT_EQ(base.type(), VT_BSTR);
  EXPECT_THAT(Directory().Container(), ::testing::EndsWith(base.string()));
}

TEST_P(DirectoryContract, AMissingObjectIsNoSuchObject) {
  AddUser(kUser);
  Ref<IADs> object = Bind(kUser);
  EXPECT_EQ(Service().ADsGetObject(PathOf("CN=Nobody"), IID_IADs, object), kNoSuchObject);
  EXPECT_FALSE(object);
  object = Bind(kUser);
  EXPECT_EQ(Service().ADsOpenObject(PathOf("CN=Nobody"), std::nullopt, std::nullopt,
                                    ADS_SECURE_AUTHENTICATION, IID_IADs, object),
            kNoSuchObject);
  EXPECT_FALSE(object);
}

TEST_P(DirectoryContract, ABadPathIsRefused) {
  AddUser(kUser);
  const std::string dn = DnOf(kUser);
  const std::string prefix = Directory().PathPrefix();
  const std::vector<std::string> paths = {
      "LDAP://", "LDAP://nonsense", prefix + "CN=bare/slash," + dn, prefix + "no equals," + dn};
  for (const std::string& path : paths) {
    Ref<IADs> object = Bind(kUser);
    EXPECT_EQ(Service().ADsGetObject(path, IID_IADs, object), E_ADS_BAD_PATHNAME) << path;
    EXPECT_FALSE(object) << path;
  }
}

TEST_P(DirectoryContract, APathOfNoKnownProviderIsRefused) {
  AddUser(kUser);
  const std::string dn = DnOf(kUser);
  for (const std::string& path : {std::string(), std::string("LDAP"), dn, "ldaps://" + dn}) {
    Ref<IADs> object = Bind(kUser);
    EXPECT_TRUE(FAILED(Service().ADsGetObject(path, IID_IADs, object))) << path;
    EXPECT_FALSE(object) << path;
  }
}

TEST_P(DirectoryContract, OffersTheInterfacesOfTheObjectsClass) {
  Directory().Add(ObjectKind::kUser, DnOf(kUser), {});
  Directory().Add(ObjectKind::kGroup, DnOf("CN=Everyone"), {});
  Directory().Add(ObjectKind::kOrganizationalUnit, DnOf("OU=Sales"), {});
  struct Row {
    const char* rdn;
    Guid iid;
    HRESULT status;
  };
  const Row rows[] = {
      {kUser, IID_IADs, S_OK},
      {kUser, IID_IADsUser, S_OK},
      {kUser, IID_IADsOU, E_NOINTERFACE},
      {"CN=Everyone", IID_IADs, S_OK},
      {"CN=Everyone", IID_IADsUser, E_NOINTERFACE},
      {"CN=Everyone", IID_IADsOU, E_NOINTERFACE},
      {"CN=Everyone", IID_IADsContainer, E_NOINTERFACE},
      {"OU=Sales", IID_IADs, S_OK},
      {"OU=Sales", IID_IADsUser, E_NOINTERFACE},
      {"OU=Sales", IID_IADsOU, S_OK},
      {"OU=Sales", IID_IADsContainer, S_OK},
  };
  for (const Row& row : rows) {
    Ref<IADs> object = Bind(kUser);
    EXPECT_EQ(Service().ADsGetObject(PathOf(row.rdn), row.iid, object), row.status)
        << row.rdn << ", row " << &row - rows;
    EXPECT_EQ(static_cast<bool>(object), row.status == S_OK);
  }
}

TEST_P(DirectoryContract, ABoundObjectAnswersForItsInterfaces) {
  const Ref<IADs> object = BindUserWith({{"mail", {"ada@example.test"}}});
  ASSERT_TRUE(object);
  void* found = nullptr;
  ASSERT_EQ(object->QueryInterface(IID_IADsUser, &found), S_OK);
  const auto user = Ref<IADs>::Adopt(static_cast<IADs*>(found));
  EXPECT_EQ(ValueOf(*user, "mail"), Variant::String("ada@example.test"));

  found = &found;
  EXPECT_EQ(object->QueryInterface(IID_IADsOU, &found), E_NOINTERFACE);
  EXPECT_EQ(found, nullptr);
}

TEST_P(DirectoryContract, AnObjectLivesAsLongAsItIsHeld) {
  Ref<IADs> first = BindUserWith({{"mail", {"ada@example.test"}}});
  ASSERT_TRUE(first);
  const Ref<IADs> second = first;
  first.Reset();
  EXPECT_EQ(ValueOf(*second, "mail"), Variant::String("ada@example.test"));
}

TEST_P(DirectoryContract, BindsManyPathsInTheirOrder) {
  const std::vector<std::string> names = {"CN=Three", "CN=One", "CN=Two", "CN=One"};
  std::vector<std::string> paths;
  for (const std::string& name : names) {
    if (name != "CN=One" || paths.size() < 2) AddUser(name, {{"mail", {name}}});
    paths.push_back(PathOf(name));
  }
  std::vector<Ref<IADs>> objects;
  ASSERT_EQ(Service().BindPaths(paths, IID_IADs, objects), S_OK);
  ASSERT_THAT(objects, SizeIs(names.size()));
  for (std::size_t at = 0; at < names.size(); ++at) {
    EXPECT_EQ(ValueOf(*objects[at], "mail"), Variant::String(names[at]));
  }
}

TEST_P(DirectoryContract, TheFirstPathThatFailsKeepsNothing) {
  AddUser(kUser);
  Directory().Add(ObjectKind::kGroup, DnOf("CN=Everyone"), {});
  std::vector<Ref<IADs>> objects = {Bind(kUser)};
  const std::vector<std::string> missing_first = {PathOf(kUser), PathOf("CN=Nobody"),
                                                  PathOf("CN=Everyone")};
  EXPECT_EQ(Service().BindPaths(missing_first, IID_IADsUser, objects), kNoSuchObject);
  EXPECT_THAT(objects, IsEmpty());

  objects = {Bind(kUser)};
  const std::vector<std::string> class_first = {PathOf(kUser), PathOf("CN=Everyone"),
                                                PathOf("CN=Nobody")};
  EXPECT_EQ(Service().BindPaths(class_first, IID_IADsUser, objects), E_NOINTERFACE);
  EXPECT_THAT(objects, IsEmpty());

  objects = {Bind(kUser)};
  EXPECT_EQ(Service().BindPaths({}, IID_IADs, objects), S_OK);
  EXPECT_THAT(objects, IsEmpty());
}

}  // namespace
}  // namespace pelora::contract
