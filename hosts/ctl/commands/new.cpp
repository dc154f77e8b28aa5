// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include "directory/ascii_case.h"
#include "hosts/ctl/commands/commands.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/fields/offline_catalogue.h"
#include "hosts/ctl/objects/object_classes.h"
#include "hosts/ctl/pages/object_maker.h"
#include "hosts/ctl/results/write_run.h"
#include "hosts/ctl/text/input_file.h"
#include "hosts/ctl/workplace.h"
#include "hosts/ldap/object_name.h"

namespace pelora::ctl {
namespace {

/// What the arguments ask for. Throws `WrongUsage`.
NewObjectWish WishOf(const CommandLine& line, FieldCatalogue& catalogue) {
  if (line.arguments.size() < 2) throw WrongUsage("a class and a name are to be given");
  if (!line.in) throw WrongUsage("--in DN says where the object is to be");
  NewObjectWish wish{.kind = &KindOfWord(line.arguments[0]),
                     .name = line.arguments[1],
                     .container = *line.in,
                     .assignments = {}};
  std::vector<Assignment> of_tabs;
  for (std::size_t index = 2; index < line.arguments.size(); ++index) {
    std::optional<Assignment> assignment = ParseAssignment(line.arguments[index]);
    if (!assignment || assignment->field.empty()) {
      throw WrongUsage(line.arguments[index] + ": this is no FIELD=VALUE");
    }
    for (const Assignment& before : wish.assignments) {
      if (EqualsWithoutCase(before.field, assignment->field)) {
        throw WrongUsage(assignment->field + " is given twice");
      }
    }
    if (assignment->operation != Assignment::Operation::kSet) {
      throw WrongUsage(assignment->field + ": a new object's fields are set, with =");
    }
    if (!IsOwnField(assignment->field)) of_tabs.push_back(*assignment);
    wish.assignments.push_back(std::move(*assignment));
  }
  CheckAssignments(of_tabs, catalogue);
  return wish;
}

/// Longer than any directory takes.
constexpr std::size_t kMostOfPassword = std::size_t{1} << 20;

/// The first line of standard input.
session::Secret ReadPassword() {
  std::string input = ReadInput("-", kMostOfPassword);
  const std::string_view line = std::string_view(input).substr(0, input.find_first_of("\r\n"));
  session::Secret password{std::string(line)};
  ldap::Wipe(input);
  if (password.empty()) throw WrongUsage("--password-stdin: standard input is empty");
  return password;
}

int RunNew(const CommandLine& line, Program& program) {
  OfflineCatalogue offline(program.module);
  NewObjectWish wish = WishOf(line, offline.catalogue);
  const bool is_user = wish.kind->account == session::AccountForm::kUser;
  if (line.password_stdin && !is_user) throw WrongUsage("--password-stdin is for users");
  CheckOutputs(line);
  // The password stays in memory until the program ends.
  std::optional<session::DumpGuard> guard;
  if (line.password_stdin) guard.emplace();
  Workplace workplace(line, program);
  if (line.password_stdin) {
    if (!workplace.store().IsSealed()) {
      throw WrongUsage(
          "--password-stdin: this directory holds no passwords, or the connection is "
          "not sealed");
    }
    wish.password = ReadPassword();
  }
  WriteRun run(line, program, *workplace.session, 1);
  const std::string dn = ldap::ChildName(wish.container, wish.kind->class_name, wish.name);
  try {
    ObjectMaker maker(*workplace.session, program.module, workplace.catalogue, workplace.finder);
    const changes::Change change = maker.Make(std::move(wish));
    changes::RunChanges(
        workplace.store(), std::span(&change, 1), run.Options(),
        [&run](std::size_t /*at*/, const changes::Result& result) { run.results().Take(result); });
  } catch (const Refusal& refusal) {
    run.results().Take(
        {.dn = dn, .outcome = changes::Outcome::kRefused, .message = refusal.what()});
  } catch (const DirectoryFailure& failure) {
    run.results().Take(changes::NotRead(dn, failure.status()));
  }
  return run.results().Finish();
}

constexpr std::array kOptions = {
    Option{"--in", "DN", "Where the object is to be", &CommandLine::in},
    Option{"--password-stdin", "", "Read a user's password from standard input",
           &CommandLine::password_stdin},
};

}  // namespace

const Command& NewCommand() {
  static const Command kCommand{
      .name = "new",
      .synopsis = "CLASS NAME --in DN [FIELD=VALUE...]",
      .summary = "Create an object through the wizards' pages",
      .description =
          "Beside the fields of the pages there are sAMAccountName, givenName, sn, displayName, "
          "and\ngroupType (global, domain-local or universal, with -security or -distribution), "
          "where the\nclass has them.",
      .options = {kOptions, WriteOptions()},
      .run = &RunNew};
  return kCommand;
}

}  // namespace pelora::ctl
