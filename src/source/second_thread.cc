#include "source/second_thread.h"

#include <atomic>

namespace vtt {
namespace {

std::atomic<bool> enabled{true};

}  // namespace

void SetSecondThreadWork(bool on) { enabled = on; }

bool SecondThreadWork() { return enabled; }

}  // namespace vtt
