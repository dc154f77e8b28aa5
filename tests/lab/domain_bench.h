// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "hosts/ldap/store_directory_service.h"
#include "tests/lab/domain_company.h"
#include "tests/lab/lab_page.h"
#include "tests/lab/lab_test.h"
#include "tests/support/fault_directory.h"
#include "tests/support/observed_store.h"

namespace pelora::lab {

/// What the pages of a console in memory are run on, over the domain. Requests are recorded, and
/// can be made to fail.
struct DomainBench {
  std::unique_ptr<NetworkSession> session = OpenSession();
  testing::ObservedStore store{session->store()};
  ldap::StoreDirectoryService directory{store};
  testing::FaultDirectory faulty{directory};
  testing::HostBench bench{faulty};
};

}  // namespace pelora::lab
