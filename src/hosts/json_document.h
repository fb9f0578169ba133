// JsonDocument: a JSON text read into a compact tree that remembers where each value
// starts in the text, so that whoever checks the values can say exactly where a bad one
// stands (line and column) and how to reach it (its JSON path).
//
// The tree is flat: nodes live in one array in document order (the root is node 0), the
// items of every array and object live in one index table, and every string (keys too)
// lives in one text pool. A model of half a million points makes a few million nodes, so
// each node is kept to 24 bytes and nothing is allocated per value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vtt {

enum class JsonKind : std::uint8_t { Null, False, True, Integer, Real, String, Array, Object };

struct JsonNode {
  double number = 0;         // Integer and Real
  std::uint32_t offset = 0;  // byte offset of the value's first character in the text
  std::uint32_t first = 0;   // String: start in the pool; Array, Object: start in the item table
  std::uint32_t count = 0;   // String: length in bytes; Array: items; Object: members
  JsonKind kind = JsonKind::Null;
};

// The text is not a JSON document this reader takes. `offset` is the byte where the
// trouble was found; `path` is the JSON path of the value being read then (may be empty).
class JsonSyntaxError : public std::runtime_error {
 public:
  JsonSyntaxError(std::size_t offset, std::string path, const std::string& message)
      : std::runtime_error(message), offset_(offset), path_(std::move(path)) {}
  std::size_t offset() const { return offset_; }
  const std::string& path() const { return path_; }

 private:
  std::size_t offset_;
  std::string path_;
};

class JsonDocument {
 public:
  // Containers nested deeper than this are refused; the reader never recurses, but the
  // code that walks the tree does, and no sensible document comes near it.
  static constexpr std::size_t kMaxDepth = 64;
  // Offsets are 32-bit to keep nodes small.
  static constexpr std::size_t kMaxTextSize = 0xFFFFFFFFu;

  // Reads the whole text (strict JSON, one value, no comments). Keys given twice in one
  // object are kept as they stand; the checker of the values decides about them.
  // Throws JsonSyntaxError.
  static JsonDocument Parse(std::string_view text);

  // Reads the one value that starts at `offset` of `text` (after any whitespace) and lies
  // inside `depth` containers of it, into `document`, whose storage is reused; gives the
  // offset just past the value. Offsets in the nodes count from the start of `text`.
  // Nothing when the value is not one that the quick way of Parse takes (bad syntax, but
  // also rare valid forms); the caller then reads the whole text with Parse, which says why.
  static std::optional<std::size_t> ParseOneAt(std::string_view text, std::size_t offset,
                                               std::size_t depth, JsonDocument& document);

  const JsonNode& root() const { return nodes_.front(); }
  std::string_view text(const JsonNode& string) const {
    return std::string_view(pool_).substr(string.first, string.count);
  }
  const JsonNode& item(const JsonNode& array, std::size_t i) const {
    return nodes_[items_[array.first + i]];
  }
  const JsonNode& key(const JsonNode& object, std::size_t i) const {
    return nodes_[items_[object.first + 2 * i]];
  }
  const JsonNode& value(const JsonNode& object, std::size_t i) const {
    return nodes_[items_[object.first + 2 * i + 1]];
  }

 private:
  friend class JsonTreeBuilder;
  friend class DirectTreeReader;
  std::vector<JsonNode> nodes_;
  std::vector<std::uint32_t> items_;  // arrays: item nodes; objects: key node, value node
  std::string pool_;
};

// The JSON number at `at` as the quick way of JsonDocument::Parse reads it: the same value
// (and whether it was written as a real), `at` moved past it. False, with `at` unmoved, for
// anything that reader leaves to the full one: bad syntax, but also integers of more than
// 18 digits and numbers out of range. Readers that go straight from the text to their own
// objects use it, so that their numbers are the document's to the bit.
bool ScanJsonNumber(const char*& at, const char* end, double& value, bool& real);

// One-based line and column of a byte offset; columns count characters, not bytes.
struct TextPosition {
  std::size_t line = 1;
  std::size_t column = 1;
};
TextPosition PositionOf(std::string_view text, std::size_t offset);

}  // namespace vtt
