// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/fields/offline_catalogue.h"

#include "server/component_server.h"

namespace pelora::ctl {

OfflineCatalogue::OfflineCatalogue(const resources::ResourceFile& module)
    : platform(directory, nullptr, module),
      catalogue(specifiers, platform.platform, module, &CreateComponent) {}

}  // namespace pelora::ctl
