// Memory left to the end of the process.
//
// A transfer of a large building builds millions of small objects: the host's model, the
// source model and the store. Freeing them one by one at the end takes seconds; the end
// of the process gives all the memory back at once. A program that ends right after its
// transfer (the command line) turns leaving on; a caller that goes on after a transfer
// (the tests, the benchmarks) leaves it off, and everything is freed as usual.
#pragma once

#include <memory>
#include <utility>

namespace vtt {

void SetLeaveToProcessEnd(bool enabled);
bool LeavingToProcessEnd();

// Keeps the object reachable and never destroys it.
void KeepUntilProcessEnd(const void* object);

// With leaving on, moves the object's contents into a kept object, which leaves `object`
// empty; otherwise does nothing, and the object is freed as usual.
template <class T>
void LeaveToProcessEnd(T& object) {
  if (!LeavingToProcessEnd()) return;
  KeepUntilProcessEnd(new T(std::move(object)));
}

// The same for an owned object: with leaving on, it is released and kept.
template <class T>
void LeaveToProcessEnd(std::unique_ptr<T>& object) {
  if (!LeavingToProcessEnd() || !object) return;
  KeepUntilProcessEnd(object.release());
}

}  // namespace vtt
