// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/ldap_status.h"
#include "tests/unit/ldb_bench.h"

namespace pelora::ldap {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* kFrame = R"(dn: DC=x
objectClass: domainDNS

dn: CN=Configuration,DC=x
objectClass: configuration

dn: CN=Schema,CN=Configuration,DC=x
objectClass: dMD

)";

std::string Definition(const std::string& name, const std::string& syntax,
                       const std::string& single) {
  return "dn: CN=" + name +
         ",CN=Schema,CN=Configuration,DC=x\nobjectClass: attributeSchema\nlDAPDisplayName: " +
         name + "\nattributeSyntax: " + syntax + "\nisSingleValued: " + single + "\n\n";
}

/// A small directory to which tests append entries.
std::string Minimal() {
  std::string text = kFrame;
  for (const char* const name : {"cn", "dc", "name", "mail", "lDAPDisplayName", "isSingleValued"}) {
    text += Definition(name, "2.5.5.12", "TRUE");
  }
  text += Definition("objectClass", "2.5.5.2", "FALSE");
  text += Definition("attributeSyntax", "2.5.5.2", "TRUE");
  text += Definition("manager", "2.5.5.1", "TRUE");
  text += Definition("peloraAccount", "2.5.5.9", "TRUE");
  return text;
}

class LdbCreateTest : public ::testing::Test {
 protected:
  StoreStatus Create(const std::string& ldif) { return CreateLdbDirectory(path_, ldif); }
  /// What is made of the minimal directory and this text.
  StoreStatus CreateWith(const std::string& ldif) { return Create(Minimal() + ldif); }
  [[nodiscard]] Entry Read(const std::string& dn) const {
    std::unique_ptr<IDirectoryStore> store;
    Entry entry;
    StoreStatus status = OpenLdbStore(path_, {}, store);
    if (status.Ok()) status = store->Read(dn, {}, entry);
    EXPECT_TRUE(status.Ok()) << status.text;
    return entry;
  }
  [[nodiscard]] bool IsFolderEmpty() const { return std::filesystem::is_empty(folder_.path()); }
  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::string File(const std::string& name) const { return folder_.File(name); }

 private:
  pelora::testing::TemporaryFolder folder_;
  std::string path_ = folder_.File("new.ldb");
};

TEST_F(LdbCreateTest, MakesADirectoryFromEntries) {
  ASSERT_EQ(CreateWith("dn: CN=Ada,DC=x\nobjectClass: top\nobjectClass: user\n"
                       "MAIL: ada@example.test\npeloraaccount: 1\n")
                .text,
            "");
  const Entry entry = Read("cn=ada,dc=X");
  EXPECT_EQ(entry.dn, "CN=Ada,DC=x");
  EXPECT_EQ(entry.attributes, (AttributeMap{{"objectClass", {"top", "user"}},
                                            {"cn", {"Ada"}},
                                            {"name", {"Ada"}},
                                            {"mail", {"ada@example.test"}},
                                            {"peloraAccount", {"1"}},
                                            {"distinguishedName", {"CN=Ada,DC=x"}}}));
  EXPECT_EQ(entry.attributes.find("mail")->first, "mail");
}

TEST_F(LdbCreateTest, ReadsFoldedEncodedAndCommentedText) {
  ASSERT_EQ(CreateWith("# a comment\n\n\n# another\ndn:: Q049SsO2cmcsREM9eA==\nobjectClass: user\n"
                       "mail:: am9lcmdA\n ZXhhbXBsZS50ZXN0\n# inside\n  a comment\npelora\n "
                       "Account: 1\n\n# at the end")
                .text,
            "");
  const Entry entry = Read("CN=jÖRG,DC=x");
  EXPECT_THAT(entry.attributes.at("mail"), ElementsAre("joerg@example.test"));
  EXPECT_THAT(entry.attributes.at("peloraAccount"), ElementsAre("1"));
  EXPECT_THAT(entry.attributes.at("cn"), ElementsAre("Jörg"));
}

