// Statements over model files: order of rows, lookups against scans, and odd but legal spellings.
#include "sql/engine.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "jet/rows/value_text.h"
#include "sql/error.h"
#include "tests/support/models.h"

namespace stelvan::sql {
namespace {

class OpenModel {
public:
    explicit OpenModel(const std::string& name)
        : database_(jet::Database::open(scratch_.copyOf(test::model(name)))), engine_(database_) {}

    /// Rows as texts joined by bars.
    std::vector<std::string> rows(const std::string& sql) {
        const Selection selection = engine_.select(sql);
        std::vector<std::string> lines;
        if (const auto* computed = std::get_if<ComputedRows>(&selection)) {
            for (const auto& row : computed->rows) lines.push_back(line(row));
        } else {
            const auto& places = std::get<RowPlaces>(selection);
            for (const jet::RowId place : places.places) lines.push_back(line(places, place));
        }
        return lines;
    }
    Selection select(const std::string& sql) { return engine_.select(sql); }
    std::int64_t execute(const std::string& sql) { return engine_.execute(sql); }

private:
    static std::string line(const std::vector<jet::Value>& row) {
        std::string text;
        for (const jet::Value& value : row) text += (text.empty() ? "" : "|") + jet::textOf(value);
        return text;
    }
    std::string line(const RowPlaces& rows, jet::RowId place) {
        const auto cursor = database_.table(rows.table).row(place, rows.columns);
        std::vector<jet::Value> values;
        for (const std::size_t column : rows.columns)
            values.push_back(jet::toValue(cursor->value(column)));
        return line(values);
    }

