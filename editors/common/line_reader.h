// The one line reader behind every parser of the host's text files (message file, variable
// catalogue, CSV import). The host writes those files on Windows and its own readers open them in
// text mode, so a line here is what fgets gives on a Windows text-mode stream, whatever ends the
// lines of the file on this system.
#ifndef ORVANE_EDITORS_COMMON_LINE_READER_H
#define ORVANE_EDITORS_COMMON_LINE_READER_H

#include <cstddef>
#include <cstdio>
#include <string>

namespace orvane {

// Sizes past which a host file is taken for one that cannot be opened: far above any real one,
// low enough that a wrong path (a log, an image, a disk) cannot flood the host's memory.
inline constexpr std::size_t kMaxMessageFileBytes = std::size_t{4} << 20;  // 512 rows of 512 bytes, many times over
inline constexpr std::size_t kMaxCatalogueBytes = std::size_t{64} << 20;
inline constexpr std::size_t kMaxCsvBytes = std::size_t{64} << 20;

// One of the host's text files, opened for the parsers as a stdio stream, the way the host's own
// readers open it in text mode, except that only a regular file of at most `maxBytes` opens: a
// FIFO (which would block the open), a device (/dev/zero never ends), a folder or a larger file
// gives no stream, like a file that cannot be opened. The file is read whole when opened, so the
// parsers read from memory and nothing they do can block.
class HostTextFile {
 public:
  HostTextFile(const char* path, std::size_t maxBytes);
  ~HostTextFile();
  HostTextFile(const HostTextFile&) = delete;
  HostTextFile& operator=(const HostTextFile&) = delete;

  // The stream over the file's bytes; null when the file could not be opened.
  std::FILE* stream() const noexcept { return stream_; }

 private:
  std::string bytes_;
  std::FILE* stream_ = nullptr;
};

// Reads the next line of `stream` into `buffer`, as fgets does on a Windows text-mode stream:
//
// - A CR LF pair is read as a single LF, and takes one place in the buffer; a CR that no LF follows
//   is an ordinary character (it does not end the line).
// - Reading stops after the LF, which is kept, or when size - 1 characters have been read; the rest
//   of a longer line is what the next call reads. The buffer is always terminated.
// - The result is `buffer`, or null when nothing could be read: at the end of the file the buffer
//   is then left exactly as it was (a parser that does not test the result sees its previous line
//   again). A read error gives null too; the buffer is then terminated after what was read, or left
//   as it was when nothing was.
// - The stream's end-of-file indicator is set only when a character of the line itself was sought
//   past the end of the file. So a line that ends in LF never sets it, while a last line without
//   line end does, on the same read that returns it. This holds alike for LF and CR LF files: the
//   look-ahead after a CR does not count, so a CR that is the last byte of the file and the last
//   character a full buffer takes leaves the indicator clear, as it would on the host.
// - With a size of 1 the buffer becomes empty and is returned without reading; with a size below 1,
//   a null buffer or a null stream the result is null and nothing is touched.
//
// Parsers that loop "while not end of file" must also stop on ferror(), or a stream that fails
// without reaching its end (a folder opened as a file) would keep them reading forever.
char* readTextLine(char* buffer, int size, std::FILE* stream);

}  // namespace orvane

#endif
