// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/entries_ahead.h"

#include <algorithm>
#include <utility>

namespace pelora::ldap {

void EntriesAhead::Expect(std::span<const std::string> dns,
                          std::span<const std::string> attributes) {
  const std::lock_guard alone(mutex_);
  dns_.assign(dns.begin(), dns.end());
  attributes_.assign(attributes.begin(), attributes.end());
  read_.clear();
}

void EntriesAhead::Read(const Reading& reading) {
  const std::lock_guard alone(mutex_);
  if (dns_.empty() || !read_.empty()) return;
  read_.reserve(dns_.size());
  // Who asks for what is missing then asks the directory, which says why.
  if (!reading(dns_, attributes_, read_).Ok()) read_.clear();
}

std::vector<ReadRecord> EntriesAhead::Take(std::span<const std::string> dns,
                                           std::span<const std::string> attributes) {
  const std::lock_guard alone(mutex_);
  const bool is_expected =
      std::ranges::equal(dns, dns_) && std::ranges::equal(attributes, attributes_);
  // Whoever asks for something else meanwhile asks the directory.
  if (!is_expected) return {};
  dns_.clear();
  return std::exchange(read_, {});
}

}  // namespace pelora::ldap
