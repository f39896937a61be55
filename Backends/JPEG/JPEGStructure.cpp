#include "Backends/JPEG/JPEGStructure.h"

#include <algorithm>
#include <array>
#include <optional>

namespace platform {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::uint8_t kStuffing = 0x00;
constexpr std::uint8_t kTemporary = 0x01;
constexpr std::uint8_t kFirstRestart = 0xD0;
constexpr std::uint8_t kStart = 0xD8; // end of the range of restart markers
constexpr std::uint8_t kEnd = 0xD9;
constexpr std::uint8_t kScan = 0xDA;
constexpr std::uint8_t kExifSegment = 0xE1;
constexpr std::uint8_t kPrefix = 0xFF;

bool isFrame(std::uint8_t marker) {
    // The three exceptions within the range of frame markers carry tables and extensions.
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

bool isProgressive(std::uint8_t process) {
    return process == 0xC2 || process == 0xCA;
}

/// Whether a marker may occur inside compressed data or carries no information.
bool isFiller(std::uint8_t marker) {
    return marker == kStuffing || marker == kTemporary || marker == kPrefix ||
           (marker >= kFirstRestart && marker < kStart);
}

int number16(Bytes bytes, std::size_t at) {
    return bytes[at] << 8 | bytes[at + 1];
}

std::uint64_t dividedUp(int length, int unit) {
    return static_cast<std::uint64_t>((length + unit - 1) / unit);
}

class Walker {
public:
    explicit Walker(Bytes file) : file_(file) {}

    JPEGStructure walk() {
        while (const auto marker = nextMarker()) {
            if (*marker == kEnd) {
                structure_.hasEndMarker = true;
                break;
            }
            if (*marker != kStart && !readSegment(*marker))
                break;
        }
        return structure_;
    }

private:
    /// Skips compressed data and garbage, as libjpeg-turbo does.
    std::optional<std::uint8_t> nextMarker() {
        const std::size_t from = at_;
        for (;;) {
            const auto rest = file_.subspan(at_);
            const auto prefix = std::find(rest.begin(), rest.end(), kPrefix);
            at_ += static_cast<std::size_t>(prefix - rest.begin()) + 1;
            if (at_ >= file_.size()) {
                at_ = file_.size();
                return std::nullopt;
            }
            const std::uint8_t marker = file_[at_];
            if (isFiller(marker)) {
                // The prefix byte may be repeated; the second one is then the next candidate.
                at_ += marker == kPrefix ? 0 : 1;
                continue;
            }
            structure_.compressedBytes += at_ - 1 - from;
            ++at_;
            return marker;
        }
    }

    bool readSegment(std::uint8_t marker) {
        if (file_.size() - at_ < 2)
            return false;
        const auto length = static_cast<std::size_t>(number16(file_, at_));
        if (length < 2 || file_.size() - at_ < length)
            return false;
        readPayload(marker, file_.subspan(at_ + 2, length - 2));
        at_ += length;
        return true;
    }

    void readPayload(std::uint8_t marker, Bytes payload) {
        constexpr std::array<std::uint8_t, 6> exifHeader{'E', 'x', 'i', 'f', 0, 0};
        if (isFrame(marker) && structure_.process == 0) {
            readFrame(marker, payload);
        } else if (marker == kScan && !payload.empty()) {
            if (payload[0] < structure_.componentCount)
                structure_.hasPartialScans = true;
        } else if (marker == kExifSegment && structure_.exif.empty() &&
                   payload.size() > exifHeader.size() &&
                   std::equal(exifHeader.begin(), exifHeader.end(), payload.begin())) {
            structure_.exif = payload;
        }
    }

    void readFrame(std::uint8_t marker, Bytes payload) {
        constexpr std::size_t fixedBytes = 6;
        constexpr std::size_t componentBytes = 3;
        if (payload.size() < fixedBytes ||
            payload.size() < fixedBytes + componentBytes * payload[5])
            return;
        structure_.process = marker;
        structure_.bitsPerSample = payload[0];
        structure_.size = {number16(payload, 3), number16(payload, 1)};
        structure_.componentCount = payload[5];
        structure_.hasPartialScans = isProgressive(marker);
        countUnits(payload.subspan(fixedBytes));
    }

    void countUnits(Bytes components) {
        int widest = 1;
        int highest = 1;
        std::uint64_t blocks = 0;
        for (std::size_t i = 0; i < static_cast<std::size_t>(structure_.componentCount); ++i) {
            const int horizontal = components[3 * i + 1] >> 4;
            const int vertical = components[3 * i + 1] & 15;
            widest = std::max(widest, horizontal);
            highest = std::max(highest, vertical);
            blocks += static_cast<std::uint64_t>(horizontal * vertical);
        }
        constexpr std::uint64_t bytesPerBlock = 128;
        structure_.unitCount = dividedUp(structure_.size.width, 8 * widest) *
                               dividedUp(structure_.size.height, 8 * highest);
        structure_.coefficientBytes = structure_.unitCount * blocks * bytesPerBlock;
    }

    Bytes file_;
    std::size_t at_ = 0;
    JPEGStructure structure_;
};

} // namespace

JPEGStructure readJPEGStructure(Bytes encoded) {
    return Walker(encoded).walk();
}

} // namespace platform
