// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/session/secret.h"

class QLineEdit;

namespace pelora::console {

// What is typed into a field is the toolkit's, which wipes nothing.

/// What a field holds; no copy is left behind.
[[nodiscard]] session::Secret SecretOf(const QLineEdit& field);

/// Writes over the field's own memory. The field shows nonsense then: for its end.
void WipeField(const QLineEdit& field);

}  // namespace pelora::console
