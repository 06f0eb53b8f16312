// Operations that are called with arguments of an input's choice, and what must hold afterwards whatever they are. An
// operation needs no more than its name, its type and its address.
#pragma once

#include "support/arguments.h"
#include "zkit/core/error.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <tuple>

// What a pending error means to an operation: it stops it, it stops it but an error of the arguments is reported in its
// place, or the operation works in spite of it.
enum class Pending { stops, replaced, ignored };

// Where a call must give the same pixels: with all workers and wherever its regions lie, and nothing but those of the
// last region may change; or it may reach beyond its regions.
enum class Same { everywhere, withAllWorkers, whereverItLies, beyond };

struct Outcome {
    short code;
    std::vector<std::string> trail;
    std::vector<std::uint8_t> before, results;  // of references
    std::vector<std::uint8_t> value, bytes;     // that is returned, and of the regions' buffer
};

struct Call {
    Layout layout;
    std::vector<std::uint8_t> bytes;  // of the buffer, before
    Same same;
    bool returnsCode;
    std::function<std::function<void(Outcome&)>(Arena&)> prepare;  // makes the arguments
};

struct Operation {
    const char* name;  // the last one of the trail
    Pending pending;
    std::function<Call(Input& input, Regions regions)> choose;
};

// Every operation of the library, in every one of its forms.
const std::vector<Operation>& operations();

// From now on operations use the plain workers, for choice 0, or other ones. Defined by each program.
void useWorkers(int choice);

// Calls with workers of a choice and a pending error, if any, when the regions lie as a layout says.
Outcome outcomeOf(const Call& call, const Layout& layout, std::span<const std::uint8_t> before, int workers,
                  Z_ERRORS pending = Z_OK);

// Calls an operation with arguments of the input's choice. Throws what is wrong.
void checkOperation(const Operation& operation, Input& input);

template <class Signature>
struct Chosen;

template <class Result, class... A>
struct Chosen<Result(A...)> {
    using Where = Same(A...);

    Result (*function)(A...);
    Where* same;

    Call operator()(Input& input, Regions regions) const
    {
        Layout layout(input, regions);
        auto arguments =
            std::make_shared<std::tuple<Argument<A>...>>(std::tuple<Argument<A>...>{Argument<A>(input, layout)...});
        std::vector<std::uint8_t> bytes(layout.size());
        input.fill(bytes);
        const auto prepare = [arguments, called = function](Arena& arena) {
            auto values = std::apply([&](auto&... a) { return std::tuple<A...>{a.in(arena)...}; }, *arguments);
            return [arguments, values, called](Outcome& outcome) mutable {
                const auto append = [&values](std::vector<std::uint8_t>& to) {
                    std::apply([&](auto&... value) { (appendReference<A>(to, value), ...); }, values);
                };
                append(outcome.before);
                if constexpr (std::is_void_v<Result>)
                    std::apply(called, values);
                else {
                    const Result value = std::apply(called, values);
                    appendReference<const Result&>(outcome.value, value);
                }
                append(outcome.results);
            };
        };
        Arena arena(layout, bytes, false);
        const Same where =
            same ? std::apply([&](auto&... a) { return same(a.in(arena)...); }, *arguments) : Same::everywhere;
        return {layout, bytes, where, std::is_same_v<Result, short>, prepare};
    }

    template <class T, class Value>
    static void appendReference(std::vector<std::uint8_t>& bytes, Value& value)
    {
        if constexpr (std::is_reference_v<T>)
            bytes.insert(bytes.end(), reinterpret_cast<const std::uint8_t*>(&value),
                         reinterpret_cast<const std::uint8_t*>(&value + 1));
    }
};

// @param same  says for the arguments of a call where it must give the same pixels; else everywhere.
template <class Signature>
Operation operation(const char* name, Signature* function, Pending pending = Pending::stops,
                    typename Chosen<Signature>::Where* same = nullptr)
{
    return {name, pending, Chosen<Signature>{function, same}};
}
