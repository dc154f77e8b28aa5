// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <vector>

#include "hosts/ctl/fields/wish.h"
#include "hosts/ctl/text/assignment.h"

namespace pelora::ctl {

/// A list of texts of which one is the default, as scripts see it: what is asked of it becomes
/// steps, and only those that change something. Texts are the same whatever their case.
class AddressList {
 public:
  AddressList(std::string default_value, std::vector<std::string> others)
      : default_(std::move(default_value)), others_(std::move(others)) {}

  /// Makes a text the default one, adding it first when it is not there; the default one so far
  /// goes to the others.
  void MakeDefault(const std::string& value);
  /// Sets the others, or adds to them or removes from them. The default one is passed over in a
  /// list that is set, and can be removed; the first text of all becomes the default one.
  void Change(Assignment::Operation operation, std::span<const std::string> values);

  [[nodiscard]] std::vector<ListStep> TakeSteps() { return std::move(steps_); }
  /// Empty when there is none.
  [[nodiscard]] const std::string& default_value() const { return default_; }
  /// Whether no text is left.
  [[nodiscard]] bool IsEmpty() const { return default_.empty() && others_.empty(); }

 private:
  [[nodiscard]] bool Has(const std::string& value) const;
  void Add(const std::string& value);
  void Remove(const std::string& value);

  /// Empty: there is none.
  std::string default_;
  std::vector<std::string> others_;
  std::vector<ListStep> steps_;
};

/// Whether two texts are the same but for their case.
[[nodiscard]] bool IsSameText(const std::string& left, const std::string& right);

/// Where a text stands in a list, whatever its case; the end when it does not.
[[nodiscard]] std::vector<std::string>::iterator FindText(std::vector<std::string>& values,
                                                          const std::string& value);

}  // namespace pelora::ctl
