// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/wizard_headers.h"
#include "platform/counted.h"
#include "platform/new_object_wizard.h"

namespace pelora::windows {

/// The console's new-object wizard behind the port. It holds one reference to the console's object,
/// and asks it for the primary site when it is itself asked.
class NewObjectWizardPort final : public CountedPort<pelora::IDsAdminNewObj> {
 public:
  explicit NewObjectWizardPort(Ref<::IDsAdminNewObj> wizard) : wizard_(std::move(wizard)) {}

  [[nodiscard]] HRESULT QueryInterface(const Guid& iid, void** object) override;
  [[nodiscard]] HRESULT SetButtons(std::uint32_t page_index, bool valid) override;
  [[nodiscard]] HRESULT GetPageCounts(std::int32_t& total, std::int32_t& start_index) override;

 private:
  ~NewObjectWizardPort() override = default;

  Ref<::IDsAdminNewObj> wizard_;
};

}  // namespace pelora::windows
