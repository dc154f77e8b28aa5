// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <sstream>
#include <string>

namespace pelora::test {

inline constexpr std::uint32_t kClosest = 0x80;
inline constexpr std::uint32_t kWritable = 0x100;

/// What a domain controller says of itself, byte by byte.
struct NetlogonBytes {
  std::string domain = "x.test";
  std::string host = "dc1.x.test";
  std::string site = "Here";
  std::string client_site = "Here";
  std::uint32_t flags = kClosest | kWritable;
  char operation = 23;

  [[nodiscard]] std::string Value() const {
    std::string bytes = {operation, 0, 0, 0};
    for (unsigned shift = 0; shift < 32; shift += 8) {
      bytes += static_cast<char>(flags >> shift & 0xFFU);
    }
    bytes += std::string(16, 'g');
    for (const std::string& name : {domain, domain, host, std::string("X"), std::string("DC1"),
                                    std::string(), site, client_site}) {
      bytes += Name(name);
    }
    return bytes + std::string("\x05\0\0\0\xFF\xFF\xFF\xFF", 8);
  }

  /// The answer to a request, in which `id` is its number: an entry and the end of the search.
  [[nodiscard]] std::string Datagram(char id) const {
    const std::string number = {2, 1, id};
    const std::string attribute = Part('\x04', "Netlogon") + Part('\x31', Part('\x04', Value()));
    const std::string entry = Part('\x04', "") + Part('\x30', Part('\x30', attribute));
    const std::string end = std::string("\x0a\x01\0\x04\0\x04\0", 7);
    return Part('\x30', number + Part('\x64', entry)) + Part('\x30', number + Part('\x65', end));
  }

  /// One element of a message, its length in two bytes.
  [[nodiscard]] static std::string Part(char tag, const std::string& content) {
    return std::string{tag, '\x82', static_cast<char>(content.size() / 256),
                       static_cast<char>(content.size() % 256)} +
           content;
  }
  /// A name of the domain name system.
  [[nodiscard]] static std::string Name(const std::string& name) {
    std::string bytes;
    std::istringstream labels(name);
    for (std::string label; std::getline(labels, label, '.');) {
      bytes += static_cast<char>(label.size());
      bytes += label;
    }
    return bytes + '\0';
  }
};

}  // namespace pelora::test
