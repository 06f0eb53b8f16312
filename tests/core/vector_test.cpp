#include "support/errors.h"
#include "zkit/core/vector.h"

#include <climits>

namespace {

class VectorTest : public OperationTest {};

struct Structure {
    int groups, maxGroups, groupLength, dataSize, dataType, allocated;
    bool operator==(const Structure&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Structure& s)
{
    return out << s.groups << '/' << s.maxGroups << " groups of " << s.groupLength << " x " << s.dataSize << " bytes, "
               << s.dataType << ", " << s.allocated;
}

Structure structureOf(const ZVector& v)
{
    return {v.GetNbGroup(),  v.GetNbMaxGroup(), v.GetGroupLength(),
            v.GetDataSize(), v.GetDataType(),   v.GetAllocatedSize()};
}

TEST_F(VectorTest, types_have_their_structures)
{
    ZVector vector;
    EXPECT_EQ(vector.GetDataPtr(), nullptr);
    EXPECT_EQ(structureOf(vector), (Structure{0, 0, 0, 0, 0, 0}));
    struct {
        int type, a, b;
        Structure expected;
    } const cases[] = {
        {1, 0, 0, {0, 2000, 3, 4, 2, 24000}}, {1, 5, 9, {0, 5, 3, 4, 2, 60}},      {2, 0, 0, {1, 1, 256, 4, 1, 1024}},
        {2, 1, 77, {1, 1, 77, 4, 1, 308}},    {3, 1, 256, {1, 1, 256, 2, 1, 512}}, {4, 6, 3, {6, 6, 3, 4, 1, 72}},
        {7, 5, 0, {5, 5, 1, 4, 1, 20}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(vector.SetType(c.type, c.a, c.b), 0);
        EXPECT_EQ(structureOf(vector), c.expected);
        EXPECT_TRUE(vector.IsSameVectType(c.type));
        EXPECT_NE(vector.GetDataPtr(), nullptr);
    }
    EXPECT_EQ(structureOf(ZVector(2)), (Structure{1, 1, 256, 4, 1, 1024}));
}

TEST_F(VectorTest, a_structure_that_cannot_be_had_changes_nothing)
{
    ZVector vector(2);
    const Structure before = structureOf(vector);
    EXPECT_EQ(vector.SetType(4, INT_MAX, INT_MAX), 1303);
    EXPECT_EQ(vector.SetType(4, -1, 1), 1012);
    EXPECT_EQ(vector.SetType(4, 1, -1), 1013);
    EXPECT_EQ(vector.SetStructure(0, 1, 1, 1), 1011);
    EXPECT_EQ(vector.SetStructure(1, -1, 1, 1), 1012);
    EXPECT_EQ(vector.SetStructure(1, 1, -1, 1), 1013);
    EXPECT_EQ(vector.SetStructure(8, INT_MAX, INT_MAX, 1), 1303);
    EXPECT_EQ(vector.Reallocate(-1), 1011);
    EXPECT_EQ(vector.SetNbGroup(2), 1011);
    EXPECT_EQ(vector.SetNbGroup(-1), 1011);
    ZClearError();
    EXPECT_EQ(structureOf(vector), before);
    EXPECT_EQ(vector.GetVectType(), 2);

    EXPECT_EQ(vector.SetStructure(8, 5, 0, 4), 0);  // groups without elements: empty
    EXPECT_EQ(vector.GetNbGroup(), 0);
    EXPECT_EQ(vector.GetDataPtr(), nullptr);
    EXPECT_EQ(vector.GetVectType(), 2);
}

TEST_F(VectorTest, reallocation_keeps_what_fits)
{
    ZVector vector;
    vector.SetType(4, 3, 2);  // 3 groups of 8 bytes
    auto* data = static_cast<unsigned*>(vector.GetDataPtr());
    for (unsigned i = 0; i < 6; ++i)
        data[i] = i + 1;
    EXPECT_EQ(vector.Reallocate(vector.GetAllocatedSize() + 8), 0);
    data = static_cast<unsigned*>(vector.GetDataPtr());
    EXPECT_EQ(data[5], 6U);
    EXPECT_EQ(data[6], 0U);
    EXPECT_EQ(vector.GetNbGroup(), 3);
    EXPECT_EQ(vector.SetNbGroup(4), 0);
    EXPECT_EQ(vector.Reallocate(12), 0);
    EXPECT_EQ(vector.GetNbGroup(), 1);
    EXPECT_EQ(vector.Reallocate(0), 0);
    EXPECT_EQ(vector.GetDataPtr(), nullptr);
    vector.SetUse(6);
    EXPECT_EQ(vector.GetUse(), 6);
}

}  // namespace
