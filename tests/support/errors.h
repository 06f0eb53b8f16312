// What tests of error handling share.
#pragma once

#include "zkit/core/error.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// The trail, innermost name first.
inline std::vector<std::string> trail()
{
    std::vector<std::string> names;
    for (int i = 0; i < ZGetTraceCount(); ++i)
        names.emplace_back(ZGetTrace(i));
    return names;
}

using Trail = std::vector<std::string>;

// The pending code and the trail, cleared.
struct Failure {
    short code;
    Trail trail;
};

inline Failure takeFailure()
{
    Failure failure{ZGetError(), trail()};
    ZClearError();
    return failure;
}

#define EXPECT_FAILURE(expectedCode, ...)                                                                              \
    do {                                                                                                               \
        const Failure failure = takeFailure();                                                                         \
        EXPECT_EQ(failure.code, expectedCode);                                                                         \
        EXPECT_EQ(failure.trail, (Trail{__VA_ARGS__}));                                                                \
    } while (false)

// Starts and ends without an error.
class OperationTest : public testing::Test {
protected:
    void SetUp() override { ZClearError(); }
    void TearDown() override
    {
        EXPECT_EQ(ZGetError(), Z_OK) << "left pending";
        ZClearError();
    }
};
