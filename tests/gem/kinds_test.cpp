// The facts of every field, each list written out as users and other programs know it.
#include "gem/kinds.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace stelvan::gem {
namespace {

using enum Control;

std::string namesOf(const std::vector<const FieldFacts*>& fields) {
    std::string names;
    for (const FieldFacts* field : fields) names.append(nameOf(field->control)).append(" ");
    return names;
}

std::string captionsOf(Kind kind) {
    std::string listed;
    for (const FieldFacts* field : inOrder(kind, &Places::verified))
        listed.append(nameOf(field->control)).append(" [").append(field->caption).append("]\n");
    return listed;
}

std::string bindingsOf(Kind kind) {
    std::string bound;
    for (const FieldFacts& field : fieldsOf(kind))
        bound.append(nameOf(field.control)).append(" ").append(field.column).append("\n");
    return bound;
}

TEST(Kinds, fieldsShowTheirColumnsInThisOrder) {
    EXPECT_EQ(bindingsOf(Kind::CollectionEvent),
              "txtEvtName evt_name\ntxtEvtID evt_id\ntxtEvtGroup evt_group\ntxtEvtDesc evt_text\n"
              "chkEvtEnable evt_enable\n");
    EXPECT_EQ(bindingsOf(Kind::Variable),
              "txtVarName var_name\ntxtVarID var_id\ntxtVarGroup var_group\ntxtVarDesc var_desc\n"
              "cmbVarFormat var_format\ntxtVarMin var_min\ntxtVarMax var_max\n"
              "txtVarUnit var_unit\ntxtVarDefValue var_defaultval\ntxtVarValue var_val\n"
              "txtVarLmtCEID \ntxtVarLmtCEName \n");
    EXPECT_EQ(bindingsOf(Kind::Alarm),
              "txtAlmName alm_name\ntxtAlmID alm_id\ntxtAlmGroup alm_group\ntxtAlmText alm_text\n"
              "chkAlmEnable alm_enable\ntxtAlmSetCEID alm_set_ceid\n"
              "txtAlmSetCEName alm_set_cename\ntxtAlmClrCEID alm_clr_ceid\n"
              "txtAlmClrCEName alm_clr_cename\n");
    EXPECT_EQ(bindingsOf(Kind::ProtocolSettings),
              "txtSttName set_field\ntxtSttValue set_value\ntxtSttDefValue set_defaultval\n");
    EXPECT_EQ(bindingsOf(Kind::Report),
              "txtRptID rpt_id\ntxtRptName rpt_name\ntxtRptDesc rpt_desc\n"
              "chkRptDefault rpt_default\n");
    EXPECT_EQ(bindingsOf(Kind::Limit),
              "txtLmtID limit_id\ntxtLmtVarID var_id\ntxtLmtUBound upperdb\n"
              "txtLmtLBound lowerdb\ntxtLmtTransType transition_type\n");
    EXPECT_TRUE(fieldsOf(Kind::None).empty());
}

TEST(Kinds, faultsAreListedInThisOrderUnderTheseCaptions) {
    EXPECT_EQ(
        captionsOf(Kind::Variable),
        "txtVarName [Variable Name]\ntxtVarID [Variable ID]\ntxtVarGroup [Variable Group]\n"
        "txtVarDesc [Variable Desc]\ncmbVarFormat [Variable Format]\ntxtVarMax [Variable Max]\n"
        "txtVarMin [Variable Min]\ntxtVarUnit [Variable Unit]\n"
        "txtVarDefValue [Variable Default Value]\ntxtVarValue [Variable Value]\n");
    EXPECT_EQ(captionsOf(Kind::Report),
              "txtRptName [Report Name]\ntxtRptID [Report ID]\ntxtRptDesc [Report Desc]\n");
    EXPECT_EQ(captionsOf(Kind::CollectionEvent),
              "txtEvtName [Event Name]\ntxtEvtID [Event ID]\ntxtEvtGroup [Event Group]\n"
              "txtEvtDesc [Event Desc]\n");
    EXPECT_EQ(captionsOf(Kind::Alarm),
              "txtAlmName [Alarm Name]\ntxtAlmID [Alarm ID]\ntxtAlmGroup [Alarm Group]\n"
              "txtAlmText [Alarm Text]\ntxtAlmSetCEName [Alarm Set CEName]\n"
              "txtAlmSetCEID [Alarm Set CEID]\ntxtAlmClrCEName [Alarm Clear CEName]\n"
              "txtAlmClrCEID [Alarm Clear CEID]\n");
    EXPECT_EQ(captionsOf(Kind::ProtocolSettings),
              "txtSttValue [Value::]\ntxtSttDefValue [Default Value::]\n");
}

TEST(Kinds, aSaveJudgesInThisOrder) {
    EXPECT_EQ(namesOf(inOrder(Kind::Variable, &Places::judged)),
              "txtVarName txtVarID txtVarGroup txtVarDesc cmbVarFormat txtVarMin txtVarMax "
              "txtVarUnit txtVarValue txtVarDefValue ");
    EXPECT_EQ(namesOf(inOrder(Kind::Alarm, &Places::judged)),
              "txtAlmName txtAlmID txtAlmText txtAlmGroup txtAlmSetCEID txtAlmSetCEName "
              "txtAlmClrCEID txtAlmClrCEName ");
    EXPECT_EQ(namesOf(inOrder(Kind::CollectionEvent, &Places::judged)),
              "txtEvtName txtEvtID txtEvtGroup txtEvtDesc ");
    EXPECT_EQ(namesOf(inOrder(Kind::Report, &Places::judged)), "txtRptName txtRptID txtRptDesc ");
}

TEST(Kinds, aSaveWritesInThisOrder) {
    EXPECT_EQ(namesOf(inOrder(Kind::Variable, &Places::written)),
              "txtVarName txtVarID txtVarGroup txtVarDesc txtVarDefValue txtVarValue txtVarMax "
              "txtVarMin txtVarUnit cmbVarFormat ");
    EXPECT_EQ(namesOf(inOrder(Kind::Alarm, &Places::written)),
              "txtAlmName txtAlmID txtAlmGroup txtAlmText chkAlmEnable txtAlmSetCEID "
              "txtAlmSetCEName txtAlmClrCEID txtAlmClrCEName ");
    EXPECT_EQ(namesOf(inOrder(Kind::CollectionEvent, &Places::written)),
              "txtEvtName txtEvtID txtEvtGroup txtEvtDesc chkEvtEnable ");
    EXPECT_EQ(namesOf(inOrder(Kind::Report, &Places::written)),
              "txtRptName txtRptID txtRptDesc chkRptDefault ");
    EXPECT_EQ(namesOf(inOrder(Kind::ProtocolSettings, &Places::written)),
              "txtSttValue txtSttDefValue ");
}

TEST(Kinds, placesAreCountedFromOneWithoutGaps) {
    for (int kind = 1; kind <= static_cast<int>(Kind::Report); ++kind)
        for (const auto order : {&Places::verified, &Places::judged, &Places::written}) {
            int place = 0;
            for (const FieldFacts* field : inOrder(static_cast<Kind>(kind), order))
                EXPECT_EQ(field->at.*order, ++place) << nameOf(field->control);
        }
}

TEST(Kinds, namesAndTextsHaveTheirLengths) {
    std::set<std::string_view> names;
    std::set<std::string_view> texts;
    for (int kind = 1; kind <= static_cast<int>(Kind::Report); ++kind)
        for (const FieldFacts& field : fieldsOf(static_cast<Kind>(kind))) {
            if (field.length == 100) names.insert(nameOf(field.control));
            if (field.length == 1000) texts.insert(nameOf(field.control));
        }
    EXPECT_EQ(names,
              (std::set<std::string_view>{"txtVarName", "txtEvtName", "txtRptName", "txtAlmName"}));
    EXPECT_EQ(texts,
              (std::set<std::string_view>{"txtVarDesc", "txtEvtDesc", "txtRptDesc", "txtAlmText"}));
}

TEST(Kinds, handlersReportUnderTheirOwnNamesButForThree) {
    const auto irregular = [](const FieldFacts& field) {
        const std::string own(nameOf(field.control));
        return lostFocusNameOf(field) != own + "_LostFocus" ||
               changeNameOf(field) != own + "_Change";
    };
    std::set<std::string> found;
    for (int kind = 1; kind <= static_cast<int>(Kind::Report); ++kind)
        for (const FieldFacts& field : fieldsOf(static_cast<Kind>(kind)))
            if (irregular(field)) found.insert(lostFocusNameOf(field) + " " + changeNameOf(field));
    EXPECT_EQ(found, (std::set<std::string>{"txtVarDesc_LostFocus txtVarGroup_Change",
                                            "txtAlmClrCEID_lostfocus txtAlmClrCEID_Change",
                                            "txtEvtDesc_lostfocus txtEvtDesc_Change"}));
}

TEST(Kinds, everyFieldIsFoundByItsControlAndEachOnlyOnce) {
    std::set<Control> seen;
    for (int kind = 1; kind <= static_cast<int>(Kind::Report); ++kind)
        for (const FieldFacts& field : fieldsOf(static_cast<Kind>(kind))) {
            EXPECT_EQ(&factsOf(field.control), &field);
            EXPECT_TRUE(seen.insert(field.control).second) << nameOf(field.control);
        }
    EXPECT_THROW((void)factsOf(cmdSave), std::logic_error);
}

TEST(Kinds, identifiersAndNamesAreFoundByTheirCheck) {
    EXPECT_EQ(fieldWith(Kind::Variable, Check::Id), txtVarID);
    EXPECT_EQ(fieldWith(Kind::Alarm, Check::Id), txtAlmID);
    EXPECT_EQ(fieldWith(Kind::CollectionEvent, Check::Id), txtEvtID);
    EXPECT_EQ(fieldWith(Kind::Report, Check::Name), txtRptName);
    EXPECT_EQ(fieldWith(Kind::ProtocolSettings, Check::Id), None);
}

TEST(Kinds, anEditBeginsInThisField) {
    EXPECT_EQ(factsOf(Kind::Variable).first, txtVarName);
    EXPECT_EQ(factsOf(Kind::Variable).firstOfStandard, txtVarDefValue);
    EXPECT_EQ(factsOf(Kind::CollectionEvent).firstOfStandard, chkEvtEnable);
    EXPECT_EQ(factsOf(Kind::Alarm).first, txtAlmName);
    EXPECT_EQ(factsOf(Kind::Report).first, txtRptName);
}

}  // namespace
}  // namespace stelvan::gem
