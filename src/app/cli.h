// The command line of vask2trelk.
#pragma once

#include <ostream>

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
}  // namespace exit_status

// Runs the command line; messages for the user go to `err`, normal output to `out`.
int RunCli(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

}  // namespace vtt
