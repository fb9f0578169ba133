// Work on a second processor.
//
// A few steps of the transfer run on a second thread beside others that touch none of
// their data: the links, classes and area loads beside the frames' loads, the points where
// frames join shells beside the mass, and the nodal masses and loads and the structure
// frames beside the components, elements, frame loads and base cuts. Each waits at the
// stage where it would have run in turn, so failures, drop notes and every byte of the
// structure are the same either way. They run so only for a host that answers questions from two threads.
// Tests turn this off to show that the structure is the same.
#pragma once

#include <vector>

#include "source/drop_note.h"

namespace vtt {

class VaskModelObj;

void SetSecondThreadWork(bool enabled);
bool SecondThreadWork();

// The drop notes of stages run on a second thread, held until their stages' turn.
class HeldDropNotes {
 public:
  HeldDropNotes();
  HeldDropNotes(const HeldDropNotes&) = delete;
  HeldDropNotes& operator=(const HeldDropNotes&) = delete;

  // Holds the notes of this thread while it lives, when someone listens for notes.
  class Holding {
   public:
    Holding(HeldDropNotes& notes, bool listened);
    Holding(const Holding&) = delete;
    Holding& operator=(const Holding&) = delete;
    ~Holding();

   private:
    const DropObserver* previous_;
  };

  // Gives the notes to the model's observer, in the order they were made.
  void Release(const VaskModelObj& model);

  // Where this thread's notes go while a Holding lives on it; nullptr otherwise.
  static const DropObserver* ObserverOfThisThread();

 private:
  std::vector<DropNote> notes_;
  DropObserver observer_;
};

}  // namespace vtt
