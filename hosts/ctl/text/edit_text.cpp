// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/text/edit_text.h"

#include <algorithm>
#include <array>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ctl/results/json_line.h"
#include "hosts/ctl/text/without_blanks.h"
#include "hosts/session/utf8_check.h"
#include "hosts/session/visible_text.h"

namespace pelora::ctl {
namespace {

constexpr std::string_view kFaultMark = "#! ";

constexpr std::array<std::string_view, 5> kHead = {
    "Change the values, save, and leave the editor; what was changed is applied.",
    "A list has a line for each of its values: a line more adds one, a line less removes one.",
    "Other fields whose line is taken out, and objects that are taken out, stay as they are.",
    "FIELD: alone empties a field. FIELD:: \"...\" holds a value with line breaks and the like.",
    "Lines that begin with # say nothing."};

/// Whether a value can stand on a line as it is.
bool IsPlain(const std::string& value) {
  if (value.starts_with(' ') || value.ends_with(' ')) return false;
  return session::VisibleText(value) == value && !session::FirstInvalidByte(value);
}

std::string ValueLine(const std::string& name, const std::string& value) {
  if (IsPlain(value)) return name + ": " + value + "\n";
  return name + ":: " + JsonLine(value) + "\n";
}

bool IsFieldName(std::string_view name) {
  return !name.empty() && std::ranges::all_of(name, [](char letter) {
    const char lower = AsciiLowerCase(letter);
    return (lower >= 'a' && lower <= 'z') || (letter >= '0' && letter <= '9') || letter == '.' ||
           letter == '-';
  });
}

/// Takes the first line off a text, without its line feed.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return line;
}

bool SaysNothing(std::string_view line) { return line.empty() || line.starts_with('#'); }

/// Reads one line into the objects; what is wrong with it, or nothing.
std::string ReadLine(std::string_view line, std::size_t number, std::vector<EditObject>& objects) {
  if (SaysNothing(line)) return {};
  if (session::FirstInvalidByte(line)) return "this is not UTF-8";
  const std::size_t mark = line.find_first_of(":=");
  if (mark == std::string_view::npos) return "neither a distinguished name nor FIELD: VALUE";
  if (line[mark] == '=') {
    objects.push_back({.dn = std::string(line), .line = number});
    return {};
  }
  const std::string_view name = line.substr(0, mark);
  if (!IsFieldName(name)) return "neither a distinguished name nor FIELD: VALUE";
  if (objects.empty()) return "no object is named above";
  std::vector<EditField>& fields = objects.back().fields;
  auto field = std::ranges::find_if(
      fields, [name](const EditField& known) { return EqualsWithoutCase(known.name, name); });
  if (field == fields.end()) {
    fields.push_back({.name = std::string(name), .line = number});
    field = fields.end() - 1;
  }
  std::string_view value = line.substr(mark + 1);
  if (!value.starts_with(':')) {
    value = WithoutBlanks(value);
    if (!value.empty()) field->values.emplace_back(value);
    return {};
  }
  const auto text = Json::parse(value.substr(1), nullptr, false);
  if (!text.is_string()) return "behind :: stands no string in quotation marks";
  // No attribute holds an empty text: an empty one between quotation marks is no value either.
  if (auto inside = text.get<std::string>(); !inside.empty()) {
    field->values.push_back(std::move(inside));
  }
  return {};
}

}  // namespace

std::string WriteEditText(std::span<const EditObject> objects) {
  std::string text;
  for (const std::string_view line : kHead) text += "# " + std::string(line) + "\n";
  for (const EditObject& object : objects) {
    text += "\n" + session::NameOnOneLine(object.dn) + "\n";
    for (const EditField& field : object.fields) {
      text += "# " + session::VisibleText(field.label) + "\n";
      if (field.values.empty()) text += field.name + ":\n";
      for (const std::string& value : field.values) text += ValueLine(field.name, value);
    }
  }
  return text;
}

std::optional<EditFault> ReadEditText(std::string_view text, std::vector<EditObject>& objects) {
  objects.clear();
  for (std::size_t number = 1; !text.empty(); ++number) {
    std::string fault = ReadLine(WithoutBlanks(TakeLine(text)), number, objects);
    if (!fault.empty()) return EditFault{.line = number, .text = std::move(fault)};
  }
  return std::nullopt;
}

std::string WithoutComments(std::string_view text) {
  std::string said;
  while (!text.empty()) {
    const std::string_view line = WithoutBlanks(TakeLine(text));
    if (!SaysNothing(line)) said += std::string(line) + "\n";
  }
  return said;
}

std::string WithFaults(std::string_view text, std::span<const EditFault> faults) {
  std::string told;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::string_view line = TakeLine(text);
    for (const EditFault& fault : faults) {
      if (fault.line == number)
        told += std::string(kFaultMark) + session::OnOneLine(fault.text) + "\n";
    }
    if (!line.starts_with(kFaultMark)) told += std::string(line) + "\n";
  }
  return told;
}

}  // namespace pelora::ctl
