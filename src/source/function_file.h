// Reading the text file of a time-history function that the host reads from a file.
//
// The file is read line by line (lines end at CR LF, CR or LF):
// - the header lines are skipped whatever they hold;
// - after them, a line whose first character is "$" is a comment;
// - from every other line the prefix characters are dropped and spaces trimmed; an empty
//   line ends the reading;
// - free format: the line ends at its first "$", and its fields are separated by runs of
//   spaces and tabs; fixed format: the line is cut into fields of the fixed width;
// - each line gives `pointsPerLine` points: with value type 2 a time and a value each,
//   otherwise a value each at the time (point number - 1) x `dt`;
// - a field is a number when it reads [+-]?(digits[.digits] | .digits)([eEdD][+-]?digits)?
//   (a fixed field may be padded with spaces); any other field, and a field the line does
//   not have, counts as 0.
// A file that cannot be opened, that gives no point, whose first time is negative or whose
// times do not rise strictly, is rejected: the function becomes the two points (0, 0) and
// (1, 0).
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vtt {

// How the host says a function file is laid out.
struct FunctionFileLayout {
  std::string fileName;
  int headerLines = 0;
  int prefixChars = 0;
  int pointsPerLine = 1;
  int valueType = 1;  // 1 values at equal steps of dt, 2 time and value pairs
  bool freeFormat = true;
  int fieldWidth = 10;
  double dt = 0.0;
};

// The points of a function file, point i at index i - 1.
struct FunctionFilePoints {
  std::vector<double> times;
  std::vector<double> values;
  // False when the file was rejected and the points are (0, 0) and (1, 0).
  bool accepted = false;
  // Why it was rejected, in the user's words ("cannot be opened", "its times do not rise
  // at point 3", ...); empty when it was accepted.
  std::string refusal;
};

FunctionFilePoints ReadFunctionFile(const FunctionFileLayout& layout);

// The same rules on a file's content, for a file already in memory.
FunctionFilePoints ReadFunctionText(std::string_view content, const FunctionFileLayout& layout);

// The value of one field: the number it reads, or 0 when it is not a number.
double FunctionFieldValue(std::string_view field);

}  // namespace vtt
