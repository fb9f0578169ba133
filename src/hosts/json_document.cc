#include "hosts/json_document.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace vtt {
namespace {

// A character iterator that tells how far the lexer has read. The lexer reports values
// only once it has read them (a number, one character more), so the start of a value is
// found by skipping the separators that follow the previous report.
class CountingIterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  CountingIterator() = default;
  CountingIterator(const char* at, const char* begin, std::size_t* reached)
      : at_(at), begin_(begin), reached_(reached) {}

  reference operator*() const { return *at_; }
  CountingIterator& operator++() {
    ++at_;
    *reached_ = static_cast<std::size_t>(at_ - begin_);
    return *this;
  }
  CountingIterator operator++(int) {
    CountingIterator before = *this;
    ++*this;
    return before;
  }
  bool operator==(const CountingIterator& other) const { return at_ == other.at_; }

 private:
  const char* at_ = nullptr;
  const char* begin_ = nullptr;
  std::size_t* reached_ = nullptr;
};

bool IsSeparator(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == ',' || c == ':';
}

// Strips the library's own prefix ("[json.exception.parse_error.101] parse error at line
// 1, column 4: ") from a parser message: the caller gives the position in its own form.
std::string ParserReason(const std::string& what) {
  std::string_view reason = what;
  if (reason.starts_with("[json.exception.")) {
    const auto close = reason.find("] ");
    if (close != std::string_view::npos) reason.remove_prefix(close + 2);
  }
  if (reason.starts_with("parse error")) {
    const auto colon = reason.find(": ");
    if (colon != std::string_view::npos) reason.remove_prefix(colon + 2);
  }
  return std::string(reason);
}

// The reason as it can be shown: a byte that is not part of well-formed UTF-8, and a control
// character, is written as \xNN, so that a message never carries bytes that no terminal
// shows.
std::string Printable(std::string_view reason) {
  std::string shown;
  const auto escaped = [&shown](unsigned char byte) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    shown += "\\x";
    shown += kHex[byte >> 4];
    shown += kHex[byte & 0xF];
  };
  for (std::size_t i = 0; i < reason.size();) {
    const auto lead = static_cast<unsigned char>(reason[i]);
    if (lead < 0x80) {
      if (lead < 0x20 || lead == 0x7F) {
        escaped(lead);
      } else {
        shown += static_cast<char>(lead);
      }
      ++i;
      continue;
    }
    const std::size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                               : lead >= 0xE0 && lead <= 0xEF ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 0;
    bool wellFormed = length > 0 && i + length <= reason.size();
    for (std::size_t k = 1; wellFormed && k < length; ++k) {
      wellFormed = (static_cast<unsigned char>(reason[i + k]) & 0xC0) == 0x80;
    }
    if (!wellFormed) {
      escaped(lead);
      ++i;
      continue;
    }
    shown.append(reason.substr(i, length));
    i += length;
  }
  return shown;
}

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// Plain words for the few refusals whose parser reason hides the cause: a byte that is not
// UTF-8, the NaN and Infinity that other writers put where a number goes, and a comment.
// Nothing for the others, which keep the parser's reason. A word is placed where it starts.
std::optional<std::string> PlainReason(std::string_view text, std::size_t& offset,
                                       std::string_view reason) {
  if (offset >= text.size()) return std::nullopt;
  const auto byte = static_cast<unsigned char>(text[offset]);
  if (reason.find("ill-formed UTF-8") != std::string_view::npos && byte >= 0x80) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    return std::string("the byte 0x") + kHex[byte >> 4] + kHex[byte & 0xF] +
           " is not UTF-8; expected the model file in UTF-8";
  }
  std::size_t start = offset;
  while (start > 0 && IsLetter(text[start - 1])) --start;
  if (start > 0 && (text[start - 1] == '-' || text[start - 1] == '+')) --start;
  std::size_t end = offset;
  while (end < text.size() && IsLetter(text[end])) ++end;
  const std::string_view word = text.substr(start, end - start);
  std::string letters;
  for (const char c : word) {
    if (IsLetter(c)) letters += static_cast<char>(c | 0x20);
  }
  if (letters == "nan" || letters == "infinity" || letters == "inf") {
    offset = start;
    return "found " + std::string(word) + ", which is not a JSON number; expected a finite number";
  }
  if (byte == '/' && offset + 1 < text.size() && (text[offset + 1] == '/' || text[offset + 1] == '*')) {
    return "found a comment, and JSON has none; expected a value or a key";
  }
  return std::nullopt;
}

}  // namespace

