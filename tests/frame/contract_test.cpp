// What every operation does with regions that it cannot use and with an error that is pending.
#include "support/errors.h"
#include "support/operation.h"

#include <set>

namespace {

class ContractTest : public OperationTest {};

Outcome ordinaryOutcome(const Operation& operation, Regions regions, Z_ERRORS pending = Z_OK)
{
    Input zeros(nullptr, 0);
    const Call call = operation.choose(zeros, regions);
    const Outcome outcome = outcomeOf(call, call.layout, call.bytes, 1, pending);
    if (outcome.code != Z_OK) {
        EXPECT_EQ(outcome.bytes, call.bytes);
    }
    return outcome;
}

TEST_F(ContractTest, unusable_regions_are_refused)
{
    for (const Operation& operation : operations())
        for (const auto& [regions, code] : {std::pair{Regions::null, 1400},
                                            {Regions::empty, 1400},
                                            {Regions::withoutImage, 1400},
                                            {Regions::outside, 1401},
                                            {Regions::backwards, 1401}}) {
            Input zeros(nullptr, 0);
            const std::string name = operation.name;
            const bool madeFromSize = name == "ImgWarp" || name == "ImgWarp (C24)" || name == "ImgRecursiveAverage";
            if (operation.choose(zeros, regions).layout.regions().empty() || name == "ZMovingAverage::Average" ||
                (madeFromSize && regions == Regions::backwards))
                continue;
            const bool same = name.ends_with("TopHat") && regions == Regions::withoutImage;  // one for both regions
            SCOPED_TRACE(testing::Message() << operation.name << ", regions " << static_cast<int>(regions));
            const Outcome outcome = ordinaryOutcome(operation, regions);
            EXPECT_EQ(outcome.code, same ? 1413 : code);
            const bool mixed = name.find("C24 Image to C24 Image)") != std::string::npos ||
                               name.find("BW8 Image to C24 Image)") != std::string::npos;
            if (!mixed || code != 1400) {  // grey and colour together tell no name then
                ASSERT_FALSE(outcome.trail.empty());
                EXPECT_EQ(outcome.trail.back(), operation.name);
            }
            EXPECT_TRUE(outcome.results == outcome.before || operation.pending == Pending::ignored);  // or 0
        }
}

TEST_F(ContractTest, a_pending_error_stops_operations)
{
    for (const Operation& operation : operations()) {
        SCOPED_TRACE(operation.name);
        Input zeros(nullptr, 0);
        const Outcome outcome = ordinaryOutcome(operation, Regions::any, Z_ERROR_BAD_MODE);
        EXPECT_NE(outcome.code, 0);
        if (operation.pending == Pending::ignored) {
            const Outcome without = ordinaryOutcome(operation, Regions::any);
            EXPECT_EQ(outcome.results, without.results);
            EXPECT_EQ(outcome.bytes, without.bytes);
            EXPECT_TRUE(outcome.value == without.value || operation.choose(zeros, Regions::any).returnsCode);
        } else
            EXPECT_EQ(outcome.results, outcome.before);
        if (operation.pending == Pending::stops && operation.name != std::string("ZMovingAverage::Average")) {
            EXPECT_EQ(outcome.code, 1009);
            EXPECT_EQ(outcome.trail, Trail{operation.name});
        }
    }
}

// The arguments are those that are ordinary for most: no thresholds between equal bounds, no operator of two operands.
bool refusesOrdinaryArguments(const std::string& name)
{
    const auto operation = name.substr(0, name.find(' '));
    return std::set<std::string>{"ImgAnalyseHistogram",   "ImgContour",       "ImgHistogramThreshold",
                                 "ImgIsodataThreshold",   "ImgScaleRotate",   "ImgOper",
                                 "ImgLineSegmentToImage", "ImgSetupEqualize", "ZMovingAverage::Average"}
               .count(operation) > 0;
}

TEST_F(ContractTest, operations_succeed_silently)
{
    for (const Operation& operation : operations()) {
        SCOPED_TRACE(operation.name);
        const Outcome outcome = ordinaryOutcome(operation, Regions::any);
        EXPECT_TRUE(outcome.code == 0 || refusesOrdinaryArguments(operation.name)) << outcome.code;
        const bool silent = outcome.trail.empty() || outcome.trail == Trail{"ImgPixelStdDev"};  // its own always
        EXPECT_TRUE(outcome.code != 0 || operation.pending == Pending::ignored || silent);
    }
}

}  // namespace
