// SPDX-License-Identifier: Apache-2.0
// Feeds the readers of what servers say of themselves by datagrams, which anybody can send: nothing
// is read outside, and no site comes of it that could not be asked for. The first byte chooses the
// reader.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "hosts/ldap/network/netlogon_message.h"

namespace {

using namespace pelora::ldap;

void Require(bool holds) {
  if (!holds) std::abort();
}

void Judge(const std::optional<NetlogonAnswer>& answer) {
  if (!answer) return;
  constexpr std::size_t kLongestName = 255;
  for (const std::string* const name : {&answer->domain, &answer->host}) {
    Require(name->size() <= kLongestName);
  }
  for (const std::string* const site : {&answer->site, &answer->client_site}) {
    Require(site->empty() || IsSiteName(*site));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  // A copy of its own, so that a look beyond the end is one beyond the memory.
  const std::string bytes(data + 1, data + size);
  constexpr int kNumber = 7;
  Judge(data[0] % 2 == 0 ? ReadNetlogonAnswer(bytes) : ReadNetlogonMessage(kNumber, bytes));
  return 0;
}
