// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldb_library.h"

namespace pelora::ldap {

std::unique_lock<std::mutex> LockLdbLibrary() {
  // As the lists that it guards, one for the whole process.
  static std::mutex mutex;
  return std::unique_lock(mutex);
}

}  // namespace pelora::ldap
