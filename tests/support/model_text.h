// Pieces of model files for tests that need many objects of one kind.
#pragma once

#include <string>
#include <string_view>

namespace vtt::testing {

// The entries 1 to `count` of a JSON array, separated by commas: `entry` with each "#" in
// it replaced by the entry's number.
inline std::string NumberedEntries(int count, std::string_view entry) {
  std::string text;
  for (int i = 1; i <= count; ++i) {
    if (i > 1) text += ',';
    const std::string number = std::to_string(i);
    for (const char c : entry) {
      if (c == '#') {
        text += number;
      } else {
        text += c;
      }
    }
  }
  return text;
}

}  // namespace vtt::testing