    test::ScratchDir scratch_;
    jet::Database database_;
    Engine engine_;
};

using Lines = std::vector<std::string>;

TEST(Engine, ALookupFindsWhatAScanFinds) {
    OpenModel file("gem.mdb");
    const Lines names = file.rows("SELECT var_name FROM secs_cusvar");
    for (std::size_t at = 0; at < names.size(); at += 7) {
        if (names[at].find('\'') != std::string::npos || names[at].empty()) continue;
        const std::string literal = "'" + names[at] + "'";
        const Lines found = file.rows("SELECT var_id FROM secs_cusvar WHERE var_name = " + literal);
        // A list is never looked up but scanned for.
        EXPECT_EQ(found,
                  file.rows("SELECT var_id FROM secs_cusvar WHERE var_name IN (" + literal + ")"));
        EXPECT_FALSE(found.empty()) << names[at];
    }
}

TEST(Engine, RowsWithoutAnOrderComeAsTheyAreStored) {
    OpenModel file("gem_large.mdb");
    for (const char* sql :
         {"select * from secs_cusvar where var_type = 'SV'", "secs_rpt_var",
          "select * from secs_rpt_var where rpt_id = 1500",
          "select * from secs_cusvar where var_id = 15000 or var_id = 10100 or var_id = 12000",
          "select * from secs_cusvar where var_id in (15000, 10100, 12000)"}) {
        const Selection selection = file.select(sql);
        const auto& places = std::get<RowPlaces>(selection).places;
        EXPECT_FALSE(places.empty()) << sql;
        EXPECT_TRUE(std::is_sorted(places.begin(), places.end())) << sql;
    }
}

TEST(Engine, EqualKeysOfAnOrderStayInStoredOrder) {
    OpenModel file("gem_large.mdb");
    const Selection selection = file.select("select * from secs_cusvar order by var_type");
    const auto& places = std::get<RowPlaces>(selection).places;
    const Lines types = file.rows("SELECT var_type FROM secs_cusvar ORDER BY var_type");
    ASSERT_EQ(places.size(), types.size());
    for (std::size_t at = 1; at < places.size(); ++at) {
        if (types[at] != types[at - 1]) continue;
        ASSERT_LT(places[at - 1], places[at]) << at;
    }
}

TEST(Engine, AnIncompleteKeyOfACompoundIndexFindsAllItsRowsInStoredOrder) {
    OpenModel file("gem.mdb");
    const Lines all = file.rows("SELECT var_id FROM var_limit");
    ASSERT_EQ(all.size(), 18U);
    const auto expected = std::count(all.begin(), all.end(), all.front());
    const Selection selection =
        file.select("SELECT * FROM var_limit WHERE var_id = " + all.front());
    const auto& places = std::get<RowPlaces>(selection).places;
    EXPECT_EQ(static_cast<std::ptrdiff_t>(places.size()), expected);
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
}

TEST(Engine, JoinsTakeEachOthersIdentifiersWhateverTheirTypes) {
    OpenModel file("gem_int_flags.mdb");
    const Lines comma = file.rows(
        "SELECT e.evt_id, r.rpt_id FROM secs_def_evt_rpt e, secs_report r WHERE e.rpt_id = "
        "r.rpt_id ORDER BY e.evt_id, r.rpt_id");
    const Lines inner = file.rows(
        "SELECT e.evt_id, r.rpt_id FROM secs_def_evt_rpt AS e INNER JOIN secs_report AS r ON "
        "e.rpt_id = r.rpt_id ORDER BY e.evt_id, r.rpt_id");
    EXPECT_EQ(comma, inner);
    EXPECT_EQ(comma.size(), 124U);  // one link names a report that does not exist
}

TEST(Engine, FlagsAreMinusOneAndZeroToSql) {
    OpenModel file("gem.mdb");
    EXPECT_EQ(file.rows("SELECT MIN(evt_enable), MAX(evt_enable) FROM secs_cusevent"),
              Lines{"-1|0"});
    EXPECT_TRUE(file.rows("SELECT evt_id FROM secs_cusevent WHERE evt_enable = 1").empty());
    const auto set = file.rows("SELECT evt_id FROM secs_cusevent WHERE evt_enable = True").size();
    const auto clear = file.rows("SELECT evt_id FROM secs_cusevent WHERE evt_enable = 0").size();
    EXPECT_EQ(set + clear, 70U);
}

TEST(Engine, NullMatchesNeitherEqualNorUnequal) {
    OpenModel file("gem.mdb");
    EXPECT_EQ(file.rows("SELECT var_id FROM secs_cusvar WHERE var_unit IS NULL AND var_id = 253"),
              Lines{"253"});
    EXPECT_TRUE(
        file.rows("SELECT var_id FROM secs_cusvar WHERE var_id = 253 AND var_unit <> 'x'").empty());
    EXPECT_TRUE(
        file.rows("SELECT var_id FROM secs_cusvar WHERE var_id = 253 AND var_unit = ''").empty());
}

TEST(Engine, LikeUsesPercentAndUnderscore) {
    OpenModel file("gem.mdb");
    const Lines all =
        file.rows("SELECT set_field FROM secs_setting WHERE set_field LIKE 'connection%'");
    EXPECT_FALSE(all.empty());
    for (const std::string& field : all) EXPECT_EQ(field.find("Connection"), 0U);
}

TEST(Engine, StatementsReportHowManyRowsTheyChanged) {
    OpenModel file("gem.mdb");
    EXPECT_EQ(file.execute("UPDATE secs_cusevent SET evt_group = 'x' WHERE evt_enable = True OR "
                           "evt_enable = False"),
              70);
    EXPECT_EQ(file.execute("DELETE * FROM secs_def_evt_rpt WHERE evt_id = 162"), 12);
    EXPECT_EQ(file.execute("INSERT INTO secs_def_evt_rpt VALUES (162, 126, 1)"), 1);
    EXPECT_EQ(file.execute("INSERT INTO secs_def_evt_rpt SELECT evt_id, 110, 2 FROM "
                           "secs_def_evt_rpt WHERE evt_id = "
                           "162"),
              1);
    EXPECT_EQ(file.rows("SELECT * FROM secs_def_evt_rpt WHERE evt_id = 162"),
              (Lines{"162|126|1", "162|110|2"}));
}

TEST(Engine, AColumnThatAnUpdateDoesNotNameKeepsItsExactValue) {
    OpenModel file("gem.mdb");
    const Lines before =
        file.rows("SELECT var_name, var_desc, var_max FROM secs_cusvar WHERE var_id = 255");
    EXPECT_EQ(file.execute("UPDATE secs_cusvar SET var_unit = 'mm' WHERE var_id = 255"), 1);
    EXPECT_EQ(file.rows("SELECT var_name, var_desc, var_max FROM secs_cusvar WHERE var_id = 255"),
              before);
}

TEST(Engine, ColumnsAreNamedAsTheFileSpellsThemAndExpressionsByTheirPlace) {
    OpenModel file("gem.mdb");
    const Selection selection = file.select(
        "SELECT r.RPT_NAME, COUNT(*), MAX(e.rpt_order) AS last FROM secs_report r, "
        "secs_def_evt_rpt e WHERE "
        "r.rpt_id = e.rpt_id GROUP BY r.rpt_name");
    EXPECT_EQ(std::get<ComputedRows>(selection).columns, (Lines{"rpt_name", "Expr1001", "last"}));
}

TEST(Engine, WhatIsNoStatementOfAccessIsRefused) {
    OpenModel file("gem.mdb");
    const auto kind = [&file](const std::string& sql) {
        try {
            (void)file.rows(sql);
        } catch (const Error& error) {
            return error.kind();
        }
        return ErrorKind::Engine;
    };
    EXPECT_EQ(kind("SELECT evt_id FROM secs_cusevent LIMIT 1"), ErrorKind::Syntax);
    EXPECT_EQ(kind("SELECT rowid FROM secs_cusevent"), ErrorKind::UnknownColumn);
    EXPECT_EQ(kind("SELECT evt_id FROM secs_cusevent WHERE evt_id = ?"), ErrorKind::Syntax);
    EXPECT_EQ(kind("SELECT nothing(evt_id) FROM secs_cusevent"), ErrorKind::UnknownFunction);
    EXPECT_EQ(kind("SELECT rpt_id FROM secs_report, secs_def_evt_rpt"), ErrorKind::AmbiguousColumn);
    EXPECT_EQ(kind("DELETE FROM secs_report"), ErrorKind::NotAStatement);
    EXPECT_EQ(kind("SELECT evt_id FROM"), ErrorKind::Syntax);
    EXPECT_EQ(kind("SELECT evt_id FROM secs_cusevent WHERE evt_id = 1 evt_name"),
              ErrorKind::Syntax);
}

TEST(Engine, SyntaxErrorsNameTheExpressionOrTheClause) {
    OpenModel file("gem.mdb");
    const auto text = [&file](const std::string& sql) -> std::string {
        try {
            (void)file.execute(sql);
        } catch (const Error& error) {
            return error.what();
        }
        return "";
    };
    EXPECT_EQ(text("DELETE FROM secs_alarm WHERE alm_id = 1 x"),
              "Syntax error (missing operator) in query expression 'alm_id = 1 x'.");
    EXPECT_EQ(text("DELETE FROM secs_alarm WHERE alm_name = 'it"),
              "Syntax error in string in query expression 'alm_name = 'it'.");
    EXPECT_EQ(text("UPDATE secs_alarm SET alm_name 'x'"), "Syntax error in UPDATE statement.");
    EXPECT_EQ(text("INSERT INTO secs_alarm alm_id 5"), "Syntax error in INSERT INTO statement.");
    EXPECT_EQ(text("SELECT alm_id FROM secs_alarm,"), "Syntax error in FROM clause.");
}

}  // namespace
}  // namespace stelvan::sql
