// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "platform/text_service.h"

// The contract of the text port (platform/text_service.h), as one suite that every adapter of the
// port runs:
//
//   INSTANTIATE_TEST_SUITE_P(Headless, TextServiceContract, ::testing::Values(&MakeTextService));

namespace pelora::contract {

using TextServiceFactory = std::unique_ptr<ITextService> (*)();

class TextServiceContract : public ::testing::TestWithParam<TextServiceFactory> {
 protected:
  [[nodiscard]] std::string UpperCase(std::string_view text) const {
    return text_->UpperCase(text);
  }

 private:
  std::unique_ptr<ITextService> text_ = GetParam()();
};

}  // namespace pelora::contract
