#include "analysis/write_record_file.h"

#include <array>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "store/binary_writer.h"
#include "store/record.h"
#include "store/record_file_records.h"
#include "store/text_encoding.h"
#include "transfer/failure.h"
#include "transfer/messages.h"
#include "transfer/system_services.h"

namespace vtt {
namespace {

std::string FunctionOwner(std::string_view name) {
  return "Time-history function \"" + std::string(name) + "\"";
}

// The value in single precision; a value that single precision cannot hold ends the run,
// as any narrowing overflow does.
float Narrow(double value, std::string_view name) {
  if (std::isfinite(value) && std::fabs(value) > std::numeric_limits<float>::max()) {
    throw TransferFailure(fmt::format(
        "{}: the value {} does not fit the single precision of a record file.",
        FunctionOwner(name), value));
  }
  return static_cast<float>(value);
}

// The point arrays of one function as the caller holds them.
class PointArrays {
 public:
  PointArrays(std::string_view name, std::span<const double> values,
              std::span<const double> times, bool zeroBased)
      : name_(name), values_(values), times_(times), base_(zeroBased ? 1 : 0) {}

  double Value(int i) const { return At(values_, i); }
  double Time(int i) const { return At(times_, i); }

 private:
  double At(std::span<const double> array, int i) const {
    const auto slot = static_cast<std::size_t>(i - base_);
    if (i - base_ < 0 || slot >= array.size()) {
      throw TransferFailure(fmt::format("{}: point {} is missing from the points the host gave.",
                                        FunctionOwner(name_), i));
    }
    return array[slot];
  }

  std::string_view name_;
  std::span<const double> values_;
  std::span<const double> times_;
  int base_;
};

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}

// Whether `base` (a name without its extension) is a device name of Windows. Windows
// ignores trailing spaces there, so "CON " is the console too.
bool IsDeviceName(std::string_view base) {
  while (!base.empty() && base.back() == ' ') base.remove_suffix(1);
  static constexpr std::array<std::string_view, 4> kDevices = {"con", "prn", "aux", "nul"};
  for (std::string_view device : kDevices) {
    if (EqualsIgnoringCase(base, device)) return true;
  }
  if (base.size() == 4 && base[3] >= '1' && base[3] <= '9') {
    const std::string_view stem = base.substr(0, 3);
    return EqualsIgnoringCase(stem, "com") || EqualsIgnoringCase(stem, "lpt");
  }
  return false;
}

// Opens `path` for binary writing without truncating it; a missing file is made.
std::FILE* OpenWithoutTruncating(const std::filesystem::path& path) {
  std::FILE* file = std::fopen(path.string().c_str(), "r+b");
  if (file == nullptr && errno == ENOENT) file = std::fopen(path.string().c_str(), "w+b");
  return file;
}

}  // namespace

std::optional<std::string> RecordFileNameProblem(std::string_view name) {
  if (name.empty()) return "it has no name to give the record file";
  if (name.find('\0') != std::string_view::npos) return "its name holds a zero character";
  if (name.find('/') != std::string_view::npos || name.find('\\') != std::string_view::npos) {
    return "its name holds a path separator, \"/\" or \"\\\", and would lead out of the "
           "records folder";
  }
  if (name.find(':') != std::string_view::npos) {
    return "its name holds a colon, which names a drive or a file stream";
  }
  if (name.find_first_not_of(". ") == std::string_view::npos) {
    return "its name is made of dots alone and names a folder, not a file";
  }
  if (IsDeviceName(name.substr(0, name.find('.')))) {
    return "its name is a device name of Windows (CON, PRN, AUX, NUL, COM1 to COM9, LPT1 "
           "to LPT9)";
  }
  for (const char c : name) {
    if (static_cast<unsigned char>(c) < 0x20) return "its name holds a control character";
    if (std::string_view("<>\"|?*").find(c) != std::string_view::npos) {
      return "its name holds one of < > \" | ? *, which no file name may hold";
    }
  }
  // A dynamic case names its record by the function's name in the code page of the text
  // fields, where a character the code page lacks is a "?": the record file of such a
  // name could never be found by that text.
  if (ToWindows1252(name).find('?') != std::string::npos) {
    return "its name holds a character outside the Windows-1252 code page, which the "
           "structure cannot name";
  }
  return std::nullopt;
}

