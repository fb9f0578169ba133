// What the transfer leaves out of the structure, told one object at a time.
//
// The reading stages and the load-case step pass over host objects that the target cannot
// take, without a message. A caller that wants to tell the user what was left out (the
// transfer report) installs an observer; by default there is none and nothing changes.
#pragma once

#include <functional>
#include <string>

namespace vtt {

struct DropNote {
  std::string kind;    // what sort of object: "material", "frame section", "load case", ...
  std::string name;    // the host object's name
  std::string reason;  // why it was left out, in the user's words
};

using DropObserver = std::function<void(const DropNote&)>;

}  // namespace vtt
