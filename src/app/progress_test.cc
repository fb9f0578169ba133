// The progress line of a transfer on a terminal.
#include "app/progress.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "transfer/driver.h"

namespace vtt {
namespace {

TEST(ProgressBar, DrawsTheBarThePercentageAndTheLabel) {
  std::ostringstream out;
  ProgressBar bar(out);
  bar.Show(0.5, "stage 12/22 FillTrelkElements");
  EXPECT_EQ(out.str(), "\r[###############...............]  50% stage 12/22 FillTrelkElements");
  EXPECT_TRUE(bar.Visible());
}

TEST(ProgressBar, RoundsDownAndKeepsWithinTheEnds) {
  std::ostringstream out;
  ProgressBar bar(out);
  bar.Show(28.0 / 49.0, "x");
  bar.Show(-1.0, "y");
  bar.Show(2.0, "z");
  EXPECT_EQ(out.str(),
            "\r[#################.............]  57% x"
            "\r[..............................]   0% y"
            "\r[##############################] 100% z");
}

TEST(ProgressBar, AShorterLineBlanksTheTailOfTheLongerOne) {
  std::ostringstream out;
  ProgressBar bar(out);
  bar.Show(0.0, "abcdef");
  out.str("");
  bar.Show(0.0, "ab");
  EXPECT_EQ(out.str(), "\r[..............................]   0% ab    ");
}

TEST(ProgressBar, CutsALongLabel) {
  std::ostringstream out;
  ProgressBar bar(out);
  bar.Show(0.0, std::string(50, 'L'));
  EXPECT_EQ(out.str(), "\r[..............................]   0% " + std::string(44, 'L'));
}

TEST(ProgressBar, ClearBlanksTheLineOnceAndOnlyWhenShown) {
  std::ostringstream out;
  ProgressBar bar(out);
  bar.Clear();
  EXPECT_EQ(out.str(), "");
  bar.Show(0.0, "ab");
  out.str("");
  bar.Clear();
  EXPECT_EQ(out.str(), "\r" + std::string(40, ' ') + "\r");
  EXPECT_FALSE(bar.Visible());
  out.str("");
  bar.Clear();
  EXPECT_EQ(out.str(), "");
}

TEST(ProgressBar, ReadingStagesTakeThePlaceOfDriverStageTwo) {
  EXPECT_DOUBLE_EQ(DriverStageStart(1), 0.0);
  EXPECT_DOUBLE_EQ(DriverStageStart(2), 1.0 / 49);
  EXPECT_DOUBLE_EQ(ReadingStageStart(1), 1.0 / 49);
  EXPECT_DOUBLE_EQ(ReadingStageStart(28), 28.0 / 49);
  EXPECT_DOUBLE_EQ(DriverStageStart(3), 29.0 / 49);
  EXPECT_DOUBLE_EQ(DriverStageStart(22), 48.0 / 49);
}

TEST(ProgressBar, StageCallbacksNameTheStage) {
  std::ostringstream out;
  ProgressBar bar(out);
  TransferProgress progress;
  AttachProgressBar(progress, bar);
  progress.on_read_stage(6, "ReadFrames");
  EXPECT_EQ(out.str(), "\r[###...........................]  12% reading 6/28 ReadFrames");
  out.str("");
  progress.on_stage(22, "Dispose");
  EXPECT_EQ(out.str(), "\r[#############################.]  97% stage 22/22 Dispose    ");
}

}  // namespace
}  // namespace vtt
