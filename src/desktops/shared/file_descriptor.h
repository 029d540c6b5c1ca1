#pragma once

#include <unistd.h>

#include <utility>

namespace hushpane::desktops {

// Owns a file descriptor; negative numbers are none.
class FileDescriptor {
 public:
  explicit FileDescriptor(int number = -1) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~FileDescriptor() { close(); }

  explicit operator bool() const { return number_ >= 0; }
  int get() const { return number_; }

  // False when the descriptor was none or what was written could not be kept.
  bool close() { return number_ >= 0 && ::close(std::exchange(number_, -1)) == 0; }

 private:
  int number_;
};

}  // namespace hushpane::desktops
