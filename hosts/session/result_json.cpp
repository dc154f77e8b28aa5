// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/result_json.h"

#include "directory/error_text.h"
#include "hosts/session/json_text.h"

namespace pelora::session {

std::string ResultJson(const changes::Result& result, Done done) {
  Json object;
  object["result"] = WordOf(result.outcome);
  object["dn"] = result.dn;
  object["message"] = result.message.empty() ? Json() : Json(result.message);
  object["code"] = result.code ? Json(CodeText(*result.code)) : Json();
  if (done == Done::kRehearsed) object["dryRun"] = true;
  return JsonLine(object);
}

}  // namespace pelora::session
