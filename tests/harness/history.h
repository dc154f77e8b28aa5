// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

// What several writers did to the same objects at once, and whether it can be explained. Every
// value that is written is written once in the whole history, so that it is known whose it is.

namespace pelora::testing {

/// What the writer was told.
enum class Answer : std::uint8_t {
  kAccepted,
  /// Or failed: nothing of it was done.
  kRefused,
  /// It may have been done or not.
  kUnknown,
};

/// One attribute of one value: what the writer saw, and what it wrote in its place.
struct Replacement {
  std::string attribute;
  std::string seen;
  std::string wanted;
};

/// One value of a list, put in or taken out.
struct ListChange {
  std::string attribute;
  std::string value;
  bool is_added = true;
};

/// What was sent as one change, which takes effect whole or not at all. Attributes are named with
/// their object. `begin` and `end` are counted by a clock of all writers.
struct Operation {
  std::uint64_t begin = 0;
  std::uint64_t end = 0;
  Answer answer = Answer::kAccepted;
  std::vector<Replacement> replacements{};
  std::vector<ListChange> list_changes{};
};

struct History {
  using Values = std::map<std::string, std::string>;
  using Lists = std::map<std::string, std::set<std::string>>;

  Values before{};
  Lists lists_before{};
  std::vector<Operation> operations{};
  Values after{};
  Lists lists_after{};
};

/// What cannot be explained, a sentence each: a change that was accepted and is lost, one that was
/// refused and done, one that replaced what its writer had not seen, one that was half done, one
/// that took effect outside its time. An unknown one may have been done or not.
[[nodiscard]] std::vector<std::string> FaultsOf(const History& history);

}  // namespace pelora::testing
