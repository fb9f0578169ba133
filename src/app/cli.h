// The command line of vask2trelk.
#pragma once

#include <ostream>

#include "source/process_end.h"  // SetLeaveToProcessEnd, which main() turns on

namespace vtt {

// Exit statuses, one for each way a run can end.
namespace exit_status {
inline constexpr int kComplete = 0;
inline constexpr int kUsage = 2;
inline constexpr int kBadModelFile = 3;
inline constexpr int kNoModel = 4;
inline constexpr int kEmptyModel = 5;
inline constexpr int kFolderNotMade = 6;
inline constexpr int kTransferFailed = 7;
// The default structures folder (TrelkPath/Trelk/Structures) is missing and cannot be made.
inline constexpr int kStructuresFolderNotMade = 8;
// `check` found a structure folder in which a check fails.
inline constexpr int kCheckFailed = 9;
}  // namespace exit_status

// Runs the command line; messages for the user go to `err`, normal output to `out`.
// Progress is drawn on `err` only when `err_is_terminal` says that a person watches it.
int RunCli(int argc, const char* const* argv, std::ostream& out, std::ostream& err,
           bool err_is_terminal);

// The same, with `err` taken as a terminal when it is the standard error stream of the
// process and that stream is an interactive terminal.
int RunCli(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

}  // namespace vtt
