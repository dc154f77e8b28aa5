// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/choosers.h"

namespace pelora::windows {

/// Runs the container browser of the system's directory user-interface library, which is loaded for
/// the run as an import would be: from the program's own folder or the system's, and from no other
/// place. The browser is found by its number or, in a library that does not number it so, by its
/// name.
///
/// The browser's own answer: `kDialogOk` with the chosen container's path in `path`, cut to the
/// capacity that was asked for; with any other one `path` is empty. -1, the browser's answer to an
/// error, when there is no library or no browser in it.
[[nodiscard]] std::int32_t BrowseForContainer(const ContainerBrowserInit& init, std::string& path);

}  // namespace pelora::windows
