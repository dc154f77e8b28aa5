// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/commands/commands.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/objects/edited_settings.h"
#include "hosts/ctl/pages/change_objects.h"
#include "hosts/ctl/results/write_run.h"
#include "hosts/ctl/text/assignment.h"
#include "hosts/ctl/text/text_editor.h"

namespace pelora::ctl {
namespace {

/// How often a text is opened where nobody sits at a terminal: a script that is wrong each time in
/// another way would be called for ever.
constexpr int kMostTimesWithoutTerminal = 10;

/// Has the settings edited until nothing is wrong with them. What is wrong when it is given up:
/// when the text was left as it is all the same, or by a script that does not come to an end.
std::string EditUntilRight(EditedSettings& settings, SettingsChanger& changer, TextEditor& editor) {
  std::string text = settings.Text();
  std::vector<EditFault> faults;
  for (int time = 1;; ++time) {
    const std::string edited = editor.Edit(text);
    // A comment says nothing, that of the fault to begin with.
    const bool is_left = WithoutComments(edited) == WithoutComments(text);
    if (!faults.empty() && is_left) return faults.front().text;
    faults = settings.Take(edited, changer);
    if (faults.empty()) return {};
    if (time >= kMostTimesWithoutTerminal && !editor.HasTerminal()) return faults.front().text;
    text = WithFaults(edited, faults);
  }
}

/// Tells that nothing was changed, and why.
int GiveUp(const CommandLine& line, Program& program, Workplace& workplace,
           std::span<const Target> targets, const EditedSettings& settings,
           const std::string& fault) {
  WriteRun run(line, program, *workplace.session, targets.size());
  for (std::size_t at = 0; at < targets.size(); ++at) {
    run.results().Take(settings.GivenUp(at, targets[at], "the edited text was given up: " + fault));
  }
  return run.results().Finish();
}

/// Nothing that was typed is lost: what did not become a change stays where it can be found.
void KeepTyped(TextEditor& editor, Program& program) {
  if (editor.IsKept() || !editor.HasTyped()) return;
  editor.Keep();
  Tell(program, "the text is in " + editor.path());
}

int RunEdit(const CommandLine& line, Program& program) {
  const std::vector<std::string> named = OnlyObjects(line.arguments);
  CheckOutputs(line);
  Workplace workplace(line, program);
  std::vector<Target> targets = TargetsOf(line, NamesOf(line, named), workplace);
  EditedSettings settings(workplace, targets);
  // A person takes his time: they are read anew before they are written.
  for (Target& target : targets) target.entry.reset();
  SettingsChanger changer(*workplace.session, program.module, workplace.catalogue,
                          workplace.finder);
  const AssignmentsAt assignments_at = [&settings](std::size_t at) {
    return settings.AssignmentsAt(at);
  };
  if (settings.IsEmpty()) return ChangeObjects(line, program, workplace, targets, assignments_at);
  using Keys = TextEditor::Keys;
  TextEditor editor(program.interruption,
                    line.from == "-" ? Keys::kTerminal : Keys::kStandardInput);
  try {
    const std::string fault = EditUntilRight(settings, changer, editor);
    if (!fault.empty()) {
      KeepTyped(editor, program);
      return GiveUp(line, program, workplace, targets, settings, fault);
    }
    const Checks checks{.why_not =
                            [&settings](std::size_t at, const ldap::Entry& entry) {
                              return settings.WhatElseChanged(at, entry);
                            },
                        .when_not_all = [&] { KeepTyped(editor, program); }};
    return ChangeObjects(line, program, workplace, targets, assignments_at, checks);
  } catch (...) {
    KeepTyped(editor, program);
    throw;
  }
}

}  // namespace

const Command& EditCommand() {
  static const Command kCommand{
      .name = "edit",
      .synopsis = "OBJECT...",
      .summary = "Edit the settings of objects as text, in $VISUAL or $EDITOR",
      .description =
          "What was changed in the text is applied as set does it. What is wrong with it "
          "is written above\nits line, and the editor is opened again; leaving the text "
          "as it is then gives up.",
      .options = {SelectionOptions(), WriteOptions()},
      .run = &RunEdit};
  return kCommand;
}

}  // namespace pelora::ctl
