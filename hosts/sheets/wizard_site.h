// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "platform/counted.h"
#include "platform/new_object_wizard.h"

namespace pelora::sheets {

/// What a wizard does for its extensions. Pages are counted per extension, from 0.
class IWizardSiteOwner {
 public:
  virtual void SetButtons(std::size_t extension, std::uint32_t page_index, bool valid) = 0;
  virtual void GetPageCounts(std::size_t extension, std::int32_t& total,
                             std::int32_t& start_index) = 0;
  [[nodiscard]] virtual HRESULT CreateNew(const std::string& name) = 0;

 protected:
  ~IWizardSiteOwner() = default;
};

/// The wizard as one of its extensions sees it. Only the primary extension's offers
/// `IDsAdminNewObjPrimarySite`. Born with a count of 1; an extension may keep it beyond the wizard,
/// and gets `E_UNEXPECTED` from then on.
class WizardSite final : public Counted<IDsAdminNewObj, IDsAdminNewObjPrimarySite> {
 public:
  WizardSite(IWizardSiteOwner& owner, std::size_t extension, bool is_primary)
      : owner_(&owner), extension_(extension), is_primary_(is_primary) {}

  /// The wizard is gone.
  void Disconnect() { owner_ = nullptr; }

  [[nodiscard]] HRESULT QueryInterface(const Guid& iid, void** object) override;

  [[nodiscard]] HRESULT SetButtons(std::uint32_t page_index, bool valid) override;
  [[nodiscard]] HRESULT GetPageCounts(std::int32_t& total, std::int32_t& start_index) override;

 private:
  ~WizardSite() override = default;

  [[nodiscard]] HRESULT CreateNew(const std::string& name) override;
  /// No wizard here has exactly one page: a summary always follows.
  [[nodiscard]] HRESULT Commit() override { return E_NOTIMPL; }

  IWizardSiteOwner* owner_;
  std::size_t extension_;
  bool is_primary_;
};

}  // namespace pelora::sheets
