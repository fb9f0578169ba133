// A run-time failure that ends a transfer.
//
// The transfer has no recovery: a failure stops the run where it stands and leaves what is
// already on disk. The message names the object and the cause, so the user can act on it.
#pragma once

#include <stdexcept>
#include <string>

namespace vtt {

class TransferFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace vtt
