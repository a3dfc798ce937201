// What the update check allows the server.
#pragma once

#include <chrono>

/// How long the update server may take for its whole answer. A variable only for its test, which
/// cannot wait that long.
inline std::chrono::milliseconds serverPatience = std::chrono::seconds(30);
