// Damage to long values that the checker must find.
#include "jet/check/check_long_values.h"

#include <gtest/gtest.h>

#include "tests/jet/check/damaged_file.h"

namespace stelvan::jet {
namespace {

TEST_F(CheckDamage, ALongValueOfAnotherLength) {
    load("gem.mdb");
    const WritableBytes reference = longValueReference(table("secs_cusvar"), long_value::kSingle);
    reference[0] = static_cast<std::uint8_t>(reference[0] + 1);
    expectFault("a long value");
}

TEST_F(CheckDamage, ALongValueThatWasDeleted) {
    load("gem.mdb");
    const WritableBytes reference = longValueReference(table("secs_cusvar"), long_value::kSingle);
    setSlotFlags(readReference(reference).first, data_page::kDeleted);
    expectFault("a long value that is still in use was deleted.");
}

TEST_F(CheckDamage, AChainWithAnotherStamp) {
    load("shapes/long_memo.mdb");
    const WritableBytes reference = longValueReference(onlyTable(), long_value::kChain);
    putU32(reference, long_value::kStamp, u32At(reference, long_value::kStamp) + 1);
    expectFault("stamp is not that of its first page.");
}

TEST_F(CheckDamage, AChainThatEndsEarly) {
    load("shapes/long_memo.mdb");
    const WritableBytes reference = longValueReference(onlyTable(), long_value::kChain);
    putU32(reference, long_value::kLengthAndKind, u32At(reference, long_value::kLengthAndKind) + 5);
    expectFault("a long value ends too early.");
}

}  // namespace
}  // namespace stelvan::jet
