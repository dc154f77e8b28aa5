// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "platform/unknown.h"

namespace pelora {

/// The selected objects as the console hands them over (`DSOBJECTNAMES`).
inline constexpr const char* kDsObjectNamesFormat = "DsObjectNames";
/// The chosen objects as an object picker hands them over (`DS_SELECTION_LIST`).
inline constexpr const char* kDsSelectionListFormat = "CFSTR_DSOP_DS_SELECTION_LIST";

/// Which rendering of a data object is wanted. The format is given by its registered name; the host
/// registers it.
struct FormatEtc {
  static constexpr std::uint32_t kContentAspect = 1;
  static constexpr std::uint32_t kGlobalMemory = 1;

  std::string format;
  std::uint32_t aspect = kContentAspect;
  std::int32_t index = -1;
  std::uint32_t medium = kGlobalMemory;
};

/// A block of memory that a data object handed out. Destroying this view frees nothing: whoever is
/// to free the memory calls `Release`, once.
class IStorageMedium {
 public:
  virtual ~IStorageMedium() = default;

  /// The block from its first byte to its last, aligned for any type. A span without address says
  /// that the memory cannot be reached.
  [[nodiscard]] virtual std::span<const std::byte> Lock() = 0;
  virtual void Unlock() = 0;
  virtual void Release() = 0;
};

/// Something that can be rendered in several formats: a selection of directory objects.
class IDataObject : public IUnknown {
 public:
  static constexpr Guid kIid = IID_IDataObject;

  /// Renders the object. `DV_E_FORMATETC` when it does not know the format; `medium` is empty after
  /// any failure.
  [[nodiscard]] virtual HRESULT GetData(const FormatEtc& format,
                                        std::unique_ptr<IStorageMedium>& medium) = 0;

 protected:
  ~IDataObject() = default;
};

}  // namespace pelora
