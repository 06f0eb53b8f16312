#include "support/errors.h"
#include "zkit/img/vectors.h"

#include <climits>

namespace {

class TypedVectorTest : public OperationTest {};

TEST_F(TypedVectorTest, capacity_doubles_from_one)
{
    ZBW8Vector vector;
    EXPECT_EQ(vector.GetDataPtr(), nullptr);
    const unsigned capacities[] = {1, 2, 4, 4, 8};
    for (unsigned i = 0; i < 5; ++i) {
        vector.AddElement(static_cast<ZBW8>(10 * i));
        EXPECT_EQ(vector.GetMaxElements(), capacities[i]);
    }
    vector.SetMaxElements(5);
    EXPECT_EQ(vector.GetNumElements(), 5U);
    vector.AddElementByRef(vector[4]);  // from the storage that growing releases
    EXPECT_EQ(vector[5], 40);
    vector.SetMaxElements(2);  // below the count: emptied, not cut
    EXPECT_EQ(vector.GetNumElements(), 0U);
    EXPECT_EQ(vector.GetMaxElements(), 2U);
}

TEST_F(TypedVectorTest, growing_the_count_discards_the_elements)
{
    ZBW8Vector vector(4);
    for (const int value : {1, 2, 3})
        vector.AddElement(static_cast<ZBW8>(value));
    vector.SetNumElements(2);
    EXPECT_EQ(vector[1], 2);
    EXPECT_EQ(vector.GetMaxElements(), 4U);
    vector.SetNumElements(10);
    EXPECT_EQ(vector.GetNumElements(), 10U);
    EXPECT_EQ(vector.GetMaxElements(), 10U);
}

TEST_F(TypedVectorTest, an_index_outside_gives_the_librarys_own_element)
{
    ZBW8Vector vector(1), other;
    vector.AddElement(5);
    ZBW8& nowhere = vector[1];
    EXPECT_FAILURE(1011, "ZVector::operator[]");
    nowhere = 77;
    EXPECT_EQ(&other[0], &nowhere);
    EXPECT_EQ(other[UINT_MAX], 77);
    ZClearError();
    EXPECT_EQ(vector[0], 5);
}

TEST_F(TypedVectorTest, assignment_takes_the_storage_over)
{
    ZBW8Vector from(3), to;
    from.AddElement(9);
    const ZBW8* data = from.GetDataPtr();
    to = from;
    EXPECT_EQ(to.GetDataPtr(), data);
    EXPECT_EQ(to.GetMaxElements(), 3U);
    EXPECT_EQ(from.GetDataPtr(), nullptr);
    EXPECT_EQ(from.GetMaxElements(), 0U);
}

TEST_F(TypedVectorTest, a_pending_error_stops_only_growth)
{
    ZBW8Vector vector(1);
    ZSetError(Z_ERROR_BAD_MODE);
    vector.AddElement(1);
    EXPECT_EQ(vector.GetNumElements(), 1U);
    vector.AddElement(2);
    EXPECT_EQ(vector.GetNumElements(), 1U);
    EXPECT_EQ(vector.GetMaxElements(), 2U);
    vector.AddElementByRef(vector[0]);
    EXPECT_EQ(vector.GetNumElements(), 2U);
    EXPECT_FAILURE(1009, "ZVector::AddElement");
}

TEST_F(TypedVectorTest, elements_of_every_type_are_copied_whole)
{
    ZBW16Vector words(1, 7);
    ZBW32Vector ints;
    ZC24Vector colours(2);
    words.AddElement(0xABCD);
    ints.AddElement(0x89ABCDEF);
    colours.AddElement({1, 2, 3});
    EXPECT_EQ(words.GetUse(), 7);
    EXPECT_EQ(words[0], 0xABCD);
    EXPECT_EQ(ints[0], 0x89ABCDEF);
    EXPECT_EQ(colours[0].c2, 3);
    EXPECT_EQ(colours.GetMaxElements(), 2U);
}

}  // namespace
