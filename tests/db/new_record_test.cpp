// What a new record starts from, and what the file's own rules refuse.
#include <gtest/gtest.h>

#include "tests/db/gem_file.h"

namespace stelvan::db {
namespace {

using test::failureOf;

TEST(NewRecord, StartsFromTheColumnsDefaultsElseNull) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records("select * from secs_cusvar");
    records->addNew();
    EXPECT_EQ(toText(records->field("var_parentkey")), "0");
    EXPECT_EQ(toText(records->field("var_accessid")), "0");
    EXPECT_FALSE(toFlag(records->field("var_allowduplicates")));
    EXPECT_TRUE(jet::isNull(records->field("var_name")));
    records->setField("var_id", Value(std::string("9500")));
    records->update();
    EXPECT_EQ(file.column("SELECT var_parentkey FROM secs_cusvar WHERE var_id = 9500"),
              std::vector<std::string>{"0"});
}

TEST(NewRecord, WithoutDefaultsInTheFileItStartsEmpty) {
    STELVAN_GEM_FILE("gem_int_flags.mdb");
    const auto records = file.records("select * from secs_cusvar");
    records->addNew();
    for (std::size_t field = 0; field < records->fieldCount(); ++field) {
        EXPECT_TRUE(jet::isNull(records->field(field))) << records->fieldName(field);
    }
}

TEST(NewRecord, WithoutAnIdentifierItIsRefusedAndStaysPending) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records("select * from secs_cusvar");
    records->addNew();
    const base::RunTimeError error = failureOf([&] { records->update(); });
    EXPECT_EQ(error.number(), -2147217887);
    EXPECT_EQ(std::string(error.what()).find("Index or primary key cannot contain a Null value."),
              0U);
    EXPECT_TRUE(records->editPending());
}

TEST(NewRecord, AnAutoNumberIsGivenByTheFile) {
    STELVAN_GEM_FILE("shapes/compressed_text.mdb");
    const auto records = file.records("select * from [Table]");
    const std::int32_t before = records->recordCount();
    records->moveLast();
    const int last = std::stoi(toText(records->field("ID")));
    records->addNew();
    EXPECT_TRUE(jet::isNull(records->field("ID")));
    records->update();
    EXPECT_GT(std::stoi(toText(records->field("ID"))), last);
    EXPECT_EQ(file.records("select * from [Table]")->recordCount(), before + 1);
}

TEST(NewRecord, AnEmptyTextIsRefusedWhereTheColumnForbidsIt) {
    STELVAN_GEM_FILE("shapes/text_index_empty.mdb");
    const auto records = file.records("select * from Table1");
    records->addNew();
    records->setField("col1", Value(std::string()));
    const base::RunTimeError throughRecords = failureOf([&] { records->update(); });
    EXPECT_EQ(throughRecords.number(), -2147217887);
    EXPECT_STREQ(throughRecords.what(), "Field 'Table1.col1' cannot be a zero-length string.");
    const base::RunTimeError throughSql =
        failureOf([&] { file.execute("INSERT INTO Table1 (col1) VALUES ('')"); });
    EXPECT_EQ(throughSql.number(), -2147467259);
    EXPECT_STREQ(throughSql.what(), "Field 'Table1.col1' cannot be a zero-length string.");
}

}  // namespace
}  // namespace stelvan::db
