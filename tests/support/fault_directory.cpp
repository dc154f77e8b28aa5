// SPDX-License-Identifier: Apache-2.0
#include "tests/support/fault_directory.h"

#include <utility>

#include "platform/counted.h"

namespace pelora::testing {
namespace {

/// Forwards to a bound object. It is the object to its holder: interfaces asked of it lead back to
/// it.
class FaultObject final : public Counted<IADs> {
 public:
  FaultObject(Ref<IADs> target, std::shared_ptr<FaultPlan> plan)
      : target_(std::move(target)), plan_(std::move(plan)) {}

  HRESULT QueryInterface(const Guid& iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (const auto status = plan_->Meet(FaultPoint::kQueryInterface)) return *status;
    void* offered = nullptr;
    if (const HRESULT status = target_->QueryInterface(iid, &offered); FAILED(status)) {
      return status;
    }
    Ref<IADs>::Adopt(static_cast<IADs*>(offered)).Reset();
    AddRef();
    *object = static_cast<IADs*>(this);
    return plan_->Answered(FaultPoint::kQueryInterface, S_OK);
  }

  HRESULT Get(std::string_view name, Variant& value) override {
    value = {};
    if (const auto status = plan_->Meet(FaultPoint::kGet, name)) return *status;
    return plan_->Answered(FaultPoint::kGet, target_->Get(name, value), name);
  }
  HRESULT Put(std::string_view name, const Variant& value) override {
    if (const auto status = plan_->Meet(FaultPoint::kPut, name)) return *status;
    return plan_->Answered(FaultPoint::kPut, target_->Put(name, value), name);
  }
  HRESULT PutEx(std::int32_t control, std::string_view name, const Variant& value) override {
    if (const auto status = plan_->Meet(FaultPoint::kPutEx, name)) return *status;
    return plan_->Answered(FaultPoint::kPutEx, target_->PutEx(control, name, value), name);
  }
  HRESULT SetInfo() override {
    if (const auto status = plan_->Meet(FaultPoint::kSetInfo)) return *status;
    return plan_->Answered(FaultPoint::kSetInfo, target_->SetInfo());
  }

 private:
  ~FaultObject() override = default;

  Ref<IADs> target_;
  std::shared_ptr<FaultPlan> plan_;
};

}  // namespace

void FaultPlan::Fail(FaultPoint point, std::size_t nth, HRESULT status) {
  FailAttribute(point, {}, nth, status);
}

void FaultPlan::FailAttribute(FaultPoint point, std::string attribute, std::size_t nth,
                              HRESULT status) {
  faults_.push_back({point, std::move(attribute), nth, status});
}

void FaultPlan::Answer(FaultPoint point, std::size_t nth, HRESULT status) {
  answers_.push_back({point, {}, nth, status});
}

std::optional<HRESULT> FaultPlan::Meet(FaultPoint point, std::string_view attribute) {
  ++calls_;
  return Meet(faults_, point, attribute);
}

HRESULT FaultPlan::Answered(FaultPoint point, HRESULT status, std::string_view attribute) {
  const std::optional<HRESULT> answer = Meet(answers_, point, attribute);
  if (answer && status != S_OK) last_met_->is_felt = false;
  return status == S_OK ? answer.value_or(S_OK) : status;
}

std::optional<HRESULT> FaultPlan::Meet(Faults& faults, FaultPoint point,
                                       std::string_view attribute) {
  std::optional<HRESULT> answer;
  for (auto fault = faults.begin(); fault != faults.end();) {
    const bool is_kind = fault->point == point || fault->point == FaultPoint::kAnyCall;
    const bool counts = is_kind && (fault->attribute.empty() || fault->attribute == attribute);
    if (!counts || --fault->calls_left > 0) {
      ++fault;
      continue;
    }
    answer = fault->status;
    last_met_ = {.point = point, .attribute = std::string(attribute)};
    fault = faults.erase(fault);
  }
  return answer;
}

FaultDirectory::FaultDirectory(IDirectoryService& target)
    : target_(target), plan_(std::make_shared<FaultPlan>()) {}

Ref<IADs> FaultDirectory::Wrap(Ref<IADs> object) const {
  return Ref<IADs>::Adopt(new FaultObject(std::move(object), plan_));
}

HRESULT FaultDirectory::ADsGetObject(const std::string& path, const Guid& iid, Ref<IADs>& object) {
  object.Reset();
  if (const auto status = plan_->Meet(FaultPoint::kGetObject)) return *status;
  Ref<IADs> bound;
  const HRESULT status = target_.ADsGetObject(path, iid, bound);
  if (bound) object = Wrap(std::move(bound));
  return plan_->Answered(FaultPoint::kGetObject, status);
}

HRESULT FaultDirectory::ADsOpenObject(const std::string& path,
                                      const std::optional<std::string>& user_name,
                                      const std::optional<std::string>& password,
                                      std::uint32_t flags, const Guid& iid, Ref<IADs>& object) {
  object.Reset();
  if (const auto status = plan_->Meet(FaultPoint::kOpenObject)) return *status;
  Ref<IADs> bound;
  const HRESULT status = target_.ADsOpenObject(path, user_name, password, flags, iid, bound);
  if (bound) object = Wrap(std::move(bound));
  return plan_->Answered(FaultPoint::kOpenObject, status);
}

}  // namespace pelora::testing
