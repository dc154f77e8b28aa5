// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/program/run_console.h"

#include <QApplication>
#include <QIcon>
#include <algorithm>
#include <iostream>

#include "hosts/console/choosers/qt_choosers.h"
#include "hosts/console/fields/sheet_fields.h"
#include "hosts/console/program/command_line.h"
#include "hosts/console/program/display.h"
#include "hosts/console/program/guarded_application.h"
#include "hosts/console/program/screenshot.h"
#include "hosts/console/program/stream_message_box.h"
#include "hosts/console/sheets/make_property_sheet.h"
#include "hosts/console/text/exception_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/session/own_pages/own_pages.h"
#include "hosts/session/property_tabs.h"
#include "hosts/session/visible_text.h"

namespace pelora::console {
namespace {

int Fail(const std::string& reason) {
  std::cerr << "pelora-console: " << session::VisibleText(reason, "\n") << std::endl;
  return kExitFailure;
}

/// The objects of the given names, each once, or a sentence about the first that is not there.
std::string ReadObjects(ldap::IDirectoryStore& store, const std::string& path,
                        const std::vector<std::string>& names,
                        std::vector<session::DirectoryObject>& objects) {
  const session::DirectoryBrowser browser(store);
  for (const std::string& name : names) {
    session::DirectoryObject object;
    const ldap::StoreStatus status = browser.ReadObject(name, object);
    if (status.code == ldap::kLdapNoSuchObject) {
      return name + ": there is no such object in " + path;
    }
    if (!status.Ok()) return name + ": the object cannot be read: " + status.text;
    const auto is_same = [&](const session::DirectoryObject& known) {
      return known.dn == object.dn;
    };
    if (std::ranges::none_of(objects, is_same)) objects.push_back(std::move(object));
  }
  return {};
}

int WritePropertiesPicture(session::DirectorySession& session,
                           const std::vector<session::DirectoryObject>& objects,
                           const resources::ResourceFile& module, const QString& path) {
  StreamMessageBox messages(std::cerr);
  QtChoosers choosers(*session.store, session.open_another, {.find_places = session.find_places});
  const ConsolePlatform platform(session.service, messages, choosers, module);
  const resources::ResourceFile templates = session::WithOwnPages(module).value.value();
  const SheetResult made = MakePropertySheet(objects, session.specifiers,
                                             {.store = *session.store,
                                              .platform = platform.platform(),
                                              .templates = templates,
                                              .open_another = session.open_another,
                                              .find_places = session.find_places},
                                             nullptr);
  if (!made.sheet) return Fail(ToUtf8(made.error));
  if (messages.has_shown()) return kExitFailure;
  if (!made.missing.isEmpty()) return Fail(ToUtf8(made.missing));
  // What the sheet looks up beside its window belongs to the picture.
  made.sheet->show();
  QApplication::processEvents();
  while (made.fields != nullptr && made.fields->IsAsking()) {
    QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  const QString error = WriteScreenshot(*made.sheet, path);
  return error.isEmpty() ? kExitDone : Fail(ToUtf8(error));
}

/// Shows the view that is named; a sentence when there is none.
QString ShowNamedView(MainWindow& window, const CommandLine& line) {
  return line.view ? window.pane().ShowView(ToQString(*line.view)) : QString();
}

/// The same in front of the user.
void OpenView(MainWindow& window, const CommandLine& line) {
  const QString error = ShowNamedView(window, line);
  if (error.isEmpty()) return;
  window.ReportLater(QStringLiteral("The view cannot be shown."), error);
}

int WriteWindowPicture(std::unique_ptr<session::DirectorySession> session,
                       const resources::ResourceFile& module, const CommandLine& line) {
  const QString path = ToQString(*line.screenshot);
  MainWindow window(module);
  if (!window.SetSession(std::move(session))) return kExitFailure;
  const QString no_view = ShowNamedView(window, line);
  if (!no_view.isEmpty()) return Fail(ToUtf8(no_view));
  // A tree reads what it is to show when it is shown.
  window.show();
  QApplication::processEvents();
  while (window.IsReading()) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  const QString error = WriteScreenshot(window, path);
  return error.isEmpty() ? kExitDone : Fail(ToUtf8(error));
}

/// Shows the objects' properties, once their directory is shown.
void OpenNamed(MainWindow& window, const std::vector<std::string>& names) {
  std::vector<session::DirectoryObject> objects;
  const std::string error = ReadObjects(*window.store(), window.session()->path, names, objects);
  if (!error.empty()) {
    window.ReportLater(QStringLiteral("The properties cannot be shown."), ToQString(error));
  } else if (!objects.empty()) {
    window.ShowProperties(objects);
  }
}

/// The window is there at once; connecting goes on beside it.
int ShowDomain(const CommandLine& line, const resources::ResourceFile& module) {
  MainWindow window(module);
  window.show();
  const auto show = [&window, &line] {
    OpenView(window, line);
    OpenNamed(window, line.open);
  };
  window.OpenServerBesides(ToQString(*line.server), show, ToQString(line.site));
  return QApplication::exec();
}

int ShowWindows(session::SessionResult opened, const std::vector<session::DirectoryObject>& objects,
                const resources::ResourceFile& module, const CommandLine& line) {
  MainWindow window(module);
  window.show();
  if (opened.session) {
    window.SetSession(std::move(opened.session));
    OpenView(window, line);
  } else {
    window.ReportLater(QStringLiteral("The sample directory cannot be opened."),
                       ToQString(opened.error));
  }
  if (!objects.empty()) window.ShowProperties(objects);
  return QApplication::exec();
}

session::SessionResult OpenNamedDirectory(const CommandLine& line) {
  if (line.server) return session::OpenServer(*line.server, {}, line.site);
  return line.directory ? session::OpenDirectoryFile(*line.directory)
                        : session::OpenSampleDirectory();
}

int Run(const CommandLine& line, const resources::ResourceFile& module) {
  if (line.server && !line.screenshot) return ShowDomain(line, module);
  session::SessionResult opened = OpenNamedDirectory(line);
  // Who names a directory, an object or a picture reads what is wrong with it where he typed it.
  const bool asks_for_something =
      line.directory || line.server || !line.open.empty() || line.screenshot;
  if (!opened.session && asks_for_something) return Fail(opened.error);

  std::vector<session::DirectoryObject> objects;
  if (opened.session) {
    const std::string error =
        ReadObjects(*opened.session->store, opened.session->path, line.open, objects);
    if (!error.empty()) return Fail(error);
    const ldap::DisplaySpecifiers& specifiers = opened.session->specifiers;
    if (!objects.empty() && session::TabsOf(objects, specifiers).empty()) {
      return Fail(session::WhyNoProperties(objects, specifiers));
    }
  }
  if (!line.screenshot) return ShowWindows(std::move(opened), objects, module, line);
  const QString picture = ToQString(*line.screenshot);
  if (objects.empty()) return WriteWindowPicture(std::move(opened.session), module, line);
  return WritePropertiesPicture(*opened.session, objects, module, picture);
}

}  // namespace

int RunConsole(int argc, char** argv) {
  const ParsedCommandLine parsed = ParseCommandLine(argc, argv, std::cout, std::cerr);
  if (parsed.exit_code) return *parsed.exit_code;
  const QString no_display = ChooseDisplay(parsed.command_line.screenshot.has_value());
  if (!no_display.isEmpty()) return Fail(ToUtf8(no_display));

  QCoreApplication::setApplicationName(QStringLiteral("pelora-console"));
  QCoreApplication::setApplicationVersion(QLatin1String(PELORA_VERSION));
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Pelora Console"));
  // The arguments have been dealt with; the toolkit is to read none into them.
  using Audience = GuardedApplication::Audience;
  int toolkit_argc = 1;
  std::optional<QuietToolkit> quiet(std::in_place);
  const GuardedApplication application(
      toolkit_argc, argv, parsed.command_line.screenshot ? Audience::kNobody : Audience::kPerson);
  if (!parsed.command_line.screenshot) quiet.reset();
  // As what is installed for desktops names them.
  QGuiApplication::setDesktopFileName(QStringLiteral("pelora-console"));
  QGuiApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("pelora-console")));

  const resources::ReadResult<resources::ResourceFile> module =
      resources::ResourceFile::Read(resources::EmbeddedResourceBytes());
  if (!module.value) return Fail(module.error);
  try {
    return Run(parsed.command_line, *module.value);
  } catch (...) {
    // Before the first event.
    return Fail(TextOfException());
  }
}

}  // namespace pelora::console
