#include "korvane/renderer_loans.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "support/journal.h"
#include "support/recording_renderer.h"

using namespace Korvane;

namespace {

constexpr TextureID TWO[] = {TEXTURE_WALK_START, TEXTURE_WALK_REFUSED};

// Does what the test wants while a text is made.
struct ActingRenderer : RecordingRenderer {
  DynamicIcon2D* CreateTooltip(const wchar_t* text) override {
    if (onCreate) onCreate();
    return RecordingRenderer::CreateTooltip(text);
  }
  std::function<void()> onCreate;
};

constexpr StringID TOOLTIP = static_cast<StringID>(3);
constexpr StringID OTHER_TOOLTIP = static_cast<StringID>(4);

struct StringLoanTest : ::testing::Test {
  // An icon whose count is 0 is destroyed when the counts are applied.
  int CountAfterApply() {
    renderer.ApplyTextureUsage();
    return renderer.GetLiveIconCount();
  }

  ActingRenderer renderer;
  std::unique_ptr<StringLoan> loan = std::make_unique<StringLoan>();
};

}  // namespace

TEST_F(StringLoanTest, holds_the_icon_until_it_is_given_back) {
  EXPECT_EQ(loan->Get(), nullptr);
  DynamicIcon2D* const icon = loan->Take(&renderer, TOOLTIP);
  EXPECT_NE(icon, nullptr);
  EXPECT_EQ(loan->Get(), icon);
  EXPECT_EQ(CountAfterApply(), 1);
  loan->GiveBack();
  EXPECT_EQ(loan->Get(), nullptr);
  EXPECT_EQ(CountAfterApply(), 0);
}

TEST_F(StringLoanTest, counts_once_however_often_it_is_taken_and_given_back) {
  StringLoan other;
  other.Take(&renderer, TOOLTIP);
  loan->Take(&renderer, TOOLTIP);
  loan->Take(&renderer, TOOLTIP);
  loan->GiveBack();
  loan->GiveBack();  // must not take the other's
  EXPECT_EQ(CountAfterApply(), 1);
  other.GiveBack();
  EXPECT_EQ(CountAfterApply(), 0);
}

TEST_F(StringLoanTest, another_text_takes_the_place_of_the_first) {
  DynamicIcon2D* const first = loan->Take(&renderer, TOOLTIP);
  DynamicIcon2D* const second = loan->Take(&renderer, OTHER_TOOLTIP);
  EXPECT_NE(first, second);
  EXPECT_EQ(loan->Get(), second);
  EXPECT_EQ(CountAfterApply(), 1);
}

TEST_F(StringLoanTest, another_renderer_takes_the_place_of_the_first) {
  RecordingRenderer other;
  loan->Take(&renderer, TOOLTIP);
  loan->Take(&other, TOOLTIP);
  EXPECT_EQ(CountAfterApply(), 0);
  EXPECT_EQ(other.GetLiveIconCount(), 1);
  loan->Take(nullptr, TOOLTIP);
  other.ApplyTextureUsage();
  EXPECT_EQ(other.GetLiveIconCount(), 0);
}

TEST_F(StringLoanTest, the_end_of_the_loan_gives_back) {
  loan->Take(&renderer, TOOLTIP);
  loan.reset();
  EXPECT_EQ(CountAfterApply(), 0);
}

TEST_F(StringLoanTest, forgets_a_renderer_that_is_gone) {
  auto other = std::make_unique<RecordingRenderer>();
  loan->Take(other.get(), TOOLTIP);
  other.reset();
  EXPECT_EQ(loan->Get(), nullptr);
  loan->GiveBack();
}

TEST_F(StringLoanTest, a_text_without_an_icon_is_none) {
  renderer.FailAlways("CreateTooltip");
  EXPECT_EQ(loan->Take(&renderer, TOOLTIP), nullptr);
  EXPECT_EQ(loan->Take(&renderer, STRING_NONE), nullptr);
  EXPECT_EQ(loan->Get(), nullptr);
}

