// Operations that are called with arguments of an input's choice, and what must hold afterwards whatever they are. An
// operation needs no more than its name, its type and its address.
#pragma once

#include "support/arguments.h"
#include "zkit/core/error.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

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

    bool operator==(const Outcome&) const = default;
};

// An operation with its arguments.
class Invocation {
public:
    virtual ~Invocation() = default;
    virtual void prepare(Arena& arena) = 0;  // makes the arguments
    virtual void run(Outcome& outcome) = 0;
};

struct Call {
    Layout layout;
    std::vector<std::uint8_t> bytes;  // of the buffer, before
    Same same;
    bool returnsCode;
    std::shared_ptr<Invocation> invocation;
};

struct Operation {
    using Function = void (*)();  // of another type in truth

    const char* name;  // the last one of the trail
    Pending pending;
    Function function, same;
    Call (*chooseCall)(const Operation& operation, Input& input, Regions regions);

    Call choose(Input& input, Regions regions) const { return chooseCall(*this, input, regions); }
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

template <class T>
void appendReference(std::vector<std::uint8_t>& bytes, const std::remove_reference_t<T>& value)
{
    if constexpr (std::is_reference_v<T>)
        bytes.insert(bytes.end(), reinterpret_cast<const std::uint8_t*>(&value),
                     reinterpret_cast<const std::uint8_t*>(&value + 1));
}

// The place of an argument among those of a call.
template <std::size_t index, class A>
struct Place {
    Argument<A> argument;
};

template <class Indices, class Result, class... A>
class InvocationOf;

template <std::size_t... i, class Result, class... A>
class InvocationOf<std::index_sequence<i...>, Result, A...> : public Invocation, Place<i, A>... {
public:
    InvocationOf(Input& input, Layout& layout, Result (*function)(A...))
        : Place<i, A>{Argument<A>(input, layout)}..., function_(function)
    {
    }

    void prepare(Arena& arena) override { (Place<i, A>::argument.prepare(arena), ...); }

    void run(Outcome& outcome) override
    {
        (appendReference<A>(outcome.before, Place<i, A>::argument.value()), ...);
        if constexpr (std::is_void_v<Result>)
            function_(Place<i, A>::argument.value()...);
        else
            appendReference<const Result&>(outcome.value, function_(Place<i, A>::argument.value()...));
        (appendReference<A>(outcome.results, Place<i, A>::argument.value()), ...);
    }

    Same where(Same (*same)(A...)) { return same(Place<i, A>::argument.value()...); }

private:
    Result (*function_)(A...);
};

// The forms that operations have.
template <class Signature>
struct Form;

template <class Result, class... A>
struct Form<Result(A...)> {
    using Where = Same(A...);

    static Call choose(const Operation& operation, Input& input, Regions regions)
    {
        using Made = InvocationOf<std::index_sequence_for<A...>, Result, A...>;
        Layout layout(input, regions);
        const auto function = reinterpret_cast<Result (*)(A...)>(operation.function);
        const std::shared_ptr<Made> made(new Made(input, layout, function));
        std::vector<std::uint8_t> bytes(layout.size());
        input.fill(bytes);
        Same same = Same::everywhere;
        if (operation.same) {
            Arena arena(layout, bytes, false);
            made->prepare(arena);
            same = made->where(reinterpret_cast<Where*>(operation.same));
        }
        return {layout, bytes, same, std::is_same_v<Result, short>, made};
    }
};

// @param same  says for the arguments of a call where it must give the same pixels; else everywhere.
template <class Signature>
Operation operation(const char* name, Signature* function, Pending pending = Pending::stops,
                    typename Form<Signature>::Where* same = nullptr)
{
    return {name, pending, reinterpret_cast<Operation::Function>(function), reinterpret_cast<Operation::Function>(same),
            Form<Signature>::choose};
}
