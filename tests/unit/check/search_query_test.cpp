// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/check/search_query.h"

#include <gtest/gtest.h>

#include <string>

namespace pelora::session {
namespace {

std::string Nested(int depth) {
  std::string text;
  for (int at = 0; at < depth; ++at) text += "(!";
  text += "(a=b)";
  return text + std::string(static_cast<std::size_t>(depth), ')');
}

TEST(SearchQuery, AreComparisonsInParentheses) {
  for (const char* query :
       {"(cn=Ada)", "(objectClass=*)", "(cn=)", "(peloraQuotaHard>=100)", "(a<=b)", "(cn~=ada)",
        "(cn=*ada*)", "(cn=a*d*a)", "(2.5.4.3=Ada)", "(cn;lang-de=Ada)", "(cn;binary;x=Ada)",
        "(o=a=b)", "(cn=Ada \xC3\x96nder)", "(cn=a\\2ab)", "(cn=\\28\\29)", "(cn=a b)"}) {
    EXPECT_TRUE(IsSearchQuery(query)) << query;
  }
}

TEST(SearchQuery, MayBeMadeOfOthers) {
  for (const char* query : {"(&(a=b)(c=d))", "(|(a=b)(c=d)(e=f))", "(!(a=b))", "(&(a=b))",
                            "(&(objectClass=user)(!(objectClass=computer)))", "(& (a=b) (c=d) )",
                            "(! (a=b))", " (a=b) ", "( &\n  (a=b)\n  (c=d)\n)"}) {
    EXPECT_TRUE(IsSearchQuery(query)) << query;
  }
}

TEST(SearchQuery, MayHaveAMatchingRule) {
  for (const char* query :
       {"(memberOf:1.2.840.113556.1.4.1941:=CN=x,DC=y)", "(cn:caseExactMatch:=Fred)", "(cn:=Betty)",
        "(sn:dn:2.4.6.8.10:=Barney)", "(o:dn:=Ace)", "(:1.2.3:=Wilma)", "(:dn:2.4.6.8.10:=Dino)",
        "(groupType:1.2.840.113556.1.4.803:=2147483648)", "(:dnsMatch:=x)"}) {
    EXPECT_TRUE(IsSearchQuery(query)) << query;
  }
  for (const char* query : {"(:=x)", "(:dn:=x)", "(cn::=x)", "(cn:1.2.3:4.5:=x)", "(cn:dn:=*)",
                            "(cn:1..2:=x)", "(cn:dn:dn:dn:=x)"}) {
    EXPECT_FALSE(IsSearchQuery(query)) << query;
  }
}

TEST(SearchQuery, NeedTheirParentheses) {
  for (const char* query : {"",
                            " ",
                            "cn=Ada",
                            "(cn=Ada",
                            "cn=Ada)",
                            "(cn=Ada))",
                            "((cn=Ada))",
                            "(cn=Ada)(sn=L)",
                            "()",
                            "(",
                            ")",
                            "(&)",
                            "(|)",
                            "(!)",
                            "(&(a=b)",
                            "(&a=b)",
                            "(!(a=b)(c=d))",
                            "(!a=b)",
                            "(&(a=b)x)",
                            "x(a=b)",
                            "(a=b)x",
                            "(!!(a=b))",
                            "(&|(a=b))"}) {
    EXPECT_FALSE(IsSearchQuery(query)) << query;
  }
}

TEST(SearchQuery, NeedAnAttribute) {
  for (const char* query :
       {"(=Ada)", "(cn)", "(1cn=x)", "(c n=x)", "(cn;=x)", "(;x=y)", "(2.=x)", "(.2=x)", "(2=x)",
        "(2.05=x)", "(-cn=x)", "(c\xC3\xA4n=x)", "(>=x)", "(cn_x=y)", "(cn =x)"}) {
    EXPECT_FALSE(IsSearchQuery(query)) << query;
  }
}

TEST(SearchQuery, HaveTheirOwnSignsEscapedInValues) {
  for (const char* query : {"(cn=a(b)", "(cn=a(b))", "(cn=a\\b)", "(cn=a\\2)", "(cn=a\\zz)",
                            "(cn=\\)", "(cn>=a*)", "(cn~=*)"}) {
    EXPECT_FALSE(IsSearchQuery(query)) << query;
  }
  EXPECT_FALSE(IsSearchQuery(std::string("(cn=a\0)", 7)));
}

TEST(SearchQuery, AreNotNestedWithoutEnd) {
  EXPECT_TRUE(IsSearchQuery(Nested(100)));
  EXPECT_FALSE(IsSearchQuery(Nested(101)));
  EXPECT_FALSE(IsSearchQuery(Nested(1'000'000)));
}

}  // namespace
}  // namespace pelora::session