// Builds the tree from the parser's events.
class JsonTreeBuilder {
 public:
  using number_integer_t = nlohmann::json::number_integer_t;
  using number_unsigned_t = nlohmann::json::number_unsigned_t;
  using number_float_t = nlohmann::json::number_float_t;
  using string_t = nlohmann::json::string_t;
  using binary_t = nlohmann::json::binary_t;

  JsonTreeBuilder(std::string_view text, const std::size_t* reached, JsonDocument& document)
      : text_(text), reached_(reached), document_(document) {}

  bool null() { return AddLeaf(JsonKind::Null); }
  bool boolean(bool value) { return AddLeaf(value ? JsonKind::True : JsonKind::False); }
  bool number_integer(number_integer_t value) {
    return AddNumber(JsonKind::Integer, static_cast<double>(value));
  }
  bool number_unsigned(number_unsigned_t value) {
    return AddNumber(JsonKind::Integer, static_cast<double>(value));
  }
  bool number_float(number_float_t value, const string_t& written) {
    if (!std::isfinite(value)) return Refuse(ValueStart(), NumberOverflow(written));
    return AddNumber(JsonKind::Real, value);
  }
  bool string(string_t& value) {
    const std::uint32_t node = AddNode(JsonKind::String, ValueStart());
    StoreText(node, value);
    return true;
  }
  bool binary(binary_t& /*value*/) { return true; }  // never reported for JSON text

  bool start_object(std::size_t /*size*/) { return Open(JsonKind::Object); }
  bool start_array(std::size_t /*size*/) { return Open(JsonKind::Array); }
  bool end_object() { return Close(); }
  bool end_array() { return Close(); }

  bool key(string_t& value) {
    const std::uint32_t node = NewNode(JsonKind::String, ValueStart());
    StoreText(node, value);
    pending_.push_back(node);
    open_.back().lastKey = node;
    return true;
  }

  bool parse_error(std::size_t position, const std::string& token,
                   const nlohmann::detail::exception& error) {
    // The parser tests numbers for overflow itself (error 406) before reporting them.
    if (error.id == 406) return Refuse(ValueStart(), NumberOverflow(token));
    std::size_t offset = position == 0 ? 0 : std::min(position - 1, text_.size());
    const std::string reason = ParserReason(error.what());
    const std::optional<std::string> plain = PlainReason(text_, offset, reason);
    return Refuse(offset, "not valid JSON: " + (plain ? *plain : Printable(reason)));
  }

  bool failed() const { return failed_; }
  JsonSyntaxError error() const { return JsonSyntaxError(errorOffset_, errorPath_, errorMessage_); }

 private:
  struct OpenContainer {
    std::uint32_t node;
    std::size_t firstPending;
    std::uint32_t itemsStarted = 0;
    std::uint32_t lastKey = kNoKey;
  };
  static constexpr std::uint32_t kNoKey = std::numeric_limits<std::uint32_t>::max();

  // The offset of the value just reported: the first character after the separators
  // that follow the previous report.
  std::size_t ValueStart() {
    std::size_t at = scanFrom_;
    if (at == 0 && text_.starts_with("\xEF\xBB\xBF")) at = 3;
    while (at < text_.size() && IsSeparator(text_[at])) ++at;
    scanFrom_ = *reached_;
    return at;
  }

  std::uint32_t NewNode(JsonKind kind, std::size_t offset) {
    JsonNode node;
    node.kind = kind;
    node.offset = static_cast<std::uint32_t>(offset);
    document_.nodes_.push_back(node);
    return static_cast<std::uint32_t>(document_.nodes_.size() - 1);
  }

  std::uint32_t AddNode(JsonKind kind, std::size_t offset) {
    const std::uint32_t node = NewNode(kind, offset);
    if (!open_.empty()) {
      pending_.push_back(node);
      ++open_.back().itemsStarted;
    }
    return node;
  }

  bool AddLeaf(JsonKind kind) {
    AddNode(kind, ValueStart());
    return true;
  }

  bool AddNumber(JsonKind kind, double value) {
    const std::uint32_t node = AddNode(kind, ValueStart());
    document_.nodes_[node].number = value;
    return true;
  }

