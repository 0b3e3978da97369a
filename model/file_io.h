// The file operations of the documents: whole-file reads, the ".bak" copy and a replacing write
// that never leaves a half-written document behind. Every call to the system goes through the
// FileSystem seam (model/file_system.h).
#ifndef ORVANE_MODEL_FILE_IO_H
#define ORVANE_MODEL_FILE_IO_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace orvane {

// Reads the whole regular file at `path` (a symbolic link to one counts) into `contents`. False
// when it cannot be opened or read, or is no regular file (a folder, /dev/null, a FIFO, which
// would block or never end); `contents` is then unspecified.
bool readFile(const char* path, std::string& contents);

// The same for a file that must not be larger than `maxBytes`: a larger one is refused as well.
// Only `maxBytes` + 1 bytes are ever read, so a file that grows while it is read cannot flood memory.
bool readFile(const char* path, std::string& contents, std::size_t maxBytes);

// Copies the regular file at `path` to path + ".bak": a whole copy with the file's owner, group,
// mode and extended attributes (where the saver may not give them, a copy only its owner may read),
// or the older backup as it was. The backup is a regular file of its own: a link, FIFO or device at
// its name is replaced, never followed or written through; a folder there, or an older backup that
// the saver could not open for writing, is kept and no backup is made. Any failure (no file yet, no
// permission, a full disk) is ignored: the save goes on without a backup.
void backupFile(const char* path) noexcept;

// Takes the document's bytes in order, a chunk at a time; false stops the write.
using ChunkSink = std::function<bool(std::string_view chunk)>;
// Hands the whole document to the sink, chunk by chunk; false when it could not.
using ChunkProducer = std::function<bool(const ChunkSink& sink)>;

// Saves a document at `path` as its previous version's replacement, written as a Windows host
// writes a text file (every line feed becomes carriage return and line feed):
//
// - The existing file is opened for writing first, by the kernel's own path resolution: a file the
//   saver could not open for writing (read-only, another owner's, a link the kernel will not follow
//   in a sticky folder), a folder, a device or a FIFO is left as it is and the save fails. A link
//   is written through to the file it names (a dangling one makes that file).
// - The bytes go to an unnamed temporary file in the target's folder (a hidden named one where the
//   file system has no O_TMPFILE), which gets the old file's owner, group, mode and extended
//   attributes (POSIX ACLs too), is flushed to disk and then renamed over the target, and the
//   folder is flushed after it. Whatever happens, even a crash or a power loss, the target is the
//   old or the new document; a crash leaves no temporary file, or in the instant between naming
//   and renaming one whole new document under ".NAME.orvane-save", which the next save removes.
//
// True when the new document is in place and on disk. When false, the target is untouched and no
// temporary file is left, or the new document is in place but the folder could not be flushed.
// A file with other hard links, whose owner or attributes the saver could not give a new file, or
// in a folder where the saver may create no file, is not replaced: writeTextFile then fails;
// saveDocument writes it in place.
bool writeTextFile(const char* path, std::string_view text);

// The same write for a document produced in chunks, so that it never has to be held whole in
// memory. A producer that fails leaves the target as it was.
bool writeTextFile(const char* path, const ChunkProducer& produce);

// A document save: the backup, then the replacing write of writeTextFile. The backup follows the
// rules of backupFile, but where the new document arrives by rename the old file itself becomes the
// backup (a hard link renamed over path + ".bak", so nothing is copied), and a copy is made only
// where the file system or the kernel's link protection refuses the link. A file that cannot be
// replaced (see above) is written in place instead, keeping its links, owner and attributes, but
// only once a whole copy of it is on disk as its backup; without one it is left as it was.
bool saveDocument(const char* path, const ChunkProducer& produce);
bool saveDocument(const char* path, std::string_view text);

}  // namespace orvane

#endif
