#include "support/errors.h"

#include <set>
#include <string>

namespace {

class ErrorTest : public OperationTest {};

TEST_F(ErrorTest, a_code_starts_a_trail_and_a_further_code_keeps_it)
{
    EXPECT_EQ(ZTraceError("before"), Z_OK);  // appended although nothing is pending
    EXPECT_EQ(trail(), (Trail{"before"}));
    EXPECT_EQ(ZSetError(Z_ERROR_NO_PIXELS), 1400);
    EXPECT_EQ(trail(), Trail{});
    EXPECT_EQ(ZTraceError("inner"), 1400);
    ZSetError(Z_ERROR_SIZE_MISMATCH);
    EXPECT_EQ(ZTraceError("outer"), 1402);
    EXPECT_FAILURE(1402, "inner", "outer");
    EXPECT_EQ(ZOk(), 0);
}

TEST_F(ErrorTest, the_newest_names_of_a_long_trail_are_kept)
{
    std::vector<std::string> names;
    for (int i = 0; i < 150; ++i)
        names.push_back(std::to_string(i));
    ZSetError(Z_ERROR_UNKNOWN);
    for (const std::string& name : names)
        ZTraceError(name.c_str());
    EXPECT_EQ(trail(), Trail(names.end() - 64, names.end()));
    EXPECT_STREQ(ZGetTrace(-1), "");
    EXPECT_STREQ(ZGetTrace(64), "");
    ZTraceError(nullptr);
    EXPECT_STREQ(ZGetTrace(63), "");
    ZClearError();
    EXPECT_EQ(ZGetTraceCount(), 0);
}

TEST_F(ErrorTest, every_code_has_a_sentence_of_its_own)
{
    const std::string unknown = ZErrorText(1);
    std::set<std::string> sentences;
    int codes = 0;
    for (int code = -32768; code <= 32767; ++code) {
        const std::string sentence = ZErrorText(static_cast<short>(code));
        EXPECT_EQ(sentence.back(), '.');
        if (sentence == unknown)
            continue;
        ++codes;
        sentences.insert(sentence);
    }
    EXPECT_EQ(codes, 48);
    EXPECT_EQ(sentences.size(), 48U);
}

TEST_F(ErrorTest, scopes_nest_and_leave_the_state_around_them_alone)
{
    ZSetError(Z_ERROR_BAD_MODE);
    ZTraceError("shared");
    {
        const ZThreadErrorScope outer;
        EXPECT_EQ(ZGetError(), Z_OK);
        ZSetError(Z_ERROR_NO_PIXELS);
        {
            const ZThreadErrorScope inner;
            EXPECT_EQ(ZGetTraceCount(), 0);
            ZTraceError("inner");
        }
        EXPECT_EQ(ZGetError(), 1400);
        EXPECT_EQ(ZGetTraceCount(), 0);
    }
    EXPECT_FAILURE(1009, "shared");
}

}  // namespace
