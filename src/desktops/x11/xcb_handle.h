#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <utility>

namespace hushpane::x11 {

struct FreeMemory {
  void operator()(void* memory) const { std::free(memory); }
};

// A reply, error or event from the server.
template <class Type>
using Reply = std::unique_ptr<Type, FreeMemory>;

// Owns one object of the server. `Release` is the request that frees it. The connection must outlive the handle.
template <auto Release>
class Handle {
 public:
  Handle() = default;
  Handle(xcb_connection_t* connection, std::uint32_t id) : connection_(connection), id_(id) {}
  Handle(Handle&& other) noexcept : connection_(other.connection_), id_(std::exchange(other.id_, 0)) {}
  Handle& operator=(Handle&& other) noexcept {
    if (this != &other) {
      reset();
      connection_ = other.connection_;
      id_ = std::exchange(other.id_, 0);
    }
    return *this;
  }
  ~Handle() { reset(); }

  std::uint32_t get() const { return id_; }
  explicit operator bool() const { return id_ != 0; }
  void reset() {
    if (const auto id = std::exchange(id_, 0)) Release(connection_, id);
  }
  // Gives up ownership of an object that the server has freed by itself.
  std::uint32_t release() { return std::exchange(id_, 0); }

 private:
  xcb_connection_t* connection_ = nullptr;
  std::uint32_t id_ = 0;
};

using WindowHandle = Handle<xcb_destroy_window>;
using PixmapHandle = Handle<xcb_free_pixmap>;
using ColormapHandle = Handle<xcb_free_colormap>;

}  // namespace hushpane::x11
