// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "directory/byte_block.h"
#include "platform/counted.h"
#include "platform/data_object.h"

namespace pelora::testing {

/// A `DS_SELECTION_LIST` block that names the given paths, its addresses pointing into itself, and
/// nothing else. Nothing lies behind its bytes that a reader could reach unnoticed under a
/// sanitizer.
[[nodiscard]] HeapBlock MakeDsSelectionList(const std::vector<std::string>& paths);

/// What an administrator chose, as a data object that hands out one block under one format's name
/// and counts what is done with the block. Born with no reference: the first `Ref` is its owner.
class ChosenObjects final : public CountedPort<IDataObject> {
 public:
  /// As an object picker gives them.
  static ChosenObjects* AsSelectionList(const std::vector<std::string>& paths);
  /// As a query window gives them.
  static ChosenObjects* AsObjectNames(const std::vector<std::string>& paths);
  ChosenObjects(std::string format, HeapBlock block);

  /// Rendering fails from now on, or succeeds with another code.
  void FailWith(HRESULT status) { failure_ = status; }
  /// The memory cannot be reached from now on.
  void HideMemory() { hidden_ = true; }

  [[nodiscard]] int locks() const { return *locks_; }
  [[nodiscard]] int releases() const { return *releases_; }
  /// What was asked for last.
  [[nodiscard]] const FormatEtc& last_format() const { return last_format_; }

  HRESULT GetData(const FormatEtc& format, std::unique_ptr<IStorageMedium>& medium) override;

 private:
  ~ChosenObjects() override = default;

  std::string format_;
  std::shared_ptr<HeapBlock> block_;
  HRESULT failure_ = S_OK;
  bool hidden_ = false;
  std::shared_ptr<int> locks_ = std::make_shared<int>(0);
  std::shared_ptr<int> releases_ = std::make_shared<int>(0);
  FormatEtc last_format_;
};

}  // namespace pelora::testing
