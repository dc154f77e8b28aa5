// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/new_object/make_new_object_wizard.h"

#include <utility>

#include "hosts/console/choosers/search_dialog.h"
#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/session/explained_box.h"
#include "hosts/session/new_object.h"
#include "hosts/session/search_filter.h"

namespace pelora::console {
namespace {

/// The platform of a wizard's extensions, whose error boxes say what the directory said.
struct ToldPlatform {
  ToldPlatform(const Platform& host, std::function<std::string()> explain_failure)
      : explain(std::move(explain_failure)),
        box(host.message_box, [this] { return words(); }),
        platform{.directory = host.directory,
                 .message_box = box,
                 .modal_dialogs = host.modal_dialogs,
                 .choosers = host.choosers,
                 .text = host.text,
                 .component_library = host.component_library} {}

  /// The words of the last failure, once for the box and once for the page.
  std::string words() {
    if (std::string now = explain(); !now.empty()) return last = std::move(now);
    return std::exchange(last, {});
  }

  std::function<std::string()> explain;
  std::string last;
  session::ExplainedBox box;
  Platform platform;
};

/// Whoever can be in a group, as a picker's scope has it: users, groups, contacts, computers.
constexpr std::uint32_t kMemberTypes = 0x2 | 0x3F0 | 0x400 | 0x800;

std::vector<session::DirectoryObject> ChosenMembers(const WizardDirectory& directory,
                                                    QWidget& from) {
  ObjectPickerScope scope;
  scope.up_level_both_modes = kMemberTypes;
  SearchDialog dialog({.title = QStringLiteral("Select Members"),
                       .type_filter = session::TypeFilter(scope),
                       .multiple = true,
                       .find_places = directory.find_places},
                      directory.open_another, from.window());
  if (RunModal(dialog) != QDialog::Accepted) return {};
  return dialog.Chosen();
}

}  // namespace

WizardResult MakeNewObjectWizard(const session::NewObjectKind& kind,
                                 const session::DirectoryObject& container,
                                 WizardDirectory directory, const Platform& platform,
                                 const resources::ResourceFile& module, QWidget* parent,
                                 NewObjectStart start) {
  session::NewObject prepared;
  std::string reason =
      session::PrepareNewObject(kind, container, directory.store, platform, prepared);
  if (!reason.empty()) return {.wizard = nullptr, .error = ToQString(reason)};
  const auto told = std::make_shared<ToldPlatform>(platform, std::move(prepared.explain_failure));
  auto wizard = std::make_unique<QtNewObjectWizard>(
      QtNewObjectWizard::Parts{.module = module,
                               .message_box = told->box,
                               .kind = kind,
                               .own_context = std::move(prepared.own_context),
                               .open_another = directory.open_another,
                               .start = std::move(start)},
      std::move(prepared.setup), parent);
  wizard->surroundings = told;
  if (wizard->own_page() != nullptr && directory.open_another) {
    wizard->own_page()->choose_members = [directory](QWidget& from) {
      return ChosenMembers(directory, from);
    };
  }
  wizard->explain_failure = [told] { return ToQString(told->words()); };
  wizard->created_name = std::move(prepared.created_name);
  reason = session::AddWizardComponents(
      kind, directory.specifiers, told->platform,
      [&wizard](Ref<IDsAdminNewObjExt> extension, sheets::WizardRole role) {
        return wizard->AddExtension(std::move(extension), role);
      });
  if (!reason.empty()) return {.wizard = nullptr, .error = ToQString(reason)};
  wizard->Start();
  return {.wizard = std::move(wizard), .error = {}};
}

}  // namespace pelora::console
