// Puts the input on a board as a picture file.
#include "board/picturefile.h"
#include "fuzz/boarddrill.h"
#include "fuzz/fuzzing.h"
#include "items/resizablepixmapitem.h"

#include <QByteArrayView>
#include <QtEndian>

#include <utility>

// Of libFuzzer; there is none when files are replayed.
extern "C" [[gnu::weak]] size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t largest);
extern "C" size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t largest,
                                          unsigned int seed);

namespace {

uint32_t wordAt(const uint8_t *bytes)
{
    return qFromBigEndian<uint32_t>(bytes);
}

/// The checksum that ends each chunk of a PNG file.
uint32_t checksum(const uint8_t *bytes, size_t size)
{
    uint32_t sum = ~0U;
    for (const uint8_t *byte = bytes; byte != bytes + size; ++byte) {
        sum ^= *byte;
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum & 1U) != 0 ? 0xedb88320U ^ (sum >> 1U) : sum >> 1U;
    }
    return ~sum;
}

/// Gives each chunk of a PNG file its right checksum: the decoder stops at the first wrong one.
void sealChunks(uint8_t *data, size_t size)
{
    constexpr size_t signature = 8;
    constexpr size_t word = 4;
    size_t begin = signature;
    while (begin + 3 * word <= size) {
        const size_t length = wordAt(data + begin);
        const size_t end = begin + 2 * word + length;
        if (end + word > size)
            return;
        qToBigEndian(checksum(data + begin + word, word + length), data + end);
        begin = end + word;
    }
}

} // namespace

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t largest,
                                          unsigned int /*seed*/)
{
    size = LLVMFuzzerMutate(data, size, largest);
    if (QByteArrayView(data, static_cast<qsizetype>(size)).startsWith("\x89PNG"))
        sealChunks(data, size);
    return size;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QPixmap picture = readPicture(fileWith(data, size));
    if (!picture.isNull()) {
        std::vector<std::unique_ptr<QGraphicsItem>> items;
        items.push_back(std::make_unique<ResizablePixmapItem>(picture));
        drillBoard(std::move(items));
    }
    return 0;
}
