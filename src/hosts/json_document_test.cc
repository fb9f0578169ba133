// The JSON reader behind the model file: where each value starts, duplicate keys kept for
// the checker, and the depth limit.
#include "hosts/json_document.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

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

TEST(JsonModelHostDocument, NumbersKeepTheirKindAndValue) {
  const std::string text =
      "[-0, 0, 123456789012345678, -123456789012345678, 1234567890123456789012, "
      "-9223372036854775808, 18446744073709551615, 1.5e-400, 2.5E+3, -0.0, 1e308, 0.1]";
  const JsonDocument document = JsonDocument::Parse(text);
  const JsonNode& root = document.root();
  ASSERT_EQ(root.count, 12u);
  const auto at = [&](std::size_t i) -> const JsonNode& { return document.item(root, i); };
  // "-0" is an integer, and integers carry no sign of zero.
  EXPECT_EQ(at(0).kind, JsonKind::Integer);
  EXPECT_EQ(at(0).number, 0.0);
  EXPECT_FALSE(std::signbit(at(0).number));
  EXPECT_EQ(at(1).kind, JsonKind::Integer);
  EXPECT_EQ(at(2).kind, JsonKind::Integer);
  EXPECT_EQ(at(2).number, 123456789012345678.0);
  EXPECT_EQ(at(2).offset, 8u);
  EXPECT_EQ(at(3).number, -123456789012345678.0);
  // Past every integer type the value is read as a real.
  EXPECT_EQ(at(4).kind, JsonKind::Real);
  EXPECT_EQ(at(4).number, 1234567890123456789012.0);
  EXPECT_EQ(at(5).kind, JsonKind::Integer);
  EXPECT_EQ(at(5).number, -9223372036854775808.0);
  EXPECT_EQ(at(6).kind, JsonKind::Integer);
  EXPECT_EQ(at(6).number, 18446744073709551615.0);
  EXPECT_EQ(at(7).kind, JsonKind::Real);
  EXPECT_EQ(at(7).number, 0.0);
  EXPECT_EQ(at(8).kind, JsonKind::Real);
  EXPECT_EQ(at(8).number, 2500.0);
  EXPECT_EQ(at(9).kind, JsonKind::Real);
  EXPECT_TRUE(std::signbit(at(9).number));
  EXPECT_EQ(at(10).number, 1e308);
  EXPECT_EQ(at(11).number, 0.1);
  EXPECT_EQ(at(11).offset, text.size() - 4);
}

TEST(JsonModelHostDocument, EveryEscapeAndWideCharacterIsDecoded) {
  const std::string text =
      "[\"\\\"\\\\\\/\\b\\f\\n\\r\\t\", \"\\u0041\\u00e9\\u20ac\\ud83d\\ude00\", "
      "\"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80!\", \"\\u0000\", \"\"]";
  const JsonDocument document = JsonDocument::Parse(text);
  const JsonNode& root = document.root();
  ASSERT_EQ(root.count, 5u);
  EXPECT_EQ(document.text(document.item(root, 0)), "\"\\/\b\f\n\r\t");
  EXPECT_EQ(document.text(document.item(root, 1)), "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(document.text(document.item(root, 2)), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80!");
  EXPECT_EQ(document.text(document.item(root, 3)), std::string(1, '\0'));
  EXPECT_EQ(document.text(document.item(root, 4)), "");
  EXPECT_EQ(document.item(root, 4).offset, text.size() - 3);
}

TEST(JsonModelHostDocument, ByteOrderMarkIsSkipped) {
  const JsonDocument document = JsonDocument::Parse("\xEF\xBB\xBF [7]");
  EXPECT_EQ(document.root().offset, 4u);
  EXPECT_EQ(document.item(document.root(), 0).offset, 5u);
  EXPECT_EQ(document.item(document.root(), 0).number, 7);
}

TEST(JsonModelHostDocument, TextsThatAreNotJsonAreRefused) {
  const std::vector<std::string> texts = {
      "",          "[1,]",       "{\"a\": 1,}",   "[01]",          "[1.]",
      "[.5]",      "[+1]",       "[-]",           "[1e]",          "[1e999]",
      "[\"a\tb\"]", "[\"\\x\"]", "[\"\\ud800\"]", "[\"\\udc00\"]", "[\"\\u12g4\"]",
      "[\"\xC0\xAF\"]", "[\"\xED\xA0\x80\"]", "[\"\xF4\x90\x80\x80\"]", "[\"abc",
      "[1] x",     "[tru]",      "{\"a\" 1}",     "{1: 2}",        "[1 2]",
      "\xEF\xBB[1]", "[nul]",    "[1,,2]",        "{\"a\":}",      "[\"\xE2\x82\"]"};
  for (const std::string& text : texts) {
    EXPECT_THROW(JsonDocument::Parse(text), JsonSyntaxError) << text;
  }
}

// A large document whose one fault stands near its end: the fault is found at its own
// byte, and its line and column and JSON path follow from it.
TEST(JsonModelHostDocument, FaultFarIntoALargeDocumentIsPlacedExactly) {
  constexpr std::size_t kPoints = 20000;
  constexpr std::size_t kBad = 17345;
  std::string text = "{\"points\": [\n";
  std::size_t badOffset = 0;
  for (std::size_t i = 0; i < kPoints; ++i) {
    text += "  {\"name\": \"P" + std::to_string(i) + "\", \"x\": 1.25, \"flags\": [true, false]}";
    if (i == kBad) {
      text.resize(text.size() - std::string("false]}").size());
      badOffset = text.size();
      text += "fals]}";
    }
    text += i + 1 < kPoints ? ",\n" : "\n";
  }
  text += "]}\n";
  try {
    JsonDocument::Parse(text);
    FAIL() << "a damaged document was read";
  } catch (const JsonSyntaxError& error) {
    EXPECT_EQ(error.offset(), badOffset + 4);
    // The path names the last value read before the damaged one.
    EXPECT_EQ(error.path(), "points[17345].flags[0]");
    const TextPosition position = PositionOf(text, error.offset());
    EXPECT_EQ(position.line, kBad + 2);
    const std::string line = "  {\"name\": \"P17345\", \"x\": 1.25, \"flags\": [true, ";
    EXPECT_EQ(position.column, line.size() + 5);
  }
}

}  // namespace
}  // namespace vtt
