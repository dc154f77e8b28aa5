// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "hosts/console/reading/session_opening.h"

namespace pelora::console {

/// Opens directories beside the window, of which the last one that was asked for is shown. As long
/// as anything modal runs, which works with the directory that is shown, it waits.
class DirectoryOpenings final {
 public:
  /// What has been opened, under the name by which it was asked for.
  struct Opened {
    QString name;
    session::SessionResult result;
    /// What follows its showing; may be none.
    std::function<void()> on_shown;
  };

  /// `show` is called on the thread of the user interface.
  explicit DirectoryOpenings(std::function<void(Opened opened)> show);
  DirectoryOpenings(const DirectoryOpenings&) = delete;
  DirectoryOpenings& operator=(const DirectoryOpenings&) = delete;

  /// Opens a directory. An opening under way is given up.
  void Open(const QString& name, SessionOpening::Open open, std::function<void()> on_shown);
  /// Gives up what is under way, and what waits.
  void Stop();
  /// Shows what has been opened and waits, unless something modal still runs.
  void ShowOpened();

  /// Whether something is being opened, or waits.
  [[nodiscard]] bool IsOpening() const;
  /// What was asked for last.
  [[nodiscard]] const QString& name() const { return name_; }

 private:
  std::function<void(Opened opened)> show_;
  QString name_;
  /// The last is the one that counts; others have been stopped and run out.
  std::vector<std::unique_ptr<SessionOpening>> openings_;
  std::optional<Opened> opened_;
  QTimer until_shown_;
};

}  // namespace pelora::console
