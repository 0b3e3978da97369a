// The file operations of the documents: whole-file reads, the ".bak" copy and a replacing write
// that never leaves a half-written document behind.
#ifndef ORVANE_MODEL_FILE_IO_H
#define ORVANE_MODEL_FILE_IO_H

#include <string>
#include <string_view>

namespace orvane {

// Reads the whole file at `path` into `contents`. False when it cannot be opened or read
// (missing, a folder, no permission); `contents` is then unspecified.
bool readFile(const char* path, std::string& contents);

// Copies an existing file at `path` to path + ".bak", replacing an older backup. Any failure
// (no file yet, no permission) is ignored: the save goes on without a backup.
void backupFile(const char* path) noexcept;

// Replaces the file at `path` by `text`, written as a Windows host writes a text file: every line
// feed becomes carriage return and line feed. The text goes to a temporary file beside the target
// that is flushed to disk and then renamed over it, so the target is either the old or the new
// document. A symbolic link is written through to its target; an existing file keeps its mode.
// False when it could not be written; the old file is then untouched and no temporary file is left.
bool writeTextFile(const char* path, std::string_view text);

// The bytes writeTextFile puts on disk for `text`.
std::string withWindowsLineEnds(std::string_view text);

}  // namespace orvane

#endif
