// FileView: the bytes of a file seen in place, without copying them into the program.
//
// A model file of a large building is over half a gigabyte. Read into a buffer, it costs
// as much time again as reading the model out of it takes: every page of the buffer is
// cleared and filled. Mapped, the pages of the system's file cache are seen as they are.
// Where the system cannot map files (or this one), Open gives nothing and the caller reads
// the file the ordinary way.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string_view>

namespace vtt {

class FileView {
 public:
  // The regular, non-empty file at `file` mapped for reading; nothing when it is not one
  // or cannot be mapped (the caller reads it instead, and says what went wrong if that
  // fails too). The file must not be cut short while it is viewed.
  static std::unique_ptr<FileView> Open(const std::filesystem::path& file);

  FileView(const FileView&) = delete;
  FileView& operator=(const FileView&) = delete;
  ~FileView();

  std::string_view text() const { return std::string_view(data_, size_); }

 private:
  FileView(const char* data, std::size_t size) : data_(data), size_(size) {}
  const char* data_;
  std::size_t size_;
};

}  // namespace vtt
