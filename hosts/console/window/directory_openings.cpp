// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/directory_openings.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "hosts/console/dialogs/qt_dialog.h"

namespace pelora::console {
namespace {

/// After so long it is looked again whether something modal still runs.
constexpr std::chrono::milliseconds kPatience{50};

}  // namespace

DirectoryOpenings::DirectoryOpenings(std::function<void(Opened opened)> show)
    : show_(std::move(show)) {
  until_shown_.setInterval(kPatience);
  QObject::connect(&until_shown_, &QTimer::timeout, [this] { ShowOpened(); });
}

void DirectoryOpenings::Open(const QString& name, SessionOpening::Open open,
                             std::function<void()> on_shown) {
  Stop();
  name_ = name;
  const auto take = [this, on_shown = std::move(on_shown)](session::SessionResult result) {
    opened_ = Opened{.name = name_, .result = std::move(result), .on_shown = on_shown};
    ShowOpened();
  };
  openings_.push_back(std::make_unique<SessionOpening>(std::move(open), take));
}

void DirectoryOpenings::Stop() {
  for (const auto& opening : openings_) opening->Stop();
  opened_.reset();
}

void DirectoryOpenings::ShowOpened() {
  if (opened_ && IsModalRunning()) return until_shown_.start();
  until_shown_.stop();
  if (opened_) show_(*std::exchange(opened_, std::nullopt));
}

bool DirectoryOpenings::IsOpening() const {
  return opened_.has_value() ||
         std::ranges::any_of(openings_, [](const auto& opening) { return opening->IsRunning(); });
}

}  // namespace pelora::console
