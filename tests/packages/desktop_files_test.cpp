// SPDX-License-Identifier: Apache-2.0
// What a desktop is told of the console.
#include <gmock/gmock.h>

#include "tests/handbook/shell.h"
#include "tests/support/temporary_folder.h"

namespace pelora::test {
namespace {

using ::testing::HasSubstr;

ShellResult RunHere(const std::string& script) {
  const pelora::testing::TemporaryFolder folder;
  return RunShell("packages='" + Environment("PELORA_SOURCE_DIR") + "/packages'\n" + script,
                  folder.path().string());
}

TEST(DesktopFiles, AreValid) {
  const ShellResult entries = RunHere("desktop-file-validate \"$packages\"/desktop/*.desktop");
  EXPECT_EQ(entries.exit_code, 0);
  EXPECT_EQ(entries.output, "");
  const ShellResult metainfo =
      RunHere("appstreamcli validate --no-net --strict \"$packages\"/desktop/*.metainfo.xml");
  EXPECT_EQ(metainfo.exit_code, 0) << metainfo.output;
}

TEST(DesktopFiles, SayWhatOpensADirectoryFile) {
  const ShellResult known = RunHere(
      "mkdir -p data/mime/packages data/applications\n"
      "cp \"$packages\"/desktop/pelora-console.xml data/mime/packages/\n"
      "cp \"$packages\"/desktop/*.desktop data/applications/\n"
      "update-mime-database data/mime\n"
      "update-desktop-database data/applications\n"
      "grep ldb data/mime/globs2\n"
      "grep pelora-directory data/applications/mimeinfo.cache");
  EXPECT_EQ(known.exit_code, 0) << known.output;
  EXPECT_THAT(known.output, HasSubstr("50:application/x-pelora-directory:*.ldb\n"));
  EXPECT_THAT(known.output,
              HasSubstr("application/x-pelora-directory=pelora-console-file.desktop"));
}

TEST(DesktopFiles, TheIconsAreWhatIsDrawn) {
  const ShellResult checked = RunHere("\"$packages\"/icons/draw_icons.py --check 16 22 24 32 48");
  EXPECT_EQ(checked.exit_code, 0) << checked.output;
}

}  // namespace
}  // namespace pelora::test
