// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/com/new_object_wizard_port.h"

#include "hosts/windows/guarded.h"
#include "hosts/windows/values/wide_text.h"

namespace pelora::windows {
namespace {

class PrimarySitePort final : public CountedPort<pelora::IDsAdminNewObjPrimarySite> {
 public:
  explicit PrimarySitePort(Ref<::IDsAdminNewObjPrimarySite> site) : site_(std::move(site)) {}

  [[nodiscard]] HRESULT CreateNew(const std::string& name) override {
    return Guarded([&] { return site_->CreateNew(ToWide(name).c_str()); });
  }
  [[nodiscard]] HRESULT Commit() override { return site_->Commit(); }

 private:
  ~PrimarySitePort() override = default;

  Ref<::IDsAdminNewObjPrimarySite> site_;
};

}  // namespace

HRESULT NewObjectWizardPort::QueryInterface(const Guid& iid, void** object) {
  if (iid != pelora::IID_IDsAdminNewObjPrimarySite) {
    return CountedPort<pelora::IDsAdminNewObj>::QueryInterface(iid, object);
  }
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  Ref<::IDsAdminNewObjPrimarySite> site;
  const HRESULT status = wizard_->QueryInterface(__uuidof(::IDsAdminNewObjPrimarySite),
                                                 reinterpret_cast<void**>(site.Put()));
  if (FAILED(status)) return status;
  if (!site) return E_NOINTERFACE;
  return Guarded([&] {
    *object = static_cast<pelora::IDsAdminNewObjPrimarySite*>(new PrimarySitePort(std::move(site)));
    return S_OK;
  });
}

HRESULT NewObjectWizardPort::SetButtons(std::uint32_t page_index, bool valid) {
  return wizard_->SetButtons(page_index, valid ? TRUE : FALSE);
}

HRESULT NewObjectWizardPort::GetPageCounts(std::int32_t& total, std::int32_t& start_index) {
  LONG pages = 0;
  LONG start = 0;
  const HRESULT status = wizard_->GetPageCounts(&pages, &start);
  total = pages;
  start_index = start;
  return status;
}

}  // namespace pelora::windows
