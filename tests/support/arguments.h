// Arguments of any type, as an input chooses them: by default a number, an enumeration or a colour.
#pragma once

#include "support/arena.h"
#include "zkit/color.h"
#include "zkit/img.h"

// An argument is chosen once, and prepared for each of several calls, whose regions lie in an arena.
template <class A>
class Argument {
public:
    Argument(Input& input, Layout&) : value_(choose(input)) {}
    void prepare(Arena&) {}
    A value() const { return value_; }

    static A choose(Input& input)
    {
        if constexpr (std::is_same_v<A, float>)
            return input.real();
        else if constexpr (std::is_same_v<A, ZColor>)
            return {input.real(), input.real(), input.real()};
        else if constexpr (std::is_same_v<A, ARITH_LOGIC_OPERATIONS>)
            return static_cast<A>(input.oneIn(16) ? input.take<int>() : (input.number(0, 34) + 2) % 35);
        else if constexpr (std::is_enum_v<A>)
            return static_cast<A>(input.oneIn(16) ? input.take<int>() : (input.number(0, 15) + 7) % 16 - 6);
        else if constexpr (sizeof(A) == sizeof(int))
            return input.integer<A>();
        else
            return input.take<A>();
    }

private:
    A value_;
};

// Results.
template <class A>
class Argument<A&> {
public:
    Argument(Input& input, Layout&) : before_(Argument<A>::choose(input)) {}
    void prepare(Arena&) { value_ = before_; }
    A& value() { return value_; }

private:
    A before_, value_{};
};

template <class T>
class Argument<ZROI<T>*> {
public:
    Argument(Input& input, Layout& layout) : index_(layout.add<T>(input)) {}
    void prepare(Arena& arena) { region_ = arena.region<T>(index_); }
    ZROI<T>* value() const { return region_; }

private:
    std::size_t index_;
    ZROI<T>* region_ = nullptr;
};

// Objects in the caller's hands, which calls may change: made anew for each. Some are null.
template <class T>
class MadeArgument {
public:
    MadeArgument(Input& input, const Layout& layout) : from_(input), layout_(layout) { make(input); }

    void prepare(Arena&)
    {
        Input input(from_);
        make(input);
    }

    T* value() const { return object_.get(); }

private:
    void make(Input& input)
    {
        object_ = input.oneIn(32) ? nullptr : std::make_unique<T>();
        if (object_)
            fill(*object_, input, layout_);
        ZClearError();  // of the making
    }

    Input from_;
    Layout layout_;
    std::unique_ptr<T> object_;
};

template <class T>
requires std::is_class_v<T>
class Argument<T*> : public MadeArgument<T> {
    using MadeArgument<T>::MadeArgument;
};

// Mostly of the sizes that tables and histograms have.
template <class T>
void fillElements(ZVectorTemplate<T>& vector, Input& input, unsigned ordinary)
{
    const unsigned counts[] = {ordinary, 0, 1, 2, 255, 256, 257, 8191};
    vector.SetNumElements(counts[std::max(input.number(0, 31) - 24, 0)]);
    if (vector.GetNumElements() > 0)
        input.fill({reinterpret_cast<std::uint8_t*>(vector.GetDataPtr()), vector.GetNumElements() * sizeof(T)});
    const int mask = input.oneIn(4) ? -1 : 7;
    if constexpr (requires(T element) { element.X; })
        for (unsigned i = 0; i < vector.GetNumElements(); ++i) {
            vector[i].X = static_cast<short>(vector[i].X & mask);
            vector[i].Y = static_cast<short>(vector[i].Y & mask);
        }
}

template <class T>
void fill(ZVectorTemplate<T>& vector, Input& input, const Layout&)
{
    fillElements(vector, input, 256);
}

// A table of averages.
inline void fill(ZBW16Vector& vector, Input& input, const Layout&)
{
    if (input.oneIn(2))
        ImgSetRecursiveAverageLUT(&vector, input.real(), input.real());
    else
        fillElements(vector, input, 8191);
}