  void StoreText(std::uint32_t node, const std::string& value) {
    document_.nodes_[node].first = static_cast<std::uint32_t>(document_.pool_.size());
    document_.nodes_[node].count = static_cast<std::uint32_t>(value.size());
    document_.pool_ += value;
  }

  bool Open(JsonKind kind) {
    const std::size_t offset = ValueStart();
    if (open_.size() >= JsonDocument::kMaxDepth) {
      return Refuse(offset, "expected arrays and objects nested at most " +
                                std::to_string(JsonDocument::kMaxDepth) +
                                " deep; the model file never nests more than a few levels");
    }
    const std::uint32_t node = AddNode(kind, offset);
    open_.push_back(OpenContainer{node, pending_.size()});
    return true;
  }

  bool Close() {
    scanFrom_ = *reached_;
    const OpenContainer container = open_.back();
    open_.pop_back();
    JsonNode& node = document_.nodes_[container.node];
    node.first = static_cast<std::uint32_t>(document_.items_.size());
    const std::size_t entries = pending_.size() - container.firstPending;
    node.count = static_cast<std::uint32_t>(node.kind == JsonKind::Object ? entries / 2 : entries);
    document_.items_.insert(document_.items_.end(),
                            pending_.begin() + static_cast<std::ptrdiff_t>(container.firstPending),
                            pending_.end());
    pending_.resize(container.firstPending);
    return true;
  }

  static std::string NumberOverflow(const std::string& written) {
    return "expected a finite number, found " + written + ", which is out of range";
  }

  bool Refuse(std::size_t offset, std::string message) {
    failed_ = true;
    errorOffset_ = offset;
    errorPath_ = CurrentPath();
    errorMessage_ = std::move(message);
    return false;
  }

  // The path of the value being read; very deep paths keep their two ends.
  std::string CurrentPath() const {
    std::vector<std::string> segments;
    for (const OpenContainer& container : open_) {
      const JsonNode& node = document_.nodes_[container.node];
      std::string segment;
      if (node.kind == JsonKind::Array) {
        if (container.itemsStarted == 0) continue;
        segment.append("[").append(std::to_string(container.itemsStarted - 1)).append("]");
      } else {
        if (container.lastKey == kNoKey) continue;
        const JsonNode& key = document_.nodes_[container.lastKey];
        segment.append(".").append(document_.pool_, key.first, key.count);
      }
      segments.push_back(std::move(segment));
    }
    constexpr std::size_t kKeptAtEachEnd = 4;
    std::string path;
    for (std::size_t i = 0; i < segments.size(); ++i) {
      if (segments.size() > 3 * kKeptAtEachEnd && i == kKeptAtEachEnd) {
        path += "...";
        i = segments.size() - kKeptAtEachEnd;
      }
      path += segments[i];
    }
    if (path.starts_with('.')) path.erase(0, 1);
    return path;
  }

  std::string_view text_;
  const std::size_t* reached_;
  JsonDocument& document_;
  std::size_t scanFrom_ = 0;
  std::vector<OpenContainer> open_;
  std::vector<std::uint32_t> pending_;
  bool failed_ = false;
  std::size_t errorOffset_ = 0;
  std::string errorPath_;
  std::string errorMessage_;
};

bool ScanJsonNumber(const char*& at, const char* end, double& value, bool& real) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const char* start = at;
  const char* p = at;
  const bool negative = p != end && *p == '-';
  if (negative) ++p;
  if (p == end) return false;
  if (*p == '0') {
    ++p;
  } else if (*p >= '1' && *p <= '9') {
    while (p != end && isDigit(*p)) ++p;
  } else {
    return false;
  }
  const char* integerEnd = p;
  real = false;
  if (p != end && *p == '.') {
    ++p;
    if (p == end || !isDigit(*p)) return false;
    while (p != end && isDigit(*p)) ++p;
    real = true;
  }
  if (p != end && (*p == 'e' || *p == 'E')) {
    ++p;
    if (p != end && (*p == '+' || *p == '-')) ++p;
    if (p == end || !isDigit(*p)) return false;
    while (p != end && isDigit(*p)) ++p;
    real = true;
  }
  if (real) {
    // Correctly rounded, as the full reader's conversion is; out of range is left to it.
    const auto [stop, error] = std::from_chars(start, p, value);
    if (error != std::errc() || stop != p || !std::isfinite(value)) return false;
  } else {
    const char* digits = negative ? start + 1 : start;
    if (integerEnd - digits > 18) return false;
    std::uint64_t magnitude = 0;
    for (const char* d = digits; d != integerEnd; ++d) {
      magnitude = magnitude * 10 + static_cast<std::uint64_t>(*d - '0');
    }
    // As the full reader: a negative integer through a signed one, so "-0" is 0.
    value = negative ? static_cast<double>(-static_cast<std::int64_t>(magnitude))
                     : static_cast<double>(magnitude);
  }
  at = p;
  return true;
}

