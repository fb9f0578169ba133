#include "hosts/file_view.h"

#if defined(__unix__) || defined(__APPLE__)
#define VTT_MAPPED_FILES 1
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace vtt {

#if VTT_MAPPED_FILES

std::unique_ptr<FileView> FileView::Open(const std::filesystem::path& file) {
  const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return nullptr;
  struct stat status {};
  void* mapped = MAP_FAILED;
  std::size_t size = 0;
  if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
    size = static_cast<std::size_t>(status.st_size);
    int flags = MAP_PRIVATE;
#ifdef MAP_POPULATE
    // The whole file is read from its first byte to its last at once: the pages are
    // entered in one call instead of one fault each.
    flags |= MAP_POPULATE;
#endif
    mapped = ::mmap(nullptr, size, PROT_READ, flags, descriptor, 0);
  }
  // The mapping holds the file; the descriptor is no longer needed.
  ::close(descriptor);
  if (mapped == MAP_FAILED) return nullptr;
  return std::unique_ptr<FileView>(new FileView(static_cast<const char*>(mapped), size));
}

FileView::~FileView() { ::munmap(const_cast<char*>(data_), size_); }

#else

std::unique_ptr<FileView> FileView::Open(const std::filesystem::path& /*file*/) {
  return nullptr;
}

FileView::~FileView() = default;

#endif

}  // namespace vtt
