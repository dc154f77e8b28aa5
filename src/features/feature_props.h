// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "directory/value_summary.h"
#include "platform/platform.h"

namespace pelora {

/// A feature that is more than a switch: settings of its own over all selected objects.
///
/// Made when the features are loaded, told to load once, and held as long as its page lives.
class IFeatureProps {
 public:
  IFeatureProps() = default;
  virtual ~IFeatureProps() = default;
  IFeatureProps(const IFeatureProps&) = delete;
  IFeatureProps& operator=(const IFeatureProps&) = delete;

  /// Reads the settings of the selected objects.
  [[nodiscard]] virtual HRESULT Load(const BoundObjects& objects) = 0;
  /// Lets the administrator change the settings, modal to the active window. Success whether there
  /// was a change or not.
  [[nodiscard]] virtual HRESULT Edit() = 0;
  /// Stages the settings on every object, in order, up to the first failure, which is returned and
  /// not shown. The caller commits.
  [[nodiscard]] virtual HRESULT Save(const BoundObjects& objects) = 0;
  /// What the list of features says of it; valid until the next call.
  [[nodiscard]] virtual const std::string& StatusText() = 0;
  /// Whether an edit has changed the settings.
  [[nodiscard]] virtual bool IsModified() const = 0;
  /// Whether the selected objects disagree; the list then shows the status muted.
  [[nodiscard]] virtual bool IsAmbiguous() const = 0;
  /// Takes down the settings as they are; what it gives puts them back, and is outlived.
  [[nodiscard]] virtual std::function<void()> TakeDown() = 0;
};

/// Makes the properties of a feature; `platform` outlives them.
using FeaturePropsFactory = std::shared_ptr<IFeatureProps> (*)(const Platform& platform);

}  // namespace pelora
