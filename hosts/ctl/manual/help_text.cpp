// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/manual/help_text.h"

#include <algorithm>

#include "directory/ascii_case.h"

namespace pelora::ctl {
namespace {

constexpr std::string_view kUsage = "usage:";

std::string_view Trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

void Join(std::string& text, std::string_view more) {
  if (!text.empty() && !more.empty()) text += ' ';
  text += more;
}

class HelpReader {
 public:
  void Take(std::string_view line) {
    const std::size_t indent = line.find_first_not_of(' ');
    if (indent == std::string_view::npos) {
      is_usage_ = false;
      goes_on_ = false;
    } else if (is_usage_ && indent > 0) {
      Join(help_.usage, Trimmed(line));
    } else if (indent == 0) {
      TakeOuter(Trimmed(line));
    } else if (indent <= term_indent_) {
      term_indent_ = indent;
      TakeTerm(Trimmed(line));
    } else {
      TakeMore(Trimmed(line));
    }
  }

  [[nodiscard]] ParsedHelp Finish() { return std::move(help_); }

 private:
  HelpSection& Section() {
    if (help_.sections.empty()) help_.sections.emplace_back();
    return help_.sections.back();
  }

  void TakeOuter(std::string_view line) {
    term_indent_ = std::string_view::npos;
    if (EqualsWithoutCase(line.substr(0, kUsage.size()), kUsage)) {
      help_.usage = Trimmed(line.substr(kUsage.size()));
      is_usage_ = true;
      return;
    }
    if (line.ends_with(':')) {
      help_.sections.push_back(
          {.title = std::string(line.substr(0, line.size() - 1)), .blocks = {}});
      goes_on_ = false;
      return;
    }
    // Words at the left edge behind terms stand under no heading any more.
    HelpSection& section = Section();
    const bool has_terms = !section.blocks.empty() && !section.blocks.back().term.empty();
    if (has_terms) help_.sections.emplace_back();
    if (!goes_on_ || has_terms) Section().blocks.emplace_back();
    Join(Section().blocks.back().text, line);
    goes_on_ = true;
  }

  void TakeTerm(std::string_view line) {
    const std::size_t gap = line.find("  ");
    Section().blocks.push_back({.term = std::string(line.substr(0, gap)),
                                .text = gap == std::string_view::npos
                                            ? std::string()
                                            : std::string(Trimmed(line.substr(gap)))});
    goes_on_ = false;
  }

  void TakeMore(std::string_view line) {
    if (Section().blocks.empty()) Section().blocks.emplace_back();
    Join(Section().blocks.back().text, line);
  }

  ParsedHelp help_;
  bool is_usage_ = false;
  /// Of the terms below the last line at the left edge: what is indented more goes on with one.
  std::size_t term_indent_ = std::string_view::npos;
  /// The paragraph that was read last is not at its end.
  bool goes_on_ = false;
};

}  // namespace

ParsedHelp ParseHelp(std::string_view text) {
  HelpReader reader;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    reader.Take(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return reader.Finish();
}

}  // namespace pelora::ctl
