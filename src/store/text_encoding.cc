#include "store/text_encoding.h"

#include <array>
#include <cstdint>

namespace vtt {
namespace {

// Code points of bytes 0x80 to 0x9F; 0 where the code page has no character.
constexpr std::array<char32_t, 32> kHighControlBlock = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char EncodeCodePoint(char32_t cp) {
  if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) return static_cast<char>(cp);
  for (std::size_t i = 0; i < kHighControlBlock.size(); ++i) {
    if (kHighControlBlock[i] != 0 && kHighControlBlock[i] == cp) {
      return static_cast<char>(0x80 + i);
    }
  }
  return '?';
}

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out.push_back(static_cast<char>(cp));
  } else if (cp < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  }
}

}  // namespace

std::string ToWindows1252(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  std::size_t i = 0;
  while (i < utf8.size()) {
    const auto lead = static_cast<std::uint8_t>(utf8[i]);
    if (lead < 0x80) {
      out.push_back(static_cast<char>(lead));
      ++i;
      continue;
    }
    std::size_t length = 0;
    char32_t cp = 0;
    if ((lead & 0xE0) == 0xC0) {
      length = 2;
      cp = lead & 0x1F;
    } else if ((lead & 0xF0) == 0xE0) {
      length = 3;
      cp = lead & 0x0F;
    } else if ((lead & 0xF8) == 0xF0) {
      length = 4;
      cp = lead & 0x07;
    }
    bool valid = length > 0 && i + length <= utf8.size();
    for (std::size_t k = 1; valid && k < length; ++k) {
      const auto cont = static_cast<std::uint8_t>(utf8[i + k]);
      if ((cont & 0xC0) != 0x80) {
        valid = false;
      } else {
        cp = (cp << 6) | (cont & 0x3F);
      }
    }
    // Overlong forms and surrogates are not characters.
    if (valid && ((length == 2 && cp < 0x80) || (length == 3 && cp < 0x800) ||
                  (length == 4 && (cp < 0x10000 || cp > 0x10FFFF)) ||
                  (cp >= 0xD800 && cp <= 0xDFFF))) {
      valid = false;
    }
    if (!valid) {
      out.push_back('?');
      ++i;
      continue;
    }
    out.push_back(EncodeCodePoint(cp));
    i += length;
  }
  return out;
}

std::string FromWindows1252(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    const auto byte = static_cast<std::uint8_t>(c);
    if (byte >= 0x80 && byte <= 0x9F) {
      const char32_t cp = kHighControlBlock[byte - 0x80];
      AppendUtf8(out, cp == 0 ? U'?' : cp);
    } else {
      AppendUtf8(out, byte);
    }
  }
  return out;
}

}  // namespace vtt
