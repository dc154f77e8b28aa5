// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/check/mail_address.h"

#include <gtest/gtest.h>

#include <string>

namespace pelora::session {
namespace {

std::string Repeated(std::size_t count, const std::string& text) {
  std::string repeated;
  for (std::size_t at = 0; at < count; ++at) repeated += text;
  return repeated;
}

TEST(MailAddress, AreWordsAtADomain) {
  for (const char* address :
       {"ada@example.org", "ada.larsen@mail.example.org", "a@b", "A@B.C", "0@1.2",
        "!#$%&'*+-/=?^_`{|}~@example.org", "ada+tag@ex-ample.org", "ada@localhost",
        "o'neill@harbour-glass.example", "a/b@example.org"}) {
    EXPECT_TRUE(IsMailAddress(address)) << address;
  }
}

TEST(MailAddress, NeedBothParts) {
  for (const char* address : {"", "@", "ada", "ada@", "@example.org", "ada.example.org",
                              "ada@@example.org", "ada@ex@ample.org"}) {
    EXPECT_FALSE(IsMailAddress(address)) << address;
  }
}

TEST(MailAddress, HaveNoEmptyWord) {
  for (const char* address :
       {".ada@example.org", "ada.@example.org", "ada..larsen@example.org", "ada@.example.org",
        "ada@example.org.", "ada@example..org", "ada@."}) {
    EXPECT_FALSE(IsMailAddress(address)) << address;
  }
}

TEST(MailAddress, HaveNoBlanksAndNoSignsOfLists) {
  for (const char* address :
       {" ada@example.org", "ada@example.org ", "ada larsen@example.org", "ada@exa mple.org",
        "ada@example.org\n", "ada\t@example.org", "ada,b@example.org", "ada;b@example.org",
        "ada:b@example.org", "<ada@example.org>", "Ada <ada@example.org>", "ada(x)@example.org",
        "ada@example.org,b@example.org", "a\\b@example.org", "a[b@example.org",
        "a\"b@example.org"}) {
    EXPECT_FALSE(IsMailAddress(address)) << address;
  }
}

TEST(MailAddress, HaveNoUnderscoreAndNoOuterHyphenInTheDomain) {
  for (const char* address : {"ada@-example.org", "ada@example-.org", "ada@exa_mple.org",
                              "ada@exam!ple.org", "ada@example.org-"}) {
    EXPECT_FALSE(IsMailAddress(address)) << address;
  }
}

TEST(MailAddress, MayQuoteTheLocalPart) {
  for (const char* address :
       {"\"ada larsen\"@example.org", "\"\"@example.org", "\"a@b\"@example.org",
        "\"a\\\"b\"@example.org", "\"a\\\\\"@example.org", "\"..\"@example.org"}) {
    EXPECT_TRUE(IsMailAddress(address)) << address;
  }
  for (const char* address : {"\"ada@example.org", "\"ada\"larsen@example.org", "\"ada\"",
                              "\"ada\"@", "\"a\"b\"@example.org", "\"a\\\"@example.org",
                              "\"a\nb\"@example.org", "\"\xC3\xA4\"@example.org", "\""}) {
    EXPECT_FALSE(IsMailAddress(address)) << address;
  }
}

TEST(MailAddress, MayBeAtAnAddressInBrackets) {
  for (const char* address :
       {"ada@[192.0.2.1]", "ada@[0.0.0.0]", "ada@[IPv6:2001:db8::1]", "ada@[ipv6:::1]",
        "ada@[IPv6:::ffff:192.0.2.1]", "ada@[x-tag:content]"}) {
    EXPECT_TRUE(IsMailAddress(address)) << address;
  }
  for (const char* address :
       {"ada@[192.0.2.256]", "ada@[192.0.2]", "ada@[]", "ada@[192.0.2.1", "ada@192.0.2.1]",
        "ada@[IPv6:2001:db8::1::2]", "ada@[IPv6:]", "ada@[2001:db8::1 ]", "ada@[x-tag:]",
        "ada@[:x]", "ada@[x-:y]", "ada@[example.org]"}) {
    EXPECT_FALSE(IsMailAddress(address)) << address;
  }
}

TEST(MailAddress, AreAscii) {
  for (const char* address :
       {"j\xC3\xBCrgen@example.org", "ada@ex\xC3\xA4mple.org", "\xCE\xB1@example.org"}) {
    EXPECT_FALSE(IsMailAddress(address)) << address;
  }
}

TEST(MailAddress, HaveALengthEach) {
  const std::string longest_local(64, 'a');
  EXPECT_TRUE(IsMailAddress(longest_local + "@b.c"));
  EXPECT_FALSE(IsMailAddress(longest_local + "a@b.c"));
  const std::string longest_label(63, 'b');
  EXPECT_TRUE(IsMailAddress("a@" + longest_label + ".org"));
  EXPECT_FALSE(IsMailAddress("a@" + longest_label + "b.org"));
  // 251 bytes of domain and "ab@" are 254; a byte more is too much.
  const std::string domain = Repeated(3, longest_label + ".") + std::string(59, 'b');
  EXPECT_TRUE(IsMailAddress("ab@" + domain));
  EXPECT_FALSE(IsMailAddress("abc@" + domain));
}

TEST(MailAddress, MayHoldNoZero) {
  EXPECT_FALSE(IsMailAddress(std::string("a\0b@example.org", 15)));
  EXPECT_FALSE(IsMailAddress(std::string("ab@example.org\0", 15)));
  EXPECT_FALSE(IsMailAddress(std::string("ab@[192.0.2.1\0]", 15)));
}

}  // namespace
}  // namespace pelora::session
