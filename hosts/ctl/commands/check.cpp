// SPDX-License-Identifier: Apache-2.0
#include <set>
#include <span>
#include <string>
#include <vector>

#include "hosts/changes/change_runner.h"
#include "hosts/changes/whole_list.h"
#include "hosts/ctl/commands/commands.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/results/finding_text.h"
#include "hosts/ctl/results/write_run.h"
#include "hosts/ctl/workplace.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/session/check/run_check.h"

namespace pelora::ctl {
namespace {

using session::Finding;

std::vector<const session::CheckRule*> RulesOf(const CommandLine& line) {
  std::vector<const session::CheckRule*> rules;
  for (const std::string& name : line.rules) {
    const session::CheckRule* const rule = session::FindCheckRule(name);
    if (rule == nullptr) throw WrongUsage("there is no rule \"" + name + "\"");
    rules.push_back(rule);
  }
  return rules;
}

void Check(const CommandLine& line, Workplace& workplace, const session::FindingSink& sink) {
  const std::string base = line.base.value_or("");
  const session::CheckRequest request = {.base = base, .rules = RulesOf(line)};
  const ldap::StoreStatus status = session::RunCheck(
      workplace.store(), request, session::CheckFieldsOf(workplace.catalogue), sink);
  if (status.Ok()) return;
  if (status.code == ldap::kLdapNoSuchObject || status.code == ldap::kLdapInvalidDnSyntax) {
    throw WrongUsage(base + ": there is no such object to look below");
  }
  throw CtlError(kExitNoDirectory, "the directory cannot be searched: " + status.text);
}

/// Where findings go: with the LDIF of a dry run they stand beside it.
class FindingPrint {
 public:
  FindingPrint(const CommandLine& line, Program& program)
      : is_json_(line.json), output_(line.fix && line.dry_run ? program.errors : program.output) {}

  void Print(const Finding& finding) {
    ++count_;
    output_.WriteLine(is_json_ ? FindingJson(finding) : FindingLine(finding));
  }
  [[nodiscard]] int ExitCode() const { return count_ == 0 ? kExitDone : kExitNotAll; }

 private:
  bool is_json_;
  Output& output_;
  std::size_t count_ = 0;
};

/// Reads what the lists hold of which the mends name what goes: taking back needs all of it.
void CompleteLists(ldap::IDirectoryStore& store, std::span<changes::Change> mends) {
  std::vector<std::string> names;
  std::set<std::string> attributes;
  for (const changes::Change& mend : mends) {
    names.push_back(mend.dn);
    for (const changes::ValueChange& value : mend.attributes) attributes.insert(value.attribute);
  }
  std::size_t at = 0;
  // What cannot be read now is told when it is mended.
  static_cast<void>(store.ReadMany(names,
                                   std::vector<std::string>(attributes.begin(), attributes.end()),
                                   [&](const ldap::StoreStatus& read, const ldap::Entry& entry) {
                                     changes::Change& mend = mends[at++];
                                     if (read.Ok())
                                       changes::CompleteLists(store.schema(), entry, mend);
                                     return true;
                                   }));
}

/// Mends what can be, tells what became of it, and then what is left.
int Fix(const CommandLine& line, Program& program, Workplace& workplace) {
  std::vector<Finding> findings;
  Check(line, workplace, [&findings](Finding finding) { findings.push_back(std::move(finding)); });
  std::vector<changes::Change> mends = session::MendsOf(findings);
  if (line.undo_file) CompleteLists(workplace.store(), mends);
  WriteRun run(line, program, *workplace.session, mends.size());
  std::set<std::string> mended;
  changes::RunChanges(workplace.store(), mends, run.Options(),
                      [&](std::size_t /*at*/, const changes::Result& result) {
                        run.results().Take(result);
                        if (result.IsDone()) mended.insert(result.dn);
                      });
  run.results().ClearProgress();
  FindingPrint print(line, program);
  for (const Finding& finding : findings) {
    if (!finding.mend || !mended.contains(finding.dn)) print.Print(finding);
  }
  // The counts are the last that is said, also where all of this goes to standard error.
  const int result_code = run.results().Finish();
  return result_code == kExitInterrupted ? result_code : print.ExitCode();
}

/// What is about changes means nothing where nothing is changed: whoever gives it expects something
/// else of the command.
void RefuseOptionsOfChanges(const CommandLine& line) {
  const auto refuse = [](std::string_view option) {
    throw WrongUsage(std::string(option) + ": a check changes nothing without --fix");
  };
  if (line.dry_run) refuse("--dry-run");
  if (line.undo_file) refuse("--undo-file");
  if (line.report) refuse("--report");
  if (line.stop) refuse("--stop");
}

int RunCheck(const CommandLine& line, Program& program) {
  if (!line.arguments.empty()) throw WrongUsage("a check takes no objects, only --base");
  if (!line.fix) RefuseOptionsOfChanges(line);
  (void)RulesOf(line);
  if (line.fix) CheckOutputs(line);
  Workplace workplace(line, program);
  if (line.fix) return Fix(line, program, workplace);
  FindingPrint print(line, program);
  Check(line, workplace, [&print](const Finding& finding) { print.Print(finding); });
  return print.ExitCode();
}

std::string Description() {
  constexpr std::size_t kColumn = 20;
  std::string text =
      "Looks at every object with Pelora tabs and prints a line for each thing that is wrong: the\n"
      "rule, the object, and what it is. With --fix what has one right answer is put right (the "
      "rules\nmarked *), and what is left is printed. The rules find\n";
  for (const session::CheckRule& rule : session::CheckRules()) {
    std::string name(rule.name);
    name.resize(std::max(kColumn, name.size() + 1), ' ');
    text += "\n  " + name + (rule.is_mended ? "* " : "  ") + std::string(rule.finds);
  }
  return text;
}

constexpr std::array kOptions = {
    Option{"--base", "DN", "Objects at and below this one", &CommandLine::base},
    Option{"--rule", "NAME", "Only this rule; may be given several times", &CommandLine::rules},
    Option{"--fix", "", "Put right what has one right answer", &CommandLine::fix},
};

}  // namespace

const Command& CheckCommand() {
  static const std::string kDescription = Description();
  static const Command kCommand{.name = "check",
                                .synopsis = "",
                                .summary = "Look for what is wrong in the directory",
                                .description = kDescription,
                                .options = {kOptions, WriteOptions()},
                                .run = &RunCheck};
  return kCommand;
}

}  // namespace pelora::ctl
