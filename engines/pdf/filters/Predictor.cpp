#include "engines/pdf/filters/Predictor.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <optional>
#include <vector>

namespace quillow::pdf {

namespace {

using Byte = std::uint8_t;

constexpr int kTiff = 2;
constexpr int kFirstPng = 10;

/// The measures of a row, in bytes.
struct RowShape {
    std::size_t row;
    std::size_t pixel; ///< from a sample to the same one of the pixel before; at least 1 (PNG, 9.2)
};

std::optional<RowShape> shapeOf(const PredictorParameters& parameters) {
    const int bits = parameters.bitsPerComponent;
    const bool bitsAreKnown = bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16;
    const bool isSound = bitsAreKnown && parameters.colors >= 1 && parameters.colors <= kMaximumColors &&
                         parameters.columns >= 1 && parameters.columns <= kMaximumColumns;
    if (!isSound) return std::nullopt;
    const auto pixelBits = static_cast<std::size_t>(parameters.colors * bits);
    return RowShape{(pixelBits * static_cast<std::size_t>(parameters.columns) + 7) / 8, (pixelBits + 7) / 8};
}

bool isPng(const PredictorParameters& parameters) {
    return parameters.predictor >= kFirstPng;
}

// PNG (ISO/IEC 15948, 9): `row` has `size` bytes, `above` is the decoded row before it.

/// Adds sixteen bytes at a time; reads and writes up to fifteen bytes more than the row has.
void addAboveInBlocks(const Byte* row, const Byte* above, std::size_t size, Byte* out) {
    using Block = Byte __attribute__((vector_size(16)));
    for (std::size_t i = 0; i < size; i += sizeof(Block)) {
        Block left;
        Block right;
        std::memcpy(&left, row + i, sizeof left);
        std::memcpy(&right, above + i, sizeof right);
        left += right;
        std::memcpy(out + i, &left, sizeof left);
    }
}

void addAbove(const Byte* row, const Byte* above, std::size_t size, Byte* out) {
    for (std::size_t i = 0; i < size; ++i)
        out[i] = static_cast<Byte>(row[i] + above[i]);
}

void addLeft(const Byte* row, std::size_t pixel, std::size_t size, Byte* out) {
    for (std::size_t i = 0; i < size; ++i)
        out[i] = static_cast<Byte>(row[i] + (i < pixel ? 0 : out[i - pixel]));
}

void addAverage(const Byte* row, const Byte* above, std::size_t pixel, std::size_t size, Byte* out) {
    for (std::size_t i = 0; i < size; ++i)
        out[i] = static_cast<Byte>(row[i] + ((i < pixel ? 0 : out[i - pixel]) + above[i]) / 2);
}

int paeth(int left, int above, int corner) {
    const int toLeft = std::abs(above - corner);
    const int toAbove = std::abs(left - corner);
    const int toCorner = std::abs(left + above - 2 * corner);
    if (toLeft <= toAbove && toLeft <= toCorner) return left;
    return toAbove <= toCorner ? above : corner;
}

void addPaeth(const Byte* row, const Byte* above, std::size_t pixel, std::size_t size, Byte* out) {
    for (std::size_t i = 0; i < size; ++i) {
        const bool isFirst = i < pixel;
        out[i] =
            static_cast<Byte>(row[i] + paeth(isFirst ? 0 : out[i - pixel], above[i], isFirst ? 0 : above[i - pixel]));
    }
}

/// A row by its own tag; an unknown tag is no filter.
void decodePngRow(Byte tag, const Byte* row, const Byte* above, std::size_t pixel, std::size_t size, Byte* out) {
    switch (tag) {
    case 1: return addLeft(row, pixel, size, out);
    case 2: return addAbove(row, above, size, out);
    case 3: return addAverage(row, above, pixel, size, out);
    case 4: return addPaeth(row, above, pixel, size, out);
    default: std::memcpy(out, row, size);
    }
}

/// The rows have `size` bytes after decoding. `out` has room for kSlack more.
constexpr std::size_t kSlack = 16;

void decodePng(std::string_view stored, const RowShape& shape, std::size_t size, Byte* out) {
    const Byte* row = reinterpret_cast<const Byte*>(stored.data());
    const Byte* const end = row + stored.size();
    const std::vector<Byte> zeros(std::min(shape.row, size) + kSlack);
    const Byte* above = zeros.data();
    for (std::size_t done = 0; done < size;) {
        const Byte tag = *row++;
        const std::size_t here = std::min(shape.row, size - done);
        if (tag == 2 && static_cast<std::size_t>(end - row) >= here + kSlack)
            addAboveInBlocks(row, above, here, out + done);
        else
            decodePngRow(tag, row, above, shape.pixel, here, out + done);
        above = out + done;
        row += here;
        done += here;
    }
}

// TIFF 6.0, section 14: a sample is the difference to the same sample of the pixel before.

void addSamples8(std::size_t colors, std::size_t size, Byte* row) {
    for (std::size_t i = colors; i < size; ++i)
        row[i] = static_cast<Byte>(row[i] + row[i - colors]);
}

void addSamples16(std::size_t colors, std::size_t size, Byte* row) {
    const auto sampleAt = [row](std::size_t i) { return row[i] << 8 | row[i + 1]; };
    for (std::size_t i = 2 * colors; i + 1 < size; i += 2) {
        const int sum = sampleAt(i) + sampleAt(i - 2 * colors);
        row[i] = static_cast<Byte>(sum >> 8);
        row[i + 1] = static_cast<Byte>(sum);
    }
}

/// Samples of 1, 2 or 4 bits.
void addPackedSamples(std::size_t colors, unsigned bits, std::size_t size, Byte* row) {
    const unsigned mask = (1U << bits) - 1;
    const std::size_t perByte = 8 / bits;
    const auto shiftOf = [&](std::size_t i) { return static_cast<unsigned>(8 - bits * (i % perByte + 1)); };
    for (std::size_t i = colors; i < size * perByte; ++i) {
        const std::size_t before = i - colors;
        const unsigned left = static_cast<unsigned>(row[before / perByte]) >> shiftOf(before);
        const unsigned stored = row[i / perByte];
        const unsigned sum = ((stored >> shiftOf(i)) + left) & mask;
        row[i / perByte] = static_cast<Byte>((stored & ~(mask << shiftOf(i))) | sum << shiftOf(i));
    }
}

void decodeTiffRow(const PredictorParameters& parameters, std::size_t size, Byte* row) {
    const auto colors = static_cast<std::size_t>(parameters.colors);
    switch (parameters.bitsPerComponent) {
    case 8: return addSamples8(colors, size, row);
    case 16: return addSamples16(colors, size, row);
    default: addPackedSamples(colors, static_cast<unsigned>(parameters.bitsPerComponent), size, row);
    }
}

void decodeTiff(std::string_view stored, const PredictorParameters& parameters, std::size_t row, std::size_t size,
                Byte* out) {
    std::memcpy(out, stored.data(), size);
    for (std::size_t done = 0; done < size; done += row)
        decodeTiffRow(parameters, std::min(row, size - done), out + done);
}

/// The bytes of stored PNG rows without their tags. A tag with nothing behind it counts as a row without bytes.
std::size_t withoutTags(std::size_t stored, std::size_t row) {
    return stored - (stored + row) / (row + 1);
}

} // namespace

bool hasPredictor(const PredictorParameters& parameters) {
    return parameters.predictor == kTiff || isPng(parameters);
}

std::size_t storedLimit(const PredictorParameters& parameters, std::size_t limit) {
    const std::optional<RowShape> shape = shapeOf(parameters);
    if (!shape || !isPng(parameters)) return limit;
    const std::size_t tags = limit / shape->row + 1;
    return limit > std::numeric_limits<std::size_t>::max() - tags ? limit : limit + tags;
}

Decoding undoPredictor(std::string_view stored, const PredictorParameters& parameters, std::size_t limit,
                       text::ByteBuffer& out) {
    const std::optional<RowShape> shape = shapeOf(parameters);
    if (!shape) return Decoding::cut;
    const std::size_t whole = isPng(parameters) ? withoutTags(stored.size(), shape->row) : stored.size();
    const std::size_t size = std::min(whole, limit);
    if (size > 0) {
        const std::size_t before = out.size();
        out.reserve(before + size + kSlack);
        out.resize(before + size);
        Byte* const samples = reinterpret_cast<Byte*>(out.data() + before);
        if (isPng(parameters))
            decodePng(stored, *shape, size, samples);
        else
            decodeTiff(stored, parameters, shape->row, size, samples);
    }
    return size < whole ? Decoding::tooLong : Decoding::complete;
}

} // namespace quillow::pdf