TEST_F(LdbCreateTest, ReadsTextWithLineEndsOfAnotherSystem) {
  std::string text = Minimal() + "dn: CN=Ada,DC=x\nobjectClass: user\nmail: ada@x\n";
  for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2) {
    text.insert(at, "\r");
  }
  ASSERT_EQ(Create(text).text, "");
  EXPECT_THAT(Read("CN=Ada,DC=x").attributes.at("mail"), ElementsAre("ada@x"));
}

TEST_F(LdbCreateTest, TheFileBelongsToTheUserAlone) {
  ASSERT_TRUE(CreateWith("").Ok());
  struct stat info {};
  ASSERT_EQ(stat(path().c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777U, 0600U);
}

TEST_F(LdbCreateTest, AnExistingFileIsRefusedAndStaysAsItIs) {
  WriteFile(path(), "precious");
  const StoreStatus status = CreateWith("");
  EXPECT_EQ(status.code, kLdapAlreadyExists);
  EXPECT_THAT(status.text, AllOf(HasSubstr(path()), HasSubstr("File exists")));
  EXPECT_EQ(ReadFile(path()), "precious");

  std::filesystem::remove(path());
  std::filesystem::create_symlink(File("nowhere"), path());
  EXPECT_EQ(CreateWith("").code, kLdapAlreadyExists);
  EXPECT_FALSE(std::filesystem::exists(File("nowhere")));
}

TEST_F(LdbCreateTest, AFolderThatIsNotThereIsNamed) {
  const StoreStatus status = CreateLdbDirectory(File("no/folder/new.ldb"), Minimal());
  EXPECT_EQ(status.code, kLdapServerDown);
  EXPECT_THAT(status.text, AllOf(HasSubstr("no/folder/new.ldb"), HasSubstr("No such file")));
}

TEST_F(LdbCreateTest, RefusesWhatIsWrongAndSaysWhere) {
  const std::string before = Minimal();
  const std::string line =
      "line " + std::to_string(1 + std::count(before.begin(), before.end(), '\n'));
  struct Row {
    const char* ldif;
    int code;
    const char* reason;
  };
  const Row rows[] = {
      {"dn: CN=A,DC=x\nobjectClass: user\nnovelty: 1\n", kLdapNoSuchAttribute, "'novelty'"},
      {"dn: CN=A,DC=x\nobjectClass: user\nmail: a\nmail: b\n", kLdapConstraintViolation, "'mail'"},
      {"dn: CN=A,DC=x\nobjectClass: user\npeloraAccount: yes\n", kLdapInvalidSyntax,
       "'peloraAccount'"},
      {"dn: CN=A,DC=x\nobjectClass: user\nmanager: nobody\n", kLdapInvalidDnSyntax, "'manager'"},
      {"dn: CN=A,DC=x\nobjectClass: user\nobjectClass: user\n", kLdapValueExists, "'objectClass'"},
      {"dn: CN=A,DC=x\nobjectClass: user\ncn: B\n", kLdapNamingViolation, "'cn'"},
      {"dn: XX=A,DC=x\nobjectClass: user\n", kLdapNamingViolation, "XX"},
      {"dn: CN=A,CN=Nowhere,DC=x\nobjectClass: user\n", kLdapNoSuchObject, "above is missing"},
      {"dn: DC=other\nobjectClass: domainDNS\n", kLdapNoSuchObject, "above is missing"},
      {"dn: cn=schema,cn=CONFIGURATION,dc=X\nobjectClass: dMD\n", kLdapAlreadyExists, "twice"},
      {"dn: CN=B,CN=Schema,CN=Configuration,DC=x\nobjectClass: attributeSchema\n"
       "lDAPDisplayName: b\nattributeSyntax: 2.5.5.99\nisSingleValued: TRUE\n",
       kLdapOther, "not understood"},
      {"dn: CN=B,CN=Schema,CN=Configuration,DC=x\nobjectClass: attributeSchema\n"
       "lDAPDisplayName: b\nattributeSyntax: 2.5.5.12\n",
       kLdapOther, "not understood"},
      {"dn: CN=B,CN=Schema,CN=Configuration,DC=x\nobjectClass: attributeSchema\n"
       "lDAPDisplayName: b\nattributeSyntax: 2.5.5.12\nisSingleValued: TRUE\nrangeUpper: many\n",
       kLdapOther, "not understood"},
      {"dn: not a name\nobjectClass: user\n", kLdapOther, "no LDIF"},
      {"dn: @INDEXLIST\n@IDXATTR: cn\n", kLdapOther, "no distinguished name"},
      {"dn: CN=A,DC=x\nchangetype: delete\n", kLdapOther, "a change"},
      {"dn: CN=A,DC=x\nchangetype: modify\nreplace: mail\nmail: a\n", kLdapOther, "a change"},
      {"objectClass: user\n", kLdapOther, "no LDIF"},
      {"not LDIF at all\n", kLdapOther, "no LDIF"},
      {"dn: CN=A,DC=x\nmail: a\n", kLdapObjectClassViolation, "no class"},
      {"dn: CN=A,DC=x\nno colon\nobjectClass: user\n", kLdapOther, "no LDIF"},
      {"dn: CN=A,DC=x\nobjectClass: user\n: nameless\n", kLdapOther, "no LDIF"},
      {"dn: CN=A,DC=x\nobjectClass: user\nmail:: !!!\n", kLdapOther, "no LDIF"},
      {"dn: CN=A,DC=x\nobjectClass: user\nmail:: YWJ\n", kLdapOther, "no LDIF"},
      {"dn: CN=A,DC=x\nobjectClass: user\nmail:: YW=j\n", kLdapOther, "no LDIF"},
      {"dn: CN=A,DC=x\nobjectClass: user\nmail:< file:///etc/hostname\n", kLdapOther, "no LDIF"},
  };
  for (const Row& row : rows) {
    const StoreStatus status = CreateWith(row.ldif);
    EXPECT_EQ(status.code, row.code) << row.ldif << status.text;
    EXPECT_THAT(status.text, AllOf(HasSubstr("'" + path() + "'"), HasSubstr(line),
                                   HasSubstr(row.reason), Not(HasSubstr("\n"))));
    EXPECT_TRUE(IsFolderEmpty()) << row.ldif;
    std::filesystem::remove(path());
  }
}

TEST_F(LdbCreateTest, TheLineIsTheOneOfTheEntry) {
  const std::string before = Minimal();
  const auto lines = std::count(before.begin(), before.end(), '\n');
  const StoreStatus status = CreateWith(
      "\n# a comment\ndn: CN=A,DC=x\nobjectClass: user\nmail: a\n b\n\n\n"
      "dn: CN=B,DC=x\nobjectClass: user\nnovelty: 1\n");
  EXPECT_THAT(status.text, HasSubstr("line " + std::to_string(lines + 9) + ","));
  EXPECT_THAT(status.text, HasSubstr("entry 'CN=B,DC=x'"));
}

TEST_F(LdbCreateTest, TextWithoutADomainIsRefused) {
  for (const std::string& ldif : {std::string(), std::string("\n\n# nothing\n"),
                                  std::string("dn: CN=x\nobjectClass: user\n")}) {
    EXPECT_THAT(Create(ldif).text, HasSubstr("no entry of class domainDNS"));
  }
  EXPECT_THAT(Create(Minimal() + std::string("\0dn: CN=A,DC=x\n", 15)).text, HasSubstr("no LDIF"));
  EXPECT_TRUE(IsFolderEmpty());
}

}  // namespace
}  // namespace pelora::ldap
