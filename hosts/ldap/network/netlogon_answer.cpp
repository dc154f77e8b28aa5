// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/netlogon_answer.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace pelora::ldap {
namespace {

/// What the answer is: of a domain controller, to one who names no user or one it does not know.
constexpr std::uint32_t kResponse = 23;
constexpr std::uint32_t kUserUnknown = 25;

constexpr std::uint32_t kClosestFlag = 0x80;
constexpr std::uint32_t kWritableFlag = 0x100;

/// Before the names: the operation, nothing, the flags and the domain's GUID.
constexpr std::size_t kNamesOffset = 2 + 2 + 4 + 16;

constexpr std::size_t kLongestLabel = 63;
/// As the domain name system has it.
constexpr std::size_t kLongestName = 255;

class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes), at_(kNamesOffset) {}

  [[nodiscard]] std::uint32_t Number(std::size_t at, std::size_t size) const {
    std::uint32_t number = 0;
    while (size-- > 0) number = number << 8U | Byte(at + size);
    return number;
  }

  /// The next name: labels with dots between them. False when it is none.
  bool TakeName(std::string& name) {
    name.clear();
    std::size_t at = at_;
    bool has_jumped = false;
    while (at < bytes_.size()) {
      const unsigned length = Byte(at);
      if (length > kLongestLabel) {
        // The rest stands further up. What goes round in circles becomes too long.
        const std::size_t target = (length & kLongestLabel) << 8U | Second(at);
        if (length < kJump || at + 1 >= bytes_.size() || target >= at) return false;
        if (!has_jumped) at_ = at + 2;
        has_jumped = true;
        at = target;
        continue;
      }
      if (length == 0) {
        if (!has_jumped) at_ = at + 1;
        return true;
      }
      if (at + 1 + length > bytes_.size() || name.size() + 1 + length > kLongestName) return false;
      if (!name.empty()) name += '.';
      name += bytes_.substr(at + 1, length);
      at += 1 + length;
    }
    return false;
  }

 private:
  static constexpr unsigned kJump = 0xC0;

  [[nodiscard]] unsigned Byte(std::size_t at) const {
    return static_cast<unsigned char>(bytes_[at]);
  }
  [[nodiscard]] unsigned Second(std::size_t at) const {
    return at + 1 < bytes_.size() ? Byte(at + 1) : 0;
  }

  std::string_view bytes_;
  std::size_t at_;
};

}  // namespace

bool IsSiteName(std::string_view text) {
  const auto is_letter = [](char letter) {
    const auto code = static_cast<unsigned char>(letter);
    return code > 0x7F || (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') ||
           (code >= 'a' && code <= 'z') || code == '-' || code == '_';
  };
  return !text.empty() && text.size() <= kLongestLabel && std::ranges::all_of(text, is_letter);
}

std::optional<NetlogonAnswer> ReadNetlogonAnswer(std::string_view bytes) {
  if (bytes.size() < kNamesOffset) return std::nullopt;
  Reader reader(bytes);
  const std::uint32_t operation = reader.Number(0, 2);
  if (operation != kResponse && operation != kUserUnknown) return std::nullopt;
  const std::uint32_t flags = reader.Number(4, 4);
  NetlogonAnswer answer{.is_closest = (flags & kClosestFlag) != 0,
                        .is_writable = (flags & kWritableFlag) != 0};
  std::string unused;
  // Forest, domain, host, the two short names, the user, the two sites.
  const std::array<std::string*, 8> names = {
      &unused, &answer.domain, &answer.host, &unused,
      &unused, &unused,        &answer.site, &answer.client_site};
  for (std::string* const name : names) {
    if (!reader.TakeName(*name)) return std::nullopt;
  }
  for (std::string* const site : {&answer.site, &answer.client_site}) {
    if (!IsSiteName(*site)) site->clear();
  }
  return answer;
}

}  // namespace pelora::ldap
