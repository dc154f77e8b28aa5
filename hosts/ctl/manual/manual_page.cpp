// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/manual/manual_page.h"

#include <algorithm>
#include <stdexcept>

#include "hosts/ctl/manual/help_text.h"

namespace pelora::ctl {
namespace {

constexpr std::string_view kVersion = "@VERSION@";
/// The heading under which the common parsers list options.
constexpr std::string_view kOptions = "Options";

[[nodiscard]] std::runtime_error Wrong(std::string_view line) {
  return std::runtime_error("this line stands for nothing: " + std::string(line));
}

std::string Paragraph(const HelpBlock& block) {
  if (block.term.empty()) return ".PP\n" + ManualText(block.text) + "\n";
  return ".TP\n.B " + ManualText(block.term) + "\n" + ManualText(block.text) + "\n";
}

std::string Paragraphs(const HelpSection& section) {
  std::string text;
  for (const HelpBlock& block : section.blocks) text += Paragraph(block);
  return text;
}

std::string Introduction(const ParsedHelp& help) {
  if (help.sections.empty() || !help.sections.front().title.empty()) return {};
  return Paragraphs(help.sections.front());
}

std::string Notes(const ParsedHelp& help) {
  std::string text;
  for (std::size_t at = 1; at < help.sections.size(); ++at) {
    if (help.sections[at].title.empty()) text += Paragraphs(help.sections[at]);
  }
  return text;
}

std::string SectionOf(const ParsedHelp& help, std::string_view title) {
  std::string text;
  for (const HelpSection& section : help.sections) {
    if (section.title == title) text += Paragraphs(section);
  }
  return text;
}

/// How the command of a name is called and what it does, with the options that the program itself
/// does not have.
std::string CommandText(const std::string& program, const std::string& command,
                        const ManualSources& sources) {
  ParsedHelp help = ParseHelp(sources.help_of(program + " " + command));
  const ParsedHelp of_program = ParseHelp(sources.help_of(program));
  const auto is_known = [&of_program](const HelpBlock& block) {
    return std::ranges::any_of(of_program.sections, [&block](const HelpSection& section) {
      return std::ranges::find(section.blocks, block.term, &HelpBlock::term) !=
             section.blocks.end();
    });
  };
  for (HelpSection& section : help.sections) {
    if (section.title == kOptions) std::erase_if(section.blocks, is_known);
  }
  return ".SS " + ManualText(command) + "\n.B " + ManualText(help.usage) + "\n" +
         Introduction(help) + SectionOf(help, kOptions);
}

std::string Commands(const std::string& program, const ManualSources& sources) {
  std::string text;
  for (const std::string& command : sources.commands) {
    text += CommandText(program, command, sources);
  }
  return text;
}

/// What a line between at-signs stands for.
std::string Expanded(std::string_view line, const ManualSources& sources) {
  const std::string_view inner = line.substr(1, line.size() - 2);
  const std::size_t blank = inner.find(' ');
  if (blank == std::string_view::npos) throw Wrong(line);
  const std::string_view what = inner.substr(0, blank);
  const std::string name(inner.substr(blank + 1));
  const std::size_t colon = name.find(": ");
  std::string text;
  if (what == "USAGE") {
    text = ".B " + ManualText(ParseHelp(sources.help_of(name)).usage) + "\n";
  } else if (what == "INTRODUCTION") {
    text = Introduction(ParseHelp(sources.help_of(name)));
  } else if (what == "NOTES") {
    text = Notes(ParseHelp(sources.help_of(name)));
  } else if (what == "SECTION" && colon != std::string::npos) {
    text = SectionOf(ParseHelp(sources.help_of(name.substr(0, colon))), name.substr(colon + 2));
  } else if (what == "COMMANDS") {
    text = Commands(name, sources);
  } else if (what == "TABLE") {
    text = sources.table_of(name);
  }
  if (text.empty()) throw Wrong(line);
  return text;
}

}  // namespace

std::string ManualText(std::string_view text) {
  std::string escaped;
  for (const char sign : text) {
    const bool begins_line = escaped.empty() || escaped.back() == '\n';
    if (begins_line && (sign == '.' || sign == '\'')) escaped += "\\&";
    if (sign == '\\') {
      escaped += "\\e";
    } else if (sign == '-') {
      escaped += "\\-";
    } else if (sign == '"') {
      escaped += "\\(dq";
    } else if (sign == '\'') {
      escaped += "\\(aq";
    } else {
      escaped += sign;
    }
  }
  return escaped;
}

std::string MakeManualPage(std::string_view page, const ManualSources& sources) {
  std::string text;
  while (!page.empty()) {
    const std::size_t end = page.find('\n');
    std::string line(page.substr(0, end));
    page.remove_prefix(end == std::string_view::npos ? page.size() : end + 1);
    if (const std::size_t place = line.find(kVersion); place != std::string::npos) {
      line.replace(place, kVersion.size(), sources.version);
    }
    const bool stands_for_more = line.size() > 1 && line.front() == '@' && line.back() == '@';
    text += stands_for_more ? Expanded(line, sources) : line + "\n";
  }
  return text;
}

}  // namespace pelora::ctl
