#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "desktops/shared/file_descriptor.h"

namespace hushpane::desktops {

// Tells one state of a file from another, whoever changed it.
struct FileStamp {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::int64_t size = 0;
  std::int64_t modified = 0;  // nanoseconds since 1970
  bool operator==(const FileStamp&) const = default;
};

// Nothing when there is no such file. Symbolic links are followed.
std::optional<FileStamp> stampOf(const std::filesystem::path& file);

struct OpenFile {
  FileDescriptor descriptor;
  FileStamp stamp;
};

// Opens a file for reading. Nothing when it is missing, unreadable or no regular file. Never waits for another process,
// as opening a pipe would.
std::optional<OpenFile> openFile(const std::filesystem::path& file);

struct FileContents {
  std::string bytes;
  FileStamp stamp;  // taken before the bytes were read
};

// Nothing when the file cannot be opened as above, or is larger than `limit` bytes.
std::optional<FileContents> readFile(const std::filesystem::path& file, std::size_t limit);

// True for a name that stays in its folder and is not hidden.
bool isPlainFileName(std::string_view name);

// Where the file really is: the end of its symbolic links, also when there is no file there yet. Nothing when the links
// form a loop.
std::optional<std::filesystem::path> followLinks(std::filesystem::path file);

// Replaces the file by one with these bytes in a single step, so that every reader sees the old or the new file, and
// gives the stamp of the new one; nothing when the old one had to stay. A symbolic link stays and its target is
// replaced; the permissions of the old file are kept, a new one is private. Waits for no disk: after a power cut the
// file system's own order of writes decides.
std::optional<FileStamp> replaceFile(const std::filesystem::path& file, std::string_view bytes);

}  // namespace hushpane::desktops
