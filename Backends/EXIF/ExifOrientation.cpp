#include "Backends/EXIF/ExifOrientation.h"

#include <libexif/exif-data.h>

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

namespace platform {
namespace {

constexpr std::array<std::uint8_t, 6> kHeader{'E', 'x', 'i', 'f', 0, 0};

/// The largest payload of a JPEG segment. The directory with the orientation comes first, so
/// cutting a longer block is harmless.
constexpr std::size_t kMostBytes = 65'533;

struct DataReleaser {
    void operator()(ExifData* data) const { exif_data_unref(data); }
};
using DataPtr = std::unique_ptr<ExifData, DataReleaser>;

/// libexif only accepts blocks that begin with the header.
std::vector<std::uint8_t> withHeader(std::span<const std::uint8_t> exif) {
    std::vector<std::uint8_t> block;
    if (exif.size() < kHeader.size() || !std::equal(kHeader.begin(), kHeader.end(), exif.begin()))
        block.assign(kHeader.begin(), kHeader.end());
    block.insert(block.end(), exif.begin(), exif.end());
    block.resize(std::min(block.size(), kMostBytes));
    return block;
}

DataPtr load(const std::vector<std::uint8_t>& block) {
    DataPtr data(exif_data_new());
    if (!data)
        return nullptr;
    // libexif's corrections towards the standard would cost time and could only invent values.
    exif_data_unset_option(data.get(), EXIF_DATA_OPTION_FOLLOW_SPECIFICATION);
    exif_data_load_data(data.get(), block.data(), static_cast<unsigned>(block.size()));
    return data;
}

/// Some writers use a long where the standard wants a short.
int numberIn(const ExifEntry& entry, ExifByteOrder order) {
    if (entry.format == EXIF_FORMAT_SHORT && entry.size >= 2)
        return exif_get_short(entry.data, order);
    if (entry.format == EXIF_FORMAT_LONG && entry.size >= 4)
        return static_cast<int>(std::min<ExifLong>(exif_get_long(entry.data, order), 9));
    return 0;
}

} // namespace

int exifOrientation(std::span<const std::uint8_t> exif) {
    if (exif.empty())
        return 1;
    const DataPtr data = load(withHeader(exif));
    if (!data)
        return 1;
    const ExifEntry* entry = exif_content_get_entry(data->ifd[EXIF_IFD_0], EXIF_TAG_ORIENTATION);
    const int orientation = entry ? numberIn(*entry, exif_data_get_byte_order(data.get())) : 1;
    return orientation >= 1 && orientation <= 8 ? orientation : 1;
}

} // namespace platform
