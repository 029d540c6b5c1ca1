#include "desktops/shared/pixbuf_file.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "desktops/shared/files.h"
#include "desktops/shared/jpeg_header.h"

namespace hushpane::desktops {

namespace {

constexpr std::int64_t mostBytes = 256 << 20;          // of the file
constexpr std::int64_t mostDecodedPixels = 64 << 20;   // that are in memory at a time
constexpr std::int64_t mostReducedPixels = 512 << 20;  // in the file, where fewer are decoded
constexpr std::size_t blockSize = 1 << 16;

// The decoders of these forms ask for the size before they make room for the pixels.
constexpr std::array<std::string_view, 7> knownForms{"jpeg", "png", "tiff", "bmp", "gif", "webp", "svg"};

// Finds the bytes that end a file of some form. Without them the decoder would give what there is.
class EndSearch {
 public:
  void look(std::string_view block, std::string_view end) {
    seen_.append(block);
    isFound_ = isFound_ || seen_.find(end) != std::string::npos;
    seen_.erase(0, seen_.size() - std::min(seen_.size(), end.size() - 1));
  }
  bool isFound() const { return isFound_; }

 private:
  std::string seen_;  // the last bytes, in which the end may have begun
  bool isFound_ = false;
};

class PictureReader {
 public:
  PictureReader(int descriptor, const std::function<PixelSize(PixelSize)>& needed)
      : descriptor_(descriptor), needed_(needed), jpeg_(readJpegHeader(descriptor)), loader_(gdk_pixbuf_loader_new()) {
    g_signal_connect(loader_, "size-prepared", G_CALLBACK(sizePrepared), this);
    g_signal_connect(loader_, "area-updated", G_CALLBACK(areaUpdated), this);
  }
  PictureReader(const PictureReader&) = delete;
  PictureReader& operator=(const PictureReader&) = delete;
  ~PictureReader() {
    if (!isClosed_) gdk_pixbuf_loader_close(loader_, nullptr);
    g_object_unref(loader_);
  }

  DecodedPicture read() {
    if (!feed()) return {};
    isClosed_ = true;
    if (!gdk_pixbuf_loader_close(loader_, nullptr) || isRefused_ || !isWhole()) return {};
    GdkPixbuf* pixbuf = gdk_pixbuf_loader_get_pixbuf(loader_);
    if (!pixbuf) return {};
    DecodedPicture picture{PixbufPtr(GDK_PIXBUF(g_object_ref(pixbuf))), stored_, orientationOf(pixbuf)};
    if (picture.isTurned()) picture.size = stored_.turned();
    return picture;
  }

 private:
  static int orientationOf(GdkPixbuf* pixbuf) {
    const char* option = gdk_pixbuf_get_option(pixbuf, "orientation");
    return option && *option >= '1' && *option <= '8' && !option[1] ? *option - '0' : 1;
  }

  static void sizePrepared(GdkPixbufLoader*, int width, int height, gpointer self) {
    auto& reader = *static_cast<PictureReader*>(self);
    reader.stored_ = {width, height};
    const auto decoded = reader.decodedSize();
    reader.isRefused_ = !decoded;
    // Every decoder takes an empty size as the order to stop.
    gdk_pixbuf_loader_set_size(reader.loader_, decoded ? decoded->width : 0, decoded ? decoded->height : 0);
  }

  static void areaUpdated(GdkPixbufLoader*, int, int y, int, int height, gpointer self) {
    auto& reader = *static_cast<PictureReader*>(self);
    reader.firstRow_ = std::min(reader.firstRow_, y);
    reader.endRow_ = std::max(reader.endRow_, y + height);
  }

  // Nothing when the picture is too large, or of a form that is not known.
  std::optional<PixelSize> decodedSize() {
    auto* format = gdk_pixbuf_loader_get_format(loader_);
    const std::unique_ptr<char, void (*)(void*)> name(format ? gdk_pixbuf_format_get_name(format) : nullptr, g_free);
    const auto known = std::ranges::find(knownForms, std::string_view(name ? name.get() : ""));
    if (known == knownForms.end() || stored_.width < 1 || stored_.height < 1) return std::nullopt;
    form_ = *known;
    if (form_ == "jpeg") return reducedJpeg();
    const auto size = form_ == "svg" ? needed_(stored_) : stored_;
    return size.area() <= mostDecodedPixels ? std::optional(size) : std::nullopt;
  }

  // JPEG is decoded at a half, a quarter or an eighth of its size as quickly as that is small.
  std::optional<PixelSize> reducedJpeg() {
    if (!jpeg_ || stored_.area() > (jpeg_->isKeptWhole ? mostDecodedPixels : mostReducedPixels)) return std::nullopt;
    const auto upright = jpeg_->isTurned ? stored_.turned() : stored_;
    const auto needed = jpeg_->isTurned ? needed_(upright).turned() : needed_(upright);
    int part = 8;
    PixelSize size = partOf(part);
    while (part > 1 && (size.width < needed.width || size.height < needed.height)) size = partOf(part /= 2);
    return size.area() <= mostDecodedPixels ? std::optional(size) : std::nullopt;
  }
  PixelSize partOf(int part) const { return {(stored_.width + part - 1) / part, (stored_.height + part - 1) / part}; }

  bool feed() {
    std::string block(blockSize, '\0');
    for (std::int64_t offset = 0; offset <= mostBytes;) {
      const ssize_t count = ::read(descriptor_, block.data(), block.size());
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return count == 0;
      const std::string_view bytes(block.data(), static_cast<std::size_t>(count));
      const auto* data = reinterpret_cast<const guchar*>(bytes.data());
      if (!gdk_pixbuf_loader_write(loader_, data, bytes.size(), nullptr) || isRefused_) return false;
      lookForEnd(bytes, static_cast<std::uint64_t>(offset));
      if (end_.isFound()) return true;
      offset += count;
    }
    return false;
  }

  void lookForEnd(std::string_view bytes, std::uint64_t offset) {
    if (offset == 0) isPng_ = bytes.starts_with("\x89PNG");
    if (isPng_) end_.look(bytes, "IEND\xae\x42\x60\x82");
    if (!jpeg_ || offset + bytes.size() <= jpeg_->scanOffset) return;
    // A preview among the headers has an end of its own.
    const auto start = offset < jpeg_->scanOffset ? jpeg_->scanOffset - offset : 0;
    end_.look(bytes.substr(static_cast<std::size_t>(start)), "\xff\xd9");
  }

  // The other decoders complain when a file ends too early; that of BMP at least adds nothing of its own.
  bool isWhole() const {
    if (form_ == "bmp") return firstRow_ <= 0 && endRow_ >= stored_.height;
    return (form_ != "png" && form_ != "jpeg") || end_.isFound();
  }

  int descriptor_;
  const std::function<PixelSize(PixelSize)>& needed_;
  std::optional<JpegHeader> jpeg_;
  GdkPixbufLoader* loader_;
  bool isClosed_ = false;
  bool isRefused_ = false;
  PixelSize stored_;
  std::string_view form_;
  bool isPng_ = false;
  EndSearch end_;
  int firstRow_ = G_MAXINT;
  int endRow_ = 0;
};

}  // namespace

DecodedPicture decodePictureFile(const std::filesystem::path& file, const std::function<PixelSize(PixelSize)>& needed) {
  const auto opened = openFile(file);
  if (!opened || opened->stamp.size > mostBytes) return {};
  return PictureReader(opened->descriptor.get(), needed).read();
}

}  // namespace hushpane::desktops
