// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/pages/change_objects.h"

#include "hosts/ctl/objects/read_settings.h"

namespace pelora::ctl {
namespace {

changes::Prepared Refused(const std::string& dn, const std::string& reason) {
  return {.change = {},
          .instead =
              changes::Result{.dn = dn, .outcome = changes::Outcome::kRefused, .message = reason}};
}

}  // namespace

int ChangeObjects(const CommandLine& line, Program& program, Workplace& workplace,
                  std::span<const Target> targets, const AssignmentsAt& assignments_at,
                  const Checks& checks) {
  std::vector<std::string> names;
  names.reserve(targets.size());
  for (const Target& target : targets) names.push_back(target.dn);
  SettingsChanger changer(*workplace.session, program.module, workplace.catalogue,
                          workplace.finder);
  WriteRun run(line, program, *workplace.session, targets.size());
  changes::RunOptions options = run.Options();
  options.attributes = SettingsAttributes();
  options.at_hand = [&](std::size_t at) { return targets[at].entry.get(); };
  const auto prepare = [&](changes::ReadObject object) {
    const Target& target = targets[object.at];
    // What is not called by its name is named as it was given.
    if (object.entry.dn.empty()) object.entry.dn = target.dn.empty() ? target.given : target.dn;
    if (!target.problem.empty()) return Refused(target.given, target.problem);
    if (checks.why_not && object.status.Ok()) {
      const std::string reason = checks.why_not(object.at, object.entry);
      if (!reason.empty()) return Refused(object.entry.dn, reason);
    }
    return changer.Prepare(std::move(object), assignments_at(object.at));
  };
  const auto take = [&](std::size_t at, const changes::Result& result) {
    if (!result.dn.empty()) return run.results().Take(result);
    changes::Result named = result;
    named.dn = targets[at].given;
    run.results().Take(named);
  };
  const changes::Tally tally =
      changes::RunChanges(workplace.store(), names, prepare, options, take);
  if (checks.when_not_all && !tally.IsAllDone()) checks.when_not_all();
  return run.results().Finish();
}

}  // namespace pelora::ctl