// A table of 256 bytes, or any structure.
inline void fill(ZVector& vector, Input& input, const Layout&)
{
    constexpr int types[] = {3, 0, 1, 2, 4};
    vector.SetType(types[input.number(0, 4)], 1, 256);
    if (input.oneIn(8))
        vector.SetStructure(input.number(1, 8), input.number(0, 3), input.number(0, 257), input.number(0, 4));
    if (input.oneIn(8))
        vector.Reallocate(input.number(0, 40));
    if (vector.GetDataPtr())
        input.fill(
            {static_cast<std::uint8_t*>(vector.GetDataPtr()), static_cast<std::size_t>(vector.GetAllocatedSize())});
}

// Kernels up to 9 x 9 with numbers of all kinds, some without enough coefficients.
inline void fill(ZKernel& kernel, Input& input, const Layout&)
{
    const auto size = static_cast<short>((input.number(0, 9) + 3) % 10);
    kernel.SetSizeX(size);
    kernel.SetSizeY(input.oneIn(4) ? static_cast<short>(input.number(-1, 9)) : size);
    for (unsigned i = 0; i < kernel.GetAllocatedSize() / sizeof(float); ++i)
        kernel.GetDataPtr()[i] = input.real();
    kernel.SetGain(input.real());
    kernel.SetOffset(input.integer<unsigned>());
    kernel.SetRectifier(static_cast<short>(input.number(-1, 4)));
    kernel.SetOutsideValue(input.integer<unsigned>());
    if (input.oneIn(16))
        kernel.SetSizeX(static_cast<short>(-size));
}

// A map with elements that often lie in the source. Once in a while it is of another size than the regions, or
// misplaced.
template <class T>
void fill(ZImage<T>& map, Input& input, const Layout& layout)
{
    const int kind = input.number(0, 31);
    const Layout::Region like = layout.regions().empty() ? Layout::Region{} : layout.regions().back();
    const int width = std::clamp(like.width, 0, 200), height = std::clamp(like.height, 0, 200);
    map.SetSize(width + (kind > 26), height + (kind > 28));
    const bool near = input.oneIn(2);
    for (int y = 0; y < map.GetHeight(); ++y)
        for (int x = 0; x < map.GetWidth(); ++x) {
            const auto any = input.take<unsigned>();
            const unsigned sourceX = any % static_cast<unsigned>(std::max(width, 1) + near),
                           sourceY = (any >> 16) % static_cast<unsigned>(std::max(height, 1) + near);
            map.SetPixel(static_cast<T>(sizeof(T) == 2 ? any % 64 - near : sourceX | sourceY << 16), x, y);
        }
    if (kind == 26)
        map.SetPlacement(input.number(-2, 2), input.number(-2, 2), width, height);
}

// It has no choices.
inline void fill(ZColorLookup&, Input&, const Layout&) {}

// Functions of the caller's.
template <class Pixel>
class Argument<int (*)(Pixel&)> {
public:
    Argument(Input& input, Layout&) : isNull_(input.oneIn(8)) {}
    void prepare(Arena&) {}
    auto value() const
    {
        return isNull_ ? nullptr : +[](Pixel&) { return 1; };
    }

private:
    bool isNull_;
};

template <>
class Argument<ZBW8 (*)(ZBW8)> {
public:
    using Function = ZBW8 (*)(ZBW8);

    Argument(Input& input, Layout&) : choice_(input.number(0, 3)) {}

    void prepare(Arena&) { callsSoFar = 0; }

    Function value() const
    {
        static constexpr Function functions[] = {
            [](ZBW8 level) { return static_cast<ZBW8>(level * 7 + 3); },
            [](ZBW8 level) { return static_cast<ZBW8>(level ^ ++callsSoFar); },  // tells in which order it is called
            [](ZBW8 level) {
                ZSetError(Z_ERROR_DIVISION_BY_ZERO_PIXEL);
                return level;
            },
            nullptr};
        return functions[choice_];
    }

private:
    inline static thread_local ZBW8 callsSoFar;
    int choice_;
};
