// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/choosers.h"

namespace pelora {

/// Choosers that answer with given objects, as somebody would who knows what to choose: only with
/// what the chooser would have offered. A chooser that is given nothing is cancelled.
class HeadlessChoosers final : public IChoosers {
 public:
  struct Object {
    std::string dn;
    /// By which it can be bound.
    std::string path;
    std::string name{};
    std::string object_class{};
    bool is_container = false;
  };
  /// Whether a chooser would have offered an object: a picker of this scope, or, without one, a
  /// chooser of containers.
  using Offer = std::function<bool(const Object& object, const ObjectPickerScope* scope)>;

  /// Without `offers` every object is offered everywhere.
  explicit HeadlessChoosers(Offer offers = {}) : offers_(std::move(offers)) {}

  /// The answer of the next chooser that is run.
  void AnswerNext(std::vector<Object> objects);
  /// Why the last answer was not taken, as a sentence; empty when it was.
  [[nodiscard]] const std::string& refusal() const { return refusal_; }

  [[nodiscard]] HRESULT CreateObjectPicker(std::unique_ptr<IDsObjectPicker>& chooser) override;
  [[nodiscard]] HRESULT CreateCommonQuery(std::unique_ptr<ICommonQuery>& chooser) override;
  [[nodiscard]] std::int32_t BrowseForContainer(const ContainerBrowserInit& init,
                                                std::string& path) override;

 private:
  class Picker;
  class Query;

  /// The answer, when all of it would have been offered; else none, and the refusal says which
  /// object would not.
  [[nodiscard]] std::vector<Object> TakeAnswer(const ObjectPickerScope* scope);

  Offer offers_;
  std::vector<Object> answer_;
  std::string refusal_;
};

}  // namespace pelora
