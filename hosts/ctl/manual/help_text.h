// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pelora::ctl {

/// A piece of a help text: a paragraph, or an option or word with what is said of it.
struct HelpBlock {
  /// Empty for a paragraph.
  std::string term;
  std::string text;
};

/// What stands under one heading.
struct HelpSection {
  /// Without its colon; empty for what stands under none.
  std::string title;
  std::vector<HelpBlock> blocks;
};

/// What a program says when it is asked for help, taken apart.
struct ParsedHelp {
  /// How it is called, on one line, without the word "Usage".
  std::string usage;
  std::vector<HelpSection> sections;
};

/// Takes apart a help text as common parsers of command lines print it: paragraphs, `Title:` lines,
/// and below them terms that are indented a little with their texts behind two blanks at least, or
/// on the next lines, indented more.
[[nodiscard]] ParsedHelp ParseHelp(std::string_view text);

}  // namespace pelora::ctl
