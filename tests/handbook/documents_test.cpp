// SPDX-License-Identifier: Apache-2.0
// The handbook's own promises: links lead somewhere, pictures are there, options and messages are
// those of the programs.
#include <gmock/gmock.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <vector>

#include "tests/handbook/shell.h"
#include "tests/support/temporary_folder.h"

namespace pelora::test {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;

namespace fs = std::filesystem;

fs::path Root() { return Environment("PELORA_SOURCE_DIR"); }

std::vector<fs::path> Documents() {
  std::vector<fs::path> documents;
  for (const fs::path& folder : {Root(), Root() / "docs"}) {
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
      if (entry.path().extension() == ".md") documents.push_back(entry.path());
    }
  }
  return documents;
}

/// Every match's first group.
std::vector<std::string> Matches(const std::string& text, const char* pattern) {
  std::vector<std::string> matches;
  const std::regex expression(pattern);
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end;
       ++match) {
    matches.push_back((*match)[1]);
  }
  return matches;
}

/// A heading's place as links name it: in lower case, blanks as hyphens, other signs left out.
std::string AnchorOf(const std::string& heading) {
  std::string anchor;
  for (const char letter : heading) {
    const auto byte = static_cast<unsigned char>(letter);
    if (std::isalnum(byte) != 0 || letter == '-' || letter == '_') {
      anchor += static_cast<char>(std::tolower(byte));
    } else if (letter == ' ') {
      anchor += '-';
    }
  }
  return anchor;
}

std::set<std::string> AnchorsOf(const fs::path& document) {
  std::set<std::string> anchors;
  std::istringstream lines(ReadWholeFile(document));
  for (std::string line; std::getline(lines, line);) {
    const std::size_t text = line.find_first_not_of('#');
    if (text != 0 && text != std::string::npos && line[text] == ' ') {
      anchors.insert(AnchorOf(line.substr(text + 1)));
    }
  }
  return anchors;
}

/// What is wrong with a link of a document; empty when it leads somewhere.
std::string FaultOf(const fs::path& document, const std::string& link) {
  if (link.starts_with("https://") || link.starts_with("http://")) return {};
  const std::size_t hash = link.find('#');
  const std::string file = link.substr(0, hash);
  const fs::path target = file.empty() ? document : document.parent_path() / file;
  const std::string where = document.filename().string() + ": " + link;
  if (!fs::exists(target)) return where;
  if (hash != std::string::npos && !AnchorsOf(target).contains(link.substr(hash + 1))) return where;
  return {};
}

std::vector<std::string> DeadLinksOf(const fs::path& document) {
  std::vector<std::string> dead;
  for (const std::string& link : Matches(ReadWholeFile(document), R"(\]\(([^)\s]+)\))")) {
    const std::string fault = FaultOf(document, link);
    if (!fault.empty()) dead.push_back(fault);
  }
  return dead;
}

TEST(Documents, EveryLinkLeadsSomewhere) {
  ASSERT_GT(Documents().size(), 15U);
  for (const fs::path& document : Documents()) EXPECT_THAT(DeadLinksOf(document), IsEmpty());
}

TEST(Documents, ADeadLinkIsSeen) {
  const pelora::testing::TemporaryFolder folder;
  const fs::path document = folder.path() / "a.md";
  std::ofstream(document)
      << "# The head, of it\n[a](a.md) [b](b.md) [c](#the-head-of-it) [d](a.md#tail)\n"
         "![e](e.png) [f](https://f.example/)\n";
  EXPECT_THAT(DeadLinksOf(document),
              ::testing::ElementsAre("a.md: b.md", "a.md: a.md#tail", "a.md: e.png"));
}

TEST(Documents, EveryPictureIsShownSomewhere) {
  std::string all;
  for (const fs::path& document : Documents()) all += ReadWholeFile(document);
  for (const fs::directory_entry& entry : fs::directory_iterator(Root() / "docs/images")) {
    EXPECT_THAT(all, ::testing::HasSubstr("images/" + entry.path().filename().string()));
  }
}

