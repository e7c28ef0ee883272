#include "ui/png_encoder.h"

#include <zlib.h>

#include <algorithm>
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
    return indexes_[h & (kSlots - 1)];
  }
  const std::vector<std::uint32_t>& Colours() const { return colours_; }

 private:
  static constexpr std::uint32_t kSlots = 1024;
  static constexpr std::uint32_t kFree = 0xFFFFFFFFu;  // colours here have no alpha bits
  std::array<std::uint32_t, kSlots> slots_;
  std::array<std::uint8_t, kSlots> indexes_{};
  std::vector<std::uint32_t> colours_;
};

// The zlib stream of the rows: one deflate block with the fixed codes, holding literals
// and two kinds of repeat: of the pixel before (a run of one colour) and of the row above
// (the same bytes one row up). A graph is mostly such runs and rows, so this packs it about
// as tightly as a general encoder at a fraction of the time, and it needs no trees.
class RowDeflater {
 public:
  // pixelBytes: bytes per pixel; rowBytes: bytes per row with its filter byte.
  RowDeflater(std::vector<std::uint8_t>& out, std::size_t pixelBytes, std::size_t rowBytes)
      : out_(out), pixel_(pixelBytes), row_(rowBytes) {
    for (int v = 0; v < 288; ++v) {
      int code = 0, bits = 0;
      if (v < 144) code = 0x30 + v, bits = 8;
      else if (v < 256) code = 0x190 + v - 144, bits = 9;
      else if (v < 280) code = v - 256, bits = 7;
      else code = 0xC0 + v - 280, bits = 8;
      symbols_[v] = {Reversed(code, bits), bits};
    }
    static constexpr int kLengthBase[] = {3,  4,  5,  6,  7,  8,  9,  10,  11,  13,  15,  17,  19,  23, 27,
                                          31, 35, 43, 51, 59, 67, 83, 99, 115, 131, 163, 195, 227, 258};
    static constexpr int kLengthExtra[] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2,
                                           2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0};
    // Lengths 3..258: the length symbol's code followed by its extra bits.
    for (int k = 0; k < 29; ++k) {
      const int last = k == 28 ? 258 : kLengthBase[k + 1] - 1;
      for (int len = kLengthBase[k]; len <= last; ++len) {
        const Code sym = symbols_[257 + k];
        lengths_[len] = {sym.bits | static_cast<std::uint32_t>(len - kLengthBase[k]) << sym.length,
                         sym.length + kLengthExtra[k]};
      }
    }
    runDistance_ = DistanceCode(pixel_);
    rowDistance_ = DistanceCode(row_);
  }

  void Pack(const std::uint8_t* data, std::size_t size) {
    out_.push_back(0x78);  // deflate, 32K window
    out_.push_back(0x01);  // fastest; header check bits
    Put(3, 3);             // the final block, fixed codes
    const bool rowsReach = row_ <= kWindow;
    std::size_t i = 0;
    while (i < size) {
      const std::size_t most = std::min<std::size_t>(258, size - i);
      const std::size_t run = i >= pixel_ ? Same(data + i, data + i - pixel_, most) : 0;
      const std::size_t up = rowsReach && i >= row_ && run < most ? Same(data + i, data + i - row_, most) : 0;
      const std::size_t len = std::max(run, up);
      if (len < 3) {
        Put(symbols_[data[i]].bits, symbols_[data[i]].length);
        ++i;
        continue;
      }
      Put(lengths_[len].bits, lengths_[len].length);
      const Code& d = up > run ? rowDistance_ : runDistance_;
      Put(d.bits, d.length);
      i += len;
    }
    Put(symbols_[256].bits, symbols_[256].length);
    if (filled_ > 0) out_.push_back(static_cast<std::uint8_t>(acc_));
    const uLong sum = adler32(adler32(0L, nullptr, 0), data, static_cast<uInt>(size));
    PutBigEndian(out_, static_cast<std::uint32_t>(sum));
  }

 private:
  static constexpr std::size_t kWindow = 32768;

  struct Code {
    std::uint32_t bits = 0;
    int length = 0;
  };

  static std::uint32_t Reversed(int code, int bits) {
    std::uint32_t r = 0;
    for (int k = 0; k < bits; ++k) r |= static_cast<std::uint32_t>((code >> k) & 1) << (bits - 1 - k);
    return r;
  }

  // A distance of 1..32768: its five-bit code, then its extra bits.
  static Code DistanceCode(std::size_t distance) {
    if (distance < 1 || distance > kWindow) return {};
    int code = 0;
    std::size_t base = 1;
    int extra = 0;
    for (code = 0; code < 29; ++code) {
      extra = code < 4 ? 0 : code / 2 - 1;
      if (distance < base + (std::size_t{1} << extra)) break;
      base += std::size_t{1} << extra;
    }
    return {Reversed(code, 5) | static_cast<std::uint32_t>(distance - base) << 5, 5 + extra};
  }

  // How many bytes from a equal those from b, up to most. b may run into a: a repeat
  // copies bytes it has just made.
  static std::size_t Same(const std::uint8_t* a, const std::uint8_t* b, std::size_t most) {
    std::size_t n = 0;
    while (n + 8 <= most) {
      std::uint64_t x, y;
      std::memcpy(&x, a + n, 8);
      std::memcpy(&y, b + n, 8);
      if (x != y) break;
      n += 8;
    }
    while (n < most && a[n] == b[n]) ++n;
    return n;
  }

  void Put(std::uint32_t bits, int length) {
    acc_ |= static_cast<std::uint64_t>(bits) << filled_;
    filled_ += length;
    while (filled_ >= 8) {
      out_.push_back(static_cast<std::uint8_t>(acc_));
      acc_ >>= 8;
      filled_ -= 8;
    }
  }

  std::vector<std::uint8_t>& out_;
  std::size_t pixel_, row_;
  std::array<Code, 288> symbols_{};
  std::array<Code, 259> lengths_{};
  Code runDistance_, rowDistance_;
  std::uint64_t acc_ = 0;
  int filled_ = 0;
};

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
    // Runs of one colour need no look-up.
    std::uint32_t last = 0xFFFFFFFFu;
    std::uint8_t index = 0;
    for (int x = 0; x < w; ++x) {
      const std::uint32_t c = line[x] & 0xFFFFFFu;
      if (c != last) {
        const int i = palette.IndexOf(c);
        if (i < 0) {
          indexed = false;
          break;
        }
        last = c;
        index = static_cast<std::uint8_t>(i);
      }
      row[x + 1] = index;
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
  packed.reserve(raw.size() / 16 + 64);
  const std::size_t pixelBytes = indexed ? 1 : 3;
  RowDeflater(packed, pixelBytes, pixelBytes * w + 1).Pack(raw.data(), raw.size());

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
