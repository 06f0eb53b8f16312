// Which workers a call uses. In fuzzers this takes the place of the library's own choice (simd/choice.cpp,
// simd/stores.cpp), which follows the processor and the size of images: every instruction set that the processor has,
// and both ways to store, are to be tried with small images.
#pragma once

#include "simd/choice.h"
#include "simd/stores.h"
#include "support/input.h"

struct Workers {
    zkit::InstructionSet set = zkit::InstructionSet::plain;
    zkit::Stores stores = zkit::Stores::cached;
};

// Any packed ones.
Workers packedWorkers(Input& input);

// From now on operations use these.
void use(const Workers& workers);
