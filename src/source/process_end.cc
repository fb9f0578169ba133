#include "source/process_end.h"

#include <vector>

namespace vtt {
namespace {

bool leaving = false;

std::vector<const void*>& Kept() {
  // Allocated and never freed, so that what it holds stays reachable to the end.
  static auto* const kept = new std::vector<const void*>();
  return *kept;
}

}  // namespace

void SetLeaveToProcessEnd(bool enabled) { leaving = enabled; }

bool LeavingToProcessEnd() { return leaving; }

void KeepUntilProcessEnd(const void* object) { Kept().push_back(object); }

}  // namespace vtt
