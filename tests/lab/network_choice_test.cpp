// SPDX-License-Identifier: Apache-2.0
// Which network a domain of the lab gets, and what is said where it can have none.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "tests/lab/lab.h"

namespace pelora::lab {
namespace {

namespace fs = std::filesystem;

/// The choice as it is made on a system where these tools always fail.
class SystemWithout {
 public:
  explicit SystemWithout(const std::vector<std::string>& tools) {
    fs::remove_all(tools_);
    fs::create_directory(tools_);
    for (const std::string& tool : tools) {
      std::ofstream(tools_ / tool) << "#!/bin/sh\necho no '" << tool << "' >&2\nexit 1\n";
      fs::permissions(tools_ / tool, fs::perms::owner_all);
    }
  }

  /// What it says, with the exit code behind it.
  [[nodiscard]] std::string Says(const std::string& network) const {
    return OutputOf("PATH=" + tools_.string() + ":$PATH PELORA_LAB_NETWORK=" + network +
                    " $(dirname \"$PELORA_LAB_CONTROL\")/choose_network.sh 2>&1; echo $?");
  }

 private:
  const fs::path tools_ = fs::path(Home()) / "failing_tools";
};

TEST(NetworkChoice, IsPortsOfThisMachineWhereNamespacesCannotBeMade) {
  EXPECT_EQ(SystemWithout({"unshare"}).Says(""), "loopback\n0\n");
  EXPECT_EQ(SystemWithout({"mount"}).Says("loopback"), "loopback\n0\n");
}

TEST(NetworkChoice, SaysInALineWhyThereIsNone) {
  EXPECT_EQ(SystemWithout({"unshare", "mktemp"}).Says(""),
            "lab: no domain can run here; namespaces: no unshare; loopback: no mktemp\n1\n");
  EXPECT_EQ(SystemWithout({"unshare"}).Says("namespaces"),
            "lab: no domain can run here; namespaces: no unshare\n1\n");
  EXPECT_EQ(SystemWithout({}).Says("seven-seas"),
            "lab: PELORA_LAB_NETWORK: there is no network 'seven-seas'\n1\n");
}

}  // namespace
}  // namespace pelora::lab
