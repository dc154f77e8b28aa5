// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "directory/string_set.h"
#include "features/feature_props.h"

namespace pelora {

/// The archiver: on which servers the mail of the selected users is archived.
///
/// The users have one set of servers, or they disagree; then there is none until the administrator
/// has agreed to give them one anew.
class ArchiverFeatureProps final : public IFeatureProps {
 public:
  /// `platform` outlives it.
  explicit ArchiverFeatureProps(const Platform& platform) : platform_(platform) {}

  [[nodiscard]] HRESULT Load(const BoundObjects& objects) override;
  /// Asks before it replaces what disagrees. `E_FAIL` when the dialog cannot be shown.
  [[nodiscard]] HRESULT Edit() override;
  /// Stays modified: a later apply saves once more.
  [[nodiscard]] HRESULT Save(const BoundObjects& objects) override;
  /// "Enabled on server ...", "Disabled", or "Ambiguous".
  [[nodiscard]] const std::string& StatusText() override;
  [[nodiscard]] bool IsModified() const override { return modified_; }
  [[nodiscard]] bool IsAmbiguous() const override { return ambiguous_; }
  [[nodiscard]] std::function<void()> TakeDown() override;

 private:
  [[nodiscard]] bool MayReplace() const;
  [[nodiscard]] std::string ServerText() const;

  const Platform& platform_;
  StringSet servers_;
  bool ambiguous_ = false;
  bool modified_ = false;
  std::string status_text_;
};

}  // namespace pelora
