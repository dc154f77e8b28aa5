// SPDX-License-Identifier: Apache-2.0
#include "tests/packages/handed_out.h"

#include <gmock/gmock.h>

#include <fstream>

#include "tests/support/temporary_folder.h"

namespace pelora::test {
namespace {

ShellResult RunIn(const std::string& folder, const std::string& script) {
  return RunShell("source='" + Environment("PELORA_SOURCE_DIR") + "'\nbuild='" +
                      Environment("PELORA_BUILD_DIR") +
                      "'\nexport SOURCE_DATE_EPOCH=1700000000 LC_ALL=C.UTF-8\n" + script,
                  folder);
}

/// Makes it, once for all tests: it takes some seconds.
class Release {
 public:
  Release() : folder_(folder_guard_.path().string()) {
    std::ofstream(folder_guard_.File("module.cpp"))
        << "extern \"C\" __declspec(dllexport) int Answer() { return 42; }\n"
           "int Hidden() { return 1; }\n";
    const ShellResult made =
        RunIn(folder_,
              "x86_64-w64-mingw32-g++-posix -g1 -shared -static -Wl,--no-insert-timestamp "
              "module.cpp -o built.dll\n"
              "\"$source/tools/collect_release.sh\" \"$build\" built.dll release");
    EXPECT_EQ(made.exit_code, 0) << made.output;
  }

  [[nodiscard]] const std::string& folder() const { return folder_; }

 private:
  const pelora::testing::TemporaryFolder folder_guard_;
  const std::string folder_;
};

}  // namespace

const std::string& HandedOut() {
  static const Release release;
  return release.folder();
}

ShellResult RunThere(const std::string& script) { return RunIn(HandedOut(), script); }

std::string OutputOf(const std::string& script) {
  const ShellResult result = RunThere(script);
  EXPECT_EQ(result.exit_code, 0) << script << "\n" << result.output;
  return result.output;
}

}  // namespace pelora::test
