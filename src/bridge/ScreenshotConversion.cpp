#include "bridge/ScreenshotConversion.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <iterator>

#if defined(__x86_64__)
#include <immintrin.h>
#elif defined(__arm__)
#include <arm_neon.h>
#include <asm/hwcap.h>
#include <sys/auxv.h>
#endif

namespace norvane {
namespace {

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "pixel words are read little-endian");

// Small enough that a block read into the frame buffer is still in the CPU's cache when it is
// converted right after, large enough that a frame takes few reads.
constexpr size_t kBlockBytes = 256 * 1024;
static_assert(kBlockBytes % kBytesPerPixel == 0, "blocks hold whole pixels");

// Some CPUs copy a file's cached page several times slower into memory that starts a few bytes
// past the page's own place in a page, as a 32-bit C library's large allocation does (8 bytes
// in). Cached pages start on cache lines: a copy to the same place in a line is never that close.
constexpr size_t kCacheLineBytes = 64;
static_assert(kBlockBytes % kCacheLineBytes == 0, "blocks start on cache lines in the file");

bool always() {
    return true;
}

// Bytes from `at` up to the next `alignment`-byte boundary; none when `at` lies on one.
size_t bytesToBoundary(const unsigned char* at, size_t alignment) {
    const auto address = reinterpret_cast<uintptr_t>(at);
    return (alignment - address % alignment) % alignment;
}

// A B,G,R,A pixel read as a little-endian word is 0xAARRGGBB: G and A stay, R and B trade places.
inline uint32_t swapRedAndBlue(uint32_t pixel) {
    return (pixel & 0xFF00FF00u) | ((pixel >> 16) & 0xFFu) | ((pixel & 0xFFu) << 16);
}

// Each pixel is read before it is written, so `to` may lie on or below `from`.
void convertEachPixel(unsigned char* to, const unsigned char* from, size_t count) {
    for (size_t at = 0; at < count * kBytesPerPixel; at += kBytesPerPixel) {
        uint32_t pixel;
        std::memcpy(&pixel, from + at, sizeof pixel);
        pixel = swapRedAndBlue(pixel);
        std::memcpy(to + at, &pixel, sizeof pixel);
    }
}

// Groups of a fixed size, each read whole before it is written, which the compiler turns into
// vector code wherever the target's baseline has vectors (SSE2 on x86-64), and into word
// operations elsewhere.
void convertPortable(unsigned char* to, const unsigned char* from, size_t count) {
    constexpr size_t kGroupPixels = 16;
    const size_t grouped = count - count % kGroupPixels;
    for (size_t pixel = 0; pixel < grouped; pixel += kGroupPixels) {
        uint32_t group[kGroupPixels];
        std::memcpy(group, from + pixel * kBytesPerPixel, sizeof group);
        // Unrolled, the group stays in registers instead of a round trip through the stack.
#pragma GCC unroll 16
        for (uint32_t& word : group) {
            word = swapRedAndBlue(word);
        }
        std::memcpy(to + pixel * kBytesPerPixel, group, sizeof group);
    }
    convertEachPixel(to + grouped * kBytesPerPixel, from + grouped * kBytesPerPixel,
                     count - grouped);
}

#if defined(__x86_64__)

// Pixels to take one at a time before `pixels` reaches an `alignment`-byte boundary; none when
// the pixels do not lie on 4-byte boundaries, so no whole pixel ever starts at one.
size_t pixelsBeforeBoundary(const unsigned char* pixels, size_t count, size_t alignment) {
    if (reinterpret_cast<uintptr_t>(pixels) % kBytesPerPixel != 0) {
        return 0;
    }
    return std::min(count, bytesToBoundary(pixels, alignment) / kBytesPerPixel);
}

// One byte shuffle per 8 pixels; a pixel never crosses the shuffle's 16-byte lanes. A store
// across two cache lines costs more than such a load, so the stores start at a boundary whenever
// the pixels allow it.
__attribute__((target("avx2"))) void convertAvx2(unsigned char* to, const unsigned char* from,
                                                 size_t count) {
    const __m256i order = _mm256_setr_epi8(2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15, 2,
                                           1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15);
    const size_t head = pixelsBeforeBoundary(to, count, sizeof(__m256i));
    convertEachPixel(to, from, head);
    constexpr size_t kVectorPixels = sizeof(__m256i) / kBytesPerPixel;
    const size_t vectors = (count - head) / kVectorPixels;
    auto* out = reinterpret_cast<__m256i*>(to + head * kBytesPerPixel);
    auto* in = reinterpret_cast<const __m256i*>(from + head * kBytesPerPixel);
    // Two vectors a step: with one, the loop runs at half speed on some CPUs wherever the code
    // happens to lie across an instruction-fetch boundary.
    for (__m256i* const end = out + vectors / 2 * 2; out != end; out += 2, in += 2) {
        const __m256i first = _mm256_loadu_si256(in);
        const __m256i second = _mm256_loadu_si256(in + 1);
        _mm256_storeu_si256(out, _mm256_shuffle_epi8(first, order));
        _mm256_storeu_si256(out + 1, _mm256_shuffle_epi8(second, order));
    }
    if (vectors % 2 != 0) {
        _mm256_storeu_si256(out, _mm256_shuffle_epi8(_mm256_loadu_si256(in), order));
    }
    const size_t vectored = head + vectors * kVectorPixels;
    convertEachPixel(to + vectored * kBytesPerPixel, from + vectored * kBytesPerPixel,
                     count - vectored);
}

bool cpuHasAvx2() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2");
}

