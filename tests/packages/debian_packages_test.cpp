// SPDX-License-Identifier: Apache-2.0
// The Debian packages of this build, installed below a folder of the test's own and in a whole
// system that has nothing else.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "tests/packages/handed_out.h"

namespace pelora::test {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAreArray;

namespace fs = std::filesystem;

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::string FileOf(const std::string& package) {
  for (const fs::directory_entry& entry : fs::directory_iterator(HandedOut() + "/release")) {
    const std::string name = entry.path().filename();
    if (name.starts_with(package + "_")) return entry.path();
  }
  return "no such package: " + package;
}

std::string Field(const std::string& package, const std::string& field) {
  return OutputOf("dpkg-deb --field '" + FileOf(package) + "' " + field);
}

/// The files of a package, without folders.
std::vector<std::string> FilesOf(const std::string& package) {
  return LinesOf(OutputOf("dpkg-deb --fsys-tarfile '" + FileOf(package) +
                          "' | tar -t | grep -v '/$' | sed 's/^[.]//'"));
}

TEST(DebianPackages, GiveTheChecksNothingToSay) {
  EXPECT_EQ(OutputOf("lintian --allow-root --fail-on warning,error release/*.deb"), "");
}

TEST(DebianPackages, AFaultyPackageGivesThemSomething) {
  const ShellResult checked =
      RunThere("dpkg-deb -R '" + FileOf("pelora-deploy") +
               "' faulty && rm faulty/usr/share/doc/pelora-deploy/copyright && "
               "fakeroot dpkg-deb -b faulty faulty.deb > /dev/null && "
               "lintian --allow-root --fail-on warning,error faulty.deb");
  EXPECT_NE(checked.exit_code, 0);
  EXPECT_THAT(checked.output, HasSubstr("no-copyright-file"));
}

TEST(DebianPackages, HoldTheseFilesAndNoOthers) {
  const std::string doc = "/usr/share/doc/";
  std::vector<std::string> console = {
      "/usr/bin/pelora-console",
      "/usr/share/applications/pelora-console.desktop",
      "/usr/share/applications/pelora-console-file.desktop",
      "/usr/share/metainfo/org.pelora.console.metainfo.xml",
      "/usr/share/mime/packages/pelora-console.xml",
      "/usr/share/man/man1/pelora-console.1.gz",
  };
  for (const char* size : {"16", "22", "24", "32", "48", "64", "128", "256"}) {
    console.push_back(std::string("/usr/share/icons/hicolor/") + size + "x" + size +
                      "/apps/pelora-console.png");
  }
  std::vector<std::string> ctl = {"/usr/bin/peloractl",
                                  "/usr/share/bash-completion/completions/peloractl",
                                  "/usr/share/man/man1/peloractl.1.gz"};
  std::vector<std::string> deploy = {"/usr/sbin/pelora-deploy",
                                     "/usr/share/pelora/deploy/pelora-deploy",
                                     "/usr/share/pelora/deploy/schema.ldif",
                                     "/usr/share/pelora/deploy/pelora-schema.ldf",
                                     "/usr/share/pelora/deploy/Deploy-Pelora.ps1",
                                     "/usr/share/pelora/deploy/display-specifiers.ldif",
                                     "/usr/share/man/man8/pelora-deploy.8.gz"};
  const auto with_documents = [&](std::vector<std::string> files, const std::string& package) {
    for (const char* name : {"/NEWS.gz", "/changelog.gz", "/copyright"}) {
      files.push_back(doc + package + name);
    }
    return files;
  };
  EXPECT_THAT(FilesOf("pelora-console"),
              UnorderedElementsAreArray(with_documents(console, "pelora-console")));
  EXPECT_THAT(FilesOf("peloractl"), UnorderedElementsAreArray(with_documents(ctl, "peloractl")));
  EXPECT_THAT(FilesOf("pelora-deploy"),
              UnorderedElementsAreArray(with_documents(deploy, "pelora-deploy")));
}

TEST(DebianPackages, DependOnWhatTheyUse) {
  EXPECT_THAT(Field("pelora-console", "Depends"),
              AllOf(HasSubstr("libqt6widgets6"), HasSubstr("libldb2"), HasSubstr("libc6")));
  EXPECT_THAT(Field("peloractl", "Depends"),
              AllOf(HasSubstr("libldb2"), HasSubstr("libldap"), HasSubstr("libjemalloc2"),
                    Not(HasSubstr("libqt6"))))
      << "for machines without a screen";
  EXPECT_EQ(Field("pelora-deploy", "Depends"), "python3, python3-samba\n");
  EXPECT_EQ(Field("pelora-deploy", "Architecture"), "all\n");
}

TEST(DebianPackages, CanBeInstalledHere) {
  EXPECT_THAT(OutputOf("apt-get --simulate --no-download -o Debug::NoLocking=1 "
                       "--no-install-recommends install ./release/*.deb"),
              AllOf(HasSubstr("Inst pelora-console "), HasSubstr("Inst peloractl "),
                    HasSubstr("Inst pelora-deploy "), HasSubstr("3 newly installed")));
}

/// The names of everything below a folder but what the package manager keeps of itself.
std::set<std::string> Tree(const fs::path& root) {
  std::set<std::string> names;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root)) {
    const std::string name = entry.path().lexically_relative(root);
    if (!name.starts_with("var/lib/dpkg") && !name.starts_with("var/log")) names.insert(name);
  }
  return names;
}

