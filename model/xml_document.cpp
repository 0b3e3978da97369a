#include "model/xml_document.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "model/file_system.h"

namespace orvane::xml {
namespace {

#ifndef MADV_POPULATE_WRITE
#define MADV_POPULATE_WRITE 23  // Linux 5.14; older C libraries lack the name
#endif

// Below a few pages the call costs more than the faults it saves.
constexpr std::size_t kMinPrefault = 64 * 1024;

constexpr std::size_t kChunkSize = 64 * 1024;

// A printer whose output goes to a sink a chunk at a time instead of into one growing buffer.
//
// tinyxml2 prints a carriage return in a text or attribute as it is, and XML parsers read a bare
// one, or one before a line feed, as a line feed: a text with a Windows line break would come back
// changed. Written as a character reference it comes back as it was. The printer writes none of its
// own, so every one is a record's.
class ChunkPrinter final : public tinyxml2::XMLPrinter {
 public:
  explicit ChunkPrinter(const ChunkSink& sink) : sink_(sink) { chunk_.reserve(kChunkSize + 1024); }

  // Hands over what is left; false when any chunk was refused.
  bool finish() {
    flush();
    return accepted_;
  }

 protected:
  using XMLPrinter::Write;

  void Write(const char* data, std::size_t size) override {
    chunk_.append(data, size);
    if (chunk_.size() >= kChunkSize) flush();
  }

  void Putc(char c) override { Write(&c, 1); }

  void Print(const char* format, ...) override {
    char small[256];
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    const int length = std::vsnprintf(small, sizeof small, format, args);
    va_end(args);
    if (length >= 0 && static_cast<std::size_t>(length) < sizeof small) {
      Write(small, static_cast<std::size_t>(length));
    } else if (length > 0) {
      std::string large(static_cast<std::size_t>(length) + 1, '\0');
      std::vsnprintf(large.data(), large.size(), format, again);
      Write(large.data(), static_cast<std::size_t>(length));
    }
    va_end(again);
  }

 private:
  // A carriage return in a text would come back as a line feed once the file's line ends are
  // read: it goes out as a character reference. Searched once per chunk, not per printed piece.
  void flush() {
    if (accepted_ && !chunk_.empty()) accepted_ = sink_(withCarriageReturnsEscaped());
    chunk_.clear();
  }

  std::string_view withCarriageReturnsEscaped() {
    const std::size_t first = chunk_.find('\r');
    if (first == std::string::npos) return chunk_;
    escaped_.assign(chunk_, 0, first);
    for (std::size_t at = first; at < chunk_.size(); ++at) {
      if (chunk_[at] == '\r') escaped_.append("&#13;");
      else escaped_.push_back(chunk_[at]);
    }
    return escaped_;
  }

  const ChunkSink& sink_;
  std::string chunk_;
  std::string escaped_;
  bool accepted_ = true;
};

// A read-only stdio stream over a descriptor, whose reads go through the file-system seam like every
// other file call. tinyxml2 reads such a stream straight into its own buffer, where parsing bytes
// read by us would copy the whole file once more (a large document's size in extra memory and
// page faults).
ssize_t readThroughSeam(void* cookie, char* buffer, std::size_t size) {
  for (;;) {
    const ssize_t got = fileSystem().read(*static_cast<int*>(cookie), buffer, size);
    if (got >= 0 || errno != EINTR) return got;
  }
}

int seekDescriptor(void* cookie, off64_t* offset, int whence) {
  const off64_t at = ::lseek64(*static_cast<int*>(cookie), *offset, whence);
  if (at < 0) return -1;
  *offset = at;
  return 0;
}

int closeNothing(void*) { return 0; }  // the descriptor is closed by its owner

// The descriptor of the regular file at `path` opened for reading, or -1. O_NONBLOCK keeps a FIFO
// from blocking the open; such a file, a folder or a device (/dev/zero would never end) is refused.
int openRegularFile(const char* path) {
  const int fd = fileSystem().open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK, 0);
  if (fd < 0) return -1;
  struct stat info {};
  if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
    fileSystem().close(fd);
    return -1;
  }
  return fd;
}

}  // namespace

bool loadTree(const char* path, tinyxml2::XMLDocument& tree) noexcept {
  if (path == nullptr) return false;
  int fd = openRegularFile(path);
  if (fd < 0) return false;
  bool parsed = false;
  if (FILE* stream = ::fopencookie(&fd, "r", {readThroughSeam, nullptr, seekDescriptor, closeNothing})) {
    try {
      parsed = tree.LoadFile(stream) == tinyxml2::XML_SUCCESS;
    } catch (...) {
      // No memory for the file or its tree: it can't be loaded, which the readers report silently.
    }
    std::fclose(stream);
  }
  fileSystem().close(fd);
  return parsed;
}

bool printInChunks(const PrintDocument& print, const ChunkSink& sink) noexcept {
  try {
    ChunkPrinter out(sink);
    print(out);
    return out.finish();
  } catch (...) {
    return false;  // out of memory while printing: the write stops, the target stays as it was
  }
}

bool saveWithBackup(const char* path, const PrintDocument& print) noexcept {
  if (path == nullptr) return false;
  try {
    return saveDocument(path, [&print](const ChunkSink& sink) { return printInChunks(print, sink); });
  } catch (...) {
    return false;  // out of memory before the write began: like any failed write, the file stays as it was
  }
}

void prefaultForWriting(const void* begin, std::size_t size) noexcept {
  if (size < kMinPrefault) return;
  static const auto pageSize = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
  const auto start = reinterpret_cast<std::uintptr_t>(begin);
  const std::uintptr_t first = (start + pageSize - 1) & ~(pageSize - 1);
  const std::uintptr_t end = (start + size) & ~(pageSize - 1);
  if (end <= first) return;
  // EINVAL on an older kernel, ENOMEM or EFAULT on a range it cannot populate: the pages then
  // simply fault in when written, as they would have without this call.
  ::madvise(reinterpret_cast<void*>(first), end - first, MADV_POPULATE_WRITE);
}

}  // namespace orvane::xml
