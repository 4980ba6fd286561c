#include "db/error_map.h"

#include <gtest/gtest.h>

namespace stelvan::db {
namespace {

base::RunTimeError mapped(jet::ErrorKind kind, const std::string& subject,
                          Through through = Through::Statement) {
    return asProviderError(jet::Error(kind, "Detail.").about(subject), through);
}

TEST(ErrorMap, FileFailuresNameTheFile) {
    const base::RunTimeError missing = mapped(jet::ErrorKind::FileNotFound, "/x/gem.mdb");
    EXPECT_EQ(missing.number(), -2147467259);
    EXPECT_STREQ(missing.what(), "Could not find file '/x/gem.mdb'.");
    EXPECT_STREQ(mapped(jet::ErrorKind::NotADatabase, "/x").what(),
                 "Unrecognized database format '/x'.  Detail.");
    EXPECT_EQ(mapped(jet::ErrorKind::PasswordProtected, "/x").number(), -2147217843);
    EXPECT_STREQ(mapped(jet::ErrorKind::Locked, "/x").what(),
                 "Could not use '/x'; file already in use.");
    EXPECT_STREQ(mapped(jet::ErrorKind::Corrupt, "").what(), "Detail.");
}

TEST(ErrorMap, ADuplicateKeyHasTheWellKnownSentence) {
    const base::RunTimeError error = mapped(jet::ErrorKind::DuplicateKey, "");
    EXPECT_EQ(error.number(), -2147467259);
    EXPECT_EQ(std::string(error.what())
                  .find("The changes you requested to the table were not successful"),
              0U);
}

TEST(ErrorMap, AFewNumbersDifferThroughARecordSet) {
    EXPECT_EQ(mapped(jet::ErrorKind::ReadOnly, "").number(), -2147467259);
    EXPECT_EQ(mapped(jet::ErrorKind::ReadOnly, "", Through::RecordSet).number(), -2147217911);
    EXPECT_EQ(mapped(jet::ErrorKind::NullInRequired, "T.x", Through::RecordSet).number(),
              -2147217887);
}

TEST(ErrorMap, StatementsHaveTheirOwnNumbers) {
    EXPECT_EQ(asProviderError(sql::Error(sql::ErrorKind::Syntax, "s")).number(), -2147217900);
    EXPECT_EQ(asProviderError(sql::Error(sql::ErrorKind::UnknownTable, "s")).number(), -2147217865);
    EXPECT_EQ(asProviderError(sql::Error(sql::ErrorKind::UnknownColumn, "s")).number(),
              -2147217904);
    EXPECT_EQ(asProviderError(sql::Error(sql::ErrorKind::TypeMismatch, "s")).number(), -2147217913);
}

TEST(ErrorMap, WhatTheFloorsBelowThrowIsTranslatedAndTheRestIsNot) {
    const auto failing = [] {
        return translated(Through::Statement,
                          []() -> int { throw jet::Error(jet::ErrorKind::RowGone, "gone"); });
    };
    EXPECT_THROW(failing(), base::RunTimeError);
    EXPECT_THROW(translated(Through::Statement, [] { throw std::bad_alloc(); }), std::bad_alloc);
}

}  // namespace
}  // namespace stelvan::db
