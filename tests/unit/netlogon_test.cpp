// SPDX-License-Identifier: Apache-2.0
// What domain controllers say of themselves, and how they are asked.
#include <gtest/gtest.h>

#include "hosts/ldap/network/netlogon_message.h"
#include "tests/support/netlogon_bytes.h"

namespace pelora::ldap {
namespace {

using test::NetlogonBytes;

std::string ToText(const std::optional<NetlogonAnswer>& answer) {
  if (!answer) return "none";
  return answer->host + " of " + answer->domain + " in " + answer->site + " for " +
         answer->client_site + (answer->is_closest ? " closest" : "") +
         (answer->is_writable ? " writable" : "");
}

TEST(NetlogonAnswer, SaysWhichServerItIsAndWhere) {
  EXPECT_EQ(ToText(ReadNetlogonAnswer(NetlogonBytes().Value())),
            "dc1.x.test of x.test in Here for Here closest writable");
  EXPECT_EQ(ToText(ReadNetlogonAnswer(
                NetlogonBytes{.host = "dc2.x.test", .site = "There", .flags = 0, .operation = 25}
                    .Value())),
            "dc2.x.test of x.test in There for Here");
}

TEST(NetlogonAnswer, NamesGoOnWhereOneStoodBefore) {
  NetlogonBytes bytes;
  std::string value = bytes.Value();
  // The domain stands behind the forest, at 24; the host is a label and the way there.
  const std::string whole = NetlogonBytes::Name("dc1.x.test");
  value.replace(value.find(whole), whole.size(),
                "\x03"
                "dc1\xC0\x18");
  EXPECT_EQ(ToText(ReadNetlogonAnswer(value)),
            "dc1.x.test of x.test in Here for Here closest writable");
}

TEST(NetlogonAnswer, WhatGoesRoundInCirclesIsNone) {
  for (const std::string& forest :
       {std::string("\xC0\x18"),
        std::string("\x01"
                    "a\xC0\x18"),
        std::string("\xC0\xFF"), std::string("\xC0"), std::string("\x80\x01"),
        std::string("\x40") + std::string(64, 'a')}) {
    std::string value = NetlogonBytes().Value();
    const std::string whole = NetlogonBytes::Name("x.test");
    value.replace(value.find(whole), whole.size(), forest);
    EXPECT_EQ(ToText(ReadNetlogonAnswer(value)), "none") << ::testing::PrintToString(forest);
  }
}

TEST(NetlogonAnswer, NoPartOfOneIsAnAnswer) {
  const std::string whole = NetlogonBytes().Value();
  const std::size_t last_name_end = whole.size() - 8;
  for (std::size_t size = 0; size < last_name_end; ++size) {
    // A copy of its own, so that a look beyond the end is one beyond the memory.
    const std::string part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_EQ(ToText(ReadNetlogonAnswer(part)), "none") << size;
  }
  EXPECT_NE(ToText(ReadNetlogonAnswer(whole.substr(0, last_name_end))), "none");
}

TEST(NetlogonAnswer, OtherAnswersAreNone) {
  // The server pauses; the short form of older versions.
  EXPECT_EQ(ToText(ReadNetlogonAnswer(NetlogonBytes{.operation = 24}.Value())), "none");
  EXPECT_EQ(ToText(ReadNetlogonAnswer(NetlogonBytes{.operation = 19}.Value())), "none");
}

TEST(NetlogonAnswer, SitesThatAreNoLabelsAreUnknown) {
  EXPECT_EQ(ToText(ReadNetlogonAnswer(NetlogonBytes{.site = "a b", .client_site = "c\\d"}.Value())),
            "dc1.x.test of x.test in  for  closest writable");
  for (const char* const name : {"", "a.b", "a b", "a\\b", "a/b", "a\nb"}) {
    EXPECT_FALSE(IsSiteName(name)) << name;
  }
  EXPECT_FALSE(IsSiteName(std::string(64, 'a')));
  for (const char* const name : {"Default-First-Site-Name", "a_1", "K\xC3\xB6ln"}) {
    EXPECT_TRUE(IsSiteName(name)) << name;
  }
}

TEST(NetlogonMessage, TheRequestIsASearchOfTheRootEntry) {
  const std::string request = NetlogonRequest(7, "x.test");
  const std::string wanted(
      "\x30\x48\x02\x01\x07"
      "\x63\x43\x04\x00\x0a\x01\x00\x0a\x01\x00\x02\x01\x00\x02\x01\x00\x01\x01\x00"
      "\xa0\x24"
      "\xa3\x13\x04\x09"
      "DnsDomain\x04\x06x.test"
      "\xa3\x0d\x04\x05"
      "NtVer\x04\x04\x06\x00\x00\x00"
      "\x30\x0a\x04\x08Netlogon",
      74);
  EXPECT_EQ(::testing::PrintToString(request), ::testing::PrintToString(wanted));
}

TEST(NetlogonMessage, AnAnswerHasTheNumberOfItsRequest) {
  const std::string datagram = NetlogonBytes().Datagram(7);
  EXPECT_EQ(ToText(ReadNetlogonMessage(7, datagram)),
            "dc1.x.test of x.test in Here for Here closest writable");
  EXPECT_EQ(ToText(ReadNetlogonMessage(8, datagram)), "none");
}

TEST(NetlogonMessage, WhatIsNoAnswerIsNone) {
  const std::string number = {2, 1, 7};
  const std::string end("\x0a\x01\0\x04\0\x04\0", 7);
  const std::string value = NetlogonBytes::Part('\x31', NetlogonBytes::Part('\x04', "v"));
  const auto entry = [&](const std::string& attributes) {
    return NetlogonBytes::Part(
        '\x30', number + NetlogonBytes::Part('\x64', NetlogonBytes::Part('\x04', "") +
                                                         NetlogonBytes::Part('\x30', attributes)));
  };
  for (const std::string& datagram :
       {std::string(), std::string("nonsense"),
        // A server of another domain has found nothing.
        NetlogonBytes::Part('\x30', number + NetlogonBytes::Part('\x65', end)), entry(""),
        entry(NetlogonBytes::Part('\x30', NetlogonBytes::Part('\x04', "other") + value)),
        entry(NetlogonBytes::Part('\x30', NetlogonBytes::Part('\x04', "Netlogon") + value))}) {
    EXPECT_EQ(ToText(ReadNetlogonMessage(7, datagram)), "none")
        << ::testing::PrintToString(datagram);
  }
}

TEST(NetlogonMessage, NoPartOfAnAnswerIsReadBeyondItsEnd) {
  const std::string whole = NetlogonBytes().Datagram(7);
  // The end of the search need not come with it.
  const std::size_t end_size = 4 + 3 + 4 + 7;
  for (std::size_t size = 0; size < whole.size() - end_size; ++size) {
    const std::string part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_EQ(ToText(ReadNetlogonMessage(7, part)), "none") << size;
  }
}

}  // namespace
}  // namespace pelora::ldap
