// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "server/class_table.h"
#include "tests/support/variant_text.h"
#include "tests/unit/page_bench.h"

namespace pelora::testing {

/// Paths of the objects that a tab is opened on, in the selection's order.
inline const std::vector<std::string> kTabPaths = {"LDAP://CN=One,DC=x", "LDAP://CN=Two,DC=x",
                                                   "LDAP://CN=Three,DC=x"};

/// Lines of a log, compared as text.
using Lines = std::vector<std::string>;

/// Base of suites that open a tab of the class table on objects in memory. The objects offer the
/// general interface of directory objects and no other.
class TabTest : public ::testing::Test {
 protected:
  /// Opens a tab on as many objects as there are sets of attributes.
  void Open(std::string_view component, const std::vector<FakeAttributes>& objects) {
    Lines paths(kTabPaths.begin(), kTabPaths.begin() + static_cast<std::ptrdiff_t>(objects.size()));
    for (std::size_t object = 0; object < objects.size(); ++object) {
      bench_.directory.AddObject(paths[object], objects[object], {});
    }
    page_.reset();
    CSnapInPropertyPage* page = Make(component);
    page_.emplace(bench_, page, bench_.Template(page->dialog_template()), paths);
  }
  /// A tab with the one reference that its caller owns.
  [[nodiscard]] CSnapInPropertyPage* Make(std::string_view component) {
    return dynamic_cast<CSnapInPropertyPage*>(FindClass(component)->create(bench_.platform));
  }

  [[nodiscard]] OpenPage<CSnapInPropertyPage>& page() { return *page_; }
  [[nodiscard]] HeadlessDialog& dialog() { return page().dialog(); }
  [[nodiscard]] std::string Text(ControlId id) { return dialog().Text(id); }
  std::int32_t Command(ControlId id, ControlNotification notification) {
    return page().page().OnCommand(id, notification);
  }

  /// What an apply stages on the first object: "attribute value" or "attribute cleared" each.
  [[nodiscard]] Lines Applied() {
    bench_.directory.ClearCalls();
    const std::size_t boxes = bench_.messages.records().size();
    EXPECT_TRUE(page().Apply());
    EXPECT_EQ(bench_.messages.records().size(), boxes);
    return Staged(0);
  }
  /// What the last apply staged on an object.
  [[nodiscard]] Lines Staged(std::size_t object) const {
    Lines staged;
    for (const DirectoryCall& call : bench_.directory.calls()) {
      if (call.path != kTabPaths.at(object)) continue;
      if (call.kind == DirectoryCall::Kind::kPut) {
        staged.push_back(call.name + " " + ToText(call.value));
      } else if (call.kind == DirectoryCall::Kind::kPutEx) {
        EXPECT_EQ(call.control, ADS_PROPERTY_CLEAR);
        staged.push_back(call.name + " cleared");
      }
    }
    return staged;
  }
  /// Applies and gives what the error box says, without the line of the code; nothing is staged.
  [[nodiscard]] std::string Refusal() {
    bench_.directory.ClearCalls();
    EXPECT_FALSE(page().Apply());
    EXPECT_TRUE(bench_.Writes().empty());
    if (bench_.messages.records().empty()) return "no message";
    const std::string text = bench_.messages.records().back().message.text;
    EXPECT_NE(text.find("\r\n\r\nError code: 0X80004005"), std::string::npos);
    return text.substr(0, text.find("\r\n"));
  }

  /// Adds an object to be chosen, by its distinguished name, and has the next picker choose it.
  void Choose(const Lines& names) {
    Lines paths;
    for (const std::string& name : names) {
      paths.push_back("LDAP://" + name);
      const std::string cn = name.substr(name.find('=') + 1, name.find(',') - name.find('=') - 1);
      bench_.directory.AddObject(
          paths.back(), {{"cn", Variant::String(cn)}, {"distinguishedName", Variant::String(name)}},
          {});
    }
    bench_.choosers.Choose(paths);
  }

  PageBench bench_;
  std::optional<OpenPage<CSnapInPropertyPage>> page_;
};

}  // namespace pelora::testing
