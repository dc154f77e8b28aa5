// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/packed_entries.h"

#include <cstdint>
#include <utility>

namespace pelora::ldap {
namespace {

constexpr std::size_t kPiece = 256UL * 1024;
/// An entry that begins in a piece ends in it: most need no more than this.
constexpr std::size_t kLastEntry = 4UL * 1024;

/// A number is seven bits in a byte, the lowest first; the eighth says that there are more.
constexpr unsigned kBits = 7;
constexpr std::size_t kMore = 0x80;

void PutNumber(std::string& bytes, std::size_t number) {
  for (; number >= kMore; number >>= kBits) {
    bytes.push_back(static_cast<char>(static_cast<std::uint8_t>(number | kMore)));
  }
  bytes.push_back(static_cast<char>(static_cast<std::uint8_t>(number)));
}

void PutText(std::string& bytes, std::string_view text) {
  PutNumber(bytes, text.size());
  bytes += text;
}

/// Takes from the beginning of what is left of a piece.
class Unpacking {
 public:
  explicit Unpacking(std::string_view bytes) : left_(bytes) {}

  [[nodiscard]] bool AtEnd() const { return left_.empty(); }

  std::size_t Number() {
    std::size_t number = 0;
    unsigned shift = 0;
    while (true) {
      const std::size_t byte = static_cast<std::uint8_t>(left_.front());
      left_.remove_prefix(1);
      number |= (byte % kMore) << shift;
      if (byte < kMore) return number;
      shift += kBits;
    }
  }

  std::string Text() {
    const std::size_t size = Number();
    std::string text(left_.substr(0, size));
    left_.remove_prefix(size);
    return text;
  }

  Entry Next(const std::vector<std::string>& attributes) {
    Entry entry{.dn = Text(), .attributes = {}};
    for (std::size_t count = Number(); count > 0; --count) {
      AttributeValues& values = entry.attributes[attributes[Number()]];
      values.resize(Number());
      for (std::string& value : values) value = Text();
    }
    return entry;
  }

 private:
  std::string_view left_;
};

}  // namespace

std::size_t PackedEntries::PlaceOf(const std::string& attribute) {
  const auto [known, is_new] = places_.try_emplace(attribute, attributes_.size());
  if (is_new) attributes_.push_back(attribute);
  return known->second;
}

void PackedEntries::Add(const Entry& entry) {
  if (pieces_.empty() || pieces_.back().size() > kPiece - kLastEntry) {
    pieces_.emplace_back().reserve(kPiece);
  }
  std::string& bytes = pieces_.back();
  const std::size_t before = bytes.size();
  try {
    Put(entry, bytes);
  } catch (...) {
    bytes.resize(before);
    throw;
  }
  ++count_;
}

void PackedEntries::Put(const Entry& entry, std::string& bytes) {
  PutText(bytes, entry.dn);
  PutNumber(bytes, entry.attributes.size());
  for (const auto& [attribute, values] : entry.attributes) {
    PutNumber(bytes, PlaceOf(attribute));
    PutNumber(bytes, values.size());
    for (const std::string& value : values) PutText(bytes, value);
  }
}

bool PackedEntries::HandOver(const EntrySink& sink) {
  bool is_wanted = true;
  while (is_wanted && !pieces_.empty()) {
    const std::string piece = std::move(pieces_.front());
    pieces_.pop_front();
    Unpacking unpacking(piece);
    while (is_wanted && !unpacking.AtEnd()) is_wanted = sink(unpacking.Next(attributes_));
  }
  pieces_.clear();
  count_ = 0;
  return is_wanted;
}

std::size_t PackedEntries::Bytes() const {
  std::size_t bytes = 0;
  for (const std::string& piece : pieces_) bytes += piece.size();
  return bytes;
}

}  // namespace pelora::ldap
