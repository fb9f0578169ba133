#include "hosts/json_document.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <nlohmann/json.hpp>
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
    const std::size_t offset = position == 0 ? 0 : std::min(position - 1, text_.size());
    return Refuse(offset, "not valid JSON: " + ParserReason(error.what()));
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

JsonDocument JsonDocument::Parse(std::string_view text) {
  if (text.size() > kMaxTextSize) {
    throw JsonSyntaxError(0, "", "expected a text of at most 4 GiB");
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
