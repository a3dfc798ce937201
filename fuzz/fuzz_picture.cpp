// Puts the input on a board as a picture file.
#include "board/picturefile.h"
#include "fuzz/boarddrill.h"
#include "fuzz/fuzzing.h"
#include "items/resizablepixmapitem.h"

#include <QPixmapCache>

#include <utility>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // The toolkit takes a file of the same name, size and second for the same picture.
    QPixmapCache::clear();
    const QPixmap picture = readPicture(fileWith(data, size));
    if (!picture.isNull()) {
        std::vector<std::unique_ptr<QGraphicsItem>> items;
        items.push_back(std::make_unique<ResizablePixmapItem>(picture));
        drillBoard(std::move(items));
    }
    return 0;
}
