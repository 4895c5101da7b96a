#include "platform/qt/services/QtImageCodec.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QtEndian>

#include <array>
#include <cstdint>

namespace quillow {
namespace {

// TIFF 6.0, sections 2 and 6, and Extra Samples of section 18. The layout of a file written here: header, one
// directory, the values that do not fit into it, the pixels.

enum Tag : std::uint16_t {
    kImageWidth = 256,
    kImageLength = 257,
    kBitsPerSample = 258,
    kCompression = 259,
    kPhotometricInterpretation = 262,
    kStripOffsets = 273,
    kSamplesPerPixel = 277,
    kRowsPerStrip = 278,
    kStripByteCounts = 279,
    kXResolution = 282,
    kYResolution = 283,
    kPlanarConfiguration = 284,
    kResolutionUnit = 296,
    kExtraSamples = 338,
};
enum Type : std::uint16_t { kShort = 3, kLong = 4, kRational = 5 };

struct Entry {
    Tag tag;
    Type type;
    std::uint32_t count;
    std::uint32_t value;
};

constexpr std::uint32_t kEntryCount = 14;
constexpr std::uint32_t kEntrySize = 12;
constexpr std::uint32_t kHeaderSize = 8;
constexpr std::uint32_t kBitsOffset = kHeaderSize + 2 + kEntryCount * kEntrySize + 4;
constexpr std::uint32_t kResolutionOffset = kBitsOffset + 4 * 2;
constexpr std::uint32_t kPixelsOffset = kResolutionOffset + 8;
constexpr std::uint32_t kDotsPerInch = 72;
constexpr int kBytesPerPixel = 4;

template <class Number>
void append(QByteArray& bytes, Number number) {
    const Number ordered = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&ordered), sizeof ordered);
}

/// The whole file up to the pixels.
QByteArray tiffHead(std::uint32_t width, std::uint32_t height) {
    const std::array<Entry, kEntryCount> entries = {{
        {kImageWidth, kLong, 1, width},
        {kImageLength, kLong, 1, height},
        {kBitsPerSample, kShort, 4, kBitsOffset},
        {kCompression, kShort, 1, 1},               // none
        {kPhotometricInterpretation, kShort, 1, 2}, // RGB
        {kStripOffsets, kLong, 1, kPixelsOffset},
        {kSamplesPerPixel, kShort, 1, 4},
        {kRowsPerStrip, kLong, 1, height},
        {kStripByteCounts, kLong, 1, width * height * kBytesPerPixel},
        {kXResolution, kRational, 1, kResolutionOffset},
        {kYResolution, kRational, 1, kResolutionOffset},
        {kPlanarConfiguration, kShort, 1, 1}, // chunky: the samples of a pixel are contiguous
        {kResolutionUnit, kShort, 1, 2},      // inches
        {kExtraSamples, kShort, 1, 2},        // unassociated alpha
    }};
    QByteArray bytes("II*\0", 4);
    append(bytes, kHeaderSize);
    append(bytes, static_cast<std::uint16_t>(kEntryCount));
    for (const Entry& entry : entries) {
        append(bytes, static_cast<std::uint16_t>(entry.tag));
        append(bytes, static_cast<std::uint16_t>(entry.type));
        append(bytes, entry.count);
        append(bytes, entry.value); // a short is in the lower half of the little-endian field
    }
    append(bytes, std::uint32_t{0}); // no next directory
    for (int sample = 0; sample < kBytesPerPixel; ++sample)
        append(bytes, std::uint16_t{8});
    append(bytes, kDotsPerInch);
    append(bytes, std::uint32_t{1});
    return bytes;
}

/// Reads a picture that this codec has written: its head is known except for the width and the height.
std::optional<Image> ownTiff(const QByteArray& bytes) {
    constexpr qsizetype kWidthPlace = kHeaderSize + 2 + 8;
    if (bytes.size() < kPixelsOffset || !bytes.startsWith(QByteArrayView("II*\0", 4))) return std::nullopt;
    const auto width = qFromLittleEndian<std::uint32_t>(bytes.constData() + kWidthPlace);
    const auto height = qFromLittleEndian<std::uint32_t>(bytes.constData() + kWidthPlace + kEntrySize);
    const qint64 held = (bytes.size() - kPixelsOffset) / kBytesPerPixel;
    if (width == 0 || height == 0 || width > held || height > held || qint64{width} * height != held)
        return std::nullopt;
    if (!bytes.startsWith(tiffHead(width, height))) return std::nullopt;
    return Image{static_cast<int>(width), static_cast<int>(height), bytes.mid(kPixelsOffset)};
}

} // namespace

std::optional<Image> QtImageCodec::imageWithData(const QByteArray& bytes) const {
    if (auto own = ownTiff(bytes)) return own;
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (size.isValid() && qint64{size.width()} * size.height() > kMaximumPixels) return std::nullopt;
    const QImage read = reader.read();
    if (read.isNull() || qint64{read.width()} * read.height() > kMaximumPixels) return std::nullopt;
    const QImage pixels = read.convertToFormat(QImage::Format_RGBA8888);
    Image image{pixels.width(), pixels.height(), {}};
    image.rgba.reserve(qsizetype{image.width} * image.height * kBytesPerPixel);
    for (int row = 0; row < image.height; ++row)
        image.rgba.append(reinterpret_cast<const char*>(pixels.constScanLine(row)),
                          qsizetype{image.width} * kBytesPerPixel);
    return image;
}

std::optional<QByteArray> QtImageCodec::TIFFRepresentation(const Image& image) const {
    const qint64 count = qint64{image.width} * image.height;
    if (image.isEmpty() || count > kMaximumPixels || image.rgba.size() != count * kBytesPerPixel) return std::nullopt;
    return tiffHead(static_cast<std::uint32_t>(image.width), static_cast<std::uint32_t>(image.height)) + image.rgba;
}

} // namespace quillow