bool WriteRecordFile(std::string_view trelkPath, std::string_view subfolder,
                     std::string_view name, std::string_view title, int count,
                     std::span<const double> values, std::span<const double> times,
                     double duration, double dt, bool zeroBased, UserMessages& messages) {
  (void)dt;  // the record file has no field for the time step
  if (const auto problem = RecordFileNameProblem(name)) {
    messages.Show({"", FunctionOwner(name) + ": no record file is written, because " +
                           *problem + ".",
                   MessageIcon::Critical});
    return false;
  }
  if (count > record_file_rec::kMaxSourcePoints) {
    throw TransferFailure(fmt::format(
        "{}: its {} points do not fit a record file, which holds at most {} points.",
        FunctionOwner(name), count, record_file_rec::kMaxSourcePoints));
  }

  // The peak: the first value of largest magnitude in single precision.
  const PointArrays points(name, values, times, zeroBased);
  float peakValue = 0.0f;
  float peakTime = 0.0f;
  for (int i = 1; i <= count; ++i) {
    const float value = Narrow(points.Value(i), name);
    if (std::fabs(value) > std::fabs(peakValue)) {
      peakValue = value;
      peakTime = Narrow(points.Time(i), name);
    }
  }

  std::vector<std::uint8_t> bytes(record_file_rec::kHeaderSize, 0);
  RecordRef header(bytes);
  header.SetText(record_file_rec::Title, title);
  header.SetInt(record_file_rec::Version, record_file_rec::kVersion);
  header.SetInt(record_file_rec::PointCount, count + 1);
  header.SetReal(record_file_rec::PeakValue, peakValue);
  header.SetReal(record_file_rec::PeakTime, peakTime);
  header.SetReal(record_file_rec::Duration, Narrow(duration, name));
  BinaryWriter pairs(bytes);
  pairs.F32(0.0f).F32(0.0f);
  for (int i = 1; i <= count; ++i) {
    pairs.F32(Narrow(points.Time(i), name)).F32(Narrow(points.Value(i), name));
  }

  // The folder chain, each made when it is missing.
  const std::string base(trelkPath);
  const std::string records = JoinFolder(base, "Records");
  const std::string folder = JoinFolder(records, subfolder);
  for (const std::string& each : {base, records, folder}) {
    if (!FolderExists(each)) MakeFolder(each);
  }
  if (!FolderExists(folder)) {
    messages.Show({"", "Error : Could not create directory. " + folder, MessageIcon::Critical});
    return false;
  }

  const std::string path = JoinFolder(folder, name);
  std::FILE* file = OpenWithoutTruncating(std::filesystem::path(path));
  bool written = file != nullptr;
  if (file != nullptr) {
    written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    written = std::fclose(file) == 0 && written;
  }
  if (!written) {
    messages.Show({"", "Error : Could not write record file. " + path, MessageIcon::Critical});
  }
  return written;
}

VaskModelObj::RecordFileWriter MakeRecordFileWriter(
    std::string trelkPath, std::string subfolder, UserMessages& messages,
    std::function<void(std::string_view name)> onWritten) {
  return [trelkPath = std::move(trelkPath), subfolder = std::move(subfolder), &messages,
          onWritten = std::move(onWritten)](const VaskModelObj::RecordFileRequest& request) {
    const bool written =
        WriteRecordFile(trelkPath, subfolder, request.name, request.title, request.count,
                        request.values, request.times, request.duration, request.dt,
                        request.zeroBased, messages);
    if (written && onWritten) onWritten(request.name);
  };
}

}  // namespace vtt
