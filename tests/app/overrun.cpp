// Writes past the end of its memory, which has to end it: what the build of the program protects from.

#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace {

/// Copies with the library, which knows how much fits in.
[[gnu::noinline]] char copyPast(const char *text, std::size_t length)
{
    char place[8];
    std::memcpy(place, text, length);
    return place[length % sizeof place];
}

/// Writes by itself, over what lies on the stack behind.
[[gnu::noinline]] char writePast(std::size_t length)
{
    volatile char place[8];
    for (std::size_t i = 0; i < length; ++i)
        place[i] = 'x';
    return place[length % sizeof place];
}

/// Takes more of the stack than the page that guards its end.
[[gnu::noinline]] char reachFar(std::size_t length)
{
    volatile char place[64 * 1024];
    place[length] = 'x';
    return place[length];
}

} // namespace

/// Usage: overrun copy|write|reach TEXT
int main(int argc, char **argv)
{
    if (argc != 3)
        return EXIT_FAILURE;
    const std::size_t length = std::strlen(argv[2]);
    char last = 0;
    if (std::strcmp(argv[1], "copy") == 0)
        last = copyPast(argv[2], length);
    else if (std::strcmp(argv[1], "write") == 0)
        last = writePast(length);
    else
        last = reachFar(length);
    return last == argv[2][0] ? EXIT_SUCCESS : EXIT_FAILURE;
}