// Reads the usual model file straight from its buffer, with no per-character bookkeeping:
// a value's offset is simply where its first character stands. It takes only what it is
// sure the full reader below takes with the same result, and gives up (returns false) at
// anything else: bad syntax, but also rare valid forms such as integers of more than 18
// digits or numbers that underflow. The full reader then reads the text from the start, so
// what it accepts and every message it gives, with the offset and the JSON path, stay
// exactly as they are.
class DirectTreeReader {
 public:
  DirectTreeReader(std::string_view text, JsonDocument& document)
      : begin_(text.data()), at_(text.data()), end_(text.data() + text.size()),
        nodes_(document.nodes_), items_(document.items_), pool_(document.pool_) {}

  bool Read() {
    Reserve();
    if (end_ - at_ >= 3 && std::string_view(at_, 3) == "\xEF\xBB\xBF") at_ += 3;
    SkipWhitespace();
    if (!ReadTree()) return false;
    SkipWhitespace();
    return at_ == end_;
  }

  // One value that starts at `offset` (after any whitespace) and lies inside `depth`
  // containers of the whole text; the offset just past it, or nothing.
  std::optional<std::size_t> ReadOneAt(std::size_t offset, std::size_t depth) {
    at_ = begin_ + offset;
    outerDepth_ = depth;
    SkipWhitespace();
    if (!ReadTree()) return std::nullopt;
    return static_cast<std::size_t>(at_ - begin_);
  }

 private:
  // The value at `at_` with everything inside it.
  bool ReadTree() {
    if (!ReadValue()) return false;
    while (!open_.empty()) {
      const OpenContainer& container = open_.back();
      const bool isArray = nodes_[container.node].kind == JsonKind::Array;
      const bool empty = pending_.size() == container.firstPending;
      SkipWhitespace();
      if (at_ == end_) return false;
      if (*at_ == (isArray ? ']' : '}')) {
        ++at_;
        Close();
        continue;
      }
      if (!empty) {
        if (*at_ != ',') return false;
        ++at_;
        SkipWhitespace();
      }
      if (!isArray) {
        if (at_ == end_ || *at_ != '"') return false;
        const std::uint32_t key = NewNode(JsonKind::String);
        if (!ReadString(key)) return false;
        pending_.push_back(key);
        SkipWhitespace();
        if (at_ == end_ || *at_ != ':') return false;
        ++at_;
        SkipWhitespace();
      }
      if (!ReadValue()) return false;
    }
    return true;
  }

  struct OpenContainer {
    std::uint32_t node;
    std::size_t firstPending;
  };

  // Every node but the root follows a ',', ':', '[' or '{' (a key, one of the first two or
  // a '{'); counting those characters bounds the nodes and items closely (the count also
  // takes the few inside strings), so the tables are made once instead of being copied
  // as they grow through a document of many megabytes.
  void Reserve() {
    std::size_t marks = 0;
    for (const char* p = at_; p != end_; ++p) {
      marks += static_cast<std::size_t>(*p == ',') + static_cast<std::size_t>(*p == ':') +
               static_cast<std::size_t>(*p == '[') + static_cast<std::size_t>(*p == '{');
    }
    nodes_.reserve(marks + 1);
    items_.reserve(marks);
  }

  void SkipWhitespace() {
    while (at_ != end_ && (*at_ == ' ' || *at_ == '\n' || *at_ == '\r' || *at_ == '\t')) ++at_;
  }

  std::uint32_t NewNode(JsonKind kind) {
    JsonNode& node = nodes_.emplace_back();
    node.kind = kind;
    node.offset = static_cast<std::uint32_t>(at_ - begin_);
    return static_cast<std::uint32_t>(nodes_.size() - 1);
  }

