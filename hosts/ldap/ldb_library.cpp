// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldb_library.h"

#include <dlfcn.h>
#include <unistd.h>

#include <string>

#include "hosts/ldap/ldb_api.h"

// When it is initialised the library loads every module that is installed for it, by these two
// functions of its own: beside a domain controller's software dozens, with a hundred libraries that
// they need, which takes five times as long as showing an object. A file needs one of them. The
// library calls its public functions as everybody does, so that those of the program stand before
// its own; should it not do so any more, it loads what it likes.
//
// They also see to it that nothing that is installed there runs in a program that reads a file.

/// Of a folder, loads the module for files; what `LDB_MODULES_PATH` names instead as it is.
extern "C" __attribute__((visibility("default"))) int ldb_modules_load(const char* path,
                                                                       const char* version) {
  const auto load =
      reinterpret_cast<decltype(&ldb_modules_load)>(dlsym(RTLD_NEXT, "ldb_modules_load"));
  if (load == nullptr) return LDB_ERR_UNAVAILABLE;
  const std::string for_files = std::string(path) + "/tdb.so";
  const char* const module = access(for_files.c_str(), R_OK) == 0 ? for_files.c_str() : path;
  // The library would have it use what it brings along itself before what the program has
  // (RTLD_DEEPBIND). In a program with an allocator of its own there would be two then, and what
  // one has given the other would get back. What is loaded already stays as it is; it stays for
  // good.
  static_cast<void>(dlopen(module, RTLD_NOW));
  return load(module, version);
}

/// Loads everything in a folder; the library does that last, whatever it was told.
extern "C" __attribute__((visibility("default"))) void ldb_set_modules_dir(ldb_context* /*context*/,
                                                                           const char* /*path*/) {}

namespace pelora::ldap {

std::unique_lock<std::mutex> LockLdbLibrary() {
  // As the lists that it guards, one for the whole process.
  static std::mutex mutex;
  return std::unique_lock(mutex);
}

void PrepareLdbLibrary() {
  // The library makes a loop of events for each request, though a file has none: what it would wait
  // for events with costs three system calls each time, the plainest way none. Set once: whoever
  // makes a loop reads it.
  static std::once_flag once;
  std::call_once(once, [] { tevent_set_default_backend("poll"); });
}

}  // namespace pelora::ldap
