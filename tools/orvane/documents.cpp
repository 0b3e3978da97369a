#include "documents.h"

#include <tinyxml2.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstring>
#include <filesystem>

#include "tool_error.h"

namespace fs = std::filesystem;

namespace orvane::cli {

namespace {

constexpr const char* kPropertyRoot = "PropertySetsBIM";
constexpr const char* kQuantityRoot = "QuantitiesSetQuorsel";
constexpr std::size_t kFirstBatch = 256;
constexpr std::size_t kEnumBufferSize = 512;  // what getEnumerados writes into each buffer

std::string describe(DocumentKind kind) {
  return kind == DocumentKind::PropertySets ? "a property-set document" : "a quantity-set document";
}

// Calls `fill(array, size)` with a growing array until the library fills fewer records than the
// array holds: only then are all of them in.
template <class Record, class Fill>
std::vector<Record> readAll(Fill fill) {
  std::vector<Record> records(kFirstBatch);
  for (;;) {
    const int filled = fill(records.data(), static_cast<int>(records.size()));
    if (filled < static_cast<int>(records.size())) {
      records.resize(static_cast<std::size_t>(filled > 0 ? filled : 0));
      return records;
    }
    if (records.size() > INT_MAX / 2) throw ToolError("the document holds more records than the tool can list");
    records.assign(records.size() * 2, Record{});
  }
}

}  // namespace

namespace {

// Opens `path` for reading without blocking on a FIFO, and checks that it is a regular file
// within the size limit. The descriptor is the caller's to close.
int openInputFile(const std::string& path, const std::string& what) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (fd < 0) {
    const int error = errno;
    if (error == ENOENT) throw ToolError(what + " " + path + ": no such file");
    throw ToolError(what + " " + path + ": cannot be opened (" + std::strerror(error) + ")");
  }
  struct stat info {};
  std::string problem;
  if (::fstat(fd, &info) != 0) problem = "cannot be read";
  else if (S_ISDIR(info.st_mode)) problem = "is a folder, not a file";
  else if (!S_ISREG(info.st_mode)) problem = "is not a regular file (a FIFO or a device is not read)";
  else if (static_cast<std::uintmax_t>(info.st_size) > kMaxInputBytes) problem = "is larger than 256 MiB";
  if (problem.empty()) return fd;
  ::close(fd);
  throw ToolError(what + " " + path + ": " + problem);
}

}  // namespace

void requireReadableFile(const std::string& path, const std::string& what) { ::close(openInputFile(path, what)); }

namespace {

// Reads `fd` to its end, at most kMaxInputBytes; `name` says what it is in a message. Closes `fd`
// unless it is standard input.
std::string readBounded(int fd, const std::string& name) {
  std::string bytes;
  char chunk[65536];
  for (;;) {
    const ssize_t got = ::read(fd, chunk, sizeof chunk);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0 || bytes.size() + static_cast<std::size_t>(got) > kMaxInputBytes) {
      if (fd != STDIN_FILENO) ::close(fd);
      if (got == 0) return bytes;
      throw ToolError(name + (got < 0 ? ": cannot be read" : ": is larger than 256 MiB"));
    }
    bytes.append(chunk, static_cast<std::size_t>(got));
  }
}

}  // namespace

std::string readInputFile(const std::string& path, const std::string& what) {
  if (path == "-") return readBounded(STDIN_FILENO, "standard input");
  return readBounded(openInputFile(path, what), what + " " + path);
}

DocumentKind documentKind(const std::string& path) {
  requireReadableFile(path, "document");
  tinyxml2::XMLDocument xml;
  if (xml.LoadFile(path.c_str()) != tinyxml2::XML_SUCCESS)
    throw ToolError("document " + path + ": not well-formed XML (" + xml.ErrorName() + " at line " +
                    std::to_string(xml.ErrorLineNum()) + ")");
  const tinyxml2::XMLElement* root = xml.RootElement();
  const std::string rootName = root != nullptr ? root->Name() : "";
  if (rootName == kPropertyRoot) return DocumentKind::PropertySets;
  if (rootName == kQuantityRoot) return DocumentKind::QuantitySets;
  throw ToolError("document " + path + ": root element is " + (rootName.empty() ? "missing" : rootName) +
                  ", neither PropertySetsBIM nor QuantitiesSetQuorsel");
}

void requireDocument(const std::string& path, DocumentKind kind) {
  const DocumentKind found = documentKind(path);
  if (found != kind)
    throw ToolError("document " + path + ": " + describe(found) + " where " + describe(kind) + " is expected");
}

void requireWritableTarget(const std::string& path) {
  std::error_code error;
  if (fs::is_directory(path, error)) throw ToolError(path + ": is a folder, not a file");
  const fs::path folder = fs::path(path).parent_path();
  if (!folder.empty() && !fs::is_directory(folder, error))
    throw ToolError(path + ": cannot be written, folder " + folder.string() + " does not exist");
  // The library leaves a file it could not open for writing as it was, and says nothing: ask the
  // kernel the same question first (no truncation, no blocking on a FIFO).
  const int fd = ::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (fd < 0 && errno != ENOENT) throw ToolError(path + ": cannot be written (" + std::strerror(errno) + ")");
  if (fd < 0) return;
  struct stat info {};
  const bool regular = ::fstat(fd, &info) == 0 && S_ISREG(info.st_mode);
  ::close(fd);
  if (!regular) throw ToolError(path + ": is not a regular file, it is not replaced");
}

void requireDistinct(const std::string& input, const std::string& output) {
  std::error_code error;
  if (input == output || fs::equivalent(input, output, error))
    throw ToolError(output + ": the output must be another file than " + input);
}

std::vector<FlatPropertyRecord> readPropertyRecords(const std::string& path) {
  return readAll<FlatPropertyRecord>(
      [&](FlatPropertyRecord* records, int size) { return getPropiedadesFichero(path.c_str(), records, size); });
}

std::vector<FlatQuantityRecord> readQuantityRecords(const std::string& path) {
  return readAll<FlatQuantityRecord>(
      [&](FlatQuantityRecord* records, int size) { return getCuantificadoresFichero(path.c_str(), records, size); });
}

std::vector<std::string> readEnumValues(const std::string& path, const std::string& typeName) {
  // getEnumerados takes writable texts, though it never writes to them.
  std::string pathText = path;
  std::string typeText = typeName;
  for (std::size_t size = kFirstBatch;; size *= 2) {
    if (size > INT_MAX / 2) throw ToolError("the enumerated type holds more values than the tool can list");
    std::vector<std::vector<char>> storage(size, std::vector<char>(kEnumBufferSize, '\0'));
    std::vector<char*> buffers;
    for (auto& buffer : storage) buffers.push_back(buffer.data());
    const int copied = getEnumerados(pathText.data(), typeText.data(), buffers.data(), static_cast<int>(size));
    if (copied < static_cast<int>(size)) {
      std::vector<std::string> values;
      for (int i = 0; i < copied; ++i) values.emplace_back(buffers[static_cast<std::size_t>(i)]);
      return values;
    }
  }
}

}  // namespace orvane::cli
