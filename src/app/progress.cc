#include "app/progress.h"

#include <algorithm>
#include <cmath>

#include "transfer/driver.h"

namespace vtt {

void ProgressBar::Show(double fraction, std::string_view label) {
  fraction = std::clamp(fraction, 0.0, 1.0);
  const int filled = static_cast<int>(std::floor(fraction * kBarWidth));
  const int percent = static_cast<int>(std::floor(fraction * 100.0));
  std::string line = "[";
  line.append(static_cast<std::size_t>(filled), '#');
  line.append(static_cast<std::size_t>(kBarWidth - filled), '.');
  line += "] ";
  const std::string number = std::to_string(percent);
  line.append(3 - number.size(), ' ');
  line += number;
  line += "% ";
  line += label.substr(0, kMaxLabel);
  const std::size_t length = line.size();
  // Spaces over the tail of a longer line shown before.
  if (length < shown_) line.append(shown_ - length, ' ');
  out_ << '\r' << line;
  out_.flush();
  shown_ = length;
}

void ProgressBar::Clear() {
  if (shown_ == 0) return;
  out_ << '\r' << std::string(shown_, ' ') << '\r';
  out_.flush();
  shown_ = 0;
}

double DriverStageStart(int stage) {
  const int before = stage <= 2 ? stage - 1 : stage - 1 + 27;
  return static_cast<double>(before) / kTransferSteps;
}

double ReadingStageStart(int read_stage) {
  return static_cast<double>(1 + read_stage - 1) / kTransferSteps;
}

void AttachProgressBar(TransferProgress& progress, ProgressBar& bar) {
  progress.on_stage = [&bar](int stage, std::string_view name) {
    bar.Show(DriverStageStart(stage),
             "stage " + std::to_string(stage) + "/22 " + std::string(name));
  };
  progress.on_read_stage = [&bar](int read_stage, std::string_view name) {
    bar.Show(ReadingStageStart(read_stage),
             "reading " + std::to_string(read_stage) + "/28 " + std::string(name));
  };
}

}  // namespace vtt
