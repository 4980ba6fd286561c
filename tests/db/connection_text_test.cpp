#include <gtest/gtest.h>

#include "db/connection.h"

namespace stelvan::db {
namespace {

TEST(ConnectionTextTest, TheModeMayStandBeforeThePath) {
    const auto text = ConnectionText::parse(
        "Provider=Microsoft.Jet.OLEDB.4.0;Persist Security Info=False; Mode=Read|Write;Data "
        "Source=/home/u/gem.mdb");
    EXPECT_EQ(text.provider, "Microsoft.Jet.OLEDB.4.0");
    EXPECT_EQ(text.dataSource, "/home/u/gem.mdb");
    EXPECT_TRUE(text.readable);
    EXPECT_TRUE(text.writable);
}

TEST(ConnectionTextTest, TheModeMayStandAfterThePath) {
    const auto text = ConnectionText::parse(
        "Provider=Microsoft.Jet.OLEDB.4.0;Persist Security Info=False;Data Source=/home/u/gem.mdb; "
        "Mode=Read|Write");
    EXPECT_EQ(text.dataSource, "/home/u/gem.mdb");
    EXPECT_TRUE(text.writable);
}

TEST(ConnectionTextTest, ThePathIsTakenAsItIs) {
    EXPECT_EQ(ConnectionText::parse("Data Source= /a;b/~x/gem.mdb ").dataSource,
              " /a;b/~x/gem.mdb ");
    EXPECT_EQ(ConnectionText::parse("Data Source=\"/q/gem.mdb\"").dataSource, "\"/q/gem.mdb\"");
    EXPECT_EQ(ConnectionText::parse("Data Source=/a; Mode=b/gem.mdb; Mode=Read").dataSource,
              "/a; Mode=b/gem.mdb");
    EXPECT_EQ(ConnectionText::parse("Data Source=/Mode=Read/gem.mdb").dataSource,
              "/Mode=Read/gem.mdb");
}

TEST(ConnectionTextTest, KeysCompareWithoutLetterCase) {
    const auto text = ConnectionText::parse("PROVIDER=p;DATA SOURCE=/x/gem.mdb; MODE=read");
    EXPECT_EQ(text.provider, "p");
    EXPECT_EQ(text.dataSource, "/x/gem.mdb");
    EXPECT_TRUE(text.readable);
    EXPECT_FALSE(text.writable);
}

TEST(ConnectionTextTest, WithoutAModeBothAreAsked) {
    const auto text = ConnectionText::parse("Provider=p");
    EXPECT_TRUE(text.readable);
    EXPECT_TRUE(text.writable);
    EXPECT_EQ(text.dataSource, "");
}

}  // namespace
}  // namespace stelvan::db
