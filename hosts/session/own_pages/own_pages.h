// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "hosts/resources/resource_file.h"
#include "hosts/session/directory_browser.h"
#include "hosts/session/own_pages/own_field.h"

namespace pelora::session {

/// The compiled resource file of own_pages.rc. It lives as long as the program.
[[nodiscard]] std::span<const std::byte> OwnPageResourceBytes();

/// Templates of the extension's pages with those of our own behind them; all numbers differ.
[[nodiscard]] resources::ReadResult<resources::ResourceFile> WithOwnPages(
    const resources::ResourceFile& module);

/// The pages that every object of a selection has; none for an empty selection.
[[nodiscard]] std::vector<const OwnPageKind*> OwnPagesOf(
    std::span<const DirectoryObject> selection);

}  // namespace pelora::session
