#include "source/second_thread.h"

#include <atomic>
#include <utility>

#include "source/vask_model.h"

namespace vtt {
namespace {

std::atomic<bool> enabled{true};

// The observer of the thread, when it is a second thread that holds its notes.
thread_local const DropObserver* heldNotesObserver = nullptr;

}  // namespace

void SetSecondThreadWork(bool on) { enabled = on; }

bool SecondThreadWork() { return enabled; }

HeldDropNotes::HeldDropNotes()
    : observer_([this](const DropNote& note) { notes_.push_back(note); }) {}

HeldDropNotes::Holding::Holding(HeldDropNotes& notes, bool listened)
    : previous_(heldNotesObserver) {
  if (listened) heldNotesObserver = &notes.observer_;
}

HeldDropNotes::Holding::~Holding() { heldNotesObserver = previous_; }

void HeldDropNotes::Release(const VaskModelObj& model) {
  for (DropNote& note : notes_) {
    model.NoteDrop(std::move(note.kind), std::move(note.name), std::move(note.reason));
  }
  notes_.clear();
}

const DropObserver* HeldDropNotes::ObserverOfThisThread() { return heldNotesObserver; }

}  // namespace vtt
