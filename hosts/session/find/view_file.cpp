// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/find/view_file.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <system_error>
#include <utility>

#include "hosts/ldap/case_fold.h"
#include "hosts/session/check/check_rules.h"
#include "hosts/session/check/search_query.h"
#include "hosts/session/json_text.h"
#include "hosts/session/text.h"
#include "hosts/session/visible_text.h"

namespace pelora::session {
namespace {

constexpr std::string_view kFormat = "pelora-views";
constexpr int kVersion = 1;
constexpr std::size_t kLongestFile = 1 << 20;
constexpr std::size_t kMostViews = 500;
constexpr std::size_t kMostColumns = 100;
constexpr std::size_t kLongestName = 200;
constexpr std::size_t kLongestText = 10'000;

ReadViews Refused(std::string error) { return {.views = {}, .error = std::move(error)}; }

/// Reads one view; each function leaves the first error behind.
class ViewReader {
 public:
  explicit ViewReader(const Json& json) : json_(json) {}

  [[nodiscard]] std::optional<View> Read() {
    if (!json_.is_object()) return Fail("is no object");
    View view;
    view.name = Text("name", kLongestName);
    view.base = Text("base", kLongestText);
    view.filter = Text("filter", kLongestText);
    view.rule = Text("rule", kLongestName);
    view.below = Flag("below", true);
    view.columns = Columns();
    if (error_.empty()) Judge(view);
    if (!error_.empty()) return std::nullopt;
    return view;
  }
  [[nodiscard]] const std::string& error() const { return error_; }

 private:
  std::nullopt_t Fail(std::string error) {
    if (error_.empty()) error_ = std::move(error);
    return std::nullopt;
  }

  /// The member of a name; null when it is missing.
  [[nodiscard]] const Json* Member(const char* name) const {
    const auto found = json_.find(name);
    return found == json_.end() || found->is_null() ? nullptr : &*found;
  }

  std::string TextOf(const Json& value, const char* name, std::size_t longest) {
    if (!value.is_string()) return Fail(std::string(name) + " is no text"), std::string();
    std::string text = value.get<std::string>();
    if (CharacterCount(text) > longest) Fail(std::string(name) + " is too long");
    if (VisibleText(text) != text) Fail(std::string(name) + " holds control characters");
    return text;
  }
  std::string Text(const char* name, std::size_t longest) {
    const Json* const value = Member(name);
    return value == nullptr ? std::string() : TextOf(*value, name, longest);
  }
  bool Flag(const char* name, bool preset) {
    const Json* const value = Member(name);
    if (value == nullptr) return preset;
    if (!value->is_boolean()) return Fail(std::string(name) + " is neither true nor false"), preset;
    return value->get<bool>();
  }
  std::vector<std::string> Columns() {
    std::vector<std::string> columns;
    const Json* const value = Member("columns");
    if (value == nullptr) return columns;
    if (!value->is_array()) return Fail("columns is no list"), columns;
    if (value->size() > kMostColumns) return Fail("there are too many columns"), columns;
    for (const Json& column : *value) columns.push_back(TextOf(column, "columns", kLongestName));
    return columns;
  }

  void Judge(const View& view) {
    if (Trimmed(view.name).empty()) Fail("has no name");
    if (!view.rule.empty() && FindCheckRule(view.rule) == nullptr) {
      Fail("there is no rule \"" + view.rule + "\"");
    }
    if (view.filter.empty()) return;
    if (const std::optional<QueryFault> fault = FindQueryFault(view.filter); fault) {
      Fail("its filter is none: " + std::string(fault->reason));
    }
  }

  const Json& json_;
  std::string error_;
};

Json JsonOf(const View& view) {
  Json json;
  json["name"] = view.name;
  if (!view.base.empty()) json["base"] = view.base;
  json["below"] = view.below;
  if (!view.filter.empty()) json["filter"] = view.filter;
  if (!view.rule.empty()) json["rule"] = view.rule;
  json["columns"] = view.columns;
  return json;
}

ReadViews ViewsOf(const Json& list) {
  if (list.size() > kMostViews) return Refused("there are more than 500 views");
  ReadViews read;
  std::set<std::string> names;
  for (std::size_t at = 0; at < list.size(); ++at) {
    ViewReader reader(list[at]);
    std::optional<View> view = reader.Read();
    const std::string which = "view " + std::to_string(at + 1);
    if (!view) return Refused(which + ": " + reader.error());
    if (!names.insert(ldap::FoldCase(view->name)).second) {
      return Refused(which + ": another one is called \"" + view->name + "\" too");
    }
    read.views.push_back(std::move(*view));
  }
  return read;
}

}  // namespace

ReadViews ViewsOfText(std::string_view text) {
  if (text.size() > kLongestFile) return Refused("the file is larger than a megabyte");
  const Json json = Json::parse(text, nullptr, false);
  if (json.is_discarded()) return Refused("the file is no JSON");
  const auto format = json.is_object() ? json.find("format") : json.end();
  if (!json.is_object() || format == json.end() || *format != kFormat) {
    return Refused("the file holds no views");
  }
  const auto version = json.find("version");
  if (version == json.end() || *version != kVersion) {
    return Refused("the file is of a version that is not known");
  }
  const auto views = json.find("views");
  if (views == json.end() || !views->is_array()) return Refused("the file holds no views");
  return ViewsOf(*views);
}

std::string TextOfViews(const std::vector<View>& views) {
  Json json;
  json["format"] = kFormat;
  json["version"] = kVersion;
  json["views"] = Json::array();
  for (const View& view : views) json["views"].push_back(JsonOf(view));
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

ReadViews LoadViews(const std::string& path) {
  std::error_code failure;
  if (!std::filesystem::is_regular_file(path, failure)) {
    return Refused(path + ": there is no such file");
  }
  std::ifstream file(path, std::ios::binary);
  std::string text(kLongestFile + 1, '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (!file.is_open() || file.bad()) return Refused(path + ": the file cannot be read");
  text.resize(static_cast<std::size_t>(file.gcount()));
  ReadViews read = ViewsOfText(text);
  if (!read.error.empty()) read.error = path + ": " + read.error;
  return read;
}

std::string SaveViews(const std::string& path, const std::vector<View>& views) {
  // Beside the file, so that the one takes the other's place at once.
  const std::string written = path + ".new";
  std::error_code failure;
  {
    std::ofstream file(written, std::ios::binary | std::ios::trunc);
    file << TextOfViews(views);
    file.close();
    if (!file) {
      std::filesystem::remove(written, failure);
      return path + ": the file cannot be written";
    }
  }
  std::filesystem::rename(written, path, failure);
  return failure ? path + ": the file cannot be written: " + failure.message() : std::string();
}

}  // namespace pelora::session