TEST_F(StringLoanTest, given_back_while_it_is_taken_it_holds_nothing) {
  renderer.onCreate = [this] { loan->GiveBack(); };
  EXPECT_EQ(loan->Take(&renderer, TOOLTIP), nullptr);
  EXPECT_EQ(loan->Get(), nullptr);
  EXPECT_EQ(CountAfterApply(), 0);
}

TEST_F(StringLoanTest, destroyed_while_it_is_taken_it_holds_nothing) {
  renderer.onCreate = [this] { loan.reset(); };
  EXPECT_EQ(loan->Take(&renderer, TOOLTIP), nullptr);
  EXPECT_EQ(CountAfterApply(), 0);
}

TEST(TextureLoan, loads_when_it_is_taken_and_frees_when_it_is_given_back) {
  RecordingRenderer renderer;
  TextureLoan loan(TWO);
  EXPECT_FALSE(loan.IsHeld());
  loan.Take(&renderer);
  EXPECT_TRUE(loan.IsHeld());
  EXPECT_EQ(renderer.TakeCalls(),
            Lines({"LoadTexture(93)", "LoadTexture(94)"}));  // in the order of the numbers
  loan.GiveBack();
  EXPECT_FALSE(loan.IsHeld());
  EXPECT_EQ(renderer.TakeCalls(), Lines({"ReleaseTexture(93)", "ReleaseTexture(94)"}));
}

TEST(TextureLoan, wanted_it_counts_and_leaves_it_to_the_owner_to_apply) {
  RecordingRenderer renderer;
  TextureLoan loan(TWO);
  loan.Want(&renderer);
  loan.Want(&renderer);
  EXPECT_TRUE(loan.IsHeld());
  EXPECT_TRUE(renderer.GetCalls().empty());
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.TakeCalls(), Lines({"LoadTexture(93)", "LoadTexture(94)"}));
  loan.Want(nullptr);
  loan.Want(nullptr);
  EXPECT_FALSE(loan.IsHeld());
  EXPECT_TRUE(renderer.GetCalls().empty());
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.TakeCalls(), Lines({"ReleaseTexture(93)", "ReleaseTexture(94)"}));
}

TEST(TextureLoan, counts_once_however_often_it_is_taken_and_given_back) {
  RecordingRenderer renderer;
  TextureLoan loan(TWO);
  TextureLoan other(TWO);
  other.Take(&renderer);
  loan.Take(&renderer);
  loan.Take(&renderer);
  loan.GiveBack();
  loan.GiveBack();
  EXPECT_EQ(renderer.CountCalls("ReleaseTexture"), 0);
  other.GiveBack();
  EXPECT_EQ(renderer.CountCalls("ReleaseTexture"), 2);
}

TEST(TextureLoan, moves_to_another_renderer) {
  RecordingRenderer first;
  RecordingRenderer second;
  TextureLoan loan(TWO);
  loan.Take(&first);
  loan.Take(&second);
  EXPECT_EQ(second.CountCalls("LoadTexture"), 2);
  first.ApplyTextureUsage();
  EXPECT_EQ(first.CountCalls("ReleaseTexture"), 2);
  loan.Take(nullptr);
  EXPECT_EQ(second.CountCalls("ReleaseTexture"), 2);
}

TEST(TextureLoan, its_end_counts_down_and_leaves_the_rest_to_the_renderer) {
  RecordingRenderer renderer;
  {
    TextureLoan loan(TWO);
    loan.Take(&renderer);
  }
  EXPECT_EQ(renderer.CountCalls("ReleaseTexture"), 0);
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.CountCalls("ReleaseTexture"), 2);
}

TEST(TextureLoan, forgets_a_renderer_that_is_gone) {
  auto renderer = std::make_unique<RecordingRenderer>();
  TextureLoan loan(TWO);
  loan.Take(renderer.get());
  renderer.reset();
  EXPECT_FALSE(loan.IsHeld());
  loan.GiveBack();
}
