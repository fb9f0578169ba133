// Reading the points, frames, areas and groups of a model file straight from the text into
// the model's own objects: the bulk of any building's file.
//
// These readers take each object only in its plain form: keys of the object's kind each at
// most once, values of the kinds the format gives them, texts of printable ASCII without
// escapes, numbers as JsonDocument's quick reader takes them. For such an object they give
// exactly what the checked reading of model_file.cc gives, defaults included. For anything
// else they give up (return false, the object and the offset left as they may be), and the
// caller reads the object the checked way, which either takes it or says what is wrong.
#pragma once

#include <cstddef>
#include <string_view>

#include "hosts/model_file.h"

namespace vtt::model_file {

// Each reads the object that starts at `at` (after any whitespace) and moves `at` past it.
bool ReadPointDirectly(std::string_view text, std::size_t& at, Point& point);
bool ReadFrameDirectly(std::string_view text, std::size_t& at, Frame& frame);
bool ReadAreaDirectly(std::string_view text, std::size_t& at, Area& area);
bool ReadGroupDirectly(std::string_view text, std::size_t& at, Group& group);

}  // namespace vtt::model_file
