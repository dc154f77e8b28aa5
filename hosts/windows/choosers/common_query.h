// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "hosts/windows/choosers/chooser_headers.h"
#include "platform/choosers.h"

namespace pelora::windows {

/// The system's directory query window behind the port.
class CommonQuery final : public pelora::ICommonQuery {
 public:
  /// Makes a query window of the system's; on failure `chooser` is empty.
  [[nodiscard]] static HRESULT Create(std::unique_ptr<pelora::ICommonQuery>& chooser);

  explicit CommonQuery(Ref<::ICommonQuery> query) : query_(std::move(query)) {}

  [[nodiscard]] HRESULT OpenQueryWindow(ChooserOwner owner, const QueryWindowInit& init,
                                        Ref<pelora::IDataObject>& chosen) override;

 private:
  Ref<::ICommonQuery> query_;
};

}  // namespace pelora::windows
