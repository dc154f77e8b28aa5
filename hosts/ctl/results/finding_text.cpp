// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/results/finding_text.h"

#include "hosts/ctl/results/json_line.h"
#include "hosts/session/visible_text.h"

namespace pelora::ctl {

std::string FindingLine(const session::Finding& finding) {
  return std::string(finding.rule) + "\t" + session::NameOnOneLine(finding.dn) + "\t" +
         session::OnOneLine(finding.message);
}

std::string FindingJson(const session::Finding& finding) {
  Json object;
  object["rule"] = finding.rule;
  object["dn"] = finding.dn;
  object["message"] = finding.message;
  object["others"] = finding.others;
  return JsonLine(object);
}

}  // namespace pelora::ctl
