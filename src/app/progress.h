// Progress of a long transfer on the user's terminal: the stage being read or filled and
// a bar, redrawn in place on one line.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

namespace vtt {

struct TransferProgress;

// One line that is redrawn in place: a carriage return, the bar, the percentage and a
// label, padded with spaces over whatever the line showed before.
class ProgressBar {
 public:
  static constexpr int kBarWidth = 30;
  static constexpr std::size_t kMaxLabel = 44;  // keeps the line within 80 columns

  explicit ProgressBar(std::ostream& out) : out_(out) {}

  // Draws the bar at `fraction` (0 to 1) of the work, with `label` cut to kMaxLabel.
  void Show(double fraction, std::string_view label);
  // Blanks the line and puts the cursor at its start, so that a message starts on a clean
  // line; the next Show draws the bar again.
  void Clear();
  bool Visible() const { return shown_ > 0; }

 private:
  std::ostream& out_;
  std::size_t shown_ = 0;  // characters on the line now
};

// The whole transfer as 49 steps of equal weight: the 28 reading stages of the source
// model take the place of driver stage 2, and each of the 21 other driver stages is one
// step. Where each stage begins on that scale:
double DriverStageStart(int stage);     // stage 1 to 22
double ReadingStageStart(int read_stage);  // reading stage 1 to 28
inline constexpr int kTransferSteps = 49;

// Stage callbacks that draw `bar`: "stage 12/22 FillTrelkElements" for a driver stage,
// "reading 6/28 ReadFrames" for a reading stage.
void AttachProgressBar(TransferProgress& progress, ProgressBar& bar);

}  // namespace vtt
