// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <span>

#include "hosts/session/field_values.h"

namespace pelora::console {

/// The values that several objects have in one field, each object with its value.
class ValueList final : public QDialog {
 public:
  /// The values are copied.
  ValueList(const QString& label, std::span<const session::HeldValue> values, QWidget* parent);
};

}  // namespace pelora::console
