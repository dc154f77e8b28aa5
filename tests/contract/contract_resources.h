// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

namespace pelora::contract {

/// The compiled resource file of contract_dialogs.rc: what a native adapter under test makes its
/// dialogs from. It lives as long as the program. (A Windows adapter finds the same templates among
/// its module's resources.)
[[nodiscard]] std::span<const std::byte> ContractResourceBytes();

}  // namespace pelora::contract
