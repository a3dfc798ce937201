// What the sources ask at each place of theirs that can be changed, when all mutants are built as one
// program. The environment says which mutant it is to be, PLUMARA_MUTANT; none with 0 or without it.
// In the file that PLUMARA_REACHED names, a byte for each mutant tells whether its place was reached.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <sys/mman.h>
#include <sys/stat.h>
#include <type_traits>
#include <unistd.h>
#include <utility>

namespace mutants {

inline constexpr int most = 65536;
inline unsigned char unheard[most] = {};
inline constinit unsigned char *reached = unheard;
inline constinit int chosen = 0;

// Before anything else of the program, since constants are changed as well.
[[gnu::constructor(101), gnu::used]] inline void begin()
{
    const char *const number = std::getenv("PLUMARA_MUTANT");
    const char *const name = std::getenv("PLUMARA_REACHED");
    chosen = number ? std::atoi(number) : 0;
    if (!name || reached != unheard)
        return;
    const int file = ::open(name, O_RDWR | O_CLOEXEC);
    if (file == -1)
        return;
    struct stat state = {};
    if (::fstat(file, &state) == 0 && state.st_size >= most) {
        void *const shared = ::mmap(nullptr, most, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (shared != MAP_FAILED)
            reached = static_cast<unsigned char *>(shared);
    }
    ::close(file);
}

// Whether the program is the mutant n.
inline bool is(int n)
{
    reached[n] = 1;
    return n == chosen;
}

// The mutant would not have been compiled; the byte of mutant 0, which there is not, says so.
[[noreturn]] inline void impossible()
{
    reached[0] = 1;
    std::_Exit(EXIT_FAILURE);
}

// In the place of "a < b" stands "a < Operator<...>() < b": it binds what it stands between as the
// operator did that is changed. After the function that it is without a mutant come the mutants.
template <typename Function, int n, typename Other, int n2 = 0, typename Other2 = Function>
struct Operator
{ };

template <typename Left, typename Sign> struct Half
{
    Left &&left;
};

template <typename Result, int n, typename Other, typename Left, typename Right>
Result instead(Left &&left, Right &&right)
{
    if constexpr (requires {
                      static_cast<Result>(
                          Other()(std::forward<Left>(left), std::forward<Right>(right)));
                  })
        return static_cast<Result>(Other()(std::forward<Left>(left), std::forward<Right>(right)));
    else
        impossible();
}

template <typename Function, int n, typename Other, int n2, typename Other2, typename Left,
          typename Right>
decltype(auto) apply(Operator<Function, n, Other, n2, Other2>, Left &&left, Right &&right)
{
    using Result = decltype(Function()(std::forward<Left>(left), std::forward<Right>(right)));
    if (n != 0 && is(n))
        return instead<Result, n, Other>(std::forward<Left>(left), std::forward<Right>(right));
    if (n2 != 0 && is(n2))
        return instead<Result, n2, Other2>(std::forward<Left>(left), std::forward<Right>(right));
    return static_cast<Result>(Function()(std::forward<Left>(left), std::forward<Right>(right)));
}

#define PLUMARA_INFIX(sign) \
    template <typename Left, typename F, int n, typename O, int n2, typename O2> \
    auto operator sign(Left &&left, Operator<F, n, O, n2, O2>) \
    { \
        return Half<Left, Operator<F, n, O, n2, O2>>{std::forward<Left>(left)}; \
    } \
    template <typename Left, typename Sign, typename Right> \
    decltype(auto) operator sign(Half<Left, Sign> half, Right &&right) \
    { \
        return apply(Sign(), std::forward<Left>(half.left), std::forward<Right>(right)); \
    }
PLUMARA_INFIX(==)
PLUMARA_INFIX(<)
PLUMARA_INFIX(+)
PLUMARA_INFIX(*)
#undef PLUMARA_INFIX

struct PlusAssign
{
    template <typename Left, typename Right>
    auto operator()(Left &&left, Right &&right) const
        -> decltype(left += std::forward<Right>(right))
    {
        return left += std::forward<Right>(right);
    }
};

struct MinusAssign
{
    template <typename Left, typename Right>
    auto operator()(Left &&left, Right &&right) const
        -> decltype(left -= std::forward<Right>(right))
    {
        return left -= std::forward<Right>(right);
    }
};

// These bind from the right: "a += Operator<...>() += b".
template <typename F, int n, typename O, int n2, typename O2, typename Right>
auto operator+=(Operator<F, n, O, n2, O2>, Right &&right)
{
    return Half<Right, Operator<F, n, O, n2, O2>>{std::forward<Right>(right)};
}
template <typename Left, typename Right, typename Sign>
decltype(auto) operator+=(Left &&left, Half<Right, Sign> half)
{
    return apply(Sign(), std::forward<Left>(left), std::forward<Right>(half.left));
}

// "Not<n>() ->* a" and "Minus<n>() ->* a" bind tighter than all that stands between two values.
template <int n> struct Not
{ };
template <int n, typename Value> bool operator->*(Not<n>, Value &&value)
{
    return is(n) ? static_cast<bool>(value) : !value;
}

template <int n> struct Minus
{ };
template <int n, typename Value> auto operator->*(Minus<n>, Value &&value)
{
    using Result = decltype(-value);
    return is(n) ? static_cast<Result>(value) : static_cast<Result>(-value);
}

template <int n, bool smaller> struct Limit
{
    template <typename Value> static Value call(const Value &a, const Value &b)
    {
        return is(n) != smaller ? std::min(a, b) : std::max(a, b);
    }
    template <typename Value> static Value call(std::initializer_list<Value> values)
    {
        return is(n) != smaller ? std::min(values) : std::max(values);
    }
    // As qMin() and qMax() take values of two types.
    template <typename A, typename B>
        requires(!std::is_same_v<A, B>)
    static auto call(const A &a, const B &b)
    {
        using Value = std::common_type_t<A, B>;
        return call<Value>(a, b);
    }
};
template <int n> using Min = Limit<n, true>;
template <int n> using Max = Limit<n, false>;

} // namespace mutants

// "std::min" becomes "std::mutants::Min<n>::call".
namespace std::mutants {
using namespace ::mutants;
}
