// Earthquake record files: one binary file for each time-history function, in Trelk's own
// records folder, apart from the structures.
//
// The file lies at TrelkPath/Records/<subfolder>/<function name>, without extension; the
// three folders are made, one level at a time, when they are missing. The file is opened
// without truncating, so a longer file left by an earlier transfer keeps its old tail.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "source/vask_model.h"

namespace vtt {

class UserMessages;

// The records subfolder that the transfer writes every record file into.
inline constexpr std::string_view kEqkeGroupName = "EqkeGroup";

// Writes one record file: the title cut to 40 characters or blank-padded, version 1, the
// point count N + 1, the peak value of largest magnitude in single precision (the first
// one wins a tie) with its time, `duration`, then the pair (0, 0) and the N points, time
// before value, all narrowed to f32. With `zeroBased` point i stands at index i - 1 of
// `values` and `times`, otherwise at index i. `dt` is not written.
//
// When the records folder cannot be made, "Error : Could not create directory. " and the
// folder's path are shown (critical) and nothing is written. A function name that would
// lead out of the records folder is refused with a message naming the function, and
// nothing is written for it. Either way the transfer goes on. True when the file was
// written.
bool WriteRecordFile(std::string_view trelkPath, std::string_view subfolder,
                     std::string_view name, std::string_view title, int count,
                     std::span<const double> values, std::span<const double> times,
                     double duration, double dt, bool zeroBased, UserMessages& messages);

// Why a function name cannot be the name of a record file, or nothing when it can: an
// empty name, a path separator, a drive or stream colon, a name of dots alone, a zero
// character, or a device name of Windows (CON, PRN, AUX, NUL, COM1 to COM9, LPT1 to
// LPT9, in any case, with or without an extension).
std::optional<std::string> RecordFileNameProblem(std::string_view name);

// A record-file writer for the source model that writes into `subfolder` of the records
// folder under `trelkPath`, reporting through `messages`; `onWritten` hears of each file
// written.
VaskModelObj::RecordFileWriter MakeRecordFileWriter(
    std::string trelkPath, std::string subfolder, UserMessages& messages,
    std::function<void(std::string_view name)> onWritten = {});

}  // namespace vtt
