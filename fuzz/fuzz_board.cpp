// Opens the input as the file of a board.
#include "fuzz/boarddrill.h"
#include "fuzz/fuzzing.h"
#include "storage/boarddocument.h"
#include "storage/boardfile.h"

#include <QGraphicsItem>

#include <utility>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    BoardFileContents contents = readDocument(fileWith(data, size));
    if (contents.status == BoardFileContents::Status::Read)
        drillBoard(itemsOf(std::move(contents.document)));
    return 0;
}
