// The JSON reader behind the model file: where each value starts, duplicate keys kept for
// the checker, and the depth limit.
#include "hosts/json_document.h"

#include <gtest/gtest.h>

#include <string>

namespace vtt {
namespace {

TEST(JsonModelHostDocument, EveryValueRemembersWhereItStarts) {
  const std::string text = "{\"a\": [1, 2.5e1 , \"x\"],\n \"b\": {\"c\": true}, \"d\": null}";
  const JsonDocument document = JsonDocument::Parse(text);
  const JsonNode& root = document.root();
  ASSERT_EQ(root.kind, JsonKind::Object);
  ASSERT_EQ(root.count, 3u);
  EXPECT_EQ(root.offset, 0u);
  EXPECT_EQ(document.text(document.key(root, 0)), "a");
  EXPECT_EQ(document.key(root, 0).offset, 1u);
  const JsonNode& a = document.value(root, 0);
  ASSERT_EQ(a.kind, JsonKind::Array);
  ASSERT_EQ(a.count, 3u);
  EXPECT_EQ(a.offset, 6u);
  EXPECT_EQ(document.item(a, 0).offset, 7u);
  EXPECT_EQ(document.item(a, 0).kind, JsonKind::Integer);
  EXPECT_EQ(document.item(a, 1).offset, 10u);
  EXPECT_EQ(document.item(a, 1).kind, JsonKind::Real);
  EXPECT_EQ(document.item(a, 1).number, 25);
  EXPECT_EQ(document.item(a, 2).offset, 18u);
  EXPECT_EQ(document.text(document.item(a, 2)), "x");
  const JsonNode& b = document.value(root, 1);
  EXPECT_EQ(document.key(root, 1).offset, 25u);
  EXPECT_EQ(b.offset, 30u);
  EXPECT_EQ(document.value(b, 0).kind, JsonKind::True);
  EXPECT_EQ(document.value(b, 0).offset, 36u);
  EXPECT_EQ(document.value(root, 2).kind, JsonKind::Null);
  EXPECT_EQ(document.value(root, 2).offset, 48u);
  const TextPosition position = PositionOf(text, b.offset);
  EXPECT_EQ(position.line, 2u);
  EXPECT_EQ(position.column, 7u);
}

TEST(JsonModelHostDocument, DuplicateKeysAreKeptInOrderForTheChecker) {
  const JsonDocument document = JsonDocument::Parse(R"({"x": 1, "x": 2})");
  ASSERT_EQ(document.root().count, 2u);
  EXPECT_EQ(document.value(document.root(), 0).number, 1);
  EXPECT_EQ(document.value(document.root(), 1).number, 2);
}

TEST(JsonModelHostDocument, StringsWithEscapesAreDecoded) {
  const JsonDocument document = JsonDocument::Parse(R"(["a\"b\\", "\u00e9"])");
  EXPECT_EQ(document.text(document.item(document.root(), 0)), "a\"b\\");
  EXPECT_EQ(document.item(document.root(), 1).offset, 11u);
  EXPECT_EQ(document.text(document.item(document.root(), 1)), "\xC3\xA9");
}

TEST(JsonModelHostDocument, NestingUpToTheLimitIsRead) {
  const std::size_t limit = JsonDocument::kMaxDepth;
  const std::string deepest = std::string(limit, '[') + std::string(limit, ']');
  EXPECT_NO_THROW(JsonDocument::Parse(deepest));
  const std::string tooDeep = std::string(limit + 1, '[') + std::string(limit + 1, ']');
  try {
    JsonDocument::Parse(tooDeep);
    FAIL() << "nesting past the limit was read";
  } catch (const JsonSyntaxError& error) {
    EXPECT_EQ(error.offset(), limit);
  }
}

TEST(JsonModelHostDocument, ColumnsCountCharacters) {
  const std::string text = "{\"\xC3\xA9\xC3\xA9\": x}";
  const TextPosition position = PositionOf(text, text.find('x'));
  EXPECT_EQ(position.line, 1u);
  EXPECT_EQ(position.column, 8u);
}

}  // namespace
}  // namespace vtt