  std::uint32_t AddNode(JsonKind kind) {
    const std::uint32_t node = NewNode(kind);
    if (!open_.empty()) pending_.push_back(node);
    return node;
  }

  bool ReadWord(std::string_view word, JsonKind kind) {
    if (static_cast<std::size_t>(end_ - at_) < word.size() ||
        std::string_view(at_, word.size()) != word) {
      return false;
    }
    AddNode(kind);
    at_ += word.size();
    return true;
  }

  // At the first character of a value; containers are opened, not read.
  bool ReadValue() {
    if (at_ == end_) return false;
    switch (*at_) {
      case '{':
      case '[': {
        if (outerDepth_ + open_.size() >= JsonDocument::kMaxDepth) return false;
        const std::uint32_t node = AddNode(*at_ == '{' ? JsonKind::Object : JsonKind::Array);
        open_.push_back(OpenContainer{node, pending_.size()});
        ++at_;
        return true;
      }
      case '"':
        return ReadString(AddNode(JsonKind::String));
      case 't':
        return ReadWord("true", JsonKind::True);
      case 'f':
        return ReadWord("false", JsonKind::False);
      case 'n':
        return ReadWord("null", JsonKind::Null);
      default:
        return ReadNumber();
    }
  }

  bool ReadNumber() {
    const char* p = at_;
    double value = 0;
    bool real = false;
    if (!ScanJsonNumber(p, end_, value, real)) return false;
    const std::uint32_t node = AddNode(real ? JsonKind::Real : JsonKind::Integer);
    nodes_[node].number = value;
    at_ = p;
    return true;
  }

  static int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
  }

  // The four hex digits after "\u"; -1 if they are not.
  int ReadCodeUnit() {
    if (end_ - at_ < 6 || at_[0] != '\\' || at_[1] != 'u') return -1;
    int unit = 0;
    for (int i = 2; i < 6; ++i) {
      const int digit = HexDigit(at_[i]);
      if (digit < 0) return -1;
      unit = unit * 16 + digit;
    }
    at_ += 6;
    return unit;
  }

  void AppendCodePoint(std::uint32_t c) {
    if (c < 0x80) {
      pool_.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
      pool_.push_back(static_cast<char>(0xC0 | (c >> 6)));
      pool_.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
      pool_.push_back(static_cast<char>(0xE0 | (c >> 12)));
      pool_.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
      pool_.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
      pool_.push_back(static_cast<char>(0xF0 | (c >> 18)));
      pool_.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
      pool_.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
      pool_.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
  }

  // The length of the well-formed UTF-8 character of more than one byte at `p`, or 0.
  std::size_t Utf8Length(const char* p) const {
    const auto byte = [&](std::size_t i) -> int {
      return p + i < end_ ? static_cast<unsigned char>(p[i]) : -1;
    };
    const auto in = [](int b, int low, int high) { return b >= low && b <= high; };
    const int b0 = byte(0);
    if (in(b0, 0xC2, 0xDF)) return in(byte(1), 0x80, 0xBF) ? 2 : 0;
    if (in(b0, 0xE0, 0xEF)) {
      const int low = b0 == 0xE0 ? 0xA0 : 0x80;
      const int high = b0 == 0xED ? 0x9F : 0xBF;
      return in(byte(1), low, high) && in(byte(2), 0x80, 0xBF) ? 3 : 0;
    }
    if (in(b0, 0xF0, 0xF4)) {
      const int low = b0 == 0xF0 ? 0x90 : 0x80;
      const int high = b0 == 0xF4 ? 0x8F : 0xBF;
      return in(byte(1), low, high) && in(byte(2), 0x80, 0xBF) && in(byte(3), 0x80, 0xBF) ? 4
                                                                                          : 0;
    }
    return 0;
  }

  // At the opening quote; the text goes to the pool once, escapes resolved.
  bool ReadString(std::uint32_t node) {
    ++at_;
    const std::size_t first = pool_.size();
    const char* run = at_;
    while (true) {
      if (at_ == end_) return false;
      const unsigned char c = static_cast<unsigned char>(*at_);
      if (c == '"') break;
      if (c < 0x20) return false;
      if (c < 0x80 && c != '\\') {
        ++at_;
        continue;
      }
      if (c >= 0x80) {
        const std::size_t length = Utf8Length(at_);
        if (length == 0) return false;
        at_ += length;
        continue;
      }
      pool_.append(run, at_);
      if (at_ + 1 == end_) return false;
      const char escaped = at_[1];
      char plain = 0;
      switch (escaped) {
        case '"': plain = '"'; break;
        case '\\': plain = '\\'; break;
        case '/': plain = '/'; break;
        case 'b': plain = '\b'; break;
        case 'f': plain = '\f'; break;
        case 'n': plain = '\n'; break;
        case 'r': plain = '\r'; break;
        case 't': plain = '\t'; break;
        case 'u': {
          const int unit = ReadCodeUnit();
          if (unit < 0 || (unit >= 0xDC00 && unit <= 0xDFFF)) return false;
          std::uint32_t codePoint = static_cast<std::uint32_t>(unit);
          if (unit >= 0xD800 && unit <= 0xDBFF) {
            const int low = ReadCodeUnit();
            if (low < 0xDC00 || low > 0xDFFF) return false;
            codePoint = 0x10000 + ((static_cast<std::uint32_t>(unit) - 0xD800) << 10) +
                        (static_cast<std::uint32_t>(low) - 0xDC00);
          }
          AppendCodePoint(codePoint);
          run = at_;
          continue;
        }
        default:
          return false;
      }
      pool_.push_back(plain);
      at_ += 2;
      run = at_;
    }
    pool_.append(run, at_);
    ++at_;
    nodes_[node].first = static_cast<std::uint32_t>(first);
    nodes_[node].count = static_cast<std::uint32_t>(pool_.size() - first);
    return true;
  }

  void Close() {
    const OpenContainer container = open_.back();
    open_.pop_back();
    JsonNode& node = nodes_[container.node];
    node.first = static_cast<std::uint32_t>(items_.size());
    const std::size_t entries = pending_.size() - container.firstPending;
    node.count = static_cast<std::uint32_t>(node.kind == JsonKind::Object ? entries / 2 : entries);
    items_.insert(items_.end(),
                  pending_.begin() + static_cast<std::ptrdiff_t>(container.firstPending),
                  pending_.end());
    pending_.resize(container.firstPending);
  }

  const char* begin_;
  const char* at_;
  const char* end_;
  std::size_t outerDepth_ = 0;
  std::vector<JsonNode>& nodes_;
  std::vector<std::uint32_t>& items_;
  std::string& pool_;
  std::vector<OpenContainer> open_;
  std::vector<std::uint32_t> pending_;
};

