// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/architecture/source_tree.h"

namespace pelora::test {
namespace {

using ::testing::IsEmpty;

/// Layers of the extension, each with the layers that it may include; longest folder first.
const std::vector<std::pair<std::string, std::set<std::string>>> kExtensionLayers = {
    {"pages/objects", {"pages/objects", "pages", "directory", "platform", "resources"}},
    {"platform", {"platform"}},
    {"resources", {"resources"}},
    {"directory", {"directory", "platform", "resources"}},
    {"pages", {"pages", "directory", "platform", "resources"}},
    {"features", {"features", "pages", "directory", "platform", "resources"}},
    {"wizards", {"wizards", "pages", "directory", "platform", "resources"}},
    {"server",
     {"server", "wizards", "features", "pages/objects", "pages", "directory", "platform",
      "resources"}},
};

/// Folders of hosts, each with the other hosts' folders that it may include.
const std::map<std::string, std::set<std::string>> kHosts = {
    {"resources", {}},
    {"selection", {}},
    {"sheets", {"resources"}},
    {"headless", {"resources", "selection", "sheets"}},
    {"ldap", {}},
    {"changes", {"ldap"}},
    {"windows", {}},
    {"session", {"resources", "selection", "sheets", "changes", "ldap"}},
    {"console", {"resources", "selection", "sheets", "changes", "ldap", "session"}},
    {"ctl", {"resources", "selection", "sheets", "headless", "changes", "ldap", "session"}},
};

/// What hosts may include of `src` besides the ports: a component is reached by its class
/// identifier
/// (`server/component_server.h`) and through the ports, never by its class.
struct SourceHelper {
  std::string header;
  /// Empty: all of them.
  std::set<std::string> hosts;
};

const std::vector<SourceHelper> kSourceHelpers = {
    // Texts and bytes.
    {"directory/ascii_case.h", {}},
    {"directory/utf.h", {}},
    {"directory/byte_block.h", {"selection", "windows"}},
    {"directory/ds_object_names.h", {"selection"}},
    {"directory/ds_selection_list.h", {"selection", "session", "windows"}},
    // What choosers hand over.
    {"directory/selection_reader.h", {"session"}},
    {"directory/locked_medium.h", {"windows"}},
    // Which attributes there are.
    {"directory/attribute_catalogue.h", {"ldap", "session", "ctl"}},
    // What failures are called.
    {"directory/creation_failure.h", {"console", "ctl"}},
    {"directory/error_text.h", {"session", "console", "ctl"}},
    // Numbers of dialogs and controls.
    {"resources/resource.h", {}},
    // Components by their identifiers, and which there are.
    {"server/component_server.h", {"session", "ctl", "windows"}},
    {"server/class_table.h", {"ldap", "windows"}},
    {"server/console_registration.h", {"ldap", "session"}},
    {"server/guid_text.h", {"ldap"}},
    // The module itself.
    {"server/module_identity.h", {"windows"}},
    {"server/pelora_prop_module.h", {"windows"}},
    {"server/registration_ports.h", {"windows"}},
    {"server/registry.h", {"windows"}},
};

/// Whether a source of a host may include a header of `src`.
bool MayInclude(const std::string& host, const std::string& header) {
  if (header.starts_with("platform/")) return true;
  const auto helper = std::ranges::find(kSourceHelpers, header, &SourceHelper::header);
  return helper != kSourceHelpers.end() && (helper->hosts.empty() || helper->hosts.contains(host));
}

/// The layer of a path below `src`; empty when it lies in none.
std::string LayerOf(const std::string& path) {
  const auto layer = std::ranges::find_if(
      kExtensionLayers, [&](const auto& row) { return path.starts_with(row.first + "/"); });
  return layer == kExtensionLayers.end() ? std::string() : layer->first;
}

const std::set<std::string>& AllowedLayers(const std::string& layer) {
  return std::ranges::find(kExtensionLayers, layer, [](const auto& row) { return row.first; })
      ->second;
}

const std::set<std::string> kStandardHeaders = {
    "algorithm", "array",       "atomic",   "charconv",    "chrono",  "compare", "concepts",
    "cstddef",   "cstdint",     "cstdio",   "cstdlib",     "cstring", "cwchar",  "deque",
    "exception", "functional",  "iterator", "limits",      "list",    "map",     "memory",
    "new",       "numeric",     "optional", "ranges",      "set",     "span",    "stdexcept",
    "string",    "string_view", "tuple",    "type_traits", "utility", "variant", "vector",
};

/// The folder of hosts in which a source lies.
std::string HostOf(const SourceFile& file) {
  const std::string below = file.path.substr(std::string("hosts/").size());
  return below.substr(0, below.find('/'));
}

/// What `file`, of a host, includes of `src` and may not.
std::vector<std::string> HostViolations(const SourceFile& file) {
  std::vector<std::string> violations;
  for (const std::string& include : file.Includes()) {
    const std::string name = include.substr(1, include.size() - 2);
    const bool is_of_source = include.starts_with('"') && !LayerOf(name).empty();
    if (is_of_source && !MayInclude(HostOf(file), name)) {
      violations.push_back(file.path + " includes " + include);
    }
  }
  return violations;
}

/// Why `file`, below `src`, may not include what it includes.
std::vector<std::string> Violations(const SourceFile& file) {
  const std::string layer = LayerOf(file.path.substr(std::string("src/").size()));
  if (layer.empty()) return {file.path + " lies in no layer"};
  std::vector<std::string> violations;
  for (const std::string& include : file.Includes()) {
    const std::string name = include.substr(1, include.size() - 2);
    const bool is_system = include.starts_with('<');
    // The status codes are the system's own where the system has them.
    const bool is_exception =
        file.path == "src/platform/hresult.h" && (name == "windows.h" || name == "adserr.h");
    const bool allowed = is_system ? is_exception || kStandardHeaders.contains(name)
                                   : AllowedLayers(layer).contains(LayerOf(name));
    if (!allowed) violations.push_back(file.path + " includes " + include);
  }
  return violations;
}

TEST(IncludeArrows, TheExtensionPointsOnlyTowardsThePorts) {
  std::vector<std::string> violations;
  const std::vector<SourceFile> files = ReadSources({"src"});
  ASSERT_GT(files.size(), 20U);
  for (const SourceFile& file : files) {
    for (const std::string& violation : Violations(file)) violations.push_back(violation);
  }
  EXPECT_THAT(violations, IsEmpty());
}

TEST(IncludeArrows, HostsPointToTheExtensionAndToTheHostsBelowThem) {
  std::vector<std::string> violations;
  for (const SourceFile& file : ReadSources({"hosts"})) {
    const std::string host = HostOf(file);
    ASSERT_TRUE(kHosts.contains(host)) << file.path;
    for (const std::string& include : file.Includes()) {
      if (!include.starts_with("\"hosts/")) continue;
      const std::string target = include.substr(std::string("\"hosts/").size());
      const std::string other = target.substr(0, target.find('/'));
      if (other != host && !kHosts.at(host).contains(other)) {
        violations.push_back(file.path + " includes " + include);
      }
    }
  }
  EXPECT_THAT(violations, IsEmpty());
}

TEST(IncludeArrows, HostsReachComponentsThroughThePorts) {
  std::vector<std::string> violations;
  for (const SourceFile& file : ReadSources({"hosts"})) {
    for (const std::string& violation : HostViolations(file)) violations.push_back(violation);
  }
  EXPECT_THAT(violations, IsEmpty());
}

TEST(IncludeArrows, EveryHelperThatHostsMayIncludeIsUsed) {
  std::set<std::string> used;
  for (const SourceFile& file : ReadSources({"hosts"})) {
    for (const std::string& include : file.Includes()) {
      used.insert(include.substr(1, include.size() - 2));
    }
  }
  for (const SourceHelper& helper : kSourceHelpers) {
    EXPECT_TRUE(used.contains(helper.header)) << helper.header;
  }
}

TEST(IncludeArrows, NothingButTestsIncludesTests) {
  std::vector<std::string> violations;
  for (const SourceFile& file : ReadSources({"src", "hosts"})) {
    for (const std::string& include : file.Includes()) {
      if (include.starts_with("\"tests/")) violations.push_back(file.path + " includes " + include);
    }
  }
  EXPECT_THAT(violations, IsEmpty());
}

TEST(IncludeArrows, AnArrowAgainstTheDirectionIsFound) {
  const SourceFile upward{.path = "src/directory/a.h", .lines = {"#include \"pages/prop_page.h\""}};
  const SourceFile foreign{.path = "src/pages/a.h", .lines = {"#include <windows.h>"}};
  const SourceFile stray{.path = "src/elsewhere/a.h", .lines = {}};
  const SourceFile right{.path = "src/pages/a.h",
                         .lines = {"#include <string>", "#include \"directory/ads_base.h\""}};
  EXPECT_EQ(Violations(upward).size(), 1U);
  EXPECT_EQ(Violations(foreign).size(), 1U);
  EXPECT_EQ(Violations(stray).size(), 1U);
  const SourceFile by_class{
      .path = "hosts/console/a.cpp",
      .lines = {"#include \"pages/prop_page.h\"", "#include \"platform/dialog.h\"",
                "#include \"server/class_table.h\"", "#include \"directory/utf.h\""}};
  EXPECT_EQ(HostViolations(by_class).size(), 2U);
  EXPECT_THAT(Violations(right), IsEmpty());
}

}  // namespace
}  // namespace pelora::test
