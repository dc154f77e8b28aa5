// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/ads.h"

namespace pelora::testing {

/// Kinds of calls that can be made to fail.
enum class FaultPoint : std::uint8_t {
  kGetObject,
  kOpenObject,
  kQueryInterface,
  kGet,
  kPut,
  kPutEx,
  kSetInfo,
  /// Stands for every one of the others: calls of all kinds count together.
  kAnyCall,
};

/// A call that was made to fail.
struct MetFault {
  FaultPoint point = FaultPoint::kAnyCall;
  /// The attribute that it was about; empty where there is none.
  std::string attribute;
  /// Its answer was changed; not so where a call was to answer otherwise that failed by itself.
  bool is_felt = true;
};

/// Which calls fail, and with what.
class FaultPlan {
 public:
  /// The `nth` call of a kind, counted from now (1: the next), answers `status` and is not
  /// forwarded. Any status will do, positive ones too. Calls of all objects count together.
  void Fail(FaultPoint point, std::size_t nth, HRESULT status);
  /// As above, but only calls that name this attribute count.
  void FailAttribute(FaultPoint point, std::string attribute, std::size_t nth, HRESULT status);

  /// The `nth` call of a kind is forwarded, with all that it does and gives, and answers `status`
  /// where it would have answered `S_OK`.
  void Answer(FaultPoint point, std::size_t nth, HRESULT status);

  /// Counts a call; what it is to answer when it has to fail.
  [[nodiscard]] std::optional<HRESULT> Meet(FaultPoint point, std::string_view attribute = {});
  /// Counts a call that was forwarded and gives its answer.
  [[nodiscard]] HRESULT Answered(FaultPoint point, HRESULT status, std::string_view attribute = {});
  /// Calls of all kinds so far.
  [[nodiscard]] std::size_t calls() const { return calls_; }
  /// The call that a fault was met by last.
  [[nodiscard]] const std::optional<MetFault>& last_met() const { return last_met_; }
  /// Faults that no call has met yet: 0 when all have happened.
  [[nodiscard]] std::size_t pending() const { return faults_.size(); }

 private:
  struct Fault {
    FaultPoint point;
    std::string attribute;
    std::size_t calls_left;
    HRESULT status;
  };
  using Faults = std::vector<Fault>;

  std::optional<HRESULT> Meet(Faults& faults, FaultPoint point, std::string_view attribute);

  Faults faults_;
  Faults answers_;
  std::size_t calls_ = 0;
  std::optional<MetFault> last_met_;
};

/// Forwards to another directory, except for the calls that its plan makes fail.
///
///   FaultDirectory faulty(directory);
///   faulty.plan().Fail(FaultPoint::kSetInfo, 2, E_ACCESSDENIED);
///
/// `target` outlives it; bound objects may outlive both.
class FaultDirectory final : public IDirectoryService {
 public:
  explicit FaultDirectory(IDirectoryService& target);
  /// Several directories may share one plan.
  FaultDirectory(IDirectoryService& target, std::shared_ptr<FaultPlan> plan)
      : target_(target), plan_(std::move(plan)) {}

  [[nodiscard]] FaultPlan& plan() { return *plan_; }
  /// Puts an object that was bound elsewhere (a wizard's new object, say) under the same plan.
  [[nodiscard]] Ref<IADs> Wrap(Ref<IADs> object) const;

  [[nodiscard]] HRESULT ADsGetObject(const std::string& path, const Guid& iid,
                                     Ref<IADs>& object) override;
  [[nodiscard]] HRESULT ADsOpenObject(const std::string& path,
                                      const std::optional<std::string>& user_name,
                                      const std::optional<std::string>& password,
                                      std::uint32_t flags, const Guid& iid,
                                      Ref<IADs>& object) override;

 private:
  IDirectoryService& target_;
  std::shared_ptr<FaultPlan> plan_;
};

}  // namespace pelora::testing
