// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>

#include "hosts/sheets/scoped_flag.h"

namespace pelora::session {

/// An errand as the one who does it sees it. Everything here may be used on any thread.
class IErrand {
 public:
  virtual ~IErrand() = default;

  /// The person in front of it wants no more of it.
  [[nodiscard]] virtual std::stop_token stop() const = 0;
  /// Has been told to stop for so long that what is waited for is to be given up, too. For errands
  /// that would rather finish what is under way.
  [[nodiscard]] virtual std::stop_token give_up() const = 0;
  /// How far it is: `done` of `total`.
  virtual void Advance(std::size_t done, std::size_t total) = 0;
};

/// Who has work done that may take its time: a face does it beside its window, shows how far it is,
/// and lets the person in front of it stop it.
class IErrands {
 public:
  using Work = std::function<void(IErrand& errand)>;

  virtual ~IErrands() = default;

  /// Does the work and comes back when it is done, whether it was stopped or not. `what` says in a
  /// few words what is being done. The caller stands still meanwhile, so that the work may use what
  /// is the caller's; it may have further errands run. What the work throws, this throws.
  virtual void Run(const std::string& what, const Work& work) = 0;

  /// Lets go of what takes its time to go, where nobody waits for it, if there is such a place.
  /// What goes uses nothing that may be gone before it.
  virtual void LetGo(std::shared_ptr<void> /*what*/) noexcept {}

  /// Whether the calling thread is doing an errand just now.
  [[nodiscard]] virtual bool IsWithin() const = 0;

  /// For work that has to be done where it is, and may be long: lets a window answer for a moment
  /// if it has not for a while. What the person in front of it does waits all the same.
  virtual void Breathe() = 0;
};

/// For faces without a window: does the work at once, where it is asked for.
class ErrandsAtOnce final : public IErrands {
 public:
  void Run(const std::string& /*what*/, const Work& work) override {
    const sheets::ScopedFlag within(is_within_);
    Errand errand;
    work(errand);
  }
  [[nodiscard]] bool IsWithin() const override { return is_within_; }
  void Breathe() override {}

 private:
  class Errand final : public IErrand {
   public:
    [[nodiscard]] std::stop_token stop() const override { return {}; }
    [[nodiscard]] std::stop_token give_up() const override { return {}; }
    void Advance(std::size_t /*done*/, std::size_t /*total*/) override {}
  };

  bool is_within_ = false;
};

}  // namespace pelora::session
