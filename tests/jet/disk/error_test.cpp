#include "jet/disk/error.h"

#include <gtest/gtest.h>

namespace stelvan::jet {
namespace {

TEST(JetError, OfAKindThatSaysAllNamesItsSubject) {
    const Error error = Error::of(ErrorKind::NoSuchTable, "secs_gemvar");
    EXPECT_EQ(error.kind(), ErrorKind::NoSuchTable);
    EXPECT_EQ(error.subject(), "secs_gemvar");
    EXPECT_STREQ(error.what(), "secs_gemvar: no such table.");
    EXPECT_FALSE(error.page());
}

TEST(JetError, CarriesADetailAndThePageWhereTheEngineKnowsThem) {
    const Error error =
        Error(ErrorKind::Corrupt, "Page 7 is damaged: it is no data page.", 7).about("gem.mdb");
    EXPECT_STREQ(error.what(), "Page 7 is damaged: it is no data page.");
    EXPECT_EQ(error.subject(), "gem.mdb");
    EXPECT_EQ(error.page(), 7u);
}

}  // namespace
}  // namespace stelvan::jet
