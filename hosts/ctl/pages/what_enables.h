// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>

#include "hosts/ctl/fields/fields.h"
#include "hosts/headless/headless_user.h"

namespace pelora::ctl {

/// What would enable a disabled control of a page, as an assignment of one of the page's fields;
/// empty when no single one does. It is tried out on the page, which is changed by that: nobody is
/// to go on with it.
[[nodiscard]] std::string WhatEnables(HeadlessUser& user, std::span<const Field> fields,
                                      ControlId control);

}  // namespace pelora::ctl
