// SPDX-License-Identifier: Apache-2.0
// Service records of the domain name system.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hosts/ldap/network/service_records.h"

namespace pelora::ldap {
namespace {

using Bytes = std::vector<unsigned char>;

void AppendNumber(Bytes& bytes, unsigned number) {
  bytes.push_back(static_cast<unsigned char>(number / 256));
  bytes.push_back(static_cast<unsigned char>(number % 256));
}

/// A name as labels; "" is the root.
void AppendName(Bytes& bytes, const std::string& name) {
  for (std::size_t begin = 0; begin < name.size();) {
    const std::size_t end = std::min(name.find('.', begin), name.size());
    bytes.push_back(static_cast<unsigned char>(end - begin));
    bytes.insert(bytes.end(), name.begin() + static_cast<std::ptrdiff_t>(begin),
                 name.begin() + static_cast<std::ptrdiff_t>(end));
    begin = end + 1;
  }
  bytes.push_back(0);
}

constexpr unsigned kService = 33;
constexpr unsigned kAddress = 1;

/// An answer to a question for services, as a name server sends it.
class Answer {
 public:
  Answer& Record(unsigned type, const Bytes& data) {
    AppendName(records_, "_ldap._tcp.x.test");
    AppendNumber(records_, type);
    AppendNumber(records_, 1);
    AppendNumber(records_, 0);
    AppendNumber(records_, 600);
    AppendNumber(records_, static_cast<unsigned>(data.size()));
    records_.insert(records_.end(), data.begin(), data.end());
    ++count_;
    return *this;
  }
  Answer& Service(unsigned priority, unsigned weight, unsigned port, const std::string& host) {
    Bytes data;
    for (const unsigned number : {priority, weight, port}) AppendNumber(data, number);
    AppendName(data, host);
    return Record(kService, data);
  }
  [[nodiscard]] Bytes bytes() const {
    Bytes bytes;
    for (const unsigned number : {7U, 0x8180U, 1U, count_, 0U, 0U}) AppendNumber(bytes, number);
    AppendName(bytes, "_ldap._tcp.x.test");
    AppendNumber(bytes, kService);
    AppendNumber(bytes, 1);
    bytes.insert(bytes.end(), records_.begin(), records_.end());
    return bytes;
  }

 private:
  unsigned count_ = 0;
  Bytes records_;
};

std::string ToText(const std::vector<ServiceRecord>& records) {
  std::string text;
  for (const ServiceRecord& record : records) {
    text += std::to_string(record.priority) + " " + std::to_string(record.weight) + " " +
            record.host + ":" + std::to_string(record.port) + "\n";
  }
  return text;
}

TEST(ServiceRecords, AreReadFromAnAnswer) {
  const Bytes answer =
      Answer().Service(0, 100, 389, "dc1.x.test").Service(10, 0, 3389, "dc2.x.test").bytes();
  EXPECT_EQ(ToText(ReadServiceRecords(answer)), "0 100 dc1.x.test:389\n10 0 dc2.x.test:3389\n");
}

TEST(ServiceRecords, OthersAndRefusalsAreLeftOut) {
  const Bytes answer = Answer()
                           .Record(kAddress, {127, 0, 0, 1})
                           .Service(0, 0, 389, "")
                           .Service(0, 0, 0, "dc0.x.test")
                           .Service(1, 2, 389, "dc1.x.test")
                           .bytes();
  EXPECT_EQ(ToText(ReadServiceRecords(answer)), "1 2 dc1.x.test:389\n");
}

TEST(ServiceRecords, WhatCannotBeReadEndsTheList) {
  const Bytes broken = Answer()
                           .Service(1, 2, 389, "dc1.x.test")
                           .Record(kService, {0, 1, 0, 2, 0})
                           .Service(1, 2, 389, "dc3.x.test")
                           .bytes();
  EXPECT_EQ(ToText(ReadServiceRecords(broken)), "1 2 dc1.x.test:389\n");
  // A host that reaches out of its record.
  const Bytes longer = Answer().Record(kService, {0, 1, 0, 2, 1, 133, 3, 'd', 'c'}).bytes();
  EXPECT_EQ(ToText(ReadServiceRecords(longer)), "");
}

TEST(ServiceRecords, NoPartOfAnAnswerIsReadBeyondItsEnd) {
  const Bytes whole =
      Answer().Service(0, 100, 389, "dc1.x.test").Service(10, 0, 389, "dc2.x.test").bytes();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    // A copy of its own, so that a look beyond the end is one beyond the memory.
    const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_LE(ReadServiceRecords(part).size(), 1U) << size;
  }
}

std::string Order(std::vector<ServiceRecord> records, const std::vector<std::uint32_t>& lots) {
  std::size_t next = 0;
  std::string asked;
  OrderServiceRecords(records, [&](std::uint32_t most) {
    asked += std::to_string(most) + " ";
    return std::min(lots.at(next++), most);
  });
  std::string hosts;
  for (const ServiceRecord& record : records) hosts += record.host;
  return hosts + " of " + asked;
}

TEST(ServiceRecords, TheLowestPriorityComesFirst) {
  EXPECT_EQ(Order({{20, 0, 1, "c"}, {0, 0, 1, "a"}, {10, 0, 1, "b"}}, {0, 0, 0}), "abc of 0 0 0 ");
}

TEST(ServiceRecords, WithinAPriorityTheWeightIsTheNumberOfLots) {
  const std::vector<ServiceRecord> records = {{0, 60, 1, "a"}, {0, 0, 1, "z"}, {0, 40, 1, "b"}};
  EXPECT_EQ(Order(records, {0, 0, 0}), "zab of 100 100 40 ");
  EXPECT_EQ(Order(records, {1, 0, 0}), "azb of 100 40 40 ");
  EXPECT_EQ(Order(records, {60, 40, 0}), "abz of 100 40 0 ");
  EXPECT_EQ(Order(records, {61, 60, 0}), "baz of 100 60 0 ");
  EXPECT_EQ(Order(records, {100, 60, 0}), "baz of 100 60 0 ");
  EXPECT_EQ(Order({}, {}), " of ");
}

}  // namespace
}  // namespace pelora::ldap
