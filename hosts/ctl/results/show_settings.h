// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "hosts/ctl/objects/read_settings.h"
#include "hosts/ctl/results/output.h"

namespace pelora::ctl {

/// An object's settings for a person: tab by tab and group by group, label, name and value.
void PrintSettings(const ShownObject& object, Output& output);
/// The same as one JSON object.
[[nodiscard]] std::string SettingsJson(const ShownObject& object);

/// Several objects as one selection: the fields that all of them have, each with its value or,
/// where they differ, every value with its count.
class TogetherShown {
 public:
  void Add(const ShownObject& object);
  void Print(bool as_json, Output& output) const;

 private:
  using Counts = std::map<FieldValue, std::size_t>;
  struct Counted {
    const Field* field = nullptr;
    Counts counts;
  };
  /// The most frequent first, then by value.
  [[nodiscard]] static std::vector<std::pair<FieldValue, std::size_t>> Ordered(
      const Counts& counts);
  void PrintJson(Output& output) const;

  std::size_t count_ = 0;
  std::vector<Counted> fields_;
};

}  // namespace pelora::ctl
