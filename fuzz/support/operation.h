// Operations with a destination, called with arguments that a fuzzer's input chooses, and what must hold afterwards
// whatever the arguments are. An operation needs no more than its name, its type and its address.
#pragma once

#include "support/arena.h"
#include "support/workers.h"
#include "zkit/core/error.h"

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string_view>
#include <tuple>

// How one type of argument is chosen. What is no plain value has a specialisation.
template <class A>
class Argument {
public:
    Argument(Input& input, Layout&) : value_(choose(input)) {}

    // For one call, whose regions lie in the arena.
    A in(Arena&) const { return value_; }

private:
    static A choose(Input& input)
    {
        if constexpr (std::is_same_v<A, float>)
            return input.real();
        else if constexpr (std::is_same_v<A, ZColor>)
            return {input.real(), input.real(), input.real()};
        else if constexpr (sizeof(A) == sizeof(int))
            return input.integer<A>();
        else
            return input.take<A>();
    }

    A value_;
};

template <class T>
class Argument<ZROI<T>*> {
public:
    Argument(Input& input, Layout& layout) : index_(layout.add<T>(input)) {}
    ZROI<T>* in(Arena& arena) const { return arena.region<T>(index_); }

private:
    std::size_t index_;
};

// What a pending error means to an operation: it stops it, it stops it but unusable regions are reported in its place,
// or the operation works in spite of it.
enum class Pending { stops, replaced, ignored };

// A call of an operation whose last region is its destination.
struct Call {
    const char* name;
    Layout layout;
    std::vector<std::uint8_t> bytes;  // of the buffer, before
    Z_ERRORS pending;                 // the error that is pending before, if any
    Pending meaning;                  // of the pending error
    Workers packed;                   // to be tried beside the plain ones
    bool packedAgrees;                // with the plain ones
    std::function<short(Arena&)> run;

    std::size_t destination() const { return layout.regions().size() - 1; }
};

struct Outcome {
    short returned, code;
    std::vector<std::string_view> trail;
    std::vector<std::uint8_t> bytes;
};

inline Outcome outcome(const Call& call, const Layout& layout, std::span<const std::uint8_t> before,
                       const Workers& workers)
{
    use(workers);
    const ZThreadErrorScope errors;
    if (call.pending != Z_OK)
        ZSetError(call.pending);
    Arena arena(layout, before);
    const short returned = call.run(arena);
    const auto after = arena.bytes();
    Outcome result{returned, ZGetError(), {}, {after.begin(), after.end()}};
    for (int i = 0; i < ZGetTraceCount(); ++i)
        result.trail.emplace_back(ZGetTrace(i));
    return result;
}

// Copies the pixels of a region to where another layout has it.
inline void copyRegion(std::size_t region, const Layout& from, std::span<const std::uint8_t> source, const Layout& to,
                       std::span<std::uint8_t> target)
{
    std::vector<std::uint8_t*> rows;
    to.forRows(region, [&](std::ptrdiff_t offset, std::ptrdiff_t) { rows.push_back(target.data() + offset); });
    auto row = rows.begin();
    from.forRows(region, [&](std::ptrdiff_t offset, std::ptrdiff_t count) {
        std::copy_n(source.begin() + offset, count, *row++);
    });
}

// The buffer as it is when the operation has written the given pixels and nothing else.
inline std::vector<std::uint8_t> withDestination(const Call& call, const Layout& layout,
                                                 std::span<const std::uint8_t> written)
{
    std::vector<std::uint8_t> bytes = call.bytes;
    copyRegion(call.destination(), layout, written, call.layout, bytes);
    return bytes;
}

inline void require(bool condition, const Call& call, const char* fault)
{
    if (condition)
        return;
    const char* const sets[] = {"plain", "sse2", "avx2"};
    std::fprintf(stderr, "%s with %s workers %s\n", call.name, sets[static_cast<int>(zkit::chosenSet())], fault);
    call.layout.print();
    std::abort();
}

