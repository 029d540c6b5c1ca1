#include "desktops/shared/file_bookmarks.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace hushpane::desktops {

namespace {

constexpr std::string_view magic = "HPBM\x01";
constexpr std::size_t numberSize = 8;

// A time of birth of 0 is unknown.
struct Identity {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::uint64_t born = 0;

  bool matches(const Identity& other) const {
    return device == other.device && inode == other.inode && (born == 0 || other.born == 0 || born == other.born);
  }
};

std::optional<Identity> identityOf(const std::filesystem::path& file) {
  struct statx status {};
  if (statx(AT_FDCWD, file.c_str(), 0, STATX_TYPE | STATX_INO | STATX_BTIME, &status) != 0) return std::nullopt;
  if (!S_ISREG(status.stx_mode)) return std::nullopt;
  Identity result{makedev(status.stx_dev_major, status.stx_dev_minor), status.stx_ino, 0};
  if (status.stx_mask & STATX_BTIME)
    result.born = static_cast<std::uint64_t>(status.stx_btime.tv_sec) * 1'000'000'000 + status.stx_btime.tv_nsec;
  return result;
}

struct Bookmark {
  Identity identity;
  std::filesystem::path path;
};

void append(platform::Data& bytes, std::uint64_t number) {
  for (std::size_t byte = 0; byte < numberSize; ++byte)
    bytes.push_back(static_cast<std::uint8_t>(number >> (8 * byte)));
}

std::uint64_t numberAt(const platform::Data& bytes, std::size_t at) {
  std::uint64_t result = 0;
  for (std::size_t byte = numberSize; byte > 0; --byte) result = result << 8 | bytes[at + byte - 1];
  return result;
}

std::optional<Bookmark> decode(const platform::Data& bytes) {
  constexpr std::size_t pathAt = magic.size() + 3 * numberSize;
  if (bytes.size() <= pathAt || !std::equal(magic.begin(), magic.end(), bytes.begin())) return std::nullopt;
  const std::string path(bytes.begin() + pathAt, bytes.end());
  if (path.front() != '/' || path.find('\0') != std::string::npos) return std::nullopt;
  const auto number = [&bytes](std::size_t index) { return numberAt(bytes, magic.size() + index * numberSize); };
  return Bookmark{{number(0), number(1), number(2)}, path};
}

// Where the bytes are a path, and perhaps the line feed of the program that wrote it.
std::optional<std::filesystem::path> writtenPath(const platform::Data& bytes) {
  std::string path(bytes.begin(), bytes.end());
  if (path.ends_with('\n')) path.pop_back();
  if (!path.starts_with('/') || path.find('\0') != std::string::npos) return std::nullopt;
  return path;
}

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};

std::optional<std::filesystem::path> findIn(const std::filesystem::path& folder, const Identity& identity) {
  const std::unique_ptr<DIR, CloseFolder> open(opendir(folder.c_str()));
  while (const dirent* entry = open ? readdir(open.get()) : nullptr) {
    if (entry->d_ino != identity.inode) continue;
    const auto candidate = folder / entry->d_name;
    const auto found = identityOf(candidate);
    if (found && found->matches(identity)) return candidate;
  }
  return std::nullopt;
}

}  // namespace

std::optional<platform::Data> FileBookmarks::create(const std::filesystem::path& file) const {
  std::error_code error;
  const auto path = std::filesystem::absolute(file, error).lexically_normal();
  const auto identity = error ? std::nullopt : identityOf(path);
  if (!identity) return std::nullopt;
  platform::Data bytes(magic.begin(), magic.end());
  append(bytes, identity->device);
  append(bytes, identity->inode);
  append(bytes, identity->born);
  const std::string& name = path.native();
  bytes.insert(bytes.end(), name.begin(), name.end());
  return bytes;
}

std::optional<platform::ResolvedBookmark> FileBookmarks::resolve(const platform::Data& bookmark) const {
  if (auto path = writtenPath(bookmark); path && identityOf(*path)) return platform::ResolvedBookmark{*path, true};
  const auto decoded = decode(bookmark);
  if (!decoded) return std::nullopt;
  const auto there = identityOf(decoded->path);
  if (there && there->matches(decoded->identity)) return platform::ResolvedBookmark{decoded->path, false};
  if (auto renamed = findIn(decoded->path.parent_path(), decoded->identity))
    return platform::ResolvedBookmark{std::move(*renamed), true};
  return there ? std::optional(platform::ResolvedBookmark{decoded->path, true}) : std::nullopt;
}

}  // namespace hushpane::desktops
