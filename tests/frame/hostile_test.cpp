// Every operation with arguments that nobody should give it: it ends in a code or in a defined result, the same with
// all workers and wherever its regions lie, and the sanitizers see nothing.
#include "support/errors.h"
#include "support/images.h"
#include "support/operation.h"

void useWorkers(int choice) { ZSetMMX(choice != 0); }

namespace {

class HostileTest : public OperationTest {};

TEST_F(HostileTest, every_operation_ends_in_a_code_or_a_result)
{
    Random random(66);
    for (const Operation& operation : operations())
        for (int round = 0; round < 300; ++round) {
            SCOPED_TRACE(testing::Message() << operation.name << " round " << round);
            std::vector<std::uint8_t> bytes(128);
            for (std::uint8_t& byte : bytes)
                byte = static_cast<std::uint8_t>(random(0, 255));
            Input input(bytes.data(), bytes.size());
            EXPECT_NO_THROW(checkOperation(operation, input));
        }
    ZSetMMX(1);
}

}  // namespace
