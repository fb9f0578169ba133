#include "source/function_file.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ios>
#include <iterator>
#include <string>
#include <system_error>
#include <utility>

namespace vtt {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The number of digits from `at` on.
std::size_t Digits(std::string_view text, std::size_t at) {
  std::size_t end = at;
  while (end < text.size() && IsDigit(text[end])) ++end;
  return end - at;
}

// Whether `text` is a whole number of the file grammar:
// [+-]?(digits[.digits] | .digits)([eEdD][+-]?digits)?
bool IsNumber(std::string_view text) {
  std::size_t at = 0;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
  const std::size_t whole = Digits(text, at);
  at += whole;
  if (at < text.size() && text[at] == '.') {
    const std::size_t fraction = Digits(text, at + 1);
    if (fraction == 0) return false;
    at += 1 + fraction;
  } else if (whole == 0) {
    return false;
  }
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E' || text[at] == 'd' ||
                           text[at] == 'D')) {
    ++at;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
    const std::size_t exponent = Digits(text, at);
    if (exponent == 0) return false;
    at += exponent;
  }
  return at == text.size();
}

std::string_view TrimSpaces(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

// The lines of `content`, each without its ending; a last line without an ending counts.
std::vector<std::string_view> SplitLines(std::string_view content) {
  std::vector<std::string_view> lines;
  std::size_t start = 0;
  while (start < content.size()) {
    std::size_t end = start;
    while (end < content.size() && content[end] != '\r' && content[end] != '\n') ++end;
    lines.push_back(content.substr(start, end - start));
    // The ending: CR LF, CR or LF.
    if (end < content.size() && content[end] == '\r') ++end;
    if (end < content.size() && content[end] == '\n') ++end;
    start = end;
  }
  return lines;
}

// The fields of a free-format line: up to its first "$", separated by runs of blanks.
std::vector<std::string_view> FreeFields(std::string_view line) {
  line = line.substr(0, line.find('$'));
  std::vector<std::string_view> fields;
  std::size_t at = 0;
  while (at < line.size()) {
    while (at < line.size() && (line[at] == ' ' || line[at] == '\t')) ++at;
    const std::size_t start = at;
    while (at < line.size() && line[at] != ' ' && line[at] != '\t') ++at;
    if (at > start) fields.push_back(line.substr(start, at - start));
  }
  return fields;
}

// The first `wanted` fields of a fixed-format line; fields past its end are empty.
std::vector<std::string_view> FixedFields(std::string_view line, int width, int wanted) {
  std::vector<std::string_view> fields;
  for (int k = 0; k < wanted; ++k) {
    const std::size_t start = static_cast<std::size_t>(k) * static_cast<std::size_t>(width);
    if (width <= 0 || start >= line.size()) {
      fields.emplace_back();
    } else {
      fields.push_back(line.substr(start, static_cast<std::size_t>(width)));
    }
  }
  return fields;
}

FunctionFilePoints Rejected(std::string refusal) {
  FunctionFilePoints points;
  points.times = {0.0, 1.0};
  points.values = {0.0, 0.0};
  points.accepted = false;
  points.refusal = std::move(refusal);
  return points;
}

}  // namespace

double FunctionFieldValue(std::string_view field) {
  field = TrimSpaces(field);
  if (!IsNumber(field)) return 0.0;
  std::string text(field);
  if (text.front() == '+') text.erase(0, 1);
  for (char& c : text) {
    if (c == 'd' || c == 'D') c = 'e';
  }
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range) {
    // Too large or too small for a double: the nearest a double holds (infinity or 0).
    return std::strtod(text.c_str(), nullptr);
  }
  return value;
}

FunctionFilePoints ReadFunctionText(std::string_view content, const FunctionFileLayout& layout) {
  FunctionFilePoints points;
  const bool pairs = layout.valueType == 2;
  const int fieldsPerPoint = pairs ? 2 : 1;
  const std::vector<std::string_view> lines = SplitLines(content);
  const std::size_t prefix = layout.prefixChars > 0 ? static_cast<std::size_t>(layout.prefixChars) : 0;
  for (std::size_t n = 0; n < lines.size(); ++n) {
    if (static_cast<long long>(n) < layout.headerLines) continue;
    std::string_view line = lines[n];
    if (!line.empty() && line.front() == '$') continue;
    line = TrimSpaces(line.substr(std::min(prefix, line.size())));
    if (line.empty()) break;
    const int wanted = layout.pointsPerLine * fieldsPerPoint;
    const std::vector<std::string_view> fields =
        layout.freeFormat ? FreeFields(line) : FixedFields(line, layout.fieldWidth, wanted);
    const auto field = [&fields](int k) {
      const auto slot = static_cast<std::size_t>(k);
      return slot < fields.size() ? FunctionFieldValue(fields[slot]) : 0.0;
    };
    for (int p = 0; p < layout.pointsPerLine; ++p) {
      if (pairs) {
        points.times.push_back(field(2 * p));
        points.values.push_back(field(2 * p + 1));
      } else {
        const auto number = static_cast<double>(points.times.size() + 1);
        points.times.push_back((number - 1.0) * layout.dt);
        points.values.push_back(field(p));
      }
    }
  }
  if (points.times.empty()) return Rejected("it gives no point");
  if (points.times.front() < 0.0) return Rejected("its first time is negative");
  for (std::size_t i = 1; i < points.times.size(); ++i) {
    if (!(points.times[i] > points.times[i - 1])) {
      return Rejected("its times do not rise at point " + std::to_string(i + 1));
    }
  }
  points.accepted = true;
  return points;
}

FunctionFilePoints ReadFunctionFile(const FunctionFileLayout& layout) {
  // Only a regular file is opened: a folder fails while it is being read, and a device or
  // a pipe may never end.
  const std::filesystem::path path(layout.fileName);
  std::error_code error;
  if (layout.fileName.empty() || !std::filesystem::is_regular_file(path, error)) {
    return Rejected("it cannot be opened");
  }
  std::ifstream in(path, std::ios::binary);
  if (!in) return Rejected("it cannot be opened");
  std::string content;
  try {
    content.assign(std::istreambuf_iterator<char>(in), {});
  } catch (const std::ios_base::failure&) {
    return Rejected("it cannot be opened");
  }
  return ReadFunctionText(content, layout);
}

}  // namespace vtt