constexpr PixelConverter kConverters[] = {
    {"portable", convertPortable, always},
    {"avx2", convertAvx2, cpuHasAvx2},
};

#elif defined(__arm__)

// The armhf baseline has no NEON, so this function alone is built for it; it runs only where the
// CPU reports NEON. 16 pixels a step: the load splits them into four planes, one per byte of a
// pixel, and the store interleaves them again with the first and third planes traded.
__attribute__((target("fpu=neon"))) void convertNeon(unsigned char* to, const unsigned char* from,
                                                     size_t count) {
    constexpr size_t kVectorPixels = 16;
    const size_t vectored = count - count % kVectorPixels;
    for (size_t pixel = 0; pixel < vectored; pixel += kVectorPixels) {
        uint8x16x4_t planes = vld4q_u8(from + pixel * kBytesPerPixel);
        const uint8x16_t blue = planes.val[0];
        planes.val[0] = planes.val[2];
        planes.val[2] = blue;
        vst4q_u8(to + pixel * kBytesPerPixel, planes);
    }
    convertEachPixel(to + vectored * kBytesPerPixel, from + vectored * kBytesPerPixel,
                     count - vectored);
}

bool cpuHasNeon() {
    return (getauxval(AT_HWCAP) & HWCAP_NEON) != 0;
}

constexpr PixelConverter kConverters[] = {
    {"portable", convertPortable, always},
    {"neon", convertNeon, cpuHasNeon},
};

#else

constexpr PixelConverter kConverters[] = {
    {"portable", convertPortable, always},
};

#endif

PixelConversion fastestConversionHere() {
    PixelConversion fastest = convertPortable;
    for (const PixelConverter& converter : kConverters) {
        if (converter.runsHere()) {
            fastest = converter.convert;
        }
    }
    return fastest;
}

// Reads bytes [begin, end) of `file` into the same place in `buffer`. Returns where the data
// ended: short of `end` when the file ends sooner (the TV shortened it) or cannot be read.
size_t readBlock(int file, unsigned char* buffer, size_t begin, size_t end) {
    size_t at = begin;
    while (at < end) {
        const ssize_t got = pread(file, buffer + at, end - at, static_cast<off_t>(at));
        if (got > 0) {
            at += static_cast<size_t>(got);
        } else if (got == 0 || errno != EINTR) {
            break;
        }
    }
    return at;
}

}  // namespace

PixelConverterList pixelConverters() {
    return {kConverters, std::size(kConverters)};
}

PixelConversion chosenPixelConversion() {
    static const PixelConversion chosen = fastestConversionHere();
    return chosen;
}

size_t convertScreenshot(int file, size_t framePixels, unsigned char* buffer) {
    struct stat status {};
    if (fstat(file, &status) != 0 || status.st_size <= 0) {
        return 0;
    }
    const size_t bytes =
        std::min(framePixels, static_cast<size_t>(status.st_size) / kBytesPerPixel) *
        kBytesPerPixel;
    const PixelConversion convert = chosenPixelConversion();
    // How far above its place a block lands for the kernel's copy to be line for line; the
    // conversion moves it down into place while it is cached anyway.
    const size_t lift = bytesToBoundary(buffer, kCacheLineBytes);
    // Read a block, then convert it while it is still cached. The file is read, never mapped: a
    // screenshot the TV shortens meanwhile just ends early, where a mapping would fault.
    for (size_t begin = 0; begin < bytes; begin += kBlockBytes) {
        const size_t end = std::min(begin + kBlockBytes, bytes);
        // Landed lifted, a block covers the start of the next one, which is not converted yet;
        // the last has no room above it in the frame and lands in its place.
        const size_t landing = end + lift <= bytes ? lift : 0;
        const size_t read = readBlock(file, buffer + landing, begin, end);
        const size_t whole = read - (read - begin) % kBytesPerPixel;
        convert(buffer + begin, buffer + begin + landing, (whole - begin) / kBytesPerPixel);
        if (whole < end) {
            return whole / kBytesPerPixel;
        }
    }
    return bytes / kBytesPerPixel;
}

}  // namespace norvane
