// SPDX-License-Identifier: Apache-2.0
// Every wizard page of the class table, filled in whole, with each of the calls to the new object
// and to the directory failing in turn, for each cause.
#include <gmock/gmock.h>

#include "directory/error_text.h"
#include "tests/harness/fault_causes.h"
#include "tests/harness/wizard_scene.h"

namespace pelora::testing {
namespace {

using Lines = std::vector<std::string>;

class WizardFaults : public ::testing::TestWithParam<const ComponentClass*> {
 protected:
  struct Smooth {
    FakeAttributes made;
    std::size_t calls = 0;
  };

  [[nodiscard]] Smooth PlaySmoothly() const;
  void PlayWithFault(const Smooth& smooth, std::size_t call, const Cause& cause) const;

 private:
  static void ExpectMadeAllTheSame(WizardScene& scene, const Smooth& smooth, const Cause& cause);
  static void ExpectNotMade(WizardScene& scene, const Smooth& smooth, const Cause& cause);
};

WizardFaults::Smooth WizardFaults::PlaySmoothly() const {
  WizardScene scene(*GetParam());
  EXPECT_TRUE(scene.Open());
  const Lines edited = scene.FillIn();
  EXPECT_EQ(edited.size(), scene.rows().size());
  EXPECT_TRUE(scene.Finish());
  EXPECT_EQ(scene.TakeBoxes(), Lines());
  EXPECT_TRUE(scene.Stored().has_value());
  Smooth smooth{.made = scene.Stored().value_or(FakeAttributes()), .calls = scene.faults().calls()};
  for (const FieldRow& row : scene.rows()) {
    if (row.name == "name") continue;
    EXPECT_TRUE(smooth.made.contains(std::string(row.attributes.front()))) << row.name;
  }
  scene.Close();
  EXPECT_EQ(scene.LeftBehind(), "");
  return smooth;
}

/// What an extension could not write is told, and keeps nobody from making the object.
void WizardFaults::ExpectMadeAllTheSame(WizardScene& scene, const Smooth& smooth,
                                        const Cause& cause) {
  const MetFault& met = *scene.faults().last_met();
  const std::string code = "\r\n\r\nError code: " + CodeText(cause.status);
  const bool is_bound = met.point != FaultPoint::kQueryInterface;
  EXPECT_EQ(scene.TakeBoxes(), Lines({(is_bound ? "Failed on field '" + met.attribute
                                                : "Unable to get connection with the ldap user") +
                                      code}));
  ASSERT_TRUE(scene.Stored().has_value());
  const FakeAttributes made = *scene.Stored();
  EXPECT_EQ(made.size(), is_bound ? scene.Staged() : 0U);
  EXPECT_EQ(made.contains(met.attribute), is_bound && cause.is_done);
  for (const auto& [name, value] : made) EXPECT_EQ(value, smooth.made.at(name)) << name;
}

/// The wizard stays as it is, and the object is made by the next Finish.
void WizardFaults::ExpectNotMade(WizardScene& scene, const Smooth& smooth, const Cause& cause) {
  const std::string in_use =
      "The new object cannot be created because the name is already in use.\r\n"
      "Please select a different name and try again.";
  const std::string box =
      cause.status == kObjectAlreadyExists
          ? in_use
          : "Unknown error occured\r\n\r\nError code: " + CodeText(cause.status);
  EXPECT_EQ(scene.TakeBoxes(), Lines({box}));
  EXPECT_TRUE(scene.IsOpen());
  EXPECT_EQ(scene.Stored().has_value(), cause.is_done);
  if (cause.is_done) {
    EXPECT_FALSE(scene.Finish()) << "it is there, and is not made twice";
    EXPECT_EQ(scene.TakeBoxes(), Lines({in_use}));
  } else {
    EXPECT_TRUE(scene.Finish());
    EXPECT_EQ(scene.TakeBoxes(), Lines());
  }
  EXPECT_EQ(scene.Stored(), smooth.made);
}

void WizardFaults::PlayWithFault(const Smooth& smooth, std::size_t call, const Cause& cause) const {
  WizardScene scene(*GetParam());
  EXPECT_TRUE(scene.Open());
  Inject(scene.faults(), call, cause);
  scene.FillIn();
  EXPECT_EQ(scene.TakeBoxes(), Lines());
  const bool is_made = scene.Finish();
  ASSERT_TRUE(scene.faults().last_met().has_value()) << "the fault was met";
  const FaultPoint point = scene.faults().last_met()->point;
  const bool is_committing = point == FaultPoint::kSetInfo && cause.IsFailure();
  EXPECT_EQ(is_made, !is_committing);
  // The interface counts as offered when the answer is exactly that.
  const bool is_told =
      !scene.was_met_early() && (cause.IsFailure() || point == FaultPoint::kQueryInterface);
  if (is_committing) {
    ExpectNotMade(scene, smooth, cause);
  } else if (is_told) {
    ExpectMadeAllTheSame(scene, smooth, cause);
  } else {
    EXPECT_EQ(scene.TakeBoxes(), Lines());
    EXPECT_EQ(scene.Stored(), smooth.made);
  }
  EXPECT_EQ(scene.IsOpen(), is_committing && cause.is_done);
  scene.Close();
  EXPECT_EQ(scene.LeftBehind(), "");
}

TEST_P(WizardFaults, EachIsToldAndTheObjectIsMadeOnce) {
  const Smooth smooth = PlaySmoothly();
  ASSERT_FALSE(HasFailure());
  PlayEveryFault(GetParam()->name, smooth.calls, kCauses,
                 [&](std::size_t call, const Cause& cause) { PlayWithFault(smooth, call, cause); });
}

INSTANTIATE_TEST_SUITE_P(EveryWizardPage, WizardFaults, ::testing::ValuesIn(WizardPages()),
                         [](const auto& row) { return std::string(row.param->name); });

}  // namespace
}  // namespace pelora::testing
