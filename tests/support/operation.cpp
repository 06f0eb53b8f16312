#include "support/operation.h"

namespace {

// Copies the pixels of a region to where another layout has it.
void copyRegion(std::size_t region, const Layout& from, std::span<const std::uint8_t> source, const Layout& to,
                std::span<std::uint8_t> target)
{
    std::vector<std::uint8_t*> rows;
    to.forRows(region, [&](std::ptrdiff_t offset, std::ptrdiff_t) { rows.push_back(target.data() + offset); });
    auto row = rows.begin();
    from.forRows(region, [&](std::ptrdiff_t offset, std::ptrdiff_t count) {
        std::copy_n(source.begin() + offset, count, *row++);
    });
}

// The buffer as it is when the operation has written the given pixels of its last region and nothing else.
std::vector<std::uint8_t> withDestination(const Call& call, const Layout& layout, std::span<const std::uint8_t> written)
{
    std::vector<std::uint8_t> bytes = call.bytes;
    if (!layout.regions().empty())
        copyRegion(layout.regions().size() - 1, layout, written, call.layout, bytes);
    return bytes;
}

class Check {
public:
    Check(const Operation& operation, Input& input)
        : operation_(operation),
          pending_(anyError(input)),
          workers_(input.number(1, 4)),
          call_(operation.choose(input, Regions::any))
    {
    }

    void run()
    {
        const Outcome plain = alone(0), packed = alone(workers_);
        if (call_.same == Same::beyond)
            return;
        require(packed.code == plain.code && packed.trail == plain.trail, "raises something else than with plain ones");
        if (call_.same != Same::whereverItLies)
            require(packed.bytes == plain.bytes && packed.results == plain.results && packed.value == plain.value,
                    "gives other pixels than with plain ones");
        if (!finished(plain) || !usable() || call_.same == Same::withAllWorkers)
            return;
        const Layout apart = call_.layout.apart();
        std::vector<std::uint8_t> before(apart.size());
        for (std::size_t i = 0; i < apart.regions().size(); ++i)
            copyRegion(i, call_.layout, call_.bytes, apart, before);
        const Outcome separate = outcomeOf(call_, apart, before, 0, pending_);
        require(separate.code == plain.code && separate.trail == plain.trail,
                "raises something else than between separate regions");
        require(plain.bytes == withDestination(call_, apart, separate.bytes),
                "gives other pixels than between separate regions");
    }

private:
    // The last one would not tell an operation that works in spite of it from one that raises it.
    Z_ERRORS anyError(Input& input) const
    {
        const Z_ERRORS errors[] = {Z_ERROR_BAD_MODE, Z_ERROR_DIVISION_BY_ZERO_PIXEL, Z_ERROR_SIZE_MISMATCH};
        return input.oneIn(16) ? errors[input.number(0, operation_.pending == Pending::ignored ? 1 : 2)] : Z_OK;
    }

    void require(bool condition, const char* fault) const
    {
        if (!condition)
            throw std::logic_error(std::string(operation_.name) + " with workers " + std::to_string(usedWorkers_) +
                                   ' ' + fault + '\n' + call_.layout.text());
    }

    // Whether the operation has done its work, which errors do not prevent that report pixels divided by zero or
    // positions outside.
    bool finished(const Outcome& result) const
    {
        if (pending_ != Z_OK)
            return operation_.pending == Pending::ignored && result.code == pending_;
        return result.code == Z_OK || result.code == Z_ERROR_DIVISION_BY_ZERO_PIXEL ||
               result.code == Z_ERROR_OUTSIDE_IMAGE || result.code == Z_ERROR_PATH_LIMIT;
    }

    // Whether all regions are, which some operations do not need for doing nothing.
    bool usable() const
    {
        for (std::size_t i = 0; i < call_.layout.regions().size(); ++i)
            if (!call_.layout.usable(i))
                return false;
        return true;
    }

    // What the call does where its regions lie, with one kind of workers.
    Outcome alone(int workers)
    {
        usedWorkers_ = workers;
        Outcome result = outcomeOf(call_, call_.layout, call_.bytes, workers, pending_);
        require(!call_.returnsCode || std::memcmp(result.value.data(), &result.code, sizeof result.code) == 0,
                "returns another code than it raises");
        require(result.code == Z_OK || result.code >= Z_ERROR_BAD_OPERATION, "raises what is no code");
        require(pending_ == Z_OK || result.code == pending_ ||
                    (operation_.pending != Pending::stops && result.code != Z_OK),
                "loses a pending error");
        if (call_.same == Same::beyond && finished(result))
            return result;
        const bool works = finished(result) && usable();
        require(result.bytes == (works ? withDestination(call_, call_.layout, result.bytes) : call_.bytes),
                works ? "writes outside the destination" : "writes in spite of an error");
        return result;
    }

    const Operation& operation_;
    Z_ERRORS pending_;
    int workers_, usedWorkers_ = 0;
    Call call_;
};

}  // namespace

Outcome outcomeOf(const Call& call, const Layout& layout, std::span<const std::uint8_t> before, int workers,
                  Z_ERRORS pending)
{
    useWorkers(workers);
    const ZThreadErrorScope errors;
    Arena arena(layout, before, call.same != Same::beyond);
    call.invocation->prepare(arena);
    ZClearError();
    if (pending != Z_OK)
        ZSetError(pending);
    Outcome outcome{};
    call.invocation->run(outcome);
    outcome.code = ZGetError();
    for (int i = 0; i < ZGetTraceCount(); ++i)
        outcome.trail.emplace_back(ZGetTrace(i));
    const auto after = arena.bytes();
    outcome.bytes.assign(after.begin(), after.end());
    return outcome;
}

void checkOperation(const Operation& operation, Input& input) { Check(operation, input).run(); }
