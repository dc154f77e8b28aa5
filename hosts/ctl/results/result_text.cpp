// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/results/result_text.h"

#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/results/json_line.h"
#include "hosts/ctl/text/assignment.h"
#include "hosts/session/visible_text.h"

namespace pelora::ctl {

std::string ResultLine(const changes::Result& result) {
  // What was not found is told as it was given.
  const std::string name = IsDistinguishedName(result.dn) ? session::NameOnOneLine(result.dn)
                                                          : session::OnOneLine(result.dn);
  std::string line = std::string(WordOf(result.outcome)) + "\t" + name;
  if (!result.message.empty()) line += "\t" + session::OnOneLine(result.message);
  return line;
}

std::vector<std::string> DoneObjects(std::string_view report, const std::string& name) {
  std::vector<std::string> done;
  for (std::size_t line = 1; !report.empty(); ++line) {
    const std::size_t end = report.find('\n');
    const std::string_view text = report.substr(0, end);
    const bool is_whole = end != std::string_view::npos;
    report.remove_prefix(is_whole ? end + 1 : report.size());
    if (text.empty()) continue;
    const Json object = Json::parse(text, nullptr, false);
    const bool is_result = object.is_object() && object.contains("dn") &&
                           object.contains("result") && object["dn"].is_string() &&
                           object["result"].is_string();
    if (!is_result) {
      if (!is_whole) break;
      throw WrongUsage(name + ", line " + std::to_string(line) + ": this is no result");
    }
    const auto outcome = changes::OutcomeOfWord(object["result"].get<std::string>());
    // What a dry run would have changed is still to be done.
    const bool is_rehearsed = object.value("dryRun", Json()) == Json(true);
    const bool is_done = outcome == changes::Outcome::kUnchanged ||
                         (outcome == changes::Outcome::kChanged && !is_rehearsed);
    if (is_done) done.push_back(object["dn"].get<std::string>());
  }
  return done;
}

}  // namespace pelora::ctl
