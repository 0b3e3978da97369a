// The file operations of the documents: whole-file reads, the ".bak" copy and a replacing write
// that never leaves a half-written document behind. Every call to the system goes through the
// FileSystem seam (model/file_system.h).
#ifndef ORVANE_MODEL_FILE_IO_H
#define ORVANE_MODEL_FILE_IO_H

#include <functional>
#include <string>
#include <string_view>

namespace orvane {

// Reads the whole regular file at `path` (a symbolic link to one counts) into `contents`. False
// when it cannot be opened or read, or is no regular file (a folder, /dev/null, a FIFO, which
// would block or never end); `contents` is then unspecified.
bool readFile(const char* path, std::string& contents);

// Copies the regular file at `path` to path + ".bak", replacing an older backup the same way
// writeTextFile replaces a document: the backup is either the old one or a whole copy, never a
// part. The copy keeps the file's mode. Any failure (no file yet, no permission, a full disk) is
// ignored: the save goes on without a backup.
void backupFile(const char* path) noexcept;

// Replaces the file at `path` by `text`, written as a Windows host writes a text file: every line
// feed becomes carriage return and line feed. The bytes go to a temporary file in the same folder,
// which is flushed to disk and then renamed over the target, and the folder is flushed after it;
// so whatever happens, even a crash or a power loss, the target is either the old or the new
// document. A symbolic link is written through to its target; an existing file keeps its mode.
// Only a regular file or a missing one is replaced: a folder or a device is refused.
//
// True when the new document is in place and on disk. When false, either the target is untouched
// and no temporary file is left (every failure up to the rename), or the new document is in place
// but the folder could not be flushed (the rename may not survive a power loss).
bool writeTextFile(const char* path, std::string_view text);

// Takes the document's bytes in order, a chunk at a time; false stops the write.
using ChunkSink = std::function<bool(std::string_view chunk)>;
// Hands the whole document to the sink, chunk by chunk; false when it could not.
using ChunkProducer = std::function<bool(const ChunkSink& sink)>;

// The same replacing write for a document produced in chunks, so that it never has to be held
// whole in memory. A producer that fails leaves the target as it was.
bool writeTextFile(const char* path, const ChunkProducer& produce);


}  // namespace orvane

#endif
