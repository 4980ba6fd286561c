// Every checked field of every category, and each of its codes: typed into the window, left, and
// read from the "Exception:" box.
#include "tests/support/window_bench.h"

namespace stelvan::app {
namespace {

using test::WindowBench;

/// Fields to type into and leave, in order, and what the box then holds.
struct Typed {
    QString field;
    QString text;
};
struct Case {
    std::vector<Typed> typed;
    QStringList lines;
};

const QString kEmpty = "Cannot be empty string.";
const QString kSpace = "Cannot contain space in between.";
const QString kNumeric = "Must be numeric.";
const QString kInteger = "Must be an integer.";
const QString kIdExists = "ID already exists. Please use other number.";
const QString kNameExists = "Name already exists. Please use other name. ";
const QString kFrom101 = "Valid range is 101 to 2147483647. ";
const QString kMinAboveMax = "Min value cannot be larger than Max value. ";
const QString kOutside = "Value must fall whithin Min and Max. ";

QString fault(const QString& caption, const QString& message) {
    return "[" + caption + "]: " + message;
}

class Exceptions : public WindowBench {
protected:
    /// What a new record of the category always lists beside the fault looked at.
    QStringList always;

    void expectWhileAdding(std::int16_t category, const std::vector<Case>& cases) {
        clickCategory(category);
        for (const Case& c : cases) {
            press(form().nav.cmdNew);
            expect(c);
            press(form().nav.cmdCancel);
            ASSERT_EQ(state().editMode, form::EditMode::Browsing);
        }
    }
    void expectWhileEditing(const std::vector<Case>& cases) {
        for (const Case& c : cases) {
            edit();
            expect(c);
            press(form().nav.cmdCancel);
            ASSERT_EQ(state().editMode, form::EditMode::Browsing);
        }
    }

private:
    void expect(const Case& c) {
        std::string told;
        EXPECT_EQ(exceptions(), "");
        for (const Typed& step : c.typed) {
            typeAndLeave(step.field, step.text);
            told += (step.field + " \"" + step.text + "\" ").toStdString();
        }
        QString box;
        for (const QString& line : c.lines + always) box += line + "\r\n";
        EXPECT_EQ(exceptions(), box) << told;
        EXPECT_EQ(dialogs.texts(), QStringList()) << told;
        dialogs.messages.clear();
    }
};

/// Identifier, name, group and text follow the same order of tests in every kind of record.
std::vector<Case> commonCases(const QString& prefix, const QString& kind, const QString& idRange,
                              const QString& belowRange, const QString& takenId,
                              const QString& takenName, const QString& textField,
                              const QString& textCaption) {
    const QString id = prefix + "ID";
    const QString name = prefix + "Name";
    const auto idFault = [&](const QString& message) {
        return QStringList(fault(kind + " ID", message));
    };
    const auto nameFault = [&](const QString& message) {
        return QStringList(fault(kind + " Name", message));
    };
    return {
        {{{id, ""}}, idFault(kEmpty)},
        {{{id, "   "}}, idFault(kEmpty)},
        {{{id, "1 5"}}, idFault(kSpace)},
        {{{id, "abc"}}, idFault(kNumeric)},
        {{{id, "500.0"}}, idFault(kInteger)},
        {{{id, belowRange}}, idFault(idRange)},
        {{{id, takenId}}, idFault(kIdExists)},
        {{{id, " 77777 "}}, {}},
        {{{name, ""}}, nameFault(kEmpty)},
        {{{name, "Lot Start"}}, nameFault(kSpace)},
        {{{name, takenName}}, nameFault(kNameExists)},
        {{{name, takenName.toUpper()}}, nameFault(kNameExists)},
        {{{name, "  NewName "}}, {}},
        {{{textField, " "}}, {fault(textCaption, kEmpty)}},
        {{{textField, "two words"}}, {}},
        {{{textField, ""}, {id, "abc"}},
         {fault(kind + " ID", kNumeric), fault(textCaption, kEmpty)}},
    };
}

std::vector<Case> groupCases(const QString& field, const QString& caption) {
    return {{{{field, ""}}, {fault(caption, kEmpty)}},
            {{{field, "a b"}}, {fault(caption, kSpace)}},
            {{{field, " Group "}}, {}}};
}

TEST_F(Exceptions, alarm) {
    open();
    expectWhileAdding(gem::CSTALM,
                      commonCases("txtAlm", "Alarm", "Valid range is 1 to 2147483647. ", "0", "101",
                                  "Sc1LevelLow", "txtAlmText", "Alarm Text"));
    expectWhileAdding(gem::CSTALM, groupCases("txtAlmGroup", "Alarm Group"));
    expectWhileAdding(gem::CSTALM, {{{{"txtAlmID", "-1"}},
                                     {fault("Alarm ID", "Valid range is 1 to 2147483647. ")}},
                                    {{{"txtAlmID", "5"}}, {}}});
}

TEST_F(Exceptions, eventsOfAnAlarm) {
    open();
    std::vector<Case> cases;
    for (const auto& [prefix, side] : {std::pair<QString, QString>{"txtAlmSet", "Alarm Set"},
                                       std::pair<QString, QString>{"txtAlmClr", "Alarm Clear"}}) {
        const QString id = prefix + "CEID";
        const QString name = prefix + "CEName";
        cases.insert(cases.end(), {{{{id, "1 0"}}, {fault(side + " CEID", kSpace)}},
                                   {{{id, "x"}}, {fault(side + " CEID", kNumeric)}},
                                   {{{id, "101.0"}}, {fault(side + " CEID", kInteger)}},
                                   {{{id, "100"}}, {fault(side + " CEID", kFrom101)}},
                                   {{{id, "9999"}}, {}},
                                   {{{id, ""}}, {}},
                                   {{{id, "x"}, {id, ""}}, {fault(side + " CEID", kNumeric)}},
                                   {{{name, "a b"}}, {fault(side + " CEName", kSpace)}},
                                   {{{name, "NoSuchEvent"}}, {}},
                                   {{{name, ""}}, {}}});
    }
    const QString sameIds = "Alarm Set CEID and Alarm Clear CEID cannot be the same. ";
    const QString sameNames = "Alarm Set CEName and Alarm Clear CEName cannot be the same. ";
    cases.insert(
        cases.end(),
        {{{{"txtAlmSetCEID", "9999"}, {"txtAlmClrCEID", "9999"}},
          {fault("Alarm Set CEID", sameIds), fault("Alarm Clear CEID", sameIds)}},
         {{{"txtAlmSetCEID", "9999"}, {"txtAlmClrCEID", "9999"}, {"txtAlmSetCEID", "9998"}}, {}},
         {{{"txtAlmSetCEName", "Same"}, {"txtAlmClrCEName", "Same"}},
          {fault("Alarm Set CEName", sameNames), fault("Alarm Clear CEName", sameNames)}},
         {{{"txtAlmSetCEName", "Same"}, {"txtAlmClrCEName", "Same"}, {"txtAlmClrCEName", "Other"}},
          {}},
         // one event for both sides: nothing is filled in for a faulty field
         {{{"txtAlmSetCEID", "101"}, {"txtAlmClrCEID", "101"}},
          {fault("Alarm Set CEID", sameIds), fault("Alarm Clear CEID", sameIds)}}});
    expectWhileAdding(gem::CSTALM, cases);
}

TEST_F(Exceptions, collectionEvent) {
    open();
    expectWhileAdding(gem::CSTEVT, commonCases("txtEvt", "Event", kFrom101, "100", "101",
                                               "Sc1AlarmSet", "txtEvtDesc", "Event Desc"));
    expectWhileAdding(gem::CSTEVT, groupCases("txtEvtGroup", "Event Group"));
    expectWhileAdding(gem::CSTEVT,
                      {{{{"txtEvtName", "EquipmentOffline"}}, {fault("Event Name", kNameExists)}}});
}

TEST_F(Exceptions, report) {
    open();
    always = QStringList(fault("Report Variable List", "Must contain item."));
    expectWhileAdding(gem::CSTRPT, commonCases("txtRpt", "Report", kFrom101, "100", "101",
                                               "Sc1Status", "txtRptDesc", "Report Desc"));
}

TEST_F(Exceptions, variableOfEveryKind) {
    open();
    for (const std::int16_t category : {gem::CSTVDV, gem::CSTVSV, gem::CSTVEC}) {
        expectWhileAdding(category, commonCases("txtVar", "Variable", kFrom101, "100", "218",
                                                "RobotState", "txtVarDesc", "Variable Desc"));
        expectWhileAdding(category, groupCases("txtVarGroup", "Variable Group"));
        expectWhileAdding(
            category,
            {{{{"txtVarName", "Clock"}}, {fault("Variable Name", kNameExists)}},
             {{{"cmbVarFormat", "U4"}, {"cmbVarFormat", ""}}, {fault("Variable Format", kEmpty)}},
             {{{"cmbVarFormat", "X9"}}, {fault("Variable Format", "Invalid variable format. ")}},
             {{{"cmbVarFormat", "u4"}}, {}}});
    }
    expectWhileAdding(gem::CSTVEC, {{{{"cmbVarFormat", "L"}},
                                     {fault("Variable Format", "Invalid variable format. ")}}});
    expectWhileAdding(gem::CSTVSV, {{{{"cmbVarFormat", "L"}}, {}}});
}

TEST_F(Exceptions, valuesOfEveryFormat) {
    open();
    struct Format {
        QString code;
        QStringList good;
        QStringList outside;
        QString message;
    };
    const Format formats[] = {
        {"U1", {"0", "255"}, {"-1", "256"}, "Valid range for U1 is 0 to 255. "},
        {"U2", {"0", "65535"}, {"-1", "65536"}, "Valid range for U2 is 0 to 65535. "},
        {"U4", {"0", "2147483647"}, {"-1"}, "Valid range for U4 is 0 to 2147483647. "},
        {"I1", {"-128", "127"}, {"-129", "128"}, "Valid range for I1 is -128 to 127. "},
        {"I2",
         {"-32768", "32767"},
         {"-32769", "32768"},
         "Valid range for I1 is -32,767 to 32,767. "},
        {"I4", {"-2147483648", "2147483647"}, {}, ""},
        {"B", {"0", "255"}, {"-1", "256"}, "Valid value for BINARY is 0 or 255. "},
        {"F4", {"-3.4e38", "1.5"}, {"3.402e38"}, "Valid range for I1 is -3.4E+38 to 3.4E+38. "},
        {"F8", {"-1.7e308", "1.5"}, {"1.75e308"}, "Valid range for I1 is -1.7E+308 to 1.7E+308. "},
    };
    const std::pair<QString, QString> fields[] = {{"txtVarMin", "Variable Min"},
                                                  {"txtVarMax", "Variable Max"},
                                                  {"txtVarDefValue", "Variable Default Value"},
                                                  {"txtVarValue", "Variable Value"}};
    for (const Format& format : formats) {
        std::vector<Case> cases;
        for (const auto& [field, caption] : fields) {
            const auto typed = [&](const QString& text) {
                return std::vector<Typed>{{"cmbVarFormat", format.code}, {field, text}};
            };
            cases.push_back({typed("1 5"), {fault(caption, kSpace)}});
            cases.push_back({typed("abc"), {fault(caption, kNumeric)}});
            if (!format.code.startsWith('F'))
                cases.push_back({typed("5.0"), {fault(caption, kInteger)}});
            for (const QString& text : format.good) cases.push_back({typed(text), {}});
            for (const QString& text : format.outside) {
                cases.push_back({typed(text), {fault(caption, format.message)}});
            }
        }
        expectWhileAdding(gem::CSTVDV, cases);
    }
    const QString bool15 = "Valid value for BOOL is 'TRUE' or 'FALSE'. ";
    for (const auto& [field, caption] : {fields[2], fields[3]}) {
        expectWhileAdding(gem::CSTVDV,
                          {{{{"cmbVarFormat", "BL"}, {field, "true"}}, {}},
                           {{{"cmbVarFormat", "BL"}, {field, "False"}}, {}},
                           {{{"cmbVarFormat", "BL"}, {field, "yes"}}, {fault(caption, bool15)}},
                           {{{"cmbVarFormat", "BL"}, {field, "a b"}}, {fault(caption, kSpace)}},
                           {{{"cmbVarFormat", "A"}, {field, "any text"}}, {}},
                           {{{"cmbVarFormat", "U8"}, {field, "any text"}}, {}},
                           {{{"cmbVarFormat", "I8"}, {field, "1.5"}}, {}}});
    }
}

TEST_F(Exceptions, limitsAndValuesAgainstOneAnother) {
    open();
    for (const QString code : {"B", "F4", "F8", "I1", "I2", "I4", "I8", "U1", "U2", "U4", "U8"}) {
        const Typed format{"cmbVarFormat", code};
        expectWhileAdding(
            gem::CSTVSV,
            {{{format, {"txtVarMin", "10"}, {"txtVarMax", "9"}},
              {fault("Variable Max", kMinAboveMax), fault("Variable Min", kMinAboveMax)}},
             {{format, {"txtVarMin", "10"}, {"txtVarMax", "9"}, {"txtVarMin", "9"}}, {}},
             {{format, {"txtVarMax", "9"}, {"txtVarValue", "10"}},
              {fault("Variable Value", kOutside)}},
             {{format, {"txtVarMin", "9"}, {"txtVarDefValue", "8"}},
              {fault("Variable Default Value", kOutside)}},
             {{format, {"txtVarValue", "10"}, {"txtVarMax", "9"}},
              {fault("Variable Value", kOutside)}},
             {{format, {"txtVarValue", "10"}, {"txtVarMax", "9"}, {"txtVarMax", "10"}}, {}}});
    }
}

TEST_F(Exceptions, valueOfAGemVariable) {
    open();
    clickCategory(gem::GEMSDV);
    goTo("txtVarName", "ControlState");  // U1 from 1 to 5
    for (const auto& [field, caption] :
         {std::pair<QString, QString>{"txtVarDefValue", "Variable Default Value"},
          std::pair<QString, QString>{"txtVarValue", "Variable Value"}}) {
        expectWhileEditing(
            {{{{field, "1 5"}}, {fault(caption, kSpace)}},
             {{{field, "abc"}}, {fault(caption, kNumeric)}},
             {{{field, "1.5"}}, {fault(caption, kInteger)}},
             {{{field, "256"}}, {fault(caption, "Valid range for U1 is 0 to 255. ")}},
             {{{field, "6"}}, {fault(caption, kOutside)}},
             {{{field, "0"}}, {fault(caption, kOutside)}},
             {{{field, "5"}}, {}}});
    }
}

TEST_F(Exceptions, aRecordBeingEditedKeepsItsOwnIdAndName) {
    open();
    clickCategory(gem::CSTVSV);
    goTo("txtVarName", "LoadPort1State");
    expectWhileEditing({{{{"txtVarName", "LOADPORT1STATE "}}, {}},
                        {{{"txtVarName", "RobotState"}}, {fault("Variable Name", kNameExists)}}});
    clickCategory(gem::CSTEVT);
    expectWhileEditing({{{{"txtEvtName", "sc1alarmset"}}, {}},
                        {{{"txtEvtName", "HfAlarmSet"}}, {fault("Event Name", kNameExists)}}});
    clickCategory(gem::CSTALM);
    expectWhileEditing({{{{"txtAlmName", "sc1temperaturehigh"}}, {}},
                        {{{"txtAlmName", "Sc1LevelLow"}}, {fault("Alarm Name", kNameExists)}}});
    clickCategory(gem::CSTRPT);
    goTo("txtRptName", "Sc1Status");
    expectWhileEditing({{{{"txtRptName", "SC1STATUS"}}, {}},
                        {{{"txtRptName", "Sc1Flow"}}, {fault("Report Name", kNameExists)}}});
}

TEST_F(Exceptions, protocolSettings) {
    open();
    clickCategory(gem::GEMSTT);
    struct Setting {
        QString name;
        std::vector<std::pair<QString, QString>> cases;  // text, message
    };
    const auto range = [](const QString& of) { return "Valid range is " + of + ". "; };
    const QString file = "File does not exist. ";
    const QString port = "Correct format should be: COMnn, where n=1-9. ";
    const QString address = "Invalid IP address. ";
    const Setting settings[] = {
        {"AdministratorPassword",
         {{"ab cd", kSpace}, {"abcdefghijklm", "Maximum 12 characters. "}, {"abcdefghijkl", ""}}},
        {"ConnectionRetryLimit",
         {{"1 0", kSpace},
          {"x", kNumeric},
          {"2.5", kInteger},
          {"32", range("0 to 31")},
          {"31", ""}}},
        {"DeviceID",
         {{"1 0", kSpace},
          {"x", kNumeric},
          {"2.5", kInteger},
          {"-1", range("0 to 32767")},
          {"32767", ""}}},
        {"LocalIPAddress", {{"1 0", kSpace}, {"192.168.0.256", address}, {"192.168.0.1", ""}}},
        {"LocalIPPort",
         {{"1 0", kSpace},
          {"x", kNumeric},
          {"2.5", kInteger},
          {"5000", range("5001 to 32767")},
          {"5001", ""}}},
        {"RemoteIPAddress", {{"1 0", kSpace}, {"192.168.0", address}, {"10.0.0.1", ""}}},
        {"RemoteIPPort",
         {{"1 0", kSpace},
          {"x", kNumeric},
          {"2.5", kInteger},
          {"32768", range("5001 to 32767")},
          {"32767", ""}}},
        {"SECSDictionaryFile", {{"/no/such.xml", file}}},
        {"SECSILogPath", {{"/no/such", "Path does not exist. "}, {"/", ""}}},
        {"SECSLogFile", {{"/no/such.log", file}}},
        {"SerialPort", {{"COM 1", kSpace}, {"TTY1", port}, {"COM123", port}, {"com12", ""}}},
        {"T1Timeout",
         {{"1 0", kSpace},
          {"x", kNumeric},
          {"0.09", range("0.1 to 10")},
          {"10.5", range("0.1 to 10")},
          {"0.1", ""}}},
        {"T2Timeout", {{"1 0", kSpace}, {"x", kNumeric}, {"0.19", range("0.2 to 25")}, {"25", ""}}},
        {"T3Timeout",
         {{"1 0", kSpace},
          {"x", kNumeric},
          {"2.5", kInteger},
          {"121", range("1 to 120")},
          {"120", ""}}},
        {"T4Timeout",
         {{"1 0", kSpace},
          {"x", kNumeric},
          {"2.5", kInteger},
          {"0", range("1 to 120")},
          {"1", ""}}},
        {"T5Timeout",
         {{"1 0", kSpace},
          {"x", kNumeric},
          {"2.5", kInteger},
          {"241", range("1 to 240")},
          {"240", ""}}},
        {"T6Timeout",
         {{"1 0", kSpace},
          {"x", kNumeric},
          {"2.5", kInteger},
          {"0", range("1 to 240")},
          {"1", ""}}},
        {"T7Timeout",
         {{"1 0", kSpace},
          {"x", kNumeric},
          {"2.5", kInteger},
          {"241", range("1 to 240")},
          {"240", ""}}},
        {"T8Timeout",
         {{"1 0", kSpace},
          {"x", kNumeric},
          {"2.5", kInteger},
          {"0", range("1 to 120")},
          {"120", ""}}},
        {"TimeOutRetry",
         {{"1 0", kSpace},
          {"x", kNumeric},
          {"2.5", kInteger},
          {"86401", range("1 to 86400")},
          {"86400", ""}}},
    };
    for (const Setting& setting : settings) {
        goTo("txtSttName", setting.name);
        for (const auto& [text, message] : setting.cases) {
            const auto listed = [&](const QString& suffix) {
                return message.isEmpty() ? QStringList()
                                         : QStringList(fault(setting.name + suffix, message));
            };
            expectWhileEditing({{{{"txtSttValue", text}}, listed("Value::")},
                                {{{"txtSttDefValue", text}}, listed("Default Value::")}});
        }
    }
}

TEST_F(Exceptions, anEventsLowestIdInAModelWithoutEvents) {
    open("gem_empty.mdb");
    expectWhileAdding(gem::CSTEVT, {{{{"txtEvtID", "100"}}, {fault("Event ID", kFrom101)}},
                                    {{{"txtEvtID", "101"}}, {}}});
}

TEST_F(Exceptions, aModelThatStoresIdsAsFractionsKnowsTheSameDuplicates) {
    open("gem_int_flags.mdb");
    expectWhileAdding(gem::CSTVSV,
                      {{{{"txtVarID", "218"}}, {fault("Variable ID", kIdExists)}},
                       {{{"txtVarID", "77777"}}, {}},
                       {{{"txtVarName", "robotstate"}}, {fault("Variable Name", kNameExists)}}});
    expectWhileAdding(gem::CSTALM, {{{{"txtAlmID", "101"}}, {fault("Alarm ID", kIdExists)}}});
}

TEST_F(Exceptions, eventsFillEachOtherInAndAreListedTogether) {
    open();
    add(gem::CSTALM);
    typeAndLeave("txtAlmSetCEID", "101");
    EXPECT_EQ(field("txtAlmSetCEName").text(), "Sc1AlarmSet");
    typeAndLeave("txtAlmClrCEName", "Sc1AlarmCleared");
    EXPECT_EQ(field("txtAlmClrCEID").text(), "102");
    EXPECT_EQ(exceptions(), "");
    EXPECT_EQ(dialogs.texts(), QStringList());
}

TEST_F(Exceptions, aFaultyRecordIsNotSaved) {
    open();
    add(gem::CSTALM);
    type(field("txtAlmID"), "0");
    press(form().nav.cmdSave);
    EXPECT_EQ(dialogs.texts(),
              QStringList("Record cannot be saved. Please correct the exception."));
    EXPECT_EQ(state().editMode, form::EditMode::Adding);
    EXPECT_EQ(exceptions(),
              "[Alarm Name]: Cannot be empty string.\r\n"
              "[Alarm ID]: Valid range is 1 to 2147483647. \r\n"
              "[Alarm Group]: Cannot be empty string.\r\n"
              "[Alarm Text]: Cannot be empty string.\r\n");
}

TEST_F(Exceptions, whatOverflowsIsReportedOnceAndNotSaved) {
    open();
    add(gem::CSTALM);
    type(field("txtAlmName"), "New");
    type(field("txtAlmGroup"), "G");
    type(field("txtAlmText"), "T");
    type(field("txtAlmID"), "2147483648");
    press(form().nav.cmdSave);
    EXPECT_EQ(dialogs.texts(),
              QStringList({"ERROR(6) [frmMain.txtAlmID_LostFocus.0]: Overflow",
                           "Record cannot be saved. Please correct the exception."}));
    EXPECT_EQ(exceptions(), "");
    dialogs.messages.clear();
    type(field("txtAlmID"), "4711");
    press(form().nav.cmdSave);
    EXPECT_EQ(dialogs.texts(), QStringList());
    EXPECT_EQ(state().editMode, form::EditMode::Browsing);
}

TEST_F(Exceptions, limitsBeyond32BitsAreReportedAndSaved) {
    open();
    clickCategory(gem::CSTVSV);
    goTo("txtVarName", "EnergyTotal");  // U8 up to 18446744073709551615
    edit();
    type(field("txtVarValue"), "18446744073709551615");
    press(form().nav.cmdSave);
    EXPECT_EQ(dialogs.texts(), QStringList({"ERROR(6) [frmMain.txtVarMin_LostFocus.0]: Overflow",
                                            "ERROR(6) [frmMain.txtVarMax_LostFocus.0]: Overflow"}));
    EXPECT_EQ(state().editMode, form::EditMode::Browsing);
    EXPECT_EQ(field("txtVarValue").text(), "18446744073709551615");
}

TEST_F(Exceptions, aTypedFormatIsStoredInTheListsSpelling) {
    open();
    clickCategory(gem::CSTVSV);
    goTo("txtVarName", "LoadPort1State");
    edit();
    type(field("cmbVarFormat"), "u2");
    press(form().nav.cmdSave);
    EXPECT_EQ(dialogs.texts(), QStringList());
    EXPECT_EQ(field("cmbVarFormat").text(), "U2");
}

TEST_F(Exceptions, aSettingsChoiceIsStoredAndAMissingDatabaseIsRefused) {
    open();
    clickCategory(gem::GEMSTT);
    goTo("txtSttName", "ConnectionHost");
    edit();
    QTest::keyClick(field("cmbSttValue").widget(), Qt::Key_Up);
    press(form().nav.cmdSave);
    EXPECT_EQ(dialogs.texts(), QStringList());
    EXPECT_EQ(field("txtSttValue").text(), "TRUE");
    EXPECT_EQ(field("cmbSttValue").text(), "TRUE");
    goTo("txtSttName", "GEMDatabase");
    edit();
    press(form().nav.cmdSave);
    EXPECT_EQ(dialogs.texts(),
              QStringList("Record cannot be saved. Please correct the exception."));
    EXPECT_EQ(exceptions(),
              "[GEMDatabaseValue::]: Database file does not exist.\r\n"
              "[GEMDatabaseDefault Value::]: Database file does not exist.\r\n");
}

TEST_F(Exceptions, nothingIsJudgedOnTheWayToCancelOrInTheOtherCategories) {
    open();
    add(gem::CSTVSV);
    type(field("txtVarName"), "a b");
    press(form().nav.cmdCancel);
    EXPECT_EQ(exceptions(), "");
    clickCategory(gem::GEMEVT);
    edit();
    press(form().nav.cmdSave);
    EXPECT_EQ(exceptions(), "");
    EXPECT_EQ(dialogs.texts(), QStringList());
    EXPECT_EQ(state().editMode, form::EditMode::Browsing);
}

}  // namespace
}  // namespace stelvan::app
