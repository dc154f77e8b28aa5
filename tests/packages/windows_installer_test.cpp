// SPDX-License-Identifier: Apache-2.0
// The Windows installer as a file: what is written in it, and that it is made anew byte for byte.
// What it does is tried by windows_installer_test, under Wine.
#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "tests/handbook/shell.h"
#include "tests/support/temporary_folder.h"

namespace pelora::test {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;

class WindowsInstallerTest : public ::testing::Test {
 protected:
  void SetUp() override { std::ofstream(folder_.File("module")) << "stands in for the module"; }

  ShellResult Run(const std::string& script) {
    return RunShell("source='" + Environment("PELORA_SOURCE_DIR") + "'\nregistration='" +
                        Environment("PELORA_BUILD_DIR") + "/packages/registration.wxi'\n" +
                        "export SOURCE_DATE_EPOCH=1700000000 LC_ALL=C.UTF-8\n" + script,
                    folder_.path().string());
  }
  std::string OutputOf(const std::string& script) {
    const ShellResult result = Run(script);
    EXPECT_EQ(result.exit_code, 0) << script << "\n" << result.output;
    return result.output;
  }
  void Make(const std::string& package, const std::string& options = {}) {
    EXPECT_EQ(OutputOf("\"$source/tools/make_msi.py\" \"$registration\" module " + package + " " +
                       options),
              "");
  }
  /// The lines of a table, as text with tabulators.
  std::string Table(const std::string& name) { return OutputOf("msiinfo export made.msi " + name); }

