// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <span>

#include "hosts/ctl/pages/page_operator.h"

namespace pelora::ctl {

/// Puts the person in front of the page of a wish.
using OperatorOf = std::function<PageOperator(const Wish& wish)>;

/// Fulfils wishes in whatever order they were given: what enables others, or disables them, comes
/// before them. Throws as `PageOperator::Fulfil` does.
void FulfilWishes(std::span<const Wish> wishes, const OperatorOf& operator_of);

}  // namespace pelora::ctl