TEST(Documents, EveryPictureOfTheGuideIsDrawnByItsScript) {
  const std::string script = ReadWholeFile(Root() / "docs/draw_pictures.sh");
  for (const std::string& picture :
       Matches(ReadWholeFile(Root() / "docs/guide.md"), R"(\]\(images/([^)]+)\.png\))")) {
    if (picture == "tabs") continue;
    const bool is_drawn = script.find("\n  " + picture + " ") != std::string::npos ||
                          script.find("images/" + picture + ".png") != std::string::npos;
    EXPECT_TRUE(is_drawn) << picture;
  }
}

TEST(Documents, TheIndexNamesEveryDocument) {
  const std::string index = ReadWholeFile(Root() / "docs/README.md");
  for (const fs::directory_entry& entry : fs::directory_iterator(Root() / "docs")) {
    const std::string name = entry.path().filename();
    if (entry.path().extension() != ".md" || name == "README.md") continue;
    EXPECT_THAT(index, ::testing::HasSubstr("(" + name + ")"));
  }
}

/// Every option that our programs and scripts say they have.
std::set<std::string> OwnOptions() {
  const pelora::testing::TemporaryFolder folder;
  const std::string manual = Environment("PELORA_MANUAL_FOLDER");
  std::string said = ReadWholeFile(manual + "/pelora-console.help") +
                     ReadWholeFile(manual + "/pelora-deploy.help");
  const ShellResult help = RunShell(
      "peloractl --help\n"
      "for command in $(peloractl --help | sed -n '/^Subcommands:/,/^$/s/^  \\([a-z]*\\) "
      ".*/\\1/p'); do\n"
      "  peloractl \"$command\" --help\ndone",
      folder.path().string());
  EXPECT_EQ(help.exit_code, 0) << help.output;
  said += help.output + ReadWholeFile(Root() / "tools/make_msi.py") +
          ReadWholeFile(Root() / "docs/draw_pictures.sh");
  const std::vector<std::string> options = Matches(said, R"((--[a-z][a-z-]*))");
  return {options.begin(), options.end()};
}

TEST(Documents, NameNoOptionThatThereIsNot) {
  std::set<std::string> known = OwnOptions();
  ASSERT_THAT(known, Contains("--screenshot"));
  ASSERT_THAT(known, Contains("--undo-file"));
  // Those of other programs: cmake, ctest, apt, a test program, a signer that stands for any.
  known.insert({"--preset", "--build", "--install", "--target", "--gtest", "--allow-downgrades",
                "--in-place"});
  for (const fs::path& document : Documents()) {
    for (const std::string& option :
         Matches(ReadWholeFile(document), R"((?:^|[^-\w])(--[a-z][a-z-]*))")) {
      EXPECT_TRUE(known.contains(option)) << document.filename() << " names " << option;
    }
  }
}

/// All sources, with texts that stand on several lines put together.
std::string Sources() {
  std::string sources;
  for (const char* folder : {"src", "hosts"}) {
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(Root() / folder)) {
      const fs::path extension = entry.path().extension();
      if (extension == ".cpp" || extension == ".h") sources += ReadWholeFile(entry.path());
    }
  }
  std::string joined;
  for (std::size_t at = 0; at < sources.size(); ++at) {
    if (sources[at] == '"') {
      const std::size_t next = sources.find_first_not_of(" \n", at + 1);
      if (next != std::string::npos && sources[next] == '"' && next > at + 1) {
        at = next;
        continue;
      }
    }
    joined += sources[at];
  }
  return joined;
}

TEST(Documents, EveryMessageOfTheTroubleshootingIsInThePrograms) {
  const std::string sources = Sources();
  const std::vector<std::string> messages =
      Matches(ReadWholeFile(Root() / "docs/troubleshooting.md"), R"re(\n\| "([^|]+)" \|)re");
  ASSERT_GT(messages.size(), 20U);
  for (const std::string& message : messages)
    EXPECT_NE(sources.find(message), std::string::npos) << message;
}

}  // namespace
}  // namespace pelora::test
