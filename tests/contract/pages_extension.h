// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "platform/counted.h"
#include "platform/new_object_wizard.h"

namespace pelora::contract {

/// An extension of a wizard that brings the pages that it was given, and has nothing to say
/// otherwise. Born with a count of 1.
class PagesExtension final : public Counted<IDsAdminNewObjExt> {
 public:
  explicit PagesExtension(std::vector<std::unique_ptr<PropSheetPage>> pages)
      : pages_(std::move(pages)) {}

  HRESULT QueryInterface(const Guid& /*iid*/, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  HRESULT Initialize(IADs*, IADs*, const std::string&, IDsAdminNewObj*,
                     const NewObjectDisplayInfo&) override {
    return S_OK;
  }
  HRESULT AddPages(const AddPropSheetPage& add_page) override {
    for (auto& page : std::exchange(pages_, {})) (void)add_page(std::move(page));
    return S_OK;
  }
  HRESULT SetObject(IADs*) override { return S_OK; }
  HRESULT WriteData(IDialog*, NewObjectPhase) override { return S_OK; }
  HRESULT OnError(IDialog*, HRESULT, NewObjectPhase) override { return E_NOTIMPL; }
  HRESULT GetSummaryInfo(std::string&) override { return E_NOTIMPL; }

 private:
  ~PagesExtension() override = default;

  std::vector<std::unique_ptr<PropSheetPage>> pages_;
};

}  // namespace pelora::contract
