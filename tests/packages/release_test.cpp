// SPDX-License-Identifier: Apache-2.0
// What a release is put together of, with the programs of this build and a module of the test's
// own. That a whole release is the same bytes wherever and whenever it is built is tried by
// tests/packages/release_twice.sh.
#include <gmock/gmock.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "tests/packages/handed_out.h"

namespace pelora::test {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::StartsWith;

TEST(Release, PutTogetherOnceMoreIsTheSameBytes) {
  OutputOf(
      "export TZ=Asia/Tokyo; umask 077; mkdir elsewhere; cp built.dll elsewhere/\n"
      "\"$source/tools/collect_release.sh\" \"$build\" elsewhere/built.dll again");
  EXPECT_EQ(OutputOf("diff -r release again; ls again | wc -l"), OutputOf("ls release | wc -l"));
}

TEST(Release, HoldsEverythingWithItsChecksum) {
  std::vector<std::string> names;
  std::istringstream listed(OutputOf("ls release"));
  for (std::string name; std::getline(listed, name);) names.push_back(name);
  const std::string version = PELORA_VERSION;
  EXPECT_THAT(
      names, IsSupersetOf(
                 {"pelora-console_" + version + "_amd64.deb", "peloractl_" + version + "_amd64.deb",
                  "pelora-deploy_" + version + "_all.deb", "PeloraADS-" + version + ".msi",
                  std::string("PeloraADS.DLL"), std::string("PeloraADS.DLL.debug"),
                  std::string("schema.ldif"), std::string("display-specifiers.ldif"),
                  std::string("pelora-schema.ldf"), std::string("Deploy-Pelora.ps1"),
                  std::string("CHANGES.md"), "pelora-administration-" + version + ".spdx.json"}));
  EXPECT_EQ(OutputOf("cd release; sha256sum --check --quiet SHA256SUMS; wc -l < SHA256SUMS"),
            std::to_string(names.size() - 1) + "\n");
}

TEST(Release, TheModulesSymbolsLieApart) {
  const std::string sections = OutputOf("x86_64-w64-mingw32-objdump -h release/PeloraADS.DLL");
  EXPECT_THAT(sections, AllOf(HasSubstr(".gnu_debuglink"), Not(HasSubstr(".debug_info"))));
  EXPECT_THAT(OutputOf("x86_64-w64-mingw32-nm release/PeloraADS.DLL 2>&1"),
              HasSubstr("no symbols"));
  EXPECT_THAT(OutputOf("x86_64-w64-mingw32-nm -C release/PeloraADS.DLL.debug"),
              HasSubstr("Hidden()"));
  EXPECT_THAT(OutputOf("strings release/PeloraADS.DLL"), HasSubstr("PeloraADS.DLL.debug"));
  OutputOf(
      "msiextract -C unpacked release/*.msi; cmp release/PeloraADS.DLL \"$(find unpacked -name "
      "PeloraADS.DLL)\"");
}

TEST(Release, TellsTheChangesOfThisVersion) {
  EXPECT_THAT(OutputOf("cat release/CHANGES.md"),
              AllOf(StartsWith("## "), HasSubstr("\n- "), Not(HasSubstr("\n## "))));
}

TEST(Release, TheBillOfMaterialsNamesEveryFileAndWhatItNeeds) {
  const std::string name =
      "release/pelora-administration-" + std::string(PELORA_VERSION) + ".spdx.json";
  const auto bill = nlohmann::json::parse(ReadWholeFile(HandedOut() + "/" + name));
  EXPECT_EQ(bill["spdxVersion"], "SPDX-2.3");
  EXPECT_EQ(bill["creationInfo"]["created"], "2023-11-14T22:13:20Z");
  std::set<std::string> known = {"SPDXRef-DOCUMENT"};
  std::string checksums;
  for (const auto& file : bill["files"]) {
    known.insert(file["SPDXID"].get<std::string>());
    checksums += file["checksums"][1]["checksumValue"].get<std::string>() + "  " +
                 file["fileName"].get<std::string>() + "\n";
  }
  std::ofstream(HandedOut() + "/release/bill.sums") << checksums;
  OutputOf("cd release; sha256sum --check --quiet bill.sums; rm bill.sums");
  EXPECT_EQ(bill["files"].size() + 2,
            static_cast<std::size_t>(std::stoi(OutputOf("ls release | wc -l"))))
      << "all but itself and the checksums";
  std::set<std::string> packages;
  for (const auto& package : bill["packages"]) {
    known.insert(package["SPDXID"].get<std::string>());
    packages.insert(package["name"].get<std::string>());
    EXPECT_NE(package["versionInfo"], "") << package;
  }
  EXPECT_THAT(packages, IsSupersetOf({"pelora-administration", "libqt6widgets6", "libldb2",
                                      "python3-samba", "g++-mingw-w64-x86-64-posix"}));
  EXPECT_EQ(known.size(), 1 + bill["files"].size() + bill["packages"].size()) << "no name twice";
  for (const auto& relation : bill["relationships"]) {
    EXPECT_THAT(known, Contains(relation["spdxElementId"].get<std::string>()));
    EXPECT_THAT(known, Contains(relation["relatedSpdxElement"].get<std::string>()));
  }
}

}  // namespace
}  // namespace pelora::test
