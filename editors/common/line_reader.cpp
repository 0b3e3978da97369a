#include "editors/common/line_reader.h"

#include "model/file_io.h"

namespace orvane {

char* readTextLine(char* buffer, int size, std::FILE* stream) {
  if (buffer == nullptr || stream == nullptr || size < 1) return nullptr;
  int count = 0;
  bool failed = false;
  while (count < size - 1) {
    int c = std::getc(stream);
    if (c == EOF) {
      failed = std::ferror(stream) != 0;
      break;
    }
    if (c == '\r') {
      const int next = std::getc(stream);
      if (next == '\n') {
        c = '\n';
      } else if (next != EOF) {
        std::ungetc(next, stream);
      } else if (!std::ferror(stream)) {
        // The CR ends the file. Looking past it is no read of the line: the next read finds the end.
        std::clearerr(stream);
      } else {
        failed = true;
      }
    }
    buffer[count++] = static_cast<char>(c);
    if (c == '\n' || failed) break;
  }
  if (count == 0 && size > 1) return nullptr;  // the buffer keeps what it held
  buffer[count] = '\0';
  return failed ? nullptr : buffer;
}

HostTextFile::HostTextFile(const char* path, std::size_t maxBytes) {
  if (!readFile(path, bytes_, maxBytes)) return;
  stream_ = ::fmemopen(bytes_.data(), bytes_.size(), "r");  // a string's data is never null
}

HostTextFile::~HostTextFile() {
  if (stream_ != nullptr) std::fclose(stream_);
}

}  // namespace orvane
