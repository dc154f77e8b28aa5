// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <stdexcept>

#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/sample_company.h"
#include "tests/unit/ldb_bench.h"

namespace pelora::ldap {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;
using Operation = Modification::Operation;

class LdbStoreTest : public LdbBench {
 protected:
  std::vector<std::string> Names(const SearchRequest& request) {
    std::vector<std::string> names;
    const StoreStatus status = store_->Search(request, [&](Entry entry) {
      names.push_back(entry.dn);
      return true;
    });
    EXPECT_TRUE(status.Ok()) << status.text;
    return names;
  }
  StoreStatus Modify(const std::string& dn, const std::vector<Modification>& modifications) {
    return store_->Modify(dn, modifications);
  }

  std::unique_ptr<IDirectoryStore> store_ = Open();
};

TEST_F(LdbStoreTest, TheRootNamesTheContexts) {
  Entry root;
  ASSERT_TRUE(store_->ReadRoot(root).Ok());
  EXPECT_THAT(root.attributes["defaultNamingContext"], ElementsAre(kBase));
  EXPECT_THAT(root.attributes["configurationNamingContext"],
              ElementsAre("CN=Configuration,DC=linden-werke,DC=example"));
  EXPECT_THAT(root.attributes["schemaNamingContext"],
              ElementsAre("CN=Schema,CN=Configuration,DC=linden-werke,DC=example"));
  EXPECT_EQ(root.dn, "");
}

TEST_F(LdbStoreTest, TheSchemaIsRead) {
  const Schema& schema = store_->schema();
  ASSERT_TRUE(schema.Find("peloraAccount"));
  EXPECT_EQ(schema.Find("peloraAccount")->syntax, Syntax::kInteger);
  EXPECT_TRUE(schema.Find("peloraAccount")->is_single_valued);
  EXPECT_EQ(schema.Find("otherMailbox")->syntax, Syntax::kString);
  EXPECT_FALSE(schema.Find("otherMailbox")->is_single_valued);
  EXPECT_EQ(schema.Find("manager")->syntax, Syntax::kDistinguishedName);
  EXPECT_EQ(schema.Find("showInAdvancedViewOnly")->syntax, Syntax::kBoolean);
  EXPECT_EQ(schema.Find("logonHours")->syntax, Syntax::kOctets);
  EXPECT_EQ(schema.Find("mail")->range_upper, 256);
  EXPECT_FALSE(schema.Find("noSuchAttribute"));
}

TEST_F(LdbStoreTest, ReadsTheWholeEntryOrTheNamedAttributes) {
  Entry entry;
  ASSERT_TRUE(store_->Read(kUser, {}, entry).Ok());
  EXPECT_EQ(entry.dn, kUser);
  EXPECT_THAT(entry.attributes["distinguishedName"], ElementsAre(kUser));
  EXPECT_THAT(entry.attributes["cn"], ElementsAre("Heike Naumann"));
  EXPECT_THAT(entry.attributes["NAME"], ElementsAre("Heike Naumann"));
  EXPECT_THAT(entry.attributes["objectclass"],
              UnorderedElementsAre("top", "person", "organizationalPerson", "user"));

  const std::vector<std::string> wanted = {"MAIL", "peloraHidden"};
  ASSERT_TRUE(store_->Read(kUser, wanted, entry).Ok());
  EXPECT_THAT(entry.attributes, SizeIs(1));
  EXPECT_THAT(entry.attributes["mail"], ElementsAre("h.naumann@linden-werke.example"));
}

TEST_F(LdbStoreTest, NamesAreFoundInAnyCaseAndScript) {
  for (const char* const dn : {
           "cn=heike NAUMANN,ou=fertigung,ou=LINDEN-WERKE chemnitz,dc=Linden-Werke,dc=EXAMPLE",
           "CN=MEYER\\, ANNA,OU=GESCHÄFTSLEITUNG,OU=Linden-Werke Chemnitz,DC=linden-werke,"
           "DC=example",
           "CN=meyer\\2C anna,OU=geschäftsleitung,OU=Linden-Werke Chemnitz,DC=linden-werke,"
           "DC=example",
           "CN=messplatz a/b,OU=labor i/o,OU=Entwicklung,OU=Linden-Werke Chemnitz,"
           "DC=linden-werke,DC=example",
           "CN=ΝΊΚΟΣ ξένος,OU=παραγωγή,OU=Linden Optiki Thessaloniki,DC=linden-werke,DC=example",
           "CN=иван ЩЕРБАК,OU=СКЛАД,OU=Linden Servis Beograd,DC=linden-werke,DC=example",
           "CN=林田 美咲,OU=entwicklung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example",
       }) {
    Entry entry;
    const StoreStatus status = store_->Read(dn, {}, entry);
    EXPECT_TRUE(status.Ok()) << dn << ": " << status.text;
  }
}

TEST_F(LdbStoreTest, NamesAreDeliveredAsADirectoryWritesThem) {
  EXPECT_THAT(
      Names({.base = kBase,
             .scope = SearchScope::kSubtree,
             .filter = "(|(cn=Meyer, Anna)(cn=Messplatz A/B))",
             .attributes = {}}),
      UnorderedElementsAre("CN=Meyer\\, Anna,OU=Geschäftsleitung,OU=Linden-Werke Chemnitz,"
                           "DC=linden-werke,DC=example",
                           "CN=Messplatz A/B,OU=Labor I/O,OU=Entwicklung,OU=Linden-Werke Chemnitz,"
                           "DC=linden-werke,DC=example"));
}

TEST_F(LdbStoreTest, WhatIsNotThereIsNoSuchObject) {
  Entry entry;
  EXPECT_EQ(store_->Read("CN=Nobody,DC=linden-werke,DC=example", {}, entry).code,
            kLdapNoSuchObject);
  EXPECT_EQ(Replace(*store_, "CN=Nobody,DC=linden-werke,DC=example", "mail", {"x"}).code,
            kLdapNoSuchObject);
  const auto ignore = [](const Entry&) { return true; };
  for (const SearchScope scope :
       {SearchScope::kBase, SearchScope::kOneLevel, SearchScope::kSubtree}) {
    EXPECT_EQ(
        store_
            ->Search(
                {.base = "OU=Nowhere,DC=linden-werke,DC=example", .scope = scope, .attributes = {}},
                ignore)
            .code,
        kLdapNoSuchObject);
  }
}

TEST_F(LdbStoreTest, WhatIsNoNameIsRefused) {
  const auto ignore = [](const Entry&) { return true; };
  for (const char* const dn : {"", "nonsense", "@ROOTDSE", "@ATTRIBUTES", "CN=a,,DC=b"}) {
    Entry entry;
    EXPECT_EQ(store_->Read(dn, {}, entry).code, kLdapInvalidDnSyntax) << dn;
    EXPECT_EQ(Replace(*store_, dn, "mail", {"x"}).code, kLdapInvalidDnSyntax) << dn;
    EXPECT_EQ(store_->Add({.dn = dn, .attributes = {}}).code, kLdapInvalidDnSyntax) << dn;
    EXPECT_EQ(store_->Search({.base = dn, .attributes = {}}, ignore).code, kLdapInvalidDnSyntax)
        << dn;
  }
}

TEST_F(LdbStoreTest, SearchesTheScopeThatIsAskedFor) {
  const std::string unit = "OU=Entwicklung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
  const auto count = [&](SearchScope scope) {
    return Names({.base = unit, .scope = scope, .attributes = {}}).size();
  };
  EXPECT_EQ(count(SearchScope::kBase), 1U);
  EXPECT_EQ(count(SearchScope::kOneLevel), 7U);
  EXPECT_EQ(count(SearchScope::kSubtree), 11U);
}

TEST_F(LdbStoreTest, HandsOverEachEntryOnceHoweverManyThereAre) {
  // More than are handed over before the others are looked for.
  constexpr std::size_t kMany = 600;
  std::string ldif(SampleCompanyLdif());
  for (std::size_t number = 0; number < kMany; ++number) {
    ldif += "\ndn: CN=Contact " + std::to_string(number) +
            ",OU=Vertrieb,OU=Linden-Werke Chemnitz," + kBase +
            "\nobjectClass: top\nobjectClass: contact\ndepartment: Many\n";
  }
  const StoreStatus made = CreateLdbDirectory(File("many.ldb"), ldif);
  ASSERT_TRUE(made.Ok()) << made.text;
  const StoreStatus opened = OpenLdbStore(File("many.ldb"), {}, store_);
  ASSERT_TRUE(opened.Ok()) << opened.text;
  std::vector<std::string> names = Names({.base = kBase,
                                          .scope = SearchScope::kSubtree,
                                          .filter = "(department=Many)",
                                          .attributes = {"cn"}});
  EXPECT_EQ(names.size(), kMany);
  std::ranges::sort(names);
  EXPECT_EQ(std::ranges::adjacent_find(names), names.end());
}

TEST_F(LdbStoreTest, FiltersCompareAsTheSyntaxSays) {
  const auto count = [&](const std::string& filter) {
    return Names(
               {.base = kBase, .scope = SearchScope::kSubtree, .filter = filter, .attributes = {}})
        .size();
  };
  EXPECT_EQ(count("(mail=H.NAUMANN@linden-werke.EXAMPLE)"), 1U);
  EXPECT_EQ(count("(displayName=JÜRGEN weißflog)"), 1U);
  EXPECT_EQ(count("(sn=ΠΑΠΠΆ)"), 1U);
  EXPECT_EQ(count("(peloraResourceType=room)"), 4U);
  EXPECT_EQ(count("(peloraQuotaHard=1000)"), 1U);
  EXPECT_EQ(count("(peloraQuotaHard>=2000)"), 3U);
  EXPECT_EQ(count("(cn=Nobody)"), 0U);
}

TEST_F(LdbStoreTest, AFilterThatIsNoneIsRefused) {
  // The last ones name matching rules that a domain may have.
  for (const char* filter :
       {"((broken", "(|(cn=a)(!(member:1.2.840.113556.1.4.1941:=CN=Ada)))", "(cn:dn:=Ada)"}) {
    const StoreStatus status = store_->Search(
        {.base = kBase, .scope = SearchScope::kSubtree, .filter = filter, .attributes = {}},
        [](const Entry&) { return true; });
    EXPECT_EQ(status.code, kLdapFilterError) << filter;
    EXPECT_THAT(status.text, HasSubstr(filter));
  }
  const StoreStatus status =
      store_->Search({.base = kBase,
                      .scope = SearchScope::kSubtree,
                      .filter = "(&(cn=*)(userAccountControl:1.2.840.113556.1.4.803:=2))",
                      .attributes = {}},
                     [](const Entry&) { return true; });
  EXPECT_TRUE(status.Ok()) << status.text;
}

TEST_F(LdbStoreTest, ASinkMayStopTheSearchAndAskForMore) {
  int taken = 0;
  const StoreStatus status = store_->Search({.base = kBase,
                                             .scope = SearchScope::kSubtree,
                                             .filter = "(objectClass=user)",
                                             .attributes = {"cn"}},
                                            [&](const Entry& found) {
                                              Entry whole;
                                              EXPECT_TRUE(store_->Read(found.dn, {}, whole).Ok());
                                              return ++taken < 3;
                                            });
  EXPECT_TRUE(status.Ok()) << status.text;
  EXPECT_EQ(taken, 3);
}

TEST_F(LdbStoreTest, WhatASinkThrowsComesThroughAndTheStoreGoesOn) {
  const SearchRequest request = {
      .base = kBase, .scope = SearchScope::kSubtree, .attributes = {"cn"}};
  EXPECT_THROW((void)store_->Search(
                   request, [](const Entry&) -> bool { throw std::runtime_error("no more"); }),
               std::runtime_error);
  EXPECT_THAT(Names({.base = kUser, .attributes = {"cn"}}), SizeIs(1));
}

TEST_F(LdbStoreTest, AModifyIsRefusedAsAServerWould) {
  struct Row {
    Modification change;
    int code;
  };
  const std::string long_text(1025, 'x');
  const Row rows[] = {
      {{Operation::kReplace, "noSuchAttribute", {"x"}}, kLdapNoSuchAttribute},
      {{Operation::kReplace, "mail", {"a", "b"}}, kLdapConstraintViolation},
      {{Operation::kAdd, "mail", {"b"}}, kLdapConstraintViolation},
      {{Operation::kReplace, "description", {long_text}}, kLdapConstraintViolation},
      {{Operation::kReplace, "otherMailbox", {"a", "A"}}, kLdapValueExists},
      {{Operation::kReplace, "mail", {""}}, kLdapInvalidSyntax},
      {{Operation::kReplace, "peloraQuotaHard", {"x"}}, kLdapInvalidSyntax},
      {{Operation::kReplace, "peloraQuotaHard", {"4294967301"}}, kLdapInvalidSyntax},
      {{Operation::kReplace, "showInAdvancedViewOnly", {"maybe"}}, kLdapInvalidSyntax},
      {{Operation::kReplace, "manager", {"nonsense"}}, kLdapInvalidDnSyntax},
      {{Operation::kReplace, "cn", {"Other"}}, kLdapNotAllowedOnRdn},
  };
  Entry before;
  ASSERT_TRUE(store_->Read(kUser, {}, before).Ok());
  for (const Row& row : rows) {
    const StoreStatus status =
        Modify(kUser, {{Operation::kReplace, "peloraHidden", {"1"}}, row.change});
    EXPECT_EQ(status.code, row.code) << row.change.attribute << ": " << status.text;
    EXPECT_THAT(status.text, HasSubstr("'" + row.change.attribute + "'"));
    Entry after;
    ASSERT_TRUE(store_->Read(kUser, {}, after).Ok());
    EXPECT_EQ(after.attributes, before.attributes) << row.change.attribute;
  }
}

TEST_F(LdbStoreTest, AModifyChangesWhatItNamesAndNothingElse) {
  Entry before;
  ASSERT_TRUE(store_->Read(kUser, {}, before).Ok());
  ASSERT_TRUE(Modify(kUser, {{Operation::kReplace, "peloraHidden", {"1"}},
                             {Operation::kAdd, "otherMailbox", {"a@x", "b@x"}},
                             {Operation::kDelete, "otherMailbox", {"a@x", "c@x"}},
                             {Operation::kReplace, "mail", {}},
                             {Operation::kReplace, "logonHours", {std::string("\0\xFF\0", 3)}}})
                  .Ok());
  before.attributes["peloraHidden"] = {"1"};
  before.attributes["otherMailbox"] = {"b@x"};
  before.attributes["logonHours"] = {std::string("\0\xFF\0", 3)};
  before.attributes.erase("mail");
  Entry after;
  ASSERT_TRUE(Open()->Read(kUser, {}, after).Ok());
  EXPECT_EQ(after.attributes, before.attributes);
}

TEST_F(LdbStoreTest, AModifyThatChangesNothingLeavesTheFileAlone) {
  const std::string before = ReadFile(path());
  ASSERT_TRUE(Modify(kUser, {{Operation::kReplace, "peloraAccount", {"1"}},
                             {Operation::kReplace, "peloraQuotaHard", {}},
                             {Operation::kDelete, "otherMailbox", {"nobody@x"}}})
                  .Ok());
  EXPECT_TRUE(ReadFile(path()) == before);
}

TEST_F(LdbStoreTest, HoldsManyValues) {
  AttributeValues values;
  for (int number = 0; number < 3000; ++number) {
    values.push_back("alias" + std::to_string(10000 + number) + "@example.test");
  }
  ASSERT_TRUE(Replace(*store_, kUser, "otherMailbox", values).Ok());
  EXPECT_EQ(OnUser("otherMailbox"), values);
}

TEST_F(LdbStoreTest, WhatIsDoneOutlivesTheProcess) {
  store_.reset();
  const pid_t child = fork();
  if (child == 0) {
    const std::unique_ptr<IDirectoryStore> store = Open();
    const bool done = Replace(*store, kUser, "peloraQuotaHard", {"4711"}).Ok();
    if (done) raise(SIGKILL);
    _exit(1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  EXPECT_THAT(OnUser("peloraQuotaHard"), ElementsAre("4711"));
}

TEST_F(LdbStoreTest, TwoStoresOfOneFileSeeEachOther) {
  const std::unique_ptr<IDirectoryStore> other = Open();
  ASSERT_TRUE(Replace(*other, kUser, "peloraQuotaHard", {"1"}).Ok());
  EXPECT_THAT(Read(*store_, kUser, "peloraQuotaHard"), ElementsAre("1"));
  ASSERT_TRUE(Replace(*store_, kUser, "peloraQuotaHard", {"2"}).Ok());
  EXPECT_THAT(Read(*other, kUser, "peloraQuotaHard"), ElementsAre("2"));
}

TEST_F(LdbStoreTest, AddsAnEntryAndWhatFollowsFromItsName) {
  const std::string dn =
      "CN=Neu\\, Nina/2,OU=Fertigung,OU=Linden-Werke Chemnitz," + std::string(kBase);
  ASSERT_TRUE(store_
                  ->Add({.dn = dn,
                         .attributes = {{"objectClass", {"top", "person", "user"}},
                                        {"PELORAACCOUNT", {"1"}}}})
                  .Ok());
  Entry entry;
  ASSERT_TRUE(Open()->Read(dn, {}, entry).Ok());
  EXPECT_EQ(entry.dn, dn);
  EXPECT_EQ(entry.attributes,
            (AttributeMap{{"objectClass", {"top", "person", "organizationalPerson", "user"}},
                          {"cn", {"Neu, Nina/2"}},
                          {"name", {"Neu, Nina/2"}},
                          {"peloraAccount", {"1"}},
                          {"distinguishedName", {dn}}}));
  EXPECT_TRUE(entry.attributes.contains("peloraAccount"));
}

TEST_F(LdbStoreTest, AnAddIsRefusedAsAServerWould) {
  const std::string unit = "OU=Fertigung,OU=Linden-Werke Chemnitz," + std::string(kBase);
  const AttributeValues classes = {"top", "person", "user"};
  struct Row {
    Entry entry;
    int code;
  };
  const Row rows[] = {
      {{kUser, {{"objectClass", classes}}}, kLdapAlreadyExists},
      {{"cn=heike naumann," + unit, {{"objectClass", classes}}}, kLdapAlreadyExists},
      {{"CN=A,OU=Nowhere," + std::string(kBase), {{"objectClass", classes}}}, kLdapNoSuchObject},
      {{"CN=A," + unit, {{"objectClass", classes}, {"unknown", {"x"}}}}, kLdapNoSuchAttribute},
      {{"CN=A," + unit, {{"objectClass", classes}, {"mail", {"a", "b"}}}},
       kLdapConstraintViolation},
      {{"CN=A," + unit, {{"objectClass", classes}, {"mail", {""}}}}, kLdapInvalidSyntax},
      {{"CN=A," + unit, {{"mail", {"a"}}}}, kLdapObjectClassViolation},
      {{"CN=A," + unit, {{"objectClass", classes}, {"cn", {"B"}}}}, kLdapNamingViolation},
      {{"XX=A," + unit, {{"objectClass", classes}}}, kLdapNamingViolation},
  };
  const std::string before = ReadFile(path());
  for (const Row& row : rows) {
    const StoreStatus status = store_->Add(row.entry);
    EXPECT_EQ(status.code, row.code) << row.entry.dn << ": " << status.text;
  }
  EXPECT_TRUE(ReadFile(path()) == before);
}

TEST_F(LdbStoreTest, AFileThatWasRemovedOrReplacedIsNoLongerUsed) {
  const std::string bytes = ReadFile(path());
  std::filesystem::remove(path());
  Entry entry;
  for (const StoreStatus& status :
       {store_->Read(kUser, {}, entry), store_->ReadRoot(entry),
        Replace(*store_, kUser, "mail", {"x"}),
        store_->Add({.dn = "CN=A," + std::string(kBase), .attributes = {}}),
        store_->Search({.base = kBase, .attributes = {}}, [](const Entry&) { return true; })}) {
    EXPECT_EQ(status.code, kLdapUnavailable);
    EXPECT_THAT(status.text, HasSubstr(path()));
  }
  WriteFile(path(), bytes);
  EXPECT_EQ(Replace(*store_, kUser, "mail", {"x"}).code, kLdapUnavailable);
  EXPECT_TRUE(ReadFile(path()) == bytes);
}

}  // namespace
}  // namespace pelora::ldap