  const pelora::testing::TemporaryFolder folder_;
};

TEST_F(WindowsInstallerTest, IsTheSameBytesWheneverItIsMade) {
  Make("made.msi");
  // More than once: what the compiler puts in any order it now and then puts in the same.
  EXPECT_EQ(
      OutputOf("sleep 2.1; mkdir other; cp module other/module; cd other; export TZ=Asia/Tokyo\n"
               "for round in 1 2 3 4 5; do\n"
               "\"$source/tools/make_msi.py\" \"$registration\" module again.msi\n"
               "cmp ../made.msi again.msi; done"),
      "");
}

TEST_F(WindowsInstallerTest, IsKnownByItsContentAndItsProductByItsVersion) {
  const std::string revision = "msiinfo suminfo made.msi | grep Revision; ";
  const std::string product = "msiinfo export made.msi Property | grep -E '^(Product|Upgrade)Code'";
  Make("made.msi");
  const std::string first_revision = OutputOf(revision);
  const std::string first_product = OutputOf(product);
  OutputOf("echo more >> module");
  Make("made.msi");
  EXPECT_NE(OutputOf(revision), first_revision);
  EXPECT_EQ(OutputOf(product), first_product);
  Make("made.msi", "--version 7.8.9");
  const std::string next = OutputOf(product);
  const auto line = [](const std::string& text, const std::string& name) {
    const std::size_t begin = text.find(name);
    return text.substr(begin, text.find('\n', begin) - begin);
  };
  EXPECT_NE(line(next, "ProductCode"), line(first_product, "ProductCode"));
  EXPECT_EQ(line(next, "UpgradeCode"), line(first_product, "UpgradeCode"));
  EXPECT_THAT(Table("File"), ContainsRegex("PeloraADS.DLL\t[0-9]+\t7.8.9.0\t0"));
}

TEST_F(WindowsInstallerTest, RunsNoProgramAndLeavesRegistrationToTheSystem) {
  Make("made.msi");
  EXPECT_THAT(OutputOf("msiinfo tables made.msi"),
              AllOf(HasSubstr("Registry\n"), Not(HasSubstr("SelfReg")), Not(HasSubstr("TypeLib"))));
  std::istringstream actions(Table("CustomAction"));
  std::string line;
  for (int heading = 0; heading < 3; ++heading) std::getline(actions, line);
  std::getline(actions, line);
  EXPECT_THAT(line, HasSubstr("NoRestartWhenSilent\t51\tREBOOT\tReallySuppress")) << "sets a value";
  EXPECT_FALSE(std::getline(actions, line)) << line;
  EXPECT_THAT(Table("InstallExecuteSequence"),
              AllOf(HasSubstr("NoRestartWhenSilent\tUILevel=2\t"), HasSubstr("WriteRegistryValues"),
                    HasSubstr("RemoveRegistryValues"), HasSubstr("RemoveExistingProducts")));
}

TEST_F(WindowsInstallerTest, HoldsEveryEntryOfTheRegistration) {
  Make("made.msi");
  const std::string rows = OutputOf("grep -c '<RegistryValue ' \"$registration\"");
  EXPECT_EQ(OutputOf("msiinfo export made.msi Registry | tail -n +4 | wc -l"), rows);
  EXPECT_GT(std::stoi(rows), 200);
  EXPECT_THAT(Table("Registry"), HasSubstr("[#PeloraADS.DLL]"));
}

TEST_F(WindowsInstallerTest, CanBeUnpackedForGroupPolicy) {
  Make("made.msi");
  EXPECT_THAT(Table("AdminExecuteSequence"),
              AllOf(HasSubstr("InstallAdminPackage"), HasSubstr("InstallFiles")));
  OutputOf("msiextract -C unpacked made.msi");
  EXPECT_EQ(OutputOf("cmp module \"$(find unpacked -name PeloraADS.DLL)\""), "");
}

TEST_F(WindowsInstallerTest, IsNotMadeWhenItsCompilerWarns) {
  const ShellResult made =
      Run("mkdir -p copy/src/resources\n"
          "cp -r \"$source\"/{tools,packages,LICENSE,CMakeLists.txt} copy/\n"
          "cp \"$source\"/src/resources/object.ico copy/src/resources/\n"
          "copy/tools/make_msi.py \"$registration\" module good.msi\n"
          "sed -i 's/<Icon Id/<Icon Unheard=\"of\" Id/' copy/packages/windows/pelora.wxs\n"
          "copy/tools/make_msi.py \"$registration\" module bad.msi");
  EXPECT_EQ(made.exit_code, 1);
  EXPECT_THAT(made.output, HasSubstr("Unheard"));
  EXPECT_EQ(OutputOf("ls *.msi"), "good.msi\n");
}

TEST_F(WindowsInstallerTest, TheModuleAndTheInstallerAreHandedToWhoSigns) {
  OutputOf(
      "printf '#!/bin/sh\\necho signed by \"$1\" >> \"$2\"; basename \"$2\" >> signed\\n' > sign\n"
      "chmod +x sign; PELORA_SIGN=\"$PWD/sign us\" "
      "\"$source/tools/make_msi.py\" \"$registration\" module made.msi");
  EXPECT_EQ(OutputOf("cat signed"), "PeloraADS.DLL\npelora.msi\n");
  EXPECT_THAT(OutputOf("tail -n 1 made.msi"), HasSubstr("signed by us"));
  OutputOf("msiextract -C unpacked made.msi");
  EXPECT_THAT(OutputOf("cat \"$(find unpacked -name PeloraADS.DLL)\""), HasSubstr("signed by us"));
  EXPECT_NE(Run("PELORA_SIGN=false \"$source/tools/make_msi.py\" \"$registration\" module no.msi")
                .exit_code,
            0);
}

// The hook with a tool that does sign, and a key of the test's own.
TEST_F(WindowsInstallerTest, WhatASigningToolSignsHoldsUntilAByteIsChanged) {
  OutputOf(
      "echo 'int Answer() { return 42; }' > small.cpp\n"
      "x86_64-w64-mingw32-g++-posix -shared -static small.cpp -o small.dll && mv small.dll module\n"
      "openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj '/CN=Signer of a test' \\\n"
      "  -addext extendedKeyUsage=codeSigning -keyout key.pem -out certificate.pem 2>/dev/null\n"
      "cat > sign <<'SIGN'\n"
      "#!/bin/sh\n"
      "here=$(dirname \"$0\")\n"
      "osslsigncode sign -h sha256 -certs \"$here/certificate.pem\" -key \"$here/key.pem\" \\\n"
      "  -in \"$1\" -out \"$1.signed\" > /dev/null && mv \"$1.signed\" \"$1\"\n"
      "SIGN\n"
      "chmod +x sign; unset SOURCE_DATE_EPOCH\n"
      "PELORA_SIGN=\"$PWD/sign\" \"$source/tools/make_msi.py\" \"$registration\" module made.msi\n"
      "msiextract -C unpacked made.msi\n"
      "cp \"$(find unpacked -name PeloraADS.DLL)\" module.signed");
  const auto is_signed = [this](const std::string& file) {
    return Run("osslsigncode verify -CAfile certificate.pem -in " + file).exit_code == 0;
  };
  EXPECT_TRUE(is_signed("made.msi"));
  EXPECT_TRUE(is_signed("module.signed"));
  EXPECT_FALSE(is_signed("module"));
  const auto change = [this](const std::string& file, int place) {
    OutputOf("printf X | dd of=" + file + " bs=1 seek=" + std::to_string(place) +
             " conv=notrunc status=none");
  };
  // Among the code, and in the cabinet with the files.
  change("module.signed", 0x400);
  change("made.msi",
         std::stoi(OutputOf("grep -abo MSCF made.msi | head -n 1 | cut -d: -f1")) + 0x100);
  EXPECT_FALSE(is_signed("module.signed"));
  EXPECT_FALSE(is_signed("made.msi"));
}

}  // namespace
}  // namespace pelora::test
