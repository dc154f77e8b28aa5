// SPDX-License-Identifier: Apache-2.0
// Writes the display specifiers' LDIF to the standard output; the build keeps it in a file.
#include <cstdio>

#include "deploy/display/display_specifiers_ldif.h"

int main() {
  const std::string ldif = pelora::deploy::DisplaySpecifiersLdif();
  const bool written = std::fwrite(ldif.data(), 1, ldif.size(), stdout) == ldif.size();
  return written && std::fflush(stdout) == 0 ? 0 : 1;
}
