// What a save writes, and what a display makes of it.
#include "gem/stored.h"

#include <gtest/gtest.h>

namespace stelvan::gem {
namespace {

using enum Control;

std::string written(const Record& record) {
    std::string all;
    for (const ColumnValue& column : columnsOf(record)) {
        all.append(column.column).append("=");
        if (const auto* number = std::get_if<std::int32_t>(&column.value)) {
            all.append("#").append(std::to_string(*number));
        } else {
            all.append("'").append(std::get<std::string>(column.value)).append("'");
        }
        all.append("\n");
    }
    return all;
}

TEST(Stored, aBlankAlarmEventIsZeroAndItsNameNULL) {
    Record alarm(CSTALM);
    alarm[txtAlmName].text = " Door ";
    alarm[txtAlmID].text = " 7 ";
    alarm[txtAlmGroup].text = "Safety ";
    alarm[txtAlmText].text = " as typed ";
    alarm[chkAlmEnable].text = "1";
    alarm[txtAlmClrCEID].text = " 102 ";
    EXPECT_EQ(written(alarm),
              "alm_name='Door'\nalm_id='7'\nalm_group='Safety'\nalm_text=' as typed '\n"
              "alm_enable=#1\nalm_set_ceid='0'\nalm_set_cename='NULL'\nalm_clr_ceid='102'\n"
              "alm_clr_cename='NULL'\n");
}

TEST(Stored, blankLimitsAreZeroForNumbersAndNULLForOthers) {
    for (const auto& [format, blank] : {std::pair{"U4", "0"},
                                        {"B", "0"},
                                        {"I8", "0"},
                                        {"A", "NULL"},
                                        {" bl ", "NULL"},
                                        {"l", "NULL"}}) {
        Record variable(CSTVEC);
        variable[cmbVarFormat].text = format;
        const std::string all = written(variable);
        for (const char* column : {"var_min", "var_max", "var_val", "var_defaultval"})
            EXPECT_NE(all.find(std::string(column) + "='" + blank + "'"), std::string::npos)
                << format << column;
    }
}

TEST(Stored, aVariableIsWrittenInItsOrderWithItsType) {
    Record variable(CSTVDV);
    variable[txtVarName].text = " Name ";
    variable[txtVarID].text = "101";
    variable[cmbVarFormat].text = "BL";
    variable[txtVarDefValue].text = " true ";
    variable[txtVarValue].text = " true ";
    EXPECT_EQ(written(variable),
              "var_name='Name'\nvar_id='101'\nvar_group='NULL'\nvar_desc='NULL'\n"
              "var_defaultval='TRUE'\nvar_val=' true '\nvar_max='NULL'\nvar_min='NULL'\n"
              "var_unit='NULL'\nvar_format='BL'\nvar_type='DV'\n");
}

TEST(Stored, ofTheStandardOnlyWhatMayChangeIsWritten) {
    Record event(GEMEVT);
    event[chkEvtEnable].text = "0";
    EXPECT_EQ(written(event), "evt_enable=#0\n");
    Record variable(GEMVEC);
    variable[cmbVarFormat].text = "U1";
    variable[txtVarValue].text = "5";
    EXPECT_EQ(written(variable), "var_defaultval='0'\nvar_val='5'\n");
}

TEST(Stored, whatIsNoBlankIsAText) {
    for (const char* text : {"\r\n", "\t", "\u3000", "\u00a0"}) {
        Record variable(CSTVSV);
        variable[cmbVarFormat].text = "A";
        for (const Control field : {txtVarDesc, txtVarUnit, txtVarValue})
            variable[field].text = text;
        variable[txtVarName].text = std::string(" Name") + text;
        const std::string all = written(variable);
        for (const char* column : {"var_desc", "var_unit", "var_val"})
            EXPECT_NE(all.find(std::string(column) + "='" + text + "'"), std::string::npos)
                << column;
        EXPECT_NE(all.find(std::string("var_name='Name") + text + "'"), std::string::npos);
    }
}

TEST(Stored, settingsByTheirNames) {
    Record setting(GEMSTT);
    setting[txtSttName].text = "DeviceID";
    setting[txtSttValue].text = " 5 ";
    setting[txtSttDefValue].text = "6";
    EXPECT_EQ(written(setting), "set_value='5'\nset_defaultval='6'\n");
}

TEST(Stored, aNewVariableBelongsToNoList) {
    const auto columns = columnsOfNew(Kind::Variable);
    ASSERT_EQ(columns.size(), 3U);
    EXPECT_EQ(columns[0].column, "var_parentkey");
    EXPECT_EQ(std::get<std::int32_t>(columns[0].value), 0);
    EXPECT_TRUE(columnsOfNew(Kind::Alarm).empty());
}

TEST(Stored, limitsAreBlankOnlyWhenNeitherSaysMore) {
    const auto shown = [](const char* min, const char* max) {
        Record variable(CSTVSV);
        variable[txtVarMin].text = min;
        variable[txtVarMax].text = max;
        blankPlaceholders(variable);
        return variable[txtVarMin].text + "|" + variable[txtVarMax].text;
    };
    EXPECT_EQ(shown("0", "100"), "0|100");
    EXPECT_EQ(shown("0", "NULL"), "|");
    EXPECT_EQ(shown(" null ", ""), "|");
    EXPECT_EQ(shown("NULL", "5"), "NULL|5");
}

TEST(Stored, placeholdersOfOtherFields) {
    Record variable(CSTVSV);
    variable[txtVarUnit].text = " null ";
    variable[txtVarValue].text = "0";
    variable[txtVarDefValue].text = "NULL";
    variable[txtVarLmtCEID].text = "7";
    blankPlaceholders(variable);
    EXPECT_EQ(variable[txtVarUnit].text, "");
    EXPECT_EQ(variable[txtVarValue].text, "0");
    EXPECT_EQ(variable[txtVarDefValue].text, "");
    EXPECT_EQ(variable[txtVarLmtCEID].text, "") << "it has no column";
    Record alarm(CSTALM);
    alarm[txtAlmSetCEID].text = "0";
    alarm[txtAlmClrCEName].text = "Null";
    alarm[txtAlmGroup].text = "NULL";
    blankPlaceholders(alarm);
    EXPECT_EQ(alarm[txtAlmSetCEID].text, "");
    EXPECT_EQ(alarm[txtAlmClrCEName].text, "");
    EXPECT_EQ(alarm[txtAlmGroup].text, "NULL");
}

}  // namespace
}  // namespace stelvan::gem
