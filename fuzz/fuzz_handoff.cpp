// Reads the input as what somebody says to the local socket.
#include "app/handoffmessage.h"
#include "fuzz/fuzzing.h"

#include <QDir>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto whole = HandoffMessage::read(bytes);
    const bool complete = whole.status == HandoffMessage::Status::Complete;
    require(complete || whole.boardPath.isEmpty(), "only a complete message names a board");
    require(whole.boardPath.isEmpty() || QDir::isAbsolutePath(whole.boardPath),
            "a board is named by its path");
    require(!complete || HandoffMessage::write(whole.boardPath) == bytes,
            "a message says nothing but its path");
    require(bytes.size() <= HandoffMessage::longest
                || whole.status == HandoffMessage::Status::Foreign,
            "what is too long is refused");
    // As the bytes come in: what is once refused stays refused, and a message is heard once.
    for (qsizetype part = 0; part < bytes.size(); ++part) {
        const auto status = HandoffMessage::read(bytes.first(part)).status;
        require(status != HandoffMessage::Status::Complete
                    || whole.status == HandoffMessage::Status::Foreign,
                "a message has one end");
        if (status == HandoffMessage::Status::Foreign) {
            require(whole.status == HandoffMessage::Status::Foreign, "what is refused stays so");
            break;
        }
    }
    return 0;
}
