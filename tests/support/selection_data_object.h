// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "directory/byte_block.h"
#include "platform/counted.h"
#include "platform/data_object.h"

namespace pelora::testing {

/// A `DSOBJECTNAMES` block that names the given paths.
[[nodiscard]] std::vector<std::byte> MakeDsObjectNames(const std::vector<std::string>& paths);

/// The console's selection, as a data object that hands out one block under one format's name.
///
/// Lives on the stack of a test, which has the first reference; it counts what was asked of its
/// medium.
class SelectionDataObject final : public CountedPort<IDataObject> {
 public:
  /// A well-formed selection.
  explicit SelectionDataObject(const std::vector<std::string>& paths);
  /// Any bytes whatever.
  explicit SelectionDataObject(std::vector<std::byte> block);

  /// Rendering fails from now on, or succeeds with another code.
  void FailWith(HRESULT status) { failure_ = status; }

  using CountedPort<IDataObject>::references;
  [[nodiscard]] int locks() const { return *locks_; }
  [[nodiscard]] int releases() const { return *releases_; }
  /// What was asked for last.
  [[nodiscard]] const FormatEtc& last_format() const { return last_format_; }

  HRESULT GetData(const FormatEtc& format, std::unique_ptr<IStorageMedium>& medium) override;

 private:
  std::vector<std::byte> block_;
  HRESULT failure_ = S_OK;
  std::shared_ptr<int> locks_ = std::make_shared<int>(0);
  std::shared_ptr<int> releases_ = std::make_shared<int>(0);
  FormatEtc last_format_;
};

}  // namespace pelora::testing
