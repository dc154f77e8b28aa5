// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "hosts/ldap/ldb_record.h"

namespace pelora::ldap {

/// Entries, as records, that one thread reads before another one asks for them. Safe to use on
/// both.
class EntriesAhead {
 public:
  /// Reads entries, in their order; the status is that of the reading itself.
  using Reading = std::function<StoreStatus(std::span<const std::string> dns,
                                            std::span<const std::string> attributes,
                                            std::vector<ReadRecord>& read)>;

  /// These will be asked for, though other things may be before. Nothing else is expected from now
  /// on.
  void Expect(std::span<const std::string> dns, std::span<const std::string> attributes);
  /// Reads what is expected and has not been read. When that fails, whoever asks for it learns why.
  void Read(const Reading& reading);
  /// What has been read of the first of these, when they are what was expected: nothing is from now
  /// on. Empty when there was no time, and of anything else. Waits for a reading that is under way.
  [[nodiscard]] std::vector<ReadRecord> Take(std::span<const std::string> dns,
                                             std::span<const std::string> attributes);
  void Clear() { Expect({}, {}); }

 private:
  std::mutex mutex_;
  std::vector<std::string> dns_;
  std::vector<std::string> attributes_;
  std::vector<ReadRecord> read_;
};

}  // namespace pelora::ldap
