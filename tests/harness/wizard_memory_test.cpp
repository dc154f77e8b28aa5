// SPDX-License-Identifier: Apache-2.0
// Memory runs out in every wizard page's loading, and while the object is made: it ends in an
// error, what is made has no value that was not typed, and what was not made can be made again.
#include <gmock/gmock.h>

#include <array>

#include "tests/harness/starved.h"
#include "tests/harness/wizard_scene.h"

namespace pelora::testing {
namespace {

using ::testing::Each;
using Lines = std::vector<std::string>;

class WizardMemory : public ::testing::TestWithParam<const ComponentClass*> {
 protected:
  WizardMemory() {
    WizardScene scene(*GetParam());
    loading_ = CountOf([&] { return scene.Open(); });
    scene.FillIn();
    making_ = CountOf([&] { return scene.Finish(); });
    EXPECT_EQ(scene.TakeBoxes(), Lines());
    made_ = scene.Stored().value();
  }

  void StarveLoading(std::size_t allocation) const;
  void StarveMaking(std::size_t allocation) const;

  std::size_t loading_ = 0;
  std::size_t making_ = 0;

 private:
  /// The object is made whole by somebody who fills everything in.
  void ExpectMade(WizardScene& scene) const {
    scene.FillIn();
    EXPECT_TRUE(scene.Finish());
    EXPECT_EQ(scene.TakeBoxes(), Lines());
    EXPECT_EQ(scene.Stored(), made_);
  }

  FakeAttributes made_;
};

void WizardMemory::StarveLoading(std::size_t allocation) const {
  WizardScene scene(*GetParam());
  const auto opened = Starved(allocation, [&] { return scene.Open(); });
  EXPECT_FALSE(scene.Stored().has_value());
  const Lines boxes = scene.TakeBoxes();
  EXPECT_THAT(boxes, Each(OutOfMemoryText()));
  if (!opened.value_or(false) || !boxes.empty()) {
    EXPECT_TRUE(scene.Open());
    EXPECT_EQ(scene.TakeBoxes(), Lines());
  }
  ExpectMade(scene);
  scene.Close();
  EXPECT_EQ(scene.LeftBehind(), "");
}

void WizardMemory::StarveMaking(std::size_t allocation) const {
  WizardScene scene(*GetParam());
  EXPECT_TRUE(scene.Open());
  scene.FillIn();
  const auto done = Starved(allocation, [&] { return scene.Finish(); });
  const Lines boxes = scene.TakeBoxes();
  if (!scene.Stored()) {
    EXPECT_FALSE(done.value_or(false));
    EXPECT_TRUE(!done || !boxes.empty()) << "nobody was told";
    ASSERT_TRUE(scene.IsOpen());
    EXPECT_TRUE(scene.Finish());
    EXPECT_EQ(scene.TakeBoxes(), Lines());
    EXPECT_EQ(scene.Stored(), made_);
  } else {
    // What the page could not write is told, and keeps nobody from making the object.
    const FakeAttributes now = *scene.Stored();
    for (const auto& [name, value] : now) EXPECT_EQ(value, made_.at(name)) << name;
    if (done && boxes.empty()) {
      EXPECT_EQ(scene.Stored(), made_);
    }
  }
  scene.Close();
  EXPECT_EQ(scene.LeftBehind(), "");
}

TEST_P(WizardMemory, EndsInAnErrorAndNothingIsMadeThatWasNotTyped) {
  const auto all = std::to_array<Starving>({
      {"loading", loading_, [this](std::size_t allocation) { StarveLoading(allocation); }},
      {"making", making_, [this](std::size_t allocation) { StarveMaking(allocation); }},
  });
  StarveEach(GetParam()->name, all);
}

INSTANTIATE_TEST_SUITE_P(EveryWizardPage, WizardMemory, ::testing::ValuesIn(WizardPages()),
                         [](const auto& row) { return std::string(row.param->name); });

}  // namespace
}  // namespace pelora::testing
