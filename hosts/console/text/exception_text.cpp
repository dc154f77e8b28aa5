// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/text/exception_text.h"

#include <exception>
#include <new>

namespace pelora::console {

std::string TextOfException() {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    // Short enough to need no memory.
    return "out of memory";
  } catch (const std::exception& error) {
    return error.what();
  } catch (...) {
    return "no reason";
  }
}

}  // namespace pelora::console
