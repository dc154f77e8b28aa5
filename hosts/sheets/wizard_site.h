// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

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
class WizardSite final : public IDsAdminNewObj, private IDsAdminNewObjPrimarySite {
 public:
  WizardSite(IWizardSiteOwner& owner, std::size_t extension, bool is_primary)
      : owner_(&owner), extension_(extension), is_primary_(is_primary) {}
  WizardSite(const WizardSite&) = delete;
  WizardSite& operator=(const WizardSite&) = delete;

  /// The wizard is gone.
  void Disconnect() { owner_ = nullptr; }

  [[nodiscard]] HRESULT QueryInterface(const Guid& iid, void** object) override;
  std::uint32_t AddRef() override { return ++references_; }
  std::uint32_t Release() override;

  [[nodiscard]] HRESULT SetButtons(std::uint32_t page_index, bool valid) override;
  [[nodiscard]] HRESULT GetPageCounts(std::int32_t& total, std::int32_t& start_index) override;

 private:
  ~WizardSite() = default;

  [[nodiscard]] HRESULT CreateNew(const std::string& name) override;
  /// No wizard here has exactly one page: a summary always follows.
  [[nodiscard]] HRESULT Commit() override { return E_NOTIMPL; }

  IWizardSiteOwner* owner_;
  std::size_t extension_;
  bool is_primary_;
  std::uint32_t references_ = 1;
};

}  // namespace pelora::sheets