JsonDocument JsonDocument::Parse(std::string_view text) {
  if (text.size() > kMaxTextSize) {
    throw JsonSyntaxError(0, "", "expected a text of at most 4 GiB");
  }
  {
    JsonDocument document;
    if (DirectTreeReader(text, document).Read()) return document;
  }
  JsonDocument document;
  std::size_t reached = 0;
  JsonTreeBuilder builder(text, &reached, document);
  const char* begin = text.data();
  const bool parsed =
      nlohmann::json::sax_parse(CountingIterator(begin, begin, &reached),
                                CountingIterator(begin + text.size(), begin, &reached), &builder);
  if (!parsed || builder.failed()) {
    if (builder.failed()) throw builder.error();
    throw JsonSyntaxError(text.size(), "", "not valid JSON");
  }
  return document;
}

std::optional<std::size_t> JsonDocument::ParseOneAt(std::string_view text, std::size_t offset,
                                                    std::size_t depth, JsonDocument& document) {
  if (text.size() > kMaxTextSize || offset > text.size()) return std::nullopt;
  document.nodes_.clear();
  document.items_.clear();
  document.pool_.clear();
  return DirectTreeReader(text, document).ReadOneAt(offset, depth);
}

TextPosition PositionOf(std::string_view text, std::size_t offset) {
  offset = std::min(offset, text.size());
  TextPosition position;
  std::size_t lineStart = 0;
  for (std::size_t i = 0; i < offset; ++i) {
    if (text[i] == '\n') {
      ++position.line;
      lineStart = i + 1;
    }
  }
  for (std::size_t i = lineStart; i < offset; ++i) {
    // UTF-8 continuation bytes do not start a character.
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) ++position.column;
  }
  return position;
}

}  // namespace vtt