TEST(DebianPackages, RunWhereTheyAreInstalledAndLeaveNothing) {
  const fs::path root = fs::path(HandedOut()) / "root";
  fs::create_directories(root / "var/lib/dpkg/updates");
  fs::create_directories(root / "var/lib/dpkg/info");
  std::ofstream(root / "var/lib/dpkg/status");
  const std::set<std::string> before = Tree(root);
  const std::string dpkg =
      "fakeroot dpkg --root=root --log=/dev/null --force-not-root --force-depends ";
  // What they depend on is there, but not known to be in that folder.
  OutputOf(dpkg + "--install release/*.deb 2>&1");

  const std::string home = "export HOME=\"$PWD/home\" XDG_DATA_HOME=\"$PWD/home\"\n";
  EXPECT_THAT(OutputOf(home + "root/usr/bin/peloractl --sample list user"),
              HasSubstr("Helga Önder"));
  // It has an allocator of its own, and so has all that the database library loads: what one has
  // given no other one can take back.
  EXPECT_THAT(LinesOf(OutputOf(
                  home + "env -u LDB_MODULES_DISABLE_DEEPBIND LD_DEBUG=bindings "
                         "root/usr/bin/peloractl --sample list user 2>&1 | grep -E "
                         "'binding file [^ ]*(ldb|tdb|talloc)[^ ]* .*symbol .(malloc|free).'")),
              AllOf(Not(IsEmpty()), Contains(HasSubstr("key-value")), Each(HasSubstr("jemalloc"))));
  EXPECT_THAT(OutputOf("root/usr/sbin/pelora-deploy --help"), HasSubstr("unregister"));
  EXPECT_EQ(OutputOf("python3 -Bc \"import runpy; "
                     "print(runpy.run_path('root/usr/sbin/pelora-deploy')['FOLDER'])\""),
            (root / "usr/share/pelora/deploy").string() + "\n")
      << "where its files are";
  EXPECT_EQ(OutputOf(home + "root/usr/bin/pelora-console --screenshot window.png"), "");
  EXPECT_THAT(OutputOf("file window.png"), HasSubstr("PNG image data"));
  EXPECT_THAT(OutputOf("MANPATH=root/usr/share/man man 8 pelora-deploy | cat"),
              HasSubstr("PELORA-DEPLOY(8)"));

  OutputOf(dpkg + "--purge pelora-console peloractl pelora-deploy 2>&1");
  EXPECT_EQ(Tree(root), before);
}

TEST(DebianPackages, AreInstalledRunAndRemovedInASystemThatHasNothingElse) {
  const ShellResult tried = RunThere(
      "as_root=(); [ \"$(id -u)\" -eq 0 ] || as_root=(sudo -n)\n"
      "\"${as_root[@]}\" \"$source/tests/packages/clean_system.sh\" release");
  EXPECT_EQ(tried.exit_code, 0) << tried.output;
  EXPECT_THAT(tried.output, HasSubstr("installed, run and removed without a trace"));
}

}  // namespace
}  // namespace pelora::test
