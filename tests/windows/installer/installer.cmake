# SPDX-License-Identifier: Apache-2.0
# The installer, run by the system's own.
pelora_windows_suite(windows_installer_test
  SOURCES
    installer/installer.cpp installer/installer.h
    installer/installer_test.cpp
    extension/registry_snapshot.cpp
  LIBRARIES pelora_windows_test_support msi)
add_dependencies(windows_installer_test pelora_installer pelora_newer_installer)
