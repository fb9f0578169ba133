#include "store/binary_writer.h"

#include <gtest/gtest.h>

#include "store/text_encoding.h"

namespace vtt {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(BinaryWriter, WritesLittleEndianFields) {
  Bytes out;
  BinaryWriter(out).I16(-2).I32(0x01020304).U8(0xAB);
  EXPECT_EQ(out, (Bytes{0xFE, 0xFF, 0x04, 0x03, 0x02, 0x01, 0xAB}));
}

TEST(BinaryWriter, FloatsAreIeeeLittleEndian) {
  Bytes out;
  BinaryWriter(out).F32(1.0f).F64(-2.0);
  EXPECT_EQ(out, (Bytes{0x00, 0x00, 0x80, 0x3F, 0, 0, 0, 0, 0, 0, 0x00, 0xC0}));
}

TEST(BinaryWriter, AssignedTextIsSpacePaddedAndCut) {
  Bytes out;
  BinaryWriter(out).Text(5, "ab").Text(3, "abcdef");
  EXPECT_EQ(out, (Bytes{'a', 'b', ' ', ' ', ' ', 'a', 'b', 'c'}));
}

TEST(BinaryWriter, EmptyAssignedTextIsAllSpaces) {
  Bytes out;
  BinaryWriter(out).Text(4, "");
  EXPECT_EQ(out, (Bytes{' ', ' ', ' ', ' '}));
}

TEST(BinaryWriter, TaggedValuesCarryTheirTypeWord) {
  Bytes out;
  BinaryWriter(out).TaggedI16(7).TaggedEmpty().TaggedF64(0.5);
  EXPECT_EQ(out, (Bytes{2, 0, 7, 0, 0, 0, 5, 0, 0, 0, 0, 0, 0, 0, 0xE0, 0x3F}));
}

TEST(BinaryWriter, WritesInsideABlockAtAnOffset) {
  Bytes block(6, 0);
  BinaryWriter(block, 2).I16(0x0102);
  EXPECT_EQ(block, (Bytes{0, 0, 2, 1, 0, 0}));
  EXPECT_THROW(BinaryWriter(block, 5).I16(1), std::logic_error);
}

TEST(BinaryWriter, ReadsBackWhatItWrote) {
  Bytes out;
  BinaryWriter(out).I16(-300).I32(-70000).F32(2.5f).F64(1e300).U8(9);
  EXPECT_EQ(ReadI16(out, 0), -300);
  EXPECT_EQ(ReadI32(out, 2), -70000);
  EXPECT_EQ(ReadF32(out, 6), 2.5f);
  EXPECT_EQ(ReadF64(out, 10), 1e300);
  EXPECT_EQ(ReadU8(out, 18), 9);
  EXPECT_THROW(ReadI32(out, 17), std::out_of_range);
}

TEST(Windows1252, KeepsLatinLettersAsOneByte) {
  EXPECT_EQ(ToWindows1252("B\xC3\xA9ton"), "B\xE9ton");          // é
  EXPECT_EQ(ToWindows1252("\xE2\x82\xAC" "5"), "\x80" "5");      // €
  EXPECT_EQ(ToWindows1252("\xC5\x93uvre"), "\x9Cuvre");          // œ
}

TEST(Windows1252, CharactersOutsideTheCodePageBecomeQuestionMarks) {
  EXPECT_EQ(ToWindows1252("\xE6\xA2\x81"), "?");                 // a CJK character
  EXPECT_EQ(ToWindows1252("a\xF0\x9F\x98\x80" "b"), "a?b");      // an emoji
  EXPECT_EQ(ToWindows1252("\xC2\x81"), "?");                     // a C1 control
}

TEST(Windows1252, InvalidUtf8BytesBecomeQuestionMarks) {
  EXPECT_EQ(ToWindows1252("a\xFF" "b"), "a?b");
  EXPECT_EQ(ToWindows1252("\xC3"), "?");
  EXPECT_EQ(ToWindows1252("\xC0\x80"), "??");  // an overlong form
}

TEST(Windows1252, TextFieldsCutAfterEncoding) {
  Bytes out;
  BinaryWriter(out).Text(3, "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9");  // four é, six UTF-8 bytes
  EXPECT_EQ(out, (Bytes{0xE9, 0xE9, 0xE9}));
}

TEST(Windows1252, RoundTripsThroughUtf8) {
  EXPECT_EQ(FromWindows1252("\x80\xE9"), "\xE2\x82\xAC\xC3\xA9");
  EXPECT_EQ(FromWindows1252(ToWindows1252("Stra\xC3\x9F" "e")), "Stra\xC3\x9F" "e");
}

}  // namespace
}  // namespace vtt
