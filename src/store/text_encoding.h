// Names reach Trelk files as one byte a character in the Windows-1252 code page.
#pragma once

#include <string>
#include <string_view>

namespace vtt {

// Converts UTF-8 to Windows-1252. A character the code page cannot hold, and a byte that
// is not valid UTF-8, becomes "?".
std::string ToWindows1252(std::string_view utf8);

// Converts Windows-1252 back to UTF-8 (for messages and for reading files back).
std::string FromWindows1252(std::string_view text);

}  // namespace vtt
