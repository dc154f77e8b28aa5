// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "platform/ads.h"
#include "platform/shell_extension.h"

namespace pelora {

/// Steps of a new object's way into the directory, with the platform's numbers.
enum class NewObjectPhase : std::uint32_t {
  kPreCommit = 1,
  kCommit = 2,
  kPostCommit = 3,
  kCleanup = 4,
};

/// What a new-object wizard shows at its head.
struct NewObjectDisplayInfo {
  std::string wizard_title;
  /// Display name of the container in which the object is created.
  std::string container_name;
};

/// The wizard that creates a directory object, seen from one of its extensions.
class IDsAdminNewObj : public IUnknown {
 public:
  static constexpr Guid kIid = IID_IDsAdminNewObj;

  /// Enables or disables the wizard's Next (or Finish) button while the extension's page number
  /// `page_index` (from 0, of its own pages) shows.
  [[nodiscard]] virtual HRESULT SetButtons(std::uint32_t page_index, bool valid) = 0;
  [[nodiscard]] virtual HRESULT GetPageCounts(std::int32_t& total, std::int32_t& start_index) = 0;

 protected:
  ~IDsAdminNewObj() = default;
};

/// What only the primary extension of a wizard is offered.
class IDsAdminNewObjPrimarySite : public IUnknown {
 public:
  static constexpr Guid kIid = IID_IDsAdminNewObjPrimarySite;

  /// Prepares an object of the wizard's class under `name` and hands it to every extension. Nothing
  /// is written yet.
  [[nodiscard]] virtual HRESULT CreateNew(const std::string& name) = 0;
  /// Only for a wizard of exactly one page.
  [[nodiscard]] virtual HRESULT Commit() = 0;

 protected:
  ~IDsAdminNewObjPrimarySite() = default;
};

/// An extension of a new-object wizard. Calls come in this order: `Initialize`, `AddPages`,
/// `SetObject` (again whenever the temporary object is made anew, also with none),
/// `GetSummaryInfo`, `WriteData` for each phase, `OnError` when the creation fails.
class IDsAdminNewObjExt : public IUnknown {
 public:
  static constexpr Guid kIid = IID_IDsAdminNewObjExt;

  /// `container`, `copy_source` (may be none) and `wizard` are kept only with a reference taken.
  [[nodiscard]] virtual HRESULT Initialize(IADs* container, IADs* copy_source,
                                           const std::string& class_name, IDsAdminNewObj* wizard,
                                           const NewObjectDisplayInfo& display_info) = 0;
  [[nodiscard]] virtual HRESULT AddPages(const AddPropSheetPage& add_page) = 0;
  [[nodiscard]] virtual HRESULT SetObject(IADs* object) = 0;
  [[nodiscard]] virtual HRESULT WriteData(IDialog* owner, NewObjectPhase phase) = 0;
  [[nodiscard]] virtual HRESULT OnError(IDialog* owner, HRESULT status, NewObjectPhase phase) = 0;
  [[nodiscard]] virtual HRESULT GetSummaryInfo(std::string& text) = 0;

 protected:
  ~IDsAdminNewObjExt() = default;
};

}  // namespace pelora
