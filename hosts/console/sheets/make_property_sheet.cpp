// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/sheets/make_property_sheet.h"

#include <utility>

#include "hosts/console/fields/checked_dialogs.h"
#include "hosts/console/password/reset_password_dialog.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/session/find/find_pasted_names.h"
#include "hosts/session/property_tabs.h"

namespace pelora::console {
namespace {

void Protect(IDialog& dialog, ControlId control, const std::string& why) {
  // Dialogs of sheets come from this console alone.
  static_cast<QtDialog&>(dialog).SetReadOnly(control, ToQString(why));
}

/// What a sheet's tabs live by, in the order in which it is needed.
struct SheetParts {
  explicit SheetParts(session::TabSurroundings surroundings)
      : dialogs(surroundings.platform.modal_dialogs),
        platform{.directory = surroundings.platform.directory,
                 .message_box = surroundings.platform.message_box,
                 .modal_dialogs = dialogs,
                 .choosers = surroundings.platform.choosers,
                 .text = surroundings.platform.text,
                 .component_library = surroundings.platform.component_library},
        tabs({.store = surroundings.store,
              .platform = platform,
              .templates = surroundings.templates,
              .between = std::move(surroundings.between),
              .errands = surroundings.errands,
              .desk = surroundings.desk,
              .history = surroundings.history,
              .has_own_pages = true,
              .give_password =
                  [&store = surroundings.store,
                   &errands = surroundings.errands != nullptr ? *surroundings.errands : at_once](
                      IDialog* owner, const std::string& dn) {
                    return AskForPassword(store, errands, dn, WindowOf(owner));
                  },
              .find_names =
                  [find_places = surroundings.find_places](
                      ldap::IDirectoryStore& store, const std::string& text,
                      const std::string& filter, const std::stop_token& stop) {
                    return session::FindPastedNames(store, text, filter, find_places, stop);
                  },
              .protect = &Protect}) {}

  CheckedDialogs dialogs;
  Platform platform;
  session::ErrandsAtOnce at_once;
  session::GuardedTabs tabs;
};

/// The field of a sheet whose texts are typed in a dialog of their own.
const FieldRow* FieldTypedIn(session::GuardedTabs& tabs, std::size_t pages, DialogId dialog) {
  for (std::size_t page = 0; page < pages; ++page) {
    const session::TouchedFields& fields = tabs.Fields(page).touched;
    for (std::size_t field = 0; field < fields.Count(); ++field) {
      const FieldRow& row = fields.Row(field);
      if (row.typed_in.dialog != 0 && row.typed_in.dialog == dialog) return &row;
    }
  }
  return nullptr;
}

}  // namespace

SheetResult MakePropertySheet(std::span<const session::DirectoryObject> selection,
                              const ldap::DisplaySpecifiers& specifiers,
                              session::TabSurroundings surroundings, QWidget* parent,
                              ShowObject show_object) {
  const ldap::StoreOpener opener = surroundings.open_another;
  const resources::ResourceFile& templates = surroundings.templates;
  const auto parts = std::make_shared<SheetParts>(std::move(surroundings));
  auto sheet = std::make_unique<QtPropertySheet>(
      templates, ToQString(session::PropertiesTitle(selection)), parent);
  // They go with the sheet's machine, after its pages, and with its fields.
  const std::shared_ptr<session::GuardedTabs> tabs(parts, &parts->tabs);
  sheet->machine().commit = [tabs] { return tabs->Commit(); };
  auto* const fields = new SheetFields(*sheet, tabs, opener);
  fields->notes().show_object = show_object;
  parts->dialogs.questions = fields->notes().questions();
  parts->dialogs.show_object = std::move(show_object);
  for (const session::DirectoryObject& object : selection) parts->dialogs.own.push_back(object.dn);
  fields->notes().own = parts->dialogs.own;
  parts->dialogs.field_of = [&tabs = *tabs, &sheet = *sheet](DialogId dialog) {
    return FieldTypedIn(tabs, sheet.PageCount(), dialog);
  };
  const session::TabsOpening opening = tabs->Open(
      selection, specifiers,
      [&sheet](std::unique_ptr<PropSheetPage> page) { return sheet->AddPage(std::move(page)); });
  if (!opening.reason.empty()) {
    return {.sheet = nullptr,
            .error = ToQString(opening.reason),
            .missing = {},
            .is_stopped = opening.is_stopped};
  }
  sheet->Start();
  return {.sheet = std::move(sheet),
          .error = {},
          .missing = ToQString(opening.missing),
          .is_outdated = [tabs] { return tabs->is_outdated(); },
          .fields = fields};
}

}  // namespace pelora::console