// Whether the operation has done its work, which errors do not prevent that report pixels divided by zero, or a map
// that leads outside, where the work ends.
inline bool finished(const Call& call, const Outcome& result)
{
    if (call.pending != Z_OK)
        return call.meaning == Pending::ignored && result.code == call.pending;
    return result.code == Z_OK || result.code == Z_ERROR_DIVISION_BY_ZERO_PIXEL || result.code == Z_ERROR_OUTSIDE_IMAGE;
}

inline Outcome checkedOutcome(const Call& call, const Workers& workers)
{
    Outcome result = outcome(call, call.layout, call.bytes, workers);
    require(result.returned == result.code, call, "returns another code than it raises");
    const bool ofRegions = result.code == Z_ERROR_NO_PIXELS || result.code == Z_ERROR_SIZE_MISMATCH;
    const bool mayReplace = call.meaning == Pending::ignored || (call.meaning == Pending::replaced && ofRegions);
    require(call.pending == Z_OK || result.code == call.pending || mayReplace, call, "loses a pending error");
    if (finished(call, result)) {
        for (std::size_t i = 0; i < call.layout.regions().size(); ++i)
            require(call.layout.usable(i), call, "takes a region that it cannot use");
        require(result.bytes == withDestination(call, call.layout, result.bytes), call,
                "writes outside the destination");
    } else
        require(result.bytes == call.bytes, call, "writes in spite of an error");
    return result;
}

inline void check(const Call& call)
{
    const Outcome plain = checkedOutcome(call, {});
    if (finished(call, plain)) {
        const Layout apart = call.layout.apart();
        std::vector<std::uint8_t> before(apart.size());
        for (std::size_t i = 0; i < apart.regions().size(); ++i)
            copyRegion(i, call.layout, call.bytes, apart, before);
        const Outcome separate = outcome(call, apart, before, {});
        require(separate.code == plain.code && separate.trail == plain.trail, call,
                "raises something else than between separate regions");
        require(plain.bytes == withDestination(call, apart, separate.bytes), call,
                "gives other pixels than between separate regions");
    }
    const Outcome packed = checkedOutcome(call, call.packed);
    require(packed.code == plain.code && packed.trail == plain.trail, call,
            "raises something else than with plain ones");
    require(packed.bytes == plain.bytes || !call.packedAgrees, call, "gives other pixels than with plain ones");
}

// An operation whose arguments are yet to be chosen.
struct Operation {
    const char* name;
    std::function<void(const char* name, Input& input)> fuzz;
};

template <class Signature>
struct Fuzzed;

template <class Result, class... A>
struct Fuzzed<Result(A...)> {
    using Agrees = bool(A...);

    Result (*function)(A...);
    Pending meaning;
    Agrees* packedAgrees;

    void operator()(const char* name, Input& input) const
    {
        Layout layout(input);
        const std::tuple<Argument<A>...> arguments{Argument<A>(input, layout)...};
        // The last one would not tell an operation that works in spite of it from one that raises it.
        const Z_ERRORS errors[] = {Z_ERROR_BAD_MODE, Z_ERROR_DIVISION_BY_ZERO_PIXEL, Z_ERROR_SIZE_MISMATCH};
        const int last = meaning == Pending::ignored ? 1 : 2;
        const Z_ERRORS pending = input.oneIn(16) ? errors[input.number(0, last)] : Z_OK;
        const Workers packed = packedWorkers(input);
        std::vector<std::uint8_t> bytes(layout.size());
        input.fill(bytes);

        const auto with = [&arguments](auto* called, Arena& arena) {
            return std::apply([&](const auto&... a) { return called(a.in(arena)...); }, arguments);
        };
        const auto run = [this, with](Arena& arena) {
            if constexpr (std::is_same_v<Result, short>)
                return with(function, arena);
            else {
                with(function, arena);
                return ZGetError();
            }
        };
        Arena arena(layout, bytes);
        check({name, layout, bytes, pending, meaning, packed, !packedAgrees || with(packedAgrees, arena), run});
    }
};

// @param packedAgrees  says for the arguments of a call whether both kinds of workers must give the same pixels; else
//                      they always must.
template <class Signature>
Operation operation(const char* name, Signature* function, Pending meaning = Pending::stops,
                    typename Fuzzed<Signature>::Agrees* packedAgrees = nullptr)
{
    return {name, Fuzzed<Signature>{function, meaning, packedAgrees}};
}
