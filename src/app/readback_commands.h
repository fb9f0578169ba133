// The commands that read a structure back: dump and check.
#pragma once

#include <ostream>
#include <string>

namespace vtt {

// Prints a structure folder, one file of it, or an earthquake record file, section by
// section with every header value and every record's fields; JSON when `json` is set.
int RunDumpCommand(const std::string& path, bool json, std::ostream& out, std::ostream& err);

// Checks a structure folder and prints each failed check with its file and offset. The
// result is exit_status::kComplete only when every check holds.
int RunCheckCommand(const std::string& folder, std::ostream& out, std::ostream& err);

}  // namespace vtt
