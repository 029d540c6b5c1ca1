#include "desktops/shared/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>

namespace hushpane::desktops {

namespace {

constexpr int mostLinks = 40;

std::int64_t nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

FileStamp stampFrom(const struct stat& status) {
  return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim)};
}

bool writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// Up to `limit` bytes and one more, which tells that there are more.
std::optional<std::string> readUpTo(int descriptor, std::size_t limit) {
  std::string bytes;
  char block[1 << 16];
  while (bytes.size() <= limit) {
    const ssize_t count = read(descriptor, block, sizeof block);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    bytes.append(block, static_cast<std::size_t>(count));
  }
  return bytes;
}

// A file under a passing name, removed unless it was moved to its place.
class PassingFile {
 public:
  explicit PassingFile(const std::filesystem::path& target)
      : name_((target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string()),
        descriptor_(mkostemp(name_.data(), O_CLOEXEC)),
        exists_(static_cast<bool>(descriptor_)) {}
  PassingFile(const PassingFile&) = delete;
  PassingFile& operator=(const PassingFile&) = delete;
  ~PassingFile() {
    if (exists_) unlink(name_.c_str());
  }

  // Some file systems report a full disk only when the file is closed.
  std::optional<FileStamp> fill(std::string_view bytes, const struct stat* old) {
    if (!exists_ || (old && fchmod(descriptor_.get(), old->st_mode & 07777) != 0)) return std::nullopt;
    struct stat status {};
    if (!writeAll(descriptor_.get(), bytes) || fstat(descriptor_.get(), &status) != 0) return std::nullopt;
    return descriptor_.close() ? std::optional(stampFrom(status)) : std::nullopt;
  }

  bool moveTo(const std::filesystem::path& target) {
    if (rename(name_.c_str(), target.c_str()) != 0) return false;
    exists_ = false;
    return true;
  }

 private:
  std::string name_;
  FileDescriptor descriptor_;
  bool exists_;
};

}  // namespace

std::optional<FileStamp> stampOf(const std::filesystem::path& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) != 0) return std::nullopt;
  return stampFrom(status);
}

std::optional<OpenFile> openFile(const std::filesystem::path& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  FileDescriptor descriptor(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!descriptor || fstat(descriptor.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  return OpenFile{std::move(descriptor), stampFrom(status)};
}

std::optional<FileContents> readFile(const std::filesystem::path& file, std::size_t limit) {
  const auto opened = openFile(file);
  auto bytes = opened ? readUpTo(opened->descriptor.get(), limit) : std::nullopt;
  if (!bytes || bytes->size() > limit) return std::nullopt;
  return FileContents{std::move(*bytes), opened->stamp};
}

bool isPlainFileName(std::string_view name) {
  return !name.empty() && name.front() != '.' && name.find_first_of(std::string_view("/\0", 2)) == name.npos;
}

std::optional<std::filesystem::path> followLinks(std::filesystem::path file) {
  for (int link = 0; link < mostLinks; ++link) {
    std::error_code error;
    const auto target = std::filesystem::read_symlink(file, error);
    if (error) return file;
    file = file.parent_path() / target;
  }
  return std::nullopt;
}

std::optional<FileStamp> replaceFile(const std::filesystem::path& file, std::string_view bytes) {
  const auto target = followLinks(file);
  if (!target) return std::nullopt;
  struct stat status {};
  const bool exists = stat(target->c_str(), &status) == 0;
  if (exists && !S_ISREG(status.st_mode)) return std::nullopt;
  PassingFile passing(*target);
  const auto stamp = passing.fill(bytes, exists ? &status : nullptr);
  return stamp && passing.moveTo(*target) ? stamp : std::nullopt;
}

}  // namespace hushpane::desktops
