// SPDX-License-Identifier: Apache-2.0
// Writes the registry entries of the installer to the standard output; the build keeps them in a
// file. Its one argument is the folder of the registration scripts.
#include <cstdio>
#include <fstream>
#include <iterator>

#include "packages/windows/installer_registry.h"
#include "resources/registration/registration.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const std::string folder = argv[1];
  const std::string source = pelora::packages::InstallerRegistry(
      [&folder](std::uint16_t resource, std::string& text) -> pelora::HRESULT {
        const char* const name = resource == IDR_APPLICATION       ? "/application.rgs"
                                 : resource == IDR_COMPONENT_CLASS ? "/component_class.rgs"
                                                                   : "/unknown";
        std::ifstream file(folder + name);
        if (!file) return pelora::E_FAIL;
        text.assign(std::istreambuf_iterator<char>(file), {});
        return pelora::S_OK;
      });
  const bool written =
      !source.empty() && std::fwrite(source.data(), 1, source.size(), stdout) == source.size();
  return written && std::fflush(stdout) == 0 ? 0 : 1;
}
