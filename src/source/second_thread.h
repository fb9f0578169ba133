// Work on a second processor.
//
// A few steps of the transfer run on a second thread beside others that touch none of
// their data: the points where frames join shells beside the mass, and the structure
// frames and base cuts beside the nodal masses and loads. Each waits at the stage where
// it would have run in turn, so failures and every byte of the structure are the same
// either way. They run so only for a host that answers questions from two threads.
// Tests turn this off to show that the structure is the same.
#pragma once

namespace vtt {

void SetSecondThreadWork(bool enabled);
bool SecondThreadWork();

}  // namespace vtt
