// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace pelora::session {

/// Opens `/dev/null` in place of those of the standard input, output and errors that are closed.
/// Otherwise the next file that is opened, a directory's, would get their number, and what is
/// printed would be written into it. To be called before anything is opened.
void OpenStandardDescriptors();

}  // namespace pelora::session
