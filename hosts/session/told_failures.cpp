// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/told_failures.h"

#include <utility>

#include "hosts/ldap/ldap_status.h"
#include "hosts/session/write_failure.h"

namespace pelora::session {

HRESULT ToldFailures::Note(HRESULT status, const std::string& path) {
  failure_.reset();
  if (SUCCEEDED(status)) return status;
  const ldap::StoreStatus& last = directory_.last_failure();
  // A path that is none, say, never came as far as the directory.
  const bool is_its_own = !last.Ok() && ldap::HresultOfLdap(last.code) == status;
  failure_ = {.status = status, .path = path, .words = is_its_own ? last.text : std::string()};
  return status;
}

HRESULT ToldFailures::ADsGetObject(const std::string& path, const Guid& iid, Ref<IADs>& object) {
  return Note(directory_.ADsGetObject(path, iid, object), path);
}

HRESULT ToldFailures::ADsOpenObject(const std::string& path,
                                    const std::optional<std::string>& user_name,
                                    const std::optional<std::string>& password, std::uint32_t flags,
                                    const Guid& iid, Ref<IADs>& object) {
  return Note(directory_.ADsOpenObject(path, user_name, password, flags, iid, object), path);
}

HRESULT ToldFailures::BindPaths(std::span<const std::string> paths, const Guid& iid,
                                std::vector<Ref<IADs>>& objects) {
  HRESULT status = S_OK;
  const auto bind = [&](IErrand& errand) {
    directory_.store().StopOn(errand.stop());
    status = directory_.BindPaths(paths, iid, objects);
    directory_.store().StopOn({});
  };
  // Many objects take their time though all of them are at hand.
  errands_.Run("Reading the settings...", bind);
  return Note(status, paths.size() == 1 ? paths.front() : std::string());
}

std::int32_t ToldFailures::Show(IDialog* owner, const Message& message) {
  const std::optional<Failure> failure = std::exchange(failure_, std::nullopt);
  Message told = message;
  if (!failure && message.icon == MessageIcon::kError) {
    const std::string& words = directory_.last_failure().text;
    if (words != std::exchange(known_words_, words)) {
      told.text += "\r\n\r\nThe directory says: " + words;
    }
    return box_.Show(owner, told);
  }
  if (!failure || message.icon != MessageIcon::kError) return box_.Show(owner, message);
  told.text += "\r\n";
  if (!failure->path.empty()) told.text += "\r\nObject: " + failure->path;
  if (!failure->words.empty()) told.text += "\r\nThe directory says: " + failure->words;
  if (!failure->path.empty() || !failure->words.empty()) told.text += "\r\n";
  told.text += "\r\n" + AdviceOnReading(failure->status, PlaceOf(directory_.store()));
  return box_.Show(owner, told);
}

}  // namespace pelora::session
