// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// Many entries that wait to be handed over, in little more room than their texts take: 100,000 of
/// them as `Entry` would be some hundred megabytes.
class PackedEntries final {
 public:
  /// Where memory runs out nothing is added.
  void Add(const Entry& entry);
  /// Hands all over in the order in which they were added, and lets go of them on the way. The sink
  /// ends it by false, and what is left is dropped; whether it wanted all is returned.
  bool HandOver(const EntrySink& sink);

  [[nodiscard]] std::size_t Count() const { return count_; }
  /// How many bytes they take.
  [[nodiscard]] std::size_t Bytes() const;

 private:
  void Put(const Entry& entry, std::string& bytes);
  [[nodiscard]] std::size_t PlaceOf(const std::string& attribute);

  /// Entries one behind the other; let go piece by piece.
  std::deque<std::string> pieces_;
  std::size_t count_ = 0;
  /// The attributes' names, which entries have by their places.
  std::vector<std::string> attributes_;
  std::map<std::string, std::size_t, std::less<>> places_;
};

}  // namespace pelora::ldap
