// Expected file bytes for tests, built from the published layouts by hand.
//
// This builder is deliberately separate from the program's BinaryWriter: expected bytes
// must not come from the code under test.
#pragma once

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <unistd.h>

namespace vtt::testing {

class ExpectedBytes {
 public:
  ExpectedBytes& Ascii(const std::string& text, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) {
      bytes_.push_back(i < text.size() ? static_cast<std::uint8_t>(text[i]) : 0x20);
    }
    return *this;
  }
  ExpectedBytes& Zeros(std::size_t count) {
    bytes_.insert(bytes_.end(), count, 0);
    return *this;
  }
  ExpectedBytes& Byte(std::uint8_t b) {
    bytes_.push_back(b);
    return *this;
  }
  ExpectedBytes& Short(std::int16_t v) { return Little(static_cast<std::uint16_t>(v), 2); }
  ExpectedBytes& Long(std::int32_t v) { return Little(static_cast<std::uint32_t>(v), 4); }
  ExpectedBytes& Single(float v) {
    std::uint32_t u;
    std::memcpy(&u, &v, 4);
    return Little(u, 4);
  }
  ExpectedBytes& Double(double v) {
    std::uint64_t u;
    std::memcpy(&u, &v, 8);
    return Little(u, 8);
  }
  ExpectedBytes& Append(const std::vector<std::uint8_t>& more) {
    bytes_.insert(bytes_.end(), more.begin(), more.end());
    return *this;
  }
  const std::vector<std::uint8_t>& Bytes() const { return bytes_; }
  std::size_t Size() const { return bytes_.size(); }

 private:
  ExpectedBytes& Little(std::uint64_t v, int n) {
    for (int i = 0; i < n; ++i) bytes_.push_back(static_cast<std::uint8_t>(v >> (8 * i)));
    return *this;
  }
  std::vector<std::uint8_t> bytes_;
};

inline std::int16_t ReadI16Le(const std::vector<std::uint8_t>& bytes, std::size_t at) {
  return static_cast<std::int16_t>(bytes.at(at) | (bytes.at(at + 1) << 8));
}

inline std::vector<std::uint8_t> ReadFileBytes(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(in), {});
}

inline void WriteFileBytes(const std::filesystem::path& path,
                           const std::vector<std::uint8_t>& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
}

// A fresh empty folder under the system's temporary folder, removed at the end of scope.
class TempFolder {
 public:
  explicit TempFolder(const std::string& tag) {
    static int counter = 0;
    path_ = std::filesystem::temp_directory_path() /
            ("vtt-" + tag + "-" + std::to_string(::getpid()) + "-" + std::to_string(++counter));
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
  }
  ~TempFolder() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
  }
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace vtt::testing
