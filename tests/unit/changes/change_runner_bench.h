// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "hosts/changes/change_runner.h"
#include "tests/unit/changes/changes_bench.h"

namespace pelora::changes {

/// Runs on contacts of a unit of their own, numbered from 0.
class ChangeRunnerBench : public ChangesBench {
 protected:
  void MakeContacts(std::size_t count) {
    for (std::size_t number = 0; number < count; ++number) {
      names_.push_back("CN=Contact " + std::to_string(number) + "," + kBase);
      const StoreStatus made =
          store_->Add({.dn = names_.back(),
                       .attributes = {{"objectClass", {"contact"}}, {"peloraQuotaHard", {"1"}}}});
      ASSERT_TRUE(made.Ok()) << made.text;
    }
  }
  /// Wants one quota for everybody.
  static Prepared SetQuota(const ReadObject& object, const std::string& quota) {
    if (!object.status.Ok()) return {.instead = NotDone("?", object.status)};
    Change change{.dn = object.entry.dn, .attributes = {}};
    const auto seen = object.entry.attributes.find("peloraQuotaHard");
    change.attributes.push_back(
        {.attribute = "peloraQuotaHard",
         .seen = seen == object.entry.attributes.end() ? AttributeValues() : seen->second,
         .wanted = {quota}});
    return {.change = std::move(change)};
  }
  Tally Run(const RunOptions& options) {
    return RunChanges(
        interrupted_, names_,
        [this](const ReadObject& object) {
          ++prepared_;
          return prepare_(object);
        },
        options, [this](std::size_t at, const Result& result) { Note(at, result); });
  }
  void Note(std::size_t at, const Result& result) {
    EXPECT_EQ(at, words_.size());
    most_held_ = std::max(most_held_, prepared_ - std::min(prepared_, at));
    words_.emplace_back(WordOf(result.outcome));
    results_.push_back(result);
    if (on_result_) on_result_(at);
  }
  [[nodiscard]] std::vector<std::string> Quotas() {
    std::vector<std::string> quotas;
    for (const std::string& name : names_) {
      const AttributeValues values = Read(*store_, name, "peloraQuotaHard");
      quotas.push_back(values.empty() ? "" : values.front());
    }
    return quotas;
  }

  std::vector<std::string> names_;
  Prepare prepare_ = [](const ReadObject& object) { return SetQuota(object, "7"); };
  std::size_t prepared_ = 0;
  /// How many objects were prepared and not told, at most.
  std::size_t most_held_ = 0;
  std::vector<std::string> words_;
  std::vector<Result> results_;
  std::function<void(std::size_t at)> on_result_;
};

}  // namespace pelora::changes
