#include "ui/png_encoder.h"

#include <zlib.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

namespace quillet {

namespace {

void PutBigEndian(std::vector<std::uint8_t>& out, std::uint32_t v) {
  out.push_back(static_cast<std::uint8_t>(v >> 24));
  out.push_back(static_cast<std::uint8_t>(v >> 16));
  out.push_back(static_cast<std::uint8_t>(v >> 8));
  out.push_back(static_cast<std::uint8_t>(v));
}

void PutChunk(std::vector<std::uint8_t>& out, const char* type, const std::uint8_t* data, std::size_t size) {
  PutBigEndian(out, static_cast<std::uint32_t>(size));
  const std::size_t start = out.size();
  out.insert(out.end(), type, type + 4);
  if (size) out.insert(out.end(), data, data + size);
  const uLong crc = crc32(0L, out.data() + start, static_cast<uInt>(size + 4));
  PutBigEndian(out, static_cast<std::uint32_t>(crc));
}

// The picture's colours, as long as there are no more than 256 of them. A small open
// hash keyed by the colour; most graphs use a dozen.
class Palette {
 public:
  Palette() { slots_.fill(kFree); }
  // The colour's index, or -1 once the palette is full.
  int IndexOf(std::uint32_t rgb) {
    if (rgb == lastColour_) return lastIndex_;
    std::uint32_t h = (rgb * 2654435761u) >> 22;  // 1024 slots
    for (;;) {
      const std::uint32_t at = h & (kSlots - 1);
      if (slots_[at] == kFree) {
        if (colours_.size() == 256) return -1;
        slots_[at] = rgb;
        indexes_[at] = static_cast<std::uint8_t>(colours_.size());
        colours_.push_back(rgb);
        break;
      }
      if (slots_[at] == rgb) break;
      ++h;
    }
    lastColour_ = rgb;
    lastIndex_ = indexes_[h & (kSlots - 1)];
    return lastIndex_;
  }
  const std::vector<std::uint32_t>& Colours() const { return colours_; }

 private:
  static constexpr std::uint32_t kSlots = 1024;
  static constexpr std::uint32_t kFree = 0xFFFFFFFFu;  // colours here have no alpha bits
  std::array<std::uint32_t, kSlots> slots_;
  std::array<std::uint8_t, kSlots> indexes_{};
  std::vector<std::uint32_t> colours_;
  std::uint32_t lastColour_ = kFree;
  int lastIndex_ = 0;
};

bool Deflate(const std::vector<std::uint8_t>& raw, std::vector<std::uint8_t>& packed) {
  z_stream z{};
  if (deflateInit2(&z, 6, Z_DEFLATED, 15, 8, Z_RLE) != Z_OK) return false;
  packed.resize(deflateBound(&z, static_cast<uLong>(raw.size())));
  z.next_in = const_cast<Bytef*>(raw.data());
  z.avail_in = static_cast<uInt>(raw.size());
  z.next_out = packed.data();
  z.avail_out = static_cast<uInt>(packed.size());
  const int rc = deflate(&z, Z_FINISH);
  packed.resize(z.total_out);
  deflateEnd(&z);
  return rc == Z_STREAM_END;
}

}  // namespace

QByteArray EncodePng(const QImage& source) {
  const QImage image = source.format() == QImage::Format_RGB32 ? source : source.convertToFormat(QImage::Format_RGB32);
  const int w = image.width(), h = image.height();
  if (w <= 0 || h <= 0) return {};

  // Palette rows first; on the 257th colour fall back to plain RGB rows.
  Palette palette;
  std::vector<std::uint8_t> raw(static_cast<std::size_t>(h) * (w + 1));
  bool indexed = true;
  for (int y = 0; y < h && indexed; ++y) {
    const auto* line = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
    std::uint8_t* row = raw.data() + static_cast<std::size_t>(y) * (w + 1);
    row[0] = 0;  // no filter
    for (int x = 0; x < w; ++x) {
      const int i = palette.IndexOf(line[x] & 0xFFFFFFu);
      if (i < 0) {
        indexed = false;
        break;
      }
      row[x + 1] = static_cast<std::uint8_t>(i);
    }
  }
  if (!indexed) {
    raw.assign(static_cast<std::size_t>(h) * (3 * w + 1), 0);
    for (int y = 0; y < h; ++y) {
      const auto* line = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
      std::uint8_t* row = raw.data() + static_cast<std::size_t>(y) * (3 * w + 1);
      for (int x = 0; x < w; ++x) {
        row[1 + 3 * x] = static_cast<std::uint8_t>(line[x] >> 16);
        row[2 + 3 * x] = static_cast<std::uint8_t>(line[x] >> 8);
        row[3 + 3 * x] = static_cast<std::uint8_t>(line[x]);
      }
    }
  }
  std::vector<std::uint8_t> packed;
  if (!Deflate(raw, packed)) return {};

  std::vector<std::uint8_t> out = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  std::vector<std::uint8_t> header;
  PutBigEndian(header, static_cast<std::uint32_t>(w));
  PutBigEndian(header, static_cast<std::uint32_t>(h));
  header.insert(header.end(), {8, static_cast<std::uint8_t>(indexed ? 3 : 2), 0, 0, 0});
  PutChunk(out, "IHDR", header.data(), header.size());
  if (indexed) {
    std::vector<std::uint8_t> plte;
    for (std::uint32_t c : palette.Colours()) {
      plte.insert(plte.end(), {static_cast<std::uint8_t>(c >> 16), static_cast<std::uint8_t>(c >> 8),
                               static_cast<std::uint8_t>(c)});
    }
    PutChunk(out, "PLTE", plte.data(), plte.size());
  }
  PutChunk(out, "IDAT", packed.data(), packed.size());
  PutChunk(out, "IEND", nullptr, 0);
  return QByteArray(reinterpret_cast<const char*>(out.data()), static_cast<qsizetype>(out.size()));
}

}  // namespace quillet
